// Bars, grid and range of the histogram graph.

#include "display/HistogramGraph.h"
#include "support/GraphPlot.h"
#include "support/HostileNumbers.h"
#include "support/PlainHistograms.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::Graph;
using display::HistogramGraph;

using namespace tests;

// A surface of 400 by 300 pixels: 340 columns from 40 on, 255 rows up from 270.

namespace
{

const QSize surface(400, 300);
const QColor red(255, 0, 0);
const QColor green(0, 160, 0);
const QColor blue(0, 0, 255);
const QColor grey(160, 160, 160);

/// Ten bins of width 1 with centres 0 to 9 and the given counts, on a range of 0
/// to 8.5: 40 columns to a unit. None of it is shown.
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

/// The reference plot of the graph.
PlainHistograms plainOf(const HistogramGraph& graph)
{
    PlainHistograms plain;
    plain.from = graph.from;
    plain.to = graph.to;
    plain.main = graph.main;
    if (graph.mainShown) {
        plain.mainColor = graph.mainColor;
    }
    for (const auto& series : graph.references) {
        plain.references.append({series.counts, series.color});
    }
    return plain;
}

/// The box around all pixels of one colour inside the plot area.
QRect boxOf(const QColor& color, const QImage& image)
{
    return tests::boxOf(image, PlotPlace(surface, {0, 0, 1, 1}).inside(),
                        [&](const QColor& pixel) { return pixel == color; });
}

QList<int> series(int first, int last, int step)
{
    QList<int> numbers;
    for (int number = first; number <= last; number += step) {
        numbers.append(number);
    }
    return numbers;
}

/// Columns of the vertical grid lines, read in the row under the upper edge.
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

/// Rows of the horizontal ones, read in the column beside the left edge, from
/// below.
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

/// A graph with one tall bin, whose grid alone is looked at.
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
    void graphWithoutBinsOrShownOnesIsEmpty();
    void rangeIsATenthAroundTheHighestShown_data();
    void rangeIsATenthAroundTheHighestShown();
    void rangeOfNoCountsIsNotFitted();

    void mainBarFillsItsBin();
    void mainBarIsAPixelWideAtLeast();
    void binsAreCentredOnTheLimits();
    void barsOfASeriesAreShiftedByItsPlace_data();
    void barsOfASeriesAreShiftedByItsPlace();
    void fourSeriesStandSideBySide();
    void laterSeriesLieOverEarlierOnes();
    void outerBinsStandBesideTheOthers();
    void emptyBinsHaveNoBar();
    void barsAreCutAtTheViewOnly_data();
    void barsAreCutAtTheViewOnly();
    void viewAwayFromTheBarsShowsNone_data();
    void viewAwayFromTheBarsShowsNone();

    void manyBinsLookLikeBarByBar_data();
    void manyBinsLookLikeBarByBar();
    void countsUpToTheLargestAreDrawn();

    void verticalLinesStandBelowTheUpperLimit_data();
    void verticalLinesStandBelowTheUpperLimit();
    void horizontalLinesFollowTheScaleOfX_data();
    void horizontalLinesFollowTheScaleOfX();
    void gridCoversTheWholeViewOnly();
    void crowdedHorizontalLinesFillTheirPart();
    void hostileNumbersStillPaint_data();
    void hostileNumbersStillPaint();
};

void tst_HistogramGraph::graphWithoutBinsOrShownOnesIsEmpty()
{
    HistogramGraph graph;
    QVERIFY(graph.isEmpty());
    graph.mainShown = true;
    addSeries(graph, oneBin(3, 5), red);
    QVERIFY(graph.isEmpty()); // the main one has no bins
    fillGraph(graph, oneBin(4, 8));
    QVERIFY(!graph.isEmpty());
    graph.references.clear();
    QVERIFY(!graph.isEmpty());
    graph.mainShown = false;
    QVERIFY(graph.isEmpty());
}

void tst_HistogramGraph::rangeIsATenthAroundTheHighestShown_data()
{
    QTest::addColumn<bool>("mainShown");
    QTest::addColumn<QList<int>>("highest");
    QTest::addColumn<int>("wanted");
    QTest::newRow("main") << true << QList<int>{} << 30;
    QTest::newRow("one series") << false << QList<int>{7} << 7;
    QTest::newRow("main and lower series") << true << QList<int>{7, 29} << 30;
    QTest::newRow("main and a higher one") << true << QList<int>{7, 31} << 31;
    QTest::newRow("the first is the highest") << false << QList<int>{50, 7} << 50;
    QTest::newRow("one counted") << false << QList<int>{1} << 1;
    QTest::newRow("the largest") << false << QList<int>{2147483647} << 2147483647;
}

void tst_HistogramGraph::rangeIsATenthAroundTheHighestShown()
{
    QFETCH(bool, mainShown);
    QFETCH(QList<int>, highest);
    QFETCH(int, wanted);
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
    QVERIFY(range.y0 == -0.1 * wanted);
    QVERIFY(range.y1 == 1.1 * wanted);
    QVERIFY(range.isFitted);
}

void tst_HistogramGraph::rangeOfNoCountsIsNotFitted()
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

// The bin of 4 reaches from 3.5 to 4.5: columns 180 to 219. From -3 to 33 on y
// 255 rows: the count 30 is at 270 - 255 / 36 * 33 = 36.25, zero at 248.75.
void tst_HistogramGraph::mainBarFillsItsBin()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    graph.mainShown = true;
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 40, 248 - 36));
}

// A thousandth of the width that was, so that the bin takes 0.04 columns.
void tst_HistogramGraph::mainBarIsAPixelWideAtLeast()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(4, 30));
    graph.mainShown = true;
    graph.main.step = 0.001;
    graph.main.minV = 3.4965;
    // From 3.5005: 140.02 columns from 40 on.
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 1, 248 - 36));
}

void tst_HistogramGraph::binsAreCentredOnTheLimits()
{
    HistogramGraph graph;
    fillGraph(graph, oneBin(0, 30));
    graph.mainShown = true;
    GraphPlot plot(graph);
    plot.setRealCoord(-1.0, -3.0, 7.5, 33.0);
    // From -0.5 to 0.5, 1 unit from the left edge.
    QCOMPARE(boxOf(grey, plot.picture()), QRect(60, 36, 40, 248 - 36));
}

void tst_HistogramGraph::barsOfASeriesAreShiftedByItsPlace_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("column"); // 180 - 3.5, - 0.5, + 2.5, + 5.5, cut
    QTest::newRow("first") << 0 << 176;
    QTest::newRow("second") << 1 << 179;
    QTest::newRow("third") << 2 << 182;
    QTest::newRow("fourth") << 3 << 185;
}

void tst_HistogramGraph::barsOfASeriesAreShiftedByItsPlace()
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

void tst_HistogramGraph::fourSeriesStandSideBySide()
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
    QCOMPARE(boxOf(grey, image).right(), 219); // and the main one behind them
    const PlainHistograms plain = plainOf(graph);
    const PlotPlace view(surface, {0.0, -3.0, 8.5, 33.0});
    QVERIFY(isSamePicture(image, plain.picture(view), view.inside()));
}

// Bins of two columns: the bars of three overlap.
void tst_HistogramGraph::laterSeriesLieOverEarlierOnes()
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
    const PlotPlace view(surface, {0.0, -10.0, 170.0, 110.0});
    QVERIFY(isSamePicture(plot.picture(), plainOf(graph).picture(view), view.inside()));
}

// Bins of 0 to 9 and the outer ones at -1 and 10, in a view of 20 columns to a
// unit from -4 on.
void tst_HistogramGraph::outerBinsStandBesideTheOthers()
{
    HistogramGraph graph;
    fillGraph(graph, QList<int>(10, 0), 20, 30);
    graph.mainShown = true;
    graph.mainColor = red;
    GraphPlot plot(graph);
    plot.setRealCoord(-4.0, -3.0, 13.0, 33.0);
    const QImage image = plot.picture();
    QCOMPARE(boxOf(red, image), QRect(QPoint(90, 36), QPoint(329, 247)));
    // -1.5 to -0.5 is 90 to 110, 9.5 to 10.5 is 310 to 330; the lower one is 20.
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
    // The bar of 9 alone, from 8.5 on, is at the view's very end.
    const QImage image = plot.picture();
    QCOMPARE(countOf(image, {41, 16, 330, 253}, red), 0);
    QCOMPARE(boxOf(red, image), QRect(376, 36, 3, 212));
}

void tst_HistogramGraph::barsAreCutAtTheViewOnly_data()
{
    QTest::addColumn<PlotRange>("range"); // x0, y0, x1, y1
    QTest::newRow("left edge inside a bar") << PlotRange{3.8, -3.0, 8.0, 33.0};
    QTest::newRow("right edge inside a bar") << PlotRange{1.0, -3.0, 4.2, 33.0};
    QTest::newRow("inside one bar") << PlotRange{3.9, 10.0, 4.1, 20.0};
    QTest::newRow("deep inside one bar") << PlotRange{4.0, 10.0, 4.0001, 10.001};
    QTest::newRow("inside in x only") << PlotRange{3.999, -3.0, 4.001, 33.0};
    QTest::newRow("inside in y only") << PlotRange{-10.0, 10.0, 20.0, 10.001};
    QTest::newRow("below the bar") << PlotRange{3.0, -50.0, 5.0, 2.0};
    QTest::newRow("above its foot") << PlotRange{3.0, 15.0, 5.0, 95.0};
    QTest::newRow("shifted bars at the left edge") << PlotRange{3.495, -3.0, 5.0, 33.0};
}

void tst_HistogramGraph::barsAreCutAtTheViewOnly()
{
    QFETCH(PlotRange, range);
    HistogramGraph graph;
    fillGraph(graph, {2, 4, 9, 17, 30, 26, 13, 5, 3, 1}, 11, 8);
    graph.mainShown = true;
    addSeries(graph, {1, 8, 7, 22, 28, 6, 3, 15, 0, 9}, red, 3, 14);
    addSeries(graph, {7, 2, 11, 6, 27, 16, 5, 0, 1, 2}, blue);
    GraphPlot plot(graph);
    plot.setRealCoord(range.x0, range.y0, range.x1, range.y1);
    const PlotPlace view(surface, range);
    QVERIFY(isSamePicture(plot.picture(), plainOf(graph).picture(view), view.inside()));
}

void tst_HistogramGraph::viewAwayFromTheBarsShowsNone_data()
{
    QTest::addColumn<PlotRange>("range");
    QTest::newRow("to the left") << PlotRange{-90.0, -3.0, -80.0, 33.0};
    QTest::newRow("to the right") << PlotRange{80.0, -3.0, 90.0, 33.0};
    QTest::newRow("above") << PlotRange{0.0, 40.0, 8.5, 60.0};
    QTest::newRow("below") << PlotRange{0.0, -60.0, 8.5, -40.0};
    QTest::newRow("far to the left") << PlotRange{-9e15, -3.0, -8e15, 33.0};
    QTest::newRow("far above") << PlotRange{0.0, 4e15, 8.5, 6e15};
}

void tst_HistogramGraph::viewAwayFromTheBarsShowsNone()
{
    QFETCH(PlotRange, range);
    HistogramGraph graph;
    fillGraph(graph, QList<int>(10, 30), 30, 30);
    graph.mainShown = true;
    addSeries(graph, QList<int>(10, 30), red, 30, 30);
    GraphPlot plot(graph);
    plot.setRealCoord(range.x0, range.y0, range.x1, range.y1);
    const QImage image = plot.picture();
    const QRect inside = PlotPlace(surface, range).inside();
    QCOMPARE(countOf(image, inside, grey), 0);
    QCOMPARE(countOf(image, inside, red), 0);
}

void tst_HistogramGraph::manyBinsLookLikeBarByBar_data()
{
    QTest::addColumn<int>("boxes");
    QTest::addColumn<double>("x0");
    QTest::addColumn<double>("x1");
    QTest::newRow("a million, all in view") << 1000000 << 0.0 << 10.0;
    QTest::newRow("a million, zoomed out") << 1000000 << -13.0 << 29.0;
    QTest::newRow("a million, zoomed in") << 1000000 << 4.9 << 5.1;
    QTest::newRow("a bin for two columns") << 171 << 0.0 << 10.0;
    QTest::newRow("a bin for each column") << 341 << 0.0 << 10.0;
    QTest::newRow("some bins for a column") << 1234 << 0.0 << 10.0;
}

void tst_HistogramGraph::manyBinsLookLikeBarByBar()
{
    QFETCH(int, boxes);
    QFETCH(double, x0);
    QFETCH(double, x1);
    QList<int> bins;
    QList<int> others;
    unsigned int random = 12345;
    for (int i = 0; i < boxes; ++i) {
        random = random * 1664525u + 1013904223u;
        // Mostly low, so that the highest of neighbours stands out.
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
    const PlotPlace view(surface, {x0, -25.0, x1, 280.0});
    QVERIFY(isSamePicture(plot.picture(), plainOf(graph).picture(view), view.inside()));
}

void tst_HistogramGraph::countsUpToTheLargestAreDrawn()
{
    HistogramGraph graph;
    const int largest = std::numeric_limits<int>::max();
    fillGraph(graph, oneBin(4, largest), largest, largest);
    graph.mainShown = true;
    QCOMPARE(boxOf(grey, GraphPlot(graph).picture()), QRect(180, 36, 40, 248 - 36));
}

void tst_HistogramGraph::verticalLinesStandBelowTheUpperLimit_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QList<int>>("values");
    // 340 / (to - from) columns to a unit; more than ten are asked for.
    QTest::newRow("whole limits") << 0.0 << 5.0 << QList<int>{1, 2, 3, 4}; // 0 is on the outline
    QTest::newRow("limits between") << 0.5 << 5.5 << QList<int>{1, 2, 3, 4};
    QTest::newRow("nothing below the next whole") << 0.2 << 1.9 << QList<int>{};
    QTest::newRow("nothing between") << 1.2 << 1.9 << QList<int>{};
    QTest::newRow("negative") << -3.5 << -0.5 << QList<int>{-3, -2};
    QTest::newRow("about zero") << -2.5 << 2.5 << QList<int>{-2, -1, 0, 1};
    QTest::newRow("the last of steps of 1") << 0.5 << 33.5 << series(1, 32, 1); // 10.3 columns
    QTest::newRow("ten columns are too few") << 0.5 << 34.5 << series(1, 33, 2);
    QTest::newRow("steps of 5") << -0.5 << 99.5 << series(0, 95, 5);
    QTest::newRow("steps of 10 from an odd one")
        << 6.5 << 306.5 << series(17, 297, 10); // 7 is on the outline
    QTest::newRow("the upper limit is a step")
        << -1.0 << 59.0 << series(1, 57, 2); // steps of 2 from -1; 59 is left out
}

void tst_HistogramGraph::verticalLinesStandBelowTheUpperLimit()
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

void tst_HistogramGraph::horizontalLinesFollowTheScaleOfX_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("total");
    QTest::addColumn<QList<int>>("counts");
    QTest::newRow("steps of 1") << 5.0 << 6 << QList<int>{0, 1, 2, 3, 4, 5, 6};
    QTest::newRow("steps of 2") << 50.0 << 8 << QList<int>{0, 2, 4, 6, 8};
    QTest::newRow("the highest between two") << 50.0 << 9 << QList<int>{0, 2, 4, 6, 8};
    QTest::newRow("steps of 5") << 100.0 << 21 << QList<int>{0, 5, 10, 15, 20};
    QTest::newRow("steps of 200") << 4000.0 << 600 << QList<int>{0, 200, 400, 600};
    QTest::newRow("the step above the highest") << 4000.0 << 199 << QList<int>{0};
    QTest::newRow("nothing counted") << 5.0 << 0 << QList<int>{0};
}

void tst_HistogramGraph::horizontalLinesFollowTheScaleOfX()
{
    QFETCH(double, width);
    QFETCH(int, total);
    QFETCH(QList<int>, counts);
    const double top = 1.3 * total + 1.0; // there would be room above the highest
    QList<int> rows;
    for (const int count : counts) {
        rows.append(static_cast<int>(-255.0 / (top + 1.0) * (count + 1.0) + 270.0));
    }
    QCOMPARE(gridRows(gridPicture(0.2, 0.2 + width, total, {0.2, -1.0, 0.2 + width, top})), rows);
}

// Lines lie between the limits, whatever the view; zoomed out there are fewer.
void tst_HistogramGraph::gridCoversTheWholeViewOnly()
{
    // From 0.5 to 5.5 in a view of 17 columns to a unit.
    const QImage out = gridPicture(0.5, 5.5, 3, {-8.0, -1.0, 12.0, 9.0});
    QCOMPARE(gridColumns(out), (QList<int>{193, 210, 227, 244}));
    // A hundredth of a unit in view, about 3.
    const QImage in = gridPicture(0.5, 5.5, 3, {2.996, 0.5, 3.006, 1.5});
    QCOMPARE(gridColumns(in), QList<int>{176});
    QCOMPARE(gridRows(in), QList<int>{142});
}

// Steps of 1 in a view 100200 high: from 0 to 40000 every row.
void tst_HistogramGraph::crowdedHorizontalLinesFillTheirPart()
{
    const QImage image = gridPicture(0.5, 5.5, 40000, {0.5, -20100.0, 5.5, 80100.0});
    // 0 is at 218.85 and the highest at 117.05.
    const QList<int> rows = gridRows(image);
    QCOMPARE(QList<int>(rows.rbegin(), rows.rend()), series(117, 218, 1));
}

void tst_HistogramGraph::hostileNumbersStillPaint_data()
{
    addHostileNumbers();
    QTest::newRow("zero") << 0.0;
}

// As a limit, as a bin's place and width, and as a limit of the view.
void tst_HistogramGraph::hostileNumbersStillPaint()
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
        QVERIFY(hasOutline(plot.picture(), {surface, {0, 0, 1, 1}}));
        plot.clearScale();
        plot.setRealCoord(view.x0, view.y0, view.x1, view.y1);
        QVERIFY(hasOutline(plot.picture(), {surface, {0, 0, 1, 1}}));
    }
}

QTEST_MAIN(tst_HistogramGraph)
#include "tst_HistogramGraph.moc"
