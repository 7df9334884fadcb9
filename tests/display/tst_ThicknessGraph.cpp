// Points, grid and range of the graph of thickness against valence.

#include "display/ThicknessGraph.h"
#include "support/GraphPlot.h"
#include "support/HostileNumbers.h"
#include "support/PlainThickness.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::ThicknessGraph;

using namespace tests;

// A surface of 400 by 300 pixels: 340 columns from 40 on, 255 rows up from 270.

namespace
{

const QSize surface(400, 300);
const analysis::ValenceMix twoToThree{true, 2.0, 3.0};
const QColor red(255, 0, 0);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

A2DData fractions(const QList<QPointF>& pixels)
{
    A2DData result;
    for (const QPointF& pixel : pixels) {
        result.rows.append({0.0, 0.0, pixel.x(), pixel.y(), {}});
    }
    return result;
}

/// A result of the non-equivalent method; its other values are -1.
A2DData stored(const QList<QPointF>& points)
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

/// The graph of a result on 1.5 to 3.5 and 0 to 2, in red, its grid from 2 to 3.
struct UsualGraph {
    explicit UsualGraph(const A2DData& of)
        : result(of)
    {
        graph.limits = {1.5, 0.0, 3.5, 2.0};
        graph.lower = 2.0;
        graph.upper = 3.0;
        graph.color = red;
    }

    A2DData result;
    ThicknessGraph graph{result, twoToThree};
};

const PlotPlace usualView(surface, {1.5, 0.0, 3.5, 2.0});

/// What the usual graph has to show in a view.
QImage plainPicture(const PlotPlace& view, const QList<QPointF>& points)
{
    return PlainThickness{points, red}.picture(view);
}

bool showsPoints(const A2DData& result, const QList<QPointF>& points)
{
    const UsualGraph usual(result);
    GraphPlot plot(usual.graph);
    return isSamePicture(plot.picture(), plainPicture(usualView, points), usualView.inside());
}

/// Points all over the view and around it, many of them on the same pixels.
QList<QPointF> crowd(int count)
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
    void graphOfHiddenPixelsIsNotEmpty();
    void rangeIsTheGivenOne();
    void markIsTwoCirclesAboutThePixel();
    void fractionsStandAtTheirMixedValence();
    void storedValuesAreDrawnAsTheyAre();
    void withoutReferencesFractionsStandAtZero();
    void oddPixelsAreLeftOut_data();
    void oddPixelsAreLeftOut();
    void crowdLooksLikeMarkByMark_data();
    void crowdLooksLikeMarkByMark();
    void marksAtTheEdgesReachIn();
    void gridEndsHalfATenthBeyondTheUpperValence_data();
    void gridEndsHalfATenthBeyondTheUpperValence();
    void pointsLieOverTheGrid();
    void hostileNumbersStillPaint_data();
    void hostileNumbersStillPaint();
};

void tst_ThicknessGraph::graphWithoutPixelsIsEmpty()
{
    A2DData result;
    result.xNum = 3;
    result.yNum = 3;
    const UsualGraph usual(result);
    QVERIFY(usual.graph.isEmpty());
    GraphPlot plot(usual.graph);
    QVERIFY(isBlank(plot.picture()));
    QVERIFY(!plot.DispA->cc.drawn);
    QCOMPARE(plot.range.x0, -1.0); // left alone
}

// Grid and titles show that there is a result.
void tst_ThicknessGraph::graphOfHiddenPixelsIsNotEmpty()
{
    const UsualGraph usual(stored({{notANumber, 1.0}}));
    QVERIFY(!usual.graph.isEmpty());
    GraphPlot plot(usual.graph);
    QVERIFY(countOf(plot.picture(), usualView.inside(), plainGrid) > 0);
    QVERIFY(plot.DispA->cc.drawn);
}

void tst_ThicknessGraph::rangeIsTheGivenOne()
{
    const UsualGraph usual(stored({{7.0, 9.0}}));
    const display::Graph::Range range = usual.graph.range();
    QCOMPARE(range.x0, 1.5);
    QCOMPARE(range.y0, 0.0);
    QCOMPARE(range.x1, 3.5);
    QCOMPARE(range.y1, 2.0);
    QVERIFY(range.isFitted);
}

// At (2.25, 1): 40 + 127.5 and 270 - 127.5, cut to 167 and 142. A circle of
// radius 2 takes the rectangle of two pixels on each side, drawn 5 wide.
void tst_ThicknessGraph::markIsTwoCirclesAboutThePixel()
{
    const UsualGraph usual(stored({{2.25, 1.0}}));
    const QImage image = GraphPlot(usual.graph).picture();
    QCOMPARE(countOf(image, {165, 140, 5, 5}, red), countOf(image, usualView.inside(), red));
    for (const QPoint& on :
         {QPoint(167, 140), QPoint(167, 144), QPoint(165, 142), QPoint(169, 142), QPoint(167, 141),
          QPoint(167, 143), QPoint(166, 142), QPoint(168, 142)}) {
        QCOMPARE(image.pixelColor(on), red);
    }
    QCOMPARE(image.pixelColor(167, 142), QColor(Qt::white)); // circles, no discs
    QCOMPARE(image.pixelColor(165, 140), QColor(Qt::white));
}

void tst_ThicknessGraph::fractionsStandAtTheirMixedValence()
{
    QVERIFY(showsPoints(fractions({{0.0, 0.3}, {0.125, 1.1}, {1.0, 1.7}, {1.25, 0.6}}),
                        {{3.0, 0.3}, {2.875, 1.1}, {2.0, 1.7}, {1.75, 0.6}}));
}

void tst_ThicknessGraph::storedValuesAreDrawnAsTheyAre()
{
    const QList<QPointF> points{{1.6, 0.3}, {2.9, 1.1}, {3.4, 1.9}};
    QVERIFY(showsPoints(stored(points), points));
}

void tst_ThicknessGraph::withoutReferencesFractionsStandAtZero()
{
    const A2DData result = fractions({{0.25, 0.5}, {0.75, 1.5}});
    ThicknessGraph graph(result, analysis::ValenceMix{});
    graph.limits = {-1.0, 0.0, 3.5, 2.0};
    graph.lower = 2.0;
    graph.upper = 3.0;
    graph.color = red;
    GraphPlot plot(graph);
    const PlotPlace view(surface, {-1.0, 0.0, 3.5, 2.0});
    QVERIFY(
        isSamePicture(plot.picture(), plainPicture(view, {{0.0, 0.5}, {0.0, 1.5}}), view.inside()));
}

void tst_ThicknessGraph::oddPixelsAreLeftOut_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("huge") << 1e300;
    QTest::newRow("beyond the integers") << 4294967298.5;
}

void tst_ThicknessGraph::oddPixelsAreLeftOut()
{
    QFETCH(double, number);
    const QList<QPointF> odd{{number, 1.0}, {2.5, number}, {number, number}};
    QVERIFY(showsPoints(stored(odd + QList<QPointF>{{2.2, 1.3}}), {{2.2, 1.3}}));
    QVERIFY(showsPoints(fractions(odd.mid(1) + QList<QPointF>{{0.25, 1.3}}), {{2.75, 1.3}}));
}

void tst_ThicknessGraph::crowdLooksLikeMarkByMark_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("a few") << 50;
    QTest::newRow("many") << 5000;
    QTest::newRow("on every pixel") << 200000;
}

void tst_ThicknessGraph::crowdLooksLikeMarkByMark()
{
    QFETCH(int, count);
    const QList<QPointF> points = crowd(count);
    QVERIFY(showsPoints(stored(points), points));
}

// Places from 5 pixels outside to 5 inside at each edge of the widget, in a view
// whose margins show nothing of it.
void tst_ThicknessGraph::marksAtTheEdgesReachIn()
{
    QList<QPointF> points;
    for (int i = -5; i <= 5; ++i) {
        const double dx = (i + 0.5) / 170.0;
        const double dy = (i + 0.5) / 127.5;
        points << QPointF(1.5 + dx, 0.11 + 0.13 * (i + 5)) << QPointF(3.5 + dx, 0.2 + dy + 0.6)
               << QPointF(1.7 + 0.13 * (i + 5), dy) << QPointF(1.75 + 0.13 * (i + 5), 2.0 + dy);
    }
    QVERIFY(showsPoints(stored(points), points));
}

void tst_ThicknessGraph::gridEndsHalfATenthBeyondTheUpperValence_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<int>("lines");
    QTest::newRow("a unit") << 2.0 << 3.0 << 11;
    QTest::newRow("not a tenth more") << 2.0 << 3.04 << 11;
    QTest::newRow("a tenth more") << 2.0 << 3.06 << 12;
    QTest::newRow("equal") << 2.2 << 2.2 << 1;
    QTest::newRow("a little below") << 2.2 << 2.16 << 1;
    QTest::newRow("below") << 2.2 << 2.14 << 0;
    QTest::newRow("reversed") << 3.0 << 2.0 << 0;
    QTest::newRow("through the view") << -10.0 << 10.0 << 19;
    QTest::newRow("left of the view") << -3.0 << 1.0 << 0;
    QTest::newRow("upper is no number") << 2.0 << notANumber << 0;
    QTest::newRow("lower is no number") << notANumber << 3.0 << 0;
    QTest::newRow("upper is infinite") << 2.0 << infinity << 0;
}

// Through the view: 1.6 to 3.4, those at its ends being on the outline.
void tst_ThicknessGraph::gridEndsHalfATenthBeyondTheUpperValence()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    UsualGraph usual(stored({{-50.0, 1.0}}));
    usual.graph.lower = lower;
    usual.graph.upper = upper;
    const QImage image = GraphPlot(usual.graph).picture();
    QTEST(countOf(image, {41, 100, 339, 1}, plainGrid), "lines");
    // Whole columns and nothing else.
    QFETCH(int, lines);
    QCOMPARE(countOf(image, usualView.inside(), plainGrid), lines * 254);
}

void tst_ThicknessGraph::pointsLieOverTheGrid()
{
    const UsualGraph usual(stored({{2.5, 1.0}}));
    const QImage image = GraphPlot(usual.graph).picture();
    QCOMPARE(image.pixelColor(210, 142 - 2), red);
    QCOMPARE(image.pixelColor(210, 142 + 2), red);
    QCOMPARE(image.pixelColor(210, 142), plainGrid);
}

void tst_ThicknessGraph::hostileNumbersStillPaint_data()
{
    addHostileNumbers();
    QTest::newRow("large") << 1e17;
}

void tst_ThicknessGraph::hostileNumbersStillPaint()
{
    QFETCH(double, number);
    for (int field = 0; field < 6; ++field) {
        UsualGraph usual(stored({{number, 1.0}, {2.5, number}, {2.25, 1.0}}));
        ThicknessGraph& graph = usual.graph;
        const QList<double*> fields{&graph.limits.x0, &graph.limits.x1, &graph.limits.y0,
                                    &graph.limits.y1, &graph.lower,     &graph.upper};
        *fields.at(field) = number;
        GraphPlot plot(graph);
        QVERIFY(hasOutline(plot.picture(), usualView));
    }
}

QTEST_MAIN(tst_ThicknessGraph)
#include "tst_ThicknessGraph.moc"
