// Every connection of the panel. They are made once and never change.

#include "panel/FourPs.h"

#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/MarkLine.h"
#include "display/MarkLines.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

#include <QButtonGroup>

#include <initializer_list>

void FourPs::wire()
{
    wireReferences();
    wireEnergyRows();
    wireFileRows();
    wireButtons();
    wireGraphs();
    wireMaps();
    wireGraphRepaints();
    wireMapRepaints();
}

void FourPs::wireReferences()
{
    for (ARefFile* row : std::as_const(Refs.RefRows)) {
        connect(row, &ARefFile::changedUse, &Refs, &RefFiles::changedUse);
        connect(row, &ARefFile::selectedFile, &Refs, &RefFiles::selectedFile);
        connect(row, &ARefFile::foundNewEdge, this, &FourPs::noticedNewEdge);
    }
    connect(&Refs, &RefFiles::changedUse, this, &FourPs::calcBoth);
}

void FourPs::wireEnergyRows()
{
    for (AEPoint* row : std::as_const(EPoints)) {
        connect(row, &AEPoint::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AEPoint::newEnergy, this, &FourPs::receiveNewEnergy);
        connect(row, &AEPoint::changedCB, this, &FourPs::calcBoth);
        connect(row, &AEPoint::newData, this, &FourPs::updateDMap);
    }
    connect(MultiEnergys, &QLineEdit::editingFinished, this, &FourPs::newMultiEnergys);
}

void FourPs::wireFileRows()
{
    for (AXafsFileSelect* row : std::as_const(XafsFiles)) {
        connect(row, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AFileSelect::newFilePath, this, &FourPs::receiveNewFile);
        connect(row, &AXafsFileSelect::updated, this, &FourPs::calcBoth);
        connect(row, &AXafsFileSelect::updated, Disps, &Displays::update);
    }
    connect(ui.DispFSelect, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    connect(ui.DispFSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewDispFiles);
    connect(MultiFiles, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    connect(MultiFiles, &AFileSelect::newFilePaths, this, &FourPs::receiveNewPaths);
    connect(ui.RemoveAFile, &QPushButton::clicked, this, &FourPs::removeAFile);
}

void FourPs::wireButtons()
{
    connect(ui.WriteB, &QPushButton::clicked, this, &FourPs::calcAndWrite);
    connect(ui.CalcTargetB, &QPushButton::clicked, this, &FourPs::calcTarget);
    connect(ui.LCFB, &QPushButton::clicked, this, &FourPs::lcf);
    connect(ui.CalcMapB, &QPushButton::clicked, this, &FourPs::calcMap);
    connect(ui.TypeNonEquiv, &QRadioButton::toggled, this, &FourPs::calcBoth);
    connect(ui.NonEquivBGLinear, &QRadioButton::toggled, this, &FourPs::calcBoth);
    for (QLineEdit* edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE}) {
        connect(edit, &QLineEdit::editingFinished, this, &FourPs::setEdge);
    }
    connect(ui.SubPostEforRef, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForRef);
    connect(ui.SubPostEforTarget, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForTarget);
    connect(ui.DispCondsB, &QCheckBox::toggled, this, &FourPs::dispCalcConditions);
}

void FourPs::wireGraphs()
{
    connect(ui.ShowDAB, &QPushButton::clicked, Disps, &Displays::show);
    connect(Disps, &Displays::draw, this, &FourPs::draw);
    const DispABase* comparison = Disps->frame(Displays::DLCFvs4PS);
    connect(comparison, &DispABase::mDClicked, this, &FourPs::clearLCFvs4PS);
    connect(comparison, &DispABase::mReleased, this, &FourPs::newColorLCFvs4PS);
    connect(Disps->frame(Displays::DMuts), &DispABase::mPressed, this, &FourPs::mPressedInAllMut);
    connect(m_normGroup, &QButtonGroup::buttonToggled, Disps, &Displays::update);
    connect(m_normGroup, &QButtonGroup::buttonToggled, Disps->frame(Displays::DMuts),
            &DispABase::clearScale);
    connect(ui.SelectedFs, &QComboBox::currentIndexChanged, Disps, &Displays::update);
    // The three radios only repaint: no graph reads them.
    for (const QAbstractButton* choice : std::initializer_list<const QAbstractButton*>{
             ui.HgValence, ui.HgRatio1, ui.HgRatio2, ui.HgRatio3, ui.HgRatio4, ui.HgAmount,
             ui.HgdMut1, ui.HgdMut2, ui.HgdMut3, ui.HgdMut4, ui.HgMut0, ui.HgC1, ui.HgC2}) {
        connect(choice, &QAbstractButton::toggled, Disps, &Displays::update);
    }
}

void FourPs::wireMaps()
{
    connect(ui.ShowMap, &QPushButton::clicked, MapDisp, &DispMBase::show);
    connect(MapDisp, &DispMBase::draw, this, &FourPs::drawMap);
    connect(MapDisp, &DispMBase::nowPos, this, &FourPs::receiveNowPosInMap);
    connect(MapDisp, &DispMBase::mDClicked, this, &FourPs::dClickedInMap);
    connect(ui.ShowDMap, &QPushButton::clicked, DMapDisp, &DispMBase::show);
    connect(DMapDisp, &DispMBase::draw, this, &FourPs::drawDMap);
    connect(DMapDisp, &DispMBase::nowPos, this, &FourPs::receiveNowPosInDMap);
    connect(ui.MapWGrid, &QCheckBox::toggled, this, &FourPs::updateMaps);
    connect(m_mapRadioGroup, &QButtonGroup::buttonToggled, this, &FourPs::selectedNewMap);
    connect(m_mapRowGroup, &QButtonGroup::buttonToggled, this, &FourPs::updateDMap);
}

// Drawings read fields and buttons as they are at the paint. Each picture
// therefore follows those that it reads, whether or not a calculation runs after
// a change, or refuses; no calculation starts here. It follows no others, since
// the picture of a large map takes its time.

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

} // namespace

// The buttons of "Disp Select" and of the normalisation, and spectra that are read,
// repaint all plots already.
void FourPs::wireGraphRepaints()
{
    DispABase* spectra = Disps->frame(Displays::DMuts);
    DispABase* comparison = Disps->frame(Displays::DLCFvs4PS);
    DispABase* valenceCounts = Disps->frame(Displays::DHistA);
    DispABase* thicknessCounts = Disps->frame(Displays::DHistDMut);
    DispABase* thickness = Disps->frame(Displays::DDMutVsA);
    DispABase* plane = Disps->frame(Displays::DM2M3);
    repaintOn(spectra, ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE);
    repaintOn(valenceCounts, ui.HgAFrom, ui.HgATo);
    repaintOn(thicknessCounts, ui.HgTFrom, ui.HgTTo);
    for (const AEPoint* row : std::as_const(EPoints)) {
        repaintOn(spectra, row->Energy, row->UseCB, row->LCFCB);
        repaintOn(plane, row->Mut1, row->Mut2, row->Mut3, row->Mut4, row->UseCB, row->VPointCB);
    }
    for (const ARefFile* row : std::as_const(Refs.RefRows)) {
        repaintOn(comparison, row->UseCB, row->Valence);
        repaintOn(valenceCounts, row->UseCB);
        repaintOn(thicknessCounts, row->UseCB);
        repaintOn(thickness, row->UseCB, row->Valence);
        repaintOn(plane, row->UseCB);
    }
    // The thickness plot takes the limits of the histograms for its first range
    // alone. A release in the comparison repaints nothing: its new colour is for
    // what comes next.
}

void FourPs::wireMapRepaints()
{
    for (const ARefFile* row : std::as_const(Refs.RefRows)) {
        // The valence of a pixel follows from the valid references in use.
        repaintOn(MapDisp, row->UseCB, row->Valence);
        connect(row->XafsFS, &AFileSelect::newFilePath, MapDisp, &DispMBase::update);
    }
    for (const AEPoint* row : std::as_const(EPoints)) {
        // A read that failed has left the row without a map.
        connect(row->FileSelect, &AFileSelect::newFilePath, DMapDisp, &DispMBase::update);
    }
}

namespace
{

constexpr int vertical = 0;

/// A set of vertical lines, one for each edit. The second and the third hold
/// offsets from the first.
MarkLines* edgeSet(const QList<QLineEdit*>& edits)
{
    auto* set = new MarkLines;
    for (QLineEdit* edit : edits) {
        auto* line = new MarkLine(edit, vertical);
        line->index = static_cast<int>(set->lines.size());
        line->relative = line->index == 1 || line->index == 2;
        line->baseIndex = line->relative ? 0 : -1;
        set->add(line);
    }
    return set;
}

} // namespace

void FourPs::makeMarkLines()
{
    const QList<QLineEdit*> edgeEdits{ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE};
    QList<QLineEdit*> allEdits = edgeEdits;
    for (const AEPoint* row : std::as_const(EPoints)) {
        allEdits.append(row->Energy);
    }
    MarkLines* allSpectra = edgeSet(allEdits);
    Disps->frame(Displays::DMuts)->DispA->markLines = allSpectra;
    MarkLines* singleSpectrum = edgeSet(edgeEdits);
    // Ref 3 and Ref 4 carry no lines, on purpose.
    for (const auto id : {Displays::DRef1, Displays::DRef2, Displays::DTarget}) {
        Disps->frame(id)->DispA->markLines = singleSpectrum;
    }
    connect(singleSpectrum, &MarkLines::moving, Disps, &Displays::update);
    for (const MarkLines* set : {allSpectra, singleSpectrum}) {
        connect(set, &MarkLines::moving, this, &FourPs::setEdge);
        connect(set, &MarkLines::newPos, this, &FourPs::setEdge);
        connect(set, &MarkLines::newPos, this, &FourPs::calcBoth);
    }
}
