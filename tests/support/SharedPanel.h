// A panel that the tests of a file share, and its way back to its start.
#pragma once

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/MarkLines.h"
#include "rows/AXafsFileSelect.h"
#include "support/PanelTools.h"

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

/// Hides a map window and gives it back what it starts with.
inline void resetWindow(DispMBase* window)
{
    resetPlot(window);
    window->hide();
    window->CBar->setCBarType(0);
    window->CBar->zmin = 0.0;
    window->CBar->zmax = 1.0;
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

/// No map, no numbers, nothing checked but the V point of the third row.
inline void resetRow(FourPs& panel, int index)
{
    AEPoint* row = panel.EPoints.at(index);
    const QSignalBlocker quiet(row);
    row->clear();
    row->loaded = false;
    for (QLineEdit* edit : row->mutEdits + QList<QLineEdit*>{row->Energy, row->MutT}) {
        edit->clear();
    }
    row->UseCB->setChecked(false);
    row->LCFCB->setChecked(false);
    row->VPointCB->setChecked(index == 2);
}

/// No spectrum, no map and no result, an empty message box, every plot with its
/// automatic range, and both map windows hidden. The fields of the panel itself
/// and of its references stay.
inline void resetPanel(FourPs& panel)
{
    for (AMutE* spectrum : std::as_const(panel.XafsFiles)) {
        *spectrum = AMutE();
    }
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        resetRow(panel, row);
    }
    panel.setEdge(); // the spectra take it from the panel
    panel.BaseData = {};
    panel.DispMuts.clear();
    resetComparison(panel);
    resetPlots(panel);
    resetWindow(panel.MapDisp);
    resetWindow(panel.DMapDisp);
    clearMessages(panel);
}

/// Ends a panel after its windows, which have no parent.
inline void closePanel(std::unique_ptr<FourPs>& panel)
{
    resetPanel(*panel);
    panel->Disps->frame(Displays::DM2M3)->hide();
    panel->Disps->hide();
    panel.reset();
}

} // namespace tests
