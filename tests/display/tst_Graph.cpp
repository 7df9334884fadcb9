// Tests of Graph, the base class of all graphs of the analysis.
#include "display/Graph.h"

#include "support/GraphPlot.h"
#include "support/PlainPlot.h"

#include <QTest>

using display::Graph;

using namespace tests;

namespace
{

// The margins are 0.1 (left and bottom) or 0.05 (right and top) of the size, truncated:
// left 38, right 19, bottom 25 and top 12 pixels.
const QSize plotSize(387, 257);

/// A graph whose drawData() fills the whole surface with one colour and draws a square at
/// (13, 0.5), and whose drawOnTop() draws a bar.
class FilledGraph : public Graph
{
public:
    bool isEmpty() const override { return empty; }
    Range range() const override { return automatic; }

    bool empty = false;
    Range automatic{10.0, -1.0, 43.0, 4.5};

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override
    {
        p->fillRect(QRect(QPoint(0, 0), plotSize), Qt::cyan);
        p->fillRect(QRectF(cc.r2sX(13.0), cc.r2sY(0.5), 10, 10), Qt::magenta);
    }
    void drawOnTop(QStylePainter* p, const ChCoord&) const override
    {
        p->fillRect(QRect(0, 0, 100, 20), Qt::yellow);
    }
};

/// The expected picture of FilledGraph, drawn without Graph.
class PlainFilledGraph : public PlainPlot
{
public:
    using PlainPlot::PlainPlot;
    bool onTop = true;

protected:
    void drawData(QStylePainter* p) const override
    {
        p->fillRect(QRect(0, 0, width(), height()), Qt::cyan);
        p->fillRect(QRectF(place.columnOf(13.0), place.rowOf(0.5), 10, 10), Qt::magenta);
    }
    void drawOnTop(QStylePainter* p) const override
    {
        if (onTop) {
            p->fillRect(QRect(0, 0, 100, 20), Qt::yellow);
        }
    }
};

/// A FilledGraph that uses the base class's drawOnTop(), which draws nothing.
class FilledGraphWithoutTop : public FilledGraph
{
protected:
    void drawOnTop(QStylePainter* p, const ChCoord& cc) const override { Graph::drawOnTop(p, cc); }
};

struct Plot : GraphPlot {
    explicit Plot(const Graph& drawn)
        : GraphPlot(drawn, plotSize, QStringLiteral("over"), QStringLiteral("up"))
    {
    }

    ChCoord& cc() { return DispA->cc; }
};

PlainFilledGraph expectedPlot(const PlotRange& range)
{
    PlainFilledGraph picture(plotSize, range);
    picture.xTitle = QStringLiteral("over");
    picture.yTitle = QStringLiteral("up");
    return picture;
}

} // namespace

class tst_Graph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frameIsDrawnAfterTheDataAndBeforeDrawOnTop();
    void drawOnTopDrawsNothingByDefault();
    void plotAreaIsComputedBeforeTheDataIsDrawn();
    void laterRangesAreIgnoredUntilClearScale();
    void zoomIsKeptAndAutomaticRangeIsReported();
    void unfittedRangeKeepsTheViewAutomatic();
    void unfittedRangeKeepsTheZoom();
    void emptyGraphIsWhiteWithoutTitles();
    void emptyGraphKeepsTheRanges();
    void titlesAreDrawnOnlyWhileTheGraphHasData();
};

void tst_Graph::frameIsDrawnAfterTheDataAndBeforeDrawOnTop()
{
    const FilledGraph graph;
    Plot plot(graph);
    const QImage image = plot.picture();
    QVERIFY(isSamePicture(image, expectedPlot({10.0, -1.0, 43.0, 4.5}).picture()));
    QCOMPARE(image.pixelColor(200, 5), QColor(Qt::white));
    QCOMPARE(image.pixelColor(200, 12), QColor(150, 150, 150));
    QCOMPARE(image.pixelColor(200, 13), QColor(Qt::cyan));
    QCOMPARE(image.pixelColor(60, 12), QColor(Qt::yellow));
}

void tst_Graph::drawOnTopDrawsNothingByDefault()
{
    const FilledGraphWithoutTop graph;
    Plot plot(graph);
    PlainFilledGraph expected = expectedPlot({10.0, -1.0, 43.0, 4.5});
    expected.onTop = false;
    QVERIFY(isSamePicture(plot.picture(), expected.picture()));
}

// The plot area is 330 by 220 pixels and shows 33 units of x and 5.5 units of y. So one
// unit of x is 10 pixels, starting with 10 at pixel column 38, and one unit of y is 40
// pixels, starting with -1 at pixel row 232 and growing upward. The square at (13, 0.5)
// starts at pixel (68, 172).
void tst_Graph::plotAreaIsComputedBeforeTheDataIsDrawn()
{
    const FilledGraph graph;
    Plot plot(graph);
    const QImage image = plot.picture();
    QCOMPARE(plot.cc().areaX0, 38.0);
    QCOMPARE(plot.cc().areaX1, 368.0);
    QCOMPARE(plot.cc().areaY0, 232.0);
    QCOMPARE(plot.cc().areaY1, 12.0);
    QVERIFY(isFilledWith(image, QRect(68, 172, 10, 10), Qt::magenta));
    QCOMPARE(countOf(image, image.rect(), Qt::magenta), 100);
}

void tst_Graph::laterRangesAreIgnoredUntilClearScale()
{
    FilledGraph graph;
    Plot plot(graph);
    QVERIFY(!plot.DispA->hasScale);
    plot.picture();
    QVERIFY(plot.DispA->hasScale);
    graph.automatic = {0.0, 0.0, 33.0, 5.5};
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({10.0, -1.0, 43.0, 4.5}).picture()));
    plot.clearScale();
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({0.0, 0.0, 33.0, 5.5}).picture()));
}

void tst_Graph::zoomIsKeptAndAutomaticRangeIsReported()
{
    const FilledGraph graph;
    Plot plot(graph);
    plot.picture();
    plot.cc().setReal(12.0, 0.0, 15.3, 1.1);
    plot.range = {};
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({12.0, 0.0, 15.3, 1.1}).picture()));
    QCOMPARE(plot.range.x0, 10.0);
    QCOMPARE(plot.range.y0, -1.0);
    QCOMPARE(plot.range.x1, 43.0);
    QCOMPARE(plot.range.y1, 4.5);
}

void tst_Graph::unfittedRangeKeepsTheViewAutomatic()
{
    FilledGraph graph;
    graph.automatic = {5.0, 0.0, 38.0, 1.1, false};
    Plot plot(graph);
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({5.0, 0.0, 38.0, 1.1}).picture()));
    QVERIFY(!plot.DispA->hasScale);
    graph.automatic = {0.0, 0.0, 33.0, 5.5, true};
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({0.0, 0.0, 33.0, 5.5}).picture()));
    QVERIFY(plot.DispA->hasScale);
}

void tst_Graph::unfittedRangeKeepsTheZoom()
{
    FilledGraph graph;
    graph.automatic.isFitted = false;
    Plot plot(graph);
    plot.setRealCoord(12.0, 0.0, 15.3, 1.1);
    QVERIFY(isSamePicture(plot.picture(), expectedPlot({12.0, 0.0, 15.3, 1.1}).picture()));
    QVERIFY(plot.DispA->hasScale);
}

void tst_Graph::emptyGraphIsWhiteWithoutTitles()
{
    FilledGraph graph;
    graph.empty = true;
    Plot plot(graph);
    QVERIFY(isBlank(plot.picture()));
    QVERIFY(!plot.cc().drawn);
    QCOMPARE(plot.xTitle, QStringLiteral("over"));
    QCOMPARE(plot.yTitle, QStringLiteral("up"));
    // The plot area is set even without data, because mouse positions refer to it.
    QCOMPARE(plot.cc().areaX0, 38.0);
}

void tst_Graph::emptyGraphKeepsTheRanges()
{
    FilledGraph graph;
    graph.empty = true;
    Plot plot(graph);
    plot.picture();
    QVERIFY(!plot.DispA->hasScale);
    QCOMPARE(plot.range.x0, -1.0);
    QCOMPARE(plot.range.y0, -2.0);
    QCOMPARE(plot.range.x1, -3.0);
    QCOMPARE(plot.range.y1, -4.0);
    plot.setRealCoord(12.0, 0.0, 15.3, 1.1);
    plot.picture();
    QCOMPARE(plot.cc().realX0, 12.0);
    QCOMPARE(plot.cc().realY0, 0.0);
    QCOMPARE(plot.cc().realX1, 15.3);
    QCOMPARE(plot.cc().realY1, 1.1);
    QVERIFY(plot.DispA->hasScale);
}

void tst_Graph::titlesAreDrawnOnlyWhileTheGraphHasData()
{
    FilledGraph graph;
    Plot plot(graph);
    const QImage full = plot.picture();
    graph.empty = true;
    QVERIFY(isBlank(plot.picture()));
    graph.empty = false;
    QVERIFY(isSamePicture(plot.picture(), full));
    QVERIFY(plot.cc().drawn);
}

QTEST_MAIN(tst_Graph)
#include "tst_Graph.moc"
