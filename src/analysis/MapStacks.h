// The stacks of maps that a calculation works on.
#pragma once

#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"

namespace analysis
{

struct CalculationState;
struct CollectedRows;

/// The maps of @p rows for a form of the four-points family; of a row without a
/// map it has an empty one. Nothing is kept for the next run unless the caller
/// names its memory.
MapStack mapStack(const CalculationState& state, const CollectedRows& rows);

/// The maps of all rows in use for the non-equivalent method, likewise.
NeqStack neqStack(const CalculationState& state, bool victoreen);

} // namespace analysis
