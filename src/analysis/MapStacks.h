// Builds the input of map calculations from the state of the panel.
#pragma once

#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"

namespace analysis
{

struct CalculationState;
struct CollectedRows;

/// The input of the four-point family for @p rows, which must have a V row. The map of
/// a row is used even if it is not loaded: it then has no pixels, or those that remain after a
/// failed load. The caller can set MapStack::memory to keep caches for the next run.
MapStack mapStack(const CalculationState& state, const CollectedRows& rows);

/// The input of the non-equivalent method for all used rows, with or without a loaded map.
/// The caller can set NeqStack::memory to keep caches for the next run.
///
/// @param state      must have at least one energy-point row
/// @param victoreen  selects the Victoreen background instead of the linear one
NeqStack neqStack(const CalculationState& state, bool victoreen);

} // namespace analysis
