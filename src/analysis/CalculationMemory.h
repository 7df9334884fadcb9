// Data that one map calculation keeps for the next.
#pragma once

#include "data/AbsorbanceCache.h"
#include "data/ValueBlocks.h"

namespace analysis
{

/// Cached absorbances and reusable memory, passed from one map calculation to the
/// next. They do not affect the results.
struct CalculationMemory {
    data::AbsorbanceCache absorbances;
    data::ValueBlocks values; ///< memory of the latest result's value lists
};

} // namespace analysis
