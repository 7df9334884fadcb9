// Tests of the marks of single points: the pixels of a mark, and the points that have
// no mark.
#include "display/PointMarks.h"

#include "support/PlainStrokes.h"
#include "support/PlotSurface.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <limits>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();

const QColor ink(10, 20, 230);

/// The picture of circles with @p radii around @p centre, drawn one by one.
QImage circles(const QPoint& centre, const QList<int>& radii)
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(ink);
    for (const int r : radii) {
        plainCircle(&p, centre, r);
    }
    return image;
}

} // namespace

class tst_PointMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void markPlaceIsTheTruncatedPixelPosition_data();
    void markPlaceIsTheTruncatedPixelPosition();
    void nonFiniteOrVeryFarPointsHaveNoPlace_data();
    void nonFiniteOrVeryFarPointsHaveNoPlace();
    void partlyVisibleMarksHaveAPlace();
    void emptyOrNaNRangeHasNoPlaces();
    void circleHasTheGivenRadius();
    void circleIsOutlinedWithThePenAndFilledWithTheBrush();
    void markIsTwoCirclesOfRadiusOneAndTwo();
};

void tst_PointMarks::markPlaceIsTheTruncatedPixelPosition_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("lower left corner") << QPointF(10, -1) << QPoint(40, 270);
    QTest::newRow("upper right corner") << QPointF(27, 4) << QPoint(380, 15);
    QTest::newRow("inside") << QPointF(15.0, 0.0) << QPoint(140, 219);
    QTest::newRow("fractions") << QPointF(15.04, -0.9 / 51.0) << QPoint(140, 219);
    QTest::newRow("fraction just below one") << QPointF(15.049, -0.1 / 51.0) << QPoint(140, 219);
    QTest::newRow("in the margin") << QPointF(8.5, 4.2) << QPoint(10, 4);
    QTest::newRow("just left of the widget") << QPointF(8.0 - 0.9 / 20.0, 0.0) << QPoint(0, 219);
}

void tst_PointMarks::markPlaceIsTheTruncatedPixelPosition()
{
    QFETCH(QPointF, point);
    QFETCH(QPoint, place);
    const auto found = display::markPlace(PlotSurface(), point.x(), point.y());
    QVERIFY(found);
    QCOMPARE(*found, place);
}

void tst_PointMarks::nonFiniteOrVeryFarPointsHaveNoPlace_data()
{
    QTest::addColumn<QPointF>("point");
    for (const auto& [name, value] :
         {std::pair{"NaN", notANumber}, std::pair{"infinite", infinite},
          std::pair{"negative infinite", -infinite}, std::pair{"1e300", 1e300},
          std::pair{"-1e300", -1e300}, std::pair{"largest double", huge}, std::pair{"1e9", 1e9},
          std::pair{"400", 400.0}}) {
        QTest::addRow("%s on x", name) << QPointF(value, 0.0);
        QTest::addRow("%s on y", name) << QPointF(15.0, value);
        QTest::addRow("%s on both", name) << QPointF(value, -value);
    }
}

void tst_PointMarks::nonFiniteOrVeryFarPointsHaveNoPlace()
{
    QFETCH(QPointF, point);
    QVERIFY(!display::markPlace(PlotSurface(), point.x(), point.y()));
}

// The points are in the middle of pixels, so rounding errors do not change the pixels.
// A mark of radius 2 covers the pixels up to 2 away from its centre. So on the picture
// with the pixel columns 0 to 399, marks at the columns -2 to 401 are at least partly
// visible, and likewise marks at the rows -2 to 301.
void tst_PointMarks::partlyVisibleMarksHaveAPlace()
{
    const PlotSurface cc;
    for (int off = -8; off <= 8; ++off) {
        for (const QPoint& at :
             {QPoint(off, 100), QPoint(400 + off, 100), QPoint(100, off), QPoint(100, 300 + off)}) {
            const double x = 10.0 + (at.x() + 0.5 - 40.0) / 20.0;
            const double y = (270.0 - at.y() - 0.5) / 51.0 - 1.0;
            const bool shows = circles(at, {2}) != whiteSurface();
            const auto place = display::markPlace(cc, x, y);
            QVERIFY2(place || !shows, qPrintable(QStringLiteral("%1 %2").arg(at.x()).arg(at.y())));
            if (at.x() >= 0 && at.y() >= 0 && at.x() < 400 && at.y() < 300) {
                QCOMPARE(*place, at);
            }
        }
    }
    QVERIFY(!display::markPlace(cc, 10.0 + (-4.0 - 40.0) / 20.0, 0.0));
    QVERIFY(!display::markPlace(cc, 10.0 + (404.0 - 40.0) / 20.0, 0.0));
}

void tst_PointMarks::emptyOrNaNRangeHasNoPlaces()
{
    PlotSurface cc;
    cc.setRealX(15, 15);
    QVERIFY(!display::markPlace(cc, 15.0, 0.0));
    cc.setReal(10, notANumber, 27, 4);
    QVERIFY(!display::markPlace(cc, 15.0, 0.0));
}

void tst_PointMarks::circleHasTheGivenRadius()
{
    for (const int radius : {1, 2, 5}) {
        QImage image = whiteSurface();
        QPainter p(&image);
        p.setPen(ink);
        display::drawCircle(&p, {150, 120}, radius);
        p.end();
        QCOMPARE(image, circles({150, 120}, {radius}));
        QCOMPARE(image.pixelColor(150, 120 - radius), ink);
        QCOMPARE(image.pixelColor(150 - radius, 120), ink);
        QCOMPARE(image.pixelColor(150, 120), QColor(Qt::white));
    }
}

void tst_PointMarks::circleIsOutlinedWithThePenAndFilledWithTheBrush()
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(Qt::red);
    p.setBrush(Qt::green);
    display::drawCircle(&p, {150, 120}, 4);
    p.end();
    QCOMPARE(image.pixelColor(150, 116), QColor(Qt::red));
    QCOMPARE(image.pixelColor(150, 120), QColor(Qt::green));
}

void tst_PointMarks::markIsTwoCirclesOfRadiusOneAndTwo()
{
    for (const QPoint& at : {QPoint(150, 120), QPoint(0, 0), QPoint(-2, 299), QPoint(401, 3)}) {
        QImage image = whiteSurface();
        QPainter p(&image);
        p.setPen(ink);
        display::drawMark(&p, at);
        p.end();
        QCOMPARE(image, circles(at, {1, 2}));
        QVERIFY(image != circles(at, {1}));
    }
}

QTEST_MAIN(tst_PointMarks)
#include "tst_PointMarks.moc"
