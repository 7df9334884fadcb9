// Background lines, edge energy, presentations, interpolation and value range of a spectrum.
#include "data/AMutE.h"
#include "support/SameDouble.h"

#include <QTest>

#include <cmath>
#include <limits>

using data::VictoreenLine;

namespace
{

using Pairs = QList<std::pair<double, double>>; // energy as read (eV), mut

constexpr double hc = 12398.424360387684; // h c in eV angstrom
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

AMutE spectrumOf(const Pairs& pairs, double dE = 0.0)
{
    AMutE spectrum;
    for (const auto& [energy, mut] : pairs) {
        spectrum.points.append({0.0, energy, mut});
    }
    spectrum.dE = dE;
    return spectrum;
}

/// Sets constant lines, so that the expected presentations can be calculated by hand.
AMutE withConstantLines(AMutE spectrum, double pre, double post)
{
    spectrum.preLine = {pre, 0.0, 0.0};
    spectrum.postLine = {post, 0.0, 0.0};
    return spectrum;
}

/// The value c + a L^3 + b L^4 of @p line, calculated with std::pow.
double lineAt(const VictoreenLine& line, double energyEv)
{
    const double L = hc / energyEv;
    return line.c + line.a * std::pow(L, 3) + line.b * std::pow(L, 4);
}

bool isSame(const VictoreenLine& a, const VictoreenLine& b)
{
    return tests::sameDouble(a.c, b.c) && tests::sameDouble(a.a, b.a) &&
           tests::sameDouble(a.b, b.b);
}

bool near(double value, double expected, double tolerance)
{
    return std::fabs(value - expected) <= tolerance;
}

} // namespace

Q_DECLARE_METATYPE(VictoreenLine)

class tst_AMutELines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreVictoreenPolynomials();
    void linesAreEvaluatedFromTheHighestPowerDown();
    void linesAtEnergyZeroAreNotFinite();
    void edgeJumpIsTheLineDifferenceAtTheEdgeEnergy();

    void fitRecoversBothLines();
    void pointsInBothRangesEnterBothFits();
    void fitSumsOverThePointsInListOrder();
    void pointOnALimitOrWithNaNEnergyEntersNeitherFit_data();
    void pointOnALimitOrWithNaNEnergyEntersNeitherFit();
    void fitUsesWorkingEnergies();
    void fitWithoutPointsKeepsTheLines();
    void rangeWithoutPointsGivesANaNLine();
    void changedSettingsDoNotRefitTheLines();

    void edgeIsTheMiddleOfTheLargestStep_data();
    void edgeIsTheMiddleOfTheLargestStep();
    void indexBelowReturnsTheFirstOfTheTwoPointsAroundTheEnergy_data();
    void indexBelowReturnsTheFirstOfTheTwoPointsAroundTheEnergy();
    void mutIsInterpolatedOrExtrapolatedLinearly_data();
    void mutIsInterpolatedOrExtrapolatedLinearly();
    void interpolationAtAPointGivesItsMut();
    void interpolationDividesBeforeItMultiplies();

    void valueOfEachKindFollowsItsFormula_data();
    void valueOfEachKindFollowsItsFormula();
    void valueUsesTheLinesAtTheWorkingEnergy();
    void valueOfAnUnknownKindIsZero();
    void valueAtAnInvalidIndexIsZero();
    void divisionByAZeroEdgeJumpGivesInfinityOrNaN();
    void normalisedValueIsInfiniteWhereTheLinesCross();
    void valueAtInterpolatesEachKindOfValue();
    void normalisedAtAndValueAtGiveEqualNormalisedValues();
    void fewerThanTwoPointsInterpolateToZero();

    void valueRangeIncludesPointsAtBothLimits();
    void valueRangeDoesNotNarrowTheGivenLimits();
    void valueRangeUsesWorkingEnergies();
    void valueRangeIgnoresNaN();

    void energyShiftLeavesTheStoredEnergiesUnchanged();

    void backgroundIsSubtractedFromTheInterpolatedMut_data();
    void backgroundIsSubtractedFromTheInterpolatedMut();
    void backgroundIsTheChosenLineAtTheEnergy();
    void subtractionUsesTheFirstPointInFileOrderAtOrAboveTheEnergy();
    void mutBelowTheFirstPointIsInterpolatedFromWorkingEnergyZero();
};

void tst_AMutELines::linesAreVictoreenPolynomials()
{
    AMutE spectrum;
    spectrum.preLine = {1.0, 2.0, 3.0};
    spectrum.postLine = {-1.0, 0.5, 0.25};
    // L = 2 angstrom: 1 + 2 * 8 + 3 * 16 = 65; -1 + 0.5 * 8 + 0.25 * 16 = 7.
    QCOMPARE(spectrum.preValue(hc / 2.0), 65.0);
    QCOMPARE(spectrum.postValue(hc / 2.0), 7.0);
}

void tst_AMutELines::linesAreEvaluatedFromTheHighestPowerDown()
{
    AMutE spectrum;
    spectrum.preLine = {0.1, 0.7, -0.3};
    int differentFromPowers = 0;
    for (double E = 8000.0; E < 8100.0; E += 1.0) {
        const double L = 12398.424360387684 / E;
        QVERIFY(tests::sameDouble(spectrum.preValue(E), (-0.3 * L + 0.7) * L * L * L + 0.1));
        differentFromPowers += spectrum.preValue(E) == lineAt(spectrum.preLine, E) ? 0 : 1;
    }
    QVERIFY(differentFromPowers > 0); // lineAt() rounds differently
}

void tst_AMutELines::linesAtEnergyZeroAreNotFinite()
{
    AMutE spectrum;
    spectrum.preLine = {0.0, 1.0, 1.0};
    spectrum.postLine = {0.0, 0.0, 0.0};
    QCOMPARE(spectrum.preValue(0.0), infinity);
    QVERIFY(std::isnan(spectrum.postValue(0.0))); // 0 * inf
}

void tst_AMutELines::edgeJumpIsTheLineDifferenceAtTheEdgeEnergy()
{
    AMutE spectrum;
    spectrum.edgeEnergy = hc / 2.0;
    spectrum.preLine = {1.0, 1.0, 0.0};  // 9 at L = 2
    spectrum.postLine = {4.0, 0.0, 1.0}; // 20 at L = 2
    QCOMPARE(spectrum.edgeJump(), 11.0);
}

void tst_AMutELines::fitRecoversBothLines()
{
    const VictoreenLine pre{0.2, 0.3, -0.05};
    const VictoreenLine post{0.9, 0.4, -0.08};
    AMutE spectrum;
    for (double E = 7000.0; E <= 7990.0; E += 10.0) {
        spectrum.points.append({0.0, E, lineAt(pre, E)});
    }
    for (double E = 8510.0; E <= 9500.0; E += 10.0) {
        spectrum.points.append({0.0, E, lineAt(post, E)});
    }
    spectrum.fitLines();
    // The normal equations have a condition number of about 3e6, so the fit loses six or seven
    // of sixteen digits. 1e-7 also allows for the extrapolation of each line beyond its range.
    for (double E = 7000.0; E <= 9500.0; E += 100.0) {
        QVERIFY(near(spectrum.preValue(E), lineAt(pre, E), 1e-7));
        QVERIFY(near(spectrum.postValue(E), lineAt(post, E), 1e-7));
    }
}

void tst_AMutELines::pointsInBothRangesEnterBothFits()
{
    const VictoreenLine line{0.2, 0.3, -0.05};
    AMutE spectrum;
    for (double E = 7000.0; E <= 9500.0; E += 100.0) {
        spectrum.points.append({0.0, E, lineAt(line, E)});
    }
    spectrum.preEdgeEnd = 9900.0;
    spectrum.postEdgeStart = 6000.0;
    spectrum.fitLines();
    QVERIFY(isSame(spectrum.preLine, spectrum.postLine));
    QVERIFY(near(spectrum.preLine.c, 0.2, 1e-6));
}

void tst_AMutELines::fitSumsOverThePointsInListOrder()
{
    // The comparison is exact, so the expected line is calculated with the same order of
    // operations as in the fit: sums in list order, then Gaussian elimination with partial
    // pivoting for three unknowns.
    AMutE spectrum = spectrumOf({{7000, 0.31}, {7450, 0.27}, {7900, 0.22}, {7100, 0.305}});
    spectrum.fitLines();

    double s[9] = {};
    for (const MutPoint& point : spectrum.points) {
        const double L = 12398.424360387684 / point.energy;
        const double p3 = L * L * L;
        const double p4 = L * L * L * L;
        const double y = point.mut;
        const double terms[9] = {1.0, p3, p4, p3 * p3, p3 * p4, p4 * p4, y, y * p3, y * p4};
        for (int i = 0; i < 9; ++i) {
            s[i] += terms[i];
        }
    }
    // L is near 1.7, so the entries of column 0 (the sums of 1, L^3 and L^4) increase
    // downward, and the first pivot is in row 2. The second pivot is the larger remaining
    // entry of column 1, in row 0 or row 1.
    const double f0 = s[2] == 0.0 ? 0.0 : s[0] / s[2];
    const double f1 = s[1] / s[2];
    const double a01 = s[1] - s[4] * f0;
    const double a02 = s[2] - s[5] * f0;
    const double b0 = s[6] - s[8] * f0;
    const double a11 = s[3] - s[4] * f1;
    const double a12 = s[4] - s[5] * f1;
    const double b1 = s[7] - s[8] * f1;
    const bool rowZeroLeads = std::fabs(a01) >= std::fabs(a11);
    const double p1 = rowZeroLeads ? a01 : a11;
    const double p2 = rowZeroLeads ? a02 : a12;
    const double pb = rowZeroLeads ? b0 : b1;
    const double f2 = (rowZeroLeads ? a11 : a01) / p1;
    const double x2 = ((rowZeroLeads ? b1 : b0) - pb * f2) / ((rowZeroLeads ? a12 : a02) - p2 * f2);
    // Back substitution: b (the coefficient of L^4), then a, then c.
    const double x1 = (pb - x2 * p2) / p1;
    const double x0 = (s[8] - x2 * s[5] - x1 * s[4]) / s[2];
    QVERIFY(isSame(spectrum.preLine, {x0, x1, x2}));
}

void tst_AMutELines::pointOnALimitOrWithNaNEnergyEntersNeitherFit_data()
{
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<double>("energy");
    const Pairs below{{7700, 1}, {7800, 1.25}, {7900, 1.5}, {7950, 2}};
    const Pairs above{{8600, 1}, {8700, 1.25}, {8800, 1.5}, {8900, 2}};
    QTest::newRow("exactly at the end of the pre-edge range") << below << 8000.0;
    QTest::newRow("exactly at the start of the post-edge range") << above << 8500.0;
    QTest::newRow("NaN energy") << below << notANumber;
}

void tst_AMutELines::pointOnALimitOrWithNaNEnergyEntersNeitherFit()
{
    QFETCH(Pairs, pairs);
    QFETCH(double, energy);
    AMutE without = spectrumOf(pairs);
    without.fitLines();
    AMutE with = spectrumOf(Pairs{{energy, 777}} + pairs);
    with.fitLines();
    QVERIFY(isSame(with.preLine, without.preLine));
    QVERIFY(isSame(with.postLine, without.postLine));
    QVERIFY(std::isnan(with.preLine.c) !=
            std::isnan(with.postLine.c)); // only one of the two ranges contains points
}

void tst_AMutELines::fitUsesWorkingEnergies()
{
    // `shifted` is the same spectrum with all energies 8 eV higher and dE = 8 eV, so the
    // working energies are equal. The energies are integers, so the shift is exact.
    const Pairs pairs{{7700, 1}, {7800, 1.25}, {7900, 1.5}, {7999, 2},
                      {8600, 3}, {8700, 4},    {8800, 4.5}, {8501, 2.5}};
    AMutE plain = spectrumOf(pairs);
    plain.fitLines();
    AMutE shifted = spectrumOf(pairs, 8.0);
    for (MutPoint& point : shifted.points) {
        point.energy += 8.0;
    }
    shifted.fitLines();
    for (const double E : {7700.0, 8333.0, 8700.0}) {
        QVERIFY(tests::sameDouble(shifted.preValue(E), plain.preValue(E)));
        QVERIFY(tests::sameDouble(shifted.postValue(E), plain.postValue(E)));
    }
}

void tst_AMutELines::fitWithoutPointsKeepsTheLines()
{
    AMutE spectrum;
    spectrum.preLine = {1.0, 2.0, 3.0};
    spectrum.postLine = {4.0, 5.0, 6.0};
    spectrum.fitLines();
    QCOMPARE(spectrum.preLine.b, 3.0);
    QCOMPARE(spectrum.postLine.b, 6.0);
}

void tst_AMutELines::rangeWithoutPointsGivesANaNLine()
{
    AMutE spectrum = spectrumOf({{8100, 1}, {8200, 2}, {8300, 3}, {8400, 3}});
    spectrum.fitLines();
    for (const VictoreenLine& line : {spectrum.preLine, spectrum.postLine}) {
        QVERIFY(std::isnan(line.c));
        QVERIFY(std::isnan(line.a));
        QVERIFY(std::isnan(line.b));
    }
}

void tst_AMutELines::changedSettingsDoNotRefitTheLines()
{
    AMutE spectrum = withConstantLines(spectrumOf({{7700, 1}, {8600, 2}}), 1.0, 2.0);
    spectrum.dE = 5.0;
    spectrum.preEdgeEnd = 7000.0;
    spectrum.edgeEnergy = 8000.0;
    QCOMPARE(spectrum.edgeJump(), 1.0);
    QCOMPARE(spectrum.value(4, 1), 1.0);
    spectrum.findEdge();
    QCOMPARE(spectrum.preLine.c, 1.0);
    QCOMPARE(spectrum.postLine.c, 2.0);
}

void tst_AMutELines::edgeIsTheMiddleOfTheLargestStep_data()
{
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<double>("dE");
    QTest::addColumn<double>("edge");

    QTest::newRow("no point") << Pairs{} << 5.0 << 0.0;
    QTest::newRow("one point gives half its energy") << Pairs{{8300, 1}} << 0.0 << 4150.0;
    QTest::newRow("one point, shifted") << Pairs{{8300, 1}} << 10.0 << 4145.0;
    QTest::newRow("largest step") << Pairs{{1, 0}, {2, 1}, {4, 5}, {8, 6}} << 0.0 << 3.0;
    QTest::newRow("last step") << Pairs{{1, 0}, {2, 1}, {4, 5}} << 0.0 << 3.0;
    QTest::newRow("shifted") << Pairs{{10, 0}, {20, 1}, {40, 5}} << 5.0 << 25.0;
    QTest::newRow("first of equal steps") << Pairs{{1, 0}, {2, 1}, {4, 2}} << 0.0 << 1.5;
    QTest::newRow("flat spectrum: the first step") << Pairs{{1, 3}, {2, 3}, {4, 3}} << 0.0 << 1.5;
    QTest::newRow("largest difference, not largest slope")
        << Pairs{{1, 0}, {2, 1}, {9, 3}} << 0.0 << 5.5;
    QTest::newRow("falling spectrum: the smallest drop")
        << Pairs{{1, 3}, {2, 2.5}, {4, 2.25}} << 0.0 << 3.0;
    QTest::newRow("all steps at or below -1") << Pairs{{6, 3}, {8, 2}, {10, 0}} << 2.0 << 2.0;
    QTest::newRow("a step from NaN is ignored")
        << Pairs{{6, notANumber}, {8, 2}, {10, 2}} << 0.0 << 9.0;
    QTest::newRow("only NaN") << Pairs{{6, notANumber}, {8, notANumber}} << 0.0 << 3.0;
    QTest::newRow("descending scan") << Pairs{{9, 5}, {5, 1}, {3, 0.5}} << 0.0 << 4.0;
}

void tst_AMutELines::edgeIsTheMiddleOfTheLargestStep()
{
    QFETCH(Pairs, pairs);
    QFETCH(double, dE);
    QFETCH(double, edge);
    QCOMPARE(spectrumOf(pairs, dE).findEdge(), edge);
}

void tst_AMutELines::indexBelowReturnsTheFirstOfTheTwoPointsAroundTheEnergy_data()
{
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<double>("dE");
    QTest::addColumn<double>("E");
    QTest::addColumn<int>("index");

    const Pairs four{{10, 0}, {20, 0}, {30, 0}, {40, 0}};
    const Pairs falling{{40, 0}, {30, 0}, {20, 0}, {10, 0}};
    QTest::newRow("below the first") << four << 0.0 << 5.0 << 0;
    QTest::newRow("on the first") << four << 0.0 << 10.0 << 0;
    QTest::newRow("inside") << four << 0.0 << 25.0 << 1;
    QTest::newRow("on a point: the pair that ends there") << four << 0.0 << 20.0 << 0;
    QTest::newRow("on the last") << four << 0.0 << 40.0 << 2;
    QTest::newRow("above the last") << four << 0.0 << 45.0 << 2;
    QTest::newRow("NaN gives index 0") << four << 0.0 << notANumber << 0;
    QTest::newRow("shifted onto a point") << four << 5.0 << 25.0 << 1;
    QTest::newRow("shifted past a point") << four << 5.0 << 25.5 << 2;
    QTest::newRow("shifted above the last") << four << 5.0 << 36.0 << 2;
    QTest::newRow("falling scan, inside: treated as below the first")
        << falling << 0.0 << 25.0 << 0;
    QTest::newRow("falling scan, on the first: treated as above the last")
        << falling << 0.0 << 40.0 << 2;
    QTest::newRow("rising and falling, no pair contains it")
        << Pairs{{10, 0}, {5, 0}, {30, 0}, {notANumber, 0}} << 0.0 << 35.0 << 0;
    QTest::newRow("two pairs contain it: the first")
        << Pairs{{10, 0}, {30, 0}, {20, 0}, {40, 0}} << 0.0 << 25.0 << 0;
    QTest::newRow("no point") << Pairs{} << 0.0 << 5.0 << 0;
    QTest::newRow("one point, below") << Pairs{{10, 0}} << 0.0 << 5.0 << 0;
    QTest::newRow("one point, on it") << Pairs{{10, 0}} << 0.0 << 10.0 << 0;
    QTest::newRow("one point, above it: index -1") << Pairs{{10, 0}} << 0.0 << 15.0 << -1;
}

void tst_AMutELines::indexBelowReturnsTheFirstOfTheTwoPointsAroundTheEnergy()
{
    QFETCH(Pairs, pairs);
    QFETCH(double, dE);
    QFETCH(double, E);
    QFETCH(int, index);
    QCOMPARE(spectrumOf(pairs, dE).indexBelow(E), index);
}

void tst_AMutELines::mutIsInterpolatedOrExtrapolatedLinearly_data()
{
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<double>("dE");
    QTest::addColumn<double>("E");
    QTest::addColumn<double>("mut");

    const Pairs three{{10, 1}, {20, 2}, {40, 6}};
    QTest::newRow("inside") << three << 0.0 << 15.0 << 1.5;
    QTest::newRow("second segment") << three << 0.0 << 25.0 << 3.0;
    QTest::newRow("first segment extended") << three << 0.0 << 0.0 << 0.0;
    QTest::newRow("last segment extended") << three << 0.0 << 50.0 << 8.0;
    QTest::newRow("shifted") << three << 5.0 << 10.0 << 1.5;
    QTest::newRow("one point") << Pairs{{10, 1}} << 0.0 << 10.0 << 0.0;
    QTest::newRow("one point, above it") << Pairs{{10, 1}} << 0.0 << 20.0 << 0.0;
    QTest::newRow("no point") << Pairs{} << 0.0 << 10.0 << 0.0;
    QTest::newRow("equal energies and muts")
        << Pairs{{10, 1}, {10, 1}} << 0.0 << 10.0 << notANumber;
    QTest::newRow("equal energies, above") << Pairs{{10, 1}, {10, 2}} << 0.0 << 11.0 << infinity;
    QTest::newRow("NaN energy") << three << 0.0 << notANumber << notANumber;
    QTest::newRow("falling scan extends its first segment")
        << Pairs{{40, 6}, {20, 2}, {10, 1}} << 0.0 << 15.0 << 1.0;
}

void tst_AMutELines::mutIsInterpolatedOrExtrapolatedLinearly()
{
    QFETCH(Pairs, pairs);
    QFETCH(double, dE);
    QFETCH(double, E);
    QFETCH(double, mut);
    QVERIFY(tests::sameDouble(spectrumOf(pairs, dE).mutAt(E), mut));
}

void tst_AMutELines::interpolationAtAPointGivesItsMut()
{
    const AMutE spectrum = spectrumOf({{8300.1, 0.123}, {8300.7, 0.456}, {8301.9, 0.789}});
    for (const MutPoint& point : spectrum.points) {
        QVERIFY(near(spectrum.mutAt(point.energy), point.mut, 1e-15));
    }
}

void tst_AMutELines::interpolationDividesBeforeItMultiplies()
{
    const AMutE spectrum = spectrumOf({{8300.1, 0.123}, {8307.3, 0.456}});
    int differentFromProductFirst = 0;
    for (double E = 8300.25; E < 8307.0; E += 0.125) {
        const double quotientFirst = (0.456 - 0.123) / (8307.3 - 8300.1) * (E - 8300.1) + 0.123;
        const double productFirst = (0.456 - 0.123) * (E - 8300.1) / (8307.3 - 8300.1) + 0.123;
        QVERIFY(tests::sameDouble(spectrum.mutAt(E), quotientFirst));
        differentFromProductFirst += quotientFirst == productFirst ? 0 : 1;
    }
    QVERIFY(differentFromProductFirst > 0);
}

void tst_AMutELines::valueOfEachKindFollowsItsFormula_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("value");

    // The point has the mut 7. The pre-edge line is 1 at all energies. The post-edge line is 3
    // at the point and 5 at the edge energy, so the edge jump is 4.
    QTest::newRow("raw") << 0 << 7.0;
    QTest::newRow("minus pre-edge line") << 1 << 6.0;
    QTest::newRow("minus post-edge line") << 2 << 4.0;
    QTest::newRow("divided by the edge jump") << 3 << 1.5;
    QTest::newRow("normalised between both lines") << 4 << 3.0;
    QTest::newRow("unknown kind gives zero") << 5 << 0.0;
}

void tst_AMutELines::valueOfEachKindFollowsItsFormula()
{
    QFETCH(int, kind);
    QFETCH(double, value);
    AMutE spectrum = spectrumOf({{hc / 4, 100}, {hc / 2, 7}});
    spectrum.preLine = {1.0, 0.0, 0.0};
    spectrum.postLine = {-5.0, 1.0, 0.0}; // 3 at L = 2, 5 at L^3 = 10
    spectrum.edgeEnergy = hc / std::cbrt(10.0);
    QVERIFY(near(spectrum.value(kind, 1), value, 1e-14));
    QVERIFY(tests::sameDouble(spectrum.checkedValue(kind, 1), spectrum.value(kind, 1)));
}

void tst_AMutELines::valueUsesTheLinesAtTheWorkingEnergy()
{
    AMutE spectrum = spectrumOf({{hc / 2 + 5.0, 100}}, 5.0);
    spectrum.preLine = {0.0, 1.0, 0.0};  // 8 at L = 2
    spectrum.postLine = {0.0, 2.0, 0.0}; // 16 at L = 2
    spectrum.edgeEnergy = hc;            // not shifted by dE: L = 1, so the jump is 2 - 1
    QVERIFY(near(spectrum.value(1, 0), 92.0, 1e-11));
    QVERIFY(near(spectrum.value(2, 0), 84.0, 1e-11));
    QVERIFY(near(spectrum.value(3, 0), 92.0, 1e-11));
    QVERIFY(near(spectrum.value(4, 0), 11.5, 1e-11));
}

void tst_AMutELines::valueOfAnUnknownKindIsZero()
{
    const AMutE spectrum = withConstantLines(spectrumOf({{10, 1}, {20, 2}}), 1.0, 3.0);
    for (const int kind : {5, 6, 1000, -1, std::numeric_limits<int>::min()}) {
        QCOMPARE(spectrum.value(kind, 0), 0.0);
        QCOMPARE(spectrum.checkedValue(kind, 0), 0.0);
        QCOMPARE(spectrum.valueAt(kind, 15.0), 0.0);
    }
}

void tst_AMutELines::valueAtAnInvalidIndexIsZero()
{
    const AMutE spectrum = withConstantLines(spectrumOf({{10, 1}, {20, 2}}), 1.0, 3.0);
    for (const int i : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QCOMPARE(spectrum.value(0, i), 0.0);
        QCOMPARE(spectrum.checkedValue(0, i), 0.0);
    }
    QCOMPARE(AMutE().checkedValue(0, 0), 0.0);
}

void tst_AMutELines::divisionByAZeroEdgeJumpGivesInfinityOrNaN()
{
    AMutE spectrum = withConstantLines(spectrumOf({{10, 5}, {20, 2}}), 2.0, 2.0);
    spectrum.edgeEnergy = 8333.0;
    QCOMPARE(spectrum.value(3, 0), infinity);
    QVERIFY(std::isnan(spectrum.value(3, 1))); // (2 - 2) / 0
}

void tst_AMutELines::normalisedValueIsInfiniteWhereTheLinesCross()
{
    AMutE spectrum = spectrumOf({{hc / 2, 5}, {hc, 5}});
    spectrum.preLine = {8.0, 0.0, 0.0};
    spectrum.postLine = {0.0, 1.0, 0.0}; // 8 at L = 2
    QCOMPARE(spectrum.value(4, 0), -infinity);
    QVERIFY(std::isfinite(spectrum.value(4, 1)));
}

void tst_AMutELines::valueAtInterpolatesEachKindOfValue()
{
    AMutE spectrum = withConstantLines(spectrumOf({{10, 1}, {20, 3}}), 1.0, 5.0);
    spectrum.edgeEnergy = 8333.0;
    QCOMPARE(spectrum.valueAt(0, 15.0), 2.0);
    QCOMPARE(spectrum.valueAt(1, 15.0), 1.0);
    QCOMPARE(spectrum.valueAt(2, 15.0), -3.0);
    QCOMPARE(spectrum.valueAt(3, 15.0), 0.25);
    QCOMPARE(spectrum.valueAt(4, 15.0), 0.25);
    QCOMPARE(spectrum.valueAt(4, 30.0), 1.0); // extrapolated: 0.5 at 20, 0 at 10
    spectrum.dE = 5.0;
    QCOMPARE(spectrum.valueAt(1, 10.0), 1.0);
}

void tst_AMutELines::normalisedAtAndValueAtGiveEqualNormalisedValues()
{
    AMutE spectrum = spectrumOf({{8000, 1}, {8100, 3}, {8200, 4}});
    spectrum.preLine = {0.5, 0.1, 0.02};
    spectrum.postLine = {2.0, 0.3, -0.01};
    for (const double E : {7900.0, 8000.0, 8050.0, 8200.0, 8300.0}) {
        QVERIFY(tests::sameDouble(spectrum.normalisedAt(E), spectrum.valueAt(4, E)));
    }
}

void tst_AMutELines::fewerThanTwoPointsInterpolateToZero()
{
    for (const Pairs& pairs : {Pairs{}, Pairs{{10, 1}}}) {
        const AMutE spectrum = withConstantLines(spectrumOf(pairs), 0.5, 3.0);
        QCOMPARE(spectrum.mutAt(20.0), 0.0);
        QCOMPARE(spectrum.normalisedAt(20.0), 0.0);
        for (int kind = 0; kind <= 4; ++kind) {
            QCOMPARE(spectrum.valueAt(kind, 20.0), 0.0);
        }
    }
}

void tst_AMutELines::valueRangeIncludesPointsAtBothLimits()
{
    const AMutE spectrum = spectrumOf({{9, -100}, {10, -1}, {15, 0}, {20, 2}, {21, 100}});
    double min = 1e300;
    double max = -1e300;
    spectrum.valueRange(0, 10.0, 20.0, &min, &max);
    QCOMPARE(min, -1.0);
    QCOMPARE(max, 2.0);
}

void tst_AMutELines::valueRangeDoesNotNarrowTheGivenLimits()
{
    const AMutE spectrum = withConstantLines(spectrumOf({{10, 1}, {20, 3}}), 1.0, 5.0);
    double min = -10.0;
    double max = 1.0;
    spectrum.valueRange(1, 0.0, 100.0, &min, &max); // the values are 0 and 2
    QCOMPARE(min, -10.0);
    QCOMPARE(max, 2.0);
    spectrum.valueRange(1, 50.0, 100.0, &min, &max); // no point in this range
    QCOMPARE(min, -10.0);
    QCOMPARE(max, 2.0);
}

void tst_AMutELines::valueRangeUsesWorkingEnergies()
{
    const AMutE spectrum = spectrumOf({{10, 1}, {20, 3}, {30, 7}}, 5.0);
    double min = 1e300;
    double max = -1e300;
    spectrum.valueRange(0, 15.0, 25.0, &min, &max);
    QCOMPARE(min, 3.0);
    QCOMPARE(max, 7.0);
}

void tst_AMutELines::valueRangeIgnoresNaN()
{
    const AMutE spectrum = spectrumOf({{10, notANumber}, {notANumber, 50}, {20, 3}});
    double min = 1e300;
    double max = -1e300;
    spectrum.valueRange(0, 0.0, 100.0, &min, &max);
    QCOMPARE(min, 3.0);
    QCOMPARE(max, 3.0);
}

void tst_AMutELines::energyShiftLeavesTheStoredEnergiesUnchanged()
{
    AMutE spectrum = spectrumOf({{7700, 1}, {7800, 2}, {7900, 2.5}, {8600, 4}}, 5.0);
    spectrum.fitLines();
    spectrum.mutAt(7750.0);
    QCOMPARE(spectrum.points.at(0).energy, 7700.0);
    QCOMPARE(spectrum.points.at(3).energy, 8600.0);
}

void tst_AMutELines::backgroundIsSubtractedFromTheInterpolatedMut_data()
{
    QTest::addColumn<Pairs>("pairs");
    QTest::addColumn<double>("dE");
    QTest::addColumn<double>("E");
    QTest::addColumn<double>("expected"); // NaN if the call returns false

    const Pairs three{{10, 1}, {20, 2}, {40, 6}};
    QTest::newRow("inside") << three << 0.0 << 15.0 << 1.5;
    QTest::newRow("on a point") << three << 0.0 << 20.0 << 2.0;
    QTest::newRow("on the last point") << three << 0.0 << 40.0 << 6.0;
    QTest::newRow("above the last point") << three << 0.0 << 40.5 << notANumber;
    QTest::newRow("below the first point: interpolated from the origin")
        << three << 0.0 << 5.0 << 0.5;
    QTest::newRow("negative energy: line through the origin extended")
        << three << 0.0 << -10.0 << -1.0;
    QTest::newRow("one point") << Pairs{{10, 3}} << 0.0 << 5.0 << 1.5;
    QTest::newRow("no point") << Pairs{} << 0.0 << 5.0 << notANumber;
    QTest::newRow("NaN energy") << three << 0.0 << notANumber << notANumber;
    QTest::newRow("shifted") << three << 5.0 << 10.0 << 1.5;
    QTest::newRow("above the last point after the shift") << three << 5.0 << 36.0 << notANumber;
    QTest::newRow("falling scan: from the origin to the first point")
        << Pairs{{40, 8}, {20, 2}} << 0.0 << 10.0 << 2.0;
}

void tst_AMutELines::backgroundIsSubtractedFromTheInterpolatedMut()
{
    QFETCH(Pairs, pairs);
    QFETCH(double, dE);
    QFETCH(double, E);
    QFETCH(double, expected);
    AMutE spectrum = withConstantLines(spectrumOf(pairs, dE), 0.25, 0.75);
    for (const bool subPost : {false, true}) {
        double out = -77.0;
        QCOMPARE(spectrum.backgroundSubtractedAt(E, subPost, &out), !std::isnan(expected));
        const double background = subPost ? 0.75 : 0.25;
        QCOMPARE(out, std::isnan(expected) ? -77.0 : expected - background);
    }
}

void tst_AMutELines::backgroundIsTheChosenLineAtTheEnergy()
{
    AMutE spectrum = spectrumOf({{hc / 4 + 5.0, 100}, {hc + 5.0, 100}}, 5.0);
    spectrum.preLine = {0.0, 1.0, 0.0};  // 8 at L = 2
    spectrum.postLine = {0.0, 0.0, 2.0}; // 32 at L = 2
    double out = 0.0;
    QVERIFY(spectrum.backgroundSubtractedAt(hc / 2, false, &out));
    QCOMPARE(out, 92.0);
    QVERIFY(spectrum.backgroundSubtractedAt(hc / 2, true, &out));
    QCOMPARE(out, 68.0);
}

void tst_AMutELines::subtractionUsesTheFirstPointInFileOrderAtOrAboveTheEnergy()
{
    // In file order, 14 is the first energy at or above 12. The point before it is at 10, so
    // the result is 0 + (12 - 10) * 4 / 4 = 2.
    const AMutE spectrum = spectrumOf({{10, 0}, {14, 4}, {11, 100}, {13, 200}});
    double out = 0.0;
    AMutE flat = withConstantLines(spectrum, 0.0, 0.0);
    QVERIFY(flat.backgroundSubtractedAt(12.0, false, &out));
    QCOMPARE(out, 2.0);
    // The points are at 10, 4 and 14. The interpolation starts at the point before 14 in the
    // file, at 4, not at the nearest lower energy, 10.
    flat.points = {{0.0, 10.0, 0.0}, {0.0, 4.0, 1.0}, {0.0, 14.0, 11.0}};
    QVERIFY(flat.backgroundSubtractedAt(12.0, false, &out));
    QCOMPARE(out, 9.0); // 1 + (12 - 4) * 10 / 10
}

void tst_AMutELines::mutBelowTheFirstPointIsInterpolatedFromWorkingEnergyZero()
{
    // The first point has the working energy 8 and the mut 4, so the line from the origin is
    // 4 * 4 / 8 = 2 at energy 4. A line from raw energy 0 (working energy -2) would be
    // 4 * 6 / 10 = 2.4.
    const AMutE spectrum = withConstantLines(spectrumOf({{10, 4}}, 2.0), 0.0, 0.0);
    double out = 0.0;
    QVERIFY(spectrum.backgroundSubtractedAt(4.0, false, &out));
    QCOMPARE(out, 2.0);
}

QTEST_APPLESS_MAIN(tst_AMutELines)
#include "tst_AMutELines.moc"
