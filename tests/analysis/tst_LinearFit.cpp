// The linear combination fit of a target spectrum, and its energy range.
#include "analysis/LinearFit.h"

#include "analysis/RowCollection.h"
#include "support/PlainFits.h"
#include "support/SameDouble.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using analysis::FitRange;
using analysis::LinearFit;
using analysis::PointState;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// A spectrum with the given mut values at 100, 200, ... eV. The pre-edge line is 0 and the
// post-edge line 1, so the normalised values are equal to mut.
AMutE spectrum(const QList<double>& muts)
{
    AMutE made;
    made.valid = true;
    for (qsizetype i = 0; i < muts.size(); ++i) {
        const auto number = static_cast<double>(i + 1);
        made.points.append({number, 100.0 * number, muts.at(i)});
    }
    made.preLine = {0, 0, 0};
    made.postLine = {1, 0, 0};
    return made;
}

PointState marked(double energy, bool used = true)
{
    PointState state;
    state.used = used;
    state.energy = energy;
    state.inFit = true;
    return state;
}

bool isNear(double a, double b)
{
    return std::fabs(a - b) <= 1e-9;
}

const FitRange fullRange{{0, 1e6}, 2};

bool sameFit(const LinearFit& a, const tests::PlainFit& b)
{
    bool same = a.fractions.size() == b.fractions.size() && a.curve.size() == b.curve.size() &&
                tests::sameDouble(a.valence, b.valence) && tests::sameDouble(a.base, b.base);
    for (qsizetype i = 0; same && i < a.fractions.size(); ++i) {
        same = tests::sameDouble(a.fractions.at(i), b.fractions.at(i));
    }
    for (qsizetype i = 0; same && i < a.curve.size(); ++i) {
        same = tests::sameDouble(a.curve.at(i).angle, b.curve.at(i).angle) &&
               tests::sameDouble(a.curve.at(i).energy, b.curve.at(i).energy) &&
               tests::sameDouble(a.curve.at(i).mut, b.curve.at(i).mut);
    }
    return same;
}

} // namespace

class tst_LinearFit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rangeSpansMarkedRowsEvenIfUnused();
    void fitRangeIgnoresUnmarkedRows();
    void oneMarkedRowSelectsNoRange();
    void twoMarkedRowsAtOneEnergySelectARange();
    void rowWithNaNEnergyCountsButSetsNoLimit();
    void mixtureIsRecovered();
    void targetEqualToTheFirstReferenceHasShareOne();
    void spectraAreNormalisedBetweenTheirLines();
    void valenceIsNotDividedByTheSumOfTheParts();
    void rangeIncludesBothEnds();
    void fitSubtractsTheEnergyShiftsOfTargetAndReference();
    void curveHasAnglesAndWorkingEnergiesOfTheTarget();
    void rangeWithoutPointsGivesNaNAndAnEmptyCurve();
    void referenceWithoutPointsHasANonFiniteShare();
    void fifthReferenceIsIgnored();
    void missingValenceCountsAsZero();
    void fitMatchesTheReferenceImplementationBitForBit_data();
    void fitMatchesTheReferenceImplementationBitForBit();
    void fitOf200000ZigzagPointsUsesThemAll();
};

void tst_LinearFit::rangeSpansMarkedRowsEvenIfUnused()
{
    const FitRange range = analysis::fitRange({marked(300), marked(100, false), marked(200)});
    QCOMPARE(range.energies.low, 100.0);
    QCOMPARE(range.energies.high, 300.0);
    QCOMPARE(range.rows, 3);
    QVERIFY(range.isSelected());
}

void tst_LinearFit::fitRangeIgnoresUnmarkedRows()
{
    PointState unmarked = marked(500);
    unmarked.inFit = false;
    const FitRange range = analysis::fitRange({marked(100), unmarked});
    QCOMPARE(range.energies.high, 100.0);
    QCOMPARE(range.rows, 1);
    const FitRange none = analysis::fitRange({unmarked});
    QCOMPARE(none.energies.low, 1e300);
    QCOMPARE(none.energies.high, -1e300);
    QVERIFY(!none.isSelected());
}

void tst_LinearFit::oneMarkedRowSelectsNoRange()
{
    QVERIFY(!analysis::fitRange({marked(100)}).isSelected());
}

void tst_LinearFit::twoMarkedRowsAtOneEnergySelectARange()
{
    const FitRange range = analysis::fitRange({marked(200), marked(200)});
    QVERIFY(range.isSelected());
    const AMutE a = spectrum({0, 1, 2});
    const AMutE b = spectrum({3, 1, 4});
    const LinearFit fit = analysis::fitLinearCombination(a, {&a, &b}, {1, 2}, range);
    QCOMPARE(fit.curve.size(), 1);
    QCOMPARE(fit.curve.first().energy, 200.0);
}

void tst_LinearFit::rowWithNaNEnergyCountsButSetsNoLimit()
{
    const FitRange range = analysis::fitRange({marked(notANumber), marked(200)});
    QCOMPARE(range.rows, 2);
    QCOMPARE(range.energies.low, 200.0);
    QCOMPARE(range.energies.high, 200.0);
    QVERIFY(!analysis::fitRange({marked(notANumber), marked(notANumber)}).isSelected());
}

void tst_LinearFit::mixtureIsRecovered()
{
    // The target is 0.25 a + 0.75 b + 0.5.
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    const AMutE target = spectrum({2, 0.75, 3, 5.5});
    const LinearFit fit = analysis::fitLinearCombination(target, {&a, &b}, {2, 4}, fullRange);
    QVERIFY(isNear(fit.fractions.at(0), 0.25));
    QVERIFY(isNear(fit.fractions.at(1), 0.75));
    QVERIFY(isNear(fit.valence, 3.5));
    QVERIFY(isNear(fit.base, 0.5));
    for (int i = 0; i < 4; ++i) {
        QVERIFY(isNear(fit.curve.at(i).mut, target.points.at(i).mut));
    }
}

void tst_LinearFit::targetEqualToTheFirstReferenceHasShareOne()
{
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    const LinearFit fit = analysis::fitLinearCombination(a, {&a, &b}, {2.5, 4}, fullRange);
    QVERIFY(isNear(fit.fractions.at(0), 1));
    QVERIFY(isNear(fit.fractions.at(1), 0));
    QVERIFY(isNear(fit.base, 0));
    QVERIFY(isNear(fit.valence, 2.5));
}

void tst_LinearFit::spectraAreNormalisedBetweenTheirLines()
{
    // The spectra of mixtureIsRecovered(), but the target has the constant lines 0.5 and 2.5,
    // and the second reference the lines 1 and 5: mut = pre + value * (post - pre).
    const AMutE a = spectrum({0, 1, 4, 2});
    AMutE b = spectrum({1 + 2 * 4, 1, 1 + 2 * 4, 1 + 6 * 4});
    b.preLine = {1, 0, 0};
    b.postLine = {5, 0, 0};
    AMutE target = spectrum({0.5 + 2 * 2, 0.5 + 0.75 * 2, 0.5 + 3 * 2, 0.5 + 5.5 * 2});
    target.preLine = {0.5, 0, 0};
    target.postLine = {2.5, 0, 0};
    const LinearFit fit = analysis::fitLinearCombination(target, {&a, &b}, {2, 4}, fullRange);
    QVERIFY(isNear(fit.fractions.at(0), 0.25));
    QVERIFY(isNear(fit.fractions.at(1), 0.75));
    QVERIFY(isNear(fit.base, 0.5));
    QVERIFY(isNear(fit.curve.at(1).mut, 0.75));
}

void tst_LinearFit::valenceIsNotDividedByTheSumOfTheParts()
{
    // The target is 2 a + 2 b. Both shares are 1/2, but the valence uses the parts:
    // 2 * 2 + 2 * 4 = 12.
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    const AMutE target = spectrum({4, 2, 12, 16});
    const LinearFit fit = analysis::fitLinearCombination(target, {&a, &b}, {2, 4}, fullRange);
    QVERIFY(isNear(fit.fractions.at(0), 0.5));
    QVERIFY(isNear(fit.fractions.at(1), 0.5));
    QVERIFY(isNear(fit.valence, 12));
}

void tst_LinearFit::rangeIncludesBothEnds()
{
    const AMutE a = spectrum({0, 1, 4, 2, 5});
    const AMutE b = spectrum({2, 0, 2, 6, 1});
    const LinearFit fit =
        analysis::fitLinearCombination(a, {&a, &b}, {1, 1}, FitRange{{200, 400}, 2});
    QCOMPARE(fit.curve.size(), 3);
    QCOMPARE(fit.curve.first().energy, 200.0);
    QCOMPARE(fit.curve.last().energy, 400.0);
}

void tst_LinearFit::fitSubtractsTheEnergyShiftsOfTargetAndReference()
{
    // The target's energies are 30 eV too high and its dE is 30. The energies of the first
    // reference are 50 eV too low and its dE is -50.
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    AMutE target = spectrum({2, 0.75, 3, 5.5});
    for (MutPoint& point : target.points) {
        point.energy += 30;
    }
    target.dE = 30;
    AMutE shifted = a;
    for (MutPoint& point : shifted.points) {
        point.energy -= 50;
    }
    shifted.dE = -50;
    const LinearFit fit =
        analysis::fitLinearCombination(target, {&shifted, &b}, {2, 4}, FitRange{{100, 400}, 2});
    QCOMPARE(fit.curve.size(), 4);
    QVERIFY(isNear(fit.fractions.at(0), 0.25));
    QVERIFY(isNear(fit.base, 0.5));
}

void tst_LinearFit::curveHasAnglesAndWorkingEnergiesOfTheTarget()
{
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    AMutE target = a;
    target.dE = 10;
    const LinearFit fit =
        analysis::fitLinearCombination(target, {&a, &b}, {1, 1}, FitRange{{150, 1000}, 2});
    QCOMPARE(fit.curve.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(fit.curve.at(i).angle, target.points.at(i + 1).angle);
        QCOMPARE(fit.curve.at(i).energy, target.points.at(i + 1).energy - 10);
    }
}

void tst_LinearFit::rangeWithoutPointsGivesNaNAndAnEmptyCurve()
{
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    const LinearFit fit =
        analysis::fitLinearCombination(a, {&a, &b}, {1, 1}, FitRange{{110, 190}, 2});
    QVERIFY(fit.curve.isEmpty());
    QCOMPARE(fit.fractions.size(), 2);
    QVERIFY(std::isnan(fit.fractions.at(0)));
    QVERIFY(std::isnan(fit.valence));
    QVERIFY(std::isnan(fit.base));
}

void tst_LinearFit::referenceWithoutPointsHasANonFiniteShare()
{
    // A column of zeros makes the matrix singular: the result is not finite.
    const AMutE empty;
    const AMutE a = spectrum({0, 1, 4, 2});
    const LinearFit fit = analysis::fitLinearCombination(a, {&a, &empty}, {1, 1}, fullRange);
    QVERIFY(!std::isfinite(fit.fractions.at(1)));
}

void tst_LinearFit::fifthReferenceIsIgnored()
{
    const AMutE a = spectrum({0, 1, 4, 2, 7, 1});
    const AMutE b = spectrum({2, 0, 2, 6, 1, 1});
    const AMutE c = spectrum({1, 5, 2, 2, 0, 3});
    const AMutE d = spectrum({3, 1, 2, 8, 4, 0});
    const LinearFit four =
        analysis::fitLinearCombination(c, {&a, &b, &c, &d}, {1, 2, 3, 4}, fullRange);
    const LinearFit five =
        analysis::fitLinearCombination(c, {&a, &b, &c, &d, &a}, {1, 2, 3, 4, 5}, fullRange);
    QCOMPARE(five.fractions, four.fractions);
    QCOMPARE(five.valence, four.valence);
    QCOMPARE(five.base, four.base);
}

void tst_LinearFit::missingValenceCountsAsZero()
{
    const AMutE a = spectrum({0, 1, 4, 2});
    const AMutE b = spectrum({2, 0, 2, 6});
    const AMutE target = spectrum({2, 0.75, 3, 5.5});
    QVERIFY(isNear(analysis::fitLinearCombination(target, {&a, &b}, {2}, fullRange).valence, 0.5));
}

void tst_LinearFit::fitMatchesTheReferenceImplementationBitForBit_data()
{
    QTest::addColumn<QString>("energies");
    for (const char* kind : {"rising", "falling", "equal neighbours", "random", "NaN"}) {
        QTest::newRow(kind) << QString(kind);
    }
}

void tst_LinearFit::fitMatchesTheReferenceImplementationBitForBit()
{
    QFETCH(QString, energies);
    std::mt19937 random(17);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    const auto made = [&](int count) {
        AMutE spectrum;
        for (int i = 0; i < count; ++i) {
            double e = 8300.0 + i;
            if (energies == "falling") {
                e = 8300.0 + count - i;
            } else if (energies == "equal neighbours") {
                e = 8300.0 + i / 3;
            } else if (energies == "random") {
                e = 8300.0 + static_cast<double>(random() % 60);
            } else if (energies == "NaN" && random() % 5 == 0) {
                e = notANumber;
            }
            spectrum.points.append({uniform(random), e, uniform(random)});
        }
        spectrum.dE = std::floor(4 * uniform(random));
        spectrum.preLine = {0.1 * uniform(random), 0.01, -0.01};
        spectrum.postLine = {1 + uniform(random), 0.01, -0.02};
        return spectrum;
    };
    for (int trial = 0; trial < 60; ++trial) {
        const QList<AMutE> spectra{made(60), made(50), made(70), made(3 + trial % 3)};
        const AMutE target = made(55);
        QList<const AMutE*> references;
        QList<double> valences;
        for (int j = 0; j < 2 + trial % 3; ++j) {
            references.append(&spectra.at(j));
            valences.append(uniform(random));
        }
        const FitRange range{{8300.0 + trial % 10, 8345.0 + trial % 20}, 2};
        QVERIFY(sameFit(analysis::fitLinearCombination(target, references, valences, range),
                        tests::plainLinearFit(target, references, valences, range.energies.low,
                                              range.energies.high)));
    }
}

void tst_LinearFit::fitOf200000ZigzagPointsUsesThemAll()
{
    // The energies alternately rise by 3 eV and fall by 2 eV. A linear search for each point
    // would take more than 1e10 steps.
    AMutE spectrum;
    for (int i = 0; i < 200000; ++i) {
        spectrum.points.append({0.0, 8000.0 + i / 2 + (i % 2 == 0 ? 0 : 3), 1.0 / (i + 1)});
    }
    spectrum.postLine = {1, 0, 0};
    AMutE other = spectrum;
    other.points[5].mut = 2;
    const LinearFit fit = analysis::fitLinearCombination(spectrum, {&spectrum, &other}, {1, 2},
                                                         FitRange{{-1e9, 1e9}, 2});
    QCOMPARE(fit.curve.size(), 200000);
    const double e = 8000.0 + 199999 / 2 - 4;
    QCOMPARE(spectrum.indicesBelow({e}).first(), spectrum.indexBelow(e));
}

QTEST_APPLESS_MAIN(tst_LinearFit)
#include "tst_LinearFit.moc"
