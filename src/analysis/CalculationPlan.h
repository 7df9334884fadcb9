// Checks before a calculation: whether and how it runs, or why it is refused.
#pragma once

#include "analysis/CalculationChoice.h"
#include "analysis/CalculationMessage.h"
#include "analysis/LinearFit.h"
#include "analysis/RowCollection.h"

#include <QList>

#include <optional>

namespace analysis
{

struct CalculationState;

/// The outcome of the checks before a target or map calculation.
struct CalculationPlan {
    QList<Message> messages;        ///< in the order in which to show them
    std::optional<Variant> variant; ///< the variant to run; if empty, keep the earlier results
    CollectedRows rows;             ///< input of the four-point family; empty for other variants
};

/// Plans the target calculation.
///
/// The order of the checks is: V row, first two used references, target, number of used
/// rows (with or without a map). Last, the four-point family needs enough rows after
/// surplus V rows are dropped; for the non-equivalent method, all references that the fit
/// uses must be valid. A V row is required even for the non-equivalent method, which does
/// not use it.
///
/// If fewer than two references are used and valid, the warning MessageId::FewReferences
/// is added, and the checks continue. A missing first or second reference stops the checks
/// without another message, because the warning already reports it.
CalculationPlan planTarget(const CalculationState& state);

/// Plans the map calculation.
///
/// The checks are the same as in planTarget(), with these differences: rows without a map
/// do not count as selected (but CalculationPlan::rows contains them), the non-equivalent
/// method needs no V row, its minimum number of rows depends on the number of references
/// (see chooseForMap()), every used reference is checked (see
/// ReferenceSet::rowWithoutValidCounterpart()), and the target is not checked.
CalculationPlan planMap(const CalculationState& state);

/// The outcome of the checks before a linear combination fit.
struct FitPlan {
    QList<Message> messages;       ///< in the order in which to show them
    std::optional<FitRange> range; ///< energies to fit; if empty, keep the earlier results
};

/// Plans the linear combination fit: checks the energy range first, then that two
/// or more references are used and valid.
FitPlan planFit(const CalculationState& state);

} // namespace analysis
