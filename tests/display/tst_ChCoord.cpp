// Tests of ChCoord: layout, conversion between data values and pixels, edge bands and
// tick steps.
#include "display/ChCoord.h"

#include "support/PlotSurface.h"

#include "support/SameDouble.h"

#include <QTest>

#include <functional>
#include <limits>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

using Conversion = std::function<double(const ChCoord&, double)>;
using EdgeTest = std::function<bool(const ChCoord&, double)>;

Conversion asConversion(double (ChCoord::*operation)(double) const)
{
    return [operation](const ChCoord& cc, double v) { return (cc.*operation)(v); };
}

EdgeTest asEdgeTest(bool (ChCoord::*test)(double) const)
{
    return [test](const ChCoord& cc, double p) { return (cc.*test)(p); };
}

bool isArea(const ChCoord& cc, double x0, double y0, double x1, double y1)
{
    return cc.areaX0 == x0 && cc.areaY0 == y0 && cc.areaX1 == x1 && cc.areaY1 == y1;
}

bool isScreen(const ChCoord& cc, double x0, double y0, double x1, double y1)
{
    return cc.scrX0 == x0 && cc.scrY0 == y0 && cc.scrX1 == x1 && cc.scrY1 == y1;
}

bool isReal(const ChCoord& cc, double x0, double y0, double x1, double y1)
{
    return cc.realX0 == x0 && cc.realY0 == y0 && cc.realX1 == x1 && cc.realY1 == y1;
}

} // namespace

Q_DECLARE_METATYPE(Conversion)
Q_DECLARE_METATYPE(EdgeTest)

class tst_ChCoord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithUnitRanges();
    void startsWithDefaultLayout();
    void setScreenAlsoSetsPlotArea();
    void setAreaKeepsScreen();
    void realLimitsAreSetTogetherOrPerAxis();
    void marginsAreTruncatedToWholePixels_data();
    void marginsAreTruncatedToWholePixels();
    void marginsAreFractionsOfTheWidgetSize();
    void valuesAndPixelsAreConvertedLinearlyInIncreasingRanges_data();
    void valuesAndPixelsAreConvertedLinearlyInIncreasingRanges();
    void reversedRangeReversesTheDirectionOfConversions_data();
    void reversedRangeReversesTheDirectionOfConversions();
    void clampedConversionLimitsValuesToTheRange_data();
    void clampedConversionLimitsValuesToTheRange();
    void emptyRealRangeYieldsInfiniteOrNaNPixels();
    void emptyPlotAreaYieldsInfiniteOrNaNValues();
    void edgeBandsAreAtBothEndsOfEachAxis_data();
    void edgeBandsAreAtBothEndsOfEachAxis();
    void edgeBandsExcludeTheirInnerLimits();
    void plotAreaAndScreenHaveSeparateEdgeBandFractions();
    void tickStepIsTheFirstStepThatIsWideEnough_data();
    void tickStepIsTheFirstStepThatIsWideEnough();
    void tickStepSearchEndsAfterEightDecades_data();
    void tickStepSearchEndsAfterEightDecades();
    void emptyRealRangeGivesTheBaseAsTickStep();
    void tickStepOfYUsesScaleOfX();
    void textRowAndLabelWidthAreWholePixels();
};

void tst_ChCoord::startsWithUnitRanges()
{
    const ChCoord cc;
    QVERIFY(isScreen(cc, 0, 0, 1, 1));
    QVERIFY(isArea(cc, 0, 0, 1, 1));
    QVERIFY(isReal(cc, 0, 0, 1, 1));
}

void tst_ChCoord::startsWithDefaultLayout()
{
    const ChCoord cc;
    QCOMPARE(cc.scrEdge, 0.1);
    QCOMPARE(cc.areaEdge, 0.1);
    QCOMPARE(cc.marginLeft, 0.1);
    QCOMPARE(cc.marginRight, 0.05);
    QCOMPARE(cc.marginTop, 0.05);
    QCOMPARE(cc.marginBottom, 0.1);
    QCOMPARE(cc.titleDiv, 20);
    QCOMPARE(cc.tickDiv, 25);
    QCOMPARE(cc.textFill, 0.85);
    QVERIFY(cc.drawn);
}

void tst_ChCoord::setScreenAlsoSetsPlotArea()
{
    ChCoord cc;
    cc.setScreen(1, 2, 3, 4); // x0, y0, x1, y1
    QVERIFY(isScreen(cc, 1, 2, 3, 4));
    QVERIFY(isArea(cc, 1, 2, 3, 4));
    QVERIFY(isReal(cc, 0, 0, 1, 1));
}

void tst_ChCoord::setAreaKeepsScreen()
{
    ChCoord cc;
    cc.setArea(5, 6, 7, 8);
    QVERIFY(isArea(cc, 5, 6, 7, 8));
    QVERIFY(isScreen(cc, 0, 0, 1, 1));
    QVERIFY(isReal(cc, 0, 0, 1, 1));
}

void tst_ChCoord::realLimitsAreSetTogetherOrPerAxis()
{
    ChCoord cc;
    cc.setReal(1, 2, 3, 4);
    QVERIFY(isReal(cc, 1, 2, 3, 4));
    cc.setRealX(-5, 5);
    QVERIFY(isReal(cc, -5, 2, 5, 4));
    cc.setRealY(9, 7);
    QVERIFY(isReal(cc, -5, 9, 5, 7));
    QVERIFY(isArea(cc, 0, 0, 1, 1));
    QVERIFY(isScreen(cc, 0, 0, 1, 1));
}

void tst_ChCoord::marginsAreTruncatedToWholePixels_data()
{
    QTest::addColumn<QRectF>("screen"); // x0, y0, x1 - x0, y1 - y0
    QTest::addColumn<QRectF>("area");
    // The default margins are 0.1 (left and bottom) and 0.05 (right and top) of the
    // widget's size: 40 (left), 20 (right), 30 (bottom) and 15 (top) pixels.
    QTest::newRow("400 by 300") << QRectF(0, 300, 400, -300) << QRectF(40, 270, 340, -255);
    // Before truncation the margins are 39.9 (left), 19.95 (right), 29.9 (bottom) and
    // 14.95 (top) pixels.
    QTest::newRow("399 by 299") << QRectF(0, 299, 399, -299) << QRectF(39, 270, 341, -256);
    QTest::newRow("one pixel") << QRectF(0, 1, 1, -1) << QRectF(0, 1, 1, -1);
    QTest::newRow("empty") << QRectF(0, 0, 0, 0) << QRectF(0, 0, 0, 0);
    // The margins are 20 (left), 10 (right), 10 (bottom) and 5 (top) pixels.
    QTest::newRow("not at the origin") << QRectF(10, 120, 200, -100) << QRectF(30, 110, 170, -85);
    QTest::newRow("y axis pointing down") << QRectF(0, 0, 400, 300) << QRectF(40, 30, 340, 255);
}

void tst_ChCoord::marginsAreTruncatedToWholePixels()
{
    QFETCH(QRectF, screen);
    QFETCH(QRectF, area);
    ChCoord cc;
    cc.setScreen(screen.left(), screen.top(), screen.right(), screen.bottom());
    cc.computeArea();
    QVERIFY(isArea(cc, area.left(), area.top(), area.right(), area.bottom()));
    QVERIFY(isScreen(cc, screen.left(), screen.top(), screen.right(), screen.bottom()));
}

void tst_ChCoord::marginsAreFractionsOfTheWidgetSize()
{
    ChCoord cc;
    cc.setScreen(0, 200, 400, 0);
    cc.marginLeft = 0.25;
    cc.marginRight = 0.125;
    cc.marginTop = 0.5;
    cc.marginBottom = 0.0625; // 0.0625 * 200 = 12.5 pixels, truncated to 12
    cc.computeArea();
    QVERIFY(isArea(cc, 100, 188, 350, 100));
}

void tst_ChCoord::valuesAndPixelsAreConvertedLinearlyInIncreasingRanges_data()
{
    QTest::addColumn<Conversion>("conversion");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("x to pixels, left end") << asConversion(&ChCoord::r2sX) << 10.0 << 40.0;
    QTest::newRow("x to pixels, right end") << asConversion(&ChCoord::r2sX) << 27.0 << 380.0;
    QTest::newRow("x to pixels, inside") << asConversion(&ChCoord::r2sX) << 15.0 << 140.0;
    QTest::newRow("x to pixels, outside") << asConversion(&ChCoord::r2sX) << 5.0 << -60.0;
    QTest::newRow("y to pixels, bottom") << asConversion(&ChCoord::r2sY) << -1.0 << 270.0;
    QTest::newRow("y to pixels, top") << asConversion(&ChCoord::r2sY) << 4.0 << 15.0;
    QTest::newRow("y to pixels, inside") << asConversion(&ChCoord::r2sY) << 0.0 << 219.0;
    QTest::newRow("y to pixels, outside") << asConversion(&ChCoord::r2sY) << -2.0 << 321.0;
    QTest::newRow("distance in x") << asConversion(&ChCoord::r2sdX) << 2.0 << 40.0;
    QTest::newRow("backward distance in x") << asConversion(&ChCoord::r2sdX) << -1.0 << -20.0;
    QTest::newRow("distance in y points up") << asConversion(&ChCoord::r2sdY) << 1.0 << -51.0;
    QTest::newRow("x of a pixel") << asConversion(&ChCoord::s2rX) << 140.0 << 15.0;
    QTest::newRow("x of a pixel outside") << asConversion(&ChCoord::s2rX) << 0.0 << 8.0;
    QTest::newRow("y of a pixel") << asConversion(&ChCoord::s2rY) << 219.0 << 0.0;
    QTest::newRow("y of a pixel outside") << asConversion(&ChCoord::s2rY) << 321.0 << -2.0;
    QTest::newRow("x from the first limit") << asConversion(&ChCoord::s2rOffX) << 140.0 << 5.0;
    QTest::newRow("y from the first limit") << asConversion(&ChCoord::s2rOffY) << 219.0 << 1.0;
    QTest::newRow("pixels as a distance in x") << asConversion(&ChCoord::s2rdX) << 40.0 << 2.0;
    QTest::newRow("pixels as a distance in y") << asConversion(&ChCoord::s2rdY) << 102.0 << -2.0;
}

// The tolerance of 1e-12 is about 18 ulps of 400, the widget's width in pixels, and far
// below any visible difference.
void tst_ChCoord::valuesAndPixelsAreConvertedLinearlyInIncreasingRanges()
{
    QFETCH(Conversion, conversion);
    QFETCH(double, from);
    QFETCH(double, to);
    const PlotSurface cc;
    QVERIFY(qAbs(conversion(cc, from) - to) < 1e-12);
}

void tst_ChCoord::reversedRangeReversesTheDirectionOfConversions_data()
{
    QTest::addColumn<Conversion>("conversion");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("x to pixels, left end") << asConversion(&ChCoord::r2sX) << 27.0 << 40.0;
    QTest::newRow("y to pixels, inside") << asConversion(&ChCoord::r2sY) << 0.0 << 66.0;
    QTest::newRow("distance in x points left") << asConversion(&ChCoord::r2sdX) << 1.0 << -20.0;
    QTest::newRow("distance in y points down") << asConversion(&ChCoord::r2sdY) << 1.0 << 51.0;
    QTest::newRow("x of a pixel") << asConversion(&ChCoord::s2rX) << 0.0 << 29.0;
    QTest::newRow("y of a pixel") << asConversion(&ChCoord::s2rY) << 66.0 << 0.0;
    QTest::newRow("x from the first limit") << asConversion(&ChCoord::s2rOffX) << 140.0 << -5.0;
    QTest::newRow("y from the first limit") << asConversion(&ChCoord::s2rOffY) << 219.0 << -1.0;
    QTest::newRow("pixels as a distance in x") << asConversion(&ChCoord::s2rdX) << 20.0 << -1.0;
    QTest::newRow("pixels as a distance in y") << asConversion(&ChCoord::s2rdY) << 51.0 << 1.0;
}

// The tolerance of 1e-12 is about 18 ulps of 400, the widget's width in pixels, and far
// below any visible difference.
void tst_ChCoord::reversedRangeReversesTheDirectionOfConversions()
{
    QFETCH(Conversion, conversion);
    QFETCH(double, from);
    QFETCH(double, to);
    PlotSurface cc;
    cc.setReal(27, 4, 10, -1);
    QVERIFY(qAbs(conversion(cc, from) - to) < 1e-12);
}

void tst_ChCoord::clampedConversionLimitsValuesToTheRange_data()
{
    QTest::addColumn<bool>("reversed");
    QTest::addColumn<Conversion>("conversion");
    QTest::addColumn<double>("pixel");
    QTest::addColumn<double>("value");
    const Conversion x = asConversion(&ChCoord::s2rClampX);
    const Conversion y = asConversion(&ChCoord::s2rClampY);
    QTest::newRow("x, left of the area") << false << x << 0.0 << 10.0;
    QTest::newRow("x, inside") << false << x << 140.0 << 15.0;
    QTest::newRow("x, right of the area") << false << x << 400.0 << 27.0;
    QTest::newRow("y, below the area") << false << y << 300.0 << -1.0;
    QTest::newRow("y, inside") << false << y << 219.0 << 0.0;
    QTest::newRow("y, above the area") << false << y << 0.0 << 4.0;
    QTest::newRow("reversed x, left of the area") << true << x << 0.0 << 27.0;
    QTest::newRow("reversed x, inside") << true << x << 140.0 << 22.0;
    QTest::newRow("reversed x, right of the area") << true << x << 400.0 << 10.0;
    QTest::newRow("reversed y, below the area") << true << y << 300.0 << 4.0;
    QTest::newRow("reversed y, inside") << true << y << 219.0 << 3.0;
    QTest::newRow("reversed y, above the area") << true << y << 0.0 << -1.0;
}

// The tolerance of 1e-12 is about 18 ulps of 400, the widget's width in pixels, and far
// below any visible difference.
void tst_ChCoord::clampedConversionLimitsValuesToTheRange()
{
    QFETCH(bool, reversed);
    QFETCH(Conversion, conversion);
    QFETCH(double, pixel);
    QFETCH(double, value);
    PlotSurface cc;
    if (reversed) {
        cc.setReal(27, 4, 10, -1);
    }
    QVERIFY(qAbs(conversion(cc, pixel) - value) < 1e-12);
}

void tst_ChCoord::emptyRealRangeYieldsInfiniteOrNaNPixels()
{
    PlotSurface cc;
    cc.setReal(5, 5, 5, 5);
    QVERIFY(tests::sameDouble(cc.r2sX(6), infinite)); // the scale in x is 340 / 0 pixels per unit
    QVERIFY(tests::sameDouble(cc.r2sX(4), -infinite));
    QVERIFY(tests::sameDouble(cc.r2sX(5), notANumber));
    QVERIFY(tests::sameDouble(cc.r2sY(6), -infinite)); // the scale in y is -255 / 0 pixels per unit
    QVERIFY(tests::sameDouble(cc.r2sY(5), notANumber));
    QVERIFY(tests::sameDouble(cc.r2sdX(1), infinite));
    QVERIFY(tests::sameDouble(cc.r2sdX(0), notANumber));
    QVERIFY(tests::sameDouble(cc.r2sdY(1), -infinite));
    QCOMPARE(cc.s2rX(123), 5.0);
    QCOMPARE(cc.s2rY(123), 5.0);
    QCOMPARE(cc.s2rClampX(123), 5.0);
}

void tst_ChCoord::emptyPlotAreaYieldsInfiniteOrNaNValues()
{
    PlotSurface cc;
    cc.setArea(40, 30, 40, 30);
    QCOMPARE(cc.r2sX(15), 40.0);
    QCOMPARE(cc.r2sY(3), 30.0);
    QVERIFY(tests::sameDouble(cc.s2rX(41), infinite)); // the scale in x is 17 / 0 units per pixel
    QVERIFY(tests::sameDouble(cc.s2rX(40), notANumber));
    QVERIFY(tests::sameDouble(cc.s2rY(29), -infinite));
    QVERIFY(tests::sameDouble(cc.s2rOffY(31), infinite));
    QVERIFY(tests::sameDouble(cc.s2rdX(-1), -infinite));
    QVERIFY(tests::sameDouble(cc.s2rdY(0), notANumber));
    QCOMPARE(cc.s2rClampX(41), 27.0);
    QCOMPARE(cc.s2rClampX(39), 10.0);
}

void tst_ChCoord::edgeBandsAreAtBothEndsOfEachAxis_data()
{
    QTest::addColumn<EdgeTest>("isNear");
    QTest::addColumn<QList<double>>("nearPixels");
    QTest::addColumn<QList<double>>("farPixels");
    // The edge bands are a tenth of the size. The plot area spans x = 40 to 380 and
    // y = 15 to 270 in pixels, so its bands are 34 pixels wide and 25.5 pixels high.
    // The bands of the widget, 400 by 300 pixels, are 40 pixels wide and 30 pixels
    // high.
    QTest::newRow("x of the area")
        << asEdgeTest(&ChCoord::nearAreaEdgeX)
        << QList<double>{-1000, 0, 40, 73, 347, 380, 400, 1000} << QList<double>{75, 210, 345};
    QTest::newRow("y of the area")
        << asEdgeTest(&ChCoord::nearAreaEdgeY)
        << QList<double>{-1000, 0, 15, 40, 245, 270, 300, 1000} << QList<double>{41, 140, 244};
    QTest::newRow("x of the widget")
        << asEdgeTest(&ChCoord::nearScrEdgeX) << QList<double>{-1000, -1, 0, 39, 361, 400, 1000}
        << QList<double>{41, 200, 359};
    QTest::newRow("y of the widget")
        << asEdgeTest(&ChCoord::nearScrEdgeY) << QList<double>{-1000, -1, 0, 29, 271, 300, 1000}
        << QList<double>{31, 150, 269};
}

void tst_ChCoord::edgeBandsAreAtBothEndsOfEachAxis()
{
    QFETCH(EdgeTest, isNear);
    QFETCH(QList<double>, nearPixels);
    QFETCH(QList<double>, farPixels);
    const PlotSurface cc;
    for (const double p : nearPixels) {
        QVERIFY2(isNear(cc, p), qPrintable(QString::number(p)));
    }
    for (const double p : farPixels) {
        QVERIFY2(!isNear(cc, p), qPrintable(QString::number(p)));
    }
}

// The plot area spans x = 40 to 380, so a band of a quarter of its width is 85 pixels
// wide. The inner limits, 40 + 85 = 125 and 380 - 85 = 295, do not belong to the bands.
void tst_ChCoord::edgeBandsExcludeTheirInnerLimits()
{
    PlotSurface cc;
    cc.areaEdge = 0.25;
    QVERIFY(!cc.nearAreaEdgeX(125.0));
    QVERIFY(cc.nearAreaEdgeX(124.999));
    QVERIFY(!cc.nearAreaEdgeX(295.0));
    QVERIFY(cc.nearAreaEdgeX(295.001));
    cc.areaEdge = 0.0;
    QVERIFY(!cc.nearAreaEdgeX(40.0));
    QVERIFY(cc.nearAreaEdgeX(39.999));
}

void tst_ChCoord::plotAreaAndScreenHaveSeparateEdgeBandFractions()
{
    PlotSurface cc;
    cc.areaEdge = 0.4; // bands of 0.4 * 340 = 136 and 0.4 * 255 = 102 pixels
    QVERIFY(cc.nearAreaEdgeX(170.0));
    QVERIFY(cc.nearAreaEdgeY(110.0));
    QVERIFY(!cc.nearScrEdgeX(170.0));
    QVERIFY(!cc.nearScrEdgeY(110.0));
    cc.areaEdge = 0.1;
    cc.scrEdge = 0.45; // bands of 0.45 * 400 = 180 and 0.45 * 300 = 135 pixels
    QVERIFY(cc.nearScrEdgeX(170.0));
    QVERIFY(cc.nearScrEdgeY(110.0));
    QVERIFY(!cc.nearAreaEdgeX(170.0));
    QVERIFY(!cc.nearAreaEdgeY(110.0));
}

// The steps tried are 1, 2, 5, 10, 20, 50, ... times the base. One unit of x is 20
// pixels wide, because 17 units fill the plot area of 340 pixels.
void tst_ChCoord::tickStepIsTheFirstStepThatIsWideEnough_data()
{
    QTest::addColumn<double>("base");
    QTest::addColumn<double>("minPixels");
    QTest::addColumn<double>("step");
    QTest::newRow("base is wide enough") << 1.0 << 10.0 << 1.0;
    QTest::newRow("exactly the minimum is too narrow") << 1.0 << 20.0 << 2.0;
    QTest::newRow("step of 5") << 1.0 << 40.0 << 5.0;
    QTest::newRow("step of 10") << 1.0 << 100.0 << 10.0;
    QTest::newRow("step of 20") << 1.0 << 200.0 << 20.0;
    QTest::newRow("step of 50") << 1.0 << 400.0 << 50.0;
    QTest::newRow("base below one") << 0.125 << 10.0 << 0.625; // steps of 2.5, 5 and 12.5 pixels
    QTest::newRow("base that is not a power of ten") << 3.0 << 100.0 << 6.0;
    QTest::newRow("minimum of zero pixels") << 1.0 << 0.0 << 1.0;
    // The last step tried is 5e7 units, which is 1e9 pixels wide.
    QTest::newRow("last step tried") << 1.0 << 999999999.0 << 5e7;
}

void tst_ChCoord::tickStepIsTheFirstStepThatIsWideEnough()
{
    QFETCH(double, base);
    QFETCH(double, minPixels);
    QFETCH(double, step);
    const PlotSurface cc;
    QCOMPARE(cc.tickStep(base, minPixels), step);
}

void tst_ChCoord::tickStepSearchEndsAfterEightDecades_data()
{
    QTest::addColumn<QRectF>("xRange"); // x0 and x1 of the area, then of the real range
    QTest::addColumn<double>("base");
    QTest::addColumn<double>("minPixels");
    QTest::addColumn<double>("step");
    QTest::newRow("minimum too large") << QRectF(40, 380, 10, 27) << 1.0 << 1e9 << 1e8;
    QTest::newRow("narrow area") << QRectF(0, 1, 0, 1e12) << 1.0 << 10.0 << 1e8;
    QTest::newRow("area of zero width") << QRectF(40, 40, 10, 27) << 0.5 << 10.0 << 5e7;
    QTest::newRow("area and range of zero width") << QRectF(40, 40, 10, 10) << 2.0 << 10.0 << 2e8;
    QTest::newRow("reversed range") << QRectF(40, 380, 27, 10) << 3.0 << 10.0 << 3e8;
}

void tst_ChCoord::tickStepSearchEndsAfterEightDecades()
{
    QFETCH(QRectF, xRange);
    QFETCH(double, base);
    QFETCH(double, minPixels);
    QFETCH(double, step);
    ChCoord cc;
    cc.setArea(xRange.x(), 300, xRange.y(), 0);
    cc.setRealX(xRange.width(), xRange.height());
    QCOMPARE(cc.tickStep(base, minPixels), step);
}

void tst_ChCoord::emptyRealRangeGivesTheBaseAsTickStep()
{
    PlotSurface cc;
    cc.setRealX(10, 10); // one unit is infinitely many pixels wide
    QCOMPARE(cc.tickStep(0.5, 10), 0.5);
}

void tst_ChCoord::tickStepOfYUsesScaleOfX()
{
    PlotSurface cc;
    cc.setRealY(0, 1e6);
    QCOMPARE(cc.tickStepY(1.0, 40), 5.0);
    cc.setRealY(7, 7);
    QCOMPARE(cc.tickStepY(1.0, 40), 5.0);
    cc.setRealX(27, 10);
    QCOMPARE(cc.tickStepY(1.0, 40), 1e8);
}

// On a widget of 399 by 299 pixels, the plot area extends from y = 299 - 29 = 270 up to
// y = 14. The height of a line of text is a twentieth of the height of the plot area:
// (14 - 270) / 20 = -12.8 pixels, negative because y pixels grow downward. The label width is the
// left margin, 0.1 * 399 = 39.9 pixels. Both numbers are truncated.
void tst_ChCoord::textRowAndLabelWidthAreWholePixels()
{
    ChCoord cc;
    cc.setScreen(0.0, 299.0, 399.0, 0.0);
    cc.computeArea();
    QCOMPARE(cc.textRow(), -12);
    QCOMPARE(cc.labelWidth(), 39);
    cc.titleDiv = 0; // -256 / 0 is -infinity, which becomes the smallest int
    QCOMPARE(cc.textRow(), std::numeric_limits<int>::min());
}

QTEST_APPLESS_MAIN(tst_ChCoord)
#include "tst_ChCoord.moc"
