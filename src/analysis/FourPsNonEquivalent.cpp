// The non-equivalent method on the target spectrum and on the stack of maps.

#include "panel/FourPs.h"

#include "analysis/NonEquivalentMap.h"
#include "analysis/NumberText.h"
#include "analysis/ReferenceSet.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/LineEditText.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

namespace neq = analysis::neq;

QList<const AMutE*> FourPs::usedSpectra(const analysis::ReferenceSet& refs) const
{
    QList<const AMutE*> spectra;
    for (int k = 0; k < refs.validCount(); ++k) {
        spectra.append(XafsFiles.at(refs.usedRow(k)));
    }
    return spectra;
}

analysis::NeqInputs FourPs::neqPrepare(const QList<analysis::PointState>& points,
                                       const analysis::ReferenceSet& refs) const
{
    return analysis::neqPrepare(points, refs, usedSpectra(refs), ui.SubPostEforRef->isChecked());
}

void FourPs::targetNEQ(bool victoreen, const QList<analysis::PointState>& points,
                       const analysis::ReferenceSet& refs)
{
    if (!usedSpectraMayRun(refs)) {
        return;
    }
    const analysis::NeqInputs inputs = neqPrepare(points, refs);
    const QList<double> t = analysis::neqTargetValues(*ui.TargetFile, inputs.energies,
                                                      ui.SubPostEforTarget->isChecked());
    const QList<double> values = analysis::neqTargetResult(victoreen, t, inputs);
    showShares(values, refs);
    const double valence = values.at(neq::valence);
    const QString text =
        tr("Result of NEQ :: ") + analysis::signedTexts(values.first(refs.validCount())) +
        tr(", Valence = %1, t = %2")
            .arg(analysis::signedText(valence), analysis::signedText(values.at(neq::totalDMut)));
    message(text);
    ui.CalcRes->setText(text);
    TargetV = values.at(neq::share);
    TargetT = valence;
}

// The general checks ask for the first two references alone. One without a
// spectrum further down would pass as a spectrum of zeros.
bool FourPs::usedSpectraMayRun(const analysis::ReferenceSet& refs)
{
    for (int k = 0; k < refs.validCount(); ++k) {
        if (!refs.used(k)->valid) {
            message(tr("Ref File %1 is not valid.").arg(refs.usedRow(k)));
            return false;
        }
    }
    return true;
}

void FourPs::showShares(const QList<double>& values, const analysis::ReferenceSet& refs)
{
    display::showNumber(ui.TargetDMut, values.at(neq::totalDMut));
    for (int k = 0; k < refs.validCount(); ++k) {
        const ARefFile* row = Refs.RefRows.at(refs.usedRow(k));
        display::showNumber(row->RatioDisp, values.at(neq::share + k));
        display::showNumber(row->AmountDisp, values.at(neq::dMut + k));
    }
}

void FourPs::mapNEQ(bool victoreen, const QList<analysis::PointState>& points,
                    const analysis::ReferenceSet& refs)
{
    if (refs.usedRow(1) < 0) {
        return; // a reference is missing, which its count has told already
    }
    analysis::NeqStack stack;
    stack.victoreen = victoreen;
    stack.inputs = neqPrepare(points, refs);
    for (const int row : std::as_const(stack.inputs.rowIndices)) {
        stack.maps.append(EPoints.at(row));
    }
    stack.base = EPoints.at(stack.inputs.baseRow);
    stack.memory = &m_calculationMemory;
    const QList<analysis::HistogramCounts*> shares(HistRatio.cbegin(), HistRatio.cend());
    const QList<analysis::HistogramCounts*> amounts(HistDMut.cbegin(), HistDMut.cend());
    m_latestMap.run(
        analysis::inputsOf(stack), BaseData,
        QList<analysis::HistogramCounts*>{HistV, HistT} + shares + amounts,
        [this] {
            startMapHistograms();
            startReferenceHistograms();
        },
        [&] {
            analysis::mapNonEquivalent(stack, BaseData, {HistV, HistT, shares, amounts});
        });
    Disps->update();
    MapDisp->Val->clear(); // it was a value of the result before
    MapDisp->clearScale();
    MapDisp->update();
}

void FourPs::startReferenceHistograms()
{
    for (int i = 0; i < HistRatio.size(); ++i) {
        HistRatio.at(i)->init();
        HistDMut.at(i)->init();
    }
}
