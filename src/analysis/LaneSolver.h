// Gaussian elimination with partial pivoting for four small systems side by side:
// the fast path for loops over pixels.
//
// Each system gets the same operations in the same order as in SmallMatrix, so the
// results are bit-identical, if all NaN count as equal.
#pragma once

#include "analysis/Elimination.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace analysis
{

namespace detail
{

/// Swaps @p a and @p b in the lanes where @p wanted is set.
[[gnu::always_inline]] inline void swapIf(const LaneBits& wanted, Lanes& a, Lanes& b)
{
    const Lanes first = a;
    const Lanes second = b;
    a = wanted ? second : first;
    b = wanted ? first : second;
}

} // namespace detail

/// Four systems a x = b of size @p N, which the elimination transforms in place.
template <std::size_t N>
struct LaneSystem {
    std::array<std::array<Lanes, N>, N> a;
    std::array<Lanes, N> b;

    /// The pivot row of column @p C in each lane; see pivotPosition().
    template <std::size_t C>
    [[gnu::always_inline]] LaneBits pivotRow() const
    {
        return pivotPosition<LaneBits>(C, UnrolledRange<C, N>(), a);
    }

    /// Swaps row @p C with the pivot row @p row of each lane. Columns before @p C are
    /// not swapped, because no later step reads them.
    template <std::size_t C>
    [[gnu::always_inline]] void swapPivotRow(const LaneBits& row)
    {
        forEachIndex<C + 1, N>([&](auto k) __attribute__((always_inline)) {
            const LaneBits wanted = row == std::int64_t{k};
            forEachIndex<C, N>([&](auto j) __attribute__((always_inline)) {
                detail::swapIf(wanted, a[C][j], a[k][j]);
            });
            detail::swapIf(wanted, b[C], b[k]);
        });
    }

    /// Eliminates column @p C below the diagonal, in @c a and @c b. The zeros are not
    /// written, because nothing reads them.
    template <std::size_t C>
    [[gnu::always_inline]] void eliminate()
    {
        eliminateColumn(
            C, UnrolledRange<C + 1, N>(),
            a, [&](auto k, const Lanes& factor) __attribute__((always_inline)) {
                b[k] -= b[C] * factor;
            });
    }
};

/// Solves four systems a x = b in place: element k of b becomes the unknown of column k,
/// and a is overwritten.
///
/// Results are bit-identical to luDecompose(), forwardSolve() and backSolve() of
/// SmallMatrix, if all NaN count as equal. Pivots are chosen in the same way. A pivot of
/// 0 is replaced by 1.0 as a divisor of the elimination, but not in the back
/// substitution, so the solution then contains infinities or NaN, and there is no error.
///
/// Unlike in SmallMatrix, rows are swapped: each lane has its own pivots, so the lanes cannot
/// share a permutation.
template <std::size_t N>
[[gnu::always_inline]] inline void solveLanes(LaneSystem<N>& system)
{
    forEachIndex<0, N>([&](auto c) __attribute__((always_inline)) {
        system.template swapPivotRow<c>(system.template pivotRow<c>());
        system.template eliminate<c>();
    });
    substituteBack(system.a, system.b);
}

} // namespace analysis
