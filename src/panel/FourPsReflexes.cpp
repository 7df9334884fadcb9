// Slots of the panel that react to changes of the input, and the recalculation.

#include "panel/FourPs.h"

#include "analysis/ReferenceSet.h"
#include "analysis/WorkEstimate.h"
#include "data/TextItems.h"
#include "display/Displays.h"
#include "display/LineEditText.h"
#include "display/WaitCursor.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

#include <algorithm>
#include <memory>

namespace
{

/// Shows the mut of @p spectrum at @p energy (eV) in the field @p cell. Clears the field if
/// the spectrum has no value at this energy.
void refreshCell(QLineEdit* cell, const AXafsFileSelect* spectrum, double energy)
{
    double mut = 0.0;
    if (spectrum->MutAt(energy, &mut)) {
        display::showNumber(cell, mut);
    } else {
        cell->clear();
    }
}

analysis::Work spectrumWork(const QList<AXafsFileSelect*>& spectra,
                            const QList<AMutE*>& displayOnly)
{
    analysis::Work work;
    for (const AMutE* spectrum : QList<AMutE*>(spectra.cbegin(), spectra.cend()) + displayOnly) {
        work.points += static_cast<double>(spectrum->points.size());
    }
    return work;
}

} // namespace

void FourPs::noticedNewEdge(double e)
{
    display::showNumber(ui.EdgeE, e);
    setEdge();
}

void FourPs::setEdge()
{
    const display::WaitCursor cursor(isRecalculationLong());
    const panel::MessageLines::Batch lines(&m_messages);
    const panel::InputReader::Edge edge = m_inputs.edge();
    QList<AMutE*> spectra(XafsFiles.cbegin(), XafsFiles.cend());
    spectra.append(DispMuts);
    for (AMutE* spectrum : std::as_const(spectra)) {
        spectrum->preEdgeEnd = edge.preEdgeEnd;
        spectrum->edgeEnergy = edge.energy;
        spectrum->postEdgeStart = edge.postEdgeStart;
        spectrum->fitLines();
    }
    for (int i = 0; i < Refs.RefRows.size(); ++i) {
        receiveNewRef(i);
    }
    Disps->update();
}

void FourPs::dispCalcConditions(bool f)
{
    ui.CConds->setVisible(f);
}

void FourPs::changedSubBGTypeForRef(bool f)
{
    const display::WaitCursor cursor(isRecalculationLong());
    const panel::MessageLines::Batch lines(&m_messages);
    for (AEPoint* row : std::as_const(EPoints)) {
        row->subBGForRef = f;
    }
    for (const ARefFile* row : std::as_const(Refs.RefRows)) {
        row->XafsFS->subPost = f;
    }
    for (int i = 0; i < Refs.RefRows.size(); ++i) {
        receiveNewRef(i);
    }
}

void FourPs::changedSubBGTypeForTarget(bool f)
{
    const display::WaitCursor cursor(isRecalculationLong());
    const panel::MessageLines::Batch lines(&m_messages);
    for (AEPoint* row : std::as_const(EPoints)) {
        row->subBGForTarget = f;
    }
    ui.TargetFile->subPost = f;
    receiveNewTarget(QString());
    calcBoth();
}

void FourPs::removeAFile()
{
    const int current = ui.SelectedFs->currentIndex();
    if (current < 0 || current >= DispMuts.size()) {
        return;
    }
    ui.SelectedFs->removeItem(current);
    delete DispMuts.takeAt(current);
}

void FourPs::receiveNewDir(QString dir)
{
    // A file row reports an empty directory if the directory of the file does not exist, for
    // example on a network share that is not mounted.
    if (dir.isEmpty()) {
        return;
    }
    for (const AEPoint* row : std::as_const(EPoints)) {
        row->FileSelect->setDir(dir);
    }
    for (AXafsFileSelect* row : std::as_const(XafsFiles)) {
        row->setDir(dir);
    }
    // On purpose, the directory of the save row is not changed.
    ui.DispFSelect->setDir(dir);
    MultiFiles->setDir(dir);
}

void FourPs::receiveNewEnergy(double)
{
    const auto* row = qobject_cast<AEPoint*>(sender());
    if (!row || !EPoints.contains(row)) {
        return;
    }
    const double energy = display::numberIn(row->Energy);
    for (int j = 0; j < Refs.RefRows.size(); ++j) {
        refreshCell(row->mutEdits.at(j), XafsFiles.at(j), energy);
    }
    refreshCell(row->MutT, ui.TargetFile, energy);
    Disps->update();
}

void FourPs::receiveNewFile(QString fname)
{
    const display::WaitCursor cursor;
    const panel::MessageLines::Batch lines(&m_messages);
    const qsizetype index = XafsFiles.indexOf(qobject_cast<AXafsFileSelect*>(sender()));
    if (index >= 0 && index < Refs.RefRows.size()) {
        receiveNewRef(static_cast<int>(index));
    } else if (index == Refs.RefRows.size()) {
        receiveNewTarget(fname);
    }
    calcBoth();
    // If a reference row has no spectrum, and the map calculation and the fit are refused, the
    // calls above repaint nothing. The plot of the row would still show the previous spectrum.
    Disps->update();
}

void FourPs::receiveNewRef(int n)
{
    if (n >= 0 && n < Refs.RefRows.size() && XafsFiles.at(n)->valid) {
        RefreshRefColumn(n);
    }
}

void FourPs::receiveNewRef1(QString)
{
    receiveNewRef(0);
}

void FourPs::receiveNewRef2(QString)
{
    receiveNewRef(1);
}

void FourPs::receiveNewRef3(QString)
{
    receiveNewRef(2);
}

void FourPs::receiveNewRef4(QString)
{
    receiveNewRef(3);
}

void FourPs::receiveNewTarget(QString)
{
    for (const AEPoint* row : std::as_const(EPoints)) {
        refreshCell(row->MutT, ui.TargetFile, display::numberIn(row->Energy));
    }
    Disps->update();
}

void FourPs::receiveNewDispFiles(QStringList paths)
{
    const display::WaitCursor cursor;
    const panel::MessageLines::Batch lines(&m_messages);
    for (const QString& path : std::as_const(paths)) {
        auto spectrum = std::make_unique<AMutE>();
        if (!spectrum->readFile(path)) {
            continue;
        }
        DispMuts.append(spectrum.release());
        ui.SelectedFs->addItem(path);
        setEdge();
        Disps->update();
    }
}

void FourPs::receiveNewPaths(QStringList paths)
{
    const display::WaitCursor cursor;
    const qsizetype count = qMin(paths.size(), EPoints.size());
    for (qsizetype k = 0; k < count; ++k) {
        EPoints.at(k)->FileSelect->newFile(paths.at(k));
    }
}

void FourPs::calcBoth()
{
    const display::WaitCursor cursor(isRecalculationLong());
    const panel::MessageLines::Batch lines(&m_messages);
    SetHistogramRanges();
    calcMap();
    calcTarget();
    lcf();
}

bool FourPs::isSpectrumWorkLong() const
{
    return analysis::mayTakeLong(spectrumWork(XafsFiles, DispMuts));
}

bool FourPs::isRecalculationLong() const
{
    analysis::Work work = spectrumWork(XafsFiles, DispMuts);
    for (const AEPoint* row : EPoints) {
        if (row->UseCB->isChecked() && row->loaded) {
            work.pixels = std::max(work.pixels, 1.0 * row->xNum * row->yNum);
            ++work.rows;
        }
    }
    return analysis::mayTakeLong(work);
}

void FourPs::newMultiEnergys()
{
    const QStringList energies =
        data::energiesOfList(MultiEnergys->text(), static_cast<int>(EPoints.size()));
    for (qsizetype i = 0; i < energies.size(); ++i) {
        EPoints.at(i)->Energy->setText(energies.at(i));
    }
}

void FourPs::SetHistogramRanges()
{
    const analysis::ReferenceSet refs = m_inputs.references();
    const auto show = [](QLineEdit* from, QLineEdit* to, const analysis::Limits& limits) {
        display::showNumber(from, limits.low);
        display::showNumber(to, limits.high);
    };
    if (ui.HgAAuto->isChecked()) {
        show(ui.HgAFrom, ui.HgATo, analysis::valenceLimits(refs));
    }
    if (ui.HgTAuto->isChecked()) {
        show(ui.HgTFrom, ui.HgTTo, analysis::jumpHistogramLimits(refs));
    }
}

void FourPs::RefreshRefColumn(int n)
{
    for (const AEPoint* row : std::as_const(EPoints)) {
        const double energy = display::numberIn(row->Energy);
        if (energy > 0) {
            refreshCell(row->mutEdits.at(n), XafsFiles.at(n), energy);
        }
    }
    calcBoth();
    Disps->update();
}
