// Small linear systems whose size is known to the compiler, for loops over
// pixels.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace analysis
{

namespace detail
{

/// Calls @p step with each index from @p First to @p Last - 1, as a type whose
/// value is a constant.
///
/// A loop that the optimiser unrolls comes too late for it to keep the matrix
/// in registers; written out like this it does, which makes the solver five
/// times as fast.
template <std::size_t First, std::size_t Last, class Step>
[[gnu::always_inline]] inline void forEachIndex(Step step)
{
    if constexpr (First < Last) {
        [&]<std::size_t... Offset>(std::index_sequence<Offset...>)
        {
            (step(std::integral_constant<std::size_t, First + Offset>()), ...);
        }
        (std::make_index_sequence<Last - First>());
    }
}

/// Exchanges both values if @p wanted. Without a branch: which row is the pivot
/// is chance in noisy data, and costs more as a guess of the processor.
[[gnu::always_inline]] inline void swapIf(bool wanted, double& a, double& b)
{
    const double first = a;
    const double second = b;
    a = wanted ? second : first;
    b = wanted ? first : second;
}

/// The system a x = b on its way to triangular form.
template <std::size_t N>
struct FixedSystem {
    std::array<std::array<double, N>, N> a;
    std::array<double, N> b;

    /// The row, from @p C on, with the largest absolute value in column @p C:
    /// the first of equal ones, and @p C itself when all are NaN.
    template <std::size_t C>
    [[gnu::always_inline]] std::size_t pivotRow() const
    {
        std::size_t row = C;
        double best = -1e300;
        forEachIndex<C, N>([&](auto k) {
            const double size = std::fabs(a[k][C]);
            const bool larger = size > best;
            best = larger ? size : best;
            row = larger ? k : row;
        });
        return row;
    }

    /// Exchanges row @p C with a later one, from column @p C on.
    template <std::size_t C>
    [[gnu::always_inline]] void moveUp(std::size_t row)
    {
        // Not a[row]: a variable index would keep the matrix in memory.
        forEachIndex<C + 1, N>([&](auto k) {
            const bool wanted = row == k;
            forEachIndex<C, N>([&](auto j) { swapIf(wanted, a[C][j], a[k][j]); });
            swapIf(wanted, b[C], b[k]);
        });
    }

    /// Clears column @p C below the diagonal; the zeros are not written.
    template <std::size_t C>
    [[gnu::always_inline]] void eliminate()
    {
        const double divisor = a[C][C] == 0.0 ? 1.0 : a[C][C];
        forEachIndex<C + 1, N>([&](auto k) {
            const double factor = a[k][C] / divisor;
            forEachIndex<C + 1, N>([&](auto j) { a[k][j] -= a[C][j] * factor; });
            b[k] -= b[C] * factor;
        });
    }

    /// Turns @p b into the solution.
    [[gnu::always_inline]] void substituteBack()
    {
        forEachIndex<0, N>([&](auto step) {
            constexpr std::size_t i = N - 1 - step;
            b[i] /= a[i][i];
            forEachIndex<0, i>([&](auto k) { b[k] -= b[i] * a[k][i]; });
        });
    }
};

} // namespace detail

/// The solution of a x = b, unknowns in the order of the columns of @p a.
///
/// Equal to the last bit to SmallMatrix's luDecompose(), forwardSolve() and
/// backSolve() read through the permutation, whatever the numbers (all NaN
/// taken as equal): the same operations in the same order, the same choice of
/// pivots, a pivot of 0 that divides as 1.0 in the elimination and as itself at
/// the end. So a singular system gives infinities or NaN, and no error.
///
/// Rows are moved here instead of being reached through a permutation.
template <std::size_t N>
std::array<double, N> solveFixed(const std::array<std::array<double, N>, N>& a,
                                 const std::array<double, N>& b)
{
    detail::FixedSystem<N> system{a, b};
    detail::forEachIndex<0, N>([&](auto c) {
        system.template moveUp<c>(system.template pivotRow<c>());
        system.template eliminate<c>();
    });
    system.substituteBack();
    return system.b;
}

} // namespace analysis
