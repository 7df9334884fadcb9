// Points, lines and range of the graph of the references' plane.

#include "display/PlaneGraph.h"
#include "support/GraphPlot.h"
#include "support/HostileNumbers.h"
#include "support/PlotChecks.h"

#include <QTest>

#include <limits>

using display::Graph;
using display::PlaneGraph;

using namespace tests;

// A surface of 400 by 300 pixels: 340 columns from 40 on, 255 rows up from 270.
// A view of 0 to 17 and 0 to 12.75 has 20 pixels to a unit on both axes.

namespace
{

const QSize surface(400, 300);
const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor yellow(255, 255, 0);
const QColor magenta(255, 0, 255);
const QColor cyan(0, 255, 255);

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr analysis::PlaneLines noLines{notANumber, notANumber, notANumber, notANumber};

struct UsualGraph : PlaneGraph {
    explicit UsualGraph(const QList<Point>& of, const analysis::PlaneLines& with = noLines)
    {
        points = of;
        lines = with;
    }
};

QImage pictureOf(const PlaneGraph& graph, const Graph::Range& view)
{
    GraphPlot plot(graph);
    plot.setRealCoord(view.x0, view.y0, view.x1, view.y1);
    return plot.picture();
}

constexpr Graph::Range twentyToAUnit{0.0, 0.0, 17.0, 12.75};

/// One point far away, so that there is a graph.
const QList<PlaneGraph::Point> away{{-900.0, -900.0, false}};

/// The row in which a colour stands in a column; -1 unless it is one row.
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
    void rangeHasATenthOfEachSpanAround_data();
    void rangeHasATenthOfEachSpanAround();
    void rangeLooksPastNumbersThatAreNone();

    void axesAreBlackThroughTheOrigin();
    void axesOutOfViewAreNotSeen();
    void eachLineHasItsColor_data();
    void eachLineHasItsColor();
    void lineHasItsSlopeAndConstant_data();
    void lineHasItsSlopeAndConstant();
    void linesRunFromEdgeToEdge();
    void lineThatIsNoneIsLeftOut_data();
    void lineThatIsNoneIsLeftOut();
    void steepLineStaysInItsPlace();
    void laterLinesLieOverEarlierOnes();

    void vPointsAreRedAndOthersBlue();
    void pointIsTwoCircles();
    void pointsLieOverTheLines();
    void laterPointsLieOverEarlierOnes();
    void pointsThatAreNoNumbersAreLeftOut_data();
    void pointsThatAreNoNumbersAreLeftOut();
    void hostileNumbersStillPaint_data();
    void hostileNumbersStillPaint();
};

void tst_PlaneGraph::graphWithoutPointsIsEmpty()
{
    PlaneGraph graph;
    graph.lines = {1.0, 2.0, 3.0, 4.0};
    QVERIFY(graph.isEmpty());
    GraphPlot plot(graph);
    QVERIFY(isBlank(plot.picture()));
    QVERIFY(!plot.DispA->cc.drawn);
    QCOMPARE(plot.range.x0, -1.0); // left alone
    graph.points = away;
    QVERIFY(!graph.isEmpty());
}

void tst_PlaneGraph::rangeHasATenthOfEachSpanAround_data()
{
    QTest::addColumn<QList<double>>("numbers");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("span of 10") << QList<double>{3.0, -2.0, 8.0} << -3.0 << 9.0;
    QTest::newRow("the first is the lowest") << QList<double>{5.0, 6.0, 15.0} << 4.0 << 16.0;
    QTest::newRow("the first is the highest") << QList<double>{15.0, 6.0, 5.0} << 4.0 << 16.0;
    QTest::newRow("all negative") << QList<double>{-30.0, -20.0, -25.0} << -31.0 << -19.0;
    QTest::newRow("narrow") << QList<double>{1.0, 1.0, 1.0 + 0x1p-20} << 1.0 - 0x1p-20 * 0.1
                            << 1.0 + 0x1p-20 * 1.1;
    QTest::newRow("no span") << QList<double>{2.5, 2.5, 2.5} << 2.4 << 2.6;
    QTest::newRow("no span at zero") << QList<double>{0.0, -0.0, 0.0} << -0.1 << 0.1;
    QTest::newRow("no span, one point") << QList<double>{-7.0} << -7.1 << -6.9;
}

// Tolerance: the rounding of one sum, relative to what is summed.
void tst_PlaneGraph::rangeHasATenthOfEachSpanAround()
{
    QFETCH(QList<double>, numbers);
    QFETCH(double, low);
    QFETCH(double, high);
    const auto isNear = [](double value, double wanted) {
        return std::fabs(value - wanted) <= 4e-16 * std::max(1.0, std::fabs(wanted));
    };
    QList<PlaneGraph::Point> alongX;
    QList<PlaneGraph::Point> alongY;
    for (int i = 0; i < numbers.size(); ++i) {
        alongX.append({numbers.at(i), 20.0 + 10.0 * i, i == 1});
        alongY.append({20.0 + 10.0 * i, numbers.at(i), false});
    }
    const Graph::Range x = UsualGraph(alongX).range();
    const Graph::Range y = UsualGraph(alongY).range();
    QVERIFY(isNear(x.x0, low) && isNear(x.x1, high));
    QVERIFY(isNear(y.y0, low) && isNear(y.y1, high));
    // Each axis by itself: 20 to 40 on the other, or 20 alone.
    QVERIFY(isNear(x.y0, numbers.size() > 1 ? 18.0 : 19.9));
    QVERIFY(isNear(y.x1, numbers.size() > 1 ? 42.0 : 20.1));
}

void tst_PlaneGraph::rangeLooksPastNumbersThatAreNone()
{
    const Graph::Range range =
        UsualGraph({{notANumber, 5.0, false}, {1.0, notANumber, false}, {11.0, 25.0, false}})
            .range();
    QCOMPARE(range.x0, 0.0);
    QCOMPARE(range.x1, 12.0);
    QCOMPARE(range.y0, 3.0);
    QCOMPARE(range.y1, 27.0);
}

// From -3 to 14 and -2 to 10.75: zero at column 40 + 60 and row 270 - 40.
void tst_PlaneGraph::axesAreBlackThroughTheOrigin()
{
    const QImage image = pictureOf(UsualGraph(away), {-3.0, -2.0, 14.0, 10.75});
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, {41, 230, 339, 1}, Qt::black), 339);
    QCOMPARE(countOf(image, {100, 16, 1, 254}, Qt::black), 254);
    QCOMPARE(countOf(image, inside, Qt::black), 339 + 254 - 1);
    QCOMPARE(countOf(image, inside, Qt::white), 338 * 253);
}

void tst_PlaneGraph::axesOutOfViewAreNotSeen()
{
    const QImage image = pictureOf(UsualGraph(away), {1.0, 1.0, 18.0, 13.75});
    QCOMPARE(countOf(image, {41, 16, 339, 254}, Qt::white), 339 * 254);
}

void tst_PlaneGraph::eachLineHasItsColor_data()
{
    QTest::addColumn<double>("k1");
    QTest::addColumn<double>("k2");
    QTest::addColumn<double>("a");
    QTest::addColumn<QColor>("color");
    QTest::newRow("k1") << 0.5 << notANumber << notANumber << yellow;
    QTest::newRow("k2") << notANumber << 0.5 << notANumber << magenta;
    QTest::newRow("a and b") << notANumber << notANumber << 0.5 << cyan;
}

// y = x / 2: 10 rows up for 20 columns.
void tst_PlaneGraph::eachLineHasItsColor()
{
    QFETCH(double, k1);
    QFETCH(double, k2);
    QFETCH(double, a);
    QFETCH(QColor, color);
    const QImage image = pictureOf(UsualGraph(away, {k1, k2, a, 0.0}), twentyToAUnit);
    QCOMPARE(rowIn(image, 40 + 200, color), 270 - 100);
    QCOMPARE(rowIn(image, 40 + 300, color), 270 - 150);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, color) + countOf(image, inside, Qt::white), 339 * 254);
}

void tst_PlaneGraph::lineHasItsSlopeAndConstant_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("constant");
    QTest::newRow("level") << 0.0 << 3.25;
    QTest::newRow("rising") << 0.25 << 1.5;
    QTest::newRow("falling") << -0.5 << 10.25;
    QTest::newRow("one to one") << 1.0 << -1.25;
}

// Tolerance: one row for what QPainter makes of a slope.
void tst_PlaneGraph::lineHasItsSlopeAndConstant()
{
    QFETCH(double, slope);
    QFETCH(double, constant);
    const QImage image =
        pictureOf(UsualGraph(away, {notANumber, notANumber, slope, constant}), twentyToAUnit);
    for (const double x : {3.0, 6.5, 11.0}) {
        const double wanted = 270.0 - 20.0 * (slope * x + constant);
        const int row = rowIn(image, 40 + static_cast<int>(20.0 * x), cyan);
        QVERIFY2(std::fabs(row - wanted) <= 1.0, qPrintable(QString::number(row)));
    }
}

void tst_PlaneGraph::linesRunFromEdgeToEdge()
{
    const QImage image =
        pictureOf(UsualGraph(away, {0.25, 0.5, -0.25, 8.0}), {-2.0, -2.0, 15.0, 10.75});
    for (const QColor& color : {yellow, magenta, cyan}) {
        QVERIFY(rowIn(image, 42, color) > 0);
        QVERIFY(rowIn(image, 378, color) > 0);
    }
}

void tst_PlaneGraph::lineThatIsNoneIsLeftOut_data()
{
    QTest::addColumn<double>("odd");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
}

void tst_PlaneGraph::lineThatIsNoneIsLeftOut()
{
    QFETCH(double, odd);
    const QRect inside(41, 16, 339, 254);
    const auto seen = [&](const analysis::PlaneLines& lines) {
        const QImage image = pictureOf(UsualGraph(away, lines), {-2.0, -2.0, 15.0, 10.75});
        QList<bool> colors;
        for (const QColor& color : {yellow, magenta, cyan}) {
            colors.append(countOf(image, inside, color) > 0);
        }
        return colors;
    };
    QCOMPARE(seen({0.25, 0.5, -0.25, 8.0}), (QList<bool>{true, true, true}));
    QCOMPARE(seen({odd, 0.5, -0.25, 8.0}), (QList<bool>{false, true, true}));
    QCOMPARE(seen({0.25, odd, -0.25, 8.0}), (QList<bool>{true, false, true}));
    QCOMPARE(seen({0.25, 0.5, odd, 8.0}), (QList<bool>{true, true, false}));
    QCOMPARE(seen({0.25, 0.5, -0.25, odd}), (QList<bool>{true, true, false}));
}

// y = 1e6 (x - 5): within a column of 5 all the way up.
void tst_PlaneGraph::steepLineStaysInItsPlace()
{
    const QImage image =
        pictureOf(UsualGraph(away, {notANumber, notANumber, 1e6, -5e6}), twentyToAUnit);
    QVERIFY(countOf(image, {139, 16, 3, 254}, cyan) >= 254);
    QCOMPARE(countOf(image, {41, 16, 339, 254}, cyan), countOf(image, {139, 16, 3, 254}, cyan));
}

void tst_PlaneGraph::laterLinesLieOverEarlierOnes()
{
    const auto at = [](const analysis::PlaneLines& lines) {
        return pictureOf(UsualGraph(away, lines), twentyToAUnit).pixelColor(240, 170);
    };
    QCOMPARE(at({0.5, 0.5, 0.5, 0.0}), cyan);
    QCOMPARE(at({0.5, 0.5, notANumber, 0.0}), magenta);
    QCOMPARE(at({0.5, notANumber, notANumber, 0.0}), yellow);
    // Along the axis, over its black.
    const QImage level =
        pictureOf(UsualGraph(away, {0.0, notANumber, notANumber, 0.0}), {-3.0, -2.0, 14.0, 10.75});
    QCOMPARE(countOf(level, {41, 230, 339, 1}, yellow), 339);
}

void tst_PlaneGraph::vPointsAreRedAndOthersBlue()
{
    const QImage image = pictureOf(
        UsualGraph({{5.0, 3.0, false}, {8.0, 6.0, true}, {11.0, 9.0, true}, {2.0, 9.0, false}}),
        twentyToAUnit);
    const auto around = [](double x, double y) {
        return QRect(38 + static_cast<int>(20.0 * x), 268 - static_cast<int>(20.0 * y), 5, 5);
    };
    const int whole = countOf(image, around(5.0, 3.0), blue);
    QVERIFY(whole >= 8);
    QCOMPARE(countOf(image, around(2.0, 9.0), blue), whole);
    QCOMPARE(countOf(image, around(8.0, 6.0), red), whole);
    QCOMPARE(countOf(image, around(11.0, 9.0), red), whole);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, blue), 2 * whole);
    QCOMPARE(countOf(image, inside, red), 2 * whole);
}

// M2 to the right and M3 up: (5, 3) is at column 140 and row 210.
void tst_PlaneGraph::pointIsTwoCircles()
{
    const QImage image = pictureOf(UsualGraph({{5.0, 3.0, true}}), twentyToAUnit);
    for (const QPoint& step : {QPoint(0, -2), QPoint(0, 2), QPoint(-2, 0), QPoint(2, 0),
                               QPoint(0, -1), QPoint(0, 1), QPoint(-1, 0), QPoint(1, 0)}) {
        QCOMPARE(image.pixelColor(QPoint(140, 210) + step), red);
    }
    QCOMPARE(image.pixelColor(140, 210), QColor(Qt::white));
    QCOMPARE(image.pixelColor(138, 208), QColor(Qt::white));
}

void tst_PlaneGraph::pointsLieOverTheLines()
{
    const UsualGraph graph({{10.0, 5.0, false}}, {0.5, 0.5, 0.5, 0.0});
    const QImage image = pictureOf(graph, twentyToAUnit);
    const QImage alone = pictureOf(UsualGraph({{10.0, 5.0, false}}), twentyToAUnit);
    QCOMPARE(countOf(image, {238, 168, 5, 5}, blue), countOf(alone, {238, 168, 5, 5}, blue));
}

void tst_PlaneGraph::laterPointsLieOverEarlierOnes()
{
    const auto at = [](bool first, bool second) {
        return pictureOf(UsualGraph({{5.0, 3.0, first}, {5.0, 3.0, second}}), twentyToAUnit)
            .pixelColor(142, 210);
    };
    QCOMPARE(at(true, false), blue);
    QCOMPARE(at(false, true), red);
}

void tst_PlaneGraph::pointsThatAreNoNumbersAreLeftOut_data()
{
    QTest::addColumn<double>("odd");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("huge") << 1e300;
    QTest::newRow("beyond the integers") << 4294967296.0;
}

void tst_PlaneGraph::pointsThatAreNoNumbersAreLeftOut()
{
    QFETCH(double, odd);
    const QImage image = pictureOf(
        UsualGraph({{odd, 3.0, true}, {5.0, odd, true}, {odd, odd, true}, {8.0, 6.0, false}}),
        twentyToAUnit);
    const QRect inside(41, 16, 339, 254);
    QCOMPARE(countOf(image, inside, red), 0);
    QVERIFY(countOf(image, {198, 148, 5, 5}, blue) >= 8);
}

void tst_PlaneGraph::hostileNumbersStillPaint_data()
{
    addHostileNumbers();
    QTest::newRow("zero") << 0.0;
}

// As a number of a point, of a line and of the view, with an automatic range and
// a set one.
void tst_PlaneGraph::hostileNumbersStillPaint()
{
    QFETCH(double, number);
    for (int field = 0; field < 10; ++field) {
        UsualGraph graph({{5.0, 3.0, true}, {8.0, 6.0, false}}, {0.5, 2.0, 1.5, 0.3});
        Graph::Range view = twentyToAUnit;
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
        const PlotPlace outline(surface, {0.0, 0.0, 1.0, 1.0});
        QVERIFY(hasOutline(GraphPlot(graph).picture(), outline));
        QVERIFY(hasOutline(pictureOf(graph, view), outline));
    }
}

QTEST_MAIN(tst_PlaneGraph)
#include "tst_PlaneGraph.moc"
