// The calculation on the stack of maps.

#include "panel/FourPs.h"

#include "analysis/CalculationPlan.h"
#include "analysis/CalculationState.h"
#include "analysis/MapStacks.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/WaitCursor.h"

#include <utility>

using analysis::CalculationState;
using analysis::CollectedRows;
using analysis::Variant;

namespace
{

void start(const QList<Histgram*>& histograms)
{
    for (Histgram* histogram : histograms) {
        histogram->init();
    }
}

// Not by clearScale(), after which the next paint would set limits of its own
// over those that the user chose. Without a scale that paint fits the view.
void fitView(DispMBase* window, const A2DData& map)
{
    if (window->DispA->hasScale && map.xNum > 0 && map.yNum > 0) {
        window->DispA->cc.setReal(0.0, 0.0, map.xNum, map.yNum);
    }
}

} // namespace

void FourPs::calcMap()
{
    const WaitCursor cursor(isReflexLong());
    const CalculationState state = calculationState();
    const analysis::CalculationPlan plan = analysis::planMap(state);
    showRefusals(plan.messages);
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
            start({HistV, HistT});
        },
        [&] { form(stack, BaseData, *HistV, *HistT); });
    // These methods know no shares of single references, and what the latest
    // non-equivalent run counted is not of this result.
    start(HistRatio + HistDMut);
    if (std::pair(BaseData.xNum, BaseData.yNum) != sizeBefore) {
        fitView(MapDisp, BaseData);
    }
    Disps->update();
    // The limits stay, and so does the view of a map of the same size.
    MapDisp->Val->clear(); // it was a value of the result before
    MapDisp->update();
}

void FourPs::mapNEQ(bool victoreen, const CalculationState& state)
{
    analysis::NeqStack stack = analysis::neqStack(state, victoreen);
    stack.memory = &m_calculationMemory;
    const QList<HistogramCounts*> shares(HistRatio.cbegin(), HistRatio.cend());
    const QList<HistogramCounts*> amounts(HistDMut.cbegin(), HistDMut.cend());
    m_latestMap.run(
        analysis::inputsOf(stack), BaseData,
        QList<HistogramCounts*>{HistV, HistT} + shares + amounts,
        [this] {
            start(QList<Histgram*>{HistV, HistT} + HistRatio + HistDMut);
        },
        [&] {
            analysis::mapNonEquivalent(stack, BaseData, {HistV, HistT, shares, amounts});
        });
    Disps->update();
    MapDisp->Val->clear(); // it was a value of the result before
    MapDisp->clearScale();
    MapDisp->update();
}
