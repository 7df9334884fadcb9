// Tests of the panel's plot of all spectra: the picture and its range, clicks in the legend,
// and the marker lines.

#include "display/Displays.h"
#include "display/MarkLines.h"
#include "rows/AXafsFileSelect.h"
#include "support/MouseInput.h"
#include "support/PlainSpectra.h"
#include "support/SharedPanel.h"
#include "support/SurfacePaints.h"

#include <QtTest>

#include <cmath>
#include <memory>
#include <vector>

using namespace tests;

namespace
{

const QColor black(0, 0, 0);
const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor green(120, 220, 120); // fourth reference
const QColor ochre(200, 200, 0);   // first displayed file
const QColor pink(255, 200, 255);  // fitted curve
const QColor guideGreen(80, 255, 80);
const QColor guideGrey(200, 200, 200);

// At this size the plot area is 330 by 220 pixels: x from 38 to 368, y from 12 to 232. So
// evenRange has 330 / 150 = 2.2 pixels per eV and 220 / 2.2 = 100 pixels per unit of
// absorption.
const QSize evenSize(387, 257);
const PlotRange evenRange{8300.0, -0.1, 8450.0, 2.1};

// The legend at this size. A line is trunc(220 / 20) = 11 pixels high, and its text is
// trunc(0.85 * 11) = 9 pixels high. The hit area of the first line ends 11 pixels below
// the top of the plot area: 14 < y < 23. It is twice as wide as the left margin of 38 pixels and
// ends at the right edge of the plot area: 292 < x < 368.
constexpr QPoint firstRow(320, 18);
constexpr int rowStep = 11;

/// The energy and the normalised value of each point, calculated independently of the
/// program. @p kind selects the normalisation: 0 none; 1 subtracts the pre-edge line; 3 and
/// 4 also divide by the edge jump (3) or by the difference between the post-edge line and
/// the pre-edge line (4). The panel never selects kind 2.
QList<QPointF> normalisedPoints(const AMutE& spectrum, int kind)
{
    const auto line = [](const data::VictoreenLine& v, double energyEv) {
        const double L = 12398.424360387684 / energyEv;
        return (v.b * L + v.a) * L * L * L + v.c;
    };
    const double jump =
        line(spectrum.postLine, spectrum.edgeEnergy) - line(spectrum.preLine, spectrum.edgeEnergy);
    QList<QPointF> points;
    for (const MutPoint& point : spectrum.points) {
        const double energyEv = point.energy - spectrum.dE;
        const double above = point.mut - line(spectrum.preLine, energyEv);
        const double between = line(spectrum.postLine, energyEv) - line(spectrum.preLine, energyEv);
        const QList<double> values{point.mut, above, 0.0, above / jump, above / between};
        points.append({energyEv, values.at(kind)});
    }
    return points;
}

/// Makes @p spectrum valid and sets its points to @p energyAndMut, its pre-edge line to the
/// constant 0.25, its post-edge line to the constant 2.25, and its edge to 8350 eV.
void setPoints(AMutE& spectrum, const QString& name, const QList<QPointF>& energyAndMut)
{
    spectrum.valid = true;
    spectrum.fileName = name;
    spectrum.edgeEnergy = 8350.0;
    spectrum.preLine = {0.25, 0.0, 0.0};
    spectrum.postLine = {2.25, 0.0, 0.0};
    spectrum.points.clear();
    for (const QPointF& point : energyAndMut) {
        spectrum.points.append({0.0, point.x(), point.y()});
    }
}

QList<QPointF> rising()
{
    return {{8280.2, 0.0}, {8320.2, 0.005}, {8360.2, 1.205}, {8430.2, 1.505}, {8480.2, 1.905}};
}

QList<QPointF> falling()
{
    return {{8290.2, 2.305}, {8310.2, 2.0}, {8350.2, 0.905}, {8420.2, 0.305}, {8449.8, 0.0}};
}

} // namespace

class tst_FourPsAllMut : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    // Drawing
    void plotWithoutSpectraIsBlank();
    void plotShowsSpectraGuideLinesAndLegend();
    void spectraAreShownInTheChosenNormalisation_data();
    void spectraAreShownInTheChosenNormalisation();
    void energyLineIsWideIfUsedAndRedIfInTheFit_data();
    void energyLineIsWideIfUsedAndRedIfInTheFit();
    void energyLinesOfLaterRowsAreDrawnOnTop();
    void emptyEnergyFieldIsDrawnAsALineAtZero();
    void targetSpectrumIsNotShown();
    void invalidSpectrumIsNotDrawnAndItsColorIsNotReused();
    void spectrumWithOnePointHasALegendLineButNoCurve();
    void validSpectrumWithoutPointsHasALegendLine();
    void displayFilesHaveThinLinesInTheColorsAfterTheReferences();
    void colorsRepeatAfterTheLastColor();
    void percentSignsInLegendTextsAreKept();
    void fittedCurveIsDrawnLastWithoutNormalisation();

    // Automatic range
    void rangeIncludesEvenInvalidAndSwitchedOffSpectra_data();
    void rangeIncludesEvenInvalidAndSwitchedOffSpectra();
    void rangeIgnoresTheTargetAndTheFit();
    void newEdgeMovesTheEdgeLineAndKeepsTheZoom();

    // A widget that is taller than it is wide
    void verticalLinesEndWhereYEqualsTheWidgetWidth();

    // Clicks in the legend
    void clickOnALegendLineTogglesItsSpectrum();
    void legendHasLinesOnlyForValidSpectra();
    void mousePressRepaintsTheGraphs();
    void pressInAnotherPlotTogglesNoSpectrum();

    // Plots that the analysis does not draw
    void spectrumRowPlotsAndUnknownPlotsAreNotDrawn_data();
    void spectrumRowPlotsAndUnknownPlotsAreNotDrawn();

    // Dragging the marker lines
    void draggingAMarkerLineWritesItsField_data();
    void draggingAMarkerLineWritesItsField();
    void draggedEnergyLineUpdatesTheMutFieldsOfItsRow();
    void draggedMarkerLineFollowsTheMouse();

private:
    DispABase* frame() const { return m_panel->Disps->frame(Displays::DMuts); }
    DispArea* surface() const { return frame()->DispA; }
    ChCoord& cc() const { return surface()->cc; }
    AMutE& reference(int i) const { return *m_panel->XafsFiles.at(i); }
    AMutE& displayed(const QString& name, const QList<QPointF>& energyAndMut);
    QImage paint() const { return surface()->grab().toImage(); }
    void setSize(const QSize& size) const { surface()->setFixedSize(size); }
    void setTwoReferences() const;
    void setFit(const QList<QPointF>& energyAndMut);
    void press(const QPoint& at) const { tests::press(surface(), at); }
    void click(const QPoint& at) const;
    PlainSpectra plain(const PlotRange& range = evenRange, int kind = 0) const;
    bool hasAutomaticRange(double y0, double y1) const;
    QList<bool> switchedOnReferences() const;

    const SharedPanel m_panel;
    std::vector<std::unique_ptr<AMutE>> m_displayed;
    std::unique_ptr<AMutE> m_fitted;
};

/// Sets the edge to 8350 eV, the end of the pre-edge part to -50 eV and the start of the
/// post-edge part to 100 eV relative to the edge. Selects no normalisation. The energy fields
/// are empty and read as 0 eV, so the marker lines of the energy rows are outside the plot.
void tst_FourPsAllMut::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    m_displayed.clear();
    m_panel->ui.EdgeE->setText("8350");
    m_panel->ui.PreEEndDE->setText("-50");
    m_panel->ui.PostEStartDE->setText("100");
    chooseWithoutSignals(m_panel->ui.NNone);
    m_panel->setEdge();
    clearMessages(*m_panel);
    setSize(evenSize);
    m_panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
}

void tst_FourPsAllMut::cleanup()
{
    m_panel->LCFMut = nullptr;
    m_fitted.reset();
}

AMutE& tst_FourPsAllMut::displayed(const QString& name, const QList<QPointF>& energyAndMut)
{
    m_displayed.push_back(std::make_unique<AMutE>());
    AMutE& spectrum = *m_displayed.back();
    setPoints(spectrum, name, energyAndMut);
    m_panel->DispMuts.append(&spectrum);
    return spectrum;
}

void tst_FourPsAllMut::setTwoReferences() const
{
    setPoints(reference(0), "rising.dat", rising());
    setPoints(reference(1), "falling.dat", falling());
}

void tst_FourPsAllMut::click(const QPoint& at) const
{
    tests::press(surface(), at);
    tests::release(surface(), at);
}

/// The expected picture, calculated from the current spectra, fields and rows.
PlainSpectra tst_FourPsAllMut::plain(const PlotRange& range, int kind) const
{
    PlainSpectra picture(surface()->size(), range);
    picture.xTitle = QStringLiteral("Eng.[eV]");
    picture.yTitle = QStringLiteral("mut");
    picture.edge = m_panel->ui.EdgeE->text().toDouble();
    picture.from = picture.edge + m_panel->ui.PreEEndDE->text().toDouble();
    picture.to = picture.edge + m_panel->ui.PostEStartDE->text().toDouble();
    for (const AEPoint* row : std::as_const(m_panel->EPoints)) {
        picture.energies.append({row->Energy->text().toDouble(),
                                 row->LCFCB->isChecked() ? red : blue,
                                 row->UseCB->isChecked() ? 3 : 1});
    }
    const QList<QColor> ofReferences{black, red, blue, green};
    for (int i = 0; i < 4; ++i) {
        if (const AMutE& each = reference(i); each.valid) {
            picture.curves.append({normalisedPoints(each, kind), ofReferences.at(i), 2,
                                   each.fileName, each.switchedOn});
        }
    }
    return picture;
}

/// Whether the plot has its automatic range: the energy window around the edge on x,
/// and the given limits on y.
bool tst_FourPsAllMut::hasAutomaticRange(double y0, double y1) const
{
    paint();
    const double off = std::abs(cc().realY0 - y0) + std::abs(cc().realY1 - y1);
    if (off > 1e-12) {
        qWarning("from %.9g to %.9g", cc().realY0, cc().realY1);
    }
    return surface()->hasScale && cc().realX0 == 8300.0 && cc().realX1 == 8450.0 && off <= 1e-12;
}

/// Whether each of the four references is switched on.
QList<bool> tst_FourPsAllMut::switchedOnReferences() const
{
    return {reference(0).switchedOn, reference(1).switchedOn, reference(2).switchedOn,
            reference(3).switchedOn};
}

void tst_FourPsAllMut::setFit(const QList<QPointF>& energyAndMut)
{
    m_fitted = std::make_unique<AMutE>();
    for (const QPointF& point : energyAndMut) {
        m_fitted->points.append({0.0, point.x(), point.y()});
    }
    m_panel->LCFMut = m_fitted.get();
}

void tst_FourPsAllMut::plotWithoutSpectraIsBlank()
{
    m_panel->EPoints.at(0)->Energy->setText("8320");
    QVERIFY(isBlank(paint())); // no lines, titles or labels
    QVERIFY(!cc().drawn);
    QCOMPARE(frame()->xTitle, QStringLiteral("Eng.[eV]"));
    QCOMPARE(frame()->yTitle, QStringLiteral("mut"));
}

void tst_FourPsAllMut::plotShowsSpectraGuideLinesAndLegend()
{
    setTwoReferences();
    useRows(*m_panel, {0});
    m_panel->EPoints.at(0)->Energy->setText("8380");
    m_panel->EPoints.at(5)->Energy->setText("8310");
    const QImage image = paint();
    QVERIFY(isSamePicture(image, plain().picture()));
    QVERIFY(cc().drawn);
    const QRect inside = plain().place.inside();
    for (const QColor& color : {guideGrey, guideGreen, black, red}) {
        QVERIFY2(countOf(image, inside, color) > 20, qPrintable(color.name()));
    }
}

void tst_FourPsAllMut::spectraAreShownInTheChosenNormalisation_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("NNone") << 0;
    QTest::newRow("NBySubPre") << 1;
    QTest::newRow("NByEJ") << 3;
    QTest::newRow("NBy2Vics") << 4;
}

void tst_FourPsAllMut::spectraAreShownInTheChosenNormalisation()
{
    QFETCH(int, kind);
    setTwoReferences();
    for (int i = 0; i < 2; ++i) {
        reference(i).preLine = {0.1, 0.2, -0.01};
        reference(i).postLine = {0.4 + i, 0.5, 0.02};
        reference(i).edgeEnergy = 8350.0 + 400.0 * i;
    }
    auto* radio = m_panel->findChild<QAbstractButton*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(radio);
    chooseWithoutSignals(radio);
    double lo = 1e300;
    double hi = -1e300;
    for (int i = 0; i < 2; ++i) {
        for (const QPointF& point : normalisedPoints(reference(i), kind)) {
            if (point.x() >= 8300.0 && point.x() <= 8450.0) {
                lo = std::fmin(lo, point.y());
                hi = std::fmax(hi, point.y());
            }
        }
    }
    const PlotRange range{8300.0, lo - 0.05 * (hi - lo), 8450.0, hi + 0.05 * (hi - lo)};
    QVERIFY(isSamePicture(paint(), plain(range, kind).picture()));
    QVERIFY(hasAutomaticRange(range.y0, range.y1));
}

void tst_FourPsAllMut::energyLineIsWideIfUsedAndRedIfInTheFit_data()
{
    QTest::addColumn<bool>("inFit");
    QTest::addColumn<bool>("used");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QList<int>>("columns"); // x of each pixel in this colour, relative to the line
    QTest::newRow("neither used nor in the fit") << false << false << blue << QList<int>{0};
    QTest::newRow("in the fit but not used") << true << false << red << QList<int>{0};
    QTest::newRow("used but not in the fit") << false << true << blue << QList<int>{-1, 0, 1};
    QTest::newRow("used and in the fit") << true << true << red << QList<int>{-1, 0, 1};
}

void tst_FourPsAllMut::energyLineIsWideIfUsedAndRedIfInTheFit()
{
    QFETCH(bool, inFit);
    QFETCH(bool, used);
    QFETCH(QColor, color);
    QFETCH(QList<int>, columns);
    setPoints(reference(3), "r4", {{8400, 0.0}, {8401, 2.0}}); // drawn in green
    for (const int row : {1, 7}) {
        AEPoint* point = m_panel->EPoints.at(row);
        chooseWithoutSignals(m_panel->EPoints.at(0)->ShowMapB);
        const QSignalBlocker quiet(point);
        point->Energy->setText("8320.2"); // x = 38 + 20.2 * 2.2 = 82.4 pixels
        point->LCFCB->setChecked(inFit);
        point->UseCB->setChecked(used);
        const QImage image = paint();
        for (int x = 70; x < 95; ++x) {
            QCOMPARE(image.pixelColor(x, 60) == color, columns.contains(x - 82));
        }
        QVERIFY(isSamePicture(image, plain().picture()));
        point->Energy->clear();
    }
}

void tst_FourPsAllMut::energyLinesOfLaterRowsAreDrawnOnTop()
{
    setTwoReferences();
    useRows(*m_panel, {4, 5});
    for (const int row : {4, 5, 6}) {
        m_panel->EPoints.at(row)->Energy->setText("8330.2"); // at pixel 38 + 30.2 * 2.2 = 104.4
        m_panel->EPoints.at(row)->LCFCB->setChecked(row == 5);
    }
    // The lines overlap: row 4 is wide and blue, row 5 is wide and red, and row 6 is narrow and
    // blue. Later rows are drawn over earlier ones.
    const QImage image = paint();
    QCOMPARE(image.pixelColor(103, 100), red);
    QCOMPARE(image.pixelColor(104, 100), blue);
    QCOMPARE(image.pixelColor(105, 100), red);
    QVERIFY(isSamePicture(image, plain().picture()));
}

void tst_FourPsAllMut::emptyEnergyFieldIsDrawnAsALineAtZero()
{
    setPoints(reference(0), "r1", {{-40, 0.0}, {90, 2.0}});
    m_panel->ui.EdgeE->setText("0");
    for (const AEPoint* row : std::as_const(m_panel->EPoints)) {
        row->Energy->setText("1e9");
    }
    const QRect line(148, 13, 1, 219); // x of 0 eV in a plot from -50 eV: 38 + 50 * 2.2
    QCOMPARE(countOf(paint(), line, blue), 0);
    m_panel->EPoints.at(6)->Energy->clear();
    QVERIFY(countOf(paint(), line, blue) > 200);
    m_panel->EPoints.at(6)->Energy->setText("nan");
    QCOMPARE(countOf(paint(), line, blue), 0);
}

void tst_FourPsAllMut::targetSpectrumIsNotShown()
{
    setTwoReferences();
    const QImage without = paint();
    setPoints(*m_panel->ui.TargetFile, "target.dat", {{8300, 0.2}, {8400, 1.8}});
    QVERIFY(isSamePicture(paint(), without));
}

void tst_FourPsAllMut::invalidSpectrumIsNotDrawnAndItsColorIsNotReused()
{
    setTwoReferences();
    setPoints(reference(3), "fourth.dat", {{8300, 0.5}, {8440, 0.6}});
    reference(0).valid = false;
    const QImage image = paint();
    PlainSpectra wanted = plain();
    QCOMPARE(wanted.curves.size(), 2);
    QCOMPARE(wanted.curves.first().color, red);
    QVERIFY(isSamePicture(image, wanted.picture()));
    QVERIFY(countOf(image, wanted.place.inside(), green) > 100);
    QCOMPARE(countOf(image, wanted.place.inside(), black), 0);
}

void tst_FourPsAllMut::spectrumWithOnePointHasALegendLineButNoCurve()
{
    setPoints(reference(0), "single", {{8330, 1.0}});
    setPoints(reference(1), "falling", falling());
    const QImage image = paint();
    QVERIFY(isSamePicture(image, plain().picture()));
    QCOMPARE(countOf(image, QRect(39, 23, 240, 200), black), 0);
    QVERIFY(countOf(image, QRect(288, 13, 76, 9), Qt::white) <
            76 * 9); // not all white: the name is drawn
}

void tst_FourPsAllMut::validSpectrumWithoutPointsHasALegendLine()
{
    setTwoReferences();
    reference(0).points.clear();
    reference(2).valid = true;
    reference(2).fileName = "empty";
    PlainSpectra wanted = plain();
    QCOMPARE(wanted.curves.size(), 3);
    QVERIFY(isSamePicture(paint(), wanted.picture()));
}

void tst_FourPsAllMut::displayFilesHaveThinLinesInTheColorsAfterTheReferences()
{
    setTwoReferences();
    const AMutE& first = displayed("first.dat", {{8300, 0.1}, {8449, 1.8}});
    const AMutE& second = displayed("second.dat", {{8300, 0.3}, {8449, 1.6}});
    PlainSpectra wanted = plain();
    wanted.curves.append({normalisedPoints(first, 0), ochre, 1, "first.dat"});
    wanted.curves.append({normalisedPoints(second, 0), QColor(240, 0, 240), 1, "second.dat"});
    QVERIFY(isSamePicture(paint(), wanted.picture()));
    // An invalid file is not drawn, and the other file keeps its colour.
    m_displayed.front()->valid = false;
    wanted.curves.removeAt(2);
    QVERIFY(isSamePicture(paint(), wanted.picture()));
}

void tst_FourPsAllMut::colorsRepeatAfterTheLastColor()
{
    for (int i = 0; i < 43; ++i) {
        displayed("last", {}).valid = false;
    }
    // Four references precede the displayed files, so displayed files 41 to 43 are spectra 45
    // to 47. There are 45 colours, so spectrum 46 has the first colour again.
    for (const auto& [file, color] :
         {std::pair{40, QColor(240, 160, 0)}, std::pair{41, black}, std::pair{42, red}}) {
        AMutE& spectrum = *m_panel->DispMuts.at(file);
        setPoints(spectrum, "last", falling());
        PlainSpectra wanted = plain();
        wanted.curves = {{normalisedPoints(spectrum, 0), color, 1, "last"}};
        QVERIFY(isSamePicture(paint(), wanted.picture()));
        spectrum.valid = false;
    }
}

void tst_FourPsAllMut::percentSignsInLegendTextsAreKept()
{
    setTwoReferences();
    reference(0).fileName = "50%1 %L2 %n%%";
    QVERIFY(isSamePicture(paint(), plain().picture()));
}

void tst_FourPsAllMut::fittedCurveIsDrawnLastWithoutNormalisation()
{
    chooseWithoutSignals(m_panel->ui.NBySubPre);
    setTwoReferences();
    const QList<QPointF> points{{8299.8, 1.0}, {8400.2, 1.0}, {8449.8, 1.5}};
    const AMutE& file =
        displayed("file.dat", {{8299.8, 1.25}, {8449.8, 1.25}}); // 1 above the pre-edge line
    setFit(points);
    m_fitted->preLine = {5.0, 0.0, 0.0}; // ignored: the fitted curve is normalised already
    PlainSpectra wanted = plain({8300.0, -0.35, 8450.0, 1.85}, 1);
    wanted.curves.append({normalisedPoints(file, 1), ochre, 1, "file.dat"});
    wanted.fitted = points;
    const QImage image = paint();
    QVERIFY(isSamePicture(image, wanted.picture()));
    const int row = wanted.place.pixel(0.0, 1.0).y();
    for (const int off : {-1, 0, 1}) {
        QVERIFY(isFilledWith(image, QRect(39, row + off, 200, 1), pink));
    }
    QVERIFY(image.pixelColor(60, row - 2) != pink && image.pixelColor(60, row + 2) != pink);
}

void tst_FourPsAllMut::rangeIncludesEvenInvalidAndSwitchedOffSpectra_data()
{
    QTest::addColumn<int>("index"); // 4 means a displayed file
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("on");
    QTest::newRow("third reference") << 2 << true << true;
    QTest::newRow("fourth reference") << 3 << true << true;
    QTest::newRow("displayed file") << 4 << true << true;
    QTest::newRow("invalid reference") << 2 << false << true;
    QTest::newRow("switched-off reference") << 2 << true << false;
    QTest::newRow("switched-off file") << 4 << true << false;
}

void tst_FourPsAllMut::rangeIncludesEvenInvalidAndSwitchedOffSpectra()
{
    QFETCH(int, index);
    QFETCH(bool, valid);
    QFETCH(bool, on);
    setTwoReferences();
    AMutE& spectrum = index < 4 ? reference(index) : displayed("file", {});
    setPoints(spectrum, "single", {{8400.0, 4.0}});
    spectrum.valid = valid;
    spectrum.switchedOn = on;
    // The values are 0 to 4, and 5 % of this span is added on each side.
    QVERIFY(hasAutomaticRange(-0.2, 4.2));
}

void tst_FourPsAllMut::rangeIgnoresTheTargetAndTheFit()
{
    setTwoReferences();
    setPoints(*m_panel->ui.TargetFile, "target.dat", {{8300, -9.0}, {8400, 9.0}});
    setFit({{8310.0, -7.0}, {8440.0, 7.0}});
    QVERIFY(hasAutomaticRange(-0.1, 2.1));
}

void tst_FourPsAllMut::newEdgeMovesTheEdgeLineAndKeepsTheZoom()
{
    setTwoReferences();
    paint();
    move(surface(), QPointF(150, 120));
    turnWheel(surface(), QPointF(150, 120), {0, 120});
    const PlotRange zoomed{cc().realX0, cc().realY0, cc().realX1, cc().realY1};
    QVERIFY(zoomed.x0 > 8300.0 && zoomed.x1 < 8450.0 && zoomed.y0 > -0.1 && zoomed.y1 < 2.1);
    enter(m_panel->ui.EdgeE, "8361.5");
    const QImage image = paint();
    QCOMPARE(cc().realX0, zoomed.x0);
    QCOMPARE(cc().realX1, zoomed.x1);
    QCOMPARE(cc().realY0, zoomed.y0);
    QCOMPARE(cc().realY1, zoomed.y1);
    const PlainSpectra wanted = plain(zoomed);
    const int column = wanted.place.pixel(8361.5, 0.0).x();
    QVERIFY(countOf(image, QRect(column, 13, 1, 219), guideGreen) > 200);
    QVERIFY(isSamePicture(image, plain(zoomed).picture()));
}

void tst_FourPsAllMut::verticalLinesEndWhereYEqualsTheWidgetWidth()
{
    setSize({120, 400});
    setPoints(reference(3), "r4", {{8330, 0.0}, {8331, 2.0}});
    useRows(*m_panel, {});
    m_panel->EPoints.at(0)->Energy->setText("8380.2");
    const QImage image = paint();
    const PlotPlace place(image.size(), evenRange);
    QCOMPARE(place.bottom, 360);
    const int guide = place.pixel(8350.0, 0.0).x();
    const int energy = place.pixel(8380.2, 0.0).x();
    // On purpose, vertical lines are cut off at the y that equals the width of the widget. This
    // widget is 120 pixels wide and 400 pixels high, so they end at y = 120.
    QVERIFY(isFilledWith(image, QRect(guide, 21, 1, 100), guideGreen));
    QVERIFY(isFilledWith(image, QRect(energy, 21, 1, 100), blue));
    const QRect below(13, 121, 100, 239);
    QCOMPARE(countOf(image, below, guideGreen), 0);
    QCOMPARE(countOf(image, below, blue), 0);
    // Horizontal guides are drawn at any y. The guide at the value 0.5 is an example.
    QVERIFY(countOf(image, QRect(13, place.pixel(0, 0.5).y(), 101, 1), guideGrey) > 90);
}

void tst_FourPsAllMut::clickOnALegendLineTogglesItsSpectrum()
{
    QList<AMutE*> spectra;
    for (int i = 0; i < 4; ++i) {
        setPoints(reference(i), "reference", falling());
        spectra.append(&reference(i));
    }
    spectra.append({&displayed("first", rising()), &displayed("second", rising())});
    paint();
    // Clicks each of the six lines of the legend twice: off, then on again.
    for (int step = 0; step < 12; ++step) {
        const int row = step / 2;
        click(firstRow + QPoint(0, row * rowStep));
        for (int i = 0; i < spectra.size(); ++i) {
            QCOMPARE(spectra.at(i)->switchedOn, i != row || step % 2 == 1);
        }
    }
    QCOMPARE(m_panel->ui.PostEStartDE->text(), QStringLiteral("100"));
}

void tst_FourPsAllMut::legendHasLinesOnlyForValidSpectra()
{
    setTwoReferences();
    setPoints(reference(2), "third", rising());
    reference(0).valid = false;
    paint();
    click(firstRow);
    QCOMPARE(switchedOnReferences(), QList<bool>({true, false, true, true}));
    click(firstRow + QPoint(0, rowStep));
    QCOMPARE(switchedOnReferences(), QList<bool>({true, false, false, true}));
    click(firstRow + QPoint(0, 2 * rowStep)); // below the last line of the legend
    QCOMPARE(switchedOnReferences(), QList<bool>({true, false, false, true}));
}

void tst_FourPsAllMut::mousePressRepaintsTheGraphs()
{
    setTwoReferences();
    SurfacePaints paints(*m_panel->Disps);
    press(firstRow);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    paints.restart();
    press({100, 200}); // outside the legend
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(messages(*m_panel).isEmpty());
}

void tst_FourPsAllMut::pressInAnotherPlotTogglesNoSpectrum()
{
    setTwoReferences();
    paint();
    for (int id = Displays::DRef1; id <= Displays::DM2M3; ++id) {
        if (id != Displays::DMuts) {
            tests::press(m_panel->Disps->frame(static_cast<Displays::DispId>(id))->DispA, firstRow);
        }
    }
    QCOMPARE(switchedOnReferences(), QList<bool>({true, true, true, true}));
}

void tst_FourPsAllMut::spectrumRowPlotsAndUnknownPlotsAreNotDrawn_data()
{
    QTest::addColumn<int>("id");
    for (const int id : {0, 1, 2, 3, 4, 11}) {
        QTest::addRow("plot with id %d", id) << id;
    }
}

void tst_FourPsAllMut::spectrumRowPlotsAndUnknownPlotsAreNotDrawn()
{
    QFETCH(int, id);
    setTwoReferences();
    m_panel->LCFvs4PS.append(LCFPoint());
    DispABase plot;
    plot.setXYTitle("before", "too");
    plot.DispA->cc.setReal(1.0, 2.0, 3.0, 4.0);
    QImage image(evenSize, QImage::Format_RGB32);
    image.fill(Qt::cyan);
    QStylePainter p(&image, &plot);
    m_panel->draw(static_cast<Displays::DispId>(id), &plot, &p);
    p.end();
    QVERIFY(isFilledWith(image, image.rect(), Qt::cyan));
    QCOMPARE(plot.xTitle, QStringLiteral("before"));
    QCOMPARE(plot.yTitle, QStringLiteral("too"));
    QVERIFY(plot.DispA->cc.drawn);
    QVERIFY(!plot.DispA->hasScale);
    QCOMPARE(plot.DispA->cc.realX1, 3.0);
}

void tst_FourPsAllMut::draggingAMarkerLineWritesItsField_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("edge") << 0;
    QTest::newRow("end of the pre-edge part") << 1;
    QTest::newRow("start of the post-edge part") << 2;
    for (int row = 1; row <= 8; ++row) {
        QTest::addRow("energy of row %d", row) << 2 + row;
    }
}

void tst_FourPsAllMut::draggingAMarkerLineWritesItsField()
{
    QFETCH(int, line);
    displayed("file", falling());
    QList<QLineEdit*> edits{m_panel->ui.EdgeE, m_panel->ui.PreEEndDE, m_panel->ui.PostEStartDE};
    const QList<double> energies{8309, 8318, 8327, 8336, 8371, 8382, 8393, 8404};
    for (int row = 0; row < 8; ++row) {
        edits.append(m_panel->EPoints.at(row)->Energy);
        edits.last()->setText(QString::number(energies.at(row)));
    }
    paint();
    const PlotPlace place(evenSize, evenRange);
    const QList<double> places = QList<double>{8350, 8300, 8450} + energies;
    const double base = line == 1 || line == 2 ? 8350.0 : 0.0;
    QStringList texts;
    for (const QLineEdit* edit : std::as_const(edits)) {
        texts.append(edit->text());
    }
    const int start = static_cast<int>(std::lround(place.columnOf(places.at(line))));
    const auto isWritten = [&](int column) {
        texts[line] = sixDigits(place.valueAt(column) - base);
        QStringList now;
        for (const QLineEdit* edit : std::as_const(edits)) {
            now.append(edit->text());
        }
        return now == texts && edits.at(line)->cursorPosition() == 0;
    };
    edits.at(line)->setCursorPosition(2);
    press({start, 128});
    QCOMPARE(edits.at(line)->text(), texts.at(line)); // the press itself writes nothing
    drag(surface(), QPointF(start + 7, 128));
    QVERIFY(isWritten(start + 7));
    drag(surface(), QPointF(start - 13, 3));
    QVERIFY(isWritten(start - 13));
    release(surface(), QPointF(start + 5, 250));
    QVERIFY(isWritten(start + 5));
    move(surface(), QPointF(start, 128));
    QVERIFY(isWritten(start + 5)); // the line stays at its position after the release
}

void tst_FourPsAllMut::draggedEnergyLineUpdatesTheMutFieldsOfItsRow()
{
    // The absorption is 0 up to 8310 eV, then rises by 0.01 per eV to 1 at 8410 eV.
    setPoints(reference(0), "line",
              {{8000, 0},
               {8100, 0},
               {8200, 0},
               {8290, 0},
               {8310, 0},
               {8410, 1},
               {8500, 1},
               {8600, 1},
               {8700, 1},
               {8800, 1}});
    m_panel->EPoints.at(4)->Energy->setText("8340");
    m_panel->EPoints.at(5)->Energy->setText("8390");
    m_panel->EPoints.at(5)->Mut1->setText("before");
    paint();
    const PlotPlace place(evenSize, {8300.0, 0.0, 8450.0, 1.0});
    const int start = static_cast<int>(std::lround(place.columnOf(8340.0)));
    press({start, 128});
    for (const int column : {start + 4, start + 20}) {
        drag(surface(), QPointF(column, 128));
        const double energyEv = sixDigits(place.valueAt(column)).toDouble();
        QCOMPARE(m_panel->EPoints.at(4)->Mut1->text(), sixDigits((energyEv - 8310.0) / 100.0));
        QCOMPARE(m_panel->EPoints.at(5)->Mut1->text(), QStringLiteral("0.8"));
        QVERIFY(m_panel->EPoints.at(4)->MutT->text().isEmpty());
    }
    release(surface(), QPointF(start + 20, 128));
}

void tst_FourPsAllMut::draggedMarkerLineFollowsTheMouse()
{
    displayed("file", falling());
    useRows(*m_panel, {6});
    m_panel->EPoints.at(6)->Energy->setText("8380");
    paint();
    const PlotPlace place(evenSize, evenRange);
    const int start = static_cast<int>(std::lround(place.columnOf(8380.0)));
    SurfacePaints paints(*m_panel->Disps);
    press({start, 128});
    paints.restart();
    drag(surface(), QPointF(start + 31, 128));
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QImage image = paint();
    QVERIFY(isFilledWith(image, QRect(start + 30, 30, 2, 70), blue));
    QCOMPARE(countOf(image, QRect(start - 2, 30, 5, 70), blue), 0);
    paints.restart();
    release(surface(), QPointF(start + 50, 128));
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    image = paint();
    QVERIFY(isFilledWith(image, QRect(start + 49, 30, 2, 70), blue));
    PlainSpectra wanted = plain();
    wanted.curves = {{normalisedPoints(*m_panel->DispMuts.first(), 0), ochre, 1, "file"}};
    QVERIFY(isSamePicture(image, wanted.picture()));
}

QTEST_MAIN(tst_FourPsAllMut)
#include "tst_FourPsAllMut.moc"
