// The non-equivalent method for one target: the preparation of the inputs, the fit and its result.
#include "analysis/NonEquivalent.h"

#include "analysis/ReferenceSet.h"
#include "analysis/RowCollection.h"
#include "data/AMutE.h"
#include "support/PlainFits.h"
#include "support/SameDouble.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using analysis::NeqInputs;
using analysis::PointState;
using analysis::ReferenceSet;
using analysis::ReferenceState;

namespace neq = analysis::neq;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// A spectrum with the given mut values at 100, 200, ... eV; the pre-edge and post-edge lines are
// the constants `pre` and `post`.
AMutE spectrum(const QList<double>& muts, double pre = 0.0, double post = 1.0)
{
    AMutE made;
    made.valid = true;
    for (qsizetype i = 0; i < muts.size(); ++i) {
        made.points.append({0.0, 100.0 * static_cast<double>(i + 1), muts.at(i)});
    }
    made.preLine = {pre, 0, 0};
    made.postLine = {post, 0, 0};
    return made;
}

PointState point(bool used, double energy)
{
    PointState state;
    state.used = used;
    state.energy = energy;
    return state;
}

bool isNear(double a, double b, double tolerance = 1e-9)
{
    return std::fabs(a - b) <= tolerance;
}

struct Solved {
    double sum = 0.0;
    QList<double> out;
};

Solved solve(bool victoreen, const QList<double>& T, const QList<QList<double>>& refValues,
             const QList<double>& energies, const QList<double>& weights)
{
    Solved solved;
    analysis::neqSolve(victoreen, T, refValues, energies, weights, &solved.sum, solved.out);
    return solved;
}

const QList<QList<double>> twoReferences{{0, 1, 3, 2, 5}, {1, 0, 2, 4, 4}};
const QList<double> fiveEnergies{100, 200, 300, 400, 500};

} // namespace

class tst_NonEquivalent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void preparationCollectsTheUsedRowsEvenWithoutMaps();
    void preOrPostEdgeLineIsSubtractedFromReferences();
    void preparationSkipsUnusedReferences();
    void weightsAreInfiniteIfTheJumpsAddUpToZero();
    void preparationWithoutUsedRowsHasBaseRowZero();
    void preOrPostEdgeLineIsSubtractedFromTheTarget();
    void mixtureIsRecoveredWithLinearBackground();
    void mixtureIsRecoveredWithVictoreenBackground();
    void sharesAreWeightedByTheJumps();
    void sharesAddUpToOneAndCanBeNegative();
    void entriesThatNeqSolveDoesNotFillAreZero();
    void energiesBeyondTheTargetValuesAreIgnored();
    void fifthReferenceIsIgnored();
    void missingWeightCountsAsZero();
    void spectraBeyondTheUsedReferencesAreIgnored();
    void zeroTargetMakesEveryShareNaN();
    void equalReferencesGiveNonFiniteShares();
    void valenceIsTheSumOfSharesTimesValences();
    void valenceOfAMissingReferenceCountsAsZero();
    void targetAmountsAreShareTimesTotal();
    void fitMatchesTheReferenceImplementationBitForBit();
};

void tst_NonEquivalent::preparationCollectsTheUsedRowsEvenWithoutMaps()
{
    const AMutE a = spectrum({1, 2, 3});
    const AMutE b = spectrum({4, 4, 4});
    const ReferenceSet refs({{true, true, 2, 1}, {true, true, 3, 3}, {}, {}});
    const NeqInputs inputs = analysis::neqPrepare(
        {point(false, 100), point(true, 150), point(false, 200), point(true, 300)}, refs, {&a, &b},
        false);
    QCOMPARE(inputs.energies, (QList<double>{150, 300}));
    QCOMPARE(inputs.rowIndices, (QList<int>{1, 3}));
    QCOMPARE(inputs.baseRow, 1);
    QCOMPARE(inputs.refValues, (QList<QList<double>>{{1.5, 3}, {4, 4}}));
    QCOMPARE(inputs.valences, (QList<double>{2, 3}));
}

void tst_NonEquivalent::preOrPostEdgeLineIsSubtractedFromReferences()
{
    const AMutE a = spectrum({1, 2, 3}, 0.25, 0.75);
    const ReferenceSet refs({{true, true, 2, 1}, {}, {}, {}});
    QCOMPARE(analysis::neqPrepare({point(true, 100)}, refs, {&a}, false).refValues,
             (QList<QList<double>>{{0.75}}));
    QCOMPARE(analysis::neqPrepare({point(true, 100)}, refs, {&a}, true).refValues,
             (QList<QList<double>>{{0.25}}));
}

void tst_NonEquivalent::preparationSkipsUnusedReferences()
{
    const AMutE b = spectrum({4, 4, 4});
    const AMutE d = spectrum({8, 8, 8});
    const ReferenceSet refs(
        {{false, true, 2, 100}, {true, true, 3, 1}, {false, true, 4, 100}, {true, true, 5, 3}});
    const NeqInputs inputs = analysis::neqPrepare({point(true, 200)}, refs, {&b, &d}, false);
    QCOMPARE(inputs.refValues, (QList<QList<double>>{{4}, {8}}));
    QCOMPARE(inputs.jumpSum, 4.0);
    QCOMPARE(inputs.weights, (QList<double>{0.25, 0.75}));
    QCOMPARE(inputs.valences, (QList<double>{3, 5}));
}

void tst_NonEquivalent::weightsAreInfiniteIfTheJumpsAddUpToZero()
{
    const AMutE a = spectrum({1, 1});
    const ReferenceSet refs({{true, true, 2, 2}, {true, true, 3, -2}, {}, {}});
    const NeqInputs inputs = analysis::neqPrepare({}, refs, {&a, &a}, false);
    QCOMPARE(inputs.jumpSum, 0.0);
    QVERIFY(std::isinf(inputs.weights.at(0)) && inputs.weights.at(0) > 0);
    QVERIFY(std::isinf(inputs.weights.at(1)) && inputs.weights.at(1) < 0);
}

void tst_NonEquivalent::preparationWithoutUsedRowsHasBaseRowZero()
{
    const AMutE a = spectrum({1, 1});
    const ReferenceSet refs({{true, true, 2, 1}, {true, true, 3, 1}, {}, {}});
    const NeqInputs inputs = analysis::neqPrepare({point(false, 1)}, refs, {&a, &a}, false);
    QCOMPARE(inputs.baseRow, 0);
    QVERIFY(inputs.rowIndices.isEmpty());
    QCOMPARE(inputs.refValues, (QList<QList<double>>{{}, {}}));
}

void tst_NonEquivalent::preOrPostEdgeLineIsSubtractedFromTheTarget()
{
    const AMutE target = spectrum({1, 2, 3}, 0.25, 0.75);
    QCOMPARE(analysis::neqTargetValues(target, {100, 250}, false), (QList<double>{0.75, 2.25}));
    QCOMPARE(analysis::neqTargetValues(target, {100, 250}, true), (QList<double>{0.25, 1.75}));
}

void tst_NonEquivalent::mixtureIsRecoveredWithLinearBackground()
{
    // T = 0.5 R1 + 1.5 R2 + 3 + 0.01 E. The coefficients 0.5 and 1.5 times the weights of 1/2
    // are 0.25 and 0.75. They add up to 1, so they are also the shares.
    QList<double> T;
    for (int e = 0; e < 5; ++e) {
        T.append(0.5 * twoReferences.at(0).at(e) + 1.5 * twoReferences.at(1).at(e) + 3 +
                 0.01 * fiveEnergies.at(e));
    }
    const Solved solved = solve(false, T, twoReferences, fiveEnergies, {0.5, 0.5});
    QVERIFY(isNear(solved.sum, 1.0));
    QVERIFY(isNear(solved.out.at(0), 0.25));
    QVERIFY(isNear(solved.out.at(1), 0.75));
    QVERIFY(isNear(solved.out.at(neq::mut0), 3));
    QVERIFY(isNear(solved.out.at(neq::c1), 0.01));
}

void tst_NonEquivalent::mixtureIsRecoveredWithVictoreenBackground()
{
    // Five rows for five unknowns: the fit passes through all points. T = 0.5 R1 + 1.5
    // R2 + 3 + 0.25 L^3 - 0.125 L^4, so the shares are 1/4 and 3/4 as with the linear
    // background.
    const QList<double> energies{6000, 7000, 8000, 9000, 10000};
    QList<double> T;
    for (int e = 0; e < 5; ++e) {
        const double L = 12398.424360387684 / energies.at(e);
        T.append(0.5 * twoReferences.at(0).at(e) + 1.5 * twoReferences.at(1).at(e) + 3 +
                 0.25 * std::pow(L, 3) - 0.125 * std::pow(L, 4));
    }
    const Solved solved = solve(true, T, twoReferences, energies, {0.5, 0.5});
    // The normal equations have a condition number of about 3e5, so the fit loses five or six
    // of sixteen digits. 1e-6 is far above this error.
    QVERIFY(isNear(solved.out.at(0), 0.25, 1e-6));
    QVERIFY(isNear(solved.out.at(1), 0.75, 1e-6));
    QVERIFY(isNear(solved.out.at(neq::mut0), 3, 1e-6));
    QVERIFY(isNear(solved.out.at(neq::c1), 0.25, 1e-6));
    QVERIFY(isNear(solved.out.at(neq::c2), -0.125, 1e-6));
    for (int e = 0; e < 5; ++e) {
        const double L = 12398.424360387684 / energies.at(e);
        const double fitted = solved.out.at(0) * solved.sum / 0.5 * twoReferences.at(0).at(e) +
                              solved.out.at(1) * solved.sum / 0.5 * twoReferences.at(1).at(e) +
                              solved.out.at(neq::mut0) + solved.out.at(neq::c1) * std::pow(L, 3) +
                              solved.out.at(neq::c2) * std::pow(L, 4);
        QVERIFY(isNear(fitted, T.at(e), 1e-8));
    }
}

void tst_NonEquivalent::sharesAreWeightedByTheJumps()
{
    // The edge jumps 3 and 1 divided by their sum 4 are the weights 3/4 and 1/4. Both
    // coefficients of T = R1 + R2 are 1. Multiplied by the weights, they add up to 1, so the
    // shares are 3/4 and 1/4.
    QList<double> T;
    for (int e = 0; e < 5; ++e) {
        T.append(twoReferences.at(0).at(e) + twoReferences.at(1).at(e));
    }
    const Solved solved = solve(false, T, twoReferences, fiveEnergies, {0.75, 0.25});
    QVERIFY(isNear(solved.out.at(0), 0.75));
    QVERIFY(isNear(solved.out.at(1), 0.25));
    QVERIFY(isNear(solved.sum, 1.0));
}

void tst_NonEquivalent::sharesAddUpToOneAndCanBeNegative()
{
    // The coefficients of T = -R1 + 3 R2 are -1 and 3. Multiplied by the weights of 1/2, they
    // add up to 1, so the shares are -1/2 and 3/2.
    QList<double> T;
    for (int e = 0; e < 5; ++e) {
        T.append(-twoReferences.at(0).at(e) + 3 * twoReferences.at(1).at(e));
    }
    const Solved solved = solve(false, T, twoReferences, fiveEnergies, {0.5, 0.5});
    QVERIFY(isNear(solved.out.at(0), -0.5));
    QVERIFY(isNear(solved.out.at(1), 1.5));
    QVERIFY(isNear(solved.out.at(0) + solved.out.at(1), 1.0, 1e-15));
}

void tst_NonEquivalent::entriesThatNeqSolveDoesNotFillAreZero()
{
    const Solved solved = solve(false, {1, 5, 2, 7, 3}, twoReferences, fiveEnergies, {0.5, 0.5});
    QCOMPARE(neq::count, 13);
    QCOMPARE(solved.out.size(), 13);
    for (const int missing : {2, 3, 4, 5, 6, 7, 11, 12}) {
        QCOMPARE(solved.out.at(missing), 0.0);
    }
}

void tst_NonEquivalent::energiesBeyondTheTargetValuesAreIgnored()
{
    const Solved four = solve(false, {1, 5, 2, 7}, twoReferences, fiveEnergies, {0.5, 0.5});
    const Solved same =
        solve(false, {1, 5, 2, 7}, {{0, 1, 3, 2}, {1, 0, 2, 4}}, {100, 200, 300, 400}, {0.5, 0.5});
    QCOMPARE(four.out, same.out);
}

void tst_NonEquivalent::fifthReferenceIsIgnored()
{
    const QList<double> E{1, 2, 3, 4, 5, 6, 7, 8};
    const QList<double> T{3, 1, 4, 1, 5, 9, 2, 6};
    QList<QList<double>> refValues{{1, 0, 0, 2, 0, 0, 1, 0},
                                   {0, 1, 0, 0, 2, 0, 0, 1},
                                   {0, 0, 1, 0, 0, 2, 0, 0},
                                   {1, 1, 0, 0, 0, 0, 2, 2}};
    const QList<double> weights{0.1, 0.2, 0.3, 0.4};
    const QList<double> four = solve(true, T, refValues, E, weights).out;
    refValues.append({5, 5, 6, 6, 7, 7, 8, 9});
    QCOMPARE(solve(true, T, refValues, E, weights + QList<double>{0.5}).out, four);
}

void tst_NonEquivalent::missingWeightCountsAsZero()
{
    const Solved solved = solve(false, {1, 5, 2, 7, 3}, twoReferences, fiveEnergies, {0.5});
    QCOMPARE(solved.out.at(0), 1.0);
    QCOMPARE(solved.out.at(1), 0.0);
}

void tst_NonEquivalent::spectraBeyondTheUsedReferencesAreIgnored()
{
    const AMutE a = spectrum({1, 1});
    const ReferenceSet refs({{true, true, 2, 1}, {true, true, 3, 1}, {}, {}});
    const NeqInputs inputs = analysis::neqPrepare({point(true, 100)}, refs, {&a, &a, &a}, false);
    QCOMPARE(inputs.refValues.size(), 2);
    QCOMPARE(inputs.weights.size(), 2);
}

void tst_NonEquivalent::zeroTargetMakesEveryShareNaN()
{
    // A target of zeros has coefficients of exactly 0, so the sum of the weighted coefficients
    // is 0 and every share is 0 / 0.
    const Solved solved = solve(false, {0, 0, 0, 0, 0}, twoReferences, fiveEnergies, {0.5, 0.5});
    QCOMPARE(solved.sum, 0.0);
    for (int i = 0; i < 4; ++i) {
        QVERIFY(std::isnan(solved.out.at(i)));
    }
}

void tst_NonEquivalent::equalReferencesGiveNonFiniteShares()
{
    // Both references are equal and all numbers are small integers, so a pivot is exactly 0.
    const Solved solved =
        solve(false, {1, 2, 4, 8}, {{1, 0, 1, 0}, {1, 0, 1, 0}}, {1, 2, 3, 4}, {0.5, 0.5});
    QVERIFY(!std::isfinite(solved.out.at(0)));
    QVERIFY(!std::isfinite(solved.out.at(1)));
}

void tst_NonEquivalent::valenceIsTheSumOfSharesTimesValences()
{
    QList<double> out(neq::count, 100.0);
    out[0] = 0.5;
    out[1] = 0.75;
    out[2] = -0.25;
    QCOMPARE(analysis::neqValence(out, {2, 4, 8}), 2.0);
}

void tst_NonEquivalent::valenceOfAMissingReferenceCountsAsZero()
{
    QList<double> out(neq::count, 1.0);
    QCOMPARE(analysis::neqValence(out, {2}), 2.0);
    QCOMPARE(analysis::neqValence(out, {}), 0.0);
}

void tst_NonEquivalent::targetAmountsAreShareTimesTotal()
{
    // neqSolve() returns the shares and the sum of the weighted coefficients; the total dMut
    // is sum * jumpSum. In some trials share * (sum * jumpSum) rounds differently from
    // (share * sum) * jumpSum.
    std::mt19937 random(3);
    std::uniform_real_distribution<double> uniform(0.0, 2.0);
    int differentRoundings = 0;
    for (int trial = 0; trial < 50; ++trial) {
        NeqInputs inputs;
        inputs.refValues = twoReferences;
        inputs.energies = fiveEnergies;
        inputs.weights = {0.3, 0.7};
        inputs.valences = {2, 3};
        inputs.jumpSum = uniform(random);
        QList<double> T;
        for (int e = 0; e < 5; ++e) {
            T.append(uniform(random));
        }
        const Solved solved = solve(true, T, inputs.refValues, inputs.energies, inputs.weights);
        const QList<double> values = analysis::neqTargetResult(true, T, inputs);
        const double total = solved.sum * inputs.jumpSum;
        for (int i = 0; i < 2; ++i) {
            QVERIFY(values.at(neq::dMut + i) == solved.out.at(i) * total); // to the last bit
            differentRoundings +=
                solved.out.at(i) * total != solved.out.at(i) * solved.sum * inputs.jumpSum ? 1 : 0;
        }
        QVERIFY(values.at(neq::totalDMut) == total);
        QCOMPARE(values.at(neq::valence), solved.out.at(0) * 2 + solved.out.at(1) * 3);
        QCOMPARE(values.at(neq::dMut + 2), 0.0);
    }
    QVERIFY(differentRoundings > 0);
}

void tst_NonEquivalent::fitMatchesTheReferenceImplementationBitForBit()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> uniform(-1.0, 3.0);
    for (int trial = 0; trial < 4000; ++trial) {
        const bool victoreen = trial % 2 == 0;
        const int references = trial / 2 % 5;
        const int rows = static_cast<int>(random() % 9);
        const auto number = [&] {
            const unsigned kind = trial % 3 == 0 ? static_cast<unsigned>(random() % 20) : 20;
            return kind == 0 ? notANumber : kind < 4 ? 0.0 : kind < 8 ? 1.0 : uniform(random);
        };
        QList<QList<double>> refValues(references);
        QList<double> T;
        QList<double> energies;
        QList<double> weights;
        for (int e = 0; e < rows; ++e) {
            for (QList<double>& values : refValues) {
                values.append(number());
            }
            T.append(number());
            energies.append(trial % 7 == 0 ? number() : 8000 + 100 * number());
        }
        for (int j = 0; j < references; ++j) {
            weights.append(number());
        }
        const Solved solved = solve(victoreen, T, refValues, energies, weights);
        double sum = 0.0;
        QList<double> out;
        tests::plainNeqSolve(victoreen, T, refValues, energies, weights, &sum, out);
        QVERIFY(tests::sameDouble(solved.sum, sum));
        for (int i = 0; i < neq::count; ++i) {
            QVERIFY2(tests::sameDouble(solved.out.at(i), out.at(i)),
                     qPrintable(QString::number(trial)));
        }
    }
}

QTEST_APPLESS_MAIN(tst_NonEquivalent)
#include "tst_NonEquivalent.moc"
