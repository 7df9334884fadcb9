// Tests of PlaneGraph, the plot of one reference's absorbance against another
// reference's absorbance.

#include "display/PlaneGraph.h"
#include "support/ExtremeNumbers.h"
#include "support/GraphPlot.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::Graph;
using display::PlaneGraph;

using namespace tests;

// On a surface of 400 by 300 pixels, the plot area spans x = 40 to 380 and y = 15 to
// 270: 340 by 255 pixels. In a view of 0 to 17 and 0 to 12.75, one unit is 20 pixels on
// both axes.

namespace
{

const QSize plotSize(400, 300);
const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor yellow(255, 255, 0);
const QColor magenta(255, 0, 255);
const QColor cyan(0, 255, 255);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr analysis::PlaneLines noLines{notANumber, notANumber, notANumber, notANumber};

struct FilledGraph : PlaneGraph {
    explicit FilledGraph(const QList<Point>& newPoints,
                         const analysis::PlaneLines& newLines = noLines)
    {
        points = newPoints;
        lines = newLines;
    }
};

QImage pictureOf(const PlaneGraph& graph, const Graph::Range& view)
{
    GraphPlot plot(graph);
    plot.setRealCoord(view.x0, view.y0, view.x1, view.y1);
    return plot.picture();
}

constexpr Graph::Range twentyPixelsPerUnit{0.0, 0.0, 17.0, 12.75};

/// One point far outside the view, so that the graph is not empty.
const QList<PlaneGraph::Point> farPoint{{-900.0, -900.0, false}};

/// The only pixel row of the plot area that has @p color in @p column; -1 if no row or
/// several rows have it.
int rowIn(const QImage& image, int column, const QColor& color)
{
    int row = -1;
    for (int y = 16; y < 270; ++y) {
        if (image.pixelColor(column, y) == color) {
            if (row >= 0) {
                return -1;
            }
            row = y;
        }
    }
    return row;
}

} // namespace

class tst_PlaneGraph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphWithoutPointsIsEmpty();
    void rangeHasMarginOfATenthOfEachSpan_data();
    void rangeHasMarginOfATenthOfEachSpan();
    void rangeIgnoresNaN();

    void blackAxesCrossAtTheOrigin();
    void axesOutsideTheViewAreNotDrawn();
    void linesOfK1K2AndAAreYellowMagentaAndCyan_data();
    void linesOfK1K2AndAAreYellowMagentaAndCyan();
    void lineHasTheGivenSlopeAndConstant_data();
    void lineHasTheGivenSlopeAndConstant();
    void linesCrossTheWholePlot();
    void nonFiniteLineIsOmitted_data();
    void nonFiniteLineIsOmitted();
    void nearlyVerticalLineIsDrawnAroundItsPixelColumn();
    void axesAndK1K2AndALinesAreDrawnInThisOrder();

    void vPointsAreRedAndOtherPointsAreBlue();
    void pointIsDrawnAsTwoCircles();
    void pointsAreDrawnOverTheLines();
    void laterPointsAreDrawnOverEarlierPoints();
    void nonFiniteOrVeryFarPointsAreOmitted_data();
    void nonFiniteOrVeryFarPointsAreOmitted();
    void graphWithExtremeNumbersKeepsItsOutline_data();
    void graphWithExtremeNumbersKeepsItsOutline();
};

void tst_PlaneGraph::graphWithoutPointsIsEmpty()
{
    PlaneGraph graph;
    graph.lines = {1.0, 2.0, 3.0, 4.0};
    QVERIFY(graph.isEmpty());
    GraphPlot plot(graph);
    QVERIFY(isBlank(plot.picture()));
    QVERIFY(!plot.DispA->cc.drawn);
    QCOMPARE(plot.range.x0, -1.0); // unchanged
    graph.points = farPoint;
    QVERIFY(!graph.isEmpty());
}

void tst_PlaneGraph::rangeHasMarginOfATenthOfEachSpan_data()
{
    QTest::addColumn<QList<double>>("numbers");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("span of 10") << QList<double>{3.0, -2.0, 8.0} << -3.0 << 9.0;
    QTest::newRow("first is the lowest") << QList<double>{5.0, 6.0, 15.0} << 4.0 << 16.0;
    QTest::newRow("first is the highest") << QList<double>{15.0, 6.0, 5.0} << 4.0 << 16.0;
    QTest::newRow("all negative") << QList<double>{-30.0, -20.0, -25.0} << -31.0 << -19.0;
    QTest::newRow("narrow span") << QList<double>{1.0, 1.0, 1.0 + 0x1p-20} << 1.0 - 0x1p-20 * 0.1
                                 << 1.0 + 0x1p-20 * 1.1;
    QTest::newRow("no span") << QList<double>{2.5, 2.5, 2.5} << 2.4 << 2.6;
    QTest::newRow("no span at zero") << QList<double>{0.0, -0.0, 0.0} << -0.1 << 0.1;
    QTest::newRow("no span, one point") << QList<double>{-7.0} << -7.1 << -6.9;
}

// The tolerance is 4e-16, about two ulps of 1. It is multiplied by the magnitude of the
// limit if that is above 1.
void tst_PlaneGraph::rangeHasMarginOfATenthOfEachSpan()
{
    QFETCH(QList<double>, numbers);
    QFETCH(double, low);
    QFETCH(double, high);
    const auto isNear = [](double value, double expected) {
        return std::fabs(value - expected) <= 4e-16 * std::max(1.0, std::fabs(expected));
    };
    QList<PlaneGraph::Point> alongX;
    QList<PlaneGraph::Point> alongY;
    for (int i = 0; i < numbers.size(); ++i) {
        alongX.append({numbers.at(i), 20.0 + 10.0 * i, i == 1});
        alongY.append({20.0 + 10.0 * i, numbers.at(i), false});
    }
    const Graph::Range x = FilledGraph(alongX).range();
    const Graph::Range y = FilledGraph(alongY).range();
    QVERIFY(isNear(x.x0, low) && isNear(x.x1, high));
    QVERIFY(isNear(y.y0, low) && isNear(y.y1, high));
    // The margins of the axes are independent: the coordinates on the other axis span
    // 20 to 40. With one point, both ends of this span are 20.
    QVERIFY(isNear(x.y0, numbers.size() > 1 ? 18.0 : 19.9));
    QVERIFY(isNear(y.x1, numbers.size() > 1 ? 42.0 : 20.1));
}

void tst_PlaneGraph::rangeIgnoresNaN()
{
    const Graph::Range range =
        FilledGraph({{notANumber, 5.0, false}, {1.0, notANumber, false}, {11.0, 25.0, false}})
            .range();
    QCOMPARE(range.x0, 0.0);
    QCOMPARE(range.x1, 12.0);
    QCOMPARE(range.y0, 3.0);
    QCOMPARE(range.y1, 27.0);
}

// The view is -3 to 14 and -2 to 10.75, so one unit is 20 pixels. The value 0 is at
// pixel column 40 + 3 * 20 = 100 and pixel row 270 - 2 * 20 = 230.
void tst_PlaneGraph::blackAxesCrossAtTheOrigin()
{
    const QImage image = pictureOf(FilledGraph(farPoint), {-3.0, -2.0, 14.0, 10.75});
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, {41, 230, 339, 1}, Qt::black), 339);
    QCOMPARE(countOf(image, {100, 16, 1, 254}, Qt::black), 254);
    QCOMPARE(countOf(image, inside, Qt::black), 339 + 254 - 1);
    QCOMPARE(countOf(image, inside, Qt::white), 338 * 253);
}

void tst_PlaneGraph::axesOutsideTheViewAreNotDrawn()
{
    const QImage image = pictureOf(FilledGraph(farPoint), {1.0, 1.0, 18.0, 13.75});
    QCOMPARE(countOf(image, {41, 16, 339, 254}, Qt::white), 339 * 254);
}

void tst_PlaneGraph::linesOfK1K2AndAAreYellowMagentaAndCyan_data()
{
    QTest::addColumn<double>("k1");
    QTest::addColumn<double>("k2");
    QTest::addColumn<double>("a");
    QTest::addColumn<QColor>("color");
    QTest::newRow("slope k1") << 0.5 << notANumber << notANumber << yellow;
    QTest::newRow("slope k2") << notANumber << 0.5 << notANumber << magenta;
    QTest::newRow("slope a and constant b") << notANumber << notANumber << 0.5 << cyan;
}

// The line is y = x / 2. One unit is 20 pixels on both axes, so the line rises by 100
// pixels over 200 pixels.
void tst_PlaneGraph::linesOfK1K2AndAAreYellowMagentaAndCyan()
{
    QFETCH(double, k1);
    QFETCH(double, k2);
    QFETCH(double, a);
    QFETCH(QColor, color);
    const QImage image = pictureOf(FilledGraph(farPoint, {k1, k2, a, 0.0}), twentyPixelsPerUnit);
    QCOMPARE(rowIn(image, 40 + 200, color), 270 - 100);
    QCOMPARE(rowIn(image, 40 + 300, color), 270 - 150);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, color) + countOf(image, inside, Qt::white), 339 * 254);
}

void tst_PlaneGraph::lineHasTheGivenSlopeAndConstant_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("constant");
    QTest::newRow("horizontal") << 0.0 << 3.25;
    QTest::newRow("rising") << 0.25 << 1.5;
    QTest::newRow("falling") << -0.5 << 10.25;
    QTest::newRow("slope 1") << 1.0 << -1.25;
}

// The tolerance is one pixel row, because QPainter rounds the pixels of sloped lines.
void tst_PlaneGraph::lineHasTheGivenSlopeAndConstant()
{
    QFETCH(double, slope);
    QFETCH(double, constant);
    const QImage image = pictureOf(FilledGraph(farPoint, {notANumber, notANumber, slope, constant}),
                                   twentyPixelsPerUnit);
    for (const double x : {3.0, 6.5, 11.0}) {
        const double expected = 270.0 - 20.0 * (slope * x + constant);
        const int row = rowIn(image, 40 + static_cast<int>(20.0 * x), cyan);
        QVERIFY2(std::fabs(row - expected) <= 1.0, qPrintable(QString::number(row)));
    }
}

void tst_PlaneGraph::linesCrossTheWholePlot()
{
    const QImage image =
        pictureOf(FilledGraph(farPoint, {0.25, 0.5, -0.25, 8.0}), {-2.0, -2.0, 15.0, 10.75});
    for (const QColor& color : {yellow, magenta, cyan}) {
        QVERIFY(rowIn(image, 42, color) > 0);
        QVERIFY(rowIn(image, 378, color) > 0);
    }
}

void tst_PlaneGraph::nonFiniteLineIsOmitted_data()
{
    QTest::addColumn<double>("extreme");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
}

void tst_PlaneGraph::nonFiniteLineIsOmitted()
{
    QFETCH(double, extreme);
    const QRect inside(41, 16, 339, 254);
    const auto visibleLines = [&](const analysis::PlaneLines& lines) {
        const QImage image = pictureOf(FilledGraph(farPoint, lines), {-2.0, -2.0, 15.0, 10.75});
        QList<bool> colors;
        for (const QColor& color : {yellow, magenta, cyan}) {
            colors.append(countOf(image, inside, color) > 0);
        }
        return colors;
    };
    QCOMPARE(visibleLines({0.25, 0.5, -0.25, 8.0}), (QList<bool>{true, true, true}));
    QCOMPARE(visibleLines({extreme, 0.5, -0.25, 8.0}), (QList<bool>{false, true, true}));
    QCOMPARE(visibleLines({0.25, extreme, -0.25, 8.0}), (QList<bool>{true, false, true}));
    QCOMPARE(visibleLines({0.25, 0.5, extreme, 8.0}), (QList<bool>{true, true, false}));
    QCOMPARE(visibleLines({0.25, 0.5, -0.25, extreme}), (QList<bool>{true, true, false}));
}

// Within the view, y = 0 to 12.75, the line y = 1e6 (x - 5) is at most one pixel column
// away from x = 5, which is pixel column 140.
void tst_PlaneGraph::nearlyVerticalLineIsDrawnAroundItsPixelColumn()
{
    const QImage image =
        pictureOf(FilledGraph(farPoint, {notANumber, notANumber, 1e6, -5e6}), twentyPixelsPerUnit);
    QVERIFY(countOf(image, {139, 16, 3, 254}, cyan) >= 254);
    QCOMPARE(countOf(image, {41, 16, 339, 254}, cyan), countOf(image, {139, 16, 3, 254}, cyan));
}

void tst_PlaneGraph::axesAndK1K2AndALinesAreDrawnInThisOrder()
{
    const auto at = [](const analysis::PlaneLines& lines) {
        return pictureOf(FilledGraph(farPoint, lines), twentyPixelsPerUnit).pixelColor(240, 170);
    };
    QCOMPARE(at({0.5, 0.5, 0.5, 0.0}), cyan);
    QCOMPARE(at({0.5, 0.5, notANumber, 0.0}), magenta);
    QCOMPARE(at({0.5, notANumber, notANumber, 0.0}), yellow);
    // A horizontal line at y = 0 covers the x axis.
    const QImage level = pictureOf(FilledGraph(farPoint, {0.0, notANumber, notANumber, 0.0}),
                                   {-3.0, -2.0, 14.0, 10.75});
    QCOMPARE(countOf(level, {41, 230, 339, 1}, yellow), 339);
}

void tst_PlaneGraph::vPointsAreRedAndOtherPointsAreBlue()
{
    const QImage image = pictureOf(
        FilledGraph({{5.0, 3.0, false}, {8.0, 6.0, true}, {11.0, 9.0, true}, {2.0, 9.0, false}}),
        twentyPixelsPerUnit);
    const auto around = [](double x, double y) {
        return QRect(38 + static_cast<int>(20.0 * x), 268 - static_cast<int>(20.0 * y), 5, 5);
    };
    const int pixelsOfOne = countOf(image, around(5.0, 3.0), blue);
    QVERIFY(pixelsOfOne >= 8);
    QCOMPARE(countOf(image, around(2.0, 9.0), blue), pixelsOfOne);
    QCOMPARE(countOf(image, around(8.0, 6.0), red), pixelsOfOne);
    QCOMPARE(countOf(image, around(11.0, 9.0), red), pixelsOfOne);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, blue), 2 * pixelsOfOne);
    QCOMPARE(countOf(image, inside, red), 2 * pixelsOfOne);
}

// The x coordinate is m2 and the y coordinate m3. One unit is 20 pixels, so (5, 3) is
// at pixel column 40 + 100 and pixel row 270 - 60.
void tst_PlaneGraph::pointIsDrawnAsTwoCircles()
{
    const QImage image = pictureOf(FilledGraph({{5.0, 3.0, true}}), twentyPixelsPerUnit);
    for (const QPoint& step : {QPoint(0, -2), QPoint(0, 2), QPoint(-2, 0), QPoint(2, 0),
                               QPoint(0, -1), QPoint(0, 1), QPoint(-1, 0), QPoint(1, 0)}) {
        QCOMPARE(image.pixelColor(QPoint(140, 210) + step), red);
    }
    QCOMPARE(image.pixelColor(140, 210), QColor(Qt::white));
    QCOMPARE(image.pixelColor(138, 208), QColor(Qt::white));
}

void tst_PlaneGraph::pointsAreDrawnOverTheLines()
{
    const FilledGraph graph({{10.0, 5.0, false}}, {0.5, 0.5, 0.5, 0.0});
    const QImage image = pictureOf(graph, twentyPixelsPerUnit);
    const QImage alone = pictureOf(FilledGraph({{10.0, 5.0, false}}), twentyPixelsPerUnit);
    QCOMPARE(countOf(image, {238, 168, 5, 5}, blue), countOf(alone, {238, 168, 5, 5}, blue));
}

void tst_PlaneGraph::laterPointsAreDrawnOverEarlierPoints()
{
    const auto at = [](bool first, bool second) {
        return pictureOf(FilledGraph({{5.0, 3.0, first}, {5.0, 3.0, second}}), twentyPixelsPerUnit)
            .pixelColor(142, 210);
    };
    QCOMPARE(at(true, false), blue);
    QCOMPARE(at(false, true), red);
}

void tst_PlaneGraph::nonFiniteOrVeryFarPointsAreOmitted_data()
{
    QTest::addColumn<double>("extreme");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("huge") << 1e300;
    QTest::newRow("larger than an int") << 4294967296.0;
}

void tst_PlaneGraph::nonFiniteOrVeryFarPointsAreOmitted()
{
    QFETCH(double, extreme);
    const QImage image = pictureOf(FilledGraph({{extreme, 3.0, true},
                                                {5.0, extreme, true},
                                                {extreme, extreme, true},
                                                {8.0, 6.0, false}}),
                                   twentyPixelsPerUnit);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, red), 0);
    QVERIFY(countOf(image, {198, 148, 5, 5}, blue) >= 8);
}

void tst_PlaneGraph::graphWithExtremeNumbersKeepsItsOutline_data()
{
    addExtremeNumbers();
    QTest::newRow("zero") << 0.0;
}

// Each number is used in turn in a point, in a line and in the view, with an automatic
// and with a fixed range.
void tst_PlaneGraph::graphWithExtremeNumbersKeepsItsOutline()
{
    QFETCH(double, number);
    for (int field = 0; field < 10; ++field) {
        FilledGraph graph({{5.0, 3.0, true}, {8.0, 6.0, false}}, {0.5, 2.0, 1.5, 0.3});
        Graph::Range view = twentyPixelsPerUnit;
        const QList<double*> fields{&graph.points[0].m2,
                                    &graph.points[0].m3,
                                    &graph.lines.k1,
                                    &graph.lines.k2,
                                    &graph.lines.a,
                                    &graph.lines.b,
                                    &view.x0,
                                    &view.x1,
                                    &view.y0,
                                    &view.y1};
        *fields.at(field) = number;
        const PlotPlace outline(plotSize, {0.0, 0.0, 1.0, 1.0});
        QVERIFY(hasOutline(GraphPlot(graph).picture(), outline));
        QVERIFY(hasOutline(pictureOf(graph, view), outline));
    }
}

QTEST_MAIN(tst_PlaneGraph)
#include "tst_PlaneGraph.moc"
