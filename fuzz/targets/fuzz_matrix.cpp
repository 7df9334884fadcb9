// Tests the matrix library and the solvers that replace it in the loops over the pixels.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/PlainFits.h"
#include "support/SameDouble.h"

#include "analysis/LaneSolver.h"
#include "analysis/LinearCombination.h"
#include "analysis/SmallMatrix.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

using analysis::SmallMatrix;

namespace
{

using Numbers = std::vector<double>;
using Matrix = std::vector<Numbers>;

constexpr int maxUnknowns = 7;

bool same(const Numbers& a, const Numbers& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), tests::sameDouble);
}

bool same(const Matrix& a, const Matrix& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Numbers& x, const Numbers& y) { return same(x, y); });
}

std::vector<double*> rowsOf(Matrix& matrix)
{
    std::vector<double*> rows;
    for (Numbers& row : matrix) {
        rows.push_back(row.data());
    }
    return rows;
}

/// A linear system a x = b.
struct System {
    Matrix a;
    Numbers b;
    bool isWellConditioned = false; ///< integers; diagonally dominant before the rows are rotated

    int size() const { return static_cast<int>(b.size()); }
};

/// A random system of @p n equations. About one row in 16 repeats the row before it, so
/// singular systems occur; well-conditioned systems have no repeated rows.
System nextSystem(fuzz::ByteReader& in, int n)
{
    System system;
    system.isWellConditioned = in.number(0, 3) == 0;
    const auto number = [&] {
        return system.isWellConditioned ? in.number(-8, 8) : in.anyDouble();
    };
    for (int i = 0; i < n; ++i) {
        Numbers row;
        for (int k = 0; k < n; ++k) {
            row.push_back(number() + (system.isWellConditioned && i == k ? 100.0 : 0.0));
        }
        const bool repeats = !system.isWellConditioned && i > 0 && in.number(0, 15) == 15;
        system.a.push_back(repeats ? system.a.back() : row);
        system.b.push_back(number());
    }
    if (system.isWellConditioned && n > 1) {
        // Rotates the rows, usually by at least one, so that the solver has to exchange them.
        const auto shift = static_cast<std::ptrdiff_t>(in.number(0, n - 1));
        std::rotate(system.a.begin(), system.a.begin() + shift, system.a.end());
        std::rotate(system.b.begin(), system.b.begin() + shift, system.b.end());
    }
    return system;
}

/// Reference implementation: Gaussian elimination with partial pivoting. It swaps the
/// rows of the matrix and of the right-hand side.
Numbers plainSolution(System system)
{
    Matrix& a = system.a;
    Numbers& b = system.b;
    const std::size_t n = b.size();
    for (std::size_t c = 0; c < n; ++c) {
        std::size_t pivot = c;
        while (pivot < n && std::isnan(a[pivot][c])) {
            ++pivot;
        }
        for (std::size_t k = pivot + 1; k < n; ++k) {
            pivot = std::abs(a[k][c]) > std::abs(a[pivot][c]) ? k : pivot;
        }
        pivot = pivot < n ? pivot : c;
        std::swap(a[c], a[pivot]);
        std::swap(b[c], b[pivot]);
        for (std::size_t k = c + 1; k < n; ++k) {
            const double factor = a[k][c] / (a[c][c] == 0.0 ? 1.0 : a[c][c]);
            for (std::size_t j = c + 1; j < n; ++j) {
                a[k][j] -= a[c][j] * factor;
            }
            b[k] -= b[c] * factor;
        }
    }
    for (std::size_t i = n; i-- > 0;) {
        b[i] /= a[i][i];
        for (std::size_t k = 0; k < i; ++k) {
            b[k] -= b[i] * a[k][i];
        }
    }
    return b;
}

struct Factors {
    Matrix l;
    Matrix u;
    std::vector<std::int32_t> perm;
};

void checkFactors(const System& system, const Factors& factors)
{
    const std::size_t n = system.b.size();
    std::vector<std::int32_t> order = factors.perm;
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < n; ++i) {
        FUZZ_REQUIRE(order[i] == static_cast<std::int32_t>(i));
        const auto p = static_cast<std::size_t>(factors.perm[i]);
        for (std::size_t k = 0; k < n; ++k) {
            FUZZ_REQUIRE(i <= k || factors.u[p][k] == 0.0);
            FUZZ_REQUIRE(i > k || factors.l[p][k] == (i == k ? 1.0 : 0.0));
        }
    }
    if (!system.isWellConditioned) {
        return;
    }
    for (std::size_t i = 0; i < n; ++i) {
        const auto p = static_cast<std::size_t>(factors.perm[i]);
        for (std::size_t k = 0; k < n; ++k) {
            double product = 0.0;
            for (std::size_t m = 0; m < n; ++m) {
                product +=
                    factors.l[p][m] * factors.u[static_cast<std::size_t>(factors.perm[m])][k];
            }
            FUZZ_REQUIRE(std::abs(product - system.a[p][k]) <= 1e-10);
        }
    }
}

void checkResidual(const System& system, const Numbers& x)
{
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double sum = std::inner_product(x.begin(), x.end(), system.a[i].begin(), 0.0);
        FUZZ_REQUIRE(std::abs(sum - system.b[i]) <= 1e-10);
    }
}

/// Solves @p system with the matrix library, checks the factors and the solution, and returns
/// the solution.
Numbers checkLibrary(const System& system)
{
    const int n = system.size();
    Matrix a = system.a;
    Factors factors{a, a, std::vector<std::int32_t>(system.b.size(), -1)};
    Numbers b = system.b;
    Numbers y(b.size());
    Numbers x(b.size());
    SmallMatrix::luDecompose(n, rowsOf(a).data(), rowsOf(factors.l).data(),
                             rowsOf(factors.u).data(), factors.perm.data());
    FUZZ_REQUIRE(same(a, system.a));
    checkFactors(system, factors);
    SmallMatrix::forwardSolve(n, rowsOf(factors.l).data(), b.data(), y.data(), factors.perm.data());
    FUZZ_REQUIRE(same(b, system.b));
    SmallMatrix::backSolve(n, rowsOf(factors.u).data(), y.data(), x.data(), factors.perm.data());
    Numbers solution;
    for (const std::int32_t p : factors.perm) {
        solution.push_back(x[static_cast<std::size_t>(p)]);
    }
    FUZZ_REQUIRE(same(solution, plainSolution(system)));
    if (system.isWellConditioned) {
        checkResidual(system, solution);
    }
    return solution;
}

template <std::size_t N>
void checkLanes(const std::array<System, analysis::laneCount>& systems,
                const std::array<Numbers, analysis::laneCount>& wanted)
{
    analysis::LaneSystem<N> start{};
    for (int lane = 0; lane < analysis::laneCount; ++lane) {
        const System& one = systems.at(static_cast<std::size_t>(lane));
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t k = 0; k < N; ++k) {
                start.a[i][k][lane] = one.a[i][k];
            }
            start.b[i][lane] = one.b[i];
        }
    }
    for (const analysis::Instructions instructions : analysis::availableInstructions()) {
        analysis::LaneSystem<N> lanes = start;
        analysis::runKernel(
            instructions, [&]() __attribute__((always_inline)) { analysis::solveLanes(lanes); });
        for (int lane = 0; lane < analysis::laneCount; ++lane) {
            for (std::size_t i = 0; i < N; ++i) {
                FUZZ_REQUIRE(tests::sameDouble(lanes.b[i][lane],
                                               wanted.at(static_cast<std::size_t>(lane))[i]));
            }
        }
    }
}

/// The next pivot row: the first of the unused rows whose diagonal element has the largest
/// absolute value. NaN counts as smaller than any absolute value.
std::size_t plainDiagonalPivot(const Matrix& a, const std::vector<bool>& used)
{
    std::size_t chosen = a.size();
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto size = [&](std::size_t k) {
            return std::isnan(a[k][k]) ? -1.0 : std::abs(a[k][k]);
        };
        if (!used[i] && (chosen == a.size() || size(i) > size(chosen))) {
            chosen = i;
        }
    }
    return chosen;
}

void plainGaussJordan(Matrix& a, Matrix& b)
{
    const std::size_t n = a.size();
    std::vector<bool> used(n, false);
    for (std::size_t round = 0; round < n; ++round) {
        const std::size_t pivot = plainDiagonalPivot(a, used);
        used[pivot] = true;
        const double diagonal = a[pivot][pivot];
        if (diagonal == 0.0) {
            continue;
        }
        for (std::size_t k = 0; k < n; ++k) {
            a[pivot][k] /= diagonal;
            b[pivot][k] /= diagonal;
        }
        for (std::size_t i = 0; i < n; ++i) {
            const double factor = a[i][pivot];
            for (std::size_t k = 0; k < n && !used[i]; ++k) {
                a[i][k] -= factor * a[pivot][k];
                b[i][k] -= factor * b[pivot][k];
            }
        }
    }
}

void checkGaussJordan(const System& left, const System& right)
{
    Matrix a = left.a;
    Matrix b = right.a;
    Matrix plainA = a;
    Matrix plainB = b;
    SmallMatrix::gaussJordan(left.size(), rowsOf(a).data(), rowsOf(b).data());
    plainGaussJordan(plainA, plainB);
    FUZZ_REQUIRE(same(a, plainA) && same(b, plainB));
}

void checkProducts(const System& left, const System& right)
{
    const int n = left.size();
    Matrix a = left.a;
    Matrix b = right.a;
    Matrix c = a;
    Numbers v = left.b;
    Numbers out(v.size());
    SmallMatrix::multiplyMatrices(n, rowsOf(a).data(), rowsOf(b).data(), rowsOf(c).data());
    SmallMatrix::multiplyMatrixVector(n, rowsOf(a).data(), v.data(), out.data());
    bool hasNaN = false;
    for (std::size_t i = 0; i < v.size(); ++i) {
        double diagonal = 0.0;
        double sum = 0.0;
        for (std::size_t k = 0; k < v.size(); ++k) {
            diagonal += b[k][i] * a[i][k];
            sum += a[i][k] * v[k];
            hasNaN = hasNaN || std::isnan(a[i][k]);
        }
        FUZZ_REQUIRE(same(c[i], Numbers(v.size(), diagonal)));
        FUZZ_REQUIRE(tests::sameDouble(out[i], sum));
    }
    FUZZ_REQUIRE((SmallMatrix::hasNaNMatrix(n, rowsOf(a).data()) != 0) == hasNaN);
    FUZZ_REQUIRE((SmallMatrix::hasNaNVector(n, v.data()) != 0) ==
                 std::any_of(v.begin(), v.end(), [](double each) { return std::isnan(each); }));
    SmallMatrix::copyMatrix(n, rowsOf(b).data(), rowsOf(c).data());
    FUZZ_REQUIRE(same(b, c));
    SmallMatrix::setIdentity(n, rowsOf(c).data());
    for (std::size_t i = 0; i < c.size(); ++i) {
        c[i][i] -= 1.0;
    }
    SmallMatrix::clearMatrix(n, rowsOf(a).data());
    FUZZ_REQUIRE(same(a, c));
}

/// For a size below 1, functions that allocate must return a null pointer, and the other
/// functions called here must not access the matrix.
void checkNoSize(int n)
{
    double** matrix = SmallMatrix::newMatrix(n);
    FUZZ_REQUIRE(matrix == nullptr && SmallMatrix::newVector(n) == nullptr);
    FUZZ_REQUIRE(SmallMatrix::newIndexVector(n) == nullptr);
    FUZZ_REQUIRE(SmallMatrix::hasNaNMatrix(n, matrix) == 0);
    SmallMatrix::luDecompose(n, matrix, matrix, matrix, nullptr);
    SmallMatrix::forwardSolve(n, matrix, nullptr, nullptr, nullptr);
    SmallMatrix::backSolve(n, matrix, nullptr, nullptr, nullptr);
    SmallMatrix::gaussJordan(n, matrix, matrix);
    SmallMatrix::freeMatrix(n, matrix);
}

/// Compares LinearCombination, which factorises the matrix of its least-squares fit once for
/// all sets of values, with the reference implementation, which factorises it for each set.
void checkCombination(fuzz::ByteReader& in, int unknowns)
{
    const int rows = in.number(0, 9);
    std::vector<double> basis;
    QList<double> values;
    for (int row = 0; row < rows; ++row) {
        for (int i = 0; i < unknowns; ++i) {
            basis.push_back(in.anyDouble());
        }
        values.append(in.anyDouble());
    }
    const analysis::LinearCombination fit(unknowns, basis);
    const auto found = fit.coefficients({values.constData(), static_cast<std::size_t>(rows)});
    const QList<double> plain = tests::plainCoefficients(
        unknowns,
        [&](qsizetype row, double* phi) {
            std::copy_n(basis.begin() + row * unknowns, unknowns, phi);
        },
        values);
    for (std::size_t i = 0; i < found.size(); ++i) {
        FUZZ_REQUIRE(tests::sameDouble(found[i], plain.value(static_cast<qsizetype>(i), 0.0)));
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    const int form = in.number(0, 3);
    const int n = in.number(1, maxUnknowns);
    if (form == 0) {
        checkCombination(in, n);
        return;
    }
    if (form == 1) {
        const System left = nextSystem(in, n);
        const System right = nextSystem(in, n);
        checkGaussJordan(left, right);
        checkProducts(left, right);
        checkNoSize(-in.number(0, 3));
        return;
    }
    if (form == 2) {
        checkLibrary(nextSystem(in, n));
        return;
    }
    const int size = in.number(2, 5);
    std::array<System, analysis::laneCount> systems;
    std::array<Numbers, analysis::laneCount> solutions;
    for (std::size_t lane = 0; lane < systems.size(); ++lane) {
        systems[lane] = nextSystem(in, size);
        solutions[lane] = checkLibrary(systems[lane]);
    }
    switch (size) {
    case 2:
        return checkLanes<2>(systems, solutions);
    case 3:
        return checkLanes<3>(systems, solutions);
    case 4:
        return checkLanes<4>(systems, solutions);
    default:
        return checkLanes<5>(systems, solutions);
    }
}
