// The steps of Gaussian elimination with partial pivoting, for a system of any kind:
// one with its size known to the compiler or not, of numbers or of lanes, its rows
// in place or reached through a permutation.
//
// A matrix is what gives element i, j as m[i][j]. All kinds make the same operations
// in the same order for each number, so that their results have equal bits.
#pragma once

#include "analysis/Lanes.h"
#include "analysis/Unrolled.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace analysis
{

/// Where the search for a pivot starts.
inline constexpr double belowAllSizes = -1e300;

/// Indices that are known to the compiler.
template <std::size_t First, std::size_t Last>
struct UnrolledRange {
    template <class Step>
    [[gnu::always_inline]] void forEach(Step step) const
    {
        forEachIndex<First, Last>(step);
    }
};

/// Indices that are not.
struct IndexRange {
    std::int32_t first;
    std::int32_t last; ///< one behind the last index

    template <class Step>
    [[gnu::always_inline]] void forEach(Step step) const
    {
        for (std::int32_t i = first; i < last; ++i) {
            step(i);
        }
    }
};

namespace detail
{

[[gnu::always_inline]] inline double absolute(double value)
{
    return std::fabs(value);
}

[[gnu::always_inline]] inline Lanes absolute(const Lanes& value)
{
    constexpr std::int64_t allButSign = INT64_MAX;
    return Lanes(LaneBits(value) & (LaneBits{} + allButSign));
}

} // namespace detail

/// The row, among @p rows from @p column on, with the largest absolute value in
/// @p column: the first of equal ones, and row @p column itself when all are NaN.
template <class Place, class Column, class Range, class Matrix>
[[gnu::always_inline]] inline Place pivotPlace(Column column, Range rows, const Matrix& m)
{
    using Number = std::remove_cvref_t<decltype(m[column][column])>;
    Place place = Place{} + static_cast<std::int64_t>(column);
    Number best = Number{} + belowAllSizes;
    rows.forEach([&](auto k) __attribute__((always_inline)) {
        const Number size = detail::absolute(m[k][column]);
        const auto larger = size > best;
        best = larger ? size : best;
        place = larger ? Place{} + static_cast<std::int64_t>(k) : place;
    });
    return place;
}

/// Subtracts the row of @p column from each of the rows behind it, in the columns
/// behind it too. A pivot of 0 divides as 1.0.
///
/// @param behind  the rows, and columns, behind @p column
/// @param keep    called as keep(row, factor) with the factor of each row
template <class Column, class Range, class Matrix, class Keep>
[[gnu::always_inline]] inline void eliminateColumn(Column column, Range behind, Matrix& m,
                                                   Keep keep)
{
    using Number = std::remove_cvref_t<decltype(m[column][column])>;
    const auto isZero = m[column][column] == 0.0;
    const Number divisor = isZero ? Number{} + 1.0 : m[column][column];
    behind.forEach([&](auto k) __attribute__((always_inline)) {
        const Number factor = m[k][column] / divisor;
        behind.forEach([&](auto j)
                           __attribute__((always_inline)) { m[k][j] -= m[column][j] * factor; });
        keep(k, factor);
    });
}

/// Takes unknown @p i out of the equations in @p rows, whose right sides are in @p x
/// too.
template <class Index, class Range, class Matrix, class Vector>
[[gnu::always_inline]] inline void takeOut(Index i, Range rows, const Matrix& m, Vector& x)
{
    rows.forEach([&](auto k) __attribute__((always_inline)) { x[k] -= x[i] * m[k][i]; });
}

/// Solves a system whose lower triangle is @p lower, with 1 on the diagonal.
template <std::size_t N, class Matrix, class Number>
[[gnu::always_inline]] inline void substituteForward(const Matrix& lower, std::array<Number, N>& x)
{
    forEachIndex<0, N>([&](auto i) __attribute__((always_inline)) {
        takeOut(i, UnrolledRange<i + 1, N>(), lower, x);
    });
}

/// Solves a system whose upper triangle is @p upper.
template <std::size_t N, class Matrix, class Number>
[[gnu::always_inline]] inline void substituteBack(const Matrix& upper, std::array<Number, N>& x)
{
    forEachIndex<0, N>([&](auto step) __attribute__((always_inline)) {
        constexpr std::size_t i = N - 1 - step;
        x[i] /= upper[i][i];
        takeOut(i, UnrolledRange<0, i>(), upper, x);
    });
}

} // namespace analysis
