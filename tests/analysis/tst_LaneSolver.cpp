// Gaussian elimination with partial pivoting for four linear systems side by side: known
// solutions, and a bit-for-bit comparison with SmallMatrix.
#include "analysis/LaneSolver.h"

#include "analysis/SmallMatrix.h"
#include "support/SameDouble.h"

#include <QTest>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <vector>

using analysis::SmallMatrix;

namespace
{

template <std::size_t N>
using Matrix = std::array<std::array<double, N>, N>;
template <std::size_t N>
using Vector = std::array<double, N>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

template <std::size_t N>
Vector<N> solvedBySmallMatrix(const Matrix<N>& a, const Vector<N>& b)
{
    constexpr auto n = static_cast<std::int32_t>(N);
    Matrix<N> lower;
    Matrix<N> upper;
    std::array<const double*, N> rows;
    std::array<double*, N> l;
    std::array<double*, N> u;
    for (std::size_t i = 0; i < N; ++i) {
        rows[i] = a[i].data();
        l[i] = lower[i].data();
        u[i] = upper[i].data();
    }
    Vector<N> y;
    Vector<N> x;
    std::array<std::int32_t, N> perm;
    SmallMatrix::luDecompose(n, rows.data(), l.data(), u.data(), perm.data());
    SmallMatrix::forwardSolve(n, l.data(), b.data(), y.data(), perm.data());
    SmallMatrix::backSolve(n, u.data(), y.data(), x.data(), perm.data());
    Vector<N> unknowns;
    for (std::size_t k = 0; k < N; ++k) {
        unknowns[k] = x[static_cast<std::size_t>(perm[k])];
    }
    return unknowns;
}

/// Solves four systems of linear equations with solveLanes(), one in each lane.
template <std::size_t N>
std::array<Vector<N>, analysis::laneCount>
solvedInLanes(const std::array<Matrix<N>, analysis::laneCount>& a,
              const std::array<Vector<N>, analysis::laneCount>& b,
              analysis::Instructions instructions)
{
    analysis::LaneSystem<N> system;
    for (std::size_t lane = 0; lane < analysis::laneCount; ++lane) {
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t k = 0; k < N; ++k) {
                system.a[i][k][lane] = a[lane][i][k];
            }
            system.b[i][lane] = b[lane][i];
        }
    }
    analysis::runKernel(
        instructions, [&]() __attribute__((always_inline)) { analysis::solveLanes(system); });
    std::array<Vector<N>, analysis::laneCount> x;
    for (std::size_t lane = 0; lane < analysis::laneCount; ++lane) {
        for (std::size_t i = 0; i < N; ++i) {
            x[lane][i] = system.b[i][lane];
        }
    }
    return x;
}

/// Solves one system in lane 2. The systems of the other lanes are zero.
template <std::size_t N>
Vector<N> solved(const Matrix<N>& a, const Vector<N>& b)
{
    return solvedInLanes<N>({Matrix<N>{}, Matrix<N>{}, a, Matrix<N>{}},
                            {Vector<N>{}, Vector<N>{}, b, Vector<N>{}},
                            analysis::fastestInstructions())[2];
}

/// Solves random systems of N equations with each instruction set. Returns the number of results
/// that differ from the results of SmallMatrix.
template <std::size_t N>
int differences(const std::function<double()>& element)
{
    constexpr int rounds = 250; // each round solves four systems
    int different = 0;
    for (int round = 0; round < rounds; ++round) {
        std::array<Matrix<N>, analysis::laneCount> a;
        std::array<Vector<N>, analysis::laneCount> b;
        for (std::size_t lane = 0; lane < analysis::laneCount; ++lane) {
            for (std::size_t i = 0; i < N; ++i) {
                for (double& value : a[lane][i]) {
                    value = element();
                }
                b[lane][i] = element();
            }
        }
        for (const analysis::Instructions instructions : analysis::availableInstructions()) {
            const auto x = solvedInLanes<N>(a, b, instructions);
            for (std::size_t lane = 0; lane < analysis::laneCount; ++lane) {
                const Vector<N> expected = solvedBySmallMatrix<N>(a[lane], b[lane]);
                const bool same =
                    std::equal(x[lane].begin(), x[lane].end(), expected.begin(), tests::sameDouble);
                different += same ? 0 : 1;
            }
        }
    }
    return different;
}

template <std::size_t... Offset>
int differencesOfAllSizes(const std::function<double()>& element,
                          std::index_sequence<Offset...> /*size minus 1*/)
{
    return (differences<Offset + 1>(element) + ...);
}

using Element = std::function<double(std::mt19937&)>;

} // namespace

Q_DECLARE_METATYPE(Element)

class tst_LaneSolver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exactlySolvableSystemGivesItsSolution();
    void unknownsStayInColumnOrderDespiteRowExchanges();
    void firstOfEqualPivotsIsChosen();
    void negativeZeroPivotCountsAsOneInEliminationOnly();
    void zeroMatrixGivesNaN();
    void resultsMatchSmallMatrixBitForBit_data();
    void resultsMatchSmallMatrixBitForBit();
};

void tst_LaneSolver::exactlySolvableSystemGivesItsSolution()
{
    // The system 2x + y = 5, x - y = 1 has the solution x = 2, y = 1. All steps are exact.
    const auto x = solved<2>({{{2, 1}, {1, -1}}}, {5, 1});
    QCOMPARE(x[0], 2.0);
    QCOMPARE(x[1], 1.0);
}

void tst_LaneSolver::unknownsStayInColumnOrderDespiteRowExchanges()
{
    // The pivot of column 0 (4) is in row 2, the pivot of column 1 (8) in row 0.
    const auto x = solved<3>({{{0, 8, 0}, {0, 0, 2}, {4, 0, 0}}}, {16, 6, 4});
    QCOMPARE(x[0], 1.0);
    QCOMPARE(x[1], 2.0);
    QCOMPARE(x[2], 3.0);
}

void tst_LaneSolver::firstOfEqualPivotsIsChosen()
{
    // With row 0 as the pivot row, the multiplier is 1 and 1 - 1e-20 is rounded to 1 in row 1.
    // So x1 = 1 / 1 and x0 = 0 - 1e-20. With row 1 as the pivot row, x0 would be 0.
    const auto x = solved<2>({{{1, 1e-20}, {1, 1}}}, {0, 1});
    QCOMPARE(x[1], 1.0);
    QVERIFY(tests::sameDouble(x[0], -1e-20));
}

void tst_LaneSolver::negativeZeroPivotCountsAsOneInEliminationOnly()
{
    // The pivot of column 0 is -0. As a divisor it counts as 1, so the multiplier is 0 / 1 and
    // row 1 does not change: x1 = 2. The back substitution divides by the pivot itself:
    // x0 = (1 - 2 * 0) / -0 = -inf.
    const auto x = solved<2>({{{-0.0, 0}, {0, 1}}}, {1, 2});
    QCOMPARE(x[1], 2.0);
    QCOMPARE(x[0], -infinity);
}

void tst_LaneSolver::zeroMatrixGivesNaN()
{
    const auto x = solved<3>({}, {});
    for (const double unknown : x) {
        QVERIFY(std::isnan(unknown));
    }
}

void tst_LaneSolver::resultsMatchSmallMatrixBitForBit_data()
{
    QTest::addColumn<Element>("element");

    const auto oneOf = [](const std::vector<double>& values) {
        return Element([values](std::mt19937& random) {
            return values[std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(random)];
        });
    };
    QTest::newRow("ordinary numbers") << Element(
        [](std::mt19937& random) { return std::uniform_real_distribution<>(-10, 10)(random); });
    QTest::newRow("all orders of magnitude") << Element([](std::mt19937& random) {
        return std::uniform_real_distribution<>(-1, 1)(random) *
               std::pow(10.0, std::uniform_real_distribution<>(-300, 300)(random));
    });
    QTest::newRow("many equal absolute values") << oneOf({-1, 1, 2, -2});
    QTest::newRow("often singular") << oneOf({0, 0, 1});
    QTest::newRow("zeros of both signs") << oneOf({0.0, -0.0});
    QTest::newRow("NaN") << oneOf({notANumber, 1, -3, 0.5, 7, 0});
    QTest::newRow("rare NaN") << oneOf(
        {notANumber, 1, -3, .5, 7, 2, 9, .1, 3, -8, 12, 6, 5, 4, .7, -.3});
    QTest::newRow("infinities") << oneOf({infinity, -infinity, 1, -3, 0.5, 7, 0});
    QTest::newRow("all kinds of numbers")
        << oneOf({notANumber, infinity, -infinity, 0.0, -0.0, 1, -1, 1e308, 5e-324, 0.1});
}

void tst_LaneSolver::resultsMatchSmallMatrixBitForBit()
{
    QFETCH(Element, element);
    std::mt19937 random(1);
    const auto next = [&] { return element(random); };
    QCOMPARE(differencesOfAllSizes(next, std::make_index_sequence<7>()), 0);
}

QTEST_APPLESS_MAIN(tst_LaneSolver)
#include "tst_LaneSolver.moc"
