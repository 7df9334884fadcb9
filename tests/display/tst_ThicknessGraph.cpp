// Tests of ThicknessGraph, the plot of thickness against valence.

#include "display/ThicknessGraph.h"
#include "support/ExtremeNumbers.h"
#include "support/GraphPlot.h"
#include "support/PlainThickness.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::ThicknessGraph;

using namespace tests;

// On a surface of 400 by 300 pixels, the plot area spans x = 40 to 380 and y = 15 to
// 270: 340 by 255 pixels.

namespace
{

const QSize plotSize(400, 300);
const analysis::ValenceMix twoToThree{true, 2.0, 3.0};
const QColor red(255, 0, 0);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

A2DData fractionResult(const QList<QPointF>& pixels)
{
    A2DData result;
    for (const QPointF& pixel : pixels) {
        result.rows.append({0.0, 0.0, pixel.x(), pixel.y(), {}});
    }
    return result;
}

/// A result of the non-equivalent method with these valences and thicknesses. All other
/// quantities are -1.
A2DData extendedResult(const QList<QPointF>& points)
{
    A2DData result;
    result.extended = true;
    for (const QPointF& point : points) {
        QList<double> values(13, -1.0);
        values[11] = point.x();
        values[12] = point.y();
        result.rows.append({0.0, 0.0, -1.0, -1.0, values});
    }
    return result;
}

/// A graph of a result with red marks, the limits 1.5 to 3.5 and 0 to 2, and a grid
/// from 2 to 3.
struct FilledGraph {
    explicit FilledGraph(const A2DData& map)
        : result(map)
    {
        graph.limits = {1.5, 0.0, 3.5, 2.0};
        graph.lower = 2.0;
        graph.upper = 3.0;
        graph.color = red;
    }

    A2DData result;
    ThicknessGraph graph{result, twoToThree};
};

const PlotPlace usualView(plotSize, {1.5, 0.0, 3.5, 2.0});

/// The expected picture of a FilledGraph in @p view.
QImage expectedPicture(const PlotPlace& view, const QList<QPointF>& points)
{
    return PlainThickness{points, red}.picture(view);
}

bool showsPoints(const A2DData& result, const QList<QPointF>& points)
{
    const FilledGraph filled(result);
    GraphPlot plot(filled.graph);
    return isSamePicture(plot.picture(), expectedPicture(usualView, points), usualView.inside());
}

/// Random points in and around the view, many of them on the same pixels.
QList<QPointF> randomPoints(int count)
{
    QList<QPointF> points;
    unsigned int random = 99;
    const auto next = [&random] {
        random = random * 1664525u + 1013904223u;
        return static_cast<double>(random >> 8) / 16777216.0;
    };
    for (int i = 0; i < count; ++i) {
        points.append({1.4 + 2.2 * next(), i % 3 == 0 ? -0.1 + 2.2 * next() : 0.4 + 0.2 * next()});
    }
    return points;
}

} // namespace

class tst_ThicknessGraph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphWithoutPixelsIsEmpty();
    void graphOfNaNPixelsIsNotEmpty();
    void rangeEqualsTheGivenLimits();
    void markIsTwoCirclesAroundThePixel();
    void fractionsAreDrawnAtTheValenceOfTheirMixture();
    void storedValencesAndThicknessesAreDrawnUnchanged();
    void fractionsWithoutReferencesHaveValenceZero();
    void nonFiniteOrVeryFarPointsAreOmitted_data();
    void nonFiniteOrVeryFarPointsAreOmitted();
    void pictureMatchesMarkByMarkDrawing_data();
    void pictureMatchesMarkByMarkDrawing();
    void marksOfPointsJustOutsideThePlotAreVisible();
    void gridEndsWithinHalfAStepOfTheUpperValence_data();
    void gridEndsWithinHalfAStepOfTheUpperValence();
    void pointsAreDrawnOverTheGrid();
    void graphWithExtremeNumbersKeepsItsOutline_data();
    void graphWithExtremeNumbersKeepsItsOutline();
};

void tst_ThicknessGraph::graphWithoutPixelsIsEmpty()
{
    A2DData result;
    result.xNum = 3;
    result.yNum = 3;
    const FilledGraph filled(result);
    QVERIFY(filled.graph.isEmpty());
    GraphPlot plot(filled.graph);
    QVERIFY(isBlank(plot.picture()));
    QVERIFY(!plot.DispA->cc.drawn);
    QCOMPARE(plot.range.x0, -1.0); // unchanged
}

// An empty grid with titles shows the user that a result exists.
void tst_ThicknessGraph::graphOfNaNPixelsIsNotEmpty()
{
    const FilledGraph filled(extendedResult({{notANumber, 1.0}}));
    QVERIFY(!filled.graph.isEmpty());
    GraphPlot plot(filled.graph);
    QVERIFY(countOf(plot.picture(), usualView.inside(), plainGrid) > 0);
    QVERIFY(plot.DispA->cc.drawn);
}

void tst_ThicknessGraph::rangeEqualsTheGivenLimits()
{
    const FilledGraph filled(extendedResult({{7.0, 9.0}}));
    const display::Graph::Range range = filled.graph.range();
    QCOMPARE(range.x0, 1.5);
    QCOMPARE(range.y0, 0.0);
    QCOMPARE(range.x1, 3.5);
    QCOMPARE(range.y1, 2.0);
    QVERIFY(range.isFitted);
}

// With the limits 1.5 to 3.5 and 0 to 2, one unit of x is 170 pixels and one unit of y
// 127.5 pixels. So the point (2.25, 1) is at pixel column 40 + 0.75 * 170 = 167.5 and
// pixel row 270 - 127.5 = 142.5, truncated to (167, 142). A circle of radius 2 extends
// two pixels to each side, so it is 5 pixels wide.
void tst_ThicknessGraph::markIsTwoCirclesAroundThePixel()
{
    const FilledGraph filled(extendedResult({{2.25, 1.0}}));
    const QImage image = GraphPlot(filled.graph).picture();
    QCOMPARE(countOf(image, {165, 140, 5, 5}, red), countOf(image, usualView.inside(), red));
    for (const QPoint& on :
         {QPoint(167, 140), QPoint(167, 144), QPoint(165, 142), QPoint(169, 142), QPoint(167, 141),
          QPoint(167, 143), QPoint(166, 142), QPoint(168, 142)}) {
        QCOMPARE(image.pixelColor(on), red);
    }
    QCOMPARE(image.pixelColor(167, 142), QColor(Qt::white)); // the circles are not filled
    QCOMPARE(image.pixelColor(165, 140), QColor(Qt::white));
}

void tst_ThicknessGraph::fractionsAreDrawnAtTheValenceOfTheirMixture()
{
    QVERIFY(showsPoints(fractionResult({{0.0, 0.3}, {0.125, 1.1}, {1.0, 1.7}, {1.25, 0.6}}),
                        {{3.0, 0.3}, {2.875, 1.1}, {2.0, 1.7}, {1.75, 0.6}}));
}

void tst_ThicknessGraph::storedValencesAndThicknessesAreDrawnUnchanged()
{
    const QList<QPointF> points{{1.6, 0.3}, {2.9, 1.1}, {3.4, 1.9}};
    QVERIFY(showsPoints(extendedResult(points), points));
}

void tst_ThicknessGraph::fractionsWithoutReferencesHaveValenceZero()
{
    const A2DData result = fractionResult({{0.25, 0.5}, {0.75, 1.5}});
    ThicknessGraph graph(result, analysis::ValenceMix{});
    graph.limits = {-1.0, 0.0, 3.5, 2.0};
    graph.lower = 2.0;
    graph.upper = 3.0;
    graph.color = red;
    GraphPlot plot(graph);
    const PlotPlace view(plotSize, {-1.0, 0.0, 3.5, 2.0});
    QVERIFY(isSamePicture(plot.picture(), expectedPicture(view, {{0.0, 0.5}, {0.0, 1.5}}),
                          view.inside()));
}

void tst_ThicknessGraph::nonFiniteOrVeryFarPointsAreOmitted_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("huge") << 1e300;
    QTest::newRow("larger than an int") << 4294967298.5;
}

void tst_ThicknessGraph::nonFiniteOrVeryFarPointsAreOmitted()
{
    QFETCH(double, number);
    const QList<QPointF> extreme{{number, 1.0}, {2.5, number}, {number, number}};
    QVERIFY(showsPoints(extendedResult(extreme + QList<QPointF>{{2.2, 1.3}}), {{2.2, 1.3}}));
    QVERIFY(
        showsPoints(fractionResult(extreme.mid(1) + QList<QPointF>{{0.25, 1.3}}), {{2.75, 1.3}}));
}

void tst_ThicknessGraph::pictureMatchesMarkByMarkDrawing_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("50 points") << 50;
    QTest::newRow("5000 points") << 5000;
    QTest::newRow("200000 points") << 200000;
}

void tst_ThicknessGraph::pictureMatchesMarkByMarkDrawing()
{
    QFETCH(int, count);
    const QList<QPointF> points = randomPoints(count);
    QVERIFY(showsPoints(extendedResult(points), points));
}

// The points are from about 5 pixels outside to about 5 pixels inside each edge of the
// plot area. The marks of points just outside extend into the plot area.
void tst_ThicknessGraph::marksOfPointsJustOutsideThePlotAreVisible()
{
    QList<QPointF> points;
    for (int i = -5; i <= 5; ++i) {
        const double dx = (i + 0.5) / 170.0;
        const double dy = (i + 0.5) / 127.5;
        points << QPointF(1.5 + dx, 0.11 + 0.13 * (i + 5)) << QPointF(3.5 + dx, 0.2 + dy + 0.6)
               << QPointF(1.7 + 0.13 * (i + 5), dy) << QPointF(1.75 + 0.13 * (i + 5), 2.0 + dy);
    }
    QVERIFY(showsPoints(extendedResult(points), points));
}

void tst_ThicknessGraph::gridEndsWithinHalfAStepOfTheUpperValence_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<int>("lines");
    QTest::newRow("one unit") << 2.0 << 3.0 << 11;
    QTest::newRow("less than half a step above a line") << 2.0 << 3.04 << 11;
    QTest::newRow("more than half a step above a line") << 2.0 << 3.06 << 12;
    QTest::newRow("equal valences") << 2.2 << 2.2 << 1;
    QTest::newRow("upper valence less than half a step below") << 2.2 << 2.16 << 1;
    QTest::newRow("upper valence more than half a step below") << 2.2 << 2.14 << 0;
    QTest::newRow("reversed valences") << 3.0 << 2.0 << 0;
    QTest::newRow("wider than the view") << -10.0 << 10.0 << 19;
    QTest::newRow("left of the view") << -3.0 << 1.0 << 0;
    QTest::newRow("upper is NaN") << 2.0 << notANumber << 0;
    QTest::newRow("lower is NaN") << notANumber << 3.0 << 0;
    QTest::newRow("upper is infinite") << 2.0 << infinity << 0;
}

// Row "wider than the view": the view is 1.5 to 3.5, and the outline covers the lines
// at its ends, so the 19 lines from 1.6 to 3.4 are visible.
void tst_ThicknessGraph::gridEndsWithinHalfAStepOfTheUpperValence()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    FilledGraph filled(extendedResult({{-50.0, 1.0}}));
    filled.graph.lower = lower;
    filled.graph.upper = upper;
    const QImage image = GraphPlot(filled.graph).picture();
    QTEST(countOf(image, {41, 100, 339, 1}, plainGrid), "lines");
    // Each line covers the whole height of the plot area, 254 pixel rows; no other
    // pixel has the grid's colour.
    QFETCH(int, lines);
    QCOMPARE(countOf(image, usualView.inside(), plainGrid), lines * 254);
}

void tst_ThicknessGraph::pointsAreDrawnOverTheGrid()
{
    const FilledGraph filled(extendedResult({{2.5, 1.0}}));
    const QImage image = GraphPlot(filled.graph).picture();
    QCOMPARE(image.pixelColor(210, 142 - 2), red);
    QCOMPARE(image.pixelColor(210, 142 + 2), red);
    QCOMPARE(image.pixelColor(210, 142), plainGrid);
}

void tst_ThicknessGraph::graphWithExtremeNumbersKeepsItsOutline_data()
{
    addExtremeNumbers();
    QTest::newRow("1e17") << 1e17;
}

void tst_ThicknessGraph::graphWithExtremeNumbersKeepsItsOutline()
{
    QFETCH(double, number);
    for (int field = 0; field < 6; ++field) {
        FilledGraph filled(extendedResult({{number, 1.0}, {2.5, number}, {2.25, 1.0}}));
        ThicknessGraph& graph = filled.graph;
        const QList<double*> fields{&graph.limits.x0, &graph.limits.x1, &graph.limits.y0,
                                    &graph.limits.y1, &graph.lower,     &graph.upper};
        *fields.at(field) = number;
        GraphPlot plot(graph);
        QVERIFY(hasOutline(plot.picture(), usualView));
    }
}

QTEST_MAIN(tst_ThicknessGraph)
#include "tst_ThicknessGraph.moc"
