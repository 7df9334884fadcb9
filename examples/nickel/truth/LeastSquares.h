// Least squares by QR decomposition (aelk itself uses normal equations).
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

    /// The coefficients of the columns for @p values, which must be as long as a column.
    std::vector<double> coefficients(const std::vector<double>& values) const;

private:
    std::vector<std::vector<double>> unit;     ///< orthonormal columns
    std::vector<std::vector<double>> triangle; ///< column k = sum over i of triangle[k][i] unit[i]
};

} // namespace nickel
