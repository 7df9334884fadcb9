#include "panel/Repaints.h"

#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

namespace panel
{

namespace
{

template <class Picture>
void follow(Picture* picture, const QLineEdit* edit)
{
    QObject::connect(edit, &QLineEdit::textChanged, picture, &Picture::update);
}

template <class Picture>
void follow(Picture* picture, const QAbstractButton* button)
{
    QObject::connect(button, &QAbstractButton::toggled, picture, &Picture::update);
}

template <class Picture, class... Inputs>
void repaintOn(Picture* picture, const Inputs*... inputs)
{
    (follow(picture, inputs), ...);
}

// Connects only inputs that affect some of the plots. Inputs that repaint all plots are
// connected in Wiring, for example the buttons of the normalisation. Many slots of the panel
// also repaint all plots, for example after a fit.
void connectGraphs(const Widgets& widgets)
{
    const Ui_FourPs& form = *widgets.form;
    DispABase* spectra = widgets.graphs->frame(Displays::DMuts);
    DispABase* comparison = widgets.graphs->frame(Displays::DLCFvs4PS);
    DispABase* valenceCounts = widgets.graphs->frame(Displays::DHistA);
    DispABase* thicknessCounts = widgets.graphs->frame(Displays::DHistDMut);
    DispABase* thickness = widgets.graphs->frame(Displays::DDMutVsA);
    DispABase* plane = widgets.graphs->frame(Displays::DM2M3);
    repaintOn(spectra, form.EdgeE, form.PreEEndDE, form.PostEStartDE);
    repaintOn(valenceCounts, form.HgAFrom, form.HgATo);
    repaintOn(thicknessCounts, form.HgTFrom, form.HgTTo);
    for (const AEPoint* row : widgets.points) {
        repaintOn(spectra, row->Energy, row->UseCB, row->LCFCB);
        repaintOn(plane, row->Mut1, row->Mut2, row->Mut3, row->Mut4, row->UseCB, row->VPointCB);
    }
    for (const ARefFile* row : widgets.references->RefRows) {
        repaintOn(comparison, row->UseCB, row->Valence);
        repaintOn(valenceCounts, row->UseCB);
        repaintOn(thicknessCounts, row->UseCB);
        repaintOn(thickness, row->UseCB, row->Valence);
        repaintOn(plane, row->UseCB);
    }
    // On purpose, two inputs of the thickness plot are not connected. It uses the limits of the
    // histograms only when its view is next fitted to them. The current colour, which changes
    // at a mouse release in the comparison plot, appears at the next paint.
}

void connectMaps(const Widgets& widgets)
{
    for (const ARefFile* row : widgets.references->RefRows) {
        // The valence of a pixel depends on which references are used and valid, and on their
        // valences.
        repaintOn(widgets.resultMap, row->UseCB, row->Valence);
        QObject::connect(row->XafsFS, &AFileSelect::newFilePath, widgets.resultMap,
                         &DispMBase::update);
    }
    for (const AEPoint* row : widgets.points) {
        // newFilePath() is also emitted for a file that cannot be read. The row then has no map
        // to draw, and the repaint removes the picture of the old map.
        QObject::connect(row->FileSelect, &AFileSelect::newFilePath, widgets.dataMap,
                         &DispMBase::update);
    }
}

} // namespace

void connectRepaints(const Widgets& widgets)
{
    connectGraphs(widgets);
    connectMaps(widgets);
}

} // namespace panel
