// A panel shared by all tests of a program, and functions that reset it.
#pragma once

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/MarkLines.h"
#include "rows/AXafsFileSelect.h"
#include "support/PanelTools.h"
#include "support/WidgetStates.h"

#include <QDir>

#include <memory>

namespace tests
{

/// Docks a plot or a map surface, clears its view range and deselects its marker line.
template <class Frame>
void resetPlot(Frame* plot)
{
    if (!plot->docked) {
        plot->popDock();
    }
    plot->clearScale();
    plot->DispA->cc.setReal(0.0, 0.0, 1.0, 1.0);
    if (MarkLines* set = plot->DispA->markLines) {
        set->selected = false;
    }
}

/// Resets all plots of the graph window. The window itself keeps its state.
inline void resetPlots(FourPs& panel)
{
    for (DispABase* plot : std::as_const(panel.Disps->disps)) {
        resetPlot(plot);
    }
}

/// Hides a map window and restores its initial state, except that the fields of its limits
/// are empty.
inline void resetWindow(DispMBase* window)
{
    resetPlot(window);
    window->hide();
    window->CBar->setCBarType(0);
    window->CBar->zmin = 0.0;
    window->CBar->zmax = 1.0;
    window->CBar->autoScale = true;
    window->CBar->invert = false;
    window->CBar->dragHandle = 2;
    for (QLineEdit* edit : {window->MinV, window->MaxV, window->XPos, window->YPos, window->Val}) {
        edit->clear();
    }
}

/// Removes all points of the comparison plot. The next point has the first colour of the
/// colour list.
inline void resetComparison(FourPs& panel)
{
    panel.LCFvs4PS.clear();
    panel.LCFColor = 0;
    panel.Colors.colors = CColors().colors;
}

/// Clears the numbers of an energy row and unchecks its check boxes. Exception: the V-point
/// box of the third row is checked.
inline void resetRow(FourPs& panel, int index)
{
    AEPoint* row = panel.EPoints.at(index);
    const QSignalBlocker quiet(row);
    for (QLineEdit* edit : row->mutEdits + QList<QLineEdit*>{row->Energy, row->MutT}) {
        edit->clear();
    }
    row->UseCB->setChecked(false);
    row->LCFCB->setChecked(false);
    row->VPointCB->setChecked(index == 2);
}

/// Clears all energy rows and makes the third row the only V point.
inline void clearRows(FourPs& panel)
{
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        resetRow(panel, row);
    }
}

/// Removes all spectra, all maps, the result map and the points of the comparison plot.
/// Calls resetPlots(), and resetWindow() for both map windows.
inline void clearData(FourPs& panel)
{
    for (AMutE* spectrum : std::as_const(panel.XafsFiles)) {
        *spectrum = AMutE();
    }
    for (AEPoint* row : std::as_const(panel.EPoints)) {
        row->clear();
        row->loaded = false;
    }
    panel.BaseData = {};
    panel.DispMuts.clear();
    resetComparison(panel);
    resetPlots(panel);
    resetWindow(panel.MapDisp);
    resetWindow(panel.DMapDisp);
}

/// Calls clearData(), clears the energy rows and empties the message box. The
/// other fields of the form keep their values.
inline void resetData(FourPs& panel)
{
    clearData(panel);
    clearRows(panel);
    panel.setEdge(); // copies the edge energy to the spectra
    clearMessages(panel);
}

/// Hides the panel's windows, which are top-level windows without a parent, and then
/// destroys the panel.
inline void closePanel(std::unique_ptr<FourPs>& panel)
{
    resetData(*panel);
    panel->Disps->frame(Displays::DM2M3)->hide();
    panel->Disps->hide();
    panel.reset();
}

/// The panel shared by the tests of a program. Make it a member of the test class:
/// QTEST_MAIN creates the test object after the application. The destructor calls
/// closePanel().
class SharedPanel
{
public:
    SharedPanel() = default;
    ~SharedPanel() { closePanel(m_panel); }
    SharedPanel(const SharedPanel&) = delete;
    SharedPanel& operator=(const SharedPanel&) = delete;

    FourPs* operator->() const { return m_panel.get(); }
    FourPs& operator*() const { return *m_panel; }
    FourPs* get() const { return m_panel.get(); }

private:
    std::unique_ptr<FourPs> m_panel = std::make_unique<FourPs>();
};

/// The panel's form and its windows.
inline QList<QWidget*> windowsOf(FourPs& panel)
{
    return {&panel, panel.Disps, panel.Disps->frame(Displays::DM2M3), panel.MapDisp,
            panel.DMapDisp};
}

/// The states of all widgets of a panel, window by window.
inline QList<QMap<QString, States>> statesOf(FourPs& panel)
{
    QList<QMap<QString, States>> all;
    const QList<QWidget*> windows = windowsOf(panel);
    for (QWidget* window : windows) {
        all.append(statesBelow(window));
    }
    return all;
}

/// The states of a newly constructed panel with an empty message box.
inline const QList<QMap<QString, States>>& initialStates()
{
    static const QList<QMap<QString, States>> states = [] {
        auto fresh = std::make_unique<FourPs>();
        clearMessages(*fresh);
        const QList<QMap<QString, States>> first = statesOf(*fresh);
        closePanel(fresh);
        return first;
    }();
    return states;
}

/// Resets all file rows: closes their dialogs, clears their file names and sets their folders
/// to the working directory, except that the save row has no folder. Also chooses the
/// pre-edge line for all spectra and energy rows.
inline void resetFileRows(FourPs& panel)
{
    const auto rows = panel.findChildren<AFileSelect*>();
    for (AFileSelect* row : rows) {
        row->dialog->close();
        row->setDir(QDir::currentPath());
        row->fileName.clear();
    }
    panel.ui.SaveFSelect->dir.clear();
    for (AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
        row->subPost = false;
    }
    for (AEPoint* row : std::as_const(panel.EPoints)) {
        row->subBGForRef = false;
        row->subBGForTarget = false;
    }
}

/// Clears all histograms and switches their Auto mode off. Resets the fit, the results of the
/// target and the latest automatic range of a graph.
inline void resetResults(FourPs& panel)
{
    for (Histgram* histogram :
         QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut) {
        static_cast<analysis::HistogramCounts&>(*histogram) = {};
        histogram->autoMode = false;
    }
    panel.LCFMut = nullptr; // a test may have set it to its own object
    panel.TargetV = 0.0;
    panel.TargetT = 0.0;
    panel.scaleX0 = panel.scaleY0 = panel.scaleX1 = panel.scaleY1 = 0.0;
}

/// Resets the texts and states of a panel to their values after construction, and empties
/// the message box. Does not change whether the form and the graph window are visible, nor
/// sizes that a test fixed.
inline void resetPanel(FourPs& panel)
{
    const QList<QMap<QString, States>>& first = initialStates();
    clearData(panel);
    resetResults(panel);
    resetFileRows(panel);
    const QList<QWidget*> windows = windowsOf(panel);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        setStatesBelow(windows.at(i), first.at(i));
    }
    for (DispMBase* window : {panel.MapDisp, panel.DMapDisp}) {
        const QSignalBlocker quiet(window->CBar);
        window->setZRange(0.0, 1.0);
    }
    panel.setEdge(); // copies the edge energy to the spectra
    clearMessages(panel);
}

} // namespace tests
