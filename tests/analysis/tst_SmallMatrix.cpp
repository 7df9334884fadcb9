// The small matrix library: LU factorisation with partial pivoting, Gauss-Jordan elimination
// and basic operations. In most tests the numbers are chosen so that every step is exact, and
// the results are compared exactly.
#include "analysis/SmallMatrix.h"
#include "support/SameDouble.h"

#include <QTemporaryFile>
#include <QTest>

#include <cstdio>
#include <functional>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include <unistd.h>

using analysis::SmallMatrix;

using Values = std::vector<double>;
using Rows = std::vector<Values>;
using Indices = std::vector<std::int32_t>;

Q_DECLARE_METATYPE(Rows)

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A matrix in the storage that the library uses, with automatic release.
class Matrix
{
public:
    explicit Matrix(const Rows& values)
        : n(static_cast<std::int32_t>(values.size()))
    {
        m = SmallMatrix::newMatrix(n);
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::copy(values[i].begin(), values[i].end(), m[i]);
        }
    }
    explicit Matrix(std::size_t size)
        : Matrix(Rows(size, Values(size, -77.0)))
    {
    }
    ~Matrix() { SmallMatrix::freeMatrix(n, m); }
    Matrix(const Matrix&) = delete;
    Matrix& operator=(const Matrix&) = delete;

    operator double**() const { return m; }
    Rows values() const
    {
        Rows rows;
        for (std::int32_t i = 0; i < n; ++i) {
            rows.emplace_back(m[i], m[i] + n);
        }
        return rows;
    }

private:
    std::int32_t n;
    double** m = nullptr;
};

bool same(const Values& a, const Values& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), tests::sameDouble);
}

bool same(const Rows& a, const Rows& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Values& x, const Values& y) { return same(x, y); });
}

struct Solution {
    Rows l;
    Rows u;
    Indices perm;
    Values y;
    Values x;        ///< as the library returns it
    Values unknowns; ///< in column order, read through the permutation
};

Solution solved(const Rows& rows, const Values& right)
{
    const auto n = static_cast<std::int32_t>(rows.size());
    const Matrix a(rows);
    const Matrix l(rows.size());
    const Matrix u(rows.size());
    Solution s;
    s.perm.assign(rows.size(), -77);
    s.y.assign(rows.size(), -77.0);
    s.x.assign(rows.size(), -77.0);
    const SmallMatrix library;
    library.luDecompose(n, a, l, u, s.perm.data());
    library.forwardSolve(n, l, right.data(), s.y.data(), s.perm.data());
    library.backSolve(n, u, s.y.data(), s.x.data(), s.perm.data());
    s.l = l.values();
    s.u = u.values();
    for (const std::int32_t p : s.perm) {
        s.unknowns.push_back(s.x[static_cast<std::size_t>(p)]);
    }
    return s;
}

/// The solution by the textbook form of Gaussian elimination with partial pivoting, which
/// swaps the rows. The factors, y and x are then stored in the row order of the library.
Solution solvedBySwappingRows(Rows a, Values right)
{
    const std::size_t n = a.size();
    Indices order(n);
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t c = 0; c < n; ++c) {
        std::size_t pivot = c;
        double best = -1e300;
        for (std::size_t k = c; k < n; ++k) {
            if (std::fabs(a[k][c]) > best) {
                best = std::fabs(a[k][c]);
                pivot = k;
            }
        }
        std::swap(a[c], a[pivot]);
        std::swap(order[c], order[pivot]);
        std::swap(right[c], right[pivot]);
        for (std::size_t k = c + 1; k < n; ++k) {
            a[k][c] /= a[c][c] == 0.0 ? 1.0 : a[c][c];
            for (std::size_t j = c + 1; j < n; ++j) {
                a[k][j] -= a[c][j] * a[k][c];
            }
        }
    }
    Solution s{Rows(n, Values(n)), Rows(n, Values(n)), order, Values(n), Values(n), right};
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t k = i + 1; k < n; ++k) {
            s.unknowns[k] -= s.unknowns[i] * a[k][i];
        }
        s.y[static_cast<std::size_t>(order[i])] = s.unknowns[i];
    }
    for (std::size_t i = n; i-- > 0;) {
        s.unknowns[i] /= a[i][i];
        for (std::size_t k = i; k-- > 0;) {
            s.unknowns[k] -= s.unknowns[i] * a[k][i];
        }
    }
    for (std::size_t i = 0; i < n; ++i) {
        const auto row = static_cast<std::size_t>(order[i]);
        s.x[row] = s.unknowns[i];
        for (std::size_t j = 0; j < n; ++j) {
            s.l[row][j] = i > j ? a[i][j] : i == j ? 1.0 : 0.0;
            s.u[row][j] = i > j ? 0.0 : a[i][j];
        }
    }
    return s;
}

/// The output that @p print writes to the standard output.
QByteArray printed(const std::function<void()>& print)
{
    QTemporaryFile file;
    if (!file.open()) {
        return "no file";
    }
    std::fflush(stdout);
    const int kept = ::dup(STDOUT_FILENO);
    ::dup2(file.handle(), STDOUT_FILENO);
    print();
    std::fflush(stdout);
    ::dup2(kept, STDOUT_FILENO);
    ::close(kept);
    file.seek(0);
    return file.readAll();
}

} // namespace

class tst_SmallMatrix : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clearedMatrixAndVectorsContainOnlyZeros();
    void setIdentityWritesOnesOnTheDiagonalAndZerosElsewhere();
    void copyCopiesEveryElement();
    void multiplyMatricesFillsEachRowWithItsDiagonalElementOfTheProduct();
    void multiplyMatrixVectorCalculatesTheProduct();
    void hasNaNDetectsNaNInAnyElementButNotInfinity_data();
    void hasNaNDetectsNaNInAnyElementButNotInfinity();
    void functionsDoNothingForASizeBelowOne_data();
    void functionsDoNothingForASizeBelowOne();

    void solutionForTheIdentityIsTheRightSide();
    void largestEntryBecomesTheFirstPivotEvenInTheLastRow();
    void factorsAreStoredInPermutedRows();
    void decomposeLeavesTheMatrixUnchanged();
    void pivotHasTheLargestAbsoluteValue();
    void firstOfEqualPivotsIsChosen();
    void zeroPivotCountsAsOneInTheFactors();
    void zeroPivotGivesAnInfiniteUnknown();
    void zeroMatrixWithZeroRightSideGivesNaN();
    void numberIsChosenAsPivotInsteadOfNaN();
    void nanPropagatesToTheResult();
    void columnOfNaNKeepsTheRowOrder();
    void systemOfOneUnknownIsSolvedByDivision();
    void forwardSolveDividesAllButTheLastValueByTheDiagonal();
    void systemOfThreeUnknownsGivesItsKnownSolution();
    void randomSystemsAreSolvedWithSmallResiduals();
    void resultsMatchRowSwappingEliminationBitForBit();

    void gaussJordanSolvesADiagonalSystem();
    void gaussJordanDoesNotClearEarlierPivotRows();
    void gaussJordanStartsWithTheLargestDiagonalElement();
    void gaussJordanSkipsAZeroDiagonalElement();
    void gaussJordanUsesRowsWithNaNDiagonalAfterOtherRows();

    void printMatrixWritesOneLinePerRow();
    void printMatrixPermutedWritesTheRowsInPermutedOrder();
    void printVectorWritesTheElementsInOneRow();
    void printIndexVectorWritesTheIndicesInOneRow();
    void printVectorPermutedWritesTheElementsInPermutedOrder();
};

void tst_SmallMatrix::clearedMatrixAndVectorsContainOnlyZeros()
{
    const Matrix m(2);
    SmallMatrix::clearMatrix(2, m);
    QVERIFY(same(m.values(), Rows{{0, 0}, {0, 0}}));

    double* v = SmallMatrix::newVector(2);
    SmallMatrix::clearVector(2, v);
    QVERIFY(same(Values(v, v + 2), Values{0, 0}));
    SmallMatrix::freeVector(v);

    std::int32_t* p = SmallMatrix::newIndexVector(2);
    SmallMatrix::clearIndexVector(2, p);
    QCOMPARE(Indices(p, p + 2), (Indices{0, 0}));
    SmallMatrix::freeIndexVector(p);
}

void tst_SmallMatrix::setIdentityWritesOnesOnTheDiagonalAndZerosElsewhere()
{
    const Matrix m(3);
    SmallMatrix::setIdentity(3, m);
    QVERIFY(same(m.values(), Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

void tst_SmallMatrix::copyCopiesEveryElement()
{
    const Rows rows{{1, -0.0}, {notANumber, 4}};
    const Matrix from(rows);
    const Matrix to(2);
    SmallMatrix::copyMatrix(2, from, to);
    QVERIFY(same(to.values(), rows));

    const Values v{3, infinity};
    Values copy(2);
    SmallMatrix::copyVector(2, v.data(), copy.data());
    QVERIFY(same(copy, v));
}

void tst_SmallMatrix::multiplyMatricesFillsEachRowWithItsDiagonalElementOfTheProduct()
{
    // (1 2)(5 6)   (19 22)
    // (3 4)(7 8) = (43 50); only the diagonal, 19 and 50, is used.
    const Matrix a(Rows{{1, 2}, {3, 4}});
    const Matrix b(Rows{{5, 6}, {7, 8}});
    const Matrix c(2);
    SmallMatrix::multiplyMatrices(2, a, b, c);
    QVERIFY(same(c.values(), Rows{{19, 19}, {50, 50}}));
}

void tst_SmallMatrix::multiplyMatrixVectorCalculatesTheProduct()
{
    const Matrix a(Rows{{1, 2}, {3, 4}});
    const Values v{5, 6};
    Values out(2);
    SmallMatrix::multiplyMatrixVector(2, a, v.data(), out.data());
    QVERIFY(same(out, Values{17, 39}));
}

void tst_SmallMatrix::hasNaNDetectsNaNInAnyElementButNotInfinity_data()
{
    QTest::addColumn<double>("element");
    QTest::addColumn<int>("expected");

    QTest::newRow("finite number") << 1.0 << 0;
    QTest::newRow("infinity") << infinity << 0;
    QTest::newRow("NaN") << notANumber << 1;
    QTest::newRow("negative NaN") << -notANumber << 1;
}

void tst_SmallMatrix::hasNaNDetectsNaNInAnyElementButNotInfinity()
{
    QFETCH(double, element);
    QFETCH(int, expected);
    for (std::size_t i = 0; i < 2; ++i) {
        Values v{0, 0};
        v[i] = element;
        QCOMPARE(SmallMatrix::hasNaNVector(2, v.data()), expected);
        for (std::size_t j = 0; j < 2; ++j) {
            Rows rows{{0, 0}, {0, 0}};
            rows[i][j] = element;
            QCOMPARE(SmallMatrix::hasNaNMatrix(2, Matrix(rows)), expected);
        }
    }
}

void tst_SmallMatrix::functionsDoNothingForASizeBelowOne_data()
{
    QTest::addColumn<int>("n");

    QTest::newRow("zero") << 0;
    QTest::newRow("minus one") << -1;
    QTest::newRow("smallest int") << std::numeric_limits<std::int32_t>::min();
}

void tst_SmallMatrix::functionsDoNothingForASizeBelowOne()
{
    QFETCH(int, n);
    QVERIFY(!SmallMatrix::newMatrix(n));
    QVERIFY(!SmallMatrix::newVector(n));
    QVERIFY(!SmallMatrix::newIndexVector(n));
    SmallMatrix::freeMatrix(n, nullptr);
    SmallMatrix::freeVector(nullptr);
    SmallMatrix::freeIndexVector(nullptr);

    const Matrix a(Rows{{5}});
    const Matrix b(Rows{{6}});
    const Matrix c(Rows{{7}});
    Values v{8};
    Values w{notANumber};
    Indices perm{9};
    const QByteArray output = printed([&] {
        SmallMatrix::freeMatrix(n, a);
        SmallMatrix::clearMatrix(n, a);
        SmallMatrix::clearVector(n, v.data());
        SmallMatrix::clearIndexVector(n, perm.data());
        SmallMatrix::setIdentity(n, a);
        SmallMatrix::copyMatrix(n, b, a);
        SmallMatrix::copyVector(n, w.data(), v.data());
        SmallMatrix::multiplyMatrices(n, b, c, a);
        SmallMatrix::multiplyMatrixVector(n, b, w.data(), v.data());
        SmallMatrix::luDecompose(n, a, b, c, perm.data());
        SmallMatrix::forwardSolve(n, a, w.data(), v.data(), perm.data());
        SmallMatrix::backSolve(n, a, w.data(), v.data(), perm.data());
        SmallMatrix::gaussJordan(n, a, b);
        SmallMatrix::printMatrix("m", n, a);
        SmallMatrix::printMatrixPermuted("m", n, a, perm.data());
        SmallMatrix::printVector("v", n, v.data());
        SmallMatrix::printIndexVector("p", n, perm.data());
        SmallMatrix::printVectorPermuted("v", n, v.data(), perm.data());
    });
    QCOMPARE(output, QByteArray());
    QCOMPARE(SmallMatrix::hasNaNVector(n, w.data()), 0);
    QCOMPARE(SmallMatrix::hasNaNMatrix(n, Matrix(Rows{{notANumber}})), 0);
    QVERIFY(same(a.values(), Rows{{5}}));
    QVERIFY(same(b.values(), Rows{{6}}));
    QVERIFY(same(c.values(), Rows{{7}}));
    QVERIFY(same(v, Values{8}));
    QCOMPARE(perm, Indices{9});
}

void tst_SmallMatrix::solutionForTheIdentityIsTheRightSide()
{
    const Solution s = solved({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {5, -6, 7});
    QVERIFY(same(s.x, Values{5, -6, 7}));
    QCOMPARE(s.perm, (Indices{0, 1, 2}));
}

void tst_SmallMatrix::largestEntryBecomesTheFirstPivotEvenInTheLastRow()
{
    // x = 1, y = 2, z = 3
    const Solution s = solved({{1, 2, 0}, {2, 0, 1}, {4, 0, 0}}, {5, 5, 4});
    QCOMPARE(s.perm[0], 2);
    QVERIFY(same(s.unknowns, Values{1, 2, 3}));
    QVERIFY(!same(s.x, s.unknowns)); // otherwise the test would not check the permutation
}

void tst_SmallMatrix::factorsAreStoredInPermutedRows()
{
    // The rows are used in the order 1, 0: (4 8) and (2 5). The multiplier is 1/2, and 5 -
    // 1/2 * 8 = 1.
    const Solution s = solved({{2, 5}, {4, 8}}, {0, 0});
    QCOMPARE(s.perm, (Indices{1, 0}));
    QVERIFY(same(s.l, Rows{{0.5, 1}, {1, 0}}));
    QVERIFY(same(s.u, Rows{{0, 1}, {4, 8}}));
}

void tst_SmallMatrix::decomposeLeavesTheMatrixUnchanged()
{
    const Rows rows{{2, 5}, {4, 8}};
    const Matrix a(rows);
    const Matrix l(2);
    const Matrix u(2);
    Indices perm(2);
    SmallMatrix::luDecompose(2, a, l, u, perm.data());
    QVERIFY(same(a.values(), rows));
}

void tst_SmallMatrix::pivotHasTheLargestAbsoluteValue()
{
    QCOMPARE(solved({{2, 1}, {-4, 1}}, {0, 0}).perm, (Indices{1, 0}));
}

void tst_SmallMatrix::firstOfEqualPivotsIsChosen()
{
    QCOMPARE(solved({{3, 1, 0}, {-3, 1, 0}, {3, 0, 1}}, {0, 0, 0}).perm[0], 0);
    QCOMPARE(solved({{1, 1, 0}, {-3, 1, 0}, {3, 0, 1}}, {0, 0, 0}).perm[0], 1);
}

void tst_SmallMatrix::zeroPivotCountsAsOneInTheFactors()
{
    // Column 0 is zero: the multiplier is 0 / 1, not 0 / 0.
    const Solution s = solved({{0, 1}, {0, 3}}, {0, 0});
    QVERIFY(same(s.l, Rows{{1, 0}, {0, 1}}));
    QVERIFY(same(s.u, Rows{{0, 1}, {0, 3}}));
}

void tst_SmallMatrix::zeroPivotGivesAnInfiniteUnknown()
{
    // y = 6 / 3 = 2; x = (5 - 2 * 1) / 0.
    const Solution s = solved({{0, 1}, {0, 3}}, {5, 6});
    QVERIFY(same(s.unknowns, Values{infinity, 2}));
}

void tst_SmallMatrix::zeroMatrixWithZeroRightSideGivesNaN()
{
    const Solution s = solved(Rows(3, Values(3, 0.0)), {0, 0, 0});
    QCOMPARE(s.perm, (Indices{0, 1, 2}));
    QVERIFY(same(s.l, Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    QVERIFY(same(s.unknowns, Values{notANumber, notANumber, notANumber}));
}

void tst_SmallMatrix::numberIsChosenAsPivotInsteadOfNaN()
{
    QCOMPARE(solved({{notANumber, 0}, {0.5, 1}}, {0, 0}).perm, (Indices{1, 0}));
    QCOMPARE(solved({{0.5, 0}, {notANumber, 1}}, {0, 0}).perm, (Indices{0, 1}));
    QCOMPARE(solved({{notANumber, 0}, {0, 1}}, {0, 0}).perm,
             (Indices{1, 0})); // a NaN is not chosen, even if the other entry is 0
}

void tst_SmallMatrix::nanPropagatesToTheResult()
{
    const Solution s = solved({{4, 1, 0}, {1, notANumber, 2}, {0, 2, 8}}, {1, 2, 3});
    QVERIFY(same(s.unknowns, Values{notANumber, notANumber, notANumber}));
}

void tst_SmallMatrix::columnOfNaNKeepsTheRowOrder()
{
    // Column 0 is all NaN: row 0 remains the pivot row and the multiplier is NaN.
    const Solution s = solved({{notANumber, 1}, {notANumber, 3}}, {0, 0});
    QCOMPARE(s.perm, (Indices{0, 1}));
    QVERIFY(std::isnan(s.l[1][0]));
    QVERIFY(std::isnan(s.u[0][0]));
}

void tst_SmallMatrix::systemOfOneUnknownIsSolvedByDivision()
{
    const Solution s = solved({{4}}, {6});
    QVERIFY(same(s.y, Values{6}));
    QVERIFY(same(s.x, Values{1.5}));
    QVERIFY(same(solved({{0}}, {6}).x, Values{infinity}));
}

void tst_SmallMatrix::forwardSolveDividesAllButTheLastValueByTheDiagonal()
{
    // y0 = 8 / 2 and y1 = 7 - 4 * 3; the last value is not divided by its diagonal element.
    const Matrix l(Rows{{2, 0}, {3, 5}});
    const Values b{8, 7};
    const Indices perm{0, 1};
    Values y(2);
    SmallMatrix::forwardSolve(2, l, b.data(), y.data(), perm.data());
    QVERIFY(same(y, Values{4, -5}));
}

void tst_SmallMatrix::systemOfThreeUnknownsGivesItsKnownSolution()
{
    // The determinant is -70. The right side is calculated from the unknowns (1, -2, 3). The
    // tolerance 1e-14 is about twenty ulps of 3 (4.4e-16).
    const Solution s = solved({{3, 1, -2}, {2, -4, 1}, {1, 5, 2}}, {-5, 13, -3});
    const Values expected{1, -2, 3};
    for (std::size_t k = 0; k < 3; ++k) {
        QVERIFY(std::fabs(s.unknowns[k] - expected[k]) < 1e-14);
    }
}

void tst_SmallMatrix::randomSystemsAreSolvedWithSmallResiduals()
{
    // The residual of a backward stable solution is a few ulps of its terms, so about 1e-15
    // times their size. All |a| are at most 1, so `size`, the sum of |b| and all |x|, is an
    // upper bound for the terms. 1e-12 times `size` is a safe limit.
    std::mt19937 random(7);
    std::uniform_real_distribution<> uniform(-1, 1);
    for (std::size_t n = 1; n <= 7; ++n) {
        for (int trial = 0; trial < 200; ++trial) {
            Rows rows(n, Values(n));
            Values right(n);
            for (std::size_t i = 0; i < n; ++i) {
                std::generate(rows[i].begin(), rows[i].end(), [&] { return uniform(random); });
                right[i] = uniform(random);
            }
            const Values x = solved(rows, right).unknowns;
            for (std::size_t i = 0; i < n; ++i) {
                double residual = -right[i];
                double size = std::fabs(right[i]);
                for (std::size_t j = 0; j < n; ++j) {
                    residual += rows[i][j] * x[j];
                    size += std::fabs(x[j]);
                }
                QVERIFY(std::fabs(residual) < 1e-12 * size);
            }
        }
    }
}

void tst_SmallMatrix::resultsMatchRowSwappingEliminationBitForBit()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<> uniform(-1, 1);
    const Values odd{0.0, -0.0, 1.0, -1.0, notANumber, infinity, -infinity, 1e-300, 1e200};
    const auto number = [&](unsigned rarity) {
        return random() % rarity == 0 ? odd[random() % odd.size()] : uniform(random);
    };
    for (std::size_t n = 1; n <= 7; ++n) {
        for (unsigned trial = 0; trial < 400; ++trial) {
            const unsigned rarity = trial % 4 == 0 ? 1000 : 2 + trial % 40;
            Rows rows(n, Values(n));
            Values right(n);
            for (std::size_t i = 0; i < n; ++i) {
                std::generate(rows[i].begin(), rows[i].end(), [&] { return number(rarity); });
                right[i] = number(rarity);
            }
            const Solution s = solved(rows, right);
            const Solution expected = solvedBySwappingRows(rows, right);
            QCOMPARE(s.perm, expected.perm);
            QVERIFY(same(s.l, expected.l) && same(s.u, expected.u));
            QVERIFY(same(s.y, expected.y) && same(s.x, expected.x));
            QVERIFY(same(s.unknowns, expected.unknowns));
        }
    }
}

void tst_SmallMatrix::gaussJordanSolvesADiagonalSystem()
{
    const Matrix a(Rows{{2, 0}, {0, 4}});
    const Matrix b(Rows{{1, 2}, {3, 8}});
    SmallMatrix::gaussJordan(2, a, b);
    QVERIFY(same(a.values(), Rows{{1, 0}, {0, 1}}));
    QVERIFY(same(b.values(), Rows{{0.5, 1}, {0.75, 2}}));
}

void tst_SmallMatrix::gaussJordanDoesNotClearEarlierPivotRows()
{
    // Row 0 is used first and becomes (1 .5 | .5 0). Row 1 minus 1 times row 0 is (0 1.5 | -.5 1),
    // which is then divided by 1.5. The .5 above the second diagonal element remains. The expected
    // thirds are rounded in the same way.
    const Matrix a(Rows{{4, 2}, {1, 2}});
    const Matrix b(Rows{{2, 0}, {0, 1}});
    SmallMatrix::gaussJordan(2, a, b);
    QVERIFY(same(a.values(), Rows{{1, 0.5}, {0, 1}}));
    QVERIFY(same(b.values(), Rows{{0.5, 0}, {-0.5 / 1.5, 1 / 1.5}}));
}

void tst_SmallMatrix::gaussJordanStartsWithTheLargestDiagonalElement()
{
    // Row 1 is used first, since its diagonal element has the largest absolute value; it
    // becomes (-.25 1). Row 0 minus 4 times row 1 is (2 0). The -.25 shows the order: it would
    // be 0 if row 0 were used first.
    const Matrix a(Rows{{1, 4}, {2, -8}});
    const Matrix b(Rows{{1, 0}, {0, 8}});
    SmallMatrix::gaussJordan(2, a, b);
    QVERIFY(same(a.values(), Rows{{1, 0}, {-0.25, 1}}));
    QVERIFY(same(b.values(), Rows{{0.5, 2}, {-0.0, -1}}));
}

void tst_SmallMatrix::gaussJordanSkipsAZeroDiagonalElement()
{
    // Row 1 is used first and becomes (0 1). Row 0 minus 3 times row 1 keeps its zero diagonal
    // element.
    const Matrix a(Rows{{0, 3}, {0, 2}});
    const Matrix b(Rows{{5, 6}, {4, 8}});
    SmallMatrix::gaussJordan(2, a, b);
    QVERIFY(same(a.values(), Rows{{0, 0}, {0, 1}}));
    QVERIFY(same(b.values(), Rows{{-1, -6}, {2, 4}}));
}

void tst_SmallMatrix::gaussJordanUsesRowsWithNaNDiagonalAfterOtherRows()
{
    // Row 2 is used first and changes no other row. Row 0 is next: its NaN spreads over row 0 and,
    // by the multiplier 1, over row 1.
    const Matrix a(Rows{{notANumber, 0, 0}, {1, notANumber, 0}, {0, 0, 2}});
    const Matrix b(Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    SmallMatrix::gaussJordan(3, a, b);
    QVERIFY(same(a.values(), Rows{{notANumber, notANumber, notANumber},
                                  {notANumber, notANumber, notANumber},
                                  {0, 0, 1}}));
    QVERIFY(same(b.values()[2], Values{0, 0, 0.5}));
}

void tst_SmallMatrix::printMatrixWritesOneLinePerRow()
{
    const Matrix m(Rows{{1, 2.5}, {-3, 1e-10}});
    QCOMPARE(printed([&] { SmallMatrix::printMatrix("name", 2, m); }),
             QByteArray("# name = \n# 1 2.5 \n# -3 1e-10 \n# \n"));
}

void tst_SmallMatrix::printMatrixPermutedWritesTheRowsInPermutedOrder()
{
    const Matrix m(Rows{{1, 2}, {3, 4}});
    const Indices perm{1, 0};
    QCOMPARE(printed([&] { SmallMatrix::printMatrixPermuted("m", 2, m, perm.data()); }),
             QByteArray("# m = \n# 3 4 \n# 1 2 \n# \n"));
}

void tst_SmallMatrix::printVectorWritesTheElementsInOneRow()
{
    const Values v{1, 1234567, notANumber};
    QCOMPARE(printed([&] { SmallMatrix::printVector("v", 3, v.data()); }),
             QByteArray("# v = \n# 1 1.23457e+06 nan \n# \n"));
}

void tst_SmallMatrix::printIndexVectorWritesTheIndicesInOneRow()
{
    const Indices p{2, 0, -1};
    QCOMPARE(printed([&] { SmallMatrix::printIndexVector("p", 3, p.data()); }),
             QByteArray("# p = \n# 2 0 -1 \n# \n"));
}

void tst_SmallMatrix::printVectorPermutedWritesTheElementsInPermutedOrder()
{
    const Values v{10, 20, 30};
    const Indices perm{2, 0, 1};
    QCOMPARE(printed([&] { SmallMatrix::printVectorPermuted("v", 3, v.data(), perm.data()); }),
             QByteArray("# v = \n# 30 10 20 \n# \n"));
}

QTEST_APPLESS_MAIN(tst_SmallMatrix)
#include "tst_SmallMatrix.moc"
