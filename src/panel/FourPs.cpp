#include "panel/FourPs.h"

#include "analysis/CalculationMessage.h"
#include "analysis/NeqColumns.h"
#include "analysis/ReferenceSet.h"
#include "display/DispMBase.h"
#include "display/FittedEdit.h"
#include "display/Histgram.h"
#include "display/LineEditText.h"
#include "panel/EnergyGrid.h"
#include "panel/FocusOrder.h"
#include "panel/LowRows.h"
#include "panel/Repaints.h"
#include "panel/Wiring.h"
#include "panel/Wording.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

#include <QButtonGroup>
#include <QDir>

#include <array>

namespace
{

constexpr int referenceCount = analysis::neq::references;
constexpr int energyRowCount = 8;

void makeReferenceRows(FourPs& panel)
{
    for (int i = 0; i < referenceCount; ++i) {
        auto* row = new ARefFile;
        panel.ui.RefFileLayout->addWidget(row);
        row->RefName->setText(FourPs::tr("Ref %1").arg(i + 1));
        panel.Refs.RefRows.append(row);
        panel.XafsFiles.append(row->XafsFS);
        row->UseCB->setChecked(i < 2);
        row->Valence->setText(QString::number(i));
        row->Valence->setCursorPosition(0);
    }
    panel.XafsFiles.append(panel.ui.TargetFile);
}

void makeFileRows(FourPs& panel)
{
    panel.ui.DispFSelect->multi = true;
    panel.ui.DispFSelect->setMode(AFileSelect::OpenMode);
    panel.MultiEnergys = new display::FittedEdit;
    panel.MultiEnergys->setObjectName(QStringLiteral("MultiEnergys"));
    panel.MultiFiles = new AFileSelect;
    panel.MultiFiles->setObjectName(QStringLiteral("MultiFiles"));
    panel.MultiFiles->multi = true;
    panel.MultiFiles->setMode(AFileSelect::OpenMode);
}

void makeDisplays(FourPs& panel)
{
    panel.Disps = new Displays;
    for (int i = 0; i < referenceCount; ++i) {
        const auto id = static_cast<Displays::DispId>(Displays::DRef1 + i);
        panel.XafsFiles.at(i)->attach(panel.Disps->frame(id));
    }
    panel.ui.TargetFile->attach(panel.Disps->frame(Displays::DTarget));
}

DispMBase* newMapWindow(const QString& name, const QString& title)
{
    auto* window = new DispMBase;
    window->setObjectName(name);
    window->Title->setText(title);
    window->setWindowTitle(title);
    return window;
}

/// Makes an exclusive group of @p buttons. The group is never deleted.
QButtonGroup* newGroup(const QList<QAbstractButton*>& buttons)
{
    auto* group = new QButtonGroup;
    for (QAbstractButton* button : buttons) {
        group->addButton(button);
    }
    return group;
}

void makeEnergyRows(FourPs& panel)
{
    for (int n = 1; n <= energyRowCount; ++n) {
        auto* row = new AEPoint;
        row->NumDisp->setText(QStringLiteral("%1:  ").arg(n));
        row->UseCB->setChecked(n <= 4);
        panel.EPoints.append(row);
    }
}

void titleDialogs(FourPs& panel)
{
    for (const ARefFile* row : std::as_const(panel.Refs.RefRows)) {
        row->XafsFS->dialog->setWindowTitle(row->RefName->text());
    }
    panel.ui.TargetFile->dialog->setWindowTitle(FourPs::tr("Target"));
    panel.ui.DispFSelect->dialog->setWindowTitle(FourPs::tr("Disp. Only"));
    panel.ui.SaveFSelect->dialog->setWindowTitle(FourPs::tr("Write"));
    const QString maps = FourPs::tr("Select 2D Map Data");
    panel.MultiFiles->dialog->setWindowTitle(maps);
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        panel.EPoints.at(i)->FileSelect->dialog->setWindowTitle(
            QStringLiteral("%1 %2").arg(maps).arg(i + 1));
    }
}

void layOutEnergyRows(FourPs& panel)
{
    panel::EnergyGrid grid(panel.ui.CLayout);
    grid.placeHeadings();
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        grid.placeRow(*panel.EPoints.at(i), i);
    }
    // The field is at most as wide as the energy fields above it.
    panel.MultiEnergys->setMaximumWidth(panel.EPoints.first()->Energy->maximumWidth());
    grid.placeFieldsForAll(panel.MultiEnergys, panel.MultiFiles, energyRowCount);
}

QList<QAbstractButton*> mapRowButtons(const FourPs& panel)
{
    QList<QAbstractButton*> buttons;
    for (const AEPoint* row : panel.EPoints) {
        buttons.append(row->ShowMapB);
    }
    return buttons;
}

void makeHistograms(FourPs& panel)
{
    const Ui_FourPs& ui = panel.ui;
    const auto valence = [&ui] {
        return new Histgram(ui.HgAFrom, ui.HgATo, ui.HgABoxes, ui.HgAAuto);
    };
    const auto thickness = [&ui] {
        return new Histgram(ui.HgTFrom, ui.HgTTo, ui.HgTBoxes, ui.HgTAuto);
    };
    panel.HistV = valence();
    panel.HistT = thickness();
    for (int i = 0; i < referenceCount; ++i) {
        panel.HistRatio.append(valence());
        panel.HistDMut.append(thickness());
    }
}

void SetDefaultEnergies(FourPs& panel)
{
    panel.EPoints.at(2)->VPointCB->setChecked(true);
    const std::array<double, 6> energiesEv{8313, 8381, 8390, 8404.5, 8460, 8475};
    for (std::size_t i = 0; i < energiesEv.size(); ++i) {
        display::showNumber(panel.EPoints.at(static_cast<qsizetype>(i))->Energy, energiesEv.at(i));
    }
}

} // namespace

FourPs::FourPs(QWidget* parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    display::setBlackText(ui.Message);
    m_messages.setBox(ui.Message);
    makeReferenceRows(*this);
    makeFileRows(*this);
    makeDisplays(*this);
    MapDisp = newMapWindow(QStringLiteral("MapDisp"), tr("Result Map"));
    DMapDisp = newMapWindow(QStringLiteral("DMapDisp"), tr("Data Map"));
    m_widgets.mapRadios = newGroup({ui.MapValence, ui.MapAmount, ui.MapRatio1, ui.MapRatio2,
                                    ui.MapRatio3, ui.MapRatio4, ui.MapDMut1, ui.MapDMut2,
                                    ui.MapDMut3, ui.MapDMut4, ui.MapMut0, ui.MapC1, ui.MapC2});
    ui.SaveFSelect->setMode(AFileSelect::SaveMode);
    makeEnergyRows(*this);
    titleDialogs(*this);
    layOutEnergyRows(*this);
    m_widgets.mapRows = newGroup(mapRowButtons(*this));
    EPoints.first()->ShowMapB->setChecked(true);
    new panel::LowRows(this);
    makeHistograms(*this);
    listWidgets();
    SetDefaultEnergies(*this);
    setEdge();
    changedSubBGTypeForRef(ui.SubPostEforRef->isChecked());
    changedSubBGTypeForTarget(ui.SubPostEforTarget->isChecked());
    m_widgets.normRadios = newGroup({ui.NNone, ui.NBySubPre, ui.NByEJ, ui.NBy2Vics});
    ui.CConds->setVisible(ui.DispCondsB->isChecked());
    // On purpose the user cannot change the default choice of "4 Points Meth.": no code enables
    // the buttons again.
    ui.CConds3->setEnabled(false);
    // Connected last, so that no signal of the initialisation above starts a calculation.
    // (changedSubBGTypeForTarget() calls calcBoth() directly; without spectra, every calculation
    // is refused.)
    const panel::Wiring<FourPs> wiring(m_widgets, this);
    wiring.connectMarks(panel::makeEdgeMarks(m_widgets));
    panel::orderFocusChain(this, m_widgets);
    wiring.connectAll();
    panel::connectRepaints(m_widgets);
    receiveNewDir(QDir::currentPath());
}

// Sets the pointers in m_widgets, except those to the groups of buttons: the constructor sets
// them when it creates the groups.
void FourPs::listWidgets()
{
    m_widgets.form = &ui;
    m_widgets.references = &Refs;
    m_widgets.spectra = XafsFiles;
    m_widgets.points = EPoints;
    m_widgets.energyList = MultiEnergys;
    m_widgets.mapFiles = MultiFiles;
    m_widgets.graphs = Disps;
    m_widgets.resultMap = MapDisp;
    m_widgets.dataMap = DMapDisp;
}

void FourPs::focusFirstStep()
{
    Refs.RefRows.first()->XafsFS->SelectB->setFocus();
}

void FourPs::message(const QString& text)
{
    m_messages.append(text.simplified());
}

int FourPs::NormMode() const
{
    return m_inputs.normMode();
}

int FourPs::CheckedMapRow() const
{
    return m_inputs.checkedMapRow();
}

bool FourPs::ratioChecked(int n) const
{
    return m_inputs.isRatioShown(m_inputs.references(), n);
}

bool FourPs::dMutChecked(int n) const
{
    return m_inputs.isDMutShown(m_inputs.references(), n);
}

Histgram* FourPs::currentRatioHist() const
{
    const int row = m_inputs.shownRatioRow();
    return row < 0 ? HistV : HistRatio.at(row);
}

void FourPs::showMessages(const QList<analysis::Message>& messages)
{
    for (const analysis::Message& each : messages) {
        message(panel::Wording::of(each));
    }
}
