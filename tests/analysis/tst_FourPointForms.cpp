// The three-point and four-point formulas for a single target.
#include "analysis/FourPointForms.h"

#include "support/PlainMapForms.h"
#include "support/SameDouble.h"

#include <QTest>

#include <array>
#include <cmath>
#include <random>

using analysis::ThreeValues;

namespace
{

// A target that follows the model exactly: a mixture of two references on a background that is
// linear in energy. After division by their edge jumps, the references are equal at all rows
// except the V row.
struct Mixture {
    std::array<double, 4> E{8250, 8320, 8385, 8345}; // eV; the V row is the last
    std::array<double, 4> R1{};
    std::array<double, 4> R2{};
    std::array<double, 4> T{};
    double r = 0.0;
    double tts = 0.0;
};

Mixture mixture(double fraction, double thickness, double jump1, double jump2, double mu0,
                double slope)
{
    const std::array<double, 4> shape1{0.01, 0.03, 1.02, 0.75};
    const std::array<double, 4> shape2{0.01, 0.03, 1.02, 0.45};
    Mixture m;
    m.r = jump1 / jump2;
    for (std::size_t i = 0; i < 4; ++i) {
        m.R1[i] = jump1 * shape1[i];
        m.R2[i] = jump2 * shape2[i];
        m.T[i] = thickness * (fraction * shape1[i] + (1 - fraction) * shape2[i]) + mu0 +
                 slope * (m.E[i] - 8300);
    }
    // The four-point forms return the thickness in units of the references' mean edge jump.
    m.tts = 2 * thickness / (jump1 + jump2);
    return m;
}

double exact(const Mixture& m, double* tts)
{
    return analysis::exactFourPoints(m.T[0], m.T[1], m.T[2], m.T[3], m.R1[0], m.R1[1], m.R1[2],
                                     m.R1[3], m.R2[0], m.R2[1], m.R2[2], m.R2[3], m.E[0], m.E[1],
                                     m.E[2], m.E[3], m.r, tts);
}

double leastSquare(const Mixture& m, double* tts)
{
    return analysis::leastSquareFourPoints(
        m.T[3], m.R1[3], m.R2[3], m.E[3], {m.T[0], m.T[1], m.T[2]}, {m.R1[0], m.R1[1], m.R1[2]},
        {m.R2[0], m.R2[1], m.R2[2]}, {m.E[0], m.E[1], m.E[2]}, m.r, tts);
}

// The normal equations for three close energies near 8300 eV are badly conditioned (condition
// number above 1e12), so the tolerance is larger than the 1e-10 of the exact form.
constexpr double leastSquareTolerance = 1e-6;

} // namespace

class tst_FourPointForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threePointFractionOfTheFirstReferenceIsOne();
    void threePointFractionOfTheSecondReferenceIsZero();
    void threePointsMatchAHandCalculation();
    void threePointFractionAboveOneIsNotClamped();
    void zeroDivisorMakesTheThreePointFractionNaNOrInfinite();
    void threePointThicknessIgnoresTheSecondReferenceAtRowOne();
    void thicknessOfTheFirstReferenceIsOneIfBothAgreeAtRowZero();
    void exactFormGivesFractionHalfAndThicknessOneForEqualParts();
    void fourPointFormsRecoverFractionAndThickness_data();
    void fourPointFormsRecoverFractionAndThickness();
    void equalEnergiesMakeTheExactFormNaN();
    void targetLinearInEnergyHasNaNFractionAndZeroThickness();
    void jumpRatioOfMinusOneMakesTheFractionNonFinite();
    void swappedRowsChangeTheFractionOnlyByRounding();
    void leastSquareOfThreeRowsAgreesWithTheExactForm();
    void leastSquareWithoutRowsIsNaN();
    void leastSquareUsesTheLengthOfTheShortestList();
    void leastSquareMatchesTheReferenceImplementationExactly();
};

void tst_FourPointForms::threePointFractionOfTheFirstReferenceIsOne()
{
    const ThreeValues r1{0.1, 1.1, 0.7};
    const ThreeValues r2{0.1, 1.2, 0.4};
    QCOMPARE(analysis::threePointFraction(r1, r1, r2), 1.0);
}

void tst_FourPointForms::threePointFractionOfTheSecondReferenceIsZero()
{
    const ThreeValues r1{0.1, 1.1, 0.7};
    const ThreeValues r2{0.1, 1.2, 0.4};
    QCOMPARE(analysis::threePointFraction(r2, r1, r2), 0.0);
}

void tst_FourPointForms::threePointsMatchAHandCalculation()
{
    // f is (value at the V row - value at row 0) / (value at row 1 - value at row 0):
    // f(T) = 2/4, f(R1) = 3/4 and f(R2) = 1/4. So a = (1/2 - 1/4) / (3/4 - 1/4) = 1/2.
    QCOMPARE(analysis::threePointFraction({1, 5, 3}, {0, 4, 3}, {0, 4, 1}), 0.5);
}

void tst_FourPointForms::threePointFractionAboveOneIsNotClamped()
{
    // With f as in threePointsMatchAHandCalculation(), f(T) = 4/4, so
    // a = (1 - 1/4) / (3/4 - 1/4) = 1.5.
    QCOMPARE(analysis::threePointFraction({1, 5, 5}, {0, 4, 3}, {0, 4, 1}), 1.5);
}

void tst_FourPointForms::zeroDivisorMakesTheThreePointFractionNaNOrInfinite()
{
    const ThreeValues r1{0, 4, 3};
    const ThreeValues r2{0, 4, 1};
    QVERIFY(std::isnan(analysis::threePointFraction({1, 1, 1}, r1, r2)));
    QVERIFY(std::isinf(analysis::threePointFraction({1, 5, 3}, r1, r1)));
    QVERIFY(std::isnan(analysis::threePointFraction({1, 5, 4}, r1, r1))); // 0 / 0
}

void tst_FourPointForms::threePointThicknessIgnoresTheSecondReferenceAtRowOne()
{
    // T rises by 9 - 1 = 8. Both terms of the divisor use R1 at row 1, which is 5, so the
    // divisor is 0.5 * ((5 - 3) + (5 - 1)) = 3. With R2 at row 1 (7) in the first term, the
    // divisor would be 4 and the thickness 2. The asymmetry is on purpose: it keeps results
    // comparable with earlier data.
    QCOMPARE(analysis::threePointThickness({1, 9, 0}, {1, 5, 0}, {3, 7, 0}), 8.0 / 3.0);
}

void tst_FourPointForms::thicknessOfTheFirstReferenceIsOneIfBothAgreeAtRowZero()
{
    const ThreeValues r1{1, 5, 0};
    QCOMPARE(analysis::threePointThickness(r1, r1, {1, 9, 0}), 1.0);
    QVERIFY(analysis::threePointThickness(r1, r1, {2, 9, 0}) != 1.0);
}

void tst_FourPointForms::exactFormGivesFractionHalfAndThicknessOneForEqualParts()
{
    // R1 is 1, 2, 4 and 8 (V row), R2 is 3, 3, 9 and 2 (V row), T is (R1 + R2) / 2. The
    // energies are 0, 1, 5 and 2 (V row).
    double tts = 0.0;
    const double a =
        analysis::exactFourPoints(2, 2.5, 6.5, 5, 1, 2, 4, 8, 3, 3, 9, 2, 0, 1, 5, 2, 1.0, &tts);
    QVERIFY2(std::abs(a - 0.5) < 1e-14, qPrintable(QString::number(a, 'g', 17)));
    QVERIFY2(std::abs(tts - 1.0) < 1e-14, qPrintable(QString::number(tts, 'g', 17)));
}

void tst_FourPointForms::fourPointFormsRecoverFractionAndThickness_data()
{
    QTest::addColumn<double>("fraction");
    QTest::addColumn<double>("thickness");
    QTest::addColumn<double>("jump1");
    QTest::addColumn<double>("jump2");
    QTest::addColumn<double>("mu0");
    QTest::addColumn<double>("slope"); // 1/eV
    QTest::newRow("equal jumps, no background") << 0.35 << 1.2 << 1.0 << 1.0 << 0.0 << 0.0;
    QTest::newRow("different jumps") << 0.35 << 1.2 << 1.5 << 0.8 << 0.0 << 0.0;
    QTest::newRow("constant background") << 0.6 << 0.7 << 1.5 << 0.8 << 0.3 << 0.0;
    QTest::newRow("sloping background") << 0.6 << 0.7 << 1.5 << 0.8 << 0.3 << -2e-4;
    QTest::newRow("negative fraction") << -0.2 << 1.0 << 1.0 << 1.1 << 0.1 << 1e-4;
}

void tst_FourPointForms::fourPointFormsRecoverFractionAndThickness()
{
    QFETCH(double, fraction);
    QFETCH(double, thickness);
    QFETCH(double, jump1);
    QFETCH(double, jump2);
    QFETCH(double, mu0);
    QFETCH(double, slope);
    const Mixture m = mixture(fraction, thickness, jump1, jump2, mu0, slope);
    double tts = 0.0;
    const double a = exact(m, &tts);
    QVERIFY2(std::abs(a - fraction) < 1e-10, qPrintable(QString::number(a, 'g', 17)));
    QVERIFY2(std::abs(tts - m.tts) < 1e-10, qPrintable(QString::number(tts, 'g', 17)));
    const double b = leastSquare(m, &tts);
    QVERIFY2(std::abs(b - fraction) < leastSquareTolerance,
             qPrintable(QString::number(b, 'g', 17)));
    QVERIFY2(std::abs(tts - m.tts) < leastSquareTolerance,
             qPrintable(QString::number(tts, 'g', 17)));
}

void tst_FourPointForms::equalEnergiesMakeTheExactFormNaN()
{
    double tts = 0.0;
    const double a =
        analysis::exactFourPoints(1, 2, 3, 2, 1, 2, 4, 8, 3, 3, 9, 2, 5, 5, 5, 5, 1.0, &tts);
    QVERIFY(std::isnan(a));
    QVERIFY(std::isnan(tts));
}

void tst_FourPointForms::targetLinearInEnergyHasNaNFractionAndZeroThickness()
{
    // T = E, so the determinant DT of the target is 0. The determinant DS of the references is
    // not 0, so K = DS / DT is infinite.
    double tts = 1.0;
    const double a =
        analysis::exactFourPoints(0, 1, 5, 2, 1, 2, 4, 8, 3, 3, 9, 2, 0, 1, 5, 2, 1.0, &tts);
    QVERIFY(std::isnan(a));
    QCOMPARE(tts, 0.0); // 1 / (K / 2)
}

void tst_FourPointForms::jumpRatioOfMinusOneMakesTheFractionNonFinite()
{
    double tts = 0.0;
    QVERIFY(!std::isfinite(
        analysis::exactFourPoints(2, 2.5, 6.5, 5, 1, 2, 4, 8, 3, 3, 9, 2, 0, 1, 5, 2, -1.0, &tts)));
}

void tst_FourPointForms::swappedRowsChangeTheFractionOnlyByRounding()
{
    const Mixture m = mixture(0.35, 1.2, 1.5, 0.8, 0.2, 1e-4);
    Mixture swapped = m;
    std::swap(swapped.E[0], swapped.E[2]);
    std::swap(swapped.R1[0], swapped.R1[2]);
    std::swap(swapped.R2[0], swapped.R2[2]);
    std::swap(swapped.T[0], swapped.T[2]);
    double tts = 0.0;
    QVERIFY(std::abs(exact(m, &tts) - exact(swapped, &tts)) < 1e-10);
    QVERIFY(std::abs(leastSquare(m, &tts) - leastSquare(swapped, &tts)) < leastSquareTolerance);
}

void tst_FourPointForms::leastSquareOfThreeRowsAgreesWithTheExactForm()
{
    // These numbers do not follow the model. Both forms still agree, because a least-squares
    // plane fitted to three points passes through them.
    Mixture m = mixture(0.35, 1.2, 1.5, 0.8, 0.2, 1e-4);
    m.T[1] += 0.05;
    m.R1[2] -= 0.03;
    double ttsExact = 0.0;
    double ttsSquare = 0.0;
    const double a = exact(m, &ttsExact);
    const double b = leastSquare(m, &ttsSquare);
    QVERIFY2(std::abs(a - b) < leastSquareTolerance, qPrintable(QString::number(a - b)));
    QVERIFY(std::abs(ttsExact - ttsSquare) < leastSquareTolerance);
}

void tst_FourPointForms::leastSquareWithoutRowsIsNaN()
{
    double tts = 0.0;
    QVERIFY(std::isnan(analysis::leastSquareFourPoints(1, 2, 3, 8345, {}, {}, {}, {}, 1.0, &tts)));
    QVERIFY(std::isnan(tts));
}

void tst_FourPointForms::leastSquareUsesTheLengthOfTheShortestList()
{
    const Mixture m = mixture(0.35, 1.2, 1.5, 0.8, 0.2, 1e-4);
    double full = 0.0;
    double longer = 0.0;
    const double a = leastSquare(m, &full);
    const double b = analysis::leastSquareFourPoints(
        m.T[3], m.R1[3], m.R2[3], m.E[3], {m.T[0], m.T[1], m.T[2], 99}, {m.R1[0], m.R1[1], m.R1[2]},
        {m.R2[0], m.R2[1], m.R2[2], 1, 2}, {m.E[0], m.E[1], m.E[2]}, m.r, &longer);
    QVERIFY(tests::sameDouble(a, b));
    QVERIFY(tests::sameDouble(full, longer));
}

void tst_FourPointForms::leastSquareMatchesTheReferenceImplementationExactly()
{
    std::mt19937_64 random(20261120);
    std::uniform_real_distribution<double> mut(-1.5, 3.0);
    std::uniform_real_distribution<double> energy(8000, 9000);
    const std::array<double, 6> odd{0.0,
                                    -0.0,
                                    std::numeric_limits<double>::infinity(),
                                    std::numeric_limits<double>::quiet_NaN(),
                                    1e300,
                                    1e-300};
    for (int round = 0; round < 20000; ++round) {
        QList<double> t, r1, r2, e;
        const auto rows = static_cast<int>(random() % 8);
        for (int i = 0; i < rows; ++i) {
            t.append(random() % 40 == 0 ? odd[random() % odd.size()] : mut(random));
            r1.append(random() % 60 == 0 ? odd[random() % odd.size()] : mut(random));
            r2.append(mut(random));
            e.append(random() % 10 == 0 ? 8333.0 : energy(random));
        }
        const double tv = mut(random), r1v = mut(random), r2v = mut(random), ev = energy(random);
        const double r = random() % 50 == 0 ? -1.0 : mut(random);
        double tts = 0.0;
        double plainTts = 0.0;
        const double a = analysis::leastSquareFourPoints(tv, r1v, r2v, ev, t, r1, r2, e, r, &tts);
        const double plain =
            tests::plainLeastSquareFourPoints(tv, r1v, r2v, ev, t, r1, r2, e, r, &plainTts);
        QVERIFY2(tests::sameDouble(a, plain), qPrintable(QString::number(round)));
        QVERIFY2(tests::sameDouble(tts, plainTts), qPrintable(QString::number(round)));
    }
}

QTEST_APPLESS_MAIN(tst_FourPointForms)
#include "tst_FourPointForms.moc"
