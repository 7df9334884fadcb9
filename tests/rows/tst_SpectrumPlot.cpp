// Tests of the plot of one spectrum, which a spectrum row draws in a frame.

#include "display/Displays.h"
#include "rows/AXafsFileSelect.h"
#include "rows/DialogSettings.h"
#include "support/MouseInput.h"
#include "support/PlainPlot.h"
#include "support/TestFiles.h"

#include <QStylePainter>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const QColor limitColor(255, 200, 200);
const QColor edgeColor(255, 0, 0);
const QColor preColor(0, 200, 0);
const QColor postColor(0, 0, 200);
const QColor outlineColor(150, 150, 150);

// On a surface of 387 by 257 pixels, the margins are 0.1 (left and bottom) and 0.05
// (right and top) of the size, truncated: left 38, right 19, bottom 25 and top 12
// pixels. So the plot area spans x = 38 to 368 and y = 12 to 232: 330 by 220 pixels.
//
// The automatic range of a spectrum that spans 300 eV and 2 in mut has margins of 15 eV
// and 0.1. It shows 330 eV and 2.2 in mut, so one pixel is 1 eV wide and 0.01 high. The
// lowest energy is 15 pixels to the right of x = 38, the lowest mut 10 pixels above y =
// 232:
//     pixel column = 53 + (energy - lowest energy)
//     pixel row = 222 - 100 * (mut - lowest mut)
const QSize usualSize(387, 257);
const QRect usualOutline(38, 12, 330, 220);

// At this size the data points are at fractional pixel coordinates.
const QSize oddSize(401, 307);

/// Sets the points and their minima and maxima, as a file reader does.
void setPoints(AMutE& spectrum, const QList<QPointF>& energyAndMut)
{
    spectrum.points.clear();
    spectrum.minEnergy = spectrum.minMut = 1e300;
    spectrum.maxEnergy = spectrum.maxMut = -1e300;
    for (const QPointF& point : energyAndMut) {
        spectrum.points.append({0.0, point.x(), point.y()});
        spectrum.minEnergy = std::fmin(spectrum.minEnergy, point.x());
        spectrum.maxEnergy = std::fmax(spectrum.maxEnergy, point.x());
        spectrum.minMut = std::fmin(spectrum.minMut, point.y());
        spectrum.maxMut = std::fmax(spectrum.maxMut, point.y());
    }
    spectrum.valid = true;
}

/// A constant background line.
data::VictoreenLine level(double value)
{
    return {value, 0.0, 0.0};
}

/// Sets a spectrum from 8000 to 8300 eV with mut from 1 to 3. Its middle part rises by
/// one pixel per pixel column. The pre-edge line is constant at 1.155 and the post-edge
/// line at 2.855, so the edge jump is 1.7. The pre-edge part ends at 8050.5 eV, the
/// edge is at 8150.5 eV, and the post-edge part starts at 8180.5 eV. These three
/// vertical lines are to the left of the text of the edge jump.
void setStep(AMutE& spectrum)
{
    setPoints(spectrum, {{8000, 1}, {8100.5, 1.505}, {8200.5, 2.505}, {8300, 3}});
    spectrum.preEdgeEnd = 8050.5;
    spectrum.edgeEnergy = 8150.5;
    spectrum.postEdgeStart = 8180.5;
    spectrum.preLine = level(1.155);
    spectrum.postLine = level(2.855);
}

/// Like setStep(), but the two limits and the edge are outside the range, so no
/// vertical line is visible.
void setStepWithoutMarkers(AMutE& spectrum)
{
    setStep(spectrum);
    spectrum.preEdgeEnd = spectrum.edgeEnergy = spectrum.postEdgeStart = 9000.0;
}

/// A spectrum row attached to a frame with a surface of a fixed size.
struct Plot {
    explicit Plot(const QSize& size = usualSize)
    {
        frame.xTitleInArea = true;
        frame.yTitleInArea = true;
        frame.DispA->setFixedSize(size);
        row.attach(&frame);
    }

    AMutE& spectrum() { return row; }
    ChCoord& cc() { return frame.DispA->cc; }

    /// The current picture of the surface.
    QImage paint() { return frame.DispA->grab().toImage(); }

    /// Sets the range like a zoom by the user.
    void setRange(double x0, double y0, double x1, double y1)
    {
        cc().setReal(x0, y0, x1, y1);
        frame.DispA->hasScale = true;
    }

    DispABase frame;
    AXafsFileSelect row;
};

/// A frame that counts the receivers of a signal.
class CountingFrame : public DispABase
{
public:
    int receiverCount(const char* signal) const { return receivers(signal); }
};

/// The range of a spectrum, with margins of a twentieth of the span on each side.
PlotRange rangeOf(const AMutE& spectrum)
{
    const double marginX = 0.05 * (spectrum.maxEnergy - spectrum.minEnergy);
    const double marginY = 0.05 * (spectrum.maxMut - spectrum.minMut);
    return {spectrum.minEnergy - marginX, spectrum.minMut - marginY, spectrum.maxEnergy + marginX,
            spectrum.maxMut + marginY};
}

/// The box of the edge jump: three times the left margin wide, at the right end of the
/// plot area, PlotPlace::gap() below its top.
QRect jumpBox(const PlotPlace& place)
{
    return {place.right - 3 * place.left, place.top + place.gap(), 3 * place.left,
            place.textHeight()};
}

/// Draws @p words at the position of the edge jump, fitted to its box.
void drawJump(QStylePainter* p, const PlotPlace& place, const QString& words)
{
    p->setPen(Qt::black);
    DrawText().drawText(p, jumpBox(place), QFont(), Qt::AlignLeft | Qt::AlignVCenter, 1, words,
                        -1.0);
}

/// The reference drawing: one call per line and text.
class ReferencePlot : public PlainPlot
{
public:
    ReferencePlot(const QSize& size, const AMutE& drawn)
        : PlainPlot(size, rangeOf(drawn))
        , spectrum(drawn)
    {
        xTitle = QStringLiteral("Eng.[eV]");
        yTitle = QStringLiteral("mut");
    }

    const AMutE& spectrum;

protected:
    void drawData(QStylePainter* p) const override
    {
        drawVerticals(p);
        drawCurve(p, Qt::black, [](const MutPoint& point, double) { return point.mut; });
        drawCurve(p, preColor, [this](const MutPoint&, double e) { return spectrum.preValue(e); });
        drawCurve(p, postColor,
                  [this](const MutPoint&, double e) { return spectrum.postValue(e); });
    }

    void drawOnTop(QStylePainter* p) const override
    {
        const double jump =
            spectrum.postValue(spectrum.edgeEnergy) - spectrum.preValue(spectrum.edgeEnergy);
        drawJump(p, place, QStringLiteral("Edge Jump : ") + QString::number(jump));
    }

private:
    void drawVerticals(QStylePainter* p) const
    {
        const QList<std::pair<double, QColor>> verticals{{spectrum.preEdgeEnd, limitColor},
                                                         {spectrum.postEdgeStart, limitColor},
                                                         {spectrum.edgeEnergy, edgeColor}};
        for (const auto& [energyEv, color] : verticals) {
            p->setPen(color);
            p->drawLine(place.pixel(energyEv, place.range.y0),
                        place.pixel(energyEv, place.range.y1));
        }
    }

    template <typename Value>
    void drawCurve(QStylePainter* p, const QColor& color, Value value) const
    {
        p->setPen(color);
        for (qsizetype i = 1; i < spectrum.points.size(); ++i) {
            const MutPoint& from = spectrum.points.at(i - 1);
            const MutPoint& to = spectrum.points.at(i);
            const double fromE = from.energy - spectrum.dE;
            const double toE = to.energy - spectrum.dE;
            p->drawLine(place.pixel(fromE, value(from, fromE)), place.pixel(toE, value(to, toE)));
        }
    }
};

/// The pixels strictly inside the outline of the plot of usualSize.
QRect usualInside()
{
    // drawRect() draws an outline that is one pixel larger than its rectangle.
    return usualOutline.adjusted(1, 1, 0, 0);
}

/// A plot that shows only the frame and a text at the position of the edge jump.
class JumpPlot : public PlainPlot
{
public:
    JumpPlot(const QSize& size, const AMutE& drawn, const QString& words)
        : PlainPlot(size, rangeOf(drawn))
        , m_text(words)
    {
    }

protected:
    void drawData(QStylePainter*) const override {}
    void drawOnTop(QStylePainter* p) const override { drawJump(p, place, m_text); }

private:
    QString m_text;
};

/// Whether the box of the edge jump shows exactly the text @p words.
bool showsJump(Plot& plot, const QString& words)
{
    const QImage image = plot.paint();
    const JumpPlot expected(image.size(), plot.spectrum(), words);
    return isSamePicture(image, expected.picture(), jumpBox(expected.place).adjusted(0, 0, -1, 0));
}

} // namespace

class tst_SpectrumPlot : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void attachConnectsDrawPressDragReleaseNotDoubleClick();
    void reattachingStopsDrawingInThePreviousFrame();
    void reattachingTheSameFrameConnectsDrawOnce();
    void mouseActionsOnTheFrameKeepTheSpectrum();

    void plotWithoutPointsIsWhite();
    void plotWithoutPointsOmitsTheLastPixelColumnAndRow();
    void plotWithoutPointsKeepsItsRange();
    void invalidSpectrumWithPointsIsDrawn();
    void axisTitlesAreSetOnEveryDraw();

    void rangeAddsFivePercentOnEachSideOfTheUnshiftedSpectrum();
    void rangeIsFittedOnceAndKeptUntilItIsCleared();
    void shiftMovesTheCurveAndKeepsTheRange();
    void newFileResetsTheRange();
    void resizedFrameKeepsTheRange();

    void limitsAndEdgeAreDrawnAsVerticalLines_data();
    void limitsAndEdgeAreDrawnAsVerticalLines();
    void edgeMarkerHidesLimitMarkersAtTheSameEnergy();
    void markerLinesOutsideTheRangeAreNotDrawn();
    void curvesPassThroughThePixelsOfTheirValues_data();
    void curvesPassThroughThePixelsOfTheirValues();
    void markersSpectrumPreAndPostLineAreDrawnInThisOrder();
    void pictureMatchesTheReferenceDrawing_data();
    void pictureMatchesTheReferenceDrawing();

    void singlePointCollapsesTheRangeToThePoint();
    void singlePointInAFixedRangeHasNoCurve();
    void nanMutDropsOnlyItsTwoSegments();
    void nonFiniteBackgroundLinesAreNotDrawn();
    void segmentIsVisibleInADeepZoom();
    void markerIsVisibleInADeepZoom();

    void edgeJumpUsesTheUnshiftedEdge();
    void edgeJumpUsesTheLastFittedLines();
    void edgeJumpIsShownWithUpToSixSignificantDigits();

private:
    const tests::DialogSettings m_settings;
};

void tst_SpectrumPlot::attachConnectsDrawPressDragReleaseNotDoubleClick()
{
    CountingFrame frame;
    const char* const draw = SIGNAL(draw(QStylePainter*));
    const int before = frame.receiverCount(draw);
    AXafsFileSelect row;
    row.attach(&frame);
    QCOMPARE(row.frame, &frame);
    QCOMPARE(frame.receiverCount(draw), before + 1);
    QCOMPARE(frame.receiverCount(SIGNAL(mPressed(MouseC*))), 1);
    QCOMPARE(frame.receiverCount(SIGNAL(mDragging(MouseC*))), 1);
    QCOMPARE(frame.receiverCount(SIGNAL(mReleased(MouseC*))), 1);
    QCOMPARE(frame.receiverCount(SIGNAL(mDClicked(MouseC*))), 0);
}

void tst_SpectrumPlot::reattachingStopsDrawingInThePreviousFrame()
{
    DispABase second;
    second.DispA->setFixedSize(usualSize);
    Plot plot;
    setStep(plot.spectrum());
    plot.paint();
    plot.frame.clearScale();
    plot.row.attach(&second);
    QCOMPARE(plot.row.frame, &second);
    const QImage former = plot.paint();
    QVERIFY(!plot.frame.DispA->hasScale);
    QCOMPARE(countOf(former, usualInside(), edgeColor), 0);
    const QImage image = second.DispA->grab().toImage();
    QVERIFY(second.DispA->hasScale);
    QCOMPARE(image.pixelColor(203, 40), edgeColor);
}

void tst_SpectrumPlot::reattachingTheSameFrameConnectsDrawOnce()
{
    CountingFrame frame;
    const char* const draw = SIGNAL(draw(QStylePainter*));
    const int before = frame.receiverCount(draw);
    AXafsFileSelect row;
    row.attach(&frame);
    row.attach(&frame);
    QCOMPARE(frame.receiverCount(draw), before + 1);
    CountingFrame other;
    row.attach(&other);
    QCOMPARE(frame.receiverCount(draw), before);
    QCOMPARE(other.receiverCount(draw), before + 1);
}

void tst_SpectrumPlot::mouseActionsOnTheFrameKeepTheSpectrum()
{
    Plot plot;
    setStep(plot.spectrum());
    const QImage before = plot.paint();
    press(plot.frame.DispA, {203, 100});
    drag(plot.frame.DispA, {250, 100});
    release(plot.frame.DispA, {250, 100});
    QCOMPARE(plot.spectrum().edgeEnergy, 8150.5);
    QVERIFY(isSamePicture(plot.paint(), before));
}

void tst_SpectrumPlot::plotWithoutPointsIsWhite()
{
    Plot plot;
    const QImage image = plot.paint();
    QCOMPARE(image.size(), usualSize);
    QVERIFY(isFilledWith(image, QRect(0, 0, 386, 256), Qt::white));
    QVERIFY(!plot.cc().drawn);
    QCOMPARE(plot.frame.xTitle, QStringLiteral("Eng.[eV]"));
    setStep(plot.spectrum());
    plot.paint();
    QVERIFY(plot.cc().drawn);
}

void tst_SpectrumPlot::plotWithoutPointsOmitsTheLastPixelColumnAndRow()
{
    Plot plot;
    const QColor background(10, 20, 30);
    QPalette palette = plot.frame.palette();
    palette.setColor(QPalette::Window, background);
    plot.frame.DispA->setPalette(palette);
    plot.frame.DispA->setAutoFillBackground(true);
    const QImage image = plot.paint();
    QVERIFY(isFilledWith(image, QRect(0, 0, 386, 256), Qt::white));
    QVERIFY(isFilledWith(image, QRect(386, 0, 1, 257), background));
    QVERIFY(isFilledWith(image, QRect(0, 256, 387, 1), background));
    // With data, the whole surface is white, including its last column and row.
    setStep(plot.spectrum());
    QCOMPARE(countOf(plot.paint(), QRect(QPoint(0, 0), usualSize), background), 0);
}

void tst_SpectrumPlot::plotWithoutPointsKeepsItsRange()
{
    Plot plot;
    plot.paint();
    QVERIFY(!plot.frame.DispA->hasScale);
    QCOMPARE(plot.cc().realX1, 1.0);
    plot.setRange(1.0, 2.0, 3.0, 4.0);
    plot.paint();
    QVERIFY(plot.frame.DispA->hasScale);
    QCOMPARE(plot.cc().realX1, 3.0);
}

void tst_SpectrumPlot::invalidSpectrumWithPointsIsDrawn()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.spectrum().valid = false;
    QCOMPARE(plot.paint().pixelColor(203, 40), edgeColor);
}

void tst_SpectrumPlot::axisTitlesAreSetOnEveryDraw()
{
    Plot plot;
    plot.frame.setXYTitle(QStringLiteral("a"), QStringLiteral("b"));
    plot.paint();
    QCOMPARE(plot.frame.xTitle, QStringLiteral("Eng.[eV]"));
    QCOMPARE(plot.frame.yTitle, QStringLiteral("mut"));
    plot.frame.setXYTitle(QStringLiteral("a"), QStringLiteral("b"));
    setStep(plot.spectrum());
    plot.paint();
    QCOMPARE(plot.frame.xTitle, QStringLiteral("Eng.[eV]"));
    QCOMPARE(plot.frame.yTitle, QStringLiteral("mut"));
}

void tst_SpectrumPlot::rangeAddsFivePercentOnEachSideOfTheUnshiftedSpectrum()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.spectrum().dE = 40.0; // the range uses the unshifted energies
    plot.paint();
    // The margins are 5 % of the span on each side: 15 eV of 300 eV, and 0.1 of 2 in
    // mut.
    QCOMPARE(plot.cc().realX0, 7985.0);
    QCOMPARE(plot.cc().realX1, 8315.0);
    QCOMPARE(plot.cc().realY0, 0.9);
    QCOMPARE(plot.cc().realY1, 3.1);
    QVERIFY(plot.frame.DispA->hasScale);
}

void tst_SpectrumPlot::rangeIsFittedOnceAndKeptUntilItIsCleared()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.paint();
    setPoints(plot.spectrum(), {{7000, 0}, {7100, 10}});
    plot.paint();
    QCOMPARE(plot.cc().realX0, 7985.0);
    QCOMPARE(plot.cc().realY1, 3.1);
    plot.frame.clearScale();
    plot.paint();
    QCOMPARE(plot.cc().realX0, 6995.0);
    QCOMPARE(plot.cc().realX1, 7105.0);
    QCOMPARE(plot.cc().realY0, -0.5);
    QCOMPARE(plot.cc().realY1, 10.5);
}

void tst_SpectrumPlot::shiftMovesTheCurveAndKeepsTheRange()
{
    Plot plot;
    setStep(plot.spectrum());
    // The middle of the step, mut 2.005 at 8150.5 eV, is at pixel column
    // 53 + 150.5 = 203.5 and pixel row 222 - 100 * 1.005 = 121.5, truncated to
    // (203, 121).
    QCOMPARE(plot.paint().pixelColor(203, 121), QColor(Qt::black));
    plot.row.Ui_AFileSelect::dE->setText(QStringLiteral("40"));
    QTest::keyClick(plot.row.Ui_AFileSelect::dE, Qt::Key_Return);
    QCOMPARE(plot.spectrum().dE, 40.0);
    const QImage image = plot.paint();
    QCOMPARE(image.pixelColor(163, 121), QColor(Qt::black));
    QCOMPARE(plot.cc().realX0, 7985.0);
    QCOMPARE(plot.cc().realX1, 8315.0);
    QCOMPARE(image.pixelColor(203, 121), edgeColor); // the edge line does not move
}

void tst_SpectrumPlot::newFileResetsTheRange()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    Plot plot;
    setStep(plot.spectrum());
    plot.paint();
    plot.setRange(8100.0, 1.0, 8200.0, 2.0);
    plot.row.AFileSelect::newFile(
        writeFile(folder, QStringLiteral("b.dat"), "7000 0\n7050 4\n7200 10\n"));
    QVERIFY(!plot.frame.DispA->hasScale);
    plot.paint();
    QCOMPARE(plot.cc().realX0, 6990.0);
    QCOMPARE(plot.cc().realX1, 7210.0);
    QCOMPARE(plot.cc().realY0, -0.5);
    QCOMPARE(plot.cc().realY1, 10.5);
}

void tst_SpectrumPlot::resizedFrameKeepsTheRange()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.paint();
    plot.frame.DispA->setFixedSize(2 * usualSize);
    const QImage image = plot.paint();
    QCOMPARE(plot.cc().realX0, 7985.0);
    // The surface is 774 pixels wide and the margins are 77 and 38 pixels, so 659
    // pixels show 330 eV. The edge is 165.5 eV above the lower end of the range, so it
    // is at pixel column 77 + 165.5 * 659 / 330 = 407.5.
    QCOMPARE(image.pixelColor(407, 60), edgeColor);
    QCOMPARE(image.pixelColor(406, 60), QColor(Qt::white));
    QCOMPARE(image.pixelColor(408, 60), QColor(Qt::white));
}

void tst_SpectrumPlot::limitsAndEdgeAreDrawnAsVerticalLines_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QColor>("color");
    QTest::newRow("end of the pre-edge part") << 103 << limitColor;
    QTest::newRow("edge") << 203 << edgeColor;
    QTest::newRow("start of the post-edge part") << 233 << limitColor;
}

void tst_SpectrumPlot::limitsAndEdgeAreDrawnAsVerticalLines()
{
    QFETCH(int, column);
    QFETCH(QColor, color);
    Plot plot;
    setStep(plot.spectrum());
    const QImage image = plot.paint();
    // The vertical line extends over all 219 pixel rows inside the outline. The
    // background lines cover it in two of these rows, the spectrum in one.
    QCOMPARE(countOf(image, QRect(column, 13, 1, 219), color), 216);
    QCOMPARE(image.pixelColor(column, 13), color);
    QCOMPARE(image.pixelColor(column, 231), color);
    QCOMPARE(countOf(image, QRect(column - 1, 13, 1, 219), color), 0);
    QCOMPARE(countOf(image, QRect(column + 1, 13, 1, 219), color), 0);
    QCOMPARE(image.pixelColor(column, 12), outlineColor);
    QCOMPARE(image.pixelColor(column, 232), outlineColor);
}

void tst_SpectrumPlot::edgeMarkerHidesLimitMarkersAtTheSameEnergy()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.spectrum().preEdgeEnd = 8150.5;
    plot.spectrum().postEdgeStart = 8150.5;
    QCOMPARE(plot.paint().pixelColor(203, 60), edgeColor);
    QCOMPARE(countOf(plot.paint(), usualInside(), limitColor), 0);
}

void tst_SpectrumPlot::markerLinesOutsideTheRangeAreNotDrawn()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.spectrum().preEdgeEnd = 7970.5;    // pixel column 53 - 29.5 = 23.5, in the left margin
    plot.spectrum().postEdgeStart = 8330.5; // pixel column 53 + 330.5 = 383.5, in the right margin
    plot.spectrum().edgeEnergy = 9000.0;
    const QImage image = plot.paint();
    QCOMPARE(countOf(image, QRect(QPoint(0, 0), usualSize), limitColor), 0);
    QCOMPARE(countOf(image, QRect(QPoint(0, 0), usualSize), edgeColor), 0);
}

void tst_SpectrumPlot::curvesPassThroughThePixelsOfTheirValues_data()
{
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<QColor>("color");
    // The start of the step, mut 1.505 at 8100.5 eV, is at pixel column
    // 53 + 100.5 = 153.5 and pixel row 222 - 100 * 0.505 = 171.5. Its end, mut 2.505 at
    // 8200.5 eV, is at column 253.5 and row 71.5.
    QTest::newRow("start of the step") << QPoint(153, 171) << QColor(Qt::black);
    QTest::newRow("end of the step") << QPoint(253, 71) << QColor(Qt::black);
    QTest::newRow("quarter of the step") << QPoint(178, 146) << QColor(Qt::black);
    QTest::newRow("above the step") << QPoint(178, 145) << QColor(Qt::white);
    QTest::newRow("below the step") << QPoint(178, 147) << QColor(Qt::white);
    // The pre-edge line is at pixel row 222 - 100 * 0.155 = 206.5, the post-edge line
    // at pixel row 222 - 100 * 1.855 = 36.5.
    QTest::newRow("pre-edge line") << QPoint(60, 206) << preColor;
    QTest::newRow("pre-edge line above the edge energy") << QPoint(340, 206) << preColor;
    QTest::newRow("above the pre-edge line") << QPoint(60, 205) << QColor(Qt::white);
    QTest::newRow("below the pre-edge line") << QPoint(60, 207) << QColor(Qt::white);
    QTest::newRow("pre-edge line ends with the points") << QPoint(45, 206) << QColor(Qt::white);
    QTest::newRow("post-edge line") << QPoint(340, 36) << postColor;
    QTest::newRow("post-edge line below the edge energy") << QPoint(60, 36) << postColor;
    QTest::newRow("above the post-edge line") << QPoint(340, 35) << QColor(Qt::white);
    QTest::newRow("post-edge line ends with the points") << QPoint(360, 36) << QColor(Qt::white);
}

void tst_SpectrumPlot::curvesPassThroughThePixelsOfTheirValues()
{
    QFETCH(QPoint, pixel);
    Plot plot;
    setStep(plot.spectrum());
    QTEST(plot.paint().pixelColor(pixel), "color");
}

void tst_SpectrumPlot::markersSpectrumPreAndPostLineAreDrawnInThisOrder()
{
    Plot plot;
    setStep(plot.spectrum());
    QImage image = plot.paint();
    QCOMPARE(image.pixelColor(203, 206), preColor);
    QCOMPARE(image.pixelColor(203, 36), postColor);
    QCOMPARE(image.pixelColor(203, 121), QColor(Qt::black));
    // Where all three curves overlap, the post-edge line is visible, because it is drawn last.
    setPoints(plot.spectrum(), {{8000, 1}, {8100, 2.005}, {8200, 2.005}, {8300, 3}});
    plot.spectrum().preLine = level(2.005);
    plot.spectrum().postLine = level(2.005);
    image = plot.paint();
    QVERIFY(isFilledWith(image, QRect(160, 121, 80, 1), postColor));
    plot.spectrum().postLine = level(1.505);
    image = plot.paint();
    QVERIFY(isFilledWith(image, QRect(160, 121, 80, 1), preColor));
}

void tst_SpectrumPlot::pictureMatchesTheReferenceDrawing_data()
{
    QTest::addColumn<double>("dE");
    QTest::addColumn<bool>("backwards");
    QTest::addColumn<QSize>("size");
    QTest::newRow("as read") << 0.0 << false << oddSize;
    QTest::newRow("shifted to lower energies") << 12.3456 << false << oddSize;
    QTest::newRow("shifted to higher energies") << -17.3 << false << oddSize;
    QTest::newRow("descending scan") << 0.0 << true << oddSize;
    QTest::newRow("wide surface") << 0.0 << false << QSize(797, 163);
    QTest::newRow("tall surface") << 3.3 << false << QSize(211, 503);
}

void tst_SpectrumPlot::pictureMatchesTheReferenceDrawing()
{
    QFETCH(double, dE);
    QFETCH(bool, backwards);
    QFETCH(QSize, size);
    QList<QPointF> points;
    for (int i = 0; i < 600; ++i) {
        // An edge with EXAFS oscillations, at uneven energies.
        const double e = 8103.7 + 0.91 * i + 0.3 * std::sin(1.7 * i);
        points.append({e, 0.31 + 1.17 / (1.0 + std::exp((8347.3 - e) / 4.1)) +
                              0.09 * std::sin(0.11 * (e - 8300.0))});
    }
    if (backwards) {
        std::reverse(points.begin(), points.end());
    }
    Plot plot(size);
    AMutE& spectrum = plot.spectrum();
    setPoints(spectrum, points);
    spectrum.dE = dE;
    spectrum.preEdgeEnd = 8297.3;
    spectrum.edgeEnergy = 8347.3;
    spectrum.postEdgeStart = 8447.3;
    spectrum.preLine = {0.113, 0.071, -0.0031};
    spectrum.postLine = {0.917, 0.211, -0.0123};
    ReferencePlot expected(size, spectrum);
    QVERIFY(isSamePicture(plot.paint(), expected.picture()));
}

void tst_SpectrumPlot::singlePointCollapsesTheRangeToThePoint()
{
    Plot plot;
    setPoints(plot.spectrum(), {{8100, 1}});
    plot.spectrum().edgeEnergy = 8100.0;
    plot.spectrum().preLine = level(0.25);
    plot.spectrum().postLine = level(1.5);
    const QImage image = plot.paint();
    QVERIFY(plot.frame.DispA->hasScale);
    QCOMPARE(plot.cc().realX0, 8100.0);
    QCOMPARE(plot.cc().realX1, 8100.0);
    QCOMPARE(plot.cc().realY0, 1.0);
    QCOMPARE(plot.cc().realY1, 1.0);
    QCOMPARE(countOf(image, QRect(38, 12, 331, 1), outlineColor), 331);
    QCOMPARE(countOf(image, QRect(38, 232, 331, 1), outlineColor), 331);
    QCOMPARE(countOf(image, QRect(38, 12, 1, 221), outlineColor), 221);
    QCOMPARE(countOf(image, QRect(368, 12, 1, 221), outlineColor), 221);
    QVERIFY(plot.cc().drawn);
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 1.25")));
}

void tst_SpectrumPlot::singlePointInAFixedRangeHasNoCurve()
{
    Plot plot;
    setPoints(plot.spectrum(), {{8100, 2.005}});
    plot.spectrum().preEdgeEnd = 8050.5;
    plot.spectrum().edgeEnergy = 8150.5;
    plot.spectrum().postEdgeStart = 8250.5;
    plot.spectrum().preLine = level(1.255);
    plot.spectrum().postLine = level(2.755);
    plot.setRange(7985.0, 0.9, 8315.0, 3.1);
    const QImage image = plot.paint();
    // The vertical lines of the limits and of the edge extend over the automatic range of
    // mut, even if the plot shows another range. With one point the automatic range has the
    // height 0, so the lines are one pixel long.
    QCOMPARE(image.pixelColor(103, 121), limitColor);
    QCOMPARE(image.pixelColor(203, 121), edgeColor);
    QCOMPARE(image.pixelColor(303, 121), limitColor);
    QCOMPARE(countOf(image, usualInside(), limitColor), 2);
    QCOMPARE(countOf(image, usualInside(), edgeColor), 1);
    QCOMPARE(countOf(image, usualInside(), preColor), 0);
    QCOMPARE(countOf(image, usualInside(), postColor), 0);
    const QRect belowTheText = usualInside().adjusted(0, 20, 0, 0);
    QCOMPARE(countOf(image, belowTheText, Qt::black), 0);
}

void tst_SpectrumPlot::nanMutDropsOnlyItsTwoSegments()
{
    Plot plot;
    AMutE& spectrum = plot.spectrum();
    setPoints(spectrum, {{8000, 1},
                         {8050.5, 2.005},
                         {8100.5, 2.005},
                         {8150.5, notANumber},
                         {8200.5, 2.005},
                         {8250.5, 2.005},
                         {8300, 3}});
    spectrum.preEdgeEnd = spectrum.edgeEnergy = spectrum.postEdgeStart = 9000.0;
    spectrum.preLine = level(1.255);
    spectrum.postLine = level(2.755);
    const QImage image = plot.paint();
    QVERIFY(isFilledWith(image, QRect(103, 121, 51, 1), Qt::black)); // 8050.5 to 8100.5 eV
    QVERIFY(isFilledWith(image, QRect(154, 60, 99, 130), Qt::white));
    QVERIFY(isFilledWith(image, QRect(253, 121, 51, 1), Qt::black)); // 8200.5 to 8250.5 eV
    // The background lines are not interrupted.
    QVERIFY(isFilledWith(image, QRect(60, 196, 280, 1), preColor));
    QVERIFY(isFilledWith(image, QRect(60, 46, 280, 1), postColor));
}

void tst_SpectrumPlot::nonFiniteBackgroundLinesAreNotDrawn()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.spectrum().preLine = level(notANumber);
    plot.spectrum().postLine = level(std::numeric_limits<double>::infinity());
    const QImage image = plot.paint();
    QCOMPARE(countOf(image, usualInside(), preColor), 0);
    QCOMPARE(countOf(image, usualInside(), postColor), 0);
    QCOMPARE(image.pixelColor(203, 121), QColor(Qt::black));
    QCOMPARE(image.pixelColor(203, 60), edgeColor);
}

void tst_SpectrumPlot::segmentIsVisibleInADeepZoom()
{
    Plot plot;
    setPoints(plot.spectrum(), {{8000, 0}, {9000, 1}});
    plot.spectrum().preLine = level(-1.0);
    plot.spectrum().postLine = level(-1.0);
    // The segment passes through (8500, 0.5), the middle of the view, with the slope of
    // the view's diagonal. The view is 2e-6 eV wide, so the ends of the segment, 500 eV
    // away, are 8e10 pixels outside.
    plot.setRange(8500.0 - 1e-6, 0.5 - 1e-9, 8500.0 + 1e-6, 0.5 + 1e-9);
    const QImage image = plot.paint();
    // The diagonal rises by 220 pixels over 330 pixels: 40 pixels over 60.
    const auto isNear = [&image](int column, int row) {
        return countOf(image, QRect(column, row - 4, 1, 9), Qt::black) > 0;
    };
    QVERIFY(isNear(203, 122));
    QVERIFY(isNear(143, 162));
    QVERIFY(isNear(263, 82));
    QVERIFY(!isNear(143, 122));
    QVERIFY(!isNear(263, 122));
}

void tst_SpectrumPlot::markerIsVisibleInADeepZoom()
{
    Plot plot;
    setStep(plot.spectrum());
    plot.setRange(8150.5 - 1.65e-4, 2.2 - 1e-10, 8150.5 + 1.65e-4, 2.2 + 1e-10);
    const QImage image = plot.paint();
    // The edge is in the middle of the view, at pixel column 38 + 165 = 203. The
    // tolerance is one column, because the limits of the view are rounded doubles.
    const int red = countOf(image, QRect(202, 13, 3, 219), edgeColor);
    QCOMPARE(red, 219);
    QCOMPARE(countOf(image, usualInside(), limitColor), 0);
}

void tst_SpectrumPlot::edgeJumpUsesTheUnshiftedEdge()
{
    Plot plot;
    setStepWithoutMarkers(plot.spectrum());
    plot.spectrum().preLine = level(1.0);
    // The post-edge line minus the pre-edge line is 4 L^3 at the wavelength L (in
    // angstroms). So the edge jump is 0.5 at L = 1/2 and 4 at L = 1.
    plot.spectrum().postLine = {1.0, 4.0, 0.0};
    plot.spectrum().edgeEnergy = 2.0 * AMutE::hcEvAngstrom;
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 0.5")));
    plot.spectrum().edgeEnergy = AMutE::hcEvAngstrom;
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 4")));
    QVERIFY(!showsJump(plot, QStringLiteral("Edge Jump : 5")));
    plot.spectrum().dE = 0.5 * AMutE::hcEvAngstrom; // the shift does not move the edge energy
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 4")));
}

void tst_SpectrumPlot::edgeJumpUsesTheLastFittedLines()
{
    Plot plot;
    setStepWithoutMarkers(plot.spectrum());
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 1.7")));
    // New limits alone do not refit the lines.
    plot.spectrum().preEdgeEnd = 8400.0;
    plot.spectrum().postEdgeStart = 7900.0;
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 1.7")));
    QCOMPARE(plot.spectrum().preLine.c, 1.155);
}

void tst_SpectrumPlot::edgeJumpIsShownWithUpToSixSignificantDigits()
{
    Plot plot;
    setStepWithoutMarkers(plot.spectrum());
    plot.spectrum().preLine = level(0.0);
    plot.spectrum().postLine = level(1.23456789);
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : 1.23457")));
    plot.spectrum().postLine = level(-1e-9);
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : -1e-09")));
    plot.spectrum().postLine = level(notANumber);
    QVERIFY(showsJump(plot, QStringLiteral("Edge Jump : nan")));
}

QTEST_MAIN(tst_SpectrumPlot)
#include "tst_SpectrumPlot.moc"
