// What all graphs of the analysis have in common.
#include "display/Graph.h"

#include "display/DispABase.h"
#include "support/PlainPlot.h"

#include <QTest>

using namespace tests;

namespace
{

const QSize size(387, 257); // margins of 38, 19, 25 and 12 pixels

/// A graph that paints one colour everywhere and another one on top.
class Flood : public Graph
{
public:
    bool isEmpty() const override { return empty; }
    Range range() const override { return automatic; }

    bool empty = false;
    Range automatic{10.0, -1.0, 43.0, 4.5};

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override
    {
        p->fillRect(QRect(QPoint(0, 0), size), Qt::cyan);
        p->fillRect(QRectF(cc.r2sX(13.0), cc.r2sY(0.5), 10, 10), Qt::magenta);
    }
    void drawOnTop(QStylePainter* p, const ChCoord&) const override
    {
        p->fillRect(QRect(0, 0, 100, 20), Qt::yellow);
    }
};

/// The same picture by plain means.
class PlainFlood : public PlainPlot
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

/// A graph that leaves what stands on top to its base.
class Bare : public Flood
{
protected:
    void drawOnTop(QStylePainter* p, const ChCoord& cc) const override { Graph::drawOnTop(p, cc); }
};

/// A frame in which a graph draws itself.
struct Plot {
    explicit Plot(const Graph& drawn)
    {
        frame.xTitleInArea = true;
        frame.yTitleInArea = true;
        frame.DispA->setFixedSize(size);
        QObject::connect(&frame, &DispABase::draw, &frame, [this, &drawn](QStylePainter* p) {
            drawn.paint(&frame, p, QStringLiteral("over"), QStringLiteral("up"), &range);
        });
    }

    QImage paint() { return frame.DispA->grab().toImage(); }
    ChCoord& cc() { return frame.DispA->cc; }

    DispABase frame;
    Graph::Range range{-7.0, -8.0, -9.0, -10.0};
};

PlainFlood plainFlood(const PlotRange& range)
{
    PlainFlood picture(size, range);
    picture.xTitle = QStringLiteral("over");
    picture.yTitle = QStringLiteral("up");
    return picture;
}

} // namespace

class tst_Graph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frameMasksTheDataAndStandsUnderWhatIsOnTop();
    void nothingIsOnTopUnlessAGraphSaysSo();
    void plotAreaIsComputedBeforeAnyData();
    void firstRangeAfterAResetCounts();
    void zoomedViewStaysButTheAutomaticRangeIsTold();
    void rangeThatIsNotFittedLeavesTheViewAutomatic();
    void rangeThatIsNotFittedLeavesAZoomAlone();
    void emptyGraphIsWhiteWithoutTitles();
    void emptyGraphLeavesRangesAlone();
    void graphThatEmptiesLosesItsTitlesAndGetsThemBack();
};

void tst_Graph::frameMasksTheDataAndStandsUnderWhatIsOnTop()
{
    const Flood graph;
    Plot plot(graph);
    const QImage image = plot.paint();
    QVERIFY(isSamePicture(image, plainFlood({10.0, -1.0, 43.0, 4.5}).picture()));
    QCOMPARE(image.pixelColor(200, 5), QColor(Qt::white));
    QCOMPARE(image.pixelColor(200, 12), QColor(150, 150, 150));
    QCOMPARE(image.pixelColor(200, 13), QColor(Qt::cyan));
    QCOMPARE(image.pixelColor(60, 12), QColor(Qt::yellow));
}

void tst_Graph::nothingIsOnTopUnlessAGraphSaysSo()
{
    const Bare graph;
    Plot plot(graph);
    PlainFlood wanted = plainFlood({10.0, -1.0, 43.0, 4.5});
    wanted.onTop = false;
    QVERIFY(isSamePicture(plot.paint(), wanted.picture()));
}

// 10 pixels a unit on x from column 38 on, 40 on y from row 232 up.
void tst_Graph::plotAreaIsComputedBeforeAnyData()
{
    const Flood graph;
    Plot plot(graph);
    const QImage image = plot.paint();
    QCOMPARE(plot.cc().areaX0, 38.0);
    QCOMPARE(plot.cc().areaX1, 368.0);
    QCOMPARE(plot.cc().areaY0, 232.0);
    QCOMPARE(plot.cc().areaY1, 12.0);
    QVERIFY(isAllOf(image, QRect(68, 172, 10, 10), Qt::magenta));
    QCOMPARE(countOf(image, image.rect(), Qt::magenta), 100);
}

void tst_Graph::firstRangeAfterAResetCounts()
{
    Flood graph;
    Plot plot(graph);
    QVERIFY(!plot.frame.DispA->hasScale);
    plot.paint();
    QVERIFY(plot.frame.DispA->hasScale);
    graph.automatic = {0.0, 0.0, 33.0, 5.5};
    QVERIFY(isSamePicture(plot.paint(), plainFlood({10.0, -1.0, 43.0, 4.5}).picture()));
    plot.frame.clearScale();
    QVERIFY(isSamePicture(plot.paint(), plainFlood({0.0, 0.0, 33.0, 5.5}).picture()));
}

void tst_Graph::zoomedViewStaysButTheAutomaticRangeIsTold()
{
    const Flood graph;
    Plot plot(graph);
    plot.paint();
    plot.cc().setReal(12.0, 0.0, 15.3, 1.1);
    plot.range = {};
    QVERIFY(isSamePicture(plot.paint(), plainFlood({12.0, 0.0, 15.3, 1.1}).picture()));
    QCOMPARE(plot.range.x0, 10.0);
    QCOMPARE(plot.range.y0, -1.0);
    QCOMPARE(plot.range.x1, 43.0);
    QCOMPARE(plot.range.y1, 4.5);
}

void tst_Graph::rangeThatIsNotFittedLeavesTheViewAutomatic()
{
    Flood graph;
    graph.automatic = {5.0, 0.0, 38.0, 1.1, false};
    Plot plot(graph);
    QVERIFY(isSamePicture(plot.paint(), plainFlood({5.0, 0.0, 38.0, 1.1}).picture()));
    QVERIFY(!plot.frame.DispA->hasScale);
    graph.automatic = {0.0, 0.0, 33.0, 5.5, true};
    QVERIFY(isSamePicture(plot.paint(), plainFlood({0.0, 0.0, 33.0, 5.5}).picture()));
    QVERIFY(plot.frame.DispA->hasScale);
}

void tst_Graph::rangeThatIsNotFittedLeavesAZoomAlone()
{
    Flood graph;
    graph.automatic.isFitted = false;
    Plot plot(graph);
    plot.frame.setRealCoord(12.0, 0.0, 15.3, 1.1);
    QVERIFY(isSamePicture(plot.paint(), plainFlood({12.0, 0.0, 15.3, 1.1}).picture()));
    QVERIFY(plot.frame.DispA->hasScale);
}

void tst_Graph::emptyGraphIsWhiteWithoutTitles()
{
    Flood graph;
    graph.empty = true;
    Plot plot(graph);
    QVERIFY(isBlank(plot.paint()));
    QVERIFY(!plot.cc().drawn);
    QCOMPARE(plot.frame.xTitle, QStringLiteral("over"));
    QCOMPARE(plot.frame.yTitle, QStringLiteral("up"));
    QCOMPARE(plot.cc().areaX0, 38.0); // the mouse's places go by the plot area
}

void tst_Graph::emptyGraphLeavesRangesAlone()
{
    Flood graph;
    graph.empty = true;
    Plot plot(graph);
    plot.paint();
    QVERIFY(!plot.frame.DispA->hasScale);
    QCOMPARE(plot.range.x0, -7.0);
    QCOMPARE(plot.range.y1, -10.0);
    plot.frame.setRealCoord(12.0, 0.0, 15.3, 1.1);
    plot.paint();
    QCOMPARE(plot.cc().realX0, 12.0);
    QVERIFY(plot.frame.DispA->hasScale);
}

void tst_Graph::graphThatEmptiesLosesItsTitlesAndGetsThemBack()
{
    Flood graph;
    Plot plot(graph);
    const QImage full = plot.paint();
    graph.empty = true;
    QVERIFY(isBlank(plot.paint()));
    graph.empty = false;
    QVERIFY(isSamePicture(plot.paint(), full));
    QVERIFY(plot.cc().drawn);
}

QTEST_MAIN(tst_Graph)
#include "tst_Graph.moc"
