// Tests of the panel and its graph window: dragging marker lines and other mouse actions,
// actions that repaint the window, opening and closing it.

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/MarkLine.h"
#include "display/MarkLines.h"
#include "support/MouseInput.h"
#include "support/PlotPlace.h"
#include "support/SharedPanel.h"
#include "support/SpectrumText.h"
#include "support/SurfacePaints.h"
#include "support/TestFiles.h"

#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <functional>

using namespace tests;

namespace
{

// The energy range of a plot of spectrumText(). The spectrum is from 8000 to 8850 eV, and 5 % of
// this span, 42.5 eV, is added on each side.
constexpr double lowestEv = 7957.5;
constexpr double highestEv = 8892.5;

struct Files {
    QTemporaryDir dir;
    QString ref1 = writeFile(dir, "ref1.dat", spectrumText("1.00", "1.5", "1.25", "1"));
    QString ref2 = writeFile(dir, "ref2.dat", spectrumText("1.00", "0.5", "1.25", "1"));
    QString target = writeFile(dir, "target.dat", spectrumText("2.00", "2.0", "2.50", "2"));
    QString broken = writeFile(dir, "broken.dat", "# nothing\n");
};

void load(AXafsFileSelect* row, const QString& path)
{
    static_cast<AFileSelect*>(row)->newFile(path);
}

/// The plot area of @p plot. Its energy axis extends from @p from to @p to (eV).
PlotPlace plotAreaOf(const DispABase* plot, double from = lowestEv, double to = highestEv)
{
    return {plot->DispA->size(), {from, 0.0, to, 1.0}};
}

int columnNear(const PlotPlace& place, double energyEv)
{
    return static_cast<int>(std::lround(place.columnOf(energyEv)));
}

/// Whether the plot shows its edge line at @p energyEv and nowhere else.
bool showsEdgeAt(DispABase* plot, double energyEv, double from = lowestEv, double to = highestEv)
{
    const QImage image = plot->DispA->grab().toImage();
    const int row = plot->DispA->height() / 4; // a pixel row that crosses the edge line but no text
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, row) == QColor(255, 0, 0)) {
            columns.append(x);
        }
    }
    const QList<int> wanted{plotAreaOf(plot, from, to).column(energyEv)};
    if (columns != wanted) {
        qWarning() << "edge at columns" << columns << "instead of" << wanted;
    }
    return columns == wanted;
}

/// Lines that one recalculation adds to the message box if its map and its target are
/// refused: one for the map, one for the target and one for the fit.
constexpr int linesPerRecalculation = 3;

} // namespace

class tst_FourPsGraphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void spectrumRowsDrawIntoTheirPlots();
    void reopenedGraphWindowKeepsItsZoom();

    void draggingTheEdgeLineWritesTheEdgeField_data();
    void draggingTheEdgeLineWritesTheEdgeField();
    void draggingALimitLineWritesItsOffsetFromTheEdge_data();
    void draggingALimitLineWritesItsOffsetFromTheEdge();
    void markersOfThirdAndFourthReferenceCannotBeDragged_data();
    void markersOfThirdAndFourthReferenceCannotBeDragged();
    void pressAwayFromTheMarkerLinesDragsNoLine();
    void eachDragStepRecalculatesOncePerValidReference_data();
    void eachDragStepRecalculatesOncePerValidReference();
    void pressWithoutDragRecalculatesOnRelease();
    void releasedMarkerSetsTheEdgeBeforeRecalculating();
    void draggedMarkerSetsTheEdgeBeforeRecalculating();
    void mutColumnsAndTargetResultFollowTheDraggedEdge();
    void plotsFollowTheDraggedEdge();

    void wheelZoomsOnlyThePlotUnderTheMouse();
    void doubleClickFitsOnlyTheClickedPlot();
    void markersCanBeDraggedInAPoppedOutPlot();

    void doubleClickInTheComparisonSelectsTheSecondColor();
    void clicksInOtherPlotsKeepTheComparison_data();
    void clicksInOtherPlotsKeepTheComparison();

    void normalisationRadioRepaintsTheGraphsAndClearsTheRange_data();
    void normalisationRadioRepaintsTheGraphsAndClearsTheRange();
    void histogramSelectionRepaintsTheGraphs_data();
    void histogramSelectionRepaintsTheGraphs();
    void actionRepaintsTheGraphs_data();
    void actionRepaintsTheGraphs();
    void actionWithoutVisibleEffectRepaintsNoGraph_data();
    void actionWithoutVisibleEffectRepaintsNoGraph();
    void emptyResultMapRepaintsTheGraphs();
    void loadingADisplayFileRepaintsTheGraphs();
    void selectingADisplayFileRepaintsTheGraphs();
    void removingADisplayFileRepaintsTheGraphs();

    void leavingTheEdgeFieldByTabMovesTheEdgeLine();
    void energyShiftMovesTheCurveAndKeepsTheRange();
    void fileWithoutASpectrumClearsItsPlot();

private:
    DispABase* plot(Displays::DispId id) const { return m_panel->Disps->frame(id); }
    void resetRows();
    void resetSpectra();
    void makeValid(int references);
    void selectFitRange();
    void prepareMaps(const QList<int>& rows);
    int middle(const DispABase* graph) const { return graph->DispA->height() / 2; }

    const Files m_files;
    const SharedPanel m_panel;
};

void tst_FourPsGraphs::initTestCase()
{
    load(m_panel->XafsFiles.at(0), m_files.ref1);
    load(m_panel->XafsFiles.at(1), m_files.ref2);
    load(m_panel->ui.TargetFile, m_files.target);
}

/// Restores two valid references and the target, and sets the edge to 8350 eV, the end of the
/// pre-edge part to -50 eV and the start of the post-edge part to 100 eV relative to the
/// edge. Every calculation is refused, and every plot shows its full range.
void tst_FourPsGraphs::init()
{
    resetRows();
    resetSpectra();
    m_panel->setEdge();
    resetComparison(*m_panel);
    clearMessages(*m_panel);
    resetPlots(*m_panel);
    m_panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
    m_panel->Disps->update();
    QTest::qWait(10);
}

void tst_FourPsGraphs::resetRows()
{
    FourPs& panel = *m_panel;
    chooseFourPoints(panel);
    useReferences(panel, {0, 1});
    useRows(panel, {0, 1, 2});
    const QStringList energies{"8313", "8381", "8390", "8404.5", "8460", "8475", "", ""};
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        panel.EPoints.at(row)->VPointCB->setChecked(false);
        panel.EPoints.at(row)->LCFCB->setChecked(false);
        panel.EPoints.at(row)->Energy->setText(energies.at(row));
        panel.EPoints.at(row)->loaded = false;
    }
    panel.ui.EdgeE->setText("8350");
    panel.ui.PreEEndDE->setText("-50");
    panel.ui.PostEStartDE->setText("100");
}

void tst_FourPsGraphs::resetSpectra()
{
    for (int i = 0; i < 5; ++i) {
        AXafsFileSelect* row = m_panel->XafsFiles.at(i);
        row->Ui_AFileSelect::dE->setText("0");
        row->AMutE::dE = 0.0;
        if (i == 2 || i == 3) {
            row->points.clear();
        }
        row->valid = !row->points.isEmpty();
    }
}

/// Makes the first @p references reference rows valid and the others invalid. The third
/// reference gets a copy of the spectrum of the first.
void tst_FourPsGraphs::makeValid(int references)
{
    AMutE& third = *m_panel->XafsFiles.at(2);
    static_cast<AMutE&>(third) = *m_panel->XafsFiles.at(0);
    for (int i = 0; i < 4; ++i) {
        m_panel->XafsFiles.at(i)->valid = i < references;
    }
}

/// Selects an energy range for the fit. The map and the target are still refused, so every
/// recalculation writes linesPerRecalculation lines. If two references are valid, the fit
/// also adds a point to the comparison.
void tst_FourPsGraphs::selectFitRange()
{
    m_panel->EPoints.at(1)->LCFCB->setChecked(true);
    m_panel->EPoints.at(5)->LCFCB->setChecked(true);
}

/// Puts the given rows in use, sets a map of one pixel in each, and makes the third row the V
/// row.
void tst_FourPsGraphs::prepareMaps(const QList<int>& rows)
{
    useRows(*m_panel, rows);
    m_panel->EPoints.at(2)->VPointCB->setChecked(true);
    for (const int row : rows) {
        setMap(*m_panel, row, {1.0 + row});
    }
}

void tst_FourPsGraphs::spectrumRowsDrawIntoTheirPlots()
{
    for (int i = 0; i < 5; ++i) {
        const AXafsFileSelect* row = m_panel->XafsFiles.at(i);
        QCOMPARE(row->frame, plot(static_cast<Displays::DispId>(i)));
        QVERIFY(row->dEBase->isVisibleTo(row));
    }
    // Each plot draws its own spectrum. The maxima are 1.5, 1.25 and 2.5 and the minima are 0,
    // so 5 % of the maximum is added at the top.
    QCOMPARE(plot(Displays::DRef1)->DispA->cc.realY1, 1.575);
    QCOMPARE(plot(Displays::DRef2)->DispA->cc.realY1, 1.3125);
    QCOMPARE(plot(Displays::DTarget)->DispA->cc.realY1, 2.625);
    QVERIFY(!plot(Displays::DRef3)->DispA->hasScale);
    QCOMPARE(plot(Displays::DRef1)->DispA->cc.realX0, lowestEv);
    QCOMPARE(plot(Displays::DRef1)->DispA->cc.realX1, highestEv);
    QVERIFY(showsEdgeAt(plot(Displays::DRef1), 8350.0));
}

void tst_FourPsGraphs::reopenedGraphWindowKeepsItsZoom()
{
    plot(Displays::DRef1)->DispA->cc.setReal(8200.0, 0.0, 8400.0, 1.0);
    QVERIFY(m_panel->Disps->close());
    QTest::qWait(10);
    QVERIFY(!m_panel->Disps->isVisible());
    m_panel->ui.ShowDAB->click();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
    // The plot still has the zoomed range.
    QVERIFY(showsEdgeAt(plot(Displays::DRef1), 8350.0, 8200.0, 8400.0));
}

void tst_FourPsGraphs::draggingTheEdgeLineWritesTheEdgeField_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("first reference") << int(Displays::DRef1);
    QTest::newRow("second reference") << int(Displays::DRef2);
    QTest::newRow("target") << int(Displays::DTarget);
}

void tst_FourPsGraphs::draggingTheEdgeLineWritesTheEdgeField()
{
    QFETCH(int, id);
    DispABase* graph = plot(static_cast<Displays::DispId>(id));
    const PlotPlace place = plotAreaOf(graph);
    const int start = columnNear(place, 8350.0);
    QLineEdit* edge = m_panel->ui.EdgeE;
    edge->setCursorPosition(4);
    QTest::mousePress(graph->DispA, Qt::LeftButton, {}, {start, middle(graph)});
    QCOMPARE(edge->text(), QStringLiteral("8350"));
    QTest::mouseMove(graph->DispA, {start + 3, middle(graph)});
    QCOMPARE(edge->text(), sixDigits(place.valueAt(start + 3)));
    QCOMPARE(edge->cursorPosition(), 0);
    QTest::mouseMove(graph->DispA, {start - 20, 3});
    QCOMPARE(edge->text(), sixDigits(place.valueAt(start - 20)));
    // The release also moves the line, as a drag step does.
    QTest::mouseRelease(graph->DispA, Qt::LeftButton, {}, {start + 11, middle(graph)});
    const double wanted = sixDigits(place.valueAt(start + 11)).toDouble();
    QCOMPARE(edge->text(), sixDigits(place.valueAt(start + 11)));
    for (const AXafsFileSelect* row : std::as_const(m_panel->XafsFiles)) {
        QCOMPARE(row->edgeEnergy, wanted);
        QCOMPARE(row->preEdgeEnd, wanted - 50.0);
        QCOMPARE(row->postEdgeStart, wanted + 100.0);
    }
    QTest::mouseMove(graph->DispA, {start, middle(graph)});
    QCOMPARE(edge->text(), sixDigits(place.valueAt(start + 11)));
    QCOMPARE(m_panel->ui.PreEEndDE->text(), QStringLiteral("-50"));
    QCOMPARE(m_panel->ui.PostEStartDE->text(), QStringLiteral("100"));
}

void tst_FourPsGraphs::draggingALimitLineWritesItsOffsetFromTheEdge_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("post");
    for (const auto& [name, id] :
         {std::pair{"first reference", Displays::DRef1},
          std::pair{"second reference", Displays::DRef2}, std::pair{"target", Displays::DTarget}}) {
        QTest::addRow("end of the pre-edge part, %s", name) << int(id) << false;
        QTest::addRow("start of the post-edge part, %s", name) << int(id) << true;
    }
}

void tst_FourPsGraphs::draggingALimitLineWritesItsOffsetFromTheEdge()
{
    QFETCH(int, id);
    QFETCH(bool, post);
    DispABase* graph = plot(static_cast<Displays::DispId>(id));
    const PlotPlace place = plotAreaOf(graph);
    QLineEdit* edit = post ? m_panel->ui.PostEStartDE : m_panel->ui.PreEEndDE;
    const int start = columnNear(place, post ? 8450.0 : 8300.0);
    const int end = start + (post ? 9 : -9);
    press(graph->DispA, QPointF(start, middle(graph)));
    drag(graph->DispA, QPointF(end, middle(graph)));
    const QString wanted = sixDigits(place.valueAt(end) - 8350.0);
    QCOMPARE(edit->text(), wanted);
    QCOMPARE(edit->cursorPosition(), 0);
    release(graph->DispA, QPointF(end, middle(graph)));
    QCOMPARE(edit->text(), wanted);
    const AXafsFileSelect* row = m_panel->XafsFiles.at(0);
    QCOMPARE(post ? row->postEdgeStart : row->preEdgeEnd, 8350.0 + wanted.toDouble());
    QCOMPARE(m_panel->ui.EdgeE->text(), QStringLiteral("8350"));
    QCOMPARE((post ? m_panel->ui.PreEEndDE : m_panel->ui.PostEStartDE)->text(),
             post ? QStringLiteral("-50") : QStringLiteral("100"));
}

void tst_FourPsGraphs::markersOfThirdAndFourthReferenceCannotBeDragged_data()
{
    QTest::addColumn<int>("reference");
    QTest::newRow("third reference") << 2;
    QTest::newRow("fourth reference") << 3;
}

void tst_FourPsGraphs::markersOfThirdAndFourthReferenceCannotBeDragged()
{
    QFETCH(int, reference);
    AXafsFileSelect* row = m_panel->XafsFiles.at(reference);
    static_cast<AMutE&>(*row) = *m_panel->XafsFiles.at(0);
    DispABase* graph = plot(static_cast<Displays::DispId>(reference));
    QVERIFY(showsEdgeAt(graph, 8350.0)); // the edge line is drawn but cannot be dragged
    const int start = columnNear(plotAreaOf(graph), 8350.0);
    press(graph->DispA, QPointF(start, middle(graph)));
    drag(graph->DispA, QPointF(start + 10, middle(graph)));
    release(graph->DispA, QPointF(start + 10, middle(graph)));
    QCOMPARE(m_panel->ui.EdgeE->text(), QStringLiteral("8350"));
    QVERIFY(messages(*m_panel).isEmpty());
}

void tst_FourPsGraphs::pressAwayFromTheMarkerLinesDragsNoLine()
{
    DispABase* graph = plot(Displays::DRef1);
    const PlotPlace place = plotAreaOf(graph);
    // About one pixel farther from the nearest line than the hit tolerance of 20 pixels.
    const int start = columnNear(place, 8300.0) - 21;
    press(graph->DispA, QPointF(start, middle(graph)));
    drag(graph->DispA, QPointF(start + 25, middle(graph)));
    release(graph->DispA, QPointF(start + 25, middle(graph)));
    QCOMPARE(m_panel->ui.EdgeE->text(), QStringLiteral("8350"));
    QCOMPARE(m_panel->ui.PreEEndDE->text(), QStringLiteral("-50"));
    QVERIFY(messages(*m_panel).isEmpty());
}

void tst_FourPsGraphs::eachDragStepRecalculatesOncePerValidReference_data()
{
    QTest::addColumn<int>("valid");
    QTest::addColumn<int>("perMove"); // recalculations per mouse move
    // 2 * perMove + 1: perMove each for the move and for the new edge, and one at the end
    QTest::addColumn<int>("perRelease");
    QTest::newRow("no reference") << 0 << 0 << 1;
    QTest::newRow("one reference") << 1 << 1 << 3;
    QTest::newRow("two references") << 2 << 2 << 5;
    QTest::newRow("three references, two in use") << 3 << 3 << 7;
}

void tst_FourPsGraphs::eachDragStepRecalculatesOncePerValidReference()
{
    QFETCH(int, valid);
    QFETCH(int, perMove);
    QFETCH(int, perRelease);
    selectFitRange();
    makeValid(valid);
    DispABase* graph = plot(Displays::DTarget);
    const int start = columnNear(plotAreaOf(graph), 8350.0);
    const bool fits = valid >= 2;
    press(graph->DispA, QPointF(start, middle(graph)));
    QVERIFY(messages(*m_panel).isEmpty());
    for (int step = 1; step <= 2; ++step) {
        drag(graph->DispA, QPointF(start + step, middle(graph)));
        QCOMPARE(messages(*m_panel).size(), step * perMove * linesPerRecalculation);
        QCOMPARE(m_panel->LCFvs4PS.size(), fits ? step * perMove : 0);
    }
    clearMessages(*m_panel);
    m_panel->LCFvs4PS.clear();
    release(graph->DispA, QPointF(start + 2, middle(graph)));
    QCOMPARE(messages(*m_panel).size(), perRelease * linesPerRecalculation);
    QCOMPARE(m_panel->LCFvs4PS.size(), fits ? perRelease : 0);
}

void tst_FourPsGraphs::pressWithoutDragRecalculatesOnRelease()
{
    selectFitRange();
    DispABase* graph = plot(Displays::DRef2);
    const PlotPlace place = plotAreaOf(graph);
    const int start = columnNear(place, 8350.0) + 2;
    press(graph->DispA, QPointF(start, middle(graph)));
    QVERIFY(m_panel->LCFvs4PS.isEmpty());
    release(graph->DispA, QPointF(start, middle(graph)));
    // The release moves the line to the mouse position. With two valid references it
    // recalculates 2 times for the move, 2 times for the new edge and once at its end.
    QCOMPARE(m_panel->ui.EdgeE->text(), sixDigits(place.valueAt(start)));
    QCOMPARE(m_panel->LCFvs4PS.size(), 5);
}

void tst_FourPsGraphs::releasedMarkerSetsTheEdgeBeforeRecalculating()
{
    selectFitRange();
    m_panel->lcf();
    const double before = m_panel->LCFvs4PS.last().lcfValence;
    for (const auto id : {Displays::DMuts, Displays::DRef1}) {
        m_panel->LCFvs4PS.clear();
        m_panel->ui.EdgeE->setText("8440");
        Q_EMIT plot(id)->DispA->markLines->newPos();
        QCOMPARE(m_panel->LCFvs4PS.size(), 3);
        for (const LCFPoint& point : std::as_const(m_panel->LCFvs4PS)) {
            QVERIFY(point.lcfValence != before);
            QCOMPARE(point.lcfValence, m_panel->LCFvs4PS.last().lcfValence);
        }
        m_panel->ui.EdgeE->setText("8350");
        m_panel->setEdge();
    }
}

void tst_FourPsGraphs::draggedMarkerSetsTheEdgeBeforeRecalculating()
{
    selectFitRange();
    m_panel->lcf();
    const double before = m_panel->LCFvs4PS.takeLast().lcfValence;
    m_panel->ui.EdgeE->setText("8440");
    Q_EMIT plot(Displays::DRef1)->DispA->markLines->moving();
    QCOMPARE(m_panel->LCFvs4PS.size(), 2);
    QVERIFY(m_panel->LCFvs4PS.first().lcfValence != before);
}

void tst_FourPsGraphs::mutColumnsAndTargetResultFollowTheDraggedEdge()
{
    // With the edge at 8440 eV the pre-edge range includes a part of the rise, so the
    // pre-edge line is wrong. With the edge at 8350 eV the pre-edge line is 0, so the mut
    // columns show the values of the spectra: 0, 1, 1.5 for the first reference and 0, 1, 0.5
    // for the second.
    FourPs& panel = *m_panel;
    panel.EPoints.at(2)->VPointCB->setChecked(true);
    panel.Refs.RefRows.at(0)->Valence->setText("2");
    panel.Refs.RefRows.at(1)->Valence->setText("3");
    enter(panel.ui.EdgeE, "8440");
    const auto cell = [&panel](int row, int reference) {
        return panel.EPoints.at(row)->mutEdits.at(reference)->text().toDouble();
    };
    QVERIFY(std::abs(cell(1, 0) - 1.0) > 0.05);
    // The target is 1 + 4 * (a * first + (1 - a) * second) with the thickness 4 and the
    // fraction a = 1/2: 1 + 4 * 0 = 1, 1 + 4 * 1 = 5 and 1 + 4 * (0.75 + 0.25) = 5.
    panel.EPoints.at(0)->MutT->setText("1");
    panel.EPoints.at(1)->MutT->setText("5");
    panel.EPoints.at(2)->MutT->setText("5");
    DispABase* graph = plot(Displays::DRef1);
    const PlotPlace place = plotAreaOf(graph);
    press(graph->DispA, QPointF(columnNear(place, 8440.0), middle(graph)));
    drag(graph->DispA, QPointF(columnNear(place, 8350.0), middle(graph)));
    const QList<QList<double>> wanted{{0.0, 0.0}, {1.0, 1.0}, {1.5, 0.5}};
    // Above the numerical error of the three-term fit, and far below any real difference.
    constexpr double tolerance = 1e-3;
    for (int row = 0; row < 3; ++row) {
        for (int reference = 0; reference < 2; ++reference) {
            QVERIFY(std::abs(cell(row, reference) - wanted.at(row).at(reference)) < tolerance);
        }
    }
    const QRegularExpression result(QStringLiteral("^3ps: a = (.*), Valence = (.*)$"));
    const QRegularExpressionMatch found = result.match(panel.ui.CalcRes->text());
    QVERIFY(found.hasMatch());
    QVERIFY(std::abs(found.captured(1).toDouble() - 0.5) < tolerance);
    QVERIFY(std::abs(found.captured(2).toDouble() - 2.5) < tolerance);
    // The drag does not overwrite the target's column.
    QCOMPARE(panel.EPoints.at(1)->MutT->text(), QStringLiteral("5"));
    release(graph->DispA, QPointF(columnNear(place, 8350.0), middle(graph)));
    QVERIFY(std::abs(cell(2, 0) - 1.5) < tolerance);
}

void tst_FourPsGraphs::plotsFollowTheDraggedEdge()
{
    SurfacePaints paints(*m_panel->Disps);
    DispABase* graph = plot(Displays::DRef1);
    const PlotPlace place = plotAreaOf(graph);
    const int start = columnNear(place, 8350.0);
    press(graph->DispA, QPointF(start, middle(graph)));
    QCOMPARE(paints.counts(), paintsOfGridPlots(0));
    drag(graph->DispA, QPointF(start + 13, middle(graph)));
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    const double edge = m_panel->ui.EdgeE->text().toDouble();
    QVERIFY(showsEdgeAt(graph, edge));
    QVERIFY(showsEdgeAt(plot(Displays::DTarget), edge));
    paints.restart();
    release(graph->DispA, QPointF(start + 13, middle(graph)));
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
}

void tst_FourPsGraphs::wheelZoomsOnlyThePlotUnderTheMouse()
{
    SurfacePaints paints(*m_panel->Disps);
    DispABase* graph = plot(Displays::DRef1);
    const int column = graph->DispA->width() / 2;
    const double centre = plotAreaOf(graph).valueAt(column);
    move(graph->DispA, QPointF(column, middle(graph)));
    turnWheel(graph->DispA, QPointF(column, middle(graph)), {0, 120});
    QList<int> wanted(11, 0);
    wanted[Displays::DRef1] = 1;
    QCOMPARE(paints.counts(), wanted);
    const auto isNear = [](double value, double other) { return std::abs(value - other) < 1e-6; };
    QVERIFY(isNear(graph->DispA->cc.realX0, centre + (lowestEv - centre) / 1.1));
    QVERIFY(isNear(graph->DispA->cc.realX1, centre + (highestEv - centre) / 1.1));
    QCOMPARE(plot(Displays::DRef2)->DispA->cc.realX0, lowestEv);
    // A new edge repaints the plots, but the zoomed range remains.
    enter(m_panel->ui.EdgeE, "8360");
    QTest::qWait(30);
    QVERIFY(isNear(graph->DispA->cc.realX0, centre + (lowestEv - centre) / 1.1));
    QVERIFY(isNear(m_panel->Disps->frame(Displays::DTarget)->DispA->cc.realX0, lowestEv));
}

void tst_FourPsGraphs::doubleClickFitsOnlyTheClickedPlot()
{
    for (const auto id : {Displays::DRef1, Displays::DRef2, Displays::DTarget}) {
        plot(id)->DispA->cc.setReal(8100.0, 0.0, 8200.0, 1.0);
    }
    m_panel->LCFvs4PS.append(LCFPoint());
    doubleClick(plot(Displays::DRef2)->DispA, {5, 5});
    QTest::qWait(30);
    QCOMPARE(plot(Displays::DRef2)->DispA->cc.realX0, lowestEv);
    QCOMPARE(plot(Displays::DRef2)->DispA->cc.realX1, highestEv);
    QCOMPARE(plot(Displays::DRef1)->DispA->cc.realX0, 8100.0);
    QCOMPARE(plot(Displays::DTarget)->DispA->cc.realX0, 8100.0);
    QCOMPARE(m_panel->LCFvs4PS.size(), 1);
}

void tst_FourPsGraphs::markersCanBeDraggedInAPoppedOutPlot()
{
    DispABase* graph = plot(Displays::DRef1);
    graph->popDock();
    QVERIFY(QTest::qWaitForWindowExposed(graph->pop));
    QTest::qWait(20);
    const PlotPlace place = plotAreaOf(graph);
    QVERIFY(place.right - place.left > 600); // wider than in the graph window
    SurfacePaints paints(*m_panel->Disps);
    const int start = columnNear(place, 8350.0);
    press(graph->DispA, QPointF(start, middle(graph)));
    drag(graph->DispA, QPointF(start + 33, middle(graph)));
    QCOMPARE(m_panel->ui.EdgeE->text(), sixDigits(place.valueAt(start + 33)));
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(showsEdgeAt(graph, m_panel->ui.EdgeE->text().toDouble()));
    release(graph->DispA, QPointF(start + 33, middle(graph)));
}

void tst_FourPsGraphs::doubleClickInTheComparisonSelectsTheSecondColor()
{
    m_panel->LCFvs4PS.append(LCFPoint());
    m_panel->LCFColor = 7;
    DispArea* surface = plot(Displays::DLCFvs4PS)->DispA;
    press(surface, {20, 20});
    release(surface, {20, 20});
    QCOMPARE(m_panel->LCFColor, 8);
    doubleClick(surface, {20, 20});
    QCOMPARE(m_panel->LCFColor, 0);
    // The release after the double-click selects the next colour.
    release(surface, {20, 20});
    QCOMPARE(m_panel->LCFColor, 1);
    QVERIFY(m_panel->LCFvs4PS.isEmpty());
}

void tst_FourPsGraphs::clicksInOtherPlotsKeepTheComparison_data()
{
    QTest::addColumn<int>("id");
    for (int id = Displays::DRef1; id <= Displays::DM2M3; ++id) {
        if (id != Displays::DLCFvs4PS) {
            QTest::addRow("plot with id %d", id) << id;
        }
    }
}

void tst_FourPsGraphs::clicksInOtherPlotsKeepTheComparison()
{
    QFETCH(int, id);
    m_panel->LCFvs4PS.append(LCFPoint());
    m_panel->LCFColor = 7;
    DispArea* surface = plot(static_cast<Displays::DispId>(id))->DispA;
    doubleClick(surface, {1, 1}, Qt::RightButton);
    release(surface, {1, 1}, Qt::RightButton);
    QCOMPARE(m_panel->LCFvs4PS.size(), 1);
    QCOMPARE(m_panel->LCFColor, 7);
}

void tst_FourPsGraphs::normalisationRadioRepaintsTheGraphsAndClearsTheRange_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("NNone") << "NBy2Vics";
    QTest::newRow("NBySubPre") << "NNone";
    QTest::newRow("NByEJ") << "NBySubPre";
    QTest::newRow("NBy2Vics") << "NByEJ";
}

void tst_FourPsGraphs::normalisationRadioRepaintsTheGraphsAndClearsTheRange()
{
    QFETCH(QString, before);
    chooseWithoutSignals(m_panel->findChild<QAbstractButton*>(before));
    DispABase* all = plot(Displays::DMuts);
    all->setRealCoord(8300.0, -0.1, 8450.0, 1.1);
    SurfacePaints paints(*m_panel->Disps);
    auto* radio = m_panel->findChild<QAbstractButton*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(radio && !radio->isChecked());
    radio->click();
    QVERIFY(radio->isChecked());
    QVERIFY(!all->DispA->hasScale);
    QVERIFY(plot(Displays::DRef1)->DispA->hasScale);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(messages(*m_panel).isEmpty());
    // A click on the selected radio button changes nothing.
    all->setRealCoord(8300.0, -0.1, 8450.0, 1.1);
    paints.restart();
    radio->click();
    QVERIFY(all->DispA->hasScale);
    QCOMPARE(paints.counts(), paintsOfGridPlots(0));
}

void tst_FourPsGraphs::histogramSelectionRepaintsTheGraphs_data()
{
    // The radio button that is checked before the click; empty for check boxes.
    QTest::addColumn<QString>("before");
    for (const char* box : {"HgValence", "HgRatio1", "HgRatio2", "HgRatio3", "HgRatio4", "HgAmount",
                            "HgdMut1", "HgdMut2", "HgdMut3", "HgdMut4"}) {
        QTest::newRow(box) << QString();
    }
    QTest::newRow("HgMut0") << "HgC2";
    QTest::newRow("HgC1") << "HgMut0";
    QTest::newRow("HgC2") << "HgC1";
}

void tst_FourPsGraphs::histogramSelectionRepaintsTheGraphs()
{
    QFETCH(QString, before);
    auto* choice = m_panel->findChild<QAbstractButton*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(choice);
    if (!before.isEmpty()) {
        m_panel->findChild<QAbstractButton*>(before)->setChecked(true);
    }
    const bool checked = choice->isChecked();
    SurfacePaints paints(*m_panel->Disps);
    {
        // The radio button that becomes unchecked requests a paint, too. Its signals
        // are blocked, so that its paint cannot hide a missing paint of the clicked button.
        QObject unused;
        QObject* other = before.isEmpty() ? &unused : m_panel->findChild<QObject*>(before);
        const QSignalBlocker quiet(other);
        choice->click();
    }
    QCOMPARE(choice->isChecked(), !checked);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    if (before.isEmpty()) {
        paints.restart();
        choice->click();
        QCOMPARE(choice->isChecked(), checked);
        QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    }
    QVERIFY(messages(*m_panel).isEmpty());
}

void tst_FourPsGraphs::actionRepaintsTheGraphs_data()
{
    QTest::addColumn<std::function<void(FourPs&)>>("action");
    QTest::addColumn<QList<int>>("maps");
    const auto add = [](const char* name, const QList<int>& maps,
                        const std::function<void(FourPs&)>& action) {
        QTest::newRow(name) << action << maps;
    };
    add("the edge is set", {}, [](FourPs& panel) { panel.setEdge(); });
    add("the edge is set without a reference", {}, [](FourPs& panel) {
        for (AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
            row->valid = false;
        }
        panel.setEdge();
    });
    add("a new edge is found", {}, [](FourPs& panel) { panel.noticedNewEdge(8351.0); });
    add("an edge field is edited", {}, [](FourPs& panel) { enter(panel.ui.PreEEndDE, "-40"); });
    add("a reference's column is written", {}, [](FourPs& panel) { panel.receiveNewRef(1); });
    add("the target's column is written", {},
        [](FourPs& panel) { panel.receiveNewTarget(QString()); });
    add("a row has a new energy", {},
        [](FourPs& panel) { enter(panel.EPoints.at(0)->Energy, "8314"); });
    add("a spectrum is shifted", {},
        [](FourPs& panel) { enter(panel.ui.TargetFile->Ui_AFileSelect::dE, "1.5"); });
    add("the comparison is cleared", {}, [](FourPs& panel) { panel.clearLCFvs4PS(nullptr); });
    add("the target is fitted", {}, [](FourPs& panel) {
        panel.EPoints.at(1)->LCFCB->setChecked(true);
        panel.EPoints.at(5)->LCFCB->setChecked(true);
        panel.lcf();
    });
    add("a map is calculated from three points", {0, 1, 2}, [](FourPs& panel) { panel.calcMap(); });
    add("a map is calculated with the exact four-point method", {0, 1, 2, 3}, [](FourPs& panel) {
        chooseWithoutSignals(panel.ui.TypeTMKisExact);
        panel.calcMap();
        chooseWithoutSignals(panel.ui.TypeTMKisLS);
    });
    add("a map is calculated by least squares", {0, 1, 2, 3},
        [](FourPs& panel) { panel.calcMap(); });
    add("a map is calculated with a linear background", {0, 1, 2, 3, 4}, [](FourPs& panel) {
        chooseWithoutSignals(panel.ui.TypeNonEquiv);
        panel.ui.NonEquivBGLinear->setChecked(true);
        panel.calcMap();
    });
}

void tst_FourPsGraphs::actionRepaintsTheGraphs()
{
    QFETCH(std::function<void(FourPs&)>, action);
    QFETCH(QList<int>, maps);
    if (!maps.isEmpty()) {
        prepareMaps(maps);
    }
    const bool linear = m_panel->ui.NonEquivBGLinear->isChecked();
    SurfacePaints paints(*m_panel->Disps);
    action(*m_panel);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    chooseFourPoints(*m_panel);
    m_panel->ui.NonEquivBGLinear->setChecked(linear);
}

void tst_FourPsGraphs::actionWithoutVisibleEffectRepaintsNoGraph_data()
{
    QTest::addColumn<std::function<void(FourPs&)>>("action");
    const auto add = [](const char* name, const std::function<void(FourPs&)>& action) {
        QTest::newRow(name) << action;
    };
    add("the map calculation is refused", [](FourPs& panel) { panel.calcMap(); });
    add("the fit is refused", [](FourPs& panel) { panel.lcf(); });
    add("the recalculation is refused", [](FourPs& panel) { panel.calcBoth(); });
    add("the column of an invalid reference is written",
        [](FourPs& panel) { panel.receiveNewRef(3); });
    add("the next comparison colour is selected",
        [](FourPs& panel) { panel.newColorLCFvs4PS(nullptr); });
    add("a file is removed from an empty list",
        [](FourPs& panel) { panel.ui.RemoveAFile->click(); });
    add("an energy is received without a sender",
        [](FourPs& panel) { panel.receiveNewEnergy(8313.0); });
}

void tst_FourPsGraphs::actionWithoutVisibleEffectRepaintsNoGraph()
{
    QFETCH(std::function<void(FourPs&)>, action);
    SurfacePaints paints(*m_panel->Disps);
    action(*m_panel);
    QCOMPARE(paints.counts(), paintsOfGridPlots(0));
}

void tst_FourPsGraphs::emptyResultMapRepaintsTheGraphs()
{
    prepareMaps({0, 1, 2});
    A2DData& map = *m_panel->EPoints.at(2);
    map.clear();
    SurfacePaints paints(*m_panel->Disps);
    m_panel->calcMap();
    QVERIFY(m_panel->BaseData.rows.isEmpty());
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
}

void tst_FourPsGraphs::loadingADisplayFileRepaintsTheGraphs()
{
    SurfacePaints paints(*m_panel->Disps);
    Q_EMIT m_panel->ui.DispFSelect->newFilePaths({m_files.broken});
    QCOMPARE(paints.counts(), paintsOfGridPlots(0));
    Q_EMIT m_panel->ui.DispFSelect->newFilePaths({m_files.ref1});
    QCOMPARE(m_panel->DispMuts.size(), 1);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    m_panel->removeAFile();
}

void tst_FourPsGraphs::selectingADisplayFileRepaintsTheGraphs()
{
    m_panel->receiveNewDispFiles({m_files.ref1, m_files.ref2});
    QCOMPARE(m_panel->ui.SelectedFs->currentIndex(), 0);
    clearMessages(*m_panel);
    SurfacePaints paints(*m_panel->Disps);
    m_panel->ui.SelectedFs->setCurrentIndex(1);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(messages(*m_panel).isEmpty());
    m_panel->removeAFile();
    m_panel->removeAFile();
}

void tst_FourPsGraphs::removingADisplayFileRepaintsTheGraphs()
{
    m_panel->receiveNewDispFiles({m_files.ref1, m_files.ref2});
    const AMutE* second = m_panel->DispMuts.last();
    m_panel->ui.SelectedFs->setCurrentIndex(0);
    SurfacePaints paints(*m_panel->Disps);
    m_panel->ui.RemoveAFile->click();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QCOMPARE(m_panel->DispMuts, QList<AMutE*>{const_cast<AMutE*>(second)});
    QCOMPARE(m_panel->ui.SelectedFs->currentText(), m_files.ref2);
    paints.restart();
    m_panel->ui.RemoveAFile->click();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(m_panel->DispMuts.isEmpty());
}

void tst_FourPsGraphs::leavingTheEdgeFieldByTabMovesTheEdgeLine()
{
    m_panel->show();
    m_panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    QLineEdit* edge = m_panel->ui.EdgeE;
    edge->setFocus();
    edge->selectAll();
    QTest::keyClicks(edge, "8412.5");
    SurfacePaints paints(*m_panel->Disps);
    QCOMPARE(m_panel->XafsFiles.at(0)->edgeEnergy, 8350.0);
    QTest::keyClick(edge, Qt::Key_Tab);
    QVERIFY(!edge->hasFocus());
    QCOMPARE(m_panel->XafsFiles.at(0)->edgeEnergy, 8412.5);
    QCOMPARE(m_panel->XafsFiles.at(4)->postEdgeStart, 8512.5);
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QVERIFY(showsEdgeAt(plot(Displays::DRef1), 8412.5));
    QVERIFY(showsEdgeAt(plot(Displays::DTarget), 8412.5));
    m_panel->hide();
}

void tst_FourPsGraphs::energyShiftMovesTheCurveAndKeepsTheRange()
{
    selectFitRange();
    DispABase* graph = plot(Displays::DRef1);
    const QImage before = graph->DispA->grab().toImage();
    enter(m_panel->XafsFiles.at(0)->Ui_AFileSelect::dE, "40");
    QCOMPARE(m_panel->LCFvs4PS.size(), 1); // each recalculation adds one point
    QTest::qWait(30);
    QCOMPARE(graph->DispA->cc.realX0, lowestEv);
    QCOMPARE(graph->DispA->cc.realX1, highestEv);
    QVERIFY(graph->DispA->grab().toImage() != before);
    QVERIFY(showsEdgeAt(graph, 8350.0));
}

void tst_FourPsGraphs::fileWithoutASpectrumClearsItsPlot()
{
    FourPs panel;
    load(panel.XafsFiles.at(2), m_files.ref1);
    panel.Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel.Disps));
    SurfacePaints paints(*panel.Disps);
    DispArea* plot = panel.Disps->frame(Displays::DRef3)->DispA;
    QVERIFY(plot->cc.drawn);
    load(panel.XafsFiles.at(2), m_files.broken);
    QCOMPARE(paints.counts().at(Displays::DRef3), 1);
    QVERIFY(!plot->cc.drawn);
    panel.Disps->hide();
}

QTEST_MAIN(tst_FourPsGraphs)
#include "tst_FourPsGraphs.moc"
