// FourPs: the calculation on the target spectrum.

#include "panel/FourPs.h"

#include "analysis/CalculationPlan.h"
#include "analysis/CalculationState.h"
#include "analysis/TargetResult.h"
#include "display/LineEditText.h"
#include "display/WaitCursor.h"
#include "panel/Wording.h"
#include "rows/ARefFile.h"

using analysis::CalculationState;
using analysis::CollectedRows;
using analysis::TargetResult;
using analysis::Variant;

void FourPs::calcTarget()
{
    const display::WaitCursor cursor(isSpectrumWorkLong());
    const CalculationState state = m_inputs.calculationState();
    const analysis::CalculationPlan plan = analysis::planTarget(state);
    showMessages(plan.messages);
    if (!plan.variant) {
        return;
    }
    switch (*plan.variant) {
    case Variant::ThreePoints:
        target3ps(state, plan.rows);
        break;
    case Variant::ExactFourPoints:
        target4psExact(state, plan.rows);
        break;
    case Variant::LeastSquare:
        target4psLS(state, plan.rows);
        break;
    case Variant::NonEquivalentLinear:
        targetNEQ(false, state);
        break;
    case Variant::NonEquivalentVictoreen:
        targetNEQ(true, state);
        break;
    }
}

void FourPs::target3ps(const CalculationState& state, const CollectedRows& rows)
{
    showTargetResult(analysis::threePointsResult(state, rows));
}

void FourPs::target4psExact(const CalculationState& state, const CollectedRows& rows)
{
    showTargetResult(analysis::exactFourPointsResult(state, rows));
}

void FourPs::target4psLS(const CalculationState& state, const CollectedRows& rows)
{
    showTargetResult(analysis::leastSquareResult(state, rows));
}

void FourPs::showTargetResult(const TargetResult& result)
{
    const QString text = panel::Wording::of(result);
    ui.CalcRes->setText(text);
    if (result.isAnnounced()) {
        message(text);
    }
    TargetV = result.a;
    TargetT = result.valence;
}

void FourPs::targetNEQ(bool victoreen, const CalculationState& state)
{
    const TargetResult result = analysis::nonEquivalentResult(state, victoreen);
    display::showNumber(ui.TargetDMut, result.thickness);
    for (const analysis::ReferencePart& part : result.parts) {
        const ARefFile* row = Refs.RefRows.at(part.row);
        display::showNumber(row->RatioDisp, part.share);
        display::showNumber(row->AmountDisp, part.dMut);
    }
    // Here the message is written before the result field, unlike in showTargetResult().
    const QString text = panel::Wording::of(result);
    message(text);
    ui.CalcRes->setText(text);
    TargetV = result.a;
    TargetT = result.valence;
}
