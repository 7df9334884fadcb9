// Least-square fits of values by a fixed set of basis functions.
//
// The fit may do without a matrix for each set of values, since the matrix and
// its factors depend on the basis alone. The operations on the values are those
// of the matrix library, in its order.
#pragma once

#include "analysis/Elimination.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace analysis
{

/// The linear combination of a few basis functions that comes nearest to given
/// values, by the normal equations.
///
/// The matrix depends on the basis alone, so it is built and factorised once,
/// and a solve for other values costs the right side and two substitutions.
/// Equal to the last bit (all NaN taken as equal) to a matrix built, factorised
/// and solved afresh with SmallMatrix for each set of values: a singular basis,
/// also one with fewer rows than unknowns, gives infinities or NaN, and no
/// error.
class LinearCombination
{
public:
    static constexpr int maxUnknowns = 7;

    /// @param unknowns  number of basis functions, 1 to maxUnknowns
    /// @param basis     their values, row by row: rows * unknowns numbers, a
    ///                  row for each value that will be fitted
    LinearCombination(int unknowns, const std::vector<double>& basis);

    /// The coefficients for @p values: as many as there are unknowns, and zeros
    /// behind them.
    /// @pre a value for each row of the basis
    std::array<double, maxUnknowns> coefficients(std::span<const double> values) const;

    /// The first half of a solve, for one set of values or for as many as
    /// @p Number has numbers side by side: the right sides and the forward
    /// substitution. @p N is the number of unknowns.
    ///
    /// @param valueAt  called as valueAt(row) for each row of the basis, in order
    template <std::size_t N, class Number, class ValueAt>
    [[gnu::always_inline]] inline void substituteForward(ValueAt valueAt,
                                                         std::array<Number, N>& x) const
    {
        for (Number& each : x) {
            each = Number{};
        }
        for (std::size_t row = 0; row < m_basis.size(); ++row) {
            const Number y = valueAt(row);
            for (std::size_t i = 0; i < N; ++i) {
                x[i] += m_basis[row][i] * y;
            }
        }
        analysis::substituteForward(m_lower, x);
    }

    /// The second half: turns @p x into the coefficients.
    template <std::size_t N, class Number>
    [[gnu::always_inline]] inline void substituteBack(std::array<Number, N>& x) const
    {
        analysis::substituteBack(m_upper, x);
    }

private:
    using Row = std::array<double, maxUnknowns>;

    void factorise();

    int m_unknowns = 0;
    /// The basis with its functions in the order of the pivots, and the
    /// triangles with their rows in that order; the diagonal of the lower one is
    /// 1 throughout.
    std::vector<Row> m_basis;
    std::array<Row, maxUnknowns> m_lower{};
    std::array<Row, maxUnknowns> m_upper{};
};

} // namespace analysis
