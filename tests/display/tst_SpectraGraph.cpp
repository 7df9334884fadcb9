// Tests of SpectraGraph, the plot of all spectra.
#include "display/SpectraGraph.h"

#include "data/AMutE.h"
#include "support/GraphPlot.h"
#include "support/PlainSpectra.h"

#include <QTest>

#include <limits>

using namespace tests;

namespace
{

// With this size, the plot area spans x = 38 to 368 and y = 12 to 232: 330 by 220
// pixels.
const QSize usualSize(387, 257);
const PlotRange usualRange{8300.0, -0.1, 8450.0, 2.1};

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

/// A valid spectrum with these points, no energy shift and zero background lines.
AMutE spectrumOf(const QList<QPointF>& energyAndMut)
{
    AMutE spectrum;
    spectrum.valid = true;
    for (const QPointF& point : energyAndMut) {
        spectrum.points.append({0.0, point.x(), point.y()});
    }
    return spectrum;
}

/// A graph of the energy window 8300 to 8450 eV with the edge at 8350 eV, and the
/// expected picture.
struct Drawing {
    explicit Drawing(const QSize& size = usualSize, const PlotRange& values = usualRange)
        : expected(size, values)
    {
        graph.edge = expected.edge = 8350.0;
        graph.from = expected.from = 8300.0;
        graph.to = expected.to = 8450.0;
        expected.xTitle = QStringLiteral("over");
        expected.yTitle = QStringLiteral("up");
    }

    void add(const AMutE& spectrum, const QColor& color, int width, const QString& name)
    {
        graph.curves.append({&spectrum, color, width, name});
        QList<QPointF> points;
        for (const MutPoint& point : spectrum.points) {
            points.append({point.energy - spectrum.dE, point.mut});
        }
        if (spectrum.valid) {
            expected.curves.append({points, color, width, name, spectrum.switchedOn});
        }
    }

    /// The picture of the graph in @p view; in the automatic range if @p view is null.
    QImage painted(const PlotRange* view = nullptr)
    {
        GraphPlot plot(graph, expected.place.size, expected.xTitle, expected.yTitle);
        if (view) {
            plot.setRealCoord(view->x0, view->y0, view->x1, view->y1);
        }
        return plot.picture();
    }

    bool matchesExpected() { return isSamePicture(painted(), expected.picture()); }

    display::SpectraGraph graph;
    PlainSpectra expected;
};

const QList<QPointF> wave{{8280, 1.1}, {8310, 0.0}, {8340, 2.0}, {8370, 0.3}, {8470, 1.9}};

} // namespace

class tst_SpectraGraph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphWithoutPointsIsEmpty();
    void rangeIsTheEnergyWindowWithAMarginOfATwentiethInY();
    void rangeOfOneValueHasNoHeight();
    void windowWithoutValuesHasUnfittedYRangeZeroToOne();
    void rangeIgnoresNaNsAndIsNotFittedIfAllAreNaN();
    void graphMatchesTheReferenceDrawing_data();
    void graphMatchesTheReferenceDrawing();
    void curveHasTheWidthOfItsPen();
    void guideLinesAreVisibleInAWiderView();
    void guidesMarksCurvesAndFitAreDrawnInThisOrder();
    void legendIsDrawnOverFrameAndCurves();
    void legendOmitsInvalidSpectra();
    void invalidOrHiddenSpectrumIsNotDrawn_data();
    void invalidOrHiddenSpectrumIsNotDrawn();
    void nonFiniteEnergyInterruptsTheCurve();
    void energiesOutsideTheViewAreNotMarked();
    void fitUsesItsEnergyShiftButNotTheSelectedPresentation();
    void legendTextsAreNotLimitedToTwelvePoints();
    void reversedWindowContainsNoValue();
};

void tst_SpectraGraph::graphWithoutPointsIsEmpty()
{
    Drawing drawing;
    QVERIFY(drawing.graph.isEmpty());
    const AMutE none = spectrumOf({});
    drawing.add(none, Qt::black, 2, "none");
    QVERIFY(drawing.graph.isEmpty());
    QVERIFY(isBlank(drawing.painted()));
    const AMutE fit = spectrumOf(wave);
    drawing.graph.fitted = &fit;
    QVERIFY(drawing.graph.isEmpty());
    AMutE one = spectrumOf({{8000, 1}});
    one.valid = one.switchedOn = false;
    drawing.add(one, Qt::black, 2, "one");
    QVERIFY(!drawing.graph.isEmpty());
}

void tst_SpectraGraph::rangeIsTheEnergyWindowWithAMarginOfATwentiethInY()
{
    Drawing drawing;
    const AMutE first = spectrumOf({{8299.9, 99}, {8300, -1}, {8400, 2}, {8450.1, 99}});
    const AMutE second = spectrumOf({{8450, 4}});
    drawing.add(first, Qt::black, 2, "first");
    drawing.add(second, Qt::red, 1, "second");
    const display::Graph::Range range = drawing.graph.range();
    QVERIFY(range.isFitted);
    QCOMPARE(range.x0, 8300.0);
    QCOMPARE(range.x1, 8450.0);
    QCOMPARE(range.y0, -1.25);
    QCOMPARE(range.y1, 4.25);
    // The range applies to the presented values, from which the post-edge line is
    // subtracted here.
    drawing.graph.kind = AMutE::minusPostEdge;
    drawing.graph.curves.removeLast();
    AMutE lifted = spectrumOf({{8400, 4}, {8410, 6}});
    lifted.postLine = {10.0, 0.0, 0.0};
    drawing.graph.curves.first().spectrum = &lifted;
    QCOMPARE(drawing.graph.range().y0, -6.0 - 0.1);
    QCOMPARE(drawing.graph.range().y1, -4.0 + 0.1);
}

void tst_SpectraGraph::rangeOfOneValueHasNoHeight()
{
    Drawing drawing;
    const AMutE level = spectrumOf({{8310, 0.7}, {8400, 0.7}});
    drawing.add(level, Qt::black, 2, "level");
    QVERIFY(drawing.graph.range().isFitted);
    QCOMPARE(drawing.graph.range().y0, 0.7);
    QCOMPARE(drawing.graph.range().y1, 0.7);
    // With a range of zero height, the graph draws no curve, but still draws the frame and
    // the legend.
    const QImage image = drawing.painted();
    QCOMPARE(image.pixelColor(38, 100), QColor(150, 150, 150));
    QVERIFY(countOf(image, QRect(288, 13, 76, 9), Qt::white) < 76 * 9);
}

void tst_SpectraGraph::windowWithoutValuesHasUnfittedYRangeZeroToOne()
{
    Drawing drawing(usualSize, {8300.0, 0.0, 8450.0, 1.0});
    const AMutE far = spectrumOf({{8000, 0.4}, {9000, 0.6}});
    drawing.add(far, Qt::black, 2, "far");
    const display::Graph::Range range = drawing.graph.range();
    QVERIFY(!range.isFitted);
    QCOMPARE(range.x0, 8300.0);
    QCOMPARE(range.x1, 8450.0);
    QCOMPARE(range.y0, 0.0);
    QCOMPARE(range.y1, 1.0);
    QVERIFY(drawing.matchesExpected());
}

void tst_SpectraGraph::rangeIgnoresNaNsAndIsNotFittedIfAllAreNaN()
{
    Drawing drawing;
    const AMutE nothing = spectrumOf({{8310, notANumber}, {8400, notANumber}});
    drawing.add(nothing, Qt::black, 2, "nothing");
    QVERIFY(!drawing.graph.isEmpty());
    QVERIFY(!drawing.graph.range().isFitted);
    const AMutE second = spectrumOf({{8310, 0.0}, {8400, 2.0}, {8410, notANumber}});
    drawing.add(second, Qt::red, 2, "second");
    QCOMPARE(drawing.graph.range().y0, -0.1);
    QCOMPARE(drawing.graph.range().y1, 2.1);
}

void tst_SpectraGraph::graphMatchesTheReferenceDrawing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("usual size") << usualSize;
    QTest::newRow("433 by 311 pixels") << QSize(433, 311);
    QTest::newRow("tall") << QSize(151, 433);
    QTest::newRow("wide") << QSize(701, 123);
    QTest::newRow("tiny") << QSize(40, 30);
}

void tst_SpectraGraph::graphMatchesTheReferenceDrawing()
{
    QFETCH(QSize, size);
    Drawing drawing(size);
    AMutE first = spectrumOf(wave);
    first.dE = 4.5;
    AMutE second = spectrumOf({{8300, 1.0}, {8445, 1.2}});
    second.switchedOn = false;
    const AMutE third = spectrumOf({{8441.2, 0.1}, {8391.5, 1.7}, {8391.5, 0.4}, {8307.0, 1.6}});
    drawing.add(first, Qt::black, 2, "first spectrum with a long name");
    drawing.add(second, Qt::red, 2, "second");
    drawing.add(third, QColor(200, 200, 0), 1, "");
    drawing.graph.marks = {{8313.0, true, false}, {8381.0, false, true}, {0.0, true, true}};
    drawing.expected.energies = {{8313.0, Qt::red, 1}, {8381.0, Qt::blue, 3}, {0.0, Qt::red, 3}};
    const AMutE fit = spectrumOf({{8320, 0.2}, {8330, 1.9}, {8440, 1.0}});
    drawing.graph.fitted = &fit;
    drawing.expected.fitted = {{8320, 0.2}, {8330, 1.9}, {8440, 1.0}};
    QVERIFY(drawing.matchesExpected());
}

void tst_SpectraGraph::curveHasTheWidthOfItsPen()
{
    const AMutE level = spectrumOf({{8310, 0.0}, {8311, 2.0}, {8320, 1.255}, {8440, 1.255}});
    for (const int width : {1, 2, 3}) {
        Drawing drawing;
        drawing.add(level, Qt::red, width, "");
        QCOMPARE(countOf(drawing.painted(), QRect(200, 50, 1, 100), Qt::red), width);
        QVERIFY(drawing.matchesExpected());
    }
}

// In the automatic range the frame covers the guides at both ends of the window. This
// wider view shows them. At 1.5 pixels per eV, the guides at 8300, 8350 and 8450 eV are
// 45, 120 and 270 pixels to the right of 8270 eV, the left end of the view.
void tst_SpectraGraph::guideLinesAreVisibleInAWiderView()
{
    const PlotRange view{8270.0, -0.1, 8490.0, 2.1}; // 330 pixels for 220 eV
    Drawing drawing(usualSize, view);
    const AMutE spectrum = spectrumOf(wave);
    drawing.add(spectrum, Qt::black, 2, "wave");
    const QImage image = drawing.painted(&view);
    QVERIFY(isSamePicture(image, drawing.expected.picture()));
    QList<int> columns;
    for (int x = 39; x < 368; ++x) {
        if (countOf(image, QRect(x, 100, 1, 100), QColor(80, 255, 80)) > 50) {
            columns.append(x);
        }
    }
    QCOMPARE(columns, QList<int>({38 + 45, 38 + 120, 38 + 270}));
}

// A horizontal curve, the fit, two guides and an energy mark share one pixel. Each
// element that is added must be drawn over the earlier ones.
void tst_SpectraGraph::guidesMarksCurvesAndFitAreDrawnInThisOrder()
{
    Drawing drawing;
    const AMutE level = spectrumOf({{8310, 0.0}, {8311, 2.0}, {8312, 1.0}, {8440, 1.0}});
    drawing.add(level, Qt::black, 1, "");
    const PlotPlace& place = drawing.expected.place;
    // The vertical guide at the edge, 8350 eV, crosses the horizontal guide at mut 1.
    const QPoint crossing = place.pixel(8350.0, 1.0);
    drawing.graph.curves.first().width = 1;
    AMutE hidden = level;
    hidden.switchedOn = false;
    drawing.graph.curves.first().spectrum = &hidden;
    QCOMPARE(drawing.painted().pixelColor(crossing), QColor(80, 255, 80));
    drawing.graph.marks = {{8350.0, false, false}};
    QCOMPARE(drawing.painted().pixelColor(crossing), QColor(Qt::blue));
    drawing.graph.curves.first().spectrum = &level;
    QCOMPARE(drawing.painted().pixelColor(crossing), QColor(Qt::black));
    const AMutE fit = spectrumOf({{8320, 1.0}, {8400, 1.0}});
    drawing.graph.fitted = &fit;
    QCOMPARE(drawing.painted().pixelColor(crossing), QColor(255, 200, 255));
}

void tst_SpectraGraph::legendIsDrawnOverFrameAndCurves()
{
    Drawing drawing;
    AMutE off = spectrumOf({{8310, 0.0}, {8440, 2.0}});
    off.switchedOn = false;
    const AMutE steep = spectrumOf({{8430, 0.0}, {8430.5, 2.0}, {8440, 1.9}});
    drawing.add(steep, Qt::black, 2, "");
    for (int i = 0; i < 25; ++i) { // more legend rows than fit in the plot area
        drawing.add(off, Qt::red, 2, "");
    }
    const QImage image = drawing.painted();
    QVERIFY(isFilledWith(image, QRect(290, 24, 70, 9), QColor(220, 220, 220)));
    // The curve is visible in the gaps between the legend rows.
    QVERIFY(countOf(image, QRect(320, 23, 30, 209), Qt::black) > 0);
    // Legend rows are 11 pixels high and numbered from 0; their boxes are 9 pixels
    // high. The box of legend row 19 starts at y = 13 + 19 * 11 = 222. The box of
    // legend row 20 starts at y = 233, below the outline at y = 232, because the legend
    // is not clipped to the plot area.
    QVERIFY(isFilledWith(image, QRect(290, 222, 70, 9), QColor(220, 220, 220)));
    QVERIFY(isFilledWith(image, QRect(290, 233, 70, 3), QColor(220, 220, 220)));
    QVERIFY(drawing.matchesExpected());
}

void tst_SpectraGraph::legendOmitsInvalidSpectra()
{
    Drawing drawing;
    const AMutE first = spectrumOf(wave);
    AMutE second = first;
    second.valid = false;
    const AMutE third = spectrumOf({{8320, 0.3}, {8440, 1.3}});
    drawing.add(first, Qt::black, 2, "first");
    drawing.add(second, Qt::red, 2, "second");
    drawing.add(third, Qt::blue, 1, "third");
    QCOMPARE(drawing.expected.curves.size(), 2);
    QVERIFY(drawing.matchesExpected());
}

void tst_SpectraGraph::invalidOrHiddenSpectrumIsNotDrawn_data()
{
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("valid and on") << true << true << true;
    QTest::newRow("off") << true << false << false;
    QTest::newRow("invalid") << false << true << false;
    QTest::newRow("invalid and off") << false << false << false;
}

void tst_SpectraGraph::invalidOrHiddenSpectrumIsNotDrawn()
{
    QFETCH(bool, valid);
    QFETCH(bool, on);
    QFETCH(bool, drawn);
    Drawing drawing;
    AMutE spectrum = spectrumOf(wave);
    spectrum.valid = valid;
    spectrum.switchedOn = on;
    drawing.add(spectrum, Qt::black, 2, "");
    drawing.expected.curves.removeIf([](const PlainCurve& curve) { return !curve.on; });
    const QImage image = drawing.painted();
    QCOMPARE(countOf(image, QRect(39, 24, 240, 200), Qt::black) > 100, drawn);
    // A grey legend row means that the spectrum is valid but switched off.
    QCOMPARE(countOf(image, QRect(290, 13, 70, 9), QColor(220, 220, 220)) == 630, valid && !on);
    QCOMPARE(countOf(image, QRect(290, 13, 70, 9), QColor(220, 220, 220)) > 0, valid && !on);
}

void tst_SpectraGraph::nonFiniteEnergyInterruptsTheCurve()
{
    for (const double value : {notANumber, infinite, -infinite}) {
        Drawing drawing;
        const AMutE ends = spectrumOf({{8310, 0.0}, {8311, 2.0}});
        AMutE broken =
            spectrumOf({{8320, 0.5}, {8340, 1.5}, {8350, 0.7}, {8390, 1.5}, {8400, 0.3}});
        drawing.add(ends, Qt::black, 2, "");
        broken.points[2].energy = value; // the point is dropped
        drawing.graph.curves.append({&broken, Qt::red, 2, "broken"});
        drawing.expected.curves.append({{{8320, 0.5}, {8340, 1.5}}, Qt::red, 2, "broken"});
        QVERIFY(countOf(drawing.painted(), QRect(39, 24, 240, 200), Qt::red) > 100);
        const QImage image = drawing.painted();
        // One eV is 2.2 pixels wide. No line is drawn between the second point, 8340 eV
        // at pixel column 38 + 88, and the fourth point, 8390 eV at pixel column
        // 38 + 198.
        QCOMPARE(countOf(image, QRect(38 + 92, 24, 100, 200), Qt::red), 0);
        QVERIFY(countOf(image, QRect(38 + 198, 24, 22, 200), Qt::red) > 50);
    }
}

void tst_SpectraGraph::energiesOutsideTheViewAreNotMarked()
{
    Drawing drawing;
    const AMutE spectrum = spectrumOf(wave);
    drawing.add(spectrum, Qt::black, 2, "");
    drawing.graph.marks = {{notANumber, true, true}, {infinite, true, true}, {1e300, true, true},
                           {-1e300, false, true},    {1e10, false, false},   {8330, true, true}};
    drawing.expected.energies = {{8330, Qt::red, 3}};
    QVERIFY(drawing.matchesExpected());
}

void tst_SpectraGraph::fitUsesItsEnergyShiftButNotTheSelectedPresentation()
{
    Drawing drawing;
    const AMutE spectrum = spectrumOf(wave);
    drawing.add(spectrum, Qt::black, 2, "");
    AMutE fit = spectrumOf({{8327.5, 0.2}, {8407.5, 1.2}});
    fit.dE = 2.5;
    fit.valid = fit.switchedOn = false;
    fit.preLine = fit.postLine = {7.0, 0.0, 0.0};
    drawing.graph.kind = AMutE::minusPreEdge; // the pre-edge line is 0 for the curve, 7 for the fit
    drawing.graph.fitted = &fit;
    drawing.expected.fitted = {{8325, 0.2}, {8405, 1.2}};
    QVERIFY(drawing.matchesExpected());
    fit.points.clear();
    drawing.expected.fitted.clear();
    QVERIFY(drawing.matchesExpected());
}

// Unlike the axis titles, the legend texts are not limited to 12 points: on a large
// surface, a short name is drawn in a larger font.
void tst_SpectraGraph::legendTextsAreNotLimitedToTwelvePoints()
{
    Drawing drawing(QSize(900, 900));
    const AMutE spectrum = spectrumOf(wave);
    drawing.add(spectrum, Qt::magenta, 1, "Hg");
    QVERIFY(drawing.matchesExpected());
    const QImage image = drawing.painted();
    int top = 900;
    int bottom = 0;
    for (int y = 46; y < 90; ++y) {
        if (countOf(image, QRect(660, y, 180, 1), Qt::magenta) > 0) {
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    QVERIFY2(bottom - top >= 20, qPrintable(QString::number(bottom - top)));
}

void tst_SpectraGraph::reversedWindowContainsNoValue()
{
    Drawing drawing(usualSize, {8450.0, 0.0, 8300.0, 1.0});
    std::swap(drawing.graph.from, drawing.graph.to);
    std::swap(drawing.expected.from, drawing.expected.to);
    const AMutE spectrum = spectrumOf(wave);
    drawing.add(spectrum, Qt::black, 2, "wave");
    QVERIFY(!drawing.graph.range().isFitted);
    QVERIFY(drawing.matchesExpected()); // in the reversed range, x values grow to the left
}

QTEST_MAIN(tst_SpectraGraph)
#include "tst_SpectraGraph.moc"
