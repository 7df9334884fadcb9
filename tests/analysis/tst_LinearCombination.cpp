// analysis::LinearCombination: small cases that are calculated by hand, and random cases that
// are compared bit for bit with the reference implementation. The reference implementation
// factorises the matrix again for every set of values.
#include "analysis/LinearCombination.h"

#include "support/PlainFits.h"
#include "support/SameDouble.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

using analysis::LinearCombination;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Element = std::function<double(std::mt19937&)>;

double uniform(std::mt19937& random)
{
    return std::uniform_real_distribution<double>(-2.0, 2.0)(random);
}

/// Number of coefficients that differ from the reference implementation, for random bases with 1 to
/// 7 unknowns and 0 to 9 rows, and three sets of values for each basis.
int differences(const Element& element)
{
    std::mt19937 random(7);
    int different = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        const int unknowns = 1 + trial % LinearCombination::maxUnknowns;
        const int rows = static_cast<int>(random() % 10);
        std::vector<double> basis(static_cast<std::size_t>(unknowns * rows));
        for (double& value : basis) {
            value = element(random);
        }
        const LinearCombination fit(unknowns, basis);
        for (int set = 0; set < 3; ++set) {
            QList<double> y;
            for (int row = 0; row < rows; ++row) {
                y.append(element(random));
            }
            const auto fill = [&](qsizetype row, double* phi) {
                std::copy_n(basis.data() + row * unknowns, unknowns, phi);
            };
            const QList<double> expected = tests::plainCoefficients(unknowns, fill, y);
            const auto x = fit.coefficients(y);
            for (int i = 0; i < unknowns; ++i) {
                different +=
                    tests::sameDouble(x[static_cast<std::size_t>(i)], expected.at(i)) ? 0 : 1;
            }
        }
    }
    return different;
}

} // namespace

Q_DECLARE_METATYPE(Element)

class tst_LinearCombination : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineThroughTwoPointsIsExact();
    void constantFitGivesTheMean();
    void unusedCoefficientsAreZero();
    void fitWithoutRowsGivesNaN();
    void nanInOneFitDoesNotAffectTheNextFit();
    void coefficientsMatchTheReferenceImplementationBitForBit_data();
    void coefficientsMatchTheReferenceImplementationBitForBit();
};

void tst_LinearCombination::lineThroughTwoPointsIsExact()
{
    // The line 1 + 2 t at t = 0 and t = 1. The normal matrix {2, 1}, {1, 1} is exact.
    const LinearCombination fit(2, {1, 0, 1, 1});
    const std::array<double, 2> y{1, 3};
    const auto x = fit.coefficients(y);
    QCOMPARE(x[0], 1.0);
    QCOMPARE(x[1], 2.0);
}

void tst_LinearCombination::constantFitGivesTheMean()
{
    const LinearCombination fit(1, {1, 1, 1, 1});
    const std::array<double, 4> y{1, 2, 3, 10};
    QCOMPARE(fit.coefficients(y)[0], 4.0);
}

void tst_LinearCombination::unusedCoefficientsAreZero()
{
    const LinearCombination fit(1, {2});
    const double y = 6;
    const auto x = fit.coefficients({&y, 1});
    QCOMPARE(x[0], 3.0);
    for (std::size_t i = 1; i < x.size(); ++i) {
        QCOMPARE(x[i], 0.0);
    }
}

void tst_LinearCombination::fitWithoutRowsGivesNaN()
{
    const LinearCombination fit(3, {});
    const auto x = fit.coefficients({});
    for (std::size_t i = 0; i < 3; ++i) {
        QVERIFY(std::isnan(x[i]));
    }
}

void tst_LinearCombination::nanInOneFitDoesNotAffectTheNextFit()
{
    const LinearCombination fit(1, {1, 1});
    const std::array<double, 2> first{notANumber, 1};
    const std::array<double, 2> second{2, 4};
    QVERIFY(std::isnan(fit.coefficients(first)[0]));
    QCOMPARE(fit.coefficients(second)[0], 3.0);
}

void tst_LinearCombination::coefficientsMatchTheReferenceImplementationBitForBit_data()
{
    QTest::addColumn<Element>("element");
    QTest::newRow("random") << Element(uniform);
    QTest::newRow("small integers, often singular")
        << Element([](std::mt19937& random) { return static_cast<double>(random() % 3) - 1.0; });
    QTest::newRow("zeros") << Element([](std::mt19937&) { return 0.0; });
    QTest::newRow("negative zeros")
        << Element([](std::mt19937& random) { return random() % 2 == 0 ? -0.0 : 1.0; });
    QTest::newRow("some NaN") << Element(
        [](std::mt19937& random) { return random() % 10 == 0 ? notANumber : uniform(random); });
    QTest::newRow("some infinite") << Element(
        [](std::mt19937& random) { return random() % 10 == 0 ? infinity : uniform(random); });
    QTest::newRow("all magnitudes") << Element([](std::mt19937& random) {
        return std::ldexp(uniform(random), static_cast<int>(random() % 1000) - 500);
    });
}

void tst_LinearCombination::coefficientsMatchTheReferenceImplementationBitForBit()
{
    QFETCH(Element, element);
    QCOMPARE(differences(element), 0);
}

QTEST_APPLESS_MAIN(tst_LinearCombination)
#include "tst_LinearCombination.moc"
