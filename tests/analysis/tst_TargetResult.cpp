// The numbers of a target calculation. In most tests the target is a known mixture of the
// references, from which the expected numbers are calculated by hand.
#include "analysis/TargetResult.h"

#include "analysis/CalculationPlan.h"
#include "support/Mixes.h"
#include "support/PanelInputs.h"

#include <QTest>

#include <cmath>

using namespace tests;
using namespace tests::mixes;
using analysis::TargetResult;
using analysis::Variant;

namespace
{

TargetResult threePoints(const PanelInputs& inputs)
{
    const analysis::CalculationState state = inputs.state();
    return analysis::threePointsResult(state, analysis::planTarget(state).rows);
}

TargetResult exactFourPoints(PanelInputs inputs)
{
    inputs.radios.exact = true;
    const analysis::CalculationState state = inputs.state();
    return analysis::exactFourPointsResult(state, analysis::planTarget(state).rows);
}

TargetResult leastSquare(const PanelInputs& inputs)
{
    const analysis::CalculationState state = inputs.state();
    return analysis::leastSquareResult(state, analysis::planTarget(state).rows);
}

TargetResult linear(const PanelInputs& inputs)
{
    return analysis::nonEquivalentResult(inputs.state(), false);
}

TargetResult victoreen(const PanelInputs& inputs)
{
    return analysis::nonEquivalentResult(inputs.state(), true);
}

QList<double> shares(const TargetResult& result)
{
    QList<double> values;
    for (const analysis::ReferencePart& part : result.parts) {
        values.append(part.share);
    }
    return values;
}

QList<double> amounts(const TargetResult& result)
{
    QList<double> values;
    for (const analysis::ReferencePart& part : result.parts) {
        values.append(part.dMut);
    }
    return values;
}

bool isQuarter(const TargetResult& result)
{
    return near(result.a, 0.25) && near(result.valence, 4.25) && near(result.thickness, 4) &&
           near(shares(result), {0.25, 0.75}) && near(amounts(result), {1, 3});
}

} // namespace

class tst_TargetResult : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threePointsGiveFractionAndValenceOnly();
    void exactFourPointsGiveFractionValenceAndThickness();
    void leastSquareGivesFractionValenceAndThickness();
    void leastSquareUsesAllRows();
    void onlyTheExactFormSendsNoMessage();
    void unusedReferenceIsSkipped();
    void valenceIsZeroWithoutTwoValidReferences();
    void equalTargetValuesGiveNaN();

    void nonEquivalentMixtureIsRecovered();
    void everyPartStoresTheIndexOfItsReferenceRow();
    void mixturesOfThreeAndFourReferencesAreRecovered_data();
    void mixturesOfThreeAndFourReferencesAreRecovered();
    void targetEqualToTheFirstReferenceHasShareOne();
    void victoreenBackgroundIsSeparatedFromTheMixture();
    void mutValuesOfTheEnergyRowsDoNotAffectTheTarget();
    void chosenPreOrPostEdgeLinesAreSubtractedFromTheSpectra();
    void vRowIsFittedLikeTheOtherRows();
    void zeroEnergyInAVictoreenFitGivesNaN();
    void zeroTargetHasNaNShares();
    void edgeJumpsWithSumZeroGiveNaN();
    void invalidReferenceAfterTheFirstTwoIsIgnored();
};

void tst_TargetResult::threePointsGiveFractionAndValenceOnly()
{
    const TargetResult result = threePoints(threePointInputs());
    QCOMPARE(result.variant, Variant::ThreePoints);
    QCOMPARE(result.a, 0.5);
    QCOMPARE(result.valence, 2.5);
    QCOMPARE(result.thickness, 0.0);
    QVERIFY(result.parts.isEmpty());
}

void tst_TargetResult::exactFourPointsGiveFractionValenceAndThickness()
{
    const TargetResult result = exactFourPoints(fourPointInputs());
    QCOMPARE(result.variant, Variant::ExactFourPoints);
    QVERIFY(near(result.a, 0.5));
    QVERIFY(near(result.valence, 2.5));
    QVERIFY(near(result.thickness, 1));
}

void tst_TargetResult::leastSquareGivesFractionValenceAndThickness()
{
    const TargetResult result = leastSquare(fourPointInputs());
    QCOMPARE(result.variant, Variant::LeastSquare);
    QVERIFY(near(result.a, 0.5));
    QVERIFY(near(result.valence, 2.5));
    QVERIFY(near(result.thickness, 1));
}

void tst_TargetResult::leastSquareUsesAllRows()
{
    // S is the sum of the two references. A fifth row on the plane S = 2 T does not change the
    // result, but a row that is not on this plane does.
    PanelInputs inputs = fourPointInputs();
    inputs.useRows({0, 1, 2, 3, 4});
    inputs.setPoint(4, 7, 3, 5, 4);
    QVERIFY(near(leastSquare(inputs).a, 0.5));
    inputs.points[4].mutT = 5;
    QVERIFY(!near(leastSquare(inputs).thickness, 1));
}

void tst_TargetResult::onlyTheExactFormSendsNoMessage()
{
    QVERIFY(threePoints(threePointInputs()).isAnnounced());
    QVERIFY(!exactFourPoints(fourPointInputs()).isAnnounced());
    QVERIFY(leastSquare(fourPointInputs()).isAnnounced());
    QVERIFY(linear(mixedInputs(quarter)).isAnnounced());
    QVERIFY(victoreen(mixedInputs(quarter)).isAnnounced());
}

void tst_TargetResult::unusedReferenceIsSkipped()
{
    PanelInputs inputs = threePointInputs();
    setJump(inputs.spectra[2], 1.0);
    inputs.valences[2] = 4;
    inputs.points[1].mut[2] = 4;
    inputs.points[2].mut[2] = 2;
    inputs.useReferences({1, 2});
    // The calculation uses the second and the third reference. f is (value at the V row - value
    // at row 0) / (value at row 1 - value at row 0): 1/2 for the target, 1/4 for the second
    // reference and 1/2 for the third reference. So a = (1/2 - 1/2) / (1/4 - 1/2) = 0.
    QCOMPARE(threePoints(inputs).a, 0.0);
    QCOMPARE(threePoints(inputs).valence, 4.0);
}

void tst_TargetResult::valenceIsZeroWithoutTwoValidReferences()
{
    // Used: references 1 and 2; valid: reference 1. The method needs two used references, but
    // the valence needs two valid references.
    PanelInputs inputs = threePointInputs();
    inputs.spectra[1].valid = false;
    const analysis::CalculationState state = inputs.state();
    const auto rows = analysis::collectRowsLS(state.points, state.references);
    QCOMPARE(analysis::threePointsResult(state, rows).a, 0.5);
    QCOMPARE(analysis::threePointsResult(state, rows).valence, 0.0);
}

void tst_TargetResult::equalTargetValuesGiveNaN()
{
    PanelInputs inputs = threePointInputs();
    for (analysis::PointState& point : inputs.points) {
        point.mutT = 1;
    }
    QVERIFY(std::isnan(threePoints(inputs).a));
    QVERIFY(std::isnan(threePoints(inputs).valence));
}

void tst_TargetResult::nonEquivalentMixtureIsRecovered()
{
    const TargetResult result = linear(mixedInputs(quarter));
    QCOMPARE(result.variant, Variant::NonEquivalentLinear);
    QVERIFY(isQuarter(result));
}

void tst_TargetResult::everyPartStoresTheIndexOfItsReferenceRow()
{
    // References 1 and 2 of the mixture are in rows 2 and 4; rows 1 and 3 are valid, but not
    // used.
    PanelInputs inputs = mixedInputs(quarter, 4);
    setReference(inputs.spectra[0], 2);
    setReference(inputs.spectra[1], 0);
    setReference(inputs.spectra[3], 1);
    inputs.valences = {4, 2, 4, 5};
    inputs.useReferences({1, 3});
    const TargetResult result = linear(inputs);
    QVERIFY(isQuarter(result));
    QCOMPARE(result.parts.at(0).row, 1);
    QCOMPARE(result.parts.at(1).row, 3);
}

void tst_TargetResult::mixturesOfThreeAndFourReferencesAreRecovered_data()
{
    QTest::addColumn<bool>("isLinear");
    QTest::addColumn<QList<double>>("shares");
    QTest::addColumn<double>("valence");
    // The amounts (dMut) are 1, 3 and 4 with the total 8. The valence is
    // 2 * 1/8 + 5 * 3/8 + 4 * 4/8 = 4.125.
    const QList<double> three{0.125, 0.375, 0.5};
    // The amounts (dMut) are 1, 3, 4 and 32 with the total 40. The valence is
    // 2 * 1/40 + 5 * 3/40 + 4 * 4/40 + 7 * 32/40 = 6.425.
    const QList<double> four{0.025, 0.075, 0.1, 0.8};
    QTest::newRow("three references, linear") << true << three << 4.125;
    QTest::newRow("four references, linear") << true << four << 6.425;
    QTest::newRow("three references, Victoreen") << false << three << 4.125;
    QTest::newRow("four references, Victoreen") << false << four << 6.425;
}

void tst_TargetResult::mixturesOfThreeAndFourReferencesAreRecovered()
{
    QFETCH(bool, isLinear);
    QFETCH(QList<double>, shares);
    QFETCH(double, valence);
    Mix mix = isLinear ? quarter : curvedQuarter;
    mix.parts = QList<double>{0.5, 0.5, 1, 4}.first(shares.size());
    const auto inputs = mixedInputs(mix, static_cast<int>(shares.size()), 8);
    const TargetResult result = isLinear ? linear(inputs) : victoreen(inputs);
    QVERIFY(near(::shares(result), shares));
    QVERIFY(near(result.valence, valence));
}

void tst_TargetResult::targetEqualToTheFirstReferenceHasShareOne()
{
    const TargetResult result = linear(mixedInputs({{1, 0}}));
    QVERIFY(near(shares(result), {1, 0}));
    QVERIFY(near(amounts(result), {2, 0}));
    QVERIFY(near(result.valence, 2));
    QVERIFY(near(result.thickness, 2)); // the edge jump of the first reference
}

void tst_TargetResult::victoreenBackgroundIsSeparatedFromTheMixture()
{
    const TargetResult result = victoreen(mixedInputs(curvedQuarter));
    QCOMPARE(result.variant, Variant::NonEquivalentVictoreen);
    QVERIFY(isQuarter(result));
    // At eight points the linear background cannot fit a Victoreen curve, and the Victoreen
    // background cannot fit a straight line.
    QVERIFY(!isQuarter(victoreen(mixedInputs(quarter, 2, 8))));
    QVERIFY(!isQuarter(linear(mixedInputs(curvedQuarter, 2, 8))));
}

void tst_TargetResult::mutValuesOfTheEnergyRowsDoNotAffectTheTarget()
{
    PanelInputs inputs = mixedInputs(quarter);
    for (analysis::PointState& point : inputs.points) {
        point.mut.fill(99);
        point.mutT = 99;
    }
    QVERIFY(isQuarter(linear(inputs)));
}

void tst_TargetResult::chosenPreOrPostEdgeLinesAreSubtractedFromTheSpectra()
{
    PanelInputs inputs = inputsWithDifferentLines();
    QVERIFY(near(amounts(linear(inputs)), {1, 3}));
    inputs.subPostForTarget = true;
    QVERIFY(near(amounts(linear(inputs)), {1, -3}));
    inputs.subPostForTarget = false;
    inputs.subPostForRef = true;
    QVERIFY(near(amounts(linear(inputs)), {1, 6}));
}

void tst_TargetResult::vRowIsFittedLikeTheOtherRows()
{
    // With four rows for four unknowns, the fit passes through every point, including the point
    // of the V row.
    PanelInputs inputs = mixedInputs(quarter, 2, 4);
    for (const int vRow : {0, 3}) {
        inputs.markVRows({vRow});
        QVERIFY(isQuarter(linear(inputs)));
    }
    inputs.target.points[3].mut += 1; // at the V row that was marked last
    QVERIFY(!near(linear(inputs).a, 0.25));
}

void tst_TargetResult::zeroEnergyInAVictoreenFitGivesNaN()
{
    // At energy 0 the wavelength is infinite.
    PanelInputs inputs = mixedInputs(quarter);
    inputs.points[0].energy = 0;
    const TargetResult result = victoreen(inputs);
    QVERIFY(std::isnan(result.a));
    QVERIFY(std::isnan(result.valence));
    QVERIFY(std::isnan(result.thickness));
}

void tst_TargetResult::zeroTargetHasNaNShares()
{
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.target, rowEnergies(), QList<double>(8, 0.0), {}, {});
    const TargetResult result = linear(inputs);
    QVERIFY(std::isnan(result.a));
    QVERIFY(std::isnan(result.valence));
    QVERIFY(std::isnan(result.parts.at(1).share));
    QCOMPARE(result.thickness, 0.0);
}

void tst_TargetResult::edgeJumpsWithSumZeroGiveNaN()
{
    // The edge jumps 2 and -2 add up to 0, so the weights are plus and minus infinity.
    PanelInputs inputs = mixedInputs(quarter);
    inputs.spectra[1].postLine = {0.5 - 2, 0, 0};
    QVERIFY(std::isnan(linear(inputs).a));
    QVERIFY(std::isnan(linear(inputs).thickness));
}

void tst_TargetResult::invalidReferenceAfterTheFirstTwoIsIgnored()
{
    PanelInputs inputs = mixedInputs(quarter, 3);
    inputs.spectra[2].valid = false;
    QVERIFY(isQuarter(linear(inputs)));
}

QTEST_APPLESS_MAIN(tst_TargetResult)
#include "tst_TargetResult.moc"
