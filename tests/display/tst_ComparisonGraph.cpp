// Tests of ComparisonGraph, the plot that compares the valences of the fit and of the
// target calculation.
#include "display/ComparisonGraph.h"

#include "support/GraphPlot.h"
#include "support/MarkPainters.h"
#include "support/PlainComparison.h"

#include <QTest>

#include <algorithm>
#include <limits>
#include <random>

using display::ComparisonGraph;

using namespace tests;

namespace
{

const QSize usualSize(387, 257);

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The picture of a plot that shows @p graph.
QImage painted(const ComparisonGraph& graph, const QSize& size = usualSize)
{
    return GraphPlot(graph, size, QStringLiteral("LCF"), QStringLiteral("MPs")).picture();
}

void fill(ComparisonGraph* graph, double lower, double upper, const QList<PlainPoint>& points)
{
    graph->lower = lower;
    graph->upper = upper;
    graph->points.clear();
    graph->colors.clear();
    for (const PlainPoint& point : points) {
        if (!graph->colors.contains(point.color)) {
            graph->colors.append(point.color);
        }
        graph->points.append({0.125, point.target, 0.875, point.fit,
                              static_cast<int>(graph->colors.indexOf(point.color))});
    }
}

QImage plain(double lower, double upper, const QList<PlainPoint>& points,
             const QSize& size = usualSize)
{
    PlainComparison picture(size, lower, upper);
    picture.points = points;
    return picture.picture();
}

/// Random points near the diagonal in four colours. Some points are outside the plot.
QList<PlainPoint> randomPoints(int count)
{
    const QList<QColor> inks{Qt::blue, QColor(0, 160, 0), Qt::black, QColor(240, 0, 240)};
    std::mt19937_64 random(static_cast<unsigned>(count));
    std::uniform_real_distribution<double> along(1.7, 3.3);
    std::uniform_real_distribution<double> across(-0.2, 0.2);
    QList<PlainPoint> points;
    for (int i = 0; i < count; ++i) {
        const double fit = along(random);
        points.append({fit, fit + across(random), inks.at(static_cast<int>(random() % 4))});
    }
    return points;
}

} // namespace

Q_DECLARE_METATYPE(tests::PlotRange)

class tst_ComparisonGraph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphWithoutPointsIsEmpty();
    void rangeIsTheValenceRangePlusAFixedMargin();
    void graphMatchesTheReferenceDrawing_data();
    void graphMatchesTheReferenceDrawing();
    void redCircleIsOmittedIfTheLastPointIsNaN();
    void manyPointsMatchPointByPointDrawing_data();
    void manyPointsMatchPointByPointDrawing();
    void transparentPointsMatchPointByPointDrawing();
    void highResolutionScreenShowsNewestPointOnTop_data();
    void highResolutionScreenShowsNewestPointOnTop();
    void colorsAreUsedCyclically();
    void pointsAreBlackWithoutColors();
    void diagonalEndsAtTheValences();
    void diagonalIsDrawnOverTheGrid();
};

void tst_ComparisonGraph::graphWithoutPointsIsEmpty()
{
    ComparisonGraph graph;
    QVERIFY(graph.isEmpty());
    QVERIFY(isBlank(painted(graph)));
    graph.points.append({0.125, 3.0, 0.875, 2.0, 0});
    QVERIFY(!graph.isEmpty());
}

void tst_ComparisonGraph::rangeIsTheValenceRangePlusAFixedMargin()
{
    ComparisonGraph graph;
    graph.lower = -1.25;
    graph.upper = 3.5;
    const display::Graph::Range range = graph.range();
    QVERIFY(range.isFitted);
    QCOMPARE(range.x0, -1.25 - 0.2);
    QCOMPARE(range.y0, -1.25 - 0.2);
    QCOMPARE(range.x1, 3.5 + 0.2);
    QCOMPARE(range.y1, 3.5 + 0.2);
}

void tst_ComparisonGraph::graphMatchesTheReferenceDrawing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::newRow("usual size") << usualSize << 2.0 << 3.0;
    QTest::newRow("odd size") << QSize(433, 311) << 2.0 << 3.0;
    QTest::newRow("tiny") << QSize(30, 30) << 2.0 << 3.0;
    QTest::newRow("equal valences") << usualSize << 2.5 << 2.5;
    QTest::newRow("many grid lines") << usualSize << -20.0 << 25.0;
    QTest::newRow("more grid lines than pixels") << usualSize << -50.0 << 55.0;
    QTest::newRow("lower valence above upper valence") << usualSize << 3.0 << 2.0;
    QTest::newRow("lower valence slightly above upper valence") << usualSize << 2.52 << 2.48;
}

void tst_ComparisonGraph::graphMatchesTheReferenceDrawing()
{
    QFETCH(QSize, size);
    QFETCH(double, lower);
    QFETCH(double, upper);
    const QList<PlainPoint> points{{2.41, 2.53, Qt::blue},  {2.5, 2.5, QColor(0, 160, 0)},
                                   {2.91, 2.14, Qt::black}, {2.91, 2.15, QColor(240, 0, 240)},
                                   {3.3, 1.7, Qt::blue},    {2.55, 2.43, Qt::black}};
    ComparisonGraph graph;
    fill(&graph, lower, upper, points);
    QVERIFY(isSamePicture(painted(graph, size), plain(lower, upper, points, size)));
}

void tst_ComparisonGraph::redCircleIsOmittedIfTheLastPointIsNaN()
{
    ComparisonGraph graph;
    fill(&graph, 2.0, 3.0, {{2.5, 2.35, Qt::blue}, {notANumber, 2.5, Qt::blue}});
    const QImage image = painted(graph);
    QCOMPARE(countOf(image, image.rect(), Qt::red), 0);
    QVERIFY(countOf(image, image.rect(), Qt::blue) > 12);
}

void tst_ComparisonGraph::manyPointsMatchPointByPointDrawing_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<PlotRange>("view");
    const PlotRange all{1.8, 1.8, 3.2, 3.2};
    QTest::newRow("300 points") << 300 << usualSize << all;
    QTest::newRow("6000 points") << 6000 << usualSize << all;
    QTest::newRow("small picture") << 3000 << QSize(60, 50) << all;
    QTest::newRow("zoomed") << 6000 << usualSize << PlotRange{2.3, 2.4, 2.5, 2.6};
    QTest::newRow("scrolled") << 6000 << usualSize << PlotRange{2.8, 1.0, 3.9, 2.1};
}

void tst_ComparisonGraph::manyPointsMatchPointByPointDrawing()
{
    QFETCH(int, count);
    QFETCH(QSize, size);
    QFETCH(PlotRange, view);
    const QList<PlainPoint> points = randomPoints(count);
    ComparisonGraph graph;
    fill(&graph, 2.0, 3.0, points);
    GraphPlot plot(graph, size, QStringLiteral("LCF"), QStringLiteral("MPs"));
    plot.DispA->cc.setReal(view.x0, view.y0, view.x1, view.y1);
    plot.DispA->hasScale = true;
    PlainComparison expected(size, 2.0, 3.0, view);
    expected.points = points;
    QVERIFY(isSamePicture(plot.picture(), expected.picture()));
}

void tst_ComparisonGraph::transparentPointsMatchPointByPointDrawing()
{
    QList<PlainPoint> points = randomPoints(400);
    for (PlainPoint& point : points) {
        point.color.setAlpha(100);
    }
    ComparisonGraph graph;
    fill(&graph, 2.0, 3.0, points);
    QVERIFY(isSamePicture(painted(graph), plain(2.0, 3.0, points)));
}

void tst_ComparisonGraph::highResolutionScreenShowsNewestPointOnTop_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<bool>("showsOlderPoints");
    QTest::newRow("opaque") << 255 << false;
    QTest::newRow("transparent") << 100 << true;
}

void tst_ComparisonGraph::highResolutionScreenShowsNewestPointOnTop()
{
    QFETCH(int, alpha);
    QFETCH(bool, showsOlderPoints);
    const auto pictureOf = [](const QList<PlainPoint>& points) {
        ComparisonGraph graph;
        fill(&graph, 2.0, 3.0, points);
        const GraphPlot plot(graph, usualSize, QStringLiteral("LCF"), QStringLiteral("MPs"));
        QImage picture = scaledPicture(usualSize, 2.0);
        plot.DispA->render(&picture);
        return picture;
    };
    // Each position has twenty points: 19 older points and the newest point, which
    // usually differ in colour. Older points are visible only through transparent
    // newer points.
    QList<PlainPoint> newest = randomPoints(200);
    for (PlainPoint& point : newest) {
        point.color.setAlpha(alpha);
    }
    QList<PlainPoint> older;
    for (int round = 1; round < 20; ++round) {
        for (int i = 0; i < newest.size(); ++i) {
            const QColor color = newest.at((i + round) % newest.size()).color;
            older.append({newest.at(i).fit, newest.at(i).target, color});
        }
    }
    QCOMPARE(pictureOf(older + newest) != pictureOf(newest), showsOlderPoints);
    std::reverse(newest.begin(), newest.end());
    QCOMPARE(pictureOf(older + newest) != pictureOf(newest), showsOlderPoints);
}

void tst_ComparisonGraph::colorsAreUsedCyclically()
{
    ComparisonGraph graph;
    graph.lower = 2.0;
    graph.upper = 3.0;
    graph.colors = {Qt::blue, Qt::black};
    graph.points = {{0.0, 2.2, 0.0, 2.4, 2}, {0.0, 2.6, 0.0, 2.4, 5}};
    QVERIFY(isSamePicture(painted(graph),
                          plain(2.0, 3.0, {{2.4, 2.2, Qt::blue}, {2.4, 2.6, Qt::black}})));
}

void tst_ComparisonGraph::pointsAreBlackWithoutColors()
{
    ComparisonGraph graph;
    graph.lower = 2.0;
    graph.upper = 3.0;
    graph.points = {{0.0, 2.2, 0.0, 2.4, 2}, {0.0, 2.6, 0.0, 2.4, 0}};
    QVERIFY(isSamePicture(painted(graph),
                          plain(2.0, 3.0, {{2.4, 2.2, Qt::black}, {2.4, 2.6, Qt::black}})));
}

void tst_ComparisonGraph::diagonalEndsAtTheValences()
{
    ComparisonGraph graph;
    fill(&graph, 2.0, 3.0, {{2.5, 2.35, Qt::blue}});
    const QImage image = painted(graph);
    // With a margin of 0.2 around the valences 2 and 3, both axes show 1.8 to 3.2. The
    // plot area extends from (38, 232) 330 pixels to the right and 220 pixels upward.
    // So the diagonal spans x = 38 + 330 * 0.2 / 1.4 = 85.1 to
    // 38 + 330 * 1.2 / 1.4 = 320.9 and y = 232 - 220 * 0.2 / 1.4 = 200.6 to
    // 232 - 220 * 1.2 / 1.4 = 43.4, all truncated.
    const QRect part(QPoint(85, 43), QPoint(320, 200));
    QCOMPARE(image.pixelColor(85, 200), QColor(0, 200, 0));
    QCOMPARE(image.pixelColor(320, 43), QColor(0, 200, 0));
    QCOMPARE(countOf(image, image.rect(), QColor(0, 200, 0)),
             countOf(image, part, QColor(0, 200, 0)));
}

void tst_ComparisonGraph::diagonalIsDrawnOverTheGrid()
{
    ComparisonGraph graph;
    fill(&graph, 2.0, 3.0, {{2.5, 2.15, Qt::blue}});
    const QImage image = painted(graph);
    // The diagonal spans the pixel columns 85 to 320 (see diagonalEndsAtTheValences())
    // and has a pixel in each of them.
    for (int x = 85; x <= 320; ++x) {
        QVERIFY(countOf(image, QRect(x, 13, 1, 219), QColor(0, 200, 0)) >= 1);
    }
}

QTEST_MAIN(tst_ComparisonGraph)
#include "tst_ComparisonGraph.moc"
