#include "analysis/CalculationPlan.h"

#include "analysis/CalculationState.h"
#include "data/AMutE.h"

namespace analysis
{

namespace
{

constexpr int minReferences = 2;

void countReferences(const ReferenceSet& references, QList<Message>& messages)
{
    if (references.validCount() < minReferences) {
        messages.append({MessageId::FewReferences, references.validCount()});
    }
}

// Whether the references and the target allow a calculation. The first invalid spectrum
// ends the checks with a message. A missing reference ends them without another message,
// because countReferences() has already reported it.
bool targetCanRun(const CalculationState& state, QList<Message>& messages)
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

bool mapCanRun(const ReferenceSet& references, QList<Message>& messages)
{
    countReferences(references, messages);
    const int invalidRow = references.rowWithoutValidCounterpart();
    if (invalidRow >= 0) {
        messages.append({MessageId::ReferenceInvalid, invalidRow});
        return false;
    }
    return true;
}

// targetCanRun() checks the first two references only. Without this check a later
// invalid reference would enter the fit as zeros.
bool usedSpectraCanRun(const ReferenceSet& references, QList<Message>& messages)
{
    for (int k = 0; k < references.validCount(); ++k) {
        if (!references.used(k)->valid) {
            messages.append({MessageId::ReferenceInvalid, references.usedRow(k)});
            return false;
        }
    }
    return true;
}

// Collects the rows for a form of the four-point family. If several rows are marked as
// V point, all but the last are dropped, so too few rows can remain.
void planRows(const CalculationState& state, Variant form, CalculationPlan& plan)
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
    // Otherwise a reference is missing, and countReferences() has already reported it.
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
    if (!targetCanRun(state, plan.messages)) {
        return plan;
    }
    const Choice choice = chooseForTarget(state.radios, selection.count);
    if (!choice.variant) {
        plan.messages.append(choice.refusal);
    } else if (!isNonEquivalent(*choice.variant)) {
        planRows(state, *choice.variant, plan);
    } else if (usedSpectraCanRun(state.references, plan.messages)) {
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
    if (!mapCanRun(state.references, plan.messages)) {
        return plan;
    }
    const Choice choice =
        chooseForMap(state.radios, selection.count, state.references.validCount());
    if (!choice.variant) {
        plan.messages.append(choice.refusal);
    } else if (!isNonEquivalent(*choice.variant)) {
        planRows(state, *choice.variant, plan);
    } else if (state.references.usedRow(1) >= 0) { // a missing reference is already reported
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
    if (valid < minReferences) {
        return {{{MessageId::FewFitReferences, valid}}, std::nullopt};
    }
    return {{}, range};
}

} // namespace analysis
