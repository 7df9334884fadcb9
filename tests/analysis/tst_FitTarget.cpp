// The linear combination fit, from the panel's inputs to the result. In most tests the target is a
// known mixture of the references, from which the expected numbers follow.
#include "analysis/LinearFit.h"

#include "analysis/CalculationPlan.h"
#include "support/FitMixes.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace tests;
using namespace tests::fits;
using analysis::LinearFit;

namespace
{

LinearFit fit(const PanelInputs& inputs)
{
    const analysis::CalculationState state = inputs.state();
    return analysis::fitTarget(state, analysis::planFit(state).range.value());
}

bool near(double value, double expected)
{
    return std::abs(value - expected) < 1e-9;
}

bool near(const QList<double>& values, const QList<double>& expected)
{
    return std::equal(values.begin(), values.end(), expected.begin(), expected.end(),
                      [](double a, double b) { return near(a, b); });
}

// Whether `fit` is the result for the default inputs. The parts 1/2 and 3/4 add up to 1.25, so the
// shares are 0.4 and 0.6. The valence uses the parts: 1/2 * 2 + 3/4 * 4 = 4, not divided by 1.25.
bool isDefault(const LinearFit& fit)
{
    return near(fit.fractions, {0.4, 0.6}) && near(fit.valence, 4) && near(fit.base, 0.125);
}

QList<double> curveEnergies(const LinearFit& fit)
{
    QList<double> result;
    for (const MutPoint& point : fit.curve) {
        result.append(point.energy);
    }
    return result;
}

} // namespace

class tst_FitTarget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitRecoversTheMixture();
    void fitRecoversMixturesOfThreeAndFourReferences_data();
    void fitRecoversMixturesOfThreeAndFourReferences();
    void unusedReferencesAreSkipped();
    void targetThatIsNoMixtureIsFittedByLeastSquares();
    void fitCurveHasThePointOrderOfTheTarget();
    void rangeOfOneEnergyKeepsThePointAtThatEnergy();
    void zeroTargetHasNaNShares();
    void invalidTargetIsFittedLikeAValidOne();
    void invalidReferenceBeforeAValidOneMakesAllSharesNaN();
    void invalidLastReferenceIsIgnored();

    void comparisonPointStoresBothResultsAndTheColour();
};

void tst_FitTarget::fitRecoversTheMixture()
{
    const LinearFit result = fit(fitInputs());
    QVERIFY(isDefault(result));
    const QList<double> expected = mixed({0.5, 0.75}, 0.125);
    QCOMPARE(curveEnergies(result), energies);
    for (int i = 0; i < energies.size(); ++i) {
        QCOMPARE(result.curve.at(i).angle, 10.0 + i);
        QVERIFY(near(result.curve.at(i).mut, expected.at(i)));
    }
}

void tst_FitTarget::fitRecoversMixturesOfThreeAndFourReferences_data()
{
    QTest::addColumn<QList<double>>("parts");
    QTest::addColumn<QList<double>>("fractions");
    QTest::addColumn<double>("valence");
    // The parts add up to 2. The valence is 0.5 * 2 + 0.25 * 4 + 1.25 * 3 = 5.75.
    QTest::newRow("three references")
        << QList<double>{0.5, 0.25, 1.25} << QList<double>{0.25, 0.125, 0.625} << 5.75;
    // The parts add up to 1/2. The valence is 0.5 * 2 + 0.25 * 4 - 1 * 3 + 0.75 * 5 = 2.75.
    QTest::newRow("four references, one negative share")
        << QList<double>{0.5, 0.25, -1, 0.75} << QList<double>{1, 0.5, -2, 1.5} << 2.75;
}

void tst_FitTarget::fitRecoversMixturesOfThreeAndFourReferences()
{
    QFETCH(QList<double>, parts);
    QFETCH(QList<double>, fractions);
    QFETCH(double, valence);
    const LinearFit result = fit(fitInputs(parts, 0.5));
    QVERIFY(near(result.fractions, fractions));
    QVERIFY(near(result.valence, valence));
    QVERIFY(near(result.base, 0.5));
}

void tst_FitTarget::unusedReferencesAreSkipped()
{
    // References 1 and 2 of the mixture are in rows 2 and 4; rows 1 and 3 are valid, but not
    // used.
    PanelInputs inputs = fitInputs();
    setReference(inputs, 0, 2);
    setReference(inputs, 1, 0);
    setReference(inputs, 2, 3);
    setReference(inputs, 3, 1);
    inputs.useReferences({1, 3});
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::targetThatIsNoMixtureIsFittedByLeastSquares()
{
    // The residuals of this least-squares fit are orthogonal to the references and to a
    // constant.
    PanelInputs inputs = fitInputs();
    const QList<double> values{1, -2, 0.5, 3, -1, 2, 0};
    setNormalised(inputs.target, energies, values, 1, 8);
    const LinearFit result = fit(inputs);
    QCOMPARE(curveEnergies(result), energies);
    QList<double> residuals = values;
    for (int i = 0; i < residuals.size(); ++i) {
        residuals[i] -= result.curve.at(i).mut;
    }
    const auto dot = [&residuals](const QList<double>& basis) {
        return std::inner_product(residuals.begin(), residuals.end(), basis.begin(), 0.0);
    };
    QVERIFY(dot(residuals) > 0.1);
    QVERIFY(near(dot(shapes.at(0)), 0));
    QVERIFY(near(dot(shapes.at(1)), 0));
    QVERIFY(near(std::accumulate(residuals.begin(), residuals.end(), 0.0), 0));
}

void tst_FitTarget::fitCurveHasThePointOrderOfTheTarget()
{
    PanelInputs inputs = fitInputs();
    QList<MutPoint>& points = inputs.target.points;
    std::reverse(points.begin(), points.end());
    points.move(0, 3);
    const LinearFit result = fit(inputs);
    QVERIFY(isDefault(result));
    QCOMPARE(curveEnergies(result), (QList<double>{6, 5, 4, 7, 3, 2, 1}));
    QCOMPARE(result.curve.at(3).angle, 16.0);
}

void tst_FitTarget::rangeOfOneEnergyKeepsThePointAtThatEnergy()
{
    PanelInputs inputs = fitInputs();
    setRange(inputs, 5, 5);
    QCOMPARE(curveEnergies(fit(inputs)), QList<double>{5});
    setRange(inputs, 5.5, 5.5);
    QVERIFY(fit(inputs).curve.isEmpty());
}

void tst_FitTarget::zeroTargetHasNaNShares()
{
    const LinearFit result = fit(fitInputs({0, 0}, 0));
    QVERIFY(std::isnan(result.fractions.at(0)));
    QCOMPARE(result.valence, 0.0);
    QCOMPARE(result.base, 0.0);
}

void tst_FitTarget::invalidTargetIsFittedLikeAValidOne()
{
    QVERIFY(isDefault(fit(fitInputs().makeTargetInvalid())));
}

void tst_FitTarget::invalidReferenceBeforeAValidOneMakesAllSharesNaN()
{
    // Used: references 1 to 4; valid: 1, 2 and 4. There are three valid references, so the fit
    // uses the first three used references: 1, 2 and 3. Reference 3 has no points, so it is 0
    // everywhere and makes every share NaN. The base is still correct.
    PanelInputs inputs = fitInputs();
    setReference(inputs, 3, 3);
    inputs.useReferences({0, 1, 2, 3});
    const LinearFit result = fit(inputs);
    QCOMPARE(result.fractions.size(), 3);
    for (const double fraction : result.fractions) {
        QVERIFY(std::isnan(fraction));
    }
    QVERIFY(std::isnan(result.valence));
    QVERIFY(near(result.base, 0.125));
    QCOMPARE(result.curve.size(), 7);
}

void tst_FitTarget::invalidLastReferenceIsIgnored()
{
    QVERIFY(isDefault(fit(fitInputs().useReferences({0, 1, 3}))));
}

void tst_FitTarget::comparisonPointStoresBothResultsAndTheColour()
{
    const LCFPoint point = analysis::comparisonPoint(0.375, 2.75, fit(fitInputs()), 7);
    QCOMPARE(point.fourPsA, 0.375);
    QCOMPARE(point.fourPsValence, 2.75);
    QVERIFY(near(point.lcfA, 0.4));     // the share of reference 1: 0.5 / 1.25
    QVERIFY(near(point.lcfValence, 4)); // from the parts, not from the shares
    QCOMPARE(point.color, 7);
}

QTEST_APPLESS_MAIN(tst_FitTarget)
#include "tst_FitTarget.moc"
