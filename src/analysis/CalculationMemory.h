// What map calculations keep for the next one.
#pragma once

#include "data/AbsorbanceCache.h"
#include "data/ValueBlocks.h"

namespace analysis
{

/// Numbers and memory that one map calculation leaves to the next. Results do not
/// depend on it.
struct CalculationMemory {
    data::AbsorbanceCache absorbances;
    data::ValueBlocks values; ///< of the latest result
};

} // namespace analysis
