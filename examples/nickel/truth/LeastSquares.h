// Least squares by QR decomposition. aelk itself uses normal equations, so this solution is
// independent of aelk's.
#pragma once

#include <vector>

namespace nickel
{

/// Fits values by a linear combination of given columns.
class LeastSquares
{
public:
    /// @param columns  linearly independent columns of equal length
    explicit LeastSquares(std::vector<std::vector<double>> columns);

    /// The coefficient of each column for the least-squares fit of @p values, which must
    /// have the length of a column.
    std::vector<double> coefficients(const std::vector<double>& values) const;

private:
    std::vector<std::vector<double>> unit;     ///< orthonormal columns
    std::vector<std::vector<double>> triangle; ///< column k = sum over i of triangle[k][i] unit[i]
};

} // namespace nickel
