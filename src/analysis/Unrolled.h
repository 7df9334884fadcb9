// Loops that are unrolled at compile time.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace analysis
{

/// Calls step(i) for each index i in [@p First, @p Last), where i is a
/// std::integral_constant.
///
/// The optimiser unrolls ordinary loops too late to keep a small matrix in registers.
/// This template is expanded early enough.
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
