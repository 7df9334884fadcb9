// Gaussian elimination with partial pivoting for four small systems side by side,
// for loops over pixels.
//
// It may differ from the matrix library in form, since it makes the same
// operations in the same order for each system. What the library does by a
// branch is done here by a choice between two values, which has equal bits.
#pragma once

#include "analysis/Elimination.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace analysis
{

namespace detail
{

/// Exchanges both values in the lanes where @p wanted.
[[gnu::always_inline]] inline void swapIf(const LaneBits& wanted, Lanes& a, Lanes& b)
{
    const Lanes first = a;
    const Lanes second = b;
    a = wanted ? second : first;
    b = wanted ? first : second;
}

} // namespace detail

/// Four systems a x = b, on their way to triangular form.
template <std::size_t N>
struct LaneSystem {
    std::array<std::array<Lanes, N>, N> a;
    std::array<Lanes, N> b;

    /// The row, from @p C on, with the largest absolute value in column @p C:
    /// the first of equal ones, and @p C itself when all are NaN.
    template <std::size_t C>
    [[gnu::always_inline]] LaneBits pivotRow() const
    {
        return pivotPlace<LaneBits>(C, UnrolledRange<C, N>(), a);
    }

    /// Exchanges row @p C with a later one, from column @p C on.
    template <std::size_t C>
    [[gnu::always_inline]] void moveUp(const LaneBits& row)
    {
        forEachIndex<C + 1, N>([&](auto k) __attribute__((always_inline)) {
            const LaneBits wanted = row == std::int64_t{k};
            forEachIndex<C, N>([&](auto j) __attribute__((always_inline)) {
                detail::swapIf(wanted, a[C][j], a[k][j]);
            });
            detail::swapIf(wanted, b[C], b[k]);
        });
    }

    /// Clears column @p C below the diagonal; the zeros are not written.
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

/// Turns the right sides b of the systems a x = b into the solutions, unknowns in
/// the order of the columns; a is used up.
///
/// Equal to the last bit to SmallMatrix's luDecompose(), forwardSolve() and
/// backSolve() read through the permutation, whatever the numbers (all NaN
/// taken as equal): the same choice of pivots, a pivot of 0 that divides as 1.0
/// in the elimination and as itself at the end. So a singular system gives
/// infinities or NaN, and no error.
///
/// Rows are moved here instead of being reached through a permutation.
template <std::size_t N>
[[gnu::always_inline]] inline void solveLanes(LaneSystem<N>& system)
{
    forEachIndex<0, N>([&](auto c) __attribute__((always_inline)) {
        system.template moveUp<c>(system.template pivotRow<c>());
        system.template eliminate<c>();
    });
    substituteBack(system.a, system.b);
}

} // namespace analysis
