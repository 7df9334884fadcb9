// From what a user gives to the linear combination fit. Expected numbers are those
// of the mixture that the target is made of.
#include "analysis/LinearFit.h"

#include "analysis/CalculationPlan.h"
#include "support/PanelInputs.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace tests;
using analysis::LinearFit;

namespace
{

constexpr double hc = AMutE::hcEvAngstrom;

// Normalised references at 1 to 7 eV; independent of each other and of a
// constant, also from 2 to 6 eV for the first two.
const QList<double> energies{1, 2, 3, 4, 5, 6, 7};
const QList<QList<double>> shapes{{9, 1, 0, 0.5, 2, 0.25, 3},
                                  {-9, 0, 1, 0.5, 0.75, 2, 8},
                                  {0, 0, 2, 1, 0, 0.5, 1},
                                  {1, 1, 1, 0, 0, -1, 4}};
const QList<double> preLevels{0.5, 0.25, 0.75, 1};
const QList<double> jumps{2, 4, 1, 8};
const QList<double> valences{2, 4, 3, 5};

// A spectrum of these normalised values between two constant lines.
void setNormalised(AMutE& spectrum, const QList<double>& at, QList<double> values, double pre,
                   double jump)
{
    for (double& value : values) {
        value *= jump;
    }
    setSpectrum(spectrum, at, values, {pre, 0, 0}, {pre + jump, 0, 0});
}

void setReference(PanelInputs& inputs, std::size_t row, int shape)
{
    setNormalised(inputs.spectra.at(row), energies, shapes.at(shape), preLevels.at(shape),
                  jumps.at(shape));
    inputs.valences.at(row) = valences.at(shape);
}

QList<double> mixed(const QList<double>& parts, double base)
{
    QList<double> values(energies.size(), base);
    for (int i = 0; i < parts.size(); ++i) {
        for (int k = 0; k < values.size(); ++k) {
            values[k] += parts.at(i) * shapes.at(i).at(k);
        }
    }
    return values;
}

void setRange(PanelInputs& inputs, double from, double to)
{
    inputs.points[6].energy = to;
    inputs.points[7].energy = from;
    inputs.points[6].inFit = true;
    inputs.points[7].inFit = true;
}

// As many references as parts in use, the target of their sum over a base, and
// all seven points in range.
PanelInputs fitInputs(const QList<double>& parts = {0.5, 0.75}, double base = 0.125)
{
    PanelInputs inputs;
    QList<int> used;
    for (int i = 0; i < parts.size(); ++i) {
        setReference(inputs, static_cast<std::size_t>(i), i);
        used.append(i);
    }
    useReferences(inputs, used);
    setNormalised(inputs.target, energies, mixed(parts, base), 1, 8);
    setRange(inputs, 1, 7);
    return inputs;
}

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

// The fit of the default: parts of 1.25 in all, the valence 1/2 * 2 + 3/4 * 4 of
// the parts as they are.
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
    void targetIsTakenApart();
    void targetEqualToTheFirstReferenceIsAllOfIt();
    void threeAndFourReferencesAreFitted_data();
    void threeAndFourReferencesAreFitted();
    void firstUsedReferenceBehindAnUnusedOneComesFirst();
    void surplusPointsAreFittedByLeastSquares();
    void curveKeepsTheOrderOfTheTarget();
    void rangeHoldsBothEndsAndNothingBeyond();
    void rowsAtOneEnergyKeepThePointThere();
    void shiftsOfTargetAndReferenceCount();
    void referencesAreInterpolatedAndExtended();
    void spectraAreNormalisedByTwoLines();
    void descendingReferenceIsExtendedFromItsFirstPair();
    void rangeWithoutAPointGivesNaN();
    void targetOfZeroesHasNoShares();
    void targetNeedNotBeValid();
    void invalidReferenceAmongTheFirstEntersAsZero();
    void invalidReferenceBehindTheFirstPlaysNoPart();

    void comparisonHoldsTargetResultShareValenceAndColour();
};

void tst_FitTarget::targetIsTakenApart()
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

void tst_FitTarget::targetEqualToTheFirstReferenceIsAllOfIt()
{
    PanelInputs inputs = fitInputs();
    inputs.target = inputs.spectra[0];
    const LinearFit result = fit(inputs);
    QVERIFY(near(result.fractions, {1, 0}));
    QVERIFY(near(result.valence, 2));
    QVERIFY(near(result.base, 0));
}

void tst_FitTarget::threeAndFourReferencesAreFitted_data()
{
    QTest::addColumn<QList<double>>("parts");
    QTest::addColumn<QList<double>>("fractions");
    QTest::addColumn<double>("valence");
    // Parts of 2 in all; valence 1 + 1 + 15/4.
    QTest::newRow("three") << QList<double>{0.5, 0.25, 1.25} << QList<double>{0.25, 0.125, 0.625}
                           << 5.75;
    // Parts of 1/2 in all; valence 1 + 1 - 3 + 15/4.
    QTest::newRow("four, one negative")
        << QList<double>{0.5, 0.25, -1, 0.75} << QList<double>{1, 0.5, -2, 1.5} << 2.75;
}

void tst_FitTarget::threeAndFourReferencesAreFitted()
{
    QFETCH(QList<double>, parts);
    QFETCH(QList<double>, fractions);
    QFETCH(double, valence);
    const LinearFit result = fit(fitInputs(parts, 0.5));
    QVERIFY(near(result.fractions, fractions));
    QVERIFY(near(result.valence, valence));
    QVERIFY(near(result.base, 0.5));
}

void tst_FitTarget::firstUsedReferenceBehindAnUnusedOneComesFirst()
{
    // Shapes 1 and 2 are in rows 2 and 4; rows 1 and 3, valid too, are not used.
    PanelInputs inputs = fitInputs();
    setReference(inputs, 0, 2);
    setReference(inputs, 1, 0);
    setReference(inputs, 2, 3);
    setReference(inputs, 3, 1);
    useReferences(inputs, {1, 3});
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::surplusPointsAreFittedByLeastSquares()
{
    // What the fit leaves over is orthogonal to the references and to a constant.
    PanelInputs inputs = fitInputs();
    const QList<double> values{1, -2, 0.5, 3, -1, 2, 0};
    setNormalised(inputs.target, energies, values, 1, 8);
    const LinearFit result = fit(inputs);
    QCOMPARE(curveEnergies(result), energies);
    QList<double> left = values;
    for (int i = 0; i < left.size(); ++i) {
        left[i] -= result.curve.at(i).mut;
    }
    const auto dot = [&left](const QList<double>& basis) {
        return std::inner_product(left.begin(), left.end(), basis.begin(), 0.0);
    };
    QVERIFY(dot(left) > 0.1);
    QVERIFY(near(dot(shapes.at(0)), 0));
    QVERIFY(near(dot(shapes.at(1)), 0));
    QVERIFY(near(std::accumulate(left.begin(), left.end(), 0.0), 0));
}

void tst_FitTarget::curveKeepsTheOrderOfTheTarget()
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

void tst_FitTarget::rangeHoldsBothEndsAndNothingBeyond()
{
    PanelInputs inputs = fitInputs();
    inputs.target.points.first().mut = 1000;
    inputs.target.points.last().mut = -1000;
    setRange(inputs, 2, 6);
    QVERIFY(isDefault(fit(inputs)));
    QCOMPARE(curveEnergies(fit(inputs)), (QList<double>{2, 3, 4, 5, 6}));
}

void tst_FitTarget::rowsAtOneEnergyKeepThePointThere()
{
    PanelInputs inputs = fitInputs();
    setRange(inputs, 5, 5);
    QCOMPARE(curveEnergies(fit(inputs)), QList<double>{5});
    setRange(inputs, 5.5, 5.5);
    QVERIFY(fit(inputs).curve.isEmpty());
}

void tst_FitTarget::shiftsOfTargetAndReferenceCount()
{
    PanelInputs inputs = fitInputs();
    inputs.target.dE = -3;
    inputs.spectra[1].dE = 4;
    for (AMutE* spectrum : {&inputs.target, &inputs.spectra[1]}) {
        for (MutPoint& point : spectrum->points) {
            point.energy += spectrum->dE;
        }
    }
    setRange(inputs, 2, 6);
    QVERIFY(isDefault(fit(inputs)));
    QCOMPARE(curveEnergies(fit(inputs)), (QList<double>{2, 3, 4, 5, 6}));
}

void tst_FitTarget::referencesAreInterpolatedAndExtended()
{
    // Three points at 2.5, 4.5 and 6 eV: slope 2 up to 4.5 eV, -4 above it.
    PanelInputs inputs = fitInputs();
    setNormalised(inputs.spectra[0], {2.5, 4.5, 6}, {1, 5, -1}, 0.5, 2);
    const QList<double> first{-2, 0, 2, 4, 3, -1, -5};
    QList<double> values;
    for (int i = 0; i < energies.size(); ++i) {
        values.append(0.5 * first.at(i) + 0.75 * shapes.at(1).at(i) + 0.125);
    }
    setNormalised(inputs.target, energies, values, 1, 8);
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::spectraAreNormalisedByTwoLines()
{
    // At wavelengths 4, 2, 1, 1/2 and 1/4 the lines are L^3, L^4 and 2 L^3 apart,
    // and the normalised values of the second reference, which has no point at
    // hc, are on a straight line from 1 to 4 there: a third of the way up is 2.
    PanelInputs inputs = fitInputs();
    const QList<double> at{hc / 4, hc / 2, hc, 2 * hc, 4 * hc};
    const QList<double> first{1, 0, 3, 2, 1};
    const QList<double> second{0, 1, 2, 4, 3};
    QList<double> firstMuts;
    QList<double> secondMuts;
    QList<double> targetMuts;
    for (int i = 0; i < at.size(); ++i) {
        const double l3 = std::pow(hc / at.at(i), 3);
        firstMuts.append(first.at(i) * l3 * (hc / at.at(i)));
        secondMuts.append(second.at(i) * 2 * l3);
        targetMuts.append((0.5 * first.at(i) + 0.75 * second.at(i) + 0.125) * l3);
    }
    QList<double> secondAt = at;
    secondAt.removeAt(2);
    secondMuts.removeAt(2);
    setSpectrum(inputs.spectra[0], at, firstMuts, {0.5, 0, 0}, {0.5, 0, 1});
    setSpectrum(inputs.spectra[1], secondAt, secondMuts, {0, 0, 1}, {0, 2, 1});
    setSpectrum(inputs.target, at, targetMuts, {1, 1, 0}, {1, 2, 0});
    setRange(inputs, 3000, 50000);
    QVERIFY(isDefault(fit(inputs)));
    QCOMPARE(fit(inputs).curve.size(), 5);
}

void tst_FitTarget::descendingReferenceIsExtendedFromItsFirstPair()
{
    // Below its first energy, 8 eV, a spectrum runs on the line of its first two
    // points, 8 eV and 3 eV: value 8 - E.
    PanelInputs inputs = fitInputs();
    setNormalised(inputs.spectra[0], {8, 3, 2, 1}, {0, 5, 20, 7}, 0.5, 2);
    QList<double> values;
    for (int i = 0; i < energies.size(); ++i) {
        values.append(0.5 * (8 - energies.at(i)) + 0.75 * shapes.at(1).at(i) + 0.125);
    }
    setNormalised(inputs.target, energies, values, 1, 8);
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::rangeWithoutAPointGivesNaN()
{
    PanelInputs inputs = fitInputs();
    setRange(inputs, 100, 200);
    const LinearFit outside = fit(inputs);
    inputs.target.points.clear();
    setRange(inputs, 1, 7);
    for (const LinearFit& result : {outside, fit(inputs)}) {
        QVERIFY(std::isnan(result.fractions.at(0)));
        QVERIFY(std::isnan(result.fractions.at(1)));
        QVERIFY(std::isnan(result.valence));
        QVERIFY(std::isnan(result.base));
        QVERIFY(result.curve.isEmpty());
    }
}

void tst_FitTarget::targetOfZeroesHasNoShares()
{
    const LinearFit result = fit(fitInputs({0, 0}, 0));
    QVERIFY(std::isnan(result.fractions.at(0)));
    QCOMPARE(result.valence, 0.0);
    QCOMPARE(result.base, 0.0);
}

void tst_FitTarget::targetNeedNotBeValid()
{
    PanelInputs inputs = fitInputs();
    inputs.target.valid = false;
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::invalidReferenceAmongTheFirstEntersAsZero()
{
    // Three of four are valid, so the first three are taken: the third, without
    // points, is 0 everywhere and spoils every share. The base does not depend on
    // it.
    PanelInputs inputs = fitInputs();
    setReference(inputs, 3, 3);
    useReferences(inputs, {0, 1, 2, 3});
    const LinearFit result = fit(inputs);
    QCOMPARE(result.fractions.size(), 3);
    for (const double fraction : result.fractions) {
        QVERIFY(std::isnan(fraction));
    }
    QVERIFY(std::isnan(result.valence));
    QVERIFY(near(result.base, 0.125));
    QCOMPARE(result.curve.size(), 7);
}

void tst_FitTarget::invalidReferenceBehindTheFirstPlaysNoPart()
{
    PanelInputs inputs = fitInputs();
    useReferences(inputs, {0, 1, 3});
    QVERIFY(isDefault(fit(inputs)));
}

void tst_FitTarget::comparisonHoldsTargetResultShareValenceAndColour()
{
    const LCFPoint point = analysis::comparisonPoint(0.375, 2.75, fit(fitInputs()), 7);
    QCOMPARE(point.fourPsA, 0.375);
    QCOMPARE(point.fourPsValence, 2.75);
    QVERIFY(near(point.lcfA, 0.4));     // of the sum of the parts
    QVERIFY(near(point.lcfValence, 4)); // of the parts as they are
    QCOMPARE(point.color, 7);
}

QTEST_APPLESS_MAIN(tst_FitTarget)
#include "tst_FitTarget.moc"
