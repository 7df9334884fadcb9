// Tests of DispArea's painting: its state at each paint, and the frame of a plot.

#include "display/DispArea.h"
#include "support/PaintCounter.h"
#include "support/PictureTools.h"

#include <QStylePainter>
#include <QTest>

#include <functional>
#include <limits>

// On a surface of 400 by 300 pixels, the default margins are 40 (left), 20 (right), 30
// (bottom) and 15 (top) pixels, so the plot area spans x = 40 to 380 and y = 15 to 270.
// A line of text is trunc((270 - 15) / 20) = 12 pixels high, its text
// trunc(0.85 * 12) = 10, and the gap below the plot trunc(0.15 * 12) = 1.

using namespace tests;

namespace
{

using Client = std::function<void(DispArea& area, QStylePainter* p)>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const QColor outlineGrey(150, 150, 150);
const QSize usualSize(400, 300);

/// The picture of a surface of @p size on which @p client draws.
QImage paintedBy(const QSize& size, const Client& client)
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

/// The picture that drawFrame() draws, with labels, on a white surface.
QImage drawnFrame(const QSize& size, const Range& range)
{
    return paintedBy(size, [&range](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        area.cc.computeArea();
        area.cc.setReal(range.x0, range.y0, range.x1, range.y1);
        area.drawFrame(p, false);
    });
}

/// The texts of the four labels and their boxes in pixels, in the same order.
struct Labels {
    QStringList texts; // upper end of y, lower end of y, left end of x, right end of x
    QList<QRectF> boxes;
};

/// The expected picture of the frame: the outline and the labels, drawn one by one.
QImage expectedFrame(const QSize& size, const QRect& outline, const Labels& labels)
{
    return paintedBy(size, [&](DispArea& area, QStylePainter* p) {
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
    {0.0, 15.0, 38.0, 10.0},   // 0.95 of the left margin wide, at the top of the plot
    {0.0, 260.0, 38.0, 10.0},  // at the bottom of the plot
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
    void surfaceIsARaisedPanelWithMouseTracking();
    void startsWithAutomaticRangeAndNoMarkerLines();
    void surfacePaintsNothingItself();
    void eachPaintEmitsDrawOnce();
    void painterIsActiveOnTheSurface();
    void painterSmoothsPixmapsButNotLines();
    void drawnFlagIsResetToTrueAtEachPaint();
    void eachPaintResetsThePlotAreaToTheWholeWidget_data();
    void eachPaintResetsThePlotAreaToTheWholeWidget();
    void rangeIsZeroToOneUnlessHasScaleIsSet();
    void drawingIsNotClipped();
    void eachPaintStartsFromAnEmptySurface();

    void frameMasksMarginsOnlyOnRequest_data();
    void frameMasksMarginsOnlyOnRequest();
    void labelsShowFirstCharactersOfTheLimits_data();
    void labelsShowFirstCharactersOfTheLimits();
    void labelsAreDrawnInTheirBoxes_data();
    void labelsAreDrawnInTheirBoxes();
    void labelsAreBlackEvenWithARedPen();
    void labelsHaveDarkPixelsInTheirBoxes();
    void labelPositionsFollowTheLayoutSettings();
    void labelsCanBeDrawnOnTinySurfaces_data();
    void labelsCanBeDrawnOnTinySurfaces();
    void invalidRangeKeepsOutlineAndMargins_data();
    void invalidRangeKeepsOutlineAndMargins();
};

void tst_DispAreaPainting::surfaceIsARaisedPanelWithMouseTracking()
{
    const DispArea area;
    QCOMPARE(area.objectName(), "DispArea");
    QCOMPARE(area.windowTitle(), "Frame");
    QCOMPARE(area.size(), usualSize);
    QCOMPARE(area.frameShape(), QFrame::StyledPanel);
    QCOMPARE(area.frameShadow(), QFrame::Raised);
    QVERIFY(area.hasMouseTracking());
}

void tst_DispAreaPainting::startsWithAutomaticRangeAndNoMarkerLines()
{
    const DispArea area;
    QVERIFY(!area.hasScale);
    QVERIFY(!area.markLines);
    QVERIFY(!area.mouse.pressed);
    QCOMPARE(area.cc.realX1, 1.0);
    QCOMPARE(area.cc.realY1, 1.0);
}

// The form of the surface sets a frame shape, but the surface does not paint it.
void tst_DispAreaPainting::surfacePaintsNothingItself()
{
    const QImage image = paintedBy(usualSize, [](DispArea&, QStylePainter*) {});
    QVERIFY(isFilledWith(image, image.rect(), image.pixelColor(200, 150)));
}

void tst_DispAreaPainting::eachPaintEmitsDrawOnce()
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
    area.update(); // both updates share one paint
    QCOMPARE(drawings, first + 2);
    QCOMPARE(paints.within(50), first + 3);
    QCOMPARE(drawings, first + 3);
}

void tst_DispAreaPainting::painterIsActiveOnTheSurface()
{
    int calls = 0;
    paintedBy(usualSize, [&calls](DispArea& area, QStylePainter* p) {
        ++calls;
        QVERIFY(p->isActive());
        QCOMPARE(p->device(), static_cast<QPaintDevice*>(&area));
    });
    QCOMPARE(calls, 1);
}

void tst_DispAreaPainting::painterSmoothsPixmapsButNotLines()
{
    QPainter::RenderHints hints;
    const QImage image = paintedBy(usualSize, [&hints](DispArea& area, QStylePainter* p) {
        hints = p->renderHints();
        fill(area, p, Qt::white);
        p->setPen(Qt::black);
        p->drawLine(10, 10, 200, 77);
    });
    QVERIFY(hints.testFlag(QPainter::SmoothPixmapTransform));
    QVERIFY(!hints.testFlag(QPainter::Antialiasing));
    for (int y = 10; y < 78; ++y) { // without antialiasing, a sloped line has no grey pixels
        for (int x = 10; x < 201; ++x) {
            const int grey = qGray(image.pixel(x, y));
            QVERIFY(grey == 0 || grey == 255);
        }
    }
}

void tst_DispAreaPainting::drawnFlagIsResetToTrueAtEachPaint()
{
    DispArea area;
    QList<bool> seen;
    connect(&area, &DispArea::draw, this, [&] {
        seen << area.cc.drawn;
        area.cc.drawn = false;
    });
    area.grab();
    QVERIFY(!area.cc.drawn); // the value that the client set is kept
    area.grab();
    QCOMPARE(seen, (QList<bool>{true, true}));
}

void tst_DispAreaPainting::eachPaintResetsThePlotAreaToTheWholeWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("usual size") << QSize(400, 300);
    QTest::newRow("wide") << QSize(511, 97);
    QTest::newRow("one pixel") << QSize(1, 1);
}

// At each paint the surface sets the plot area to the whole widget again, even if a
// client changed it before.
void tst_DispAreaPainting::eachPaintResetsThePlotAreaToTheWholeWidget()
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
    const QList<double> expected{0.0, height, width, 0.0, 0.0, height, width, 0.0};
    area.grab();
    QCOMPARE(places, expected);
    area.grab();
    QCOMPARE(places, expected);
}

void tst_DispAreaPainting::rangeIsZeroToOneUnlessHasScaleIsSet()
{
    DispArea area;
    QList<double> range;
    connect(&area, &DispArea::draw, this, [&] {
        range = {area.cc.realX0, area.cc.realY0, area.cc.realX1, area.cc.realY1};
    });
    area.cc.setReal(5.0, 6.0, 7.0, 8.0);
    area.grab();
    QCOMPARE(range, (QList<double>{0.0, 0.0, 1.0, 1.0}));
    QVERIFY(!area.hasScale); // painting does not set it
    area.hasScale = true;
    area.cc.setReal(5.0, 6.0, 7.0, 8.0);
    area.grab();
    QCOMPARE(range, (QList<double>{5.0, 6.0, 7.0, 8.0}));
}

void tst_DispAreaPainting::drawingIsNotClipped()
{
    const QImage image = paintedBy(usualSize, [](DispArea& area, QStylePainter* p) {
        area.cc.computeArea();
        QVERIFY(!p->hasClipping());
        fill(area, p, Qt::red);
    });
    QVERIFY(isFilledWith(image, image.rect(), Qt::red));
}

void tst_DispAreaPainting::eachPaintStartsFromAnEmptySurface()
{
    DispArea area;
    bool draws = true;
    connect(&area, &DispArea::draw, this, [&](QStylePainter* p) {
        if (draws) {
            fill(area, p, Qt::red);
        }
    });
    QVERIFY(isFilledWith(area.grab().toImage(), area.rect(), Qt::red));
    draws = false;
    const QImage second = area.grab().toImage();
    QVERIFY(second.pixelColor(200, 150) != QColor(Qt::red));
    QVERIFY(isFilledWith(second, area.rect(), second.pixelColor(200, 150)));
}

void tst_DispAreaPainting::frameMasksMarginsOnlyOnRequest_data()
{
    QTest::addColumn<bool>("maskMargins");
    QTest::newRow("with a mask") << true;
    QTest::newRow("without a mask") << false;
}

// The outline is not filled, even if the painter has a brush.
void tst_DispAreaPainting::frameMasksMarginsOnlyOnRequest()
{
    QFETCH(bool, maskMargins);
    const QImage image = paintedBy(usualSize, [maskMargins](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::red);
        p->setBrush(Qt::blue);
        area.cc.computeArea();
        area.drawFrame(p, maskMargins);
    });
    const QColor margin = maskMargins ? Qt::white : Qt::red;
    QVERIFY(isFilledWith(image, QRect(QPoint(41, 16), QPoint(379, 269)), Qt::red));
    QVERIFY(isFilledWith(image, QRect(QPoint(0, 0), QPoint(399, 14)), margin));
    QVERIFY(isFilledWith(image, QRect(QPoint(0, 30), QPoint(39, 250)), margin));
    QVERIFY(isFilledWith(image, QRect(QPoint(381, 0), QPoint(399, 299)), margin));
    QVERIFY(isFilledWith(image, QRect(QPoint(0, 285), QPoint(399, 299)), margin));
    QVERIFY(isFilledWith(image, QRect(QPoint(121, 271), QPoint(299, 284)), margin));
    QVERIFY(isFilledWith(image, QRect(QPoint(40, 15), QPoint(380, 15)), outlineGrey));
    QVERIFY(isFilledWith(image, QRect(QPoint(40, 270), QPoint(380, 270)), outlineGrey));
    QVERIFY(isFilledWith(image, QRect(QPoint(40, 15), QPoint(40, 270)), outlineGrey));
    QVERIFY(isFilledWith(image, QRect(QPoint(380, 15), QPoint(380, 270)), outlineGrey));
}

void tst_DispAreaPainting::labelsShowFirstCharactersOfTheLimits_data()
{
    QTest::addColumn<QList<double>>("range"); // x0, y0, x1, y1
    QTest::addColumn<QStringList>("texts");   // for y1, y0, x0, x1
    QTest::newRow("short numbers")
        << QList<double>{0.0, -0.5, 10.0, 1.5} << QStringList{"1.5", "-0.5", "0", "10"};
    QTest::newRow("energies lose their last digit")
        << QList<double>{8333.2469, 8333.2469, 8404.52, 8404.52}
        << QStringList{"8404.", "8333.", "8333.2", "8404.5"};
    QTest::newRow("exponent is cut off")
        << QList<double>{1234567.0, 1234567.0, 9876543.0, 9876543.0}
        << QStringList{"9.876", "1.234", "1.2345", "9.8765"};
    QTest::newRow("negative exponent is cut off")
        << QList<double>{-0.000012345678, -0.000012345678, 0.00001, 0.00001}
        << QStringList{"1e-05", "-1.23", "-1.234", "1e-05"};
    QTest::newRow("exponent is shortened") << QList<double>{1.5e100, 1.5e100, 2.5e101, 2.5e101}
                                           << QStringList{"2.5e+", "1.5e+", "1.5e+1", "2.5e+1"};
    QTest::newRow("rounded to six digits, then shortened")
        << QList<double>{0.99999999, 0.99999999, 12.3456789, 12.3456789}
        << QStringList{"12.34", "1", "1", "12.345"};
    QTest::newRow("reversed") << QList<double>{3.0, 4.0, 1.0, 2.0}
                              << QStringList{"2", "4", "3", "1"};
    QTest::newRow("NaN and infinities")
        << QList<double>{notANumber, -infinity, infinity, notANumber}
        << QStringList{"nan", "-inf", "nan", "inf"};
    QTest::newRow("empty range") << QList<double>{3.0, 3.0, 3.0, 3.0}
                                 << QStringList{"3", "3", "3", "3"};
}

void tst_DispAreaPainting::labelsShowFirstCharactersOfTheLimits()
{
    QFETCH(QList<double>, range);
    QFETCH(QStringList, texts);
    const QImage image =
        drawnFrame(usualSize, {range.at(0), range.at(1), range.at(2), range.at(3)});
    QCOMPARE(image, expectedFrame(usualSize, usualOutline, {texts, usualBoxes}));
}

void tst_DispAreaPainting::labelsAreDrawnInTheirBoxes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("outline");
    QTest::addColumn<QList<QRectF>>("boxes");
    QTest::newRow("usual size") << usualSize << usualOutline << usualBoxes;
    // The margins are trunc(33.3) = 33 (left), trunc(16.65) = 16 (right),
    // trunc(21.7) = 21 (bottom) and trunc(10.85) = 10 (top) pixels, so the plot area
    // spans x = 33 to 317 and y = 10 to 196. A line of text is trunc(186 / 20) = 9
    // pixels high, its text trunc(0.85 * 9) = 7, the gap trunc(0.15 * 9) = 1.
    QTest::newRow("odd sides") << QSize(333, 217) << QRect(33, 10, 284, 186)
                               << QList<QRectF>{{0.0, 10.0, 33.0 * 0.95, 7.0},
                                                {0.0, 189.0, 33.0 * 0.95, 7.0},
                                                {33.0, 197.0, 66.0, 7.0},
                                                {251.0, 197.0, 66.0, 7.0}};
    // The plot area spans x = 80 to 760 and y = 45 to 810. A line of text is
    // trunc(765 / 20) = 38 pixels high, its text trunc(0.85 * 38) = 32, the gap
    // trunc(0.15 * 38) = 5. The font size is limited to 12 points.
    QTest::newRow("large") << QSize(800, 900) << QRect(80, 45, 680, 765)
                           << QList<QRectF>{{0.0, 45.0, 76.0, 32.0},
                                            {0.0, 778.0, 76.0, 32.0},
                                            {80.0, 815.0, 160.0, 32.0},
                                            {600.0, 815.0, 160.0, 32.0}};
}

void tst_DispAreaPainting::labelsAreDrawnInTheirBoxes()
{
    QFETCH(QSize, size);
    QFETCH(QRect, outline);
    QFETCH(QList<QRectF>, boxes);
    const QImage image = drawnFrame(size, {8300.0, -1.25, 8400.0, 2.5});
    QCOMPARE(image, expectedFrame(size, outline, {{"2.5", "-1.25", "8300", "8400"}, boxes}));
}

void tst_DispAreaPainting::labelsAreBlackEvenWithARedPen()
{
    const QImage image = paintedBy(usualSize, [](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::white);
        p->setPen(QPen(Qt::red, 5.0));
        area.cc.computeArea();
        area.drawFrame(p, false);
    });
    const Labels labels{{"1", "0", "0", "1"}, usualBoxes};
    QCOMPARE(image, expectedFrame(usualSize, usualOutline, labels));
}

// Other tests compare pictures with labels, but two pictures in which all labels are
// missing would be equal too. This test shows that the labels are really drawn.
void tst_DispAreaPainting::labelsHaveDarkPixelsInTheirBoxes()
{
    const QImage image = drawnFrame(usualSize, {8300.0, -1.25, 8400.0, 2.5});
    for (const QRectF& box : usualBoxes) {
        QVERIFY(darkPixels(image, box.toRect()) > 5);
    }
    const QImage empty = expectedFrame(usualSize, usualOutline, {{"", "", "", ""}, usualBoxes});
    QCOMPARE(darkPixels(empty, empty.rect()), 0);
}

// A line of text is trunc(255 / 10) = 25 pixels high, its text trunc(0.5 * 25) = 12,
// the gap trunc(0.5 * 25) = 12. The left margin is 0.2 * 400 = 80 pixels.
void tst_DispAreaPainting::labelPositionsFollowTheLayoutSettings()
{
    const QImage image = paintedBy(usualSize, [](DispArea& area, QStylePainter* p) {
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
    QCOMPARE(image, expectedFrame(usualSize, QRect(80, 15, 300, 255), labels));
}

void tst_DispAreaPainting::labelsCanBeDrawnOnTinySurfaces_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("one row") << QSize(400, 1);
    QTest::newRow("one column") << QSize(1, 300);
    QTest::newRow("too small for a row of text") << QSize(50, 20);
}

void tst_DispAreaPainting::labelsCanBeDrawnOnTinySurfaces()
{
    QFETCH(QSize, size);
    const QImage image = paintedBy(size, [](DispArea& area, QStylePainter* p) {
        area.cc.computeArea();
        area.drawFrame(p, true);
        QVERIFY(p->isActive());
    });
    QCOMPARE(image.size(), size);
}

void tst_DispAreaPainting::invalidRangeKeepsOutlineAndMargins_data()
{
    QTest::addColumn<QList<double>>("range"); // x0, y0, x1, y1
    QTest::newRow("NaN") << QList<double>{notANumber, notANumber, notANumber, notANumber};
    QTest::newRow("infinities") << QList<double>{-infinity, -infinity, infinity, infinity};
    QTest::newRow("empty range") << QList<double>{1.0, 1.0, 1.0, 1.0};
    QTest::newRow("huge") << QList<double>{-1e308, -1e308, 1e308, 1e308};
}

// Checks the inside of the plot, the upper side of the outline, and the part of the bottom
// margin below the labels.
void tst_DispAreaPainting::invalidRangeKeepsOutlineAndMargins()
{
    QFETCH(QList<double>, range);
    const QImage image = paintedBy(usualSize, [&range](DispArea& area, QStylePainter* p) {
        fill(area, p, Qt::red);
        area.cc.computeArea();
        area.cc.setReal(range.at(0), range.at(1), range.at(2), range.at(3));
        area.drawFrame(p, true);
    });
    QVERIFY(isFilledWith(image, QRect(QPoint(41, 16), QPoint(379, 269)), Qt::red));
    QVERIFY(isFilledWith(image, QRect(QPoint(40, 15), QPoint(380, 15)), outlineGrey));
    QVERIFY(isFilledWith(image, QRect(QPoint(0, 285), QPoint(399, 299)), Qt::white));
}

QTEST_MAIN(tst_DispAreaPainting)
#include "tst_DispAreaPainting.moc"
