// What the surface does at each paint, and the frame of a plot.

#include "display/DispArea.h"
#include "support/PaintCounter.h"
#include "support/PictureTools.h"

#include <QStylePainter>
#include <QTest>

#include <functional>
#include <limits>

// A surface of 400 by 300 pixels with the margins of a plot has its plot area
// from column 40 to 380 and from row 270 up to 15. Rows of text are
// (15 - 270) / 20 = -12.75, cut to 12 pixels; 0.85 of that are 10 pixels (10.2),
// and the gap below the plot is 0.15 of it, 1 pixel (1.8).

using namespace tests;

namespace
{

using Client = std::function<void(DispArea& area, QStylePainter* p)>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const QColor outlineGrey(150, 150, 150);
const QSize usual(400, 300);

/// What a surface of @p size looks like when @p client draws on it.
QImage painted(const QSize& size, const Client& client)
{
    DispArea area;
    area.resize(size);
    QObject::connect(&area, &DispArea::draw, &area, [&](QStylePainter* p) { client(area, p); });
    return area.grab().toImage();
}

void fill(DispArea& area, QStylePainter* p, const QColor& color)
{
    p->fillRect(area.rect(), color);
}

struct Range {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 1.0;
    double y1 = 1.0;
};

/// The frame with its labels as the surface draws it, on white.
QImage drawnFrame(const QSize& size, const Range& range)
{
    return painted(size, [&range](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        area.cc.computeArea();
        area.cc.setReal(range.x0, range.y0, range.x1, range.y1);
        area.drawFrame(p, false);
    });
}

/// The four labels: the texts, and their boxes as places on the screen.
struct Labels {
    QStringList texts; // top of y, bottom of y, left of x, right of x
    QList<QRectF> boxes;
};

/// The same made by hand.
QImage expectedFrame(const QSize& size, const QRect& outline, const Labels& labels)
{
    return painted(size, [&](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        p->setPen(outlineGrey);
        p->drawRect(outline);
        p->setPen(Qt::black);
        const QList<Qt::Alignment> sides{Qt::AlignRight, Qt::AlignRight, Qt::AlignLeft,
                                         Qt::AlignRight};
        DrawText text;
        for (int i = 0; i < 4; ++i) {
            const int flags = (Qt::AlignVCenter | sides.at(i)).toInt();
            text.drawText(p, labels.boxes.at(i), QFont(), flags, 1, labels.texts.at(i), 12.0);
        }
    });
}

const QRect usualOutline(40, 15, 340, 255);
const QList<QRectF> usualBoxes{
    {0.0, 15.0, 38.0, 10.0},   // 0.95 of the left margin wide, hangs from the top
    {0.0, 260.0, 38.0, 10.0},  // stands on the bottom
    {40.0, 271.0, 80.0, 10.0}, // twice the left margin wide
    {300.0, 271.0, 80.0, 10.0},
};

int darkPixels(const QImage& image, const QRect& part)
{
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            count += qGray(image.pixel(x, y)) < 100;
        }
    }
    return count;
}

} // namespace

class tst_DispAreaPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAPlainFrame();
    void startsWithTheAutomaticRangeAndNoMarkerLines();
    void surfacePaintsNothingOfItsOwn();
    void eachPaintAsksOnceForADrawing();
    void painterIsReadyOnTheSurfaceItself();
    void painterIsSmoothWithPixmapsAndHardWithEdges();
    void drawnIsTrueAgainAtEachPaint();
    void screenIsTheWidgetWithYUpwardAtEachPaint_data();
    void screenIsTheWidgetWithYUpwardAtEachPaint();
    void rangeIsZeroToOneWithoutAScaleAndStaysWithOne();
    void drawingIsNotClipped();
    void nothingIsKeptBetweenPaints();

    void frameMasksTheMarginsOnlyWhenAsked_data();
    void frameMasksTheMarginsOnlyWhenAsked();
    void labelsShowTheFirstCharactersOfTheRange_data();
    void labelsShowTheFirstCharactersOfTheRange();
    void labelsStandInTheirBoxes_data();
    void labelsStandInTheirBoxes();
    void labelsAreBlackWhateverThePen();
    void labelsHaveInkInTheirBoxes();
    void labelsFollowTheRowsOfTheCoordinates();
    void labelsOfTinySurfacesAreHarmless_data();
    void labelsOfTinySurfacesAreHarmless();
    void framePaintedAtNoRangeIsHarmless_data();
    void framePaintedAtNoRangeIsHarmless();
};

void tst_DispAreaPainting::formIsAPlainFrame()
{
    const DispArea area;
    QCOMPARE(area.objectName(), "DispArea");
    QCOMPARE(area.windowTitle(), "Frame");
    QCOMPARE(area.size(), usual);
    QCOMPARE(area.frameShape(), QFrame::StyledPanel);
    QCOMPARE(area.frameShadow(), QFrame::Raised);
    QVERIFY(area.hasMouseTracking());
}

void tst_DispAreaPainting::startsWithTheAutomaticRangeAndNoMarkerLines()
{
    const DispArea area;
    QVERIFY(!area.hasScale);
    QVERIFY(!area.markLines);
    QVERIFY(!area.mouse.pressed);
    QCOMPARE(area.cc.realX1, 1.0);
    QCOMPARE(area.cc.realY1, 1.0);
}

// Not even its own frame, which the form gives it.
void tst_DispAreaPainting::surfacePaintsNothingOfItsOwn()
{
    const QImage image = painted(usual, [](DispArea&, QStylePainter*) {});
    QVERIFY(isAllOf(image, image.rect(), image.pixelColor(200, 150)));
}

void tst_DispAreaPainting::eachPaintAsksOnceForADrawing()
{
    DispArea area;
    int drawings = 0;
    connect(&area, &DispArea::draw, this, [&drawings] { ++drawings; });
    tests::PaintCounter paints(&area);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    const int first = paints.within(50);
    QVERIFY(first > 0);
    QCOMPARE(drawings, first);
    area.repaint();
    area.repaint();
    QCOMPARE(drawings, first + 2);
    area.update();
    area.update(); // folded into one paint
    QCOMPARE(drawings, first + 2);
    QCOMPARE(paints.within(50), first + 3);
    QCOMPARE(drawings, first + 3);
}

void tst_DispAreaPainting::painterIsReadyOnTheSurfaceItself()
{
    int calls = 0;
    painted(usual, [&calls](DispArea& area, QStylePainter* p) {
        ++calls;
        QVERIFY(p->isActive());
        QCOMPARE(p->device(), static_cast<QPaintDevice*>(&area));
    });
    QCOMPARE(calls, 1);
}

void tst_DispAreaPainting::painterIsSmoothWithPixmapsAndHardWithEdges()
{
    QPainter::RenderHints hints;
    const QImage image = painted(usual, [&hints](DispArea& area, QStylePainter* p) {
        hints = p->renderHints();
        fill(area, p, Qt::white);
        p->setPen(Qt::black);
        p->drawLine(10, 10, 200, 77);
    });
    QVERIFY(hints.testFlag(QPainter::SmoothPixmapTransform));
    QVERIFY(!hints.testFlag(QPainter::Antialiasing));
    for (int y = 10; y < 78; ++y) { // a slanted line has no shades
        for (int x = 10; x < 201; ++x) {
            const int grey = qGray(image.pixel(x, y));
            QVERIFY(grey == 0 || grey == 255);
        }
    }
}

void tst_DispAreaPainting::drawnIsTrueAgainAtEachPaint()
{
    DispArea area;
    QList<bool> seen;
    connect(&area, &DispArea::draw, this, [&] {
        seen << area.cc.drawn;
        area.cc.drawn = false;
    });
    area.grab();
    QVERIFY(!area.cc.drawn); // the client's word stays
    area.grab();
    QCOMPARE(seen, (QList<bool>{true, true}));
}

void tst_DispAreaPainting::screenIsTheWidgetWithYUpwardAtEachPaint_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("as made") << QSize(400, 300);
    QTest::newRow("wide") << QSize(511, 97);
    QTest::newRow("a pixel") << QSize(1, 1);
}

// The plot area is the whole widget again, whatever a client made of it before.
void tst_DispAreaPainting::screenIsTheWidgetWithYUpwardAtEachPaint()
{
    QFETCH(QSize, size);
    DispArea area;
    area.resize(size);
    QList<double> places;
    connect(&area, &DispArea::draw, this, [&] {
        const ChCoord& cc = area.cc;
        places = {cc.scrX0,  cc.scrY0,  cc.scrX1,  cc.scrY1,
                  cc.areaX0, cc.areaY0, cc.areaX1, cc.areaY1};
        area.cc.setArea(7.0, 7.0, 8.0, 8.0);
    });
    const double width = size.width();
    const double height = size.height();
    const QList<double> wanted{0.0, height, width, 0.0, 0.0, height, width, 0.0};
    area.grab();
    QCOMPARE(places, wanted);
    area.grab();
    QCOMPARE(places, wanted);
}

void tst_DispAreaPainting::rangeIsZeroToOneWithoutAScaleAndStaysWithOne()
{
    DispArea area;
    QList<double> range;
    connect(&area, &DispArea::draw, this, [&] {
        range = {area.cc.realX0, area.cc.realY0, area.cc.realX1, area.cc.realY1};
    });
    area.cc.setReal(5.0, 6.0, 7.0, 8.0);
    area.grab();
    QCOMPARE(range, (QList<double>{0.0, 0.0, 1.0, 1.0}));
    QVERIFY(!area.hasScale); // that is for the client to say
    area.hasScale = true;
    area.cc.setReal(5.0, 6.0, 7.0, 8.0);
    area.grab();
    QCOMPARE(range, (QList<double>{5.0, 6.0, 7.0, 8.0}));
}

void tst_DispAreaPainting::drawingIsNotClipped()
{
    const QImage image = painted(usual, [](DispArea& area, QStylePainter* p) {
        area.cc.computeArea();
        QVERIFY(!p->hasClipping());
        fill(area, p, Qt::red);
    });
    QVERIFY(isAllOf(image, image.rect(), Qt::red));
}

void tst_DispAreaPainting::nothingIsKeptBetweenPaints()
{
    DispArea area;
    bool draws = true;
    connect(&area, &DispArea::draw, this, [&](QStylePainter* p) {
        if (draws) {
            fill(area, p, Qt::red);
        }
    });
    QVERIFY(isAllOf(area.grab().toImage(), area.rect(), Qt::red));
    draws = false;
    const QImage second = area.grab().toImage();
    QVERIFY(second.pixelColor(200, 150) != QColor(Qt::red));
    QVERIFY(isAllOf(second, area.rect(), second.pixelColor(200, 150)));
}

void tst_DispAreaPainting::frameMasksTheMarginsOnlyWhenAsked_data()
{
    QTest::addColumn<bool>("maskMargins");
    QTest::newRow("with a mask") << true;
    QTest::newRow("without a mask") << false;
}

// The outline is not filled, whatever the brush.
void tst_DispAreaPainting::frameMasksTheMarginsOnlyWhenAsked()
{
    QFETCH(bool, maskMargins);
    const QImage image = painted(usual, [maskMargins](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::red);
        p->setBrush(Qt::blue);
        area.cc.computeArea();
        area.drawFrame(p, maskMargins);
    });
    const QColor margin = maskMargins ? Qt::white : Qt::red;
    QVERIFY(isAllOf(image, QRect(QPoint(41, 16), QPoint(379, 269)), Qt::red));
    QVERIFY(isAllOf(image, QRect(QPoint(0, 0), QPoint(399, 14)), margin));
    QVERIFY(isAllOf(image, QRect(QPoint(0, 30), QPoint(39, 250)), margin));
    QVERIFY(isAllOf(image, QRect(QPoint(381, 0), QPoint(399, 299)), margin));
    QVERIFY(isAllOf(image, QRect(QPoint(0, 285), QPoint(399, 299)), margin));
    QVERIFY(isAllOf(image, QRect(QPoint(121, 271), QPoint(299, 284)), margin));
    QVERIFY(isAllOf(image, QRect(QPoint(40, 15), QPoint(380, 15)), outlineGrey));
    QVERIFY(isAllOf(image, QRect(QPoint(40, 270), QPoint(380, 270)), outlineGrey));
    QVERIFY(isAllOf(image, QRect(QPoint(40, 15), QPoint(40, 270)), outlineGrey));
    QVERIFY(isAllOf(image, QRect(QPoint(380, 15), QPoint(380, 270)), outlineGrey));
}

void tst_DispAreaPainting::labelsShowTheFirstCharactersOfTheRange_data()
{
    QTest::addColumn<QList<double>>("range"); // x0, y0, x1, y1
    QTest::addColumn<QStringList>("texts");   // of y1, y0, x0, x1
    QTest::newRow("short numbers")
        << QList<double>{0.0, -0.5, 10.0, 1.5} << QStringList{"1.5", "-0.5", "0", "10"};
    QTest::newRow("energies lose their last digit")
        << QList<double>{8333.2469, 8333.2469, 8404.52, 8404.52}
        << QStringList{"8404.", "8333.", "8333.2", "8404.5"};
    QTest::newRow("exponent is gone") << QList<double>{1234567.0, 1234567.0, 9876543.0, 9876543.0}
                                      << QStringList{"9.876", "1.234", "1.2345", "9.8765"};
    QTest::newRow("negative exponent is gone")
        << QList<double>{-0.000012345678, -0.000012345678, 0.00001, 0.00001}
        << QStringList{"1e-05", "-1.23", "-1.234", "1e-05"};
    QTest::newRow("exponent is cut") << QList<double>{1.5e100, 1.5e100, 2.5e101, 2.5e101}
                                     << QStringList{"2.5e+", "1.5e+", "1.5e+1", "2.5e+1"};
    QTest::newRow("six digits first, then the cut")
        << QList<double>{0.99999999, 0.99999999, 12.3456789, 12.3456789}
        << QStringList{"12.34", "1", "1", "12.345"};
    QTest::newRow("reversed") << QList<double>{3.0, 4.0, 1.0, 2.0}
                              << QStringList{"2", "4", "3", "1"};
    QTest::newRow("no numbers") << QList<double>{notANumber, -infinity, infinity, notANumber}
                                << QStringList{"nan", "-inf", "nan", "inf"};
    QTest::newRow("collapsed") << QList<double>{3.0, 3.0, 3.0, 3.0}
                               << QStringList{"3", "3", "3", "3"};
}

void tst_DispAreaPainting::labelsShowTheFirstCharactersOfTheRange()
{
    QFETCH(QList<double>, range);
    QFETCH(QStringList, texts);
    const QImage image = drawnFrame(usual, {range.at(0), range.at(1), range.at(2), range.at(3)});
    QCOMPARE(image, expectedFrame(usual, usualOutline, {texts, usualBoxes}));
}

void tst_DispAreaPainting::labelsStandInTheirBoxes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("outline");
    QTest::addColumn<QList<QRectF>>("boxes");
    QTest::newRow("as made") << usual << usualOutline << usualBoxes;
    // Plot area 33 to 317 and 196 (217 - 21) up to 10; rows of trunc(-9.3) = -9,
    // text of 7 (7.65), gap of 1 (1.35); left margin 33.
    QTest::newRow("odd sides") << QSize(333, 217) << QRect(33, 10, 284, 186)
                               << QList<QRectF>{{0.0, 10.0, 33.0 * 0.95, 7.0},
                                                {0.0, 189.0, 33.0 * 0.95, 7.0},
                                                {33.0, 197.0, 66.0, 7.0},
                                                {251.0, 197.0, 66.0, 7.0}};
    // Plot area 80 to 760 and 810 up to 45; rows of trunc(-38.25) = -38, text of
    // 32 (32.3), gap of 5 (5.7). Here 12 points are the limit.
    QTest::newRow("large") << QSize(800, 900) << QRect(80, 45, 680, 765)
                           << QList<QRectF>{{0.0, 45.0, 76.0, 32.0},
                                            {0.0, 778.0, 76.0, 32.0},
                                            {80.0, 815.0, 160.0, 32.0},
                                            {600.0, 815.0, 160.0, 32.0}};
}

void tst_DispAreaPainting::labelsStandInTheirBoxes()
{
    QFETCH(QSize, size);
    QFETCH(QRect, outline);
    QFETCH(QList<QRectF>, boxes);
    const QImage image = drawnFrame(size, {8300.0, -1.25, 8400.0, 2.5});
    QCOMPARE(image, expectedFrame(size, outline, {{"2.5", "-1.25", "8300", "8400"}, boxes}));
}

void tst_DispAreaPainting::labelsAreBlackWhateverThePen()
{
    const QImage image = painted(usual, [](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        p->setPen(QPen(Qt::red, 5.0));
        area.cc.computeArea();
        area.drawFrame(p, false);
    });
    const Labels labels{{"1", "0", "0", "1"}, usualBoxes};
    QCOMPARE(image, expectedFrame(usual, usualOutline, labels));
}

// The same pictures could be empty alike.
void tst_DispAreaPainting::labelsHaveInkInTheirBoxes()
{
    const QImage image = drawnFrame(usual, {8300.0, -1.25, 8400.0, 2.5});
    for (const QRectF& box : usualBoxes) {
        QVERIFY(darkPixels(image, box.toRect()) > 5);
    }
    const QImage empty = expectedFrame(usual, usualOutline, {{"", "", "", ""}, usualBoxes});
    QCOMPARE(darkPixels(empty, empty.rect()), 0);
}

// Rows of trunc(-25.5) = -25, text of 12 (12.5), gap of 12 (12.5), a left
// margin of 80.
void tst_DispAreaPainting::labelsFollowTheRowsOfTheCoordinates()
{
    const QImage image = painted(usual, [](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        area.cc.titleDiv = 10;
        area.cc.textFill = 0.5;
        area.cc.marginLeft = 0.2;
        area.cc.computeArea();
        area.drawFrame(p, false);
    });
    const QList<QRectF> boxes{{0.0, 15.0, 76.0, 12.0},
                              {0.0, 258.0, 76.0, 12.0},
                              {80.0, 282.0, 160.0, 12.0},
                              {220.0, 282.0, 160.0, 12.0}};
    const Labels labels{{"1", "0", "0", "1"}, boxes};
    QCOMPARE(image, expectedFrame(usual, QRect(80, 15, 300, 255), labels));
}

void tst_DispAreaPainting::labelsOfTinySurfacesAreHarmless_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("a pixel") << QSize(1, 1);
    QTest::newRow("a row") << QSize(400, 1);
    QTest::newRow("a column") << QSize(1, 300);
    QTest::newRow("no room for a row of text") << QSize(50, 20);
}

void tst_DispAreaPainting::labelsOfTinySurfacesAreHarmless()
{
    QFETCH(QSize, size);
    const QImage image = painted(size, [](DispArea& area, QStylePainter* p) {
        area.cc.computeArea();
        area.drawFrame(p, true);
        QVERIFY(p->isActive());
    });
    QCOMPARE(image.size(), size);
}

void tst_DispAreaPainting::framePaintedAtNoRangeIsHarmless_data()
{
    QTest::addColumn<QList<double>>("range"); // x0, y0, x1, y1
    QTest::newRow("NaN") << QList<double>{notANumber, notANumber, notANumber, notANumber};
    QTest::newRow("infinities") << QList<double>{-infinity, -infinity, infinity, infinity};
    QTest::newRow("collapsed") << QList<double>{1.0, 1.0, 1.0, 1.0};
    QTest::newRow("huge") << QList<double>{-1e308, -1e308, 1e308, 1e308};
}

// The frame itself does not depend on the range.
void tst_DispAreaPainting::framePaintedAtNoRangeIsHarmless()
{
    QFETCH(QList<double>, range);
    const QImage image = painted(usual, [&range](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::red);
        area.cc.computeArea();
        area.cc.setReal(range.at(0), range.at(1), range.at(2), range.at(3));
        area.drawFrame(p, true);
    });
    QVERIFY(isAllOf(image, QRect(QPoint(41, 16), QPoint(379, 269)), Qt::red));
    QVERIFY(isAllOf(image, QRect(QPoint(40, 15), QPoint(380, 15)), outlineGrey));
    QVERIFY(isAllOf(image, QRect(QPoint(0, 285), QPoint(399, 299)), Qt::white));
}

QTEST_MAIN(tst_DispAreaPainting)
#include "tst_DispAreaPainting.moc"
