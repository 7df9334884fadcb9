#include "panel/FourPs.h"

#include "analysis/CalculationChoice.h"
#include "analysis/ReferenceSet.h"
#include "analysis/ResultText.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/FittedEdit.h"
#include "display/Histgram.h"
#include "display/LineEditText.h"
#include "panel/LowRows.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

#include <QButtonGroup>
#include <QDir>

#include <algorithm>

namespace
{

constexpr int referenceCount = 4;
constexpr int energyRowCount = 8;
constexpr int headingRows = 2;

// Columns of the energy-point grid.
enum Column {
    NumberColumn,
    UseColumn,
    NonEquivalentColumn,
    FitColumn,
    EnergyColumn,
    FirstMutColumn,
    TargetColumn = FirstMutColumn + referenceCount,
    MapFileColumn,
    ShowMapColumn
};

} // namespace

FourPs::FourPs(QWidget* parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    display::setBlackText(ui.Message);
    m_messages.setBox(ui.Message);
    makeReferenceRows();
    makeFileRows();
    makeDisplays();
    makeMapWindows();
    groupMapRadios();
    ui.SaveFSelect->setMode(AFileSelect::SaveMode);
    makeEnergyRows();
    titleDialogs();
    layOutEnergyRows();
    new panel::LowRows(this);
    makeHistograms();
    SetDefaultEnergies();
    setEdge();
    changedSubBGTypeForRef(ui.SubPostEforRef->isChecked());
    changedSubBGTypeForTarget(ui.SubPostEforTarget->isChecked());
    groupNormRadios();
    ui.CConds->setVisible(ui.DispCondsB->isChecked());
    // "4 Points Meth." stays at its default on purpose: nothing enables it again.
    ui.CConds3->setEnabled(false);
    makeMarkLines();
    orderFocusChain();
    // Wired only now, so that setting the rows up above starts no calculation.
    wire();
    receiveNewDir(QDir::currentPath());
}

void FourPs::makeReferenceRows()
{
    for (int i = 0; i < referenceCount; ++i) {
        auto* row = new ARefFile;
        ui.RefFileLayout->addWidget(row);
        row->RefName->setText(tr("Ref %1").arg(i + 1));
        Refs.RefRows.append(row);
        XafsFiles.append(row->XafsFS);
        row->UseCB->setChecked(i < 2);
        row->Valence->setText(QString::number(i));
        row->Valence->setCursorPosition(0);
    }
    XafsFiles.append(ui.TargetFile);
}

void FourPs::makeFileRows()
{
    ui.DispFSelect->multi = true;
    ui.DispFSelect->setMode(AFileSelect::OpenMode);
    MultiEnergys = new display::FittedEdit;
    MultiEnergys->setObjectName(QStringLiteral("MultiEnergys"));
    MultiFiles = new AFileSelect;
    MultiFiles->setObjectName(QStringLiteral("MultiFiles"));
    MultiFiles->multi = true;
    MultiFiles->setMode(AFileSelect::OpenMode);
}

void FourPs::makeDisplays()
{
    Disps = new Displays;
    for (int i = 0; i < Refs.RefRows.size(); ++i) {
        XafsFiles.at(i)->attach(Disps->frame(static_cast<Displays::DispId>(Displays::DRef1 + i)));
    }
    ui.TargetFile->attach(Disps->frame(Displays::DTarget));
}

void FourPs::makeMapWindows()
{
    const auto window = [](const char* name, const QString& title) {
        auto* frame = new DispMBase;
        frame->setObjectName(QLatin1String(name));
        frame->Title->setText(title);
        frame->setWindowTitle(title);
        return frame;
    };
    MapDisp = window("MapDisp", tr("Result Map"));
    DMapDisp = window("DMapDisp", tr("Data Map"));
}

void FourPs::groupMapRadios()
{
    m_mapRadioGroup = new QButtonGroup;
    for (QAbstractButton* radio :
         {ui.MapValence, ui.MapAmount, ui.MapRatio1, ui.MapRatio2, ui.MapRatio3, ui.MapRatio4,
          ui.MapDMut1, ui.MapDMut2, ui.MapDMut3, ui.MapDMut4, ui.MapMut0, ui.MapC1, ui.MapC2}) {
        m_mapRadioGroup->addButton(radio);
    }
}

void FourPs::makeEnergyRows()
{
    for (int n = 1; n <= energyRowCount; ++n) {
        auto* row = new AEPoint;
        row->NumDisp->setText(QStringLiteral("%1:  ").arg(n));
        row->UseCB->setChecked(n <= 4);
        EPoints.append(row);
    }
}

void FourPs::titleDialogs()
{
    for (const ARefFile* row : std::as_const(Refs.RefRows)) {
        row->XafsFS->dialog->setWindowTitle(row->RefName->text());
    }
    ui.TargetFile->dialog->setWindowTitle(tr("Target"));
    ui.DispFSelect->dialog->setWindowTitle(tr("Disp. Only"));
    ui.SaveFSelect->dialog->setWindowTitle(tr("Write"));
    const QString maps = tr("Select 2D Map Data");
    MultiFiles->dialog->setWindowTitle(maps);
    for (int i = 0; i < EPoints.size(); ++i) {
        EPoints.at(i)->FileSelect->dialog->setWindowTitle(
            QStringLiteral("%1 %2").arg(maps).arg(i + 1));
    }
}

void FourPs::layOutEnergyRows()
{
    makeHeadings();
    m_mapRowGroup = new QButtonGroup;
    for (int i = 0; i < EPoints.size(); ++i) {
        placeEnergyRow(i);
        m_mapRowGroup->addButton(EPoints.at(i)->ShowMapB);
    }
    EPoints.first()->ShowMapB->setChecked(true);
    const int below = energyRowCount + headingRows;
    // In line with the fields above.
    MultiEnergys->setMaximumWidth(EPoints.first()->Energy->maximumWidth());
    ui.CLayout->addWidget(MultiEnergys, below, EnergyColumn, Qt::AlignCenter);
    ui.CLayout->addWidget(MultiFiles, below, MapFileColumn, Qt::AlignVCenter);
}

void FourPs::makeHeadings()
{
    const auto place = [this](const QString& text, int row, int column, int rows,
                              Qt::Alignment alignment) {
        auto* label = new QLabel(text);
        label->setAlignment(alignment);
        ui.CLayout->addWidget(label, row, column, rows, 1);
    };
    place(tr("No."), 0, NumberColumn, 2, Qt::AlignCenter);
    place(tr("Use"), 0, UseColumn, 2, Qt::AlignCenter);
    place(tr("Non"), 0, NonEquivalentColumn, 1, Qt::AlignCenter);
    place(tr("Equiv."), 1, NonEquivalentColumn, 1, Qt::AlignCenter);
    place(tr("LCF"), 0, FitColumn, 1, Qt::AlignCenter);
    place(tr("F.P."), 1, FitColumn, 1, Qt::AlignCenter);
    place(tr("Eng."), 0, EnergyColumn, 1, Qt::AlignCenter);
    place(tr("[eV]"), 1, EnergyColumn, 1, Qt::AlignCenter);
    const std::array<QString, 5> spectra{tr("Ref.1"), tr("Ref.2"), tr("Ref.3"), tr("Ref.4"),
                                         tr("Target")};
    for (int i = 0; i < static_cast<int>(spectra.size()); ++i) {
        place(tr("mut"), 0, FirstMutColumn + i, 1, Qt::AlignCenter);
        place(spectra.at(static_cast<std::size_t>(i)), 1, FirstMutColumn + i, 1, Qt::AlignCenter);
    }
    place(tr("Select 2D Map Data"), 0, MapFileColumn, 2, Qt::AlignLeft | Qt::AlignVCenter);
    place(tr("Show"), 0, ShowMapColumn, 1, Qt::AlignCenter);
    place(tr("Map"), 1, ShowMapColumn, 1, Qt::AlignCenter);
}

void FourPs::placeEnergyRow(int row)
{
    AEPoint* point = EPoints.at(row);
    const int line = row + headingRows;
    ui.CLayout->addWidget(new QLabel(tr("%1").arg(row + 1, 2)), line, NumberColumn,
                          Qt::AlignCenter);
    const std::array<std::pair<QWidget*, int>, 11> cells{{
        {point->UseCB, UseColumn},
        {point->VPointCB, NonEquivalentColumn},
        {point->LCFCB, FitColumn},
        {point->Energy, EnergyColumn},
        {point->Mut1, FirstMutColumn},
        {point->Mut2, FirstMutColumn + 1},
        {point->Mut3, FirstMutColumn + 2},
        {point->Mut4, FirstMutColumn + 3},
        {point->MutT, TargetColumn},
        {point->FileSelect, MapFileColumn},
        {point->ShowMapB, ShowMapColumn},
    }};
    for (const auto& [widget, column] : cells) {
        // The paths take all the width that there is; the others are centred.
        const bool path = column == MapFileColumn;
        ui.CLayout->addWidget(widget, line, column, path ? Qt::AlignVCenter : Qt::AlignCenter);
    }
}

void FourPs::makeHistograms()
{
    const auto valence = [this] {
        return new Histgram(ui.HgAFrom, ui.HgATo, ui.HgABoxes, ui.HgAAuto);
    };
    const auto thickness = [this] {
        return new Histgram(ui.HgTFrom, ui.HgTTo, ui.HgTBoxes, ui.HgTAuto);
    };
    HistV = valence();
    HistT = thickness();
    for (int i = 0; i < Refs.RefRows.size(); ++i) {
        HistRatio.append(valence());
        HistDMut.append(thickness());
    }
}

void FourPs::SetDefaultEnergies()
{
    EPoints.at(2)->VPointCB->setChecked(true);
    const std::array<double, 6> energiesEv{8313, 8381, 8390, 8404.5, 8460, 8475};
    for (std::size_t i = 0; i < energiesEv.size(); ++i) {
        display::showNumber(EPoints.at(static_cast<qsizetype>(i))->Energy, energiesEv.at(i));
    }
}

void FourPs::groupNormRadios()
{
    m_normGroup = new QButtonGroup;
    for (QAbstractButton* radio : {ui.NNone, ui.NBySubPre, ui.NByEJ, ui.NBy2Vics}) {
        m_normGroup->addButton(radio);
    }
}

void FourPs::orderFocusChain()
{
    // The rows come behind the form's own widgets, which were made before them;
    // a reader meets them further up.
    QList<QWidget*> references;
    QList<QWidget*> spectraAndProcessing;
    QList<QWidget*> energyRows;
    QList<QWidget*> actions;
    const auto isReference = [this](const QWidget* widget) {
        return std::any_of(Refs.RefRows.cbegin(), Refs.RefRows.cend(),
                           [widget](const ARefFile* row) { return row->isAncestorOf(widget); });
    };
    for (QWidget* widget = nextInFocusChain(); widget != this;
         widget = widget->nextInFocusChain()) {
        if (!isAncestorOf(widget) || widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        if (isReference(widget)) {
            references.append(widget);
        } else if (ui.FourPsFiles->isAncestorOf(widget)) {
            energyRows.append(widget);
        } else if (ui.FourPsAction->isAncestorOf(widget) || widget == ui.Message) {
            actions.append(widget);
        } else {
            spectraAndProcessing.append(widget);
        }
    }
    const QList<QWidget*> order = references + spectraAndProcessing + energyRows + actions;
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order.at(i - 1), order.at(i));
    }
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
    if (ui.NNone->isChecked()) {
        return 0;
    }
    if (ui.NBySubPre->isChecked()) {
        return 1;
    }
    if (ui.NByEJ->isChecked()) {
        return 3;
    }
    return ui.NBy2Vics->isChecked() ? 4 : 5;
}

int FourPs::CheckedMapRow() const
{
    for (int i = 0; i < EPoints.size(); ++i) {
        if (EPoints.at(i)->ShowMapB->isChecked()) {
            return i;
        }
    }
    return 0;
}

bool FourPs::ratioChecked(int n) const
{
    return isBoxOfUsedChecked(ratioBoxes(), n);
}

bool FourPs::dMutChecked(int n) const
{
    return isBoxOfUsedChecked({ui.HgdMut1, ui.HgdMut2, ui.HgdMut3, ui.HgdMut4}, n);
}

bool FourPs::isBoxOfUsedChecked(const ReferenceBoxes& boxes, int n) const
{
    const int row = references().usedRow(n);
    return row >= 0 && boxes.at(static_cast<std::size_t>(row))->isChecked();
}

FourPs::ReferenceBoxes FourPs::ratioBoxes() const
{
    return {ui.HgRatio1, ui.HgRatio2, ui.HgRatio3, ui.HgRatio4};
}

Histgram* FourPs::currentRatioHist() const
{
    Histgram* current = HistV;
    const ReferenceBoxes boxes = ratioBoxes();
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (boxes.at(i)->isChecked()) {
            current = HistRatio.at(static_cast<qsizetype>(i));
        }
    }
    return current;
}

QList<analysis::PointState> FourPs::pointStates() const
{
    QList<analysis::PointState> points;
    for (const AEPoint* row : EPoints) {
        analysis::PointState point;
        point.used = row->UseCB->isChecked();
        point.vPoint = row->VPointCB->isChecked();
        point.hasMap = row->loaded;
        row->energyAndMuts(0, 1, &point.energy, &point.mut[0], &point.mut[1]);
        row->energyAndMuts(2, 3, &point.energy, &point.mut[2], &point.mut[3]);
        point.mutT = display::numberIn(row->MutT);
        point.inFit = row->LCFCB->isChecked();
        points.append(point);
    }
    return points;
}

analysis::ReferenceSet FourPs::references() const
{
    QList<analysis::ReferenceState> states;
    for (const ARefFile* row : Refs.RefRows) {
        states.append({row->UseCB->isChecked(), row->XafsFS->valid, display::numberIn(row->Valence),
                       row->XafsFS->edgeJump()});
    }
    return analysis::ReferenceSet(states);
}

analysis::MethodRadios FourPs::methodRadios() const
{
    return {ui.TypeNonEquiv->isChecked(), ui.TypeTMKisExact->isChecked(),
            ui.TypeTMKisLS->isChecked(), ui.NonEquivBGLinear->isChecked()};
}

std::array<QAbstractButton*, 13> FourPs::recordBoxes() const
{
    return {ui.RecRatio1, ui.RecRatio2,  ui.RecRatio3, ui.RecRatio4, ui.RecDMut1,
            ui.RecDMut2,  ui.RecDMut3,   ui.RecDMut4,  ui.RecMut0,   ui.RecC1,
            ui.RecC2,     ui.RecValence, ui.RecAmount};
}

std::array<QAbstractButton*, 13> FourPs::mapRadios() const
{
    return {ui.MapRatio1, ui.MapRatio2,  ui.MapRatio3, ui.MapRatio4, ui.MapDMut1,
            ui.MapDMut2,  ui.MapDMut3,   ui.MapDMut4,  ui.MapMut0,   ui.MapC1,
            ui.MapC2,     ui.MapValence, ui.MapAmount};
}
