// Tests of HistogramGraph, the plot of histograms.

#include "display/HistogramGraph.h"
#include "support/ExtremeNumbers.h"
#include "support/GraphPlot.h"
#include "support/PlainHistograms.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::Graph;
using display::HistogramGraph;

using namespace tests;

// On a surface of 400 by 300 pixels, the plot area spans x = 40 to 380 and y = 15 to
// 270: 340 by 255 pixels.

namespace
{

const QSize plotSize(400, 300);
const QColor red(255, 0, 0);
const QColor green(0, 160, 0);
const QColor blue(0, 0, 255);
const QColor grey(160, 160, 160);

/// Sets the main histogram of @p graph, which is not made visible: ten bins of width 1,
/// centred on 0 to 9, with the counts @p bins. Also sets the x range 0 to 8.5, so that
/// one unit is 340 / 8.5 = 40 pixels wide.
void fillGraph(HistogramGraph& graph, const QList<int>& bins, int under = 0, int over = 0)
{
    graph.from = 0.0;
    graph.to = 8.5;
    graph.mainColor = grey;
    graph.main = readyCounts(0.0, 9.0, bins, under, over);
}

QList<int> oneBin(int place, int count)
{
    QList<int> bins(10, 0);
    bins[place] = count;
    return bins;
}

void addSeries(HistogramGraph& graph, const QList<int>& bins, const QColor& color, int under = 0,
               int over = 0)
{
    graph.references.append({readyCounts(0.0, 9.0, bins, under, over), color});
}

/// The reference drawing of @p graph.
PlainHistograms referenceOf(const HistogramGraph& graph)
{
    PlainHistograms barByBar;
    barByBar.from = graph.from;
    barByBar.to = graph.to;
    barByBar.main = graph.main;
    if (graph.mainShown) {
        barByBar.mainColor = graph.mainColor;
    }
    for (const auto& series : graph.references) {
        barByBar.references.append({series.counts, series.color});
    }
    return barByBar;
}

/// The bounding rectangle of all pixels of @p color inside the plot area.
QRect boxOf(const QColor& color, const QImage& image)
{
    return tests::boxOf(image, PlotPlace(plotSize, {0, 0, 1, 1}).inside(),
                        [&](const QColor& pixel) { return pixel == color; });
}

QList<int> valuesFrom(int first, int last, int step)
{
    QList<int> numbers;
    for (int number = first; number <= last; number += step) {
        numbers.append(number);
    }
    return numbers;
}

/// The pixel columns of the vertical grid lines, read in the pixel row below the upper
/// edge.
QList<int> gridColumns(const QImage& image)
{
    QList<int> columns;
    for (int x = 41; x < 380; ++x) {
        if (image.pixelColor(x, 16) == plainGrid) {
            columns.append(x);
        }
    }
    return columns;
}

/// The pixel rows of the horizontal grid lines, read from bottom to top in the pixel
/// column beside the left edge.
QList<int> gridRows(const QImage& image)
{
    QList<int> rows;
    for (int y = 269; y > 15; --y) {
        if (image.pixelColor(41, y) == plainGrid) {
            rows.append(y);
        }
    }
    return rows;
}

/// The picture of a graph that shows only its grid, because no counts are visible.
QImage gridPicture(double from, double to, int total, const Graph::Range& view)
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, total));
    graph.from = from;
    graph.to = to;
    addSeries(graph, oneBin(4, 0), red);
    GraphPlot plot(graph);
    plot.setRealCoord(view.x0, view.y0, view.x1, view.y1);
    return plot.picture();
}

} // namespace

Q_DECLARE_METATYPE(tests::PlotRange)

class tst_HistogramGraph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphWithoutVisibleBinsIsEmpty();
    void rangeHasMarginOfATenthOfTheHighestCount_data();
    void rangeHasMarginOfATenthOfTheHighestCount();
    void rangeWithoutCountsIsNotFitted();

    void mainBarFillsItsBin();
    void mainBarIsAtLeastOnePixelWide();
    void firstBinIsCentredOnTheLowerLimit();
    void barsAreShiftedAccordingToTheirSeriesIndex_data();
    void barsAreShiftedAccordingToTheirSeriesIndex();
    void barsOfFourSeriesAreSideBySide();
    void laterSeriesAreDrawnOverEarlierSeries();
    void countsOutsideTheLimitsAreDrawnBesideTheBins();
    void emptyBinsHaveNoBar();
    void barsAreClippedToTheView_data();
    void barsAreClippedToTheView();
    void viewAwayFromTheBarsShowsNoBars_data();
    void viewAwayFromTheBarsShowsNoBars();

    void manyBinsMatchBarByBarDrawing_data();
    void manyBinsMatchBarByBarDrawing();
    void largestPossibleCountIsDrawn();

    void verticalGridOmitsTheLastIntegerOfTheRange_data();
    void verticalGridOmitsTheLastIntegerOfTheRange();
    void horizontalGridStepIsDerivedFromTheXScale_data();
    void horizontalGridStepIsDerivedFromTheXScale();
    void gridIsDrawnOnlyBetweenTheLimitsAndInsideTheView();
    void denseHorizontalGridHasALineInEachPixelRow();
    void graphWithExtremeNumbersKeepsItsOutline_data();
    void graphWithExtremeNumbersKeepsItsOutline();
};

void tst_HistogramGraph::graphWithoutVisibleBinsIsEmpty()
{
    HistogramGraph graph;
    QVERIFY(graph.isEmpty());
    graph.mainShown = true;
    addSeries(graph, oneBin(3, 5), red);
    QVERIFY(graph.isEmpty()); // the main histogram has no bins
    fillGraph(graph, oneBin(4, 8));
    QVERIFY(!graph.isEmpty());
    graph.references.clear();
    QVERIFY(!graph.isEmpty());
    graph.mainShown = false;
    QVERIFY(graph.isEmpty());
}

void tst_HistogramGraph::rangeHasMarginOfATenthOfTheHighestCount_data()
{
    QTest::addColumn<bool>("mainShown");
    QTest::addColumn<QList<int>>("highest");
    QTest::addColumn<int>("expected");
    QTest::newRow("main only") << true << QList<int>{} << 30;
    QTest::newRow("one series") << false << QList<int>{7} << 7;
    QTest::newRow("main and lower series") << true << QList<int>{7, 29} << 30;
    QTest::newRow("main and a higher series") << true << QList<int>{7, 31} << 31;
    QTest::newRow("first series is the highest") << false << QList<int>{50, 7} << 50;
    QTest::newRow("a single count") << false << QList<int>{1} << 1;
    QTest::newRow("largest possible count") << false << QList<int>{2147483647} << 2147483647;
}

void tst_HistogramGraph::rangeHasMarginOfATenthOfTheHighestCount()
{
    QFETCH(bool, mainShown);
    QFETCH(QList<int>, highest);
    QFETCH(int, expected);
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30), 900, 800);
    graph.from = -1.5;
    graph.to = 4.25;
    graph.mainShown = mainShown;
    for (const int count : highest) {
        addSeries(graph, oneBin(2, count), red, 700, 600);
    }
    const Graph::Range range = graph.range();
    QCOMPARE(range.x0, -1.5);
    QCOMPARE(range.x1, 4.25);
    QVERIFY(range.y0 == -0.1 * expected);
    QVERIFY(range.y1 == 1.1 * expected);
    QVERIFY(range.isFitted);
}

void tst_HistogramGraph::rangeWithoutCountsIsNotFitted()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    addSeries(graph, oneBin(2, 0), red, 700, 600);
    graph.from = -1.5;
    graph.to = 4.25;
    const Graph::Range range = graph.range();
    QCOMPARE(range.x0, -1.5);
    QCOMPARE(range.x1, 4.25);
    QCOMPARE(range.y0, 0.0);
    QCOMPARE(range.y1, 1.0);
    QVERIFY(!range.isFitted);
}

// One unit of x is 40 pixels wide, so the bin 3.5 to 4.5 covers the pixel columns 180
// to 219. The highest count is 30, so the y range is -3 to 33, which is 36 counts over
// 255 pixels. The count 30 is at pixel row 270 - 255 / 36 * 33 = 36.25, the count 0 at
// 270 - 255 / 36 * 3 = 248.75.
void tst_HistogramGraph::mainBarFillsItsBin()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    graph.mainShown = true;
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 40, 248 - 36));
}

// The bin is 1000 times narrower than in mainBarFillsItsBin(): 0.04 pixels wide.
void tst_HistogramGraph::mainBarIsAtLeastOnePixelWide()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    graph.mainShown = true;
    graph.main.step = 0.001;
    graph.main.minV = 3.4965;
    // The bin starts at 3.4965 + 4 * 0.001 = 3.5005, which is 140.02 pixels to the
    // right of pixel column 40.
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 1, 248 - 36));
}

void tst_HistogramGraph::firstBinIsCentredOnTheLowerLimit()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(0, 30));
    graph.mainShown = true;
    GraphPlot plot(graph);
    plot.setRealCoord(-1.0, -3.0, 7.5, 33.0);
    // The view starts at -1, so -1 is at pixel column 40. The bin covers -0.5 to 0.5,
    // which is the pixel columns 60 to 99.
    QCOMPARE(boxOf(grey, plot.picture()), QRect(60, 36, 40, 248 - 36));
}

void tst_HistogramGraph::barsAreShiftedAccordingToTheirSeriesIndex_data()
{
    QTest::addColumn<int>("place");
    // The bin starts at pixel column 180. The bars of the series 0, 1, 2 and 3 are
    // shifted by -3.5, -0.5, 2.5 and 5.5 pixels, so they start at 176.5, 179.5, 182.5
    // and 185.5, truncated.
    QTest::addColumn<int>("column");
    QTest::newRow("first series") << 0 << 176;
    QTest::newRow("second series") << 1 << 179;
    QTest::newRow("third series") << 2 << 182;
    QTest::newRow("fourth series") << 3 << 185;
}

void tst_HistogramGraph::barsAreShiftedAccordingToTheirSeriesIndex()
{
    QFETCH(int, place);
    QFETCH(int, column);
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 1));
    for (int s = 0; s < 4; ++s) {
        addSeries(graph, oneBin(4, s == place ? 30 : 0), s == place ? red : blue);
    }
    QCOMPARE(boxOf(red, GraphPlot(graph).picture()), QRect(column, 36, 3, 248 - 36));
}

void tst_HistogramGraph::barsOfFourSeriesAreSideBySide()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 25));
    graph.mainShown = true;
    const QList<QColor> colors{red, green, blue, Qt::black};
    for (int s = 0; s < 4; ++s) {
        addSeries(graph, oneBin(4, 30 - 4 * s), colors.at(s));
    }
    const QImage image = GraphPlot(graph).picture();
    for (int s = 0; s < 4; ++s) {
        const QRect box = boxOf(colors.at(s), image);
        QCOMPARE(box.left(), 176 + 3 * s);
        QCOMPARE(box.width(), 3);
        QCOMPARE(box.top(), static_cast<int>(270.0 - 255.0 / 36.0 * (33.0 - 4 * s)));
    }
    QCOMPARE(boxOf(grey, image).right(), 219); // right end of the main bar
    const PlainHistograms barByBar = referenceOf(graph);
    const PlotPlace view(plotSize, {0.0, -3.0, 8.5, 33.0});
    QVERIFY(isSamePicture(image, barByBar.picture(view), view.inside()));
}

// The bins are two pixels wide and the bars of the three series are three pixels wide,
// so neighbouring bars overlap.
void tst_HistogramGraph::laterSeriesAreDrawnOverEarlierSeries()
{
    HistogramGraph graph;
    graph.from = 0.0;
    graph.to = 170.0;
    graph.mainColor = grey;
    graph.mainShown = true;
    QList<int> bins;
    for (int i = 0; i < 171; ++i) {
        bins.append((i * 37) % 101);
    }
    graph.main = readyCounts(0.0, 170.0, bins);
    graph.references = {{readyCounts(0.0, 170.0, bins.mid(5) + bins.first(5)), red},
                        {readyCounts(0.0, 170.0, bins.mid(50) + bins.first(50)), blue},
                        {readyCounts(0.0, 170.0, bins.mid(99) + bins.first(99)), green}};
    GraphPlot plot(graph);
    const PlotPlace view(plotSize, {0.0, -10.0, 170.0, 110.0});
    QVERIFY(isSamePicture(plot.picture(), referenceOf(graph).picture(view), view.inside()));
}

// The ten bins are centred on 0 to 9. The counts below and above the limits are drawn
// as bins centred on -1 and 10. The view starts at -4 and shows 17 units, so one unit
// is 20 pixels wide.
void tst_HistogramGraph::countsOutsideTheLimitsAreDrawnBesideTheBins()
{
    HistogramGraph graph;
    fillGraph(graph, QList<int>(10, 0), 20, 30);
    graph.mainShown = true;
    graph.mainColor = red;
    GraphPlot plot(graph);
    plot.setRealCoord(-4.0, -3.0, 13.0, 33.0);
    const QImage image = plot.picture();
    QCOMPARE(boxOf(red, image), QRect(QPoint(90, 36), QPoint(329, 247)));
    // The bar centred on -1 covers the pixel columns 90 to 109. Its count is 20, at
    // pixel row 270 - 255 / 36 * 23 = 107.08. The bar centred on 10 covers the pixel
    // columns 310 to 329. Its count is 30, at pixel row 36.
    QCOMPARE(countOf(image, {90, 36, 20, 212}, red), 20 * (248 - 107));
    QCOMPARE(countOf(image, {310, 36, 20, 212}, red), 20 * 212);
    QCOMPARE(countOf(image, {110, 36, 200, 212}, red), 0);
}

void tst_HistogramGraph::emptyBinsHaveNoBar()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    addSeries(graph, oneBin(9, 30), red);
    GraphPlot plot(graph);
    plot.setRealCoord(0.0, -3.0, 8.5, 33.0);
    // Only the bar of the bin centred on 9 is visible. The bin starts at 8.5, the right
    // end of the view, but the bar of the first series is shifted by -3.5 pixels.
    const QImage image = plot.picture();
    QCOMPARE(countOf(image, {41, 16, 330, 253}, red), 0);
    QCOMPARE(boxOf(red, image), QRect(376, 36, 3, 212));
}

void tst_HistogramGraph::barsAreClippedToTheView_data()
{
    QTest::addColumn<PlotRange>("range"); // x0, y0, x1, y1
    QTest::newRow("left edge inside a bar") << PlotRange{3.8, -3.0, 8.0, 33.0};
    QTest::newRow("right edge inside a bar") << PlotRange{1.0, -3.0, 4.2, 33.0};
    QTest::newRow("inside one bar") << PlotRange{3.9, 10.0, 4.1, 20.0};
    QTest::newRow("deep inside one bar") << PlotRange{4.0, 10.0, 4.0001, 10.001};
    QTest::newRow("inside in x only") << PlotRange{3.999, -3.0, 4.001, 33.0};
    QTest::newRow("inside in y only") << PlotRange{-10.0, 10.0, 20.0, 10.001};
    QTest::newRow("lower end of the bars") << PlotRange{3.0, -50.0, 5.0, 2.0};
    QTest::newRow("upper end of the bars") << PlotRange{3.0, 15.0, 5.0, 95.0};
    QTest::newRow("shifted bars at the left edge") << PlotRange{3.495, -3.0, 5.0, 33.0};
}

void tst_HistogramGraph::barsAreClippedToTheView()
{
    QFETCH(PlotRange, range);
    HistogramGraph graph;
    fillGraph(graph, {2, 4, 9, 17, 30, 26, 13, 5, 3, 1}, 11, 8);
    graph.mainShown = true;
    addSeries(graph, {1, 8, 7, 22, 28, 6, 3, 15, 0, 9}, red, 3, 14);
    addSeries(graph, {7, 2, 11, 6, 27, 16, 5, 0, 1, 2}, blue);
    GraphPlot plot(graph);
    plot.setRealCoord(range.x0, range.y0, range.x1, range.y1);
    const PlotPlace view(plotSize, range);
    QVERIFY(isSamePicture(plot.picture(), referenceOf(graph).picture(view), view.inside()));
}

void tst_HistogramGraph::viewAwayFromTheBarsShowsNoBars_data()
{
    QTest::addColumn<PlotRange>("range");
    QTest::newRow("left of the bars") << PlotRange{-90.0, -3.0, -80.0, 33.0};
    QTest::newRow("right of the bars") << PlotRange{80.0, -3.0, 90.0, 33.0};
    QTest::newRow("above the bars") << PlotRange{0.0, 40.0, 8.5, 60.0};
    QTest::newRow("below the bars") << PlotRange{0.0, -60.0, 8.5, -40.0};
    QTest::newRow("far left of the bars") << PlotRange{-9e15, -3.0, -8e15, 33.0};
    QTest::newRow("far above the bars") << PlotRange{0.0, 4e15, 8.5, 6e15};
}

void tst_HistogramGraph::viewAwayFromTheBarsShowsNoBars()
{
    QFETCH(PlotRange, range);
    HistogramGraph graph;
    fillGraph(graph, QList<int>(10, 30), 30, 30);
    graph.mainShown = true;
    addSeries(graph, QList<int>(10, 30), red, 30, 30);
    GraphPlot plot(graph);
    plot.setRealCoord(range.x0, range.y0, range.x1, range.y1);
    const QImage image = plot.picture();
    const QRect inside = PlotPlace(plotSize, range).inside();
    QCOMPARE(countOf(image, inside, grey), 0);
    QCOMPARE(countOf(image, inside, red), 0);
}

void tst_HistogramGraph::manyBinsMatchBarByBarDrawing_data()
{
    QTest::addColumn<int>("boxes");
    QTest::addColumn<double>("x0");
    QTest::addColumn<double>("x1");
    QTest::newRow("a million, all visible") << 1000000 << 0.0 << 10.0;
    QTest::newRow("a million, zoomed out") << 1000000 << -13.0 << 29.0;
    QTest::newRow("a million, zoomed in") << 1000000 << 4.9 << 5.1;
    QTest::newRow("one bin per two columns") << 171 << 0.0 << 10.0;
    QTest::newRow("one bin per column") << 341 << 0.0 << 10.0;
    QTest::newRow("several bins per column") << 1234 << 0.0 << 10.0;
}

void tst_HistogramGraph::manyBinsMatchBarByBarDrawing()
{
    QFETCH(int, boxes);
    QFETCH(double, x0);
    QFETCH(double, x1);
    QList<int> bins;
    QList<int> others;
    unsigned int random = 12345;
    for (int i = 0; i < boxes; ++i) {
        random = random * 1664525u + 1013904223u;
        // Most counts are low and a few are high. Where several bins share a pixel
        // column, the highest count must be visible.
        bins.append((random >> 8) % 997 == 0 ? static_cast<int>(random >> 24) : 3);
        others.append((random >> 4) % 499 == 0 ? static_cast<int>(random >> 25) : 0);
    }
    HistogramGraph graph;
    graph.from = 0.0;
    graph.to = 10.0;
    graph.mainColor = grey;
    graph.mainShown = true;
    graph.main = readyCounts(0.0, 10.0, bins, 100, 200);
    graph.references = {{readyCounts(0.0, 10.0, others, 90, 80), red},
                        {readyCounts(0.0, 10.0, others.mid(7) + others.first(7)), blue}};
    GraphPlot plot(graph);
    plot.setRealCoord(x0, -25.0, x1, 280.0);
    const PlotPlace view(plotSize, {x0, -25.0, x1, 280.0});
    QVERIFY(isSamePicture(plot.picture(), referenceOf(graph).picture(view), view.inside()));
}

void tst_HistogramGraph::largestPossibleCountIsDrawn()
{
    HistogramGraph graph;
    const int largest = std::numeric_limits<int>::max();
    fillGraph(graph, oneBin(4, largest), largest, largest);
    graph.mainShown = true;
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 40, 248 - 36));
}

void tst_HistogramGraph::verticalGridOmitsTheLastIntegerOfTheRange_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QList<int>>("values");
    // One unit is 340 / (to - from) pixels wide. Lines start at the lowest integer
    // inside the limits and end below floor(to), which is excluded. The step is the
    // first number of 1, 2, 5, 10, 20, ... that is more than ten pixels wide.
    QTest::newRow("integer limits")
        << 0.0 << 5.0 << QList<int>{1, 2, 3, 4}; // the outline covers the line at 0
    QTest::newRow("limits between integers") << 0.5 << 5.5 << QList<int>{1, 2, 3, 4};
    QTest::newRow("only integer is excluded") << 0.2 << 1.9 << QList<int>{};
    QTest::newRow("no integer inside") << 1.2 << 1.9 << QList<int>{};
    QTest::newRow("negative") << -3.5 << -0.5 << QList<int>{-3, -2};
    QTest::newRow("around zero") << -2.5 << 2.5 << QList<int>{-2, -1, 0, 1};
    QTest::newRow("largest range with steps of 1")
        << 0.5 << 33.5 << valuesFrom(1, 32, 1); // steps of 340 / 33 = 10.3 pixels
    QTest::newRow("step of ten pixel columns is too narrow") << 0.5 << 34.5 << valuesFrom(1, 33, 2);
    QTest::newRow("steps of 5") << -0.5 << 99.5 << valuesFrom(0, 95, 5);
    QTest::newRow("steps of 10 from an odd number")
        << 6.5 << 306.5 << valuesFrom(17, 297, 10); // the outline covers the line at 7
    QTest::newRow("upper limit on the grid")
        << -1.0 << 59.0
        << valuesFrom(1, 57, 2); // the outline covers the line at -1; 59 is excluded
}

void tst_HistogramGraph::verticalGridOmitsTheLastIntegerOfTheRange()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(QList<int>, values);
    QList<int> columns;
    for (const int value : values) {
        columns.append(static_cast<int>(340.0 / (to - from) * (value - from) + 40.0));
    }
    QCOMPARE(gridColumns(gridPicture(from, to, 10, {from, -1.0, to, 11.0})), columns);
}

void tst_HistogramGraph::horizontalGridStepIsDerivedFromTheXScale_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("total");
    QTest::addColumn<QList<int>>("counts");
    QTest::newRow("steps of 1") << 5.0 << 6 << QList<int>{0, 1, 2, 3, 4, 5, 6};
    QTest::newRow("steps of 2") << 50.0 << 8 << QList<int>{0, 2, 4, 6, 8};
    QTest::newRow("highest count between two lines") << 50.0 << 9 << QList<int>{0, 2, 4, 6, 8};
    QTest::newRow("steps of 5") << 100.0 << 21 << QList<int>{0, 5, 10, 15, 20};
    QTest::newRow("steps of 200") << 4000.0 << 600 << QList<int>{0, 200, 400, 600};
    QTest::newRow("step larger than the highest count") << 4000.0 << 199 << QList<int>{0};
    QTest::newRow("no counts") << 5.0 << 0 << QList<int>{0};
}

void tst_HistogramGraph::horizontalGridStepIsDerivedFromTheXScale()
{
    QFETCH(double, width);
    QFETCH(int, total);
    QFETCH(QList<int>, counts);
    const double top = 1.3 * total + 1.0; // leaves space above the highest count
    QList<int> rows;
    for (const int count : counts) {
        rows.append(static_cast<int>(-255.0 / (top + 1.0) * (count + 1.0) + 270.0));
    }
    QCOMPARE(gridRows(gridPicture(0.2, 0.2 + width, total, {0.2, -1.0, 0.2 + width, top})), rows);
}

// Vertical lines exist only between the limits, also in a wider view.
void tst_HistogramGraph::gridIsDrawnOnlyBetweenTheLimitsAndInsideTheView()
{
    // The limits are 0.5 and 5.5. The view is 20 units wide and starts at -8, so one
    // unit is 17 pixels wide and the line at 3 is at pixel column 40 + 17 * 11 = 227.
    const QImage out = gridPicture(0.5, 5.5, 3, {-8.0, -1.0, 12.0, 9.0});
    QCOMPARE(gridColumns(out), (QList<int>{193, 210, 227, 244}));
    // The view is 0.01 units wide. It contains the vertical line at 3, at pixel column
    // 40 + 340 * 0.004 / 0.01 = 176, and the horizontal line at 1, in the middle of the
    // plot area.
    const QImage in = gridPicture(0.5, 5.5, 3, {2.996, 0.5, 3.006, 1.5});
    QCOMPARE(gridColumns(in), QList<int>{176});
    QCOMPARE(gridRows(in), QList<int>{142});
}

// The grid step in counts is 1, because it is derived from the scale of x. The view
// shows 100200 counts, so every pixel row between count 0 and the highest count, 40000,
// has a line.
void tst_HistogramGraph::denseHorizontalGridHasALineInEachPixelRow()
{
    const QImage image = gridPicture(0.5, 5.5, 40000, {0.5, -20100.0, 5.5, 80100.0});
    // The count 0 is at pixel row 270 - 255 * 20100 / 100200 = 218.85, the highest
    // count at 270 - 255 * 60100 / 100200 = 117.05.
    const QList<int> rows = gridRows(image);
    QCOMPARE(QList<int>(rows.rbegin(), rows.rend()), valuesFrom(117, 218, 1));
}

void tst_HistogramGraph::graphWithExtremeNumbersKeepsItsOutline_data()
{
    addExtremeNumbers();
    QTest::newRow("zero") << 0.0;
}

// Each number is used in turn as a limit, as the position or width of the bins, and as
// a limit of the view.
void tst_HistogramGraph::graphWithExtremeNumbersKeepsItsOutline()
{
    QFETCH(double, number);
    for (int field = 0; field < 8; ++field) {
        HistogramGraph graph;
        fillGraph(graph, oneBin(4, 30), 5, 6);
        graph.mainShown = true;
        addSeries(graph, oneBin(5, 30), red, 5, 6);
        Graph::Range view{0.0, -3.0, 8.5, 33.0};
        const QList<double*> fields{&graph.from, &graph.to, &graph.main.step, &graph.main.minV,
                                    &view.x0,    &view.x1,  &view.y0,         &view.y1};
        *fields.at(field) = number;
        graph.references[0].counts.step = graph.main.step;
        GraphPlot plot(graph);
        QVERIFY(hasOutline(plot.picture(), {plotSize, {0, 0, 1, 1}}));
        plot.clearScale();
        plot.setRealCoord(view.x0, view.y0, view.x1, view.y1);
        QVERIFY(hasOutline(plot.picture(), {plotSize, {0, 0, 1, 1}}));
    }
}

QTEST_MAIN(tst_HistogramGraph)
#include "tst_HistogramGraph.moc"
