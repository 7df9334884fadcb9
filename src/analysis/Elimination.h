// The steps of Gaussian elimination with partial pivoting, as templates that several
// solvers share. The size of the system is known at compile time or at run time; an
// element is a double or a vector of lanes; rows are addressed directly or through a
// permutation.
//
// A matrix is any type whose element i, j is m[i][j]. Every instantiation does the
// same operations in the same order on each number, so all results are bit-identical, if
// all NaN count as equal.
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

/// Start value of the pivot search, below every absolute value.
inline constexpr double belowAnyMagnitude = -1e300;

/// The half-open interval [First, Last) of indices known at compile time.
template <std::size_t First, std::size_t Last>
struct UnrolledRange {
    /// Calls step(i) for each index i, where i is a std::integral_constant.
    template <class Step>
    [[gnu::always_inline]] void forEach(Step step) const
    {
        forEachIndex<First, Last>(step);
    }
};

/// The half-open interval [first, last) of indices known only at run time.
struct IndexRange {
    std::int32_t first;
    std::int32_t last;

    /// Calls step(i) for each index i.
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

/// Partial pivoting: the index of the row with the largest absolute value in @p column. Of
/// equal values, the first is chosen, and NaN is never chosen over a number. If all values
/// are NaN, the result is @p column itself.
///
/// @param rows  the rows to search; the first of them is @p column
template <class Position, class Column, class Range, class Matrix>
[[gnu::always_inline]] inline Position pivotPosition(Column column, Range rows, const Matrix& m)
{
    using Number = std::remove_cvref_t<decltype(m[column][column])>;
    Position position = Position{} + static_cast<std::int64_t>(column);
    Number best = Number{} + belowAnyMagnitude;
    rows.forEach([&](auto k) __attribute__((always_inline)) {
        const Number size = detail::absolute(m[k][column]);
        const auto larger = size > best;
        best = larger ? size : best;
        position = larger ? Position{} + static_cast<std::int64_t>(k) : position;
    });
    return position;
}

/// One step of the elimination: subtracts multiples of the pivot row, whose index is
/// @p column, from all later rows. Only the later columns are changed: the elements of
/// @p column below the pivot would become 0, but keep their values unless @p keep changes
/// them. If the pivot is 0, the divisor is 1.0 instead, so that the elimination of a
/// singular matrix does not divide by 0.
///
/// @param later  the row and column indices after @p column
/// @param keep   called as keep(row, factor) with the multiplier of each row
template <class Column, class Range, class Matrix, class Keep>
[[gnu::always_inline]] inline void eliminateColumn(Column column, Range later, Matrix& m, Keep keep)
{
    using Number = std::remove_cvref_t<decltype(m[column][column])>;
    const auto isZero = m[column][column] == 0.0;
    const Number divisor = isZero ? Number{} + 1.0 : m[column][column];
    later.forEach([&](auto k) __attribute__((always_inline)) {
        const Number factor = m[k][column] / divisor;
        later.forEach([&](auto j)
                          __attribute__((always_inline)) { m[k][j] -= m[column][j] * factor; });
        keep(k, factor);
    });
}

/// Substitutes the known x[i] into the equations in @p rows: subtracts x[i] * m[k][i]
/// from the right side x[k] of each equation k.
template <class Index, class Range, class Matrix, class Vector>
[[gnu::always_inline]] inline void substituteUnknown(Index i, Range rows, const Matrix& m,
                                                     Vector& x)
{
    rows.forEach([&](auto k) __attribute__((always_inline)) { x[k] -= x[i] * m[k][i]; });
}

/// Forward substitution: solves lower * y = x in place, where @p lower is a lower
/// triangular matrix. Its diagonal counts as 1 and is not read.
template <std::size_t N, class Matrix, class Number>
[[gnu::always_inline]] inline void substituteForward(const Matrix& lower, std::array<Number, N>& x)
{
    forEachIndex<0, N>([&](auto i) __attribute__((always_inline)) {
        substituteUnknown(i, UnrolledRange<i + 1, N>(), lower, x);
    });
}

/// Back substitution: solves upper * y = x in place, where @p upper is an upper
/// triangular matrix. A zero on its diagonal leads to infinities or NaN.
template <std::size_t N, class Matrix, class Number>
[[gnu::always_inline]] inline void substituteBack(const Matrix& upper, std::array<Number, N>& x)
{
    forEachIndex<0, N>([&](auto step) __attribute__((always_inline)) {
        constexpr std::size_t i = N - 1 - step;
        x[i] /= upper[i][i];
        substituteUnknown(i, UnrolledRange<0, i>(), upper, x);
    });
}

} // namespace analysis
