#include "LeastSquares.h"

#include <cmath>
#include <cstddef>
#include <numeric>

namespace nickel
{
namespace
{

double product(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

} // namespace

// QR decomposition by Gram-Schmidt orthogonalisation with two passes per column. Columns of
// powers of the wavelength are nearly parallel, so a single pass would not make them
// orthogonal to machine precision.
LeastSquares::LeastSquares(std::vector<std::vector<double>> columns)
{
    for (std::vector<double>& column : columns) {
        std::vector<double> parts(unit.size() + 1, 0.0);
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = 0; i < unit.size(); ++i) {
                const double part = product(unit[i], column);
                parts[i] += part;
                for (std::size_t row = 0; row < column.size(); ++row) {
                    column[row] -= part * unit[i][row];
                }
            }
        }
        const double length = std::sqrt(product(column, column));
        parts.back() = length;
        for (double& value : column) {
            value /= length;
        }
        unit.push_back(std::move(column));
        triangle.push_back(std::move(parts));
    }
}

std::vector<double> LeastSquares::coefficients(const std::vector<double>& values) const
{
    std::vector<double> result;
    for (const std::vector<double>& column : unit) {
        result.push_back(product(column, values));
    }
    for (std::size_t k = result.size(); k-- > 0;) {
        result[k] /= triangle[k][k];
        for (std::size_t i = 0; i < k; ++i) {
            result[i] -= triangle[k][i] * result[k];
        }
    }
    return result;
}

} // namespace nickel
