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
    std::array<std::int32_t, maxUnknowns> perm{};
    SmallMatrix::luDecompose(m_unknowns, matrixRows.data(), lRows.data(), uRows.data(),
                             perm.data());
    for (std::size_t i = 0; i < n; ++i) {
        const auto p = static_cast<std::size_t>(perm[i]);
        m_lower[i] = l[p];
        m_upper[i] = u[p];
    }
    for (Row& phi : m_basis) {
        const Row unpermuted = phi;
        for (std::size_t i = 0; i < n; ++i) {
            phi[i] = unpermuted[static_cast<std::size_t>(perm[i])];
        }
    }
}

namespace
{

template <std::size_t N>
std::array<double, LinearCombination::maxUnknowns> solveOne(const LinearCombination& fit,
                                                            std::span<const double> values)
{
    std::array<double, N> x;
    fit.substituteForward(
        [&](std::size_t row) __attribute__((always_inline)) { return values[row]; }, x);
    fit.substituteBack(x);
    std::array<double, LinearCombination::maxUnknowns> solution{};
    std::copy(x.begin(), x.end(), solution.begin());
    return solution;
}

} // namespace

// One instantiation per size, so that the compiler unrolls the loops over the unknowns.
std::array<double, LinearCombination::maxUnknowns>
LinearCombination::coefficients(std::span<const double> values) const
{
    Q_ASSERT(values.size() >= m_basis.size());
    switch (m_unknowns) {
    case 1:
        return solveOne<1>(*this, values);
    case 2:
        return solveOne<2>(*this, values);
    case 3:
        return solveOne<3>(*this, values);
    case 4:
        return solveOne<4>(*this, values);
    case 5:
        return solveOne<5>(*this, values);
    case 6:
        return solveOne<6>(*this, values);
    default:
        return solveOne<maxUnknowns>(*this, values);
    }
}

} // namespace analysis
