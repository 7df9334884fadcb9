// Linear least-squares fit of values by a fixed set of basis functions.
#pragma once

#include "analysis/Elimination.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace analysis
{

/// Fits given values by a linear combination of a few basis functions: least squares
/// by the normal equations.
///
/// The matrix of the normal equations depends on the basis only. It is built and
/// factorised once (LU decomposition with partial pivoting). Each set of values then
/// needs only its right side, a forward substitution and a back substitution.
///
/// The results are bit-identical to solving the whole system with SmallMatrix for each
/// set of values, if all NaN count as equal. A singular matrix, for example from a basis with
/// fewer rows than unknowns, raises no error: a zero pivot is handled as in
/// SmallMatrix::luDecompose().
class LinearCombination
{
public:
    static constexpr int maxUnknowns = 7;

    /// @param unknowns  number of basis functions, clamped to 1 ... maxUnknowns
    /// @param basis     values of the basis functions, row-major: one row per value to
    ///                  be fitted, one column per unknown; an incomplete last row is ignored
    LinearCombination(int unknowns, const std::vector<double>& basis);

    /// Fits @p values.
    /// @pre @p values has one value for each row of the basis
    /// @return one coefficient per unknown, then zeros
    std::array<double, maxUnknowns> coefficients(std::span<const double> values) const;

    /// The first half of a fit: builds the right side of the normal equations and does
    /// the forward substitution.
    ///
    /// @tparam N       number of unknowns, as given to the constructor
    /// @tparam Number  double for one set of values, Lanes for four sets side by side
    /// @param valueAt  called as valueAt(row) for each row of the basis, in order
    /// @param[out] x   the intermediate result for substituteBack()
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

    /// The second half of a fit: the back substitution.
    /// @param[in,out] x  the result of substituteForward(); becomes the coefficients
    template <std::size_t N, class Number>
    [[gnu::always_inline]] inline void substituteBack(std::array<Number, N>& x) const
    {
        analysis::substituteBack(m_upper, x);
    }

private:
    using Row = std::array<double, maxUnknowns>;

    void factorise();

    int m_unknowns = 0;
    /// The columns of the basis and the rows of both triangular factors are stored in
    /// pivot order, so that no permutation is needed in a fit. The lower factor has a
    /// unit diagonal.
    std::vector<Row> m_basis;
    std::array<Row, maxUnknowns> m_lower{};
    std::array<Row, maxUnknowns> m_upper{};
};

} // namespace analysis
