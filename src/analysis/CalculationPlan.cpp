#include "analysis/CalculationPlan.h"

#include "analysis/CalculationState.h"
#include "data/AMutE.h"

namespace analysis
{

namespace
{

constexpr int leastReferences = 2;

void countReferences(const ReferenceSet& references, QList<Message>& messages)
{
    if (references.validCount() < leastReferences) {
        messages.append({MessageId::FewReferences, references.validCount()});
    }
}

// The checks on references and target, in the order of their messages.
bool targetMayRun(const CalculationState& state, QList<Message>& messages)
{
    countReferences(state.references, messages);
    const ReferenceState* first = state.references.used(0);
    if (first && !first->valid) {
        messages.append({MessageId::FirstReferenceInvalid});
        return false;
    }
    const ReferenceState* second = state.references.used(1);
    if (second && !second->valid) {
        messages.append({MessageId::SecondReferenceInvalid});
        return false;
    }
    if (!first || !second) {
        return false;
    }
    if (!state.target->valid) {
        messages.append({MessageId::TargetInvalid});
        return false;
    }
    return true;
}

bool mapMayRun(const ReferenceSet& references, QList<Message>& messages)
{
    countReferences(references, messages);
    const int broken = references.rowWithoutValidCounterpart();
    if (broken >= 0) {
        messages.append({MessageId::ReferenceInvalid, broken});
        return false;
    }
    return true;
}

// The general checks of the target ask for the first two references alone. Without
// this one the others would be read as zeros.
bool usedSpectraMayRun(const ReferenceSet& references, QList<Message>& messages)
{
    for (int k = 0; k < references.validCount(); ++k) {
        if (!references.used(k)->valid) {
            messages.append({MessageId::ReferenceInvalid, references.usedRow(k)});
            return false;
        }
    }
    return true;
}

// The rows of a form of the four-points family. Several V rows may leave too few:
// all but the last belong to neither side.
void takeRows(const CalculationState& state, Variant form, CalculationPlan& plan)
{
    const bool exact = form == Variant::ExactFourPoints;
    plan.rows = exact ? collectRowsExact(state.points, state.references)
                      : collectRowsLS(state.points, state.references);
    const int needed = exact ? 4 : form == Variant::ThreePoints ? 3 : 1;
    if (plan.rows.usable() >= needed) {
        plan.variant = form;
    } else if (plan.rows.v.row >= 0) {
        plan.messages.append({MessageId::WrongCount, plan.rows.usable(), needed});
    }
    // Otherwise a reference is missing, which its count has told already.
}

bool isNonEquivalent(Variant variant)
{
    return variant == Variant::NonEquivalentLinear || variant == Variant::NonEquivalentVictoreen;
}

} // namespace

CalculationPlan planTarget(const CalculationState& state)
{
    CalculationPlan plan;
    const Selection selection = selectedRows(state.points);
    if (selection.vRow < 0) {
        plan.messages.append({MessageId::NoTargetVPoint});
        return plan;
    }
    if (!targetMayRun(state, plan.messages)) {
        return plan;
    }
    const Choice choice = chooseForTarget(state.radios, selection.count);
    if (!choice.variant) {
        plan.messages.append(choice.refusal);
    } else if (!isNonEquivalent(*choice.variant)) {
        takeRows(state, *choice.variant, plan);
    } else if (usedSpectraMayRun(state.references, plan.messages)) {
        plan.variant = choice.variant;
    }
    return plan;
}

CalculationPlan planMap(const CalculationState& state)
{
    CalculationPlan plan;
    const Selection selection = selectedMapRows(state.points);
    if (!state.radios.nonEquivalent && selection.vRow < 0) {
        plan.messages.append({MessageId::NoMapVPoint});
        return plan;
    }
    if (!mapMayRun(state.references, plan.messages)) {
        return plan;
    }
    const Choice choice =
        chooseForMap(state.radios, selection.count, state.references.validCount());
    if (!choice.variant) {
        plan.messages.append(choice.refusal);
    } else if (!isNonEquivalent(*choice.variant)) {
        takeRows(state, *choice.variant, plan);
    } else if (state.references.usedRow(1) >= 0) { // their count has told otherwise
        plan.variant = choice.variant;
    }
    return plan;
}

FitPlan planFit(const CalculationState& state)
{
    const FitRange range = fitRange(state.points);
    if (!range.isSelected()) {
        return {{{MessageId::NoFitRange}}, std::nullopt};
    }
    const int valid = state.references.validCount();
    if (valid < leastReferences) {
        return {{{MessageId::FewFitReferences, valid}}, std::nullopt};
    }
    return {{}, range};
}

} // namespace analysis
