// Least-square fits of values by a fixed set of basis functions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace analysis
{

/// The linear combination of a few basis functions that comes nearest to given
/// values, by the normal equations.
///
/// The matrix depends on the basis alone, so it is built and factorised once,
/// and a solve for other values costs the right side and two substitutions
/// (solveFixed() serves fits whose matrix changes with the values).
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

private:
    using Row = std::array<double, maxUnknowns>;

    void factorise();

    template <std::size_t N>
    Row solve(std::span<const double> values) const;

    int m_unknowns = 0;
    std::vector<Row> m_basis;
    /// The triangles, their rows in the order of the pivots; the diagonal of
    /// the lower one is 1 throughout.
    std::array<Row, maxUnknowns> m_lower{};
    std::array<Row, maxUnknowns> m_upper{};
    std::array<std::int32_t, maxUnknowns> m_perm{};
};

} // namespace analysis
