// Loops over the unknowns of a small system, written out by the compiler.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace analysis
{

/// Calls @p step with each index from @p First to @p Last - 1, as a type whose
/// value is a constant.
///
/// A loop that the optimiser unrolls comes too late for it to keep the matrix
/// in registers; written out like this it does.
template <std::size_t First, std::size_t Last, class Step>
[[gnu::always_inline]] inline void forEachIndex(Step step)
{
    if constexpr (First < Last) {
        [&]<std::size_t... Offset>(std::index_sequence<Offset...>) __attribute__((always_inline))
        {
            (step(std::integral_constant<std::size_t, First + Offset>()), ...);
        }
        (std::make_index_sequence<Last - First>());
    }
}

} // namespace analysis
