#include "analysis/LinearCombination.h"

#include "analysis/SmallMatrix.h"

#include <QtGlobal>

#include <algorithm>

namespace analysis
{

LinearCombination::LinearCombination(int unknowns, const std::vector<double>& basis)
    : m_unknowns(std::clamp(unknowns, 1, maxUnknowns))
    , m_basis(basis.size() / static_cast<std::size_t>(m_unknowns))
{
    const auto width = static_cast<std::size_t>(m_unknowns);
    for (std::size_t row = 0; row < m_basis.size(); ++row) {
        std::copy_n(basis.data() + row * width, width, m_basis[row].data());
    }
    factorise();
}

void LinearCombination::factorise()
{
    const auto n = static_cast<std::size_t>(m_unknowns);
    std::array<Row, maxUnknowns> matrix{};
    for (const Row& phi : m_basis) {
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t k = 0; k < n; ++k) {
                matrix[i][k] += phi[i] * phi[k];
            }
        }
    }
    std::array<Row, maxUnknowns> l{};
    std::array<Row, maxUnknowns> u{};
    std::array<double*, maxUnknowns> matrixRows;
    std::array<double*, maxUnknowns> lRows;
    std::array<double*, maxUnknowns> uRows;
    for (std::size_t i = 0; i < maxUnknowns; ++i) {
        matrixRows[i] = matrix[i].data();
        lRows[i] = l[i].data();
        uRows[i] = u[i].data();
    }
    SmallMatrix::luDecompose(m_unknowns, matrixRows.data(), lRows.data(), uRows.data(),
                             m_perm.data());
    for (std::size_t i = 0; i < n; ++i) {
        const auto p = static_cast<std::size_t>(m_perm[i]);
        m_lower[i] = l[p];
        m_upper[i] = u[p];
    }
}

template <std::size_t N>
LinearCombination::Row LinearCombination::solve(std::span<const double> values) const
{
    std::array<double, N> right{};
    for (std::size_t row = 0; row < m_basis.size(); ++row) {
        const double y = values[row];
        for (std::size_t i = 0; i < N; ++i) {
            right[i] += m_basis[row][i] * y;
        }
    }
    std::array<double, N> x;
    for (std::size_t i = 0; i < N; ++i) {
        x[i] = right[static_cast<std::size_t>(m_perm[i])];
    }
    for (std::size_t i = 0; i + 1 < N; ++i) {
        for (std::size_t k = i + 1; k < N; ++k) {
            x[k] -= x[i] * m_lower[k][i];
        }
    }
    for (std::size_t step = 0; step < N; ++step) {
        const std::size_t i = N - 1 - step;
        x[i] /= m_upper[i][i];
        for (std::size_t k = 0; k < i; ++k) {
            x[k] -= x[i] * m_upper[k][i];
        }
    }
    Row solution{};
    std::copy(x.begin(), x.end(), solution.begin());
    return solution;
}

// The sizes are told apart here so that the loops over the unknowns unroll: a
// map calculation solves once per pixel.
std::array<double, LinearCombination::maxUnknowns>
LinearCombination::coefficients(std::span<const double> values) const
{
    Q_ASSERT(values.size() >= m_basis.size());
    switch (m_unknowns) {
    case 1:
        return solve<1>(values);
    case 2:
        return solve<2>(values);
    case 3:
        return solve<3>(values);
    case 4:
        return solve<4>(values);
    case 5:
        return solve<5>(values);
    case 6:
        return solve<6>(values);
    default:
        return solve<maxUnknowns>(values);
    }
}

} // namespace analysis
