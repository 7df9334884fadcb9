// The numbers of a target calculation. Expected ones are worked out by hand from
// the mixture that the target is made of.
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

// Three points at E / hc of 1/2, 3/2 and 2, and what they give at 1/4 to 4: the
// end segments are extended, of slope -3 and 8.
const QList<double> coarseEnergies{0.5 * hc, 1.5 * hc, 2 * hc};
const QList<double> coarseMuts{3, 0, 4};
const QList<double> atTheRows{3.75, 3, 1.5, 4, 20, 52, 116, 244};

QList<double> cubes()
{
    QList<double> values;
    for (const double length : wavelengths) {
        values.append(std::pow(length, 3));
    }
    return values;
}

// Half the first reference, half an L^3, and a constant.
QList<double> halfACube()
{
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        muts.append(0.5 * shapes.at(0).at(row) + 0.5 * cubes().at(row) + 1.25);
    }
    return muts;
}

} // namespace

class tst_TargetResult : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threePointsGiveFractionAndValenceAndNoThickness();
    void threePointsOfOneNinth();
    void exactFourPointsGiveFractionAndThickness();
    void leastSquareGivesFractionAndThickness();
    void leastSquareTakesAllRows();
    void exactFormAloneKeepsSilent();
    void uncheckedFirstReferenceMakesTheSecondTheFirst();
    void valenceIsZeroWithoutTwoValidReferences();
    void numericTroubleShowsAsNaN();

    void nonEquivalentTargetIsTakenApart();
    void negativeShareIsNotClamped();
    void partsNameTheirReferenceRows();
    void threeAndFourReferencesAddUpToOne_data();
    void threeAndFourReferencesAddUpToOne();
    void targetEqualToTheFirstReferenceIsAllOfIt();
    void victoreenBackgroundIsTakenOff();
    void mutsOfTheRowsAreNotUsed();
    void targetIsTakenLessItsPostEdgeLineOnRequest();
    void referencesAreTakenLessTheirPostEdgeLineOnRequest();
    void referencesAreInterpolatedAndExtended();
    void targetIsInterpolatedAndExtended();
    void energyShiftsOfTheSpectraCount();
    void vRowIsFittedLikeTheOthers();
    void energyOfZeroShowsAsNaN();
    void targetOfZeroesHasNoShares();
    void jumpsThatCancelShowAsNaN();
    void invalidReferenceBehindTheFirstPlaysNoPart();
};

void tst_TargetResult::threePointsGiveFractionAndValenceAndNoThickness()
{
    const TargetResult result = threePoints(threePointInputs());
    QCOMPARE(result.variant, Variant::ThreePoints);
    QCOMPARE(result.a, 0.5);
    QCOMPARE(result.valence, 2.5);
    QCOMPARE(result.thickness, 0.0);
    QVERIFY(result.parts.isEmpty());
}

void tst_TargetResult::threePointsOfOneNinth()
{
    // f(T) = 5.5/9, f(R1) = 3/2, f(R2) = 1/2: a = 1/9; valence 3 - 1/9.
    PanelInputs inputs = threePointInputs();
    setPoint(inputs, 0, 8313, 0, 0, 0);
    setPoint(inputs, 1, 8381, 1, 1, 9);
    setPoint(inputs, 2, 8390, 1.5, 0.5, 5.5);
    QCOMPARE(threePoints(inputs).a, 1.0 / 9.0);
    QCOMPARE(threePoints(inputs).valence, 3.0 - 1.0 / 9.0);
}

void tst_TargetResult::exactFourPointsGiveFractionAndThickness()
{
    const TargetResult result = exactFourPoints(fourPointInputs());
    QCOMPARE(result.variant, Variant::ExactFourPoints);
    QVERIFY(near(result.a, 0.5));
    QVERIFY(near(result.valence, 2.5));
    QVERIFY(near(result.thickness, 1));
}

void tst_TargetResult::leastSquareGivesFractionAndThickness()
{
    const TargetResult result = leastSquare(fourPointInputs());
    QCOMPARE(result.variant, Variant::LeastSquare);
    QVERIFY(near(result.a, 0.5));
    QVERIFY(near(result.valence, 2.5));
    QVERIFY(near(result.thickness, 1));
}

void tst_TargetResult::leastSquareTakesAllRows()
{
    // A fifth row on the plane S = 2 T changes nothing, one beside it does.
    PanelInputs inputs = fourPointInputs();
    useRows(inputs, {0, 1, 2, 3, 4});
    setPoint(inputs, 4, 7, 3, 5, 4);
    QVERIFY(near(leastSquare(inputs).a, 0.5));
    inputs.points[4].mutT = 5;
    QVERIFY(!near(leastSquare(inputs).thickness, 1));
}

void tst_TargetResult::exactFormAloneKeepsSilent()
{
    QVERIFY(threePoints(threePointInputs()).isAnnounced());
    QVERIFY(!exactFourPoints(fourPointInputs()).isAnnounced());
    QVERIFY(leastSquare(fourPointInputs()).isAnnounced());
    QVERIFY(linear(mixedInputs(quarter)).isAnnounced());
    QVERIFY(victoreen(mixedInputs(quarter)).isAnnounced());
}

void tst_TargetResult::uncheckedFirstReferenceMakesTheSecondTheFirst()
{
    PanelInputs inputs = threePointInputs();
    setJump(inputs.spectra[2], 1.0);
    inputs.valences[2] = 4;
    inputs.points[1].mut[2] = 4;
    inputs.points[2].mut[2] = 2;
    useReferences(inputs, {1, 2});
    // f(T) = 1/2, f of the former second 1/4, f of the third 1/2: a = 0.
    QCOMPARE(threePoints(inputs).a, 0.0);
    QCOMPARE(threePoints(inputs).valence, 4.0);
}

void tst_TargetResult::valenceIsZeroWithoutTwoValidReferences()
{
    // Two used references exist, which the forms need; the mix asks for valid ones.
    PanelInputs inputs = threePointInputs();
    inputs.spectra[1].valid = false;
    const analysis::CalculationState state = inputs.state();
    const auto rows = analysis::collectRowsLS(state.points, state.references);
    QCOMPARE(analysis::threePointsResult(state, rows).a, 0.5);
    QCOMPARE(analysis::threePointsResult(state, rows).valence, 0.0);
}

void tst_TargetResult::numericTroubleShowsAsNaN()
{
    PanelInputs inputs = threePointInputs();
    for (analysis::PointState& point : inputs.points) {
        point.mutT = 1;
    }
    QVERIFY(std::isnan(threePoints(inputs).a));
    QVERIFY(std::isnan(threePoints(inputs).valence));
}

void tst_TargetResult::nonEquivalentTargetIsTakenApart()
{
    const TargetResult result = linear(mixedInputs(quarter));
    QCOMPARE(result.variant, Variant::NonEquivalentLinear);
    QVERIFY(isQuarter(result));
}

void tst_TargetResult::negativeShareIsNotClamped()
{
    const TargetResult result = linear(mixedInputs(negative));
    QVERIFY(near(shares(result), {-0.2, 1.2}));
    QVERIFY(near(amounts(result), {-1, 6}));
    QVERIFY(near(result.valence, 5.6));
    QVERIFY(near(result.thickness, 5));
}

void tst_TargetResult::partsNameTheirReferenceRows()
{
    // Shapes 1 and 2 are in rows 2 and 4; rows 1 and 3, valid too, are not used.
    PanelInputs inputs = mixedInputs(quarter, 4);
    setReference(inputs.spectra[0], 2);
    setReference(inputs.spectra[1], 0);
    setReference(inputs.spectra[3], 1);
    inputs.valences = {4, 2, 4, 5};
    useReferences(inputs, {1, 3});
    const TargetResult result = linear(inputs);
    QVERIFY(isQuarter(result));
    QCOMPARE(result.parts.at(0).row, 1);
    QCOMPARE(result.parts.at(1).row, 3);
}

void tst_TargetResult::threeAndFourReferencesAddUpToOne_data()
{
    QTest::addColumn<bool>("isLinear");
    QTest::addColumn<QList<double>>("shares");
    QTest::addColumn<double>("valence");
    // dMut 1, 3, 4 of 8: valence 0.25 + 1.875 + 2.
    const QList<double> three{0.125, 0.375, 0.5};
    // dMut 1, 3, 4, 32 of 40: valence 0.05 + 0.375 + 0.4 + 5.6.
    const QList<double> four{0.025, 0.075, 0.1, 0.8};
    QTest::newRow("three, linear") << true << three << 4.125;
    QTest::newRow("four, linear") << true << four << 6.425;
    QTest::newRow("three, Victoreen") << false << three << 4.125;
    QTest::newRow("four, Victoreen") << false << four << 6.425;
}

void tst_TargetResult::threeAndFourReferencesAddUpToOne()
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

void tst_TargetResult::targetEqualToTheFirstReferenceIsAllOfIt()
{
    const TargetResult result = linear(mixedInputs({{1, 0}}));
    QVERIFY(near(shares(result), {1, 0}));
    QVERIFY(near(amounts(result), {2, 0}));
    QVERIFY(near(result.valence, 2));
    QVERIFY(near(result.thickness, 2)); // its edge jump
}

void tst_TargetResult::victoreenBackgroundIsTakenOff()
{
    const TargetResult result = victoreen(mixedInputs(curvedQuarter));
    QCOMPARE(result.variant, Variant::NonEquivalentVictoreen);
    QVERIFY(isQuarter(result));
    // Two terms in L do not follow a straight line through eight points, nor it them.
    QVERIFY(!isQuarter(victoreen(mixedInputs(quarter, 2, 8))));
    QVERIFY(!isQuarter(linear(mixedInputs(curvedQuarter, 2, 8))));
}

void tst_TargetResult::mutsOfTheRowsAreNotUsed()
{
    PanelInputs inputs = mixedInputs(quarter);
    for (analysis::PointState& point : inputs.points) {
        point.mut.fill(99);
        point.mutT = 99;
    }
    QVERIFY(isQuarter(linear(inputs)));
}

void tst_TargetResult::targetIsTakenLessItsPostEdgeLineOnRequest()
{
    // The second reference is L^3, and so is the distance of the target's lines:
    // less the post-edge line there is one of it less, dMut 1 and -3 of -2.
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.spectra[1], rowEnergies(), cubes(), {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(inputs.target, rowEnergies(), halfACube(), {}, {3, 1, 0});
    QVERIFY(near(linear(inputs).a, 0.25));
    inputs.subPostForRef = true; // constant lines: nothing but the constant changes
    QVERIFY(near(linear(inputs).a, 0.25));
    inputs.subPostForRef = false;
    inputs.subPostForTarget = true;
    QVERIFY(near(linear(inputs).a, -0.5));
    QVERIFY(near(linear(inputs).thickness, -2));
}

void tst_TargetResult::referencesAreTakenLessTheirPostEdgeLineOnRequest()
{
    // The lines of the first reference are 1 + L^3 apart, its edge is at L = 1:
    // jump 2. The second reference is L^3, jump 6. Less the post-edge lines r1 is
    // short of an L^3, which the second makes up for: parts of 1/2 and 1/2 become
    // 1/2 and 1, dMut 1 and 6.
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.spectra[0], rowEnergies(), shapes.at(0), {}, {1, 1, 0});
    inputs.spectra[0].edgeEnergy = hc;
    setSpectrum(inputs.spectra[1], rowEnergies(), cubes(), {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(inputs.target, rowEnergies(), halfACube(), {0.5, 0, 0}, {0.75, 0, 0});
    QVERIFY(near(linear(inputs).a, 0.25));
    QVERIFY(near(linear(inputs).thickness, 4));
    inputs.subPostForTarget = true; // constant lines: nothing changes
    QVERIFY(near(linear(inputs).a, 0.25));
    inputs.subPostForTarget = false;
    inputs.subPostForRef = true;
    QVERIFY(near(linear(inputs).a, 1.0 / 7.0));
    QVERIFY(near(linear(inputs).thickness, 7));
}

void tst_TargetResult::referencesAreInterpolatedAndExtended()
{
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.spectra[0], coarseEnergies, coarseMuts, {0.25, 0, 0}, {2.25, 0, 0});
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        muts.append(0.5 * atTheRows.at(row) + 0.5 * shapes.at(1).at(row));
    }
    setSpectrum(inputs.target, rowEnergies(), muts, {}, {});
    QVERIFY(isQuarter(linear(inputs)));
}

void tst_TargetResult::targetIsInterpolatedAndExtended()
{
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.spectra[0], rowEnergies(), atTheRows, {}, {2, 0, 0});
    setSpectrum(inputs.target, coarseEnergies, coarseMuts, {}, {});
    QVERIFY(near(linear(inputs).a, 1));
    QVERIFY(near(linear(inputs).thickness, 2));
}

void tst_TargetResult::energyShiftsOfTheSpectraCount()
{
    PanelInputs inputs = mixedInputs(quarter);
    inputs.spectra[0].dE = 700;
    inputs.target.dE = -300;
    for (AMutE* spectrum : {&inputs.spectra[0], &inputs.target}) {
        for (MutPoint& point : spectrum->points) {
            point.energy += spectrum->dE;
        }
    }
    QVERIFY(isQuarter(linear(inputs)));
}

void tst_TargetResult::vRowIsFittedLikeTheOthers()
{
    // Four rows for four unknowns: the fit passes through the V row's point,
    // whichever row that is.
    PanelInputs inputs = mixedInputs(quarter, 2, 4);
    for (const int vRow : {0, 3}) {
        markVRows(inputs, {vRow});
        QVERIFY(isQuarter(linear(inputs)));
    }
    inputs.target.points[3].mut += 1; // at the V row of the last round
    QVERIFY(!near(linear(inputs).a, 0.25));
}

void tst_TargetResult::energyOfZeroShowsAsNaN()
{
    // There the wavelength is infinite.
    PanelInputs inputs = mixedInputs(quarter);
    inputs.points[0].energy = 0;
    const TargetResult result = victoreen(inputs);
    QVERIFY(std::isnan(result.a));
    QVERIFY(std::isnan(result.valence));
    QVERIFY(std::isnan(result.thickness));
}

void tst_TargetResult::targetOfZeroesHasNoShares()
{
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.target, rowEnergies(), QList<double>(8, 0.0), {}, {});
    const TargetResult result = linear(inputs);
    QVERIFY(std::isnan(result.a));
    QVERIFY(std::isnan(result.valence));
    QVERIFY(std::isnan(result.parts.at(1).share));
    QCOMPARE(result.thickness, 0.0);
}

void tst_TargetResult::jumpsThatCancelShowAsNaN()
{
    // Weights of plus and minus infinity.
    PanelInputs inputs = mixedInputs(quarter);
    inputs.spectra[1].postLine = {0.5 - 2, 0, 0};
    QVERIFY(std::isnan(linear(inputs).a));
    QVERIFY(std::isnan(linear(inputs).thickness));
}

void tst_TargetResult::invalidReferenceBehindTheFirstPlaysNoPart()
{
    PanelInputs inputs = mixedInputs(quarter, 3);
    inputs.spectra[2].valid = false;
    QVERIFY(isQuarter(linear(inputs)));
}

QTEST_APPLESS_MAIN(tst_TargetResult)
#include "tst_TargetResult.moc"
