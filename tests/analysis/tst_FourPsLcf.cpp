#include "display/Histgram.h"
#include "support/PanelTools.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace tests;

namespace
{

constexpr double hc = AMutE::hcEvAngstrom;
constexpr double tolerance = 1e-9;

const QString fewSpectra =
    QStringLiteral("Number of Valid Reference files is %1, which is less than 2");

// Normalised references at 1 to 7 eV; independent of each other and of a
// constant, also from 2 to 6 eV for the first two.
const QList<double> energies{1, 2, 3, 4, 5, 6, 7};
const QList<QList<double>> shapes{{9, 1, 0, 0.5, 2, 0.25, 3},
                                  {-9, 0, 1, 0.5, 0.75, 2, 8},
                                  {0, 0, 2, 1, 0, 0.5, 1},
                                  {1, 1, 1, 0, 0, -1, 4}};
const QList<double> preLevels{0.5, 0.25, 0.75, 1};
const QList<double> jumps{2, 4, 1, 8};
const QStringList valences{"2", "4", "3", "5"};

// Rows whose energies bound the range of the fit.
constexpr int upperRow = 6;
constexpr int lowerRow = 7;

QList<double> scaled(QList<double> values, double factor)
{
    for (double& value : values) {
        value *= factor;
    }
    return values;
}

// A spectrum of these normalised values between two constant lines.
void setNormalised(AMutE& spectrum, const QList<double>& at, const QList<double>& values,
                   double pre, double jump)
{
    setSpectrum(spectrum, at, scaled(values, jump), {pre, 0, 0}, {pre + jump, 0, 0});
}

void setReference(FourPs& panel, int row, int shape)
{
    setNormalised(*panel.XafsFiles.at(row), energies, shapes.at(shape), preLevels.at(shape),
                  jumps.at(shape));
    panel.Refs.RefRows.at(row)->Valence->setText(valences.at(shape));
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

void setTarget(FourPs& panel, const QList<double>& parts, double base)
{
    setNormalised(*panel.ui.TargetFile, energies, mixed(parts, base), 1, 8);
}

// Marks exactly these rows as ends of the range.
void markRows(FourPs& panel, const QList<int>& rows)
{
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        panel.EPoints.at(i)->LCFCB->setChecked(rows.contains(i));
    }
}

void setRange(FourPs& panel, const QString& from, const QString& to)
{
    panel.EPoints.at(upperRow)->Energy->setText(to);
    panel.EPoints.at(lowerRow)->Energy->setText(from);
    markRows(panel, {upperRow, lowerRow});
}

// As many references as parts in use, the target of their sum over a base, and
// all seven points in range.
void prepareFit(FourPs& panel, const QList<double>& parts = {0.5, 0.75}, double base = 0.125)
{
    QList<int> used;
    for (int i = 0; i < parts.size(); ++i) {
        setReference(panel, i, i);
        used.append(i);
    }
    useReferences(panel, used);
    setTarget(panel, parts, base);
    setRange(panel, "1", "7");
    clearMessages(panel);
}

// The fit of the default: shares of 1.25, the valence 1/2 * 2 + 3/4 * 4 of it all.
const QString defaultText =
    QStringLiteral("Result of LCF ::  0.400 :  0.600, Valence =  4.000, Base =  0.125");

bool near(double value, double expected)
{
    return std::abs(value - expected) < tolerance;
}

QList<MutPoint> curve(const FourPs& panel)
{
    return panel.LCFMut ? panel.LCFMut->points : QList<MutPoint>();
}

QList<double> curveEnergies(const FourPs& panel)
{
    QList<double> result;
    for (const MutPoint& point : curve(panel)) {
        result.append(point.energy);
    }
    return result;
}

} // namespace

class tst_FourPsLcf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsFittedAtStart();
    void buttonFitsTheTarget();
    void lineKeepsItsBlanksAndTheMessageFoldsThem();
    void messageIsSentBeforeTheLineIsShown();
    void signTakesThePlaceOfTheLeadingBlank();
    void threeAndFourReferencesAreListed_data();
    void threeAndFourReferencesAreListed();
    void targetEqualToTheFirstReferenceIsAllOfIt();
    void firstUsedReferenceBehindAnUnusedOneComesFirst();
    void wordsForAValenceCountAsZero();
    void surplusPointsAreFittedByLeastSquares();

    void pointHoldsTargetResultShareValenceAndColour();
    void eachRunAddsOnePoint();
    void pointAfterARefusedTargetHoldsTheEarlierResult();

    void curveHasAPointForEachFittedPoint();
    void curveIsReplacedByTheNextRun();
    void curveKeepsTheOrderOfTheTarget();

    void rangeTakesMarkedRowsWhateverTheirUse();
    void rangeRunsFromTheLowestToTheHighestMarkedRow();
    void rangeHoldsBothEndsAndNothingBeyond();
    void twoRowsAtOneEnergyKeepThePointThere();
    void wordsForAnEnergyOpenTheRangeToZero();

    void shiftOfTheTargetCounts();
    void shiftOfAReferenceCounts();
    void referencesAreInterpolatedAndExtended();
    void spectraAreNormalisedByTwoLines();
    void descendingReferenceIsExtendedFromItsFirstPair();

    void refusalLeavesEverything();
    void rangeIsAskedForBeforeTheReferences();
    void rangeWithoutPointsShowsNan();
    void targetWithoutPointsShowsNan();
    void targetOfZeroesHasNoShares();
    void targetNeedNotBeValid();
    void invalidReferenceAmongTheFirstEntersAsZero();
    void invalidReferenceBehindTheFirstPlaysNoPart();

    void clearingEmptiesTheComparisonAndItsColour();
    void newColourWrapsAtTheNumberOfColours();
    void newColourFollowsAShorterList();

    void reflexRunsRangesMapTargetAndFitInOrder();
    void reflexFitsThoughMapAndTargetAreRefused();
};

void tst_FourPsLcf::nothingIsFittedAtStart()
{
    const FourPs panel;
    QVERIFY(!panel.LCFMut);
    QVERIFY(panel.LCFvs4PS.isEmpty());
    QCOMPARE(panel.LCFColor, 0);
    QVERIFY(panel.ui.LCFRes->text().isEmpty());
}

void tst_FourPsLcf::buttonFitsTheTarget()
{
    FourPs panel;
    prepareFit(panel);
    QTest::mouseClick(panel.ui.LCFB, Qt::LeftButton);
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
    QCOMPARE(panel.TargetV, 0.0);
}

void tst_FourPsLcf::lineKeepsItsBlanksAndTheMessageFoldsThem()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(messages(panel), QStringList{defaultText.simplified()});
}

void tst_FourPsLcf::messageIsSentBeforeTheLineIsShown()
{
    FourPs panel;
    prepareFit(panel);
    QStringList saidByThen;
    connect(panel.ui.LCFRes, &QLineEdit::textChanged, this, [&] { saidByThen = messages(panel); });
    panel.lcf();
    QCOMPARE(saidByThen, QStringList{defaultText.simplified()});
}

void tst_FourPsLcf::signTakesThePlaceOfTheLeadingBlank()
{
    FourPs panel;
    prepareFit(panel, {1.25, -0.25}, -0.375);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(),
             "Result of LCF ::  1.250 : -0.250, Valence =  1.500, Base = -0.375");
    setTarget(panel, {-0.25, 1.25}, 12.5);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(),
             "Result of LCF :: -0.250 :  1.250, Valence =  4.500, Base =  12.500");
}

void tst_FourPsLcf::threeAndFourReferencesAreListed_data()
{
    QTest::addColumn<QList<double>>("parts");
    QTest::addColumn<QString>("line");
    // Parts of 2 in all; valence 1 + 1 + 15/4.
    QTest::newRow("three")
        << QList<double>{0.5, 0.25, 1.25}
        << "Result of LCF ::  0.250 :  0.125 :  0.625, Valence =  5.750, Base =  0.500";
    // Parts of 1/2 in all; valence 1 + 1 - 3 + 15/4.
    QTest::newRow("four")
        << QList<double>{0.5, 0.25, -1, 0.75}
        << "Result of LCF ::  1.000 :  0.500 : -2.000 :  1.500, Valence =  2.750, Base =  0.500";
}

void tst_FourPsLcf::threeAndFourReferencesAreListed()
{
    QFETCH(QList<double>, parts);
    FourPs panel;
    prepareFit(panel, parts, 0.5);
    panel.lcf();
    QTEST(panel.ui.LCFRes->text(), "line");
}

void tst_FourPsLcf::targetEqualToTheFirstReferenceIsAllOfIt()
{
    FourPs panel;
    prepareFit(panel);
    *static_cast<AMutE*>(panel.ui.TargetFile) = *panel.XafsFiles.at(0);
    panel.lcf();
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfA, 1));
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfValence, 2));
    const QStringList parts = panel.ui.LCFRes->text().split(" = ");
    QVERIFY(near(parts.last().toDouble(), 0));
    QVERIFY(near(parts.first().section(" : ", 1).section(u',', 0, 0).toDouble(), 0));
    QCOMPARE(curveEnergies(panel), energies);
    for (int i = 0; i < energies.size(); ++i) {
        QVERIFY(near(panel.LCFMut->points.at(i).mut, shapes.at(0).at(i)));
    }
}

void tst_FourPsLcf::firstUsedReferenceBehindAnUnusedOneComesFirst()
{
    // Shapes 1 and 2 stand in rows 2 and 4; rows 1 and 3, valid too, are not used.
    FourPs panel;
    prepareFit(panel);
    setReference(panel, 0, 2);
    setReference(panel, 1, 0);
    setReference(panel, 2, 3);
    setReference(panel, 3, 1);
    useReferences(panel, {1, 3});
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfA, 0.4));
}

void tst_FourPsLcf::wordsForAValenceCountAsZero()
{
    FourPs panel;
    prepareFit(panel);
    panel.Refs.RefRows.at(1)->Valence->setText("four");
    panel.lcf();
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfValence, 1));
}

void tst_FourPsLcf::surplusPointsAreFittedByLeastSquares()
{
    // What the fit leaves over is orthogonal to the references and to a constant.
    FourPs panel;
    prepareFit(panel);
    const QList<double> values{1, -2, 0.5, 3, -1, 2, 0};
    setNormalised(*panel.ui.TargetFile, energies, values, 1, 8);
    panel.lcf();
    QCOMPARE(curveEnergies(panel), energies);
    QList<double> left = values;
    for (int i = 0; i < left.size(); ++i) {
        left[i] -= panel.LCFMut->points.at(i).mut;
    }
    const auto dot = [&left](const QList<double>& basis) {
        return std::inner_product(left.begin(), left.end(), basis.begin(), 0.0);
    };
    QVERIFY(dot(left) > 0.1);
    QVERIFY(near(dot(shapes.at(0)), 0));
    QVERIFY(near(dot(shapes.at(1)), 0));
    QVERIFY(near(std::accumulate(left.begin(), left.end(), 0.0), 0));
}

void tst_FourPsLcf::pointHoldsTargetResultShareValenceAndColour()
{
    FourPs panel;
    prepareFit(panel);
    panel.TargetV = 0.375;
    panel.TargetT = 2.75;
    panel.LCFColor = 7;
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    const LCFPoint& point = panel.LCFvs4PS.at(0);
    QCOMPARE(point.fourPsA, 0.375);
    QCOMPARE(point.fourPsValence, 2.75);
    QVERIFY(near(point.lcfA, 0.4));     // of the sum of the parts
    QVERIFY(near(point.lcfValence, 4)); // of the parts as they are
    QCOMPARE(point.color, 7);
    QCOMPARE(panel.LCFColor, 7);
}

void tst_FourPsLcf::eachRunAddsOnePoint()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 2);
    setTarget(panel, {1.5, 0.5}, 0);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 3);
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfA, 0.4));
    QVERIFY(near(panel.LCFvs4PS.at(1).lcfA, 0.4));
    QVERIFY(near(panel.LCFvs4PS.at(2).lcfA, 0.75));
}

void tst_FourPsLcf::pointAfterARefusedTargetHoldsTheEarlierResult()
{
    FourPs panel;
    prepareThreePoints(panel);
    prepareFit(panel);
    useRows(panel, {});
    panel.calcBoth();
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsA, 0.0);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsValence, 0.0);
    useRows(panel, {0, 1, 2});
    panel.calcTarget();
    const double v = panel.TargetV;
    const double t = panel.TargetT;
    QVERIFY(v != 0.0 && t != 0.0);
    panel.EPoints.at(2)->MutT->setText("3.5");
    useRows(panel, {2});
    panel.calcBoth();
    QCOMPARE(panel.LCFvs4PS.size(), 2);
    QCOMPARE(panel.LCFvs4PS.at(1).fourPsA, v);
    QCOMPARE(panel.LCFvs4PS.at(1).fourPsValence, t);
}

void tst_FourPsLcf::curveHasAPointForEachFittedPoint()
{
    FourPs panel;
    prepareFit(panel);
    setRange(panel, "2", "6");
    panel.lcf();
    const QList<double> expected = mixed({0.5, 0.75}, 0.125);
    QCOMPARE(curve(panel).size(), 5);
    const AMutE& fitted = *panel.LCFMut;
    for (int i = 0; i < fitted.points.size(); ++i) {
        QCOMPARE(fitted.points.at(i).angle, 11.0 + i);
        QCOMPARE(fitted.points.at(i).energy, 2.0 + i);
        QVERIFY(near(fitted.points.at(i).mut, expected.at(i + 1)));
    }
    QVERIFY(!fitted.valid);
    const AMutE fresh;
    QCOMPARE(fitted.dE, fresh.dE);
    QCOMPARE(fitted.preEdgeEnd, fresh.preEdgeEnd);
    QCOMPARE(fitted.postEdgeStart, fresh.postEdgeStart);
    QCOMPARE(fitted.edgeEnergy, fresh.edgeEnergy);
    QCOMPARE(fitted.maxEnergy, fresh.maxEnergy);
    QCOMPARE(fitted.preLine.c, 0.0);
    QCOMPARE(fitted.postLine.c, 0.0);
    QVERIFY(fitted.filePath.isEmpty());
}

void tst_FourPsLcf::curveIsReplacedByTheNextRun()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    panel.LCFMut->valid = true;
    panel.LCFMut->dE = 5;
    setTarget(panel, {1, 1}, 0);
    setRange(panel, "3", "4");
    panel.lcf();
    QCOMPARE(curveEnergies(panel), (QList<double>{3, 4}));
    QVERIFY(!panel.LCFMut->valid);
    QCOMPARE(panel.LCFMut->dE, 0.0);
}

void tst_FourPsLcf::curveKeepsTheOrderOfTheTarget()
{
    FourPs panel;
    prepareFit(panel);
    QList<MutPoint>& points = panel.ui.TargetFile->points;
    std::reverse(points.begin(), points.end());
    points.move(0, 3);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(curveEnergies(panel), (QList<double>{6, 5, 4, 7, 3, 2, 1}));
    QCOMPARE(panel.LCFMut->points.at(3).angle, 16.0);
    QVERIFY(near(panel.LCFMut->points.at(3).mut, mixed({0.5, 0.75}, 0.125).at(6)));
}

void tst_FourPsLcf::rangeTakesMarkedRowsWhateverTheirUse()
{
    FourPs panel;
    prepareFit(panel);
    panel.EPoints.at(0)->Energy->setText("2");
    panel.EPoints.at(7)->Energy->setText("6");
    markRows(panel, {0, 7});
    for (const QList<int>& used : {QList<int>{}, QList<int>{0}, QList<int>{0, 7}}) {
        useRows(panel, used);
        panel.lcf();
        QCOMPARE(curveEnergies(panel), (QList<double>{2, 3, 4, 5, 6}));
    }
}

void tst_FourPsLcf::rangeRunsFromTheLowestToTheHighestMarkedRow()
{
    FourPs panel;
    prepareFit(panel);
    const QStringList typed{"4", "5.5", "0.5", "2.5", "3"};
    for (int i = 0; i < typed.size(); ++i) {
        panel.EPoints.at(i)->Energy->setText(typed.at(i));
    }
    markRows(panel, {0, 1, 3, 4}); // 0.5 eV is not marked
    panel.lcf();
    QCOMPARE(curveEnergies(panel), (QList<double>{3, 4, 5}));
}

void tst_FourPsLcf::rangeHoldsBothEndsAndNothingBeyond()
{
    FourPs panel;
    prepareFit(panel);
    panel.ui.TargetFile->points.first().mut = 1000;
    panel.ui.TargetFile->points.last().mut = -1000;
    setRange(panel, "2", "6");
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(curveEnergies(panel), (QList<double>{2, 3, 4, 5, 6}));
}

void tst_FourPsLcf::twoRowsAtOneEnergyKeepThePointThere()
{
    FourPs panel;
    prepareFit(panel);
    setRange(panel, "5", "5");
    panel.lcf();
    QVERIFY(!messages(panel).contains(noFitRange));
    QCOMPARE(curveEnergies(panel), QList<double>{5});
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    setRange(panel, "5.5", "5.5");
    panel.lcf();
    QVERIFY(panel.LCFMut);
    QVERIFY(panel.LCFMut->points.isEmpty());
    QCOMPARE(panel.LCFvs4PS.size(), 2);
}

void tst_FourPsLcf::wordsForAnEnergyOpenTheRangeToZero()
{
    FourPs panel;
    prepareFit(panel);
    setRange(panel, "low", "4");
    panel.lcf();
    QCOMPARE(curveEnergies(panel), (QList<double>{1, 2, 3, 4}));
}

void tst_FourPsLcf::shiftOfTheTargetCounts()
{
    FourPs panel;
    prepareFit(panel);
    AMutE& target = *panel.ui.TargetFile;
    target.dE = -3;
    for (MutPoint& point : target.points) {
        point.energy -= 3;
    }
    setRange(panel, "2", "6");
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(curveEnergies(panel), (QList<double>{2, 3, 4, 5, 6}));
}

void tst_FourPsLcf::shiftOfAReferenceCounts()
{
    FourPs panel;
    prepareFit(panel);
    AMutE& second = *panel.XafsFiles.at(1);
    second.dE = 4;
    for (MutPoint& point : second.points) {
        point.energy += 4;
    }
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::referencesAreInterpolatedAndExtended()
{
    // Three points at 2.5, 4.5 and 6 eV: slope 2 up to 4.5 eV, -4 above it.
    FourPs panel;
    prepareFit(panel);
    setNormalised(*panel.XafsFiles.at(0), {2.5, 4.5, 6}, {1, 5, -1}, 0.5, 2);
    const QList<double> first{-2, 0, 2, 4, 3, -1, -5};
    QList<double> values;
    for (int i = 0; i < energies.size(); ++i) {
        values.append(0.5 * first.at(i) + 0.75 * shapes.at(1).at(i) + 0.125);
    }
    setNormalised(*panel.ui.TargetFile, energies, values, 1, 8);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::spectraAreNormalisedByTwoLines()
{
    // At wavelengths 4, 2, 1, 1/2 and 1/4 the lines are L^3, L^4 and 2 L^3 apart,
    // and the normalised values of the second reference, which has no point at
    // hc, are on a straight line from 1 to 4 there: a third of the way up is 2.
    FourPs panel;
    prepareFit(panel);
    const QList<double> at{hc / 4, hc / 2, hc, 2 * hc, 4 * hc};
    const QList<double> first{1, 0, 3, 2, 1};
    const QList<double> second{0, 1, 2, 4, 3};
    const auto cube = [](double energy) { return std::pow(hc / energy, 3); };
    QList<double> firstMuts;
    QList<double> secondMuts;
    QList<double> targetMuts;
    for (int i = 0; i < at.size(); ++i) {
        const double l3 = cube(at.at(i));
        const double l4 = l3 * (hc / at.at(i));
        firstMuts.append(first.at(i) * l4);
        secondMuts.append(second.at(i) * 2 * l3);
        targetMuts.append((0.5 * first.at(i) + 0.75 * second.at(i) + 0.125) * l3);
    }
    QList<double> secondAt = at;
    secondAt.removeAt(2);
    secondMuts.removeAt(2);
    setSpectrum(*panel.XafsFiles.at(0), at, firstMuts, {0.5, 0, 0}, {0.5, 0, 1});
    setSpectrum(*panel.XafsFiles.at(1), secondAt, secondMuts, {0, 0, 1}, {0, 2, 1});
    setSpectrum(*panel.ui.TargetFile, at, targetMuts, {1, 1, 0}, {1, 2, 0});
    setRange(panel, "3000", "50000");
    panel.lcf();
    QCOMPARE(curve(panel).size(), 5);
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::descendingReferenceIsExtendedFromItsFirstPair()
{
    // Below its first energy, 8 eV, a spectrum runs on the line of its first two
    // points, 8 eV and 3 eV: value 8 - E.
    FourPs panel;
    prepareFit(panel);
    setNormalised(*panel.XafsFiles.at(0), {8, 3, 2, 1}, {0, 5, 20, 7}, 0.5, 2);
    QList<double> values;
    for (int i = 0; i < energies.size(); ++i) {
        values.append(0.5 * (8 - energies.at(i)) + 0.75 * shapes.at(1).at(i) + 0.125);
    }
    setNormalised(*panel.ui.TargetFile, energies, values, 1, 8);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::refusalLeavesEverything()
{
    const struct {
        const char* what;
        void (*spoil)(FourPs&);
        QString said;
    } refusals[] = {
        {"no marked row", [](FourPs& panel) { markRows(panel, {}); }, noFitRange},
        {"one marked row", [](FourPs& panel) { markRows(panel, {lowerRow}); }, noFitRange},
        {"energies of nan", [](FourPs& panel) { setRange(panel, "nan", "nan"); }, noFitRange},
        {"no used reference", [](FourPs& panel) { useReferences(panel, {}); }, fewSpectra.arg(0)},
        {"one used reference", [](FourPs& panel) { useReferences(panel, {1}); }, fewSpectra.arg(1)},
        {"one valid reference", [](FourPs& panel) { panel.XafsFiles.at(0)->valid = false; },
         fewSpectra.arg(1)},
        {"three used, one valid",
         [](FourPs& panel) {
             useReferences(panel, {0, 1, 2});
             panel.XafsFiles.at(1)->valid = false;
         },
         fewSpectra.arg(1)},
    };
    for (const auto& refusal : refusals) {
        FourPs panel;
        prepareFit(panel);
        panel.LCFColor = 3;
        panel.lcf();
        clearMessages(panel);
        const AMutE* before = panel.LCFMut;
        setTarget(panel, {1, 1}, 0);
        refusal.spoil(panel);
        panel.lcf();
        QVERIFY2(messages(panel) == QStringList{refusal.said}, refusal.what);
        QVERIFY2(panel.ui.LCFRes->text() == defaultText, refusal.what);
        QVERIFY2(panel.LCFvs4PS.size() == 1, refusal.what);
        QVERIFY2(panel.LCFColor == 3, refusal.what);
        QVERIFY2(panel.LCFMut == before && curve(panel).size() == 7, refusal.what);
    }
}

void tst_FourPsLcf::rangeIsAskedForBeforeTheReferences()
{
    FourPs panel;
    prepareFit(panel);
    markRows(panel, {});
    useReferences(panel, {});
    panel.lcf();
    QCOMPARE(messages(panel), QStringList{noFitRange});
}

void tst_FourPsLcf::rangeWithoutPointsShowsNan()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    setRange(panel, "100", "200");
    panel.lcf();
    QVERIFY(panel.ui.LCFRes->text().startsWith("Result of LCF :: "));
    QCOMPARE(panel.ui.LCFRes->text().count("nan"), 4);
    QVERIFY(panel.LCFMut);
    QVERIFY(panel.LCFMut->points.isEmpty());
    QCOMPARE(panel.LCFvs4PS.size(), 2);
    QVERIFY(std::isnan(panel.LCFvs4PS.at(1).lcfA));
    QVERIFY(std::isnan(panel.LCFvs4PS.at(1).lcfValence));
}

void tst_FourPsLcf::targetWithoutPointsShowsNan()
{
    FourPs panel;
    prepareFit(panel);
    panel.ui.TargetFile->points.clear();
    panel.ui.TargetFile->valid = false;
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text().count("nan"), 4);
    QVERIFY(panel.LCFMut);
    QVERIFY(panel.LCFMut->points.isEmpty());
    QCOMPARE(panel.LCFvs4PS.size(), 1);
}

void tst_FourPsLcf::targetOfZeroesHasNoShares()
{
    FourPs panel;
    prepareFit(panel, {0, 0}, 0);
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text().count("nan"), 2);
    QVERIFY(std::isnan(panel.LCFvs4PS.at(0).lcfA));
    QCOMPARE(panel.LCFvs4PS.at(0).lcfValence, 0.0);
}

void tst_FourPsLcf::targetNeedNotBeValid()
{
    FourPs panel;
    prepareFit(panel);
    panel.ui.TargetFile->valid = false;
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::invalidReferenceAmongTheFirstEntersAsZero()
{
    // Three of four are valid, so the first three are taken: the third, without
    // points, is 0 everywhere and spoils every share. The base does not lean on
    // it.
    FourPs panel;
    prepareFit(panel);
    setReference(panel, 3, 3);
    useReferences(panel, {0, 1, 2, 3});
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text().count(" : "), 2);
    QCOMPARE(panel.ui.LCFRes->text().count("nan"), 4);
    QVERIFY(panel.ui.LCFRes->text().endsWith(", Base =  0.125"));
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(curve(panel).size(), 7);
}

void tst_FourPsLcf::invalidReferenceBehindTheFirstPlaysNoPart()
{
    FourPs panel;
    prepareFit(panel);
    useReferences(panel, {0, 1, 3});
    panel.lcf();
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
}

void tst_FourPsLcf::clearingEmptiesTheComparisonAndItsColour()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    panel.newColorLCFvs4PS(nullptr);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.at(0).color, 0);
    QCOMPARE(panel.LCFvs4PS.at(1).color, 1);
    panel.clearLCFvs4PS(nullptr);
    QVERIFY(panel.LCFvs4PS.isEmpty());
    QCOMPARE(panel.LCFColor, 0);
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(curve(panel).size(), 7);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFvs4PS.at(0).color, 0);
}

void tst_FourPsLcf::newColourWrapsAtTheNumberOfColours()
{
    FourPs panel;
    QCOMPARE(panel.Colors.colors.size(), 45);
    for (int color = 1; color < 45; ++color) {
        panel.newColorLCFvs4PS(nullptr);
        QCOMPARE(panel.LCFColor, color);
    }
    panel.newColorLCFvs4PS(nullptr);
    QCOMPARE(panel.LCFColor, 0);
}

void tst_FourPsLcf::newColourFollowsAShorterList()
{
    FourPs panel;
    prepareFit(panel);
    panel.lcf();
    panel.Colors.colors.resize(3);
    panel.LCFColor = 2;
    panel.newColorLCFvs4PS(nullptr);
    QCOMPARE(panel.LCFColor, 0);
    QCOMPARE(panel.LCFvs4PS.size(), 1);
}

void tst_FourPsLcf::reflexRunsRangesMapTargetAndFitInOrder()
{
    // Auto limits of the valences 2 and 4: 1.5 to 4.5, 51 boxes of 0.06.
    FourPs panel;
    prepareThreePointMaps(panel);
    prepareFit(panel);
    panel.ui.HgAFrom->setText("70");
    panel.calcBoth();
    QVERIFY(near(panel.HistV->minV, 1.47));
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QVERIFY(panel.TargetV != 0.0);
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsA, panel.TargetV);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsValence, panel.TargetT);
    panel.EPoints.at(0)->loaded = false;
    clearMessages(panel);
    panel.calcBoth();
    QCOMPARE(messages(panel), (QStringList{wrongCount.arg(2).arg(4), panel.ui.CalcRes->text(),
                                           defaultText.simplified()}));
}

void tst_FourPsLcf::reflexFitsThoughMapAndTargetAreRefused()
{
    FourPs panel;
    prepareThreePoints(panel);
    prepareFit(panel);
    useRows(panel, {});
    panel.calcBoth();
    QCOMPARE(messages(panel), (QStringList{"V Point is not selected", "V Point is not selected.",
                                           defaultText.simplified()}));
    QCOMPARE(panel.LCFvs4PS.size(), 1);
}

QTEST_MAIN(tst_FourPsLcf)
#include "tst_FourPsLcf.moc"
