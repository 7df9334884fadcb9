// Tests of GatheredMarks, which draws the same picture as drawing each mark separately.
#include "display/GatheredMarks.h"

#include "display/ChCoord.h"
#include "display/MarkPlaces.h"
#include "support/MarkPainters.h"
#include "support/PlainStrokes.h"

#include <QTest>

#include <limits>
#include <random>

using namespace tests;

namespace
{

const QSize usualSize(150, 120);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Random points with coordinates from -@p around to 1 + @p around. The default range of
/// the plot is 0 to 1.
QList<QPointF> randomPoints(int count, double around = 0.2)
{
    std::mt19937_64 random(static_cast<unsigned>(count));
    std::uniform_real_distribution<double> value(-around, 1.0 + around);
    QList<QPointF> points;
    for (int i = 0; i < count; ++i) {
        const double x = value(random);
        points.append({x, value(random)});
    }
    return points;
}

struct Plot {
    explicit Plot(const QSize& size, const PlotRange& range = {})
        : place(size, range)
    {
        cc.setScreen(0.0, size.height(), size.width(), 0.0);
        cc.computeArea();
        cc.setReal(range.x0, range.y0, range.x1, range.y1);
    }

    QImage gathered(const QList<QPointF>& points, const QPen& pen, QImage image,
                    const PainterState& state) const
    {
        QPainter p(&image);
        state(&p);
        p.setPen(pen);
        const display::MarkPlaces places(cc);
        display::GatheredMarks marks(&p, places);
        for (const QPointF& point : points) {
            if (const auto at = places.at(point.x(), point.y())) {
                marks.add(*at);
            }
        }
        marks.draw();
        return image;
    }

    QImage oneByOne(const QList<QPointF>& points, const QPen& pen, QImage image,
                    const PainterState& state) const
    {
        QPainter p(&image);
        state(&p);
        p.setPen(pen);
        for (const QPointF& point : points) {
            const double column = place.columnOf(point.x());
            const double row = place.rowOf(point.y());
            if (column > -3.0 && column < place.size.width() + 3.0 && row > -3.0 &&
                row < place.size.height() + 3.0) {
                plainMark(&p, place, point.x(), point.y());
            }
        }
        return image;
    }

    ChCoord cc;
    PlotPlace place;
};

} // namespace

class tst_GatheredMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gatheredMarksLookLikeMarksDrawnOneByOne_data();
    void gatheredMarksLookLikeMarksDrawnOneByOne();
    void marksMatchMarkByMarkDrawingInSeveralImageFormats_data();
    void marksMatchMarkByMarkDrawingInSeveralImageFormats();
    void marksMatchMarkByMarkDrawingWithTranslatedOrClippedPainters_data();
    void marksMatchMarkByMarkDrawingWithTranslatedOrClippedPainters();
    void marksMatchMarkByMarkDrawingInUnusualPainterStates_data();
    void marksMatchMarkByMarkDrawingInUnusualPainterStates();
    void marksMatchMarkByMarkDrawingWithUnusualPens_data();
    void marksMatchMarkByMarkDrawingWithUnusualPens();
    void emptyListOfMarksDrawsNothing();
};

void tst_GatheredMarks::gatheredMarksLookLikeMarksDrawnOneByOne_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QList<QPointF>>("points");
    QTest::addColumn<QList<double>>("range");
    const QList<double> all{0.0, 0.0, 1.0, 1.0};
    QTest::newRow("one point") << usualSize << randomPoints(1, 0.0) << all;
    QTest::newRow("sparse") << usualSize << randomPoints(60) << all;
    QTest::newRow("touching") << usualSize << randomPoints(1500) << all;
    QTest::newRow("dense") << usualSize << randomPoints(20000) << all;
    QTest::newRow("odd size") << QSize(191, 63) << randomPoints(900) << all;
    QTest::newRow("64 pixels wide") << QSize(64, 64) << randomPoints(300) << all;
    QTest::newRow("tiny") << QSize(9, 7) << randomPoints(40) << all;
    QTest::newRow("one pixel") << QSize(1, 1) << randomPoints(40, 2.0) << all;
    QTest::newRow("one column") << QSize(1, 90) << randomPoints(40, 2.0) << all;
    QTest::newRow("zoomed in") << usualSize << randomPoints(4000)
                               << QList<double>{0.4, 0.5, 0.6, 0.7};
    QTest::newRow("zoomed out") << usualSize << randomPoints(4000)
                                << QList<double>{-9.0, -8.0, 7.0, 9.0};
    QTest::newRow("scrolled") << usualSize << randomPoints(4000)
                              << QList<double>{0.7, -0.8, 1.7, 0.2};
    QTest::newRow("mirrored") << usualSize << randomPoints(900)
                              << QList<double>{1.0, 1.0, 0.0, 0.0};
    QTest::newRow("outside the widget")
        << usualSize << randomPoints(900) << QList<double>{5, 5, 6, 6};
    QList<QPointF> withExtremes = randomPoints(50);
    for (const double number : {notANumber, infinity, -infinity, 1e300, -1e300, 4294967298.5}) {
        withExtremes << QPointF(number, 0.5) << QPointF(0.5, number) << QPointF(number, number);
    }
    QTest::newRow("NaN, infinite and huge numbers") << usualSize << withExtremes << all;
    QTest::newRow("empty range") << usualSize << randomPoints(50)
                                 << QList<double>{1.0, 0.0, 1.0, 1.0};
}

void tst_GatheredMarks::gatheredMarksLookLikeMarksDrawnOneByOne()
{
    QFETCH(QSize, size);
    QFETCH(QList<QPointF>, points);
    QFETCH(QList<double>, range);
    const Plot plot(size, {range.at(0), range.at(1), range.at(2), range.at(3)});
    const auto unchanged = [](QPainter*) {};
    const QPen pen(QColor(10, 20, 230));
    const QImage white = whitePicture(size);
    QVERIFY(isSamePicture(plot.gathered(points, pen, white, unchanged),
                          plot.oneByOne(points, pen, white, unchanged)));
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingInSeveralImageFormats_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("premultiplied alpha") << QImage::Format_ARGB32_Premultiplied;
    QTest::newRow("alpha, not premultiplied") << QImage::Format_ARGB32;
    QTest::newRow("16 bit") << QImage::Format_RGB16;
    QTest::newRow("24 bit") << QImage::Format_RGB888;
    QTest::newRow("10 bit") << QImage::Format_BGR30;
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingInSeveralImageFormats()
{
    QFETCH(QImage::Format, format);
    const Plot plot(usualSize);
    const auto unchanged = [](QPainter*) {};
    const QPen pen(QColor(13, 27, 231));
    const QImage white = scaledPicture(usualSize, 1.0, format);
    const QList<QPointF> points = randomPoints(900);
    const QImage expected = plot.oneByOne(points, pen, white, unchanged);
    QVERIFY(plot.gathered(points, pen, white, unchanged) == expected);
    QVERIFY(expected != white);
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingWithTranslatedOrClippedPainters_data()
{
    addPainterStates(true);
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingWithTranslatedOrClippedPainters()
{
    QFETCH(PainterState, state);
    const Plot plot(usualSize);
    const QPen pen(Qt::blue);
    const QImage white = whitePicture(usualSize);
    for (const int count : {50, 3000}) {
        const QImage expected = plot.oneByOne(randomPoints(count), pen, white, state);
        QVERIFY(isSamePicture(plot.gathered(randomPoints(count), pen, white, state), expected));
        QVERIFY(expected != white);
    }
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingInUnusualPainterStates_data()
{
    addPainterStates(false);
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingInUnusualPainterStates()
{
    QFETCH(PainterState, state);
    QFETCH(double, scale);
    const Plot plot(usualSize);
    const QPen pen(Qt::blue);
    const QImage white = scaledPicture(usualSize, scale);
    QList<QPointF> points = randomPoints(300);
    points += points.mid(0, 50);
    const QImage expected = plot.oneByOne(points, pen, white, state);
    QVERIFY(isSamePicture(plot.gathered(points, pen, white, state), expected));
    QVERIFY(expected != white);
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingWithUnusualPens_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::newRow("wide pen") << QPen(Qt::blue, 2);
    QTest::newRow("dotted pen") << QPen(Qt::blue, 1, Qt::DotLine);
    QTest::newRow("transparent pen") << QPen(QColor(0, 0, 255, 120));
    QTest::newRow("no pen") << QPen(Qt::NoPen);
}

void tst_GatheredMarks::marksMatchMarkByMarkDrawingWithUnusualPens()
{
    QFETCH(QPen, pen);
    const Plot plot(usualSize);
    const auto unchanged = [](QPainter*) {};
    const QImage white = whitePicture(usualSize);
    const QList<QPointF> points = randomPoints(300) + randomPoints(300).mid(0, 50);
    QVERIFY(isSamePicture(plot.gathered(points, pen, white, unchanged),
                          plot.oneByOne(points, pen, white, unchanged)));
}

void tst_GatheredMarks::emptyListOfMarksDrawsNothing()
{
    QVERIFY(isBlank(
        Plot(usualSize).gathered({}, QPen(Qt::blue), whitePicture(usualSize), [](QPainter*) {})));
}

QTEST_MAIN(tst_GatheredMarks)
#include "tst_GatheredMarks.moc"
