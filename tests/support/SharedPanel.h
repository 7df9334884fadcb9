// A panel that the tests of a file share, and its way back to its start.
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

/// Puts a plot, or a map window, back in its frame, without a range of its own.
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

/// The plots of the graph window, which stays as it is.
inline void resetPlots(FourPs& panel)
{
    for (DispABase* plot : std::as_const(panel.Disps->disps)) {
        resetPlot(plot);
    }
}

/// Hides a map window and gives it back what it starts with, but for empty limits.
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

/// No point of the comparison, the first colour for the next one.
inline void resetComparison(FourPs& panel)
{
    panel.LCFvs4PS.clear();
    panel.LCFColor = 0;
    panel.Colors.colors = CColors().colors;
}

/// No numbers, nothing checked but the V point of the third row.
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

/// No numbers in any energy row, none in use, the V point in the third one.
inline void emptyRows(FourPs& panel)
{
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        resetRow(panel, row);
    }
}

/// No spectrum, no map and no result, every plot with its automatic range, and both
/// map windows hidden with empty limits.
inline void dropData(FourPs& panel)
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

/// Panel without data, without numbers in its energy rows, and with an empty message
/// box. The other fields stay.
inline void resetData(FourPs& panel)
{
    dropData(panel);
    emptyRows(panel);
    panel.setEdge(); // the spectra take it from the panel
    clearMessages(panel);
}

/// Ends a panel after its windows, which have no parent.
inline void closePanel(std::unique_ptr<FourPs>& panel)
{
    resetData(*panel);
    panel->Disps->frame(Displays::DM2M3)->hide();
    panel->Disps->hide();
    panel.reset();
}

/// The panel that the tests of a program share: a member of the test class, which is
/// made when there is an application, as by QTEST_MAIN. It ends after its windows.
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

/// The form of a panel and its windows.
inline QList<QWidget*> windowsOf(FourPs& panel)
{
    return {&panel, panel.Disps, panel.Disps->frame(Displays::DM2M3), panel.MapDisp,
            panel.DMapDisp};
}

/// The states of all its widgets, window by window.
inline QList<QMap<QString, States>> statesOf(FourPs& panel)
{
    QList<QMap<QString, States>> all;
    const QList<QWidget*> windows = windowsOf(panel);
    for (QWidget* window : windows) {
        all.append(statesBelow(window));
    }
    return all;
}

/// Those of a panel after its construction, but for an empty message box.
inline const QList<QMap<QString, States>>& firstStates()
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

/// The file rows go back to the working directory and forget their names.
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

/// Nothing is counted, fitted or calculated.
inline void resetResults(FourPs& panel)
{
    for (Histgram* histogram :
         QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut) {
        static_cast<analysis::HistogramCounts&>(*histogram) = {};
        histogram->autoMode = false;
    }
    panel.LCFMut = nullptr; // a test may have lent it
    panel.TargetV = 0.0;
    panel.TargetT = 0.0;
    panel.scaleX0 = panel.scaleY0 = panel.scaleX1 = panel.scaleY1 = 0.0;
}

/// The panel as its construction leaves it, in all texts and states, but for the
/// message box, which is empty. Whether the form and the graph window are shown, and
/// the sizes that a test fixed, stay.
inline void resetPanel(FourPs& panel)
{
    const QList<QMap<QString, States>>& first = firstStates();
    dropData(panel);
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
    panel.setEdge(); // the spectra take it from the panel
    clearMessages(panel);
}

} // namespace tests
