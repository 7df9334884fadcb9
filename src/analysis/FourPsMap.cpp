// FourPs: the calculation on the stack of maps.

#include "panel/FourPs.h"

#include "analysis/CalculationPlan.h"
#include "analysis/CalculationState.h"
#include "analysis/MapStacks.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/WaitCursor.h"

#include <utility>

using analysis::CalculationState;
using analysis::CollectedRows;
using analysis::Variant;

namespace
{

void initHistograms(const QList<Histgram*>& histograms)
{
    for (Histgram* histogram : histograms) {
        histogram->init();
    }
}

} // namespace

void FourPs::calcMap()
{
    const display::WaitCursor cursor(isRecalculationLong());
    const CalculationState state = m_inputs.calculationState();
    const analysis::CalculationPlan plan = analysis::planMap(state);
    showMessages(plan.messages);
    if (!plan.variant) {
        return;
    }
    switch (*plan.variant) {
    case Variant::ThreePoints:
        map3ps(state, plan.rows);
        break;
    case Variant::ExactFourPoints:
        map4psExact(state, plan.rows);
        break;
    case Variant::LeastSquare:
        map4psLS(state, plan.rows);
        break;
    case Variant::NonEquivalentLinear:
        mapNEQ(false, state);
        break;
    case Variant::NonEquivalentVictoreen:
        mapNEQ(true, state);
        break;
    }
}

void FourPs::map3ps(const CalculationState& state, const CollectedRows& rows)
{
    runMapForm(Variant::ThreePoints, analysis::mapThreePoints, analysis::mapStack(state, rows));
}

void FourPs::map4psExact(const CalculationState& state, const CollectedRows& rows)
{
    runMapForm(Variant::ExactFourPoints, analysis::mapExactFourPoints,
               analysis::mapStack(state, rows));
}

void FourPs::map4psLS(const CalculationState& state, const CollectedRows& rows)
{
    runMapForm(Variant::LeastSquare, analysis::mapLeastSquare, analysis::mapStack(state, rows));
}

void FourPs::runMapForm(Variant variant, MapForm form, analysis::MapStack stack)
{
    stack.memory = &m_calculationMemory;
    const std::pair sizeBefore(BaseData.xNum, BaseData.yNum);
    m_latestMap.run(
        analysis::inputsOf(variant, stack), BaseData, {HistV, HistT},
        [this] {
            initHistograms({HistV, HistT});
        },
        [&] { form(stack, BaseData, *HistV, *HistT); });
    // The four-point family does not fill the histograms of single references, so the
    // counts of an earlier non-equivalent run are cleared.
    initHistograms(HistRatio + HistDMut);
    Disps->update();
    m_resultMap.showNewResult(std::pair(BaseData.xNum, BaseData.yNum) != sizeBefore);
}

void FourPs::mapNEQ(bool victoreen, const CalculationState& state)
{
    analysis::NeqStack stack = analysis::neqStack(state, victoreen);
    stack.memory = &m_calculationMemory;
    const QList<analysis::HistogramCounts*> shares(HistRatio.cbegin(), HistRatio.cend());
    const QList<analysis::HistogramCounts*> amounts(HistDMut.cbegin(), HistDMut.cend());
    m_latestMap.run(
        analysis::inputsOf(stack), BaseData,
        QList<analysis::HistogramCounts*>{HistV, HistT} + shares + amounts,
        [this] {
            initHistograms(QList<Histgram*>{HistV, HistT} + HistRatio + HistDMut);
        },
        [&] {
            analysis::mapNonEquivalent(stack, BaseData, {HistV, HistT, shares, amounts});
        });
    Disps->update();
    m_resultMap.showAndFitNewResult();
}
