// Whether a calculation runs, and how, or what refuses it.
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

/// What becomes of a target or map calculation.
struct CalculationPlan {
    QList<Message> messages;        ///< to be shown in this order
    std::optional<Variant> variant; ///< what runs; none: the earlier results stay
    CollectedRows rows;             ///< what a variant of the four-points family works on
};

/// The target calculation. The V row is asked for first, also for the
/// non-equivalent method, which has no use for it; then the first two used
/// references, the target, and the number of rows in use, with a map or without.
///
/// Too few valid references are told, but do not stop the checks. A reference that
/// is not there at all stops them without a message of its own: the count says it.
CalculationPlan planTarget(const CalculationState& state);

/// The map calculation. Only rows that hold a map are selected, the
/// non-equivalent method needs no V row, every used reference is checked, and
/// the target is not. Otherwise as planTarget().
CalculationPlan planMap(const CalculationState& state);

/// What becomes of a linear combination fit.
struct FitPlan {
    QList<Message> messages;       ///< to be shown in this order
    std::optional<FitRange> range; ///< where it runs; none: the earlier results stay
};

/// The fit: asks for its range, then for two valid references.
FitPlan planFit(const CalculationState& state);

} // namespace analysis
