#include "display/Histgram.h"
#include "support/PanelTools.h"
#include "support/TestFiles.h"

#include <QTest>

#include <cmath>
#include <numeric>

using namespace tests;

namespace
{

constexpr double hc = AMutE::hcEvAngstrom;
constexpr double tolerance = 1e-9;

// The eight rows stand at wavelengths (angstrom) of powers of two, so that E,
// L^3 and L^4 are exact.
const QList<double> wavelengths{4, 2, 1, 0.5, 0.25, 0.125, 0.0625, 0.03125};

// What the references are above their pre-edge line at the eight rows:
// independent of each other and of both backgrounds, also on the first rows.
const QList<QList<double>> shapes{{1, 0, 3, 2, 1, 0, 2, 1},
                                  {0, 1, 1, 3, 5, 1, 0, 2},
                                  {2, 0, 1, 0, 1, 3, 1, 0},
                                  {0, 2, 0, 1, 0, 1, 4, 1}};
const QList<double> jumps{2, 6, 4, 8};
const QList<double> preLevels{0.25, 0.5, 0.75, 1};
const QStringList valences{"2", "5", "4", "7"};

double energyAt(int row)
{
    return hc / wavelengths.at(row);
}

QList<double> rowEnergies()
{
    QList<double> energies;
    for (int row = 0; row < wavelengths.size(); ++row) {
        energies.append(energyAt(row));
    }
    return energies;
}

// A sum of references over a background; the linear term is in units of E / hc.
struct Mix {
    QList<double> parts;
    double constant = 0.0;
    double linear = 0.0;
    double cubic = 0.0;
    double quartic = 0.0;

    double at(int row) const
    {
        const double length = wavelengths.at(row);
        double value = constant + linear / length + cubic * std::pow(length, 3) +
                       quartic * std::pow(length, 4);
        for (int i = 0; i < parts.size(); ++i) {
            value += parts.at(i) * shapes.at(i).at(row);
        }
        return value;
    }

    QList<double> atAllRows() const
    {
        QList<double> values;
        for (int row = 0; row < wavelengths.size(); ++row) {
            values.append(at(row));
        }
        return values;
    }
};

// dMut 1 and 3: shares 1/4 and 3/4, total 4, valence 2/4 + 15/4 = 4.25.
const Mix quarter{{0.5, 0.5}, 1.25, 0.5};
// dMut -1 and 6: shares -0.2 and 1.2, total 5, valence -0.4 + 6 = 5.6.
const Mix negative{{-0.5, 1}, -2, -1};

// Three points at E / hc of 1/2, 3/2 and 2, and what they give at 1/4 to 4: the
// end segments are extended, of slope -3 and 8.
const QList<double> coarseEnergies{0.5 * hc, 1.5 * hc, 2 * hc};
const QList<double> coarseMuts{3, 0, 4};
const QList<double> atTheRows{3.75, 3, 1.5, 4, 20, 52, 116, 244};

const QString quarterText =
    QStringLiteral("Result of NEQ ::  0.250 :  0.750, Valence =  4.250, t =  4.000");

// Reference row @p row gets shape @p shape with its jump and its valence.
void setReference(FourPs& panel, int row, int shape)
{
    const auto i = static_cast<qsizetype>(shape);
    const double pre = preLevels.at(i);
    setSpectrum(*panel.XafsFiles.at(row), rowEnergies(), shapes.at(i), {pre, 0, 0},
                {pre + jumps.at(i), 0, 0});
    panel.Refs.RefRows.at(row)->Valence->setText(valences.at(i));
}

QList<int> firstRows(int count)
{
    QList<int> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

// The non-equivalent method with linear background on the first rows and
// references; the third energy row is the V row.
void prepare(FourPs& panel, int references = 2, int rows = 5)
{
    chooseQuietly(panel.ui.TypeNonEquiv);
    for (int i = 0; i < references; ++i) {
        setReference(panel, i, i);
    }
    useReferences(panel, firstRows(references));
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        panel.EPoints.at(row)->Energy->setText(QString::number(energyAt(row), 'g', 17));
    }
    useRows(panel, firstRows(rows));
    clearMessages(panel);
}

void setTarget(FourPs& panel, const Mix& mix)
{
    setSpectrum(*panel.ui.TargetFile, rowEnergies(), mix.atAllRows(), {0.125, 0, 0}, {3.125, 0, 0});
}

void prepareTarget(FourPs& panel, const Mix& mix, int references = 2, int rows = 5)
{
    prepare(panel, references, rows);
    setTarget(panel, mix);
}

// One line of pixels, one for each mix, in the first energy rows.
void setPixels(FourPs& panel, const QList<Mix>& mixes, int rows = 5)
{
    for (int row = 0; row < rows; ++row) {
        QList<double> muts;
        for (const Mix& mix : mixes) {
            muts.append(mix.at(row));
        }
        setMap(panel, row, muts);
    }
}

void prepareMap(FourPs& panel, const QList<Mix>& mixes, int references = 2, int rows = 5)
{
    prepare(panel, references, rows);
    setPixels(panel, mixes, rows);
}

bool near(double value, double expected)
{
    return std::abs(value - expected) < tolerance;
}

bool near(const QList<double>& values, const QList<double>& expected)
{
    return std::equal(values.begin(), values.end(), expected.begin(), expected.end(),
                      [](double a, double b) { return near(a, b); });
}

// The values of a pixel with its C1 in units of 1 / hc.
QList<double> scaledValues(const FourPs& panel, int pixel)
{
    QList<double> values = panel.BaseData.rows.at(pixel).values;
    values[9] *= hc;
    return values;
}

const QList<double> quarterValues{0.25, 0.75, 0, 0, 1, 3, 0, 0, 1.25, 0.5, 0, 4.25, 4};
const QList<double> negativeValues{-0.2, 1.2, 0, 0, -1, 6, 0, 0, -2, -1, 0, 5.6, 5};

// All that a target calculation writes, the message box aside.
QStringList targetFields(const FourPs& panel)
{
    QStringList fields{panel.ui.CalcRes->text(), panel.ui.TargetDMut->text(),
                       QString::number(panel.TargetV, 'g', 17),
                       QString::number(panel.TargetT, 'g', 17)};
    for (const ARefFile* row : panel.Refs.RefRows) {
        fields << row->RatioDisp->text() << row->AmountDisp->text();
    }
    return fields;
}

QList<Histgram*> allHistograms(const FourPs& panel)
{
    return QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut;
}

// All that a map calculation writes, the message box aside.
QStringList mapFields(const FourPs& panel)
{
    QStringList fields{QString::number(panel.BaseData.xNum), QString::number(panel.BaseData.yNum),
                       panel.BaseData.headerLines.join(u'|'),
                       panel.BaseData.extended ? "extended" : "simple"};
    for (const A2DRow& row : panel.BaseData.rows) {
        fields
            << QStringLiteral("%1 %2 %3 %4").arg(row.x).arg(row.y).arg(row.intensity).arg(row.i0);
        for (const double value : row.values) {
            fields << QString::number(value, 'g', 17);
        }
    }
    for (const Histgram* histogram : allHistograms(panel)) {
        fields << QString::fromUtf8(histogram->fileText());
    }
    return fields;
}

// Both backgrounds of the choice switched by hand, whatever the other says.
void setBackgroundRadios(FourPs& panel, bool linear, bool victoreen)
{
    for (QRadioButton* radio : {panel.ui.NonEquivBGLinear, panel.ui.NonEquivBGVic}) {
        const QSignalBlocker quiet(radio);
        radio->setAutoExclusive(false);
        radio->setChecked(radio == panel.ui.NonEquivBGLinear ? linear : victoreen);
    }
}

// Centres 0 to 6 for valences and shares, -4 to 6 for amounts.
void setHistogramLimits(FourPs& panel)
{
    panel.ui.HgAFrom->setText("0");
    panel.ui.HgATo->setText("6");
    panel.ui.HgABoxes->setText("7");
    panel.ui.HgTFrom->setText("-4");
    panel.ui.HgTTo->setText("6");
    panel.ui.HgTBoxes->setText("11");
}

// The centres of the bins that hold something, each as often as it was hit.
QList<int> hits(const Histgram* histogram)
{
    QList<int> centres;
    for (int i = 0; i < histogram->bins.size(); ++i) {
        const double centre = histogram->minV + (i + 0.5) * histogram->step;
        centres += QList<int>(histogram->bins.at(i), qRound(centre));
    }
    return centres;
}

bool isEmpty(const Histgram* histogram)
{
    return hits(histogram).isEmpty() && histogram->under == 0 && histogram->over == 0 &&
           histogram->total == 0;
}

} // namespace

class tst_FourPsNonEquivalent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void targetIsTakenApart();
    void lineKeepsItsBlanksAndTheMessageFoldsThem();
    void messageIsSentBeforeTheLineIsShown();
    void resultFieldsShowSixDigitsFromTheirStart();
    void negativeShareIsNotClamped();
    void resultsGoToTheUsedReferencesBehindAnUnusedOne();
    void threeAndFourReferencesAddUpToOne_data();
    void threeAndFourReferencesAddUpToOne();
    void targetEqualToTheFirstReferenceIsAllOfIt();
    void targetTakesTheVictoreenBackground();
    void onlyTheLinearRadioIsAsked_data();
    void onlyTheLinearRadioIsAsked();
    void mutFieldsOfTheRowsAreNotUsed();
    void targetIsTakenLessItsPostEdgeLineOnRequest();
    void referencesAreTakenLessTheirPostEdgeLineOnRequest();
    void referencesAreInterpolatedAndExtended();
    void targetIsInterpolatedAndExtended();
    void energyShiftsOfTheSpectraCount();
    void vRowIsFittedLikeTheOthers();
    void wordsForAValenceCountAsZero();
    void wordsForAnEnergyShowAsNan();
    void targetOfZeroesShowsNan();
    void jumpsThatCancelShowNan();
    void targetBoundDoesNotFollowTheReferences_data();
    void targetBoundDoesNotFollowTheReferences();
    void invalidReferenceAmongTheFirstIsRefused();
    void invalidReferenceBehindTheFirstPlaysNoPart();
    void refusedTargetLeavesEverything();
    void targetLeavesMapAndHistograms();

    void mapHoldsThirteenValuesOfEveryPixel();
    void mapTakesTheVictoreenBackground();
    void linearBackgroundKeepsC2AtZero();
    void fourReferencesFillEveryEntry();
    void fiveRowsAndVictoreenPassThroughAllPoints();
    void surplusRowsAreFittedByLeastSquares();
    void mapTakesReferencesLessTheirPostEdgeLine();
    void countsBecomeMutBeforeTheFit();
    void baseRowIsTheFirstUsedRowAndNotTheVRow();
    void mapOfNoLinesYieldsNoRows();
    void mapAsksForNoVRow();
    void mapDoesNotAskForTheTarget();
    void rowWithoutMapAsBaseRowGivesNoPixels();
    void rowWithoutMapEntersWithMinusOne();
    void rowWhoseReloadFailedEntersWithItsOldPixels();
    void mapOfAnotherSizeIsReadWithItsOwnWidth();
    void pixelOutsideEveryMapGivesAFullRow();
    void secondRunRebuildsTheResult();
    void histogramsCountValenceTotalSharesAndAmounts();
    void allHistogramsStartAfresh();
    void pixelOfZeroesIsKeptAndCountedBelow();
    void fourPointsRunEmptiesTheHistogramsOfTheReferences();
    void mapBoundFollowsTheReferences_data();
    void mapBoundFollowsTheReferences();
    void mapRunsAtItsBound_data();
    void mapRunsAtItsBound();
    void rowWithoutMapDoesNotCountForTheMap();
    void fewerThanTwoUsedReferencesGiveNoMap();
    void refusedMapLeavesEverything();

    void writeButtonWritesTheExtendedLayout();
    void histogramsOfValenceAndTotalAreWritten();
    void refusedRunWritesTheEarlierMap();
};

void tst_FourPsNonEquivalent::targetIsTakenApart()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    QTest::mouseClick(panel.ui.CalcTargetB, Qt::LeftButton);
    QVERIFY(near(panel.TargetV, 0.25));
    QVERIFY(near(panel.TargetT, 4.25));
    QCOMPARE(panel.ui.TargetDMut->text(), "4");
    QCOMPARE(panel.Refs.RefRows.at(0)->RatioDisp->text(), "0.25");
    QCOMPARE(panel.Refs.RefRows.at(1)->RatioDisp->text(), "0.75");
    QCOMPARE(panel.Refs.RefRows.at(0)->AmountDisp->text(), "1");
    QCOMPARE(panel.Refs.RefRows.at(1)->AmountDisp->text(), "3");
}

void tst_FourPsNonEquivalent::lineKeepsItsBlanksAndTheMessageFoldsThem()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    QCOMPARE(messages(panel), QStringList{quarterText.simplified()});
}

void tst_FourPsNonEquivalent::messageIsSentBeforeTheLineIsShown()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    QStringList saidByThen;
    connect(panel.ui.CalcRes, &QLineEdit::textChanged, this, [&] { saidByThen = messages(panel); });
    panel.calcTarget();
    QCOMPARE(saidByThen, QStringList{quarterText.simplified()});
}

void tst_FourPsNonEquivalent::resultFieldsShowSixDigitsFromTheirStart()
{
    // dMut 1 and 1/3 * 6 = 2, then 1/3 and 2.
    FourPs panel;
    prepareTarget(panel, {{0.5, 1.0 / 3.0}});
    panel.calcTarget();
    const ARefFile* first = panel.Refs.RefRows.at(0);
    const ARefFile* second = panel.Refs.RefRows.at(1);
    QCOMPARE(first->RatioDisp->text(), "0.333333");
    QCOMPARE(second->RatioDisp->text(), "0.666667");
    setTarget(panel, {{1.0 / 6.0, 1.0 / 3.0}});
    panel.calcTarget();
    QCOMPARE(first->AmountDisp->text(), "0.333333");
    QCOMPARE(panel.ui.TargetDMut->text(), "2.33333");
    for (const QLineEdit* field : {first->RatioDisp, second->RatioDisp, first->AmountDisp,
                                   second->AmountDisp, panel.ui.TargetDMut}) {
        QCOMPARE(field->cursorPosition(), 0);
    }
}

void tst_FourPsNonEquivalent::negativeShareIsNotClamped()
{
    FourPs panel;
    prepareTarget(panel, negative);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(),
             "Result of NEQ :: -0.200 :  1.200, Valence =  5.600, t =  5.000");
    QVERIFY(near(panel.TargetV, -0.2));
    QCOMPARE(panel.Refs.RefRows.at(0)->AmountDisp->text(), "-1");
}

void tst_FourPsNonEquivalent::resultsGoToTheUsedReferencesBehindAnUnusedOne()
{
    // Shapes 1 and 2 stand in rows 2 and 3; row 1, valid too, is not in use.
    FourPs panel;
    prepareTarget(panel, quarter);
    setReference(panel, 0, 2);
    setReference(panel, 1, 0);
    setReference(panel, 2, 1);
    useReferences(panel, {1, 2});
    for (const int unused : {0, 3}) {
        panel.Refs.RefRows.at(unused)->RatioDisp->setText("old");
        panel.Refs.RefRows.at(unused)->AmountDisp->setText("old");
    }
    panel.calcTarget();
    QStringList ratios;
    QStringList amounts;
    for (const ARefFile* row : panel.Refs.RefRows) {
        ratios << row->RatioDisp->text();
        amounts << row->AmountDisp->text();
    }
    QCOMPARE(ratios, (QStringList{"old", "0.25", "0.75", "old"}));
    QCOMPARE(amounts, (QStringList{"old", "1", "3", "old"}));
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
}

void tst_FourPsNonEquivalent::threeAndFourReferencesAddUpToOne_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<int>("references");
    QTest::addColumn<QString>("line");
    // dMut 1, 3, 4 of 8: valence 0.25 + 1.875 + 2.
    const QString three =
        QStringLiteral("Result of NEQ ::  0.125 :  0.375 :  0.500, Valence =  4.125, t =  8.000");
    // dMut 1, 3, 4, 32 of 40: valence 0.05 + 0.375 + 0.4 + 5.6.
    const QString four = QStringLiteral(
        "Result of NEQ ::  0.025 :  0.075 :  0.100 :  0.800, Valence =  6.425, t =  40.000");
    QTest::newRow("three, linear") << true << 3 << three;
    QTest::newRow("four, linear") << true << 4 << four;
    QTest::newRow("three, Victoreen") << false << 3 << three;
    QTest::newRow("four, Victoreen") << false << 4 << four;
}

void tst_FourPsNonEquivalent::threeAndFourReferencesAddUpToOne()
{
    QFETCH(bool, linear);
    QFETCH(int, references);
    FourPs panel;
    Mix mix = linear ? Mix{{0.5, 0.5, 1, 4}, 1.25, 0.5} : Mix{{0.5, 0.5, 1, 4}, 1.25, 0, 2, -0.5};
    mix.parts = mix.parts.first(references);
    chooseQuietly(linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic);
    prepareTarget(panel, mix, references, 8);
    panel.calcTarget();
    QTEST(panel.ui.CalcRes->text(), "line");
}

void tst_FourPsNonEquivalent::targetEqualToTheFirstReferenceIsAllOfIt()
{
    FourPs panel;
    prepareTarget(panel, {{1, 0}});
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 1));
    QVERIFY(near(panel.TargetT, 2));
    QCOMPARE(panel.ui.TargetDMut->text(), "2"); // its edge jump
    QCOMPARE(panel.Refs.RefRows.at(0)->AmountDisp->text(), "2");
    QVERIFY(near(panel.Refs.RefRows.at(1)->RatioDisp->text().toDouble(), 0));
    QVERIFY(near(panel.Refs.RefRows.at(1)->AmountDisp->text().toDouble(), 0));
}

void tst_FourPsNonEquivalent::targetTakesTheVictoreenBackground()
{
    FourPs panel;
    chooseQuietly(panel.ui.NonEquivBGVic);
    prepareTarget(panel, {{0.5, 0.5}, 1.25, 0, 2, -0.5});
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
}

void tst_FourPsNonEquivalent::onlyTheLinearRadioIsAsked_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<bool>("victoreen");
    QTest::newRow("linear") << true << false;
    QTest::newRow("both") << true << true;
    QTest::newRow("Victoreen") << false << true;
    QTest::newRow("neither") << false << false;
}

void tst_FourPsNonEquivalent::onlyTheLinearRadioIsAsked()
{
    QFETCH(bool, linear);
    QFETCH(bool, victoreen);
    FourPs panel;
    prepareTarget(panel, quarter, 2, 8);
    setPixels(panel, {quarter}, 8);
    setBackgroundRadios(panel, linear, victoreen);
    panel.calcTarget();
    panel.calcMap();
    // Two terms in L do not follow a straight line through eight points.
    QCOMPARE(panel.ui.CalcRes->text() == quarterText, linear);
    QCOMPARE(near(panel.BaseData.rows.at(0).intensity, 0.25), linear);
    const Mix curved{{0.5, 0.5}, 1.25, 0, 2, -0.5};
    setTarget(panel, curved);
    setPixels(panel, {curved}, 8);
    panel.calcTarget();
    panel.calcMap();
    QCOMPARE(panel.ui.CalcRes->text() == quarterText, !linear);
    QCOMPARE(near(panel.BaseData.rows.at(0).intensity, 0.25), !linear);
}

void tst_FourPsNonEquivalent::mutFieldsOfTheRowsAreNotUsed()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    setPixels(panel, {quarter});
    for (const AEPoint* point : std::as_const(panel.EPoints)) {
        for (QLineEdit* field : {point->Mut1, point->Mut2, point->MutT}) {
            field->setText("99");
        }
    }
    panel.calcTarget();
    panel.calcMap();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.25));
}

void tst_FourPsNonEquivalent::targetIsTakenLessItsPostEdgeLineOnRequest()
{
    // The second reference is L^3, and so is the distance of the target's lines:
    // less the post-edge line there is one of it less, dMut 1 and -3 of -2.
    FourPs panel;
    prepare(panel);
    QList<double> cubes;
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        cubes.append(std::pow(wavelengths.at(row), 3));
        muts.append(0.5 * shapes.at(0).at(row) + 0.5 * cubes.last() + 1.25);
    }
    setSpectrum(*panel.XafsFiles.at(1), rowEnergies(), cubes, {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(*panel.ui.TargetFile, rowEnergies(), muts, {}, {3, 1, 0});
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 0.25));
    chooseQuietly(panel.ui.SubPostEforRef); // constant lines: nothing but Mut0 changes
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 0.25));
    chooseQuietly(panel.ui.SubPreEforRef);
    chooseQuietly(panel.ui.SubPostEforTarget);
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, -0.5));
    QCOMPARE(panel.ui.TargetDMut->text(), "-2");
}

void tst_FourPsNonEquivalent::referencesAreTakenLessTheirPostEdgeLineOnRequest()
{
    // The lines of the first reference are 1 + L^3 apart, its edge stands at
    // L = 1: jump 2. The second reference is L^3, jump 6. Less the post-edge
    // lines r1 is short of an L^3, which the second makes up for: parts of 1/2
    // and 1/2 become 1/2 and 1, dMut 1 and 6.
    FourPs panel;
    prepare(panel);
    QList<double> cubes;
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        cubes.append(std::pow(wavelengths.at(row), 3));
        muts.append(0.5 * shapes.at(0).at(row) + 0.5 * cubes.last() + 1.25);
    }
    AMutE& first = *panel.XafsFiles.at(0);
    setSpectrum(first, rowEnergies(), shapes.at(0), {}, {1, 1, 0});
    first.edgeEnergy = hc;
    setSpectrum(*panel.XafsFiles.at(1), rowEnergies(), cubes, {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(*panel.ui.TargetFile, rowEnergies(), muts, {0.5, 0, 0}, {0.75, 0, 0});
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 0.25));
    QCOMPARE(panel.ui.TargetDMut->text(), "4");
    chooseQuietly(panel.ui.SubPostEforTarget); // constant lines: nothing changes
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 0.25));
    chooseQuietly(panel.ui.SubPreEforTarget);
    chooseQuietly(panel.ui.SubPostEforRef);
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 1.0 / 7.0));
    QCOMPARE(panel.ui.TargetDMut->text(), "7");
}

void tst_FourPsNonEquivalent::referencesAreInterpolatedAndExtended()
{
    FourPs panel;
    prepare(panel);
    setSpectrum(*panel.XafsFiles.at(0), coarseEnergies, coarseMuts, {0.25, 0, 0}, {2.25, 0, 0});
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        muts.append(0.5 * atTheRows.at(row) + 0.5 * shapes.at(1).at(row));
    }
    setSpectrum(*panel.ui.TargetFile, rowEnergies(), muts, {}, {});
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
}

void tst_FourPsNonEquivalent::targetIsInterpolatedAndExtended()
{
    FourPs panel;
    prepare(panel);
    setSpectrum(*panel.XafsFiles.at(0), rowEnergies(), atTheRows, {}, {2, 0, 0});
    setSpectrum(*panel.ui.TargetFile, coarseEnergies, coarseMuts, {}, {});
    panel.calcTarget();
    QVERIFY(near(panel.TargetV, 1));
    QCOMPARE(panel.ui.TargetDMut->text(), "2");
}

void tst_FourPsNonEquivalent::energyShiftsOfTheSpectraCount()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    AMutE& first = *panel.XafsFiles.at(0);
    AMutE& target = *panel.ui.TargetFile;
    first.dE = 700;
    target.dE = -300;
    for (AMutE* spectrum : {&first, &target}) {
        for (MutPoint& point : spectrum->points) {
            point.energy += spectrum->dE;
        }
    }
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
}

void tst_FourPsNonEquivalent::vRowIsFittedLikeTheOthers()
{
    // Four rows for four unknowns: the fit passes through the V row's point,
    // whichever row that is.
    FourPs panel;
    prepareTarget(panel, quarter, 2, 4);
    for (const int vRow : {0, 3}) {
        for (int row = 0; row < panel.EPoints.size(); ++row) {
            panel.EPoints.at(row)->VPointCB->setChecked(row == vRow);
        }
        panel.ui.CalcRes->clear();
        panel.calcTarget();
        QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    }
    panel.ui.TargetFile->points[3].mut += 1; // at the V row of the last round
    panel.calcTarget();
    QVERIFY(!near(panel.TargetV, 0.25));
}

void tst_FourPsNonEquivalent::wordsForAValenceCountAsZero()
{
    FourPs panel;
    prepareTarget(panel, quarter);
    panel.Refs.RefRows.at(1)->Valence->setText("five");
    panel.calcTarget();
    QVERIFY(near(panel.TargetT, 0.5));
}

void tst_FourPsNonEquivalent::wordsForAnEnergyShowAsNan()
{
    // At energy 0 the wavelength is infinite.
    FourPs panel;
    chooseQuietly(panel.ui.NonEquivBGVic);
    prepareTarget(panel, quarter);
    panel.EPoints.at(0)->Energy->setText("low");
    panel.calcTarget();
    QVERIFY(std::isnan(panel.TargetV));
    QVERIFY(panel.ui.CalcRes->text().startsWith("Result of NEQ :: "));
    QCOMPARE(panel.ui.CalcRes->text().count("nan"), 4);
    QCOMPARE(panel.ui.TargetDMut->text(), "nan");
}

void tst_FourPsNonEquivalent::targetOfZeroesShowsNan()
{
    FourPs panel;
    prepare(panel);
    setSpectrum(*panel.ui.TargetFile, rowEnergies(), QList<double>(8, 0.0), {}, {});
    panel.calcTarget();
    QVERIFY(std::isnan(panel.TargetV));
    QVERIFY(std::isnan(panel.TargetT));
    QCOMPARE(panel.ui.CalcRes->text().count("nan"), 3);
    QCOMPARE(panel.ui.TargetDMut->text().toDouble(), 0.0);
    QCOMPARE(panel.Refs.RefRows.at(1)->RatioDisp->text(), "nan");
}

void tst_FourPsNonEquivalent::jumpsThatCancelShowNan()
{
    // Weights of plus and minus infinity.
    FourPs panel;
    prepareTarget(panel, quarter);
    panel.XafsFiles.at(1)->postLine = {0.5 - 2, 0, 0};
    panel.calcTarget();
    QVERIFY(std::isnan(panel.TargetV));
    QCOMPARE(panel.ui.TargetDMut->text(), "nan");
}

void tst_FourPsNonEquivalent::targetBoundDoesNotFollowTheReferences_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<int>("references");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("linear, three references, three rows")
        << true << 3 << 3 << wrongCount.arg(3).arg(4);
    QTest::newRow("linear, three references, four rows") << true << 3 << 4 << QString();
    QTest::newRow("linear, four references, four rows") << true << 4 << 4 << QString();
    QTest::newRow("Victoreen, three references, four rows")
        << false << 3 << 4 << wrongCount.arg(4).arg(5);
    QTest::newRow("Victoreen, three references, five rows") << false << 3 << 5 << QString();
    QTest::newRow("Victoreen, four references, five rows") << false << 4 << 5 << QString();
}

void tst_FourPsNonEquivalent::targetBoundDoesNotFollowTheReferences()
{
    QFETCH(bool, linear);
    QFETCH(int, references);
    QFETCH(int, rows);
    QFETCH(QString, refusal);
    FourPs panel;
    chooseQuietly(linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic);
    prepareTarget(panel, quarter, references, rows);
    panel.calcTarget();
    if (refusal.isEmpty()) {
        QVERIFY(panel.ui.CalcRes->text().startsWith("Result of NEQ :: "));
        QCOMPARE(messages(panel), QStringList{panel.ui.CalcRes->text().simplified()});
    } else {
        QCOMPARE(messages(panel), QStringList{refusal});
        QVERIFY(panel.ui.CalcRes->text().isEmpty());
    }
}

void tst_FourPsNonEquivalent::invalidReferenceAmongTheFirstIsRefused()
{
    FourPs panel;
    prepareTarget(panel, quarter, 4, 8);
    panel.XafsFiles.at(2)->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{"Ref File 2 is not valid."});
    QCOMPARE(panel.TargetT, 0.0);
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
    QVERIFY(panel.ui.TargetDMut->text().isEmpty());
    QVERIFY(panel.Refs.RefRows.at(0)->RatioDisp->text().isEmpty());
}

void tst_FourPsNonEquivalent::invalidReferenceBehindTheFirstPlaysNoPart()
{
    FourPs panel;
    prepareTarget(panel, quarter, 3);
    panel.XafsFiles.at(2)->valid = false;
    panel.Refs.RefRows.at(2)->RatioDisp->setText("old");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    QCOMPARE(panel.Refs.RefRows.at(2)->RatioDisp->text(), "old");
}

void tst_FourPsNonEquivalent::refusedTargetLeavesEverything()
{
    const struct {
        const char* what;
        void (*spoil)(FourPs&);
        QStringList said;
    } refusals[] = {
        {"no V row",
         [](FourPs& panel) { panel.EPoints.at(2)->VPointCB->setChecked(false); },
         {"V Point is not selected."}},
        {"V row not in use",
         [](FourPs& panel) {
             useRows(panel, {0, 1, 3, 4});
         },
         {"V Point is not selected."}},
        {"three rows",
         [](FourPs& panel) {
             useRows(panel, {0, 1, 2});
         },
         {wrongCount.arg(3).arg(4)}},
        {"four rows and Victoreen",
         [](FourPs& panel) {
             chooseQuietly(panel.ui.NonEquivBGVic);
             useRows(panel, {0, 1, 2, 3});
         },
         {wrongCount.arg(4).arg(5)}},
        {"first reference",
         [](FourPs& panel) { panel.XafsFiles.at(0)->valid = false; },
         {fewReferences.arg(1), "The 1st Ref File is not valid."}},
        {"second reference",
         [](FourPs& panel) { panel.XafsFiles.at(1)->valid = false; },
         {fewReferences.arg(1), "The 2nd Ref File is not valid."}},
        {"target",
         [](FourPs& panel) { panel.ui.TargetFile->valid = false; },
         {"Target File1 is not valid."}},
        {"one used reference",
         [](FourPs& panel) { useReferences(panel, {1}); },
         {fewReferences.arg(1)}},
        {"third of four references",
         [](FourPs& panel) {
             makeReferenceValid(panel, 3);
             useReferences(panel, {0, 1, 2, 3});
         },
         {"Ref File 2 is not valid."}},
    };
    for (const auto& refusal : refusals) {
        FourPs panel;
        prepareTarget(panel, quarter);
        panel.calcTarget();
        const QStringList before = targetFields(panel);
        setTarget(panel, negative);
        refusal.spoil(panel);
        clearMessages(panel);
        panel.calcTarget();
        QVERIFY2(messages(panel) == refusal.said, refusal.what);
        QVERIFY2(targetFields(panel) == before, refusal.what);
    }
}

void tst_FourPsNonEquivalent::targetLeavesMapAndHistograms()
{
    FourPs panel;
    prepareMap(panel, {negative});
    panel.calcMap();
    const QStringList before = mapFields(panel);
    setTarget(panel, quarter);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    QCOMPARE(mapFields(panel), before);
}

void tst_FourPsNonEquivalent::mapHoldsThirteenValuesOfEveryPixel()
{
    FourPs panel;
    prepareMap(panel, {quarter, negative});
    QTest::mouseClick(panel.ui.CalcMapB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    const A2DData& map = panel.BaseData;
    QVERIFY(map.extended);
    QCOMPARE(map.rows.size(), 2);
    QVERIFY(near(scaledValues(panel, 0), quarterValues));
    QVERIFY(near(scaledValues(panel, 1), negativeValues));
    for (const A2DRow& row : map.rows) {
        QCOMPARE(row.intensity, row.values.at(0));
        QCOMPARE(row.i0, row.values.at(12));
        QVERIFY(near(row.values.at(0) + row.values.at(1), 1));
        for (const int missing : {2, 3, 6, 7, 10}) {
            QCOMPARE(row.values.at(missing), 0.0);
        }
    }
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
    QVERIFY(panel.Refs.RefRows.at(0)->RatioDisp->text().isEmpty());
}

void tst_FourPsNonEquivalent::mapTakesTheVictoreenBackground()
{
    FourPs panel;
    chooseQuietly(panel.ui.NonEquivBGVic);
    prepareMap(panel, {{{0.5, 0.5}, 1.25, 0, 2, -0.5}}, 2, 8);
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).values,
                 {0.25, 0.75, 0, 0, 1, 3, 0, 0, 1.25, 2, -0.5, 4.25, 4}));
}

void tst_FourPsNonEquivalent::linearBackgroundKeepsC2AtZero()
{
    // No sum of the unknowns meets these points.
    FourPs panel;
    prepareMap(panel, {{{0.5, 0.5}, 1.25, 0, 2, -0.5}, {{1, 3}, 0, 1, 0, 4}}, 2, 8);
    panel.calcMap();
    for (const A2DRow& row : panel.BaseData.rows) {
        QCOMPARE(row.values.size(), 13);
        QCOMPARE(row.values.at(10), 0.0);
    }
}

void tst_FourPsNonEquivalent::fourReferencesFillEveryEntry()
{
    // dMut 1, 3, 4 and 8 of 16; valence 1/8 + 15/16 + 1 + 7/2.
    FourPs panel;
    chooseQuietly(panel.ui.NonEquivBGVic);
    prepareMap(panel, {{{0.5, 0.5, 1, 1}, 1.25, 0, 2, -0.5}}, 4, 8);
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).values,
                 {0.0625, 0.1875, 0.25, 0.5, 1, 3, 4, 8, 1.25, 2, -0.5, 5.5625, 16}));
}

void tst_FourPsNonEquivalent::fiveRowsAndVictoreenPassThroughAllPoints()
{
    FourPs panel;
    chooseQuietly(panel.ui.NonEquivBGVic);
    prepare(panel);
    const QList<double> pixels{1, -2, 0.5, 3, -1};
    for (int row = 0; row < pixels.size(); ++row) {
        setMap(panel, row, {pixels.at(row)});
    }
    panel.calcMap();
    const QList<double>& values = panel.BaseData.rows.at(0).values;
    const Mix fit{{values.at(4) / jumps.at(0), values.at(5) / jumps.at(1)},
                  values.at(8),
                  0,
                  values.at(9),
                  values.at(10)};
    QVERIFY(near(fit.atAllRows().first(5), pixels));
}

void tst_FourPsNonEquivalent::surplusRowsAreFittedByLeastSquares()
{
    // What the fit leaves over is orthogonal to each basis vector.
    FourPs panel;
    prepare(panel, 2, 8);
    const QList<double> pixels{1, -2, 0.5, 3, -1, 2, 0, 1};
    for (int row = 0; row < pixels.size(); ++row) {
        setMap(panel, row, {pixels.at(row)});
    }
    panel.calcMap();
    const QList<double> values = scaledValues(panel, 0);
    const Mix fit{
        {values.at(4) / jumps.at(0), values.at(5) / jumps.at(1)}, values.at(8), values.at(9)};
    QList<double> left = pixels;
    for (int row = 0; row < left.size(); ++row) {
        left[row] -= fit.at(row);
    }
    const auto dot = [&left](const QList<double>& basis) {
        return std::inner_product(left.begin(), left.end(), basis.begin(), 0.0);
    };
    QVERIFY(dot(left) > 0.1);
    for (const Mix& basis : {Mix{{1, 0}}, Mix{{0, 1}}, Mix{{}, 1}, Mix{{}, 0, 1}}) {
        QVERIFY(near(dot(basis.atAllRows()), 0));
    }
}

void tst_FourPsNonEquivalent::mapTakesReferencesLessTheirPostEdgeLine()
{
    // Less the post-edge line each reference is lower by its jump, and the
    // constant higher by the total of 4. The target's choice plays no part.
    FourPs panel;
    prepareMap(panel, {quarter});
    chooseQuietly(panel.ui.SubPostEforTarget);
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).values.at(8), 1.25));
    chooseQuietly(panel.ui.SubPostEforRef);
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).values.at(8), 5.25));
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.25));
}

void tst_FourPsNonEquivalent::countsBecomeMutBeforeTheFit()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    for (int row = 0; row < 5; ++row) {
        A2DRow& pixel = panel.EPoints.at(row)->rows[0];
        pixel.i0 = 1000;
        pixel.intensity = 1000 * std::exp(-quarter.at(row));
    }
    panel.calcMap();
    QVERIFY(near(scaledValues(panel, 0), quarterValues));
}

void tst_FourPsNonEquivalent::baseRowIsTheFirstUsedRowAndNotTheVRow()
{
    // The V row 3 is wider; row 1 has a map too and is not in use.
    FourPs panel;
    prepare(panel, 2, 6);
    setPixels(panel, {quarter, negative}, 6);
    setMap(panel, 0, {1, 2, 3});
    panel.EPoints.at(2)->rows.append({9, 9, 7, 0, {}});
    panel.EPoints.at(2)->xNum = 3;
    panel.EPoints.at(2)->headerLines = {"# V row"};
    panel.EPoints.at(0)->headerLines = {"# not in use"};
    AEPoint* base = panel.EPoints.at(1);
    base->headerLines = {"# base  row", "#"};
    base->rows[1].x = 12.5;
    base->rows[1].y = -3;
    base->rows.append({20, 20, 5, 0, {}}); // beyond its width
    useRows(panel, {1, 2, 3, 4, 5});
    panel.calcMap();
    const A2DData& map = panel.BaseData;
    QCOMPARE(map.headerLines, (QStringList{"# base  row", "#"}));
    QCOMPARE(map.xNum, 2);
    QCOMPARE(map.yNum, 1);
    QCOMPARE(map.rows.size(), 2);
    QCOMPARE(map.rows.at(0).x, 0.0);
    QCOMPARE(map.rows.at(0).y, 0.5);
    QCOMPARE(map.rows.at(1).x, 12.5);
    QCOMPARE(map.rows.at(1).y, -3.0);
    QVERIFY(near(scaledValues(panel, 0), quarterValues));
    QVERIFY(near(scaledValues(panel, 1), negativeValues));
}

void tst_FourPsNonEquivalent::mapOfNoLinesYieldsNoRows()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    panel.calcMap();
    panel.EPoints.at(0)->yNum = 0;
    panel.calcMap();
    QVERIFY(panel.BaseData.rows.isEmpty());
    QCOMPARE(panel.BaseData.xNum, 1);
    QVERIFY(isEmpty(panel.HistV));
}

void tst_FourPsNonEquivalent::mapAsksForNoVRow()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(near(scaledValues(panel, 0), quarterValues));
}

void tst_FourPsNonEquivalent::mapDoesNotAskForTheTarget()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    QVERIFY(!panel.ui.TargetFile->valid);
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 1);
}

void tst_FourPsNonEquivalent::rowWithoutMapAsBaseRowGivesNoPixels()
{
    FourPs panel;
    prepareMap(panel, {quarter}, 2, 6);
    panel.calcMap();
    panel.BaseData.extended = false;
    panel.EPoints.at(0)->clear();
    panel.EPoints.at(0)->loaded = false;
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(panel.BaseData.rows.isEmpty());
    QCOMPARE(panel.BaseData.xNum, 0);
    QVERIFY(panel.BaseData.extended);
    for (const Histgram* histogram : allHistograms(panel)) {
        QVERIFY(isEmpty(histogram));
    }
}

void tst_FourPsNonEquivalent::rowWithoutMapEntersWithMinusOne()
{
    // The constant is such that the mix is -1 at the row without a map.
    FourPs panel;
    Mix mix = quarter;
    mix.constant -= quarter.at(3) + 1;
    prepareMap(panel, {mix}, 2, 6);
    panel.EPoints.at(3)->clear();
    panel.EPoints.at(3)->loaded = false;
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.25));
    QVERIFY(near(panel.BaseData.rows.at(0).values.at(8), mix.constant));
    // Under another constant it does not fit to the others.
    for (const int row : {0, 1, 2, 4, 5}) {
        setMap(panel, row, {quarter.at(row)});
    }
    panel.calcMap();
    QVERIFY(!near(panel.BaseData.rows.at(0).intensity, 0.25));
}

void tst_FourPsNonEquivalent::rowWhoseReloadFailedEntersWithItsOldPixels()
{
    FourPs panel;
    prepareMap(panel, {quarter}, 2, 6);
    panel.EPoints.at(3)->loaded = false;
    panel.calcMap();
    QVERIFY(near(scaledValues(panel, 0), quarterValues));
    panel.EPoints.at(3)->rows[0].intensity += 1;
    panel.calcMap();
    QVERIFY(!near(panel.BaseData.rows.at(0).intensity, 0.25));
}

void tst_FourPsNonEquivalent::mapOfAnotherSizeIsReadWithItsOwnWidth()
{
    // Row 5 is one pixel wide and two high beside maps of 2 by 2: its pixels are
    // met at (0,0), at (1,0) and (0,1), and not at all at (1,1). The constants
    // bring its four mixes to 7, 8, 8 and -1.
    FourPs panel;
    prepare(panel);
    QList<Mix> mixes(4, quarter);
    const QList<double> met{7, 8, 8, -1};
    for (int i = 0; i < mixes.size(); ++i) {
        mixes[i].constant += met.at(i) - quarter.at(4);
    }
    setPixels(panel, mixes, 4);
    for (int row = 0; row < 4; ++row) {
        panel.EPoints.at(row)->xNum = 2;
        panel.EPoints.at(row)->yNum = 2;
    }
    setMap(panel, 4, {7, 8});
    panel.EPoints.at(4)->xNum = 1;
    panel.EPoints.at(4)->yNum = 2;
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 4);
    for (int i = 0; i < mixes.size(); ++i) {
        QList<double> expected = quarterValues;
        expected[8] = mixes.at(i).constant;
        QVERIFY(near(scaledValues(panel, i), expected));
    }
}

void tst_FourPsNonEquivalent::pixelOutsideEveryMapGivesAFullRow()
{
    // -1 everywhere is a constant of -1 and no reference at all.
    FourPs panel;
    prepareMap(panel, {quarter});
    panel.EPoints.at(0)->xNum = 2;
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 2);
    const A2DRow& outside = panel.BaseData.rows.at(1);
    QCOMPARE(outside.x, 0.0);
    QCOMPARE(outside.y, 0.0);
    QCOMPARE(outside.values.size(), 13);
    QVERIFY(near(outside.values.at(8), -1));
    QVERIFY(near(outside.i0, 0));
    QVERIFY(near(outside.values.at(9) * hc, 0));
}

void tst_FourPsNonEquivalent::secondRunRebuildsTheResult()
{
    FourPs panel;
    prepareMap(panel, {quarter, negative});
    panel.EPoints.at(0)->headerLines = {"# once"};
    panel.calcMap();
    setPixels(panel, {negative});
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QVERIFY(near(scaledValues(panel, 0), negativeValues));
    QVERIFY(panel.BaseData.headerLines.isEmpty());
    QCOMPARE(panel.HistT->total + panel.HistT->under + panel.HistT->over, 1);
}

void tst_FourPsNonEquivalent::histogramsCountValenceTotalSharesAndAmounts()
{
    FourPs panel;
    prepareMap(panel, {quarter, negative});
    setHistogramLimits(panel);
    panel.calcMap();
    QCOMPARE(hits(panel.HistV), (QList<int>{4, 6}));           // 4.25, 5.6
    QCOMPARE(hits(panel.HistT), (QList<int>{4, 5}));           // 4, 5
    QCOMPARE(hits(panel.HistRatio.at(0)), (QList<int>{0, 0})); // 0.25, -0.2
    QCOMPARE(hits(panel.HistRatio.at(1)), (QList<int>{1, 1})); // 0.75, 1.2
    QCOMPARE(hits(panel.HistDMut.at(0)), (QList<int>{-1, 1}));
    QCOMPARE(hits(panel.HistDMut.at(1)), (QList<int>{3, 6}));
    QCOMPARE(panel.HistRatio.at(0)->total, 2);
    for (const int missing : {2, 3}) {
        QVERIFY(isEmpty(panel.HistRatio.at(missing)));
        QVERIFY(isEmpty(panel.HistDMut.at(missing)));
    }
}

void tst_FourPsNonEquivalent::allHistogramsStartAfresh()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    setHistogramLimits(panel);
    panel.calcMap();
    for (Histgram* histogram : allHistograms(panel)) {
        histogram->bins.fill(9);
        histogram->total = 9;
        histogram->under = 9;
        histogram->over = 9;
    }
    panel.ui.HgATo->setText("3");
    panel.ui.HgABoxes->setText("4");
    panel.ui.HgTTo->setText("5");
    panel.ui.HgTBoxes->setText("10");
    panel.calcMap();
    QCOMPARE(hits(panel.HistT), QList<int>{4});
    QCOMPARE(panel.HistV->over, 1);
    QCOMPARE(hits(panel.HistRatio.at(1)), QList<int>{1});
    QCOMPARE(hits(panel.HistDMut.at(1)), QList<int>{3});
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(panel.HistRatio.at(i)->bins.size(), 4);
        QCOMPARE(panel.HistDMut.at(i)->bins.size(), 10);
        QCOMPARE(isEmpty(panel.HistRatio.at(i)), i > 1);
        QCOMPARE(isEmpty(panel.HistDMut.at(i)), i > 1);
    }
}

void tst_FourPsNonEquivalent::pixelOfZeroesIsKeptAndCountedBelow()
{
    FourPs panel;
    prepareMap(panel, {{{0, 0}}, quarter});
    setHistogramLimits(panel);
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 2);
    QVERIFY(std::isnan(panel.BaseData.rows.at(0).intensity));
    QVERIFY(std::isnan(panel.BaseData.rows.at(0).values.at(11)));
    QVERIFY(std::isnan(panel.BaseData.rows.at(0).values.at(3))); // 0 over a sum of 0
    QCOMPARE(panel.BaseData.rows.at(0).values.at(7), 0.0);
    QCOMPARE(panel.BaseData.rows.at(0).i0, 0.0);
    QCOMPARE(panel.HistV->under, 1);
    QCOMPARE(panel.HistRatio.at(0)->under, 1);
    QCOMPARE(panel.HistDMut.at(1)->under, 1);
    QCOMPARE(hits(panel.HistT), (QList<int>{0, 4}));
    QVERIFY(near(scaledValues(panel, 1), quarterValues));
}

void tst_FourPsNonEquivalent::fourPointsRunEmptiesTheHistogramsOfTheReferences()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    setHistogramLimits(panel);
    panel.calcMap();
    chooseFourPoints(panel);
    setPixels(panel, {negative, negative});
    panel.calcMap();
    QVERIFY(!panel.BaseData.extended);
    QCOMPARE(panel.BaseData.rows.size(), 2);
    QVERIFY(panel.BaseData.rows.at(0).values.isEmpty());
    for (const Histgram* histogram : panel.HistRatio + panel.HistDMut) {
        QVERIFY(isEmpty(histogram));
    }
    chooseQuietly(panel.ui.TypeNonEquiv);
    setPixels(panel, {quarter});
    panel.calcMap();
    QCOMPARE(hits(panel.HistRatio.at(1)), QList<int>{1});
    QCOMPARE(hits(panel.HistDMut.at(1)), QList<int>{3});
}

void tst_FourPsNonEquivalent::mapBoundFollowsTheReferences_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<int>("references");
    QTest::addColumn<int>("bound");
    QTest::newRow("linear, two") << true << 2 << 4;
    QTest::newRow("linear, three") << true << 3 << 5;
    QTest::newRow("linear, four") << true << 4 << 6;
    QTest::newRow("Victoreen, two") << false << 2 << 5;
    QTest::newRow("Victoreen, three") << false << 3 << 6;
    QTest::newRow("Victoreen, four") << false << 4 << 7;
}

void tst_FourPsNonEquivalent::mapBoundFollowsTheReferences()
{
    QFETCH(bool, linear);
    QFETCH(int, references);
    QFETCH(int, bound);
    FourPs panel;
    chooseQuietly(linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic);
    prepareMap(panel, {quarter}, references, bound - 1);
    panel.calcMap();
    QCOMPARE(messages(panel),
             QStringList{QStringLiteral("Number of selected data sets %1 is less than %2.")
                             .arg(bound - 1)
                             .arg(bound)});
    QVERIFY(panel.BaseData.rows.isEmpty());
    QVERIFY(!panel.BaseData.extended);
}

void tst_FourPsNonEquivalent::mapRunsAtItsBound_data()
{
    mapBoundFollowsTheReferences_data();
}

void tst_FourPsNonEquivalent::mapRunsAtItsBound()
{
    QFETCH(bool, linear);
    QFETCH(int, references);
    QFETCH(int, bound);
    FourPs panel;
    chooseQuietly(linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic);
    const Mix mix{{0.5, 0.5}, 1.25, linear ? 0.5 : 0.0};
    prepareMap(panel, {mix}, references, bound);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.25));
    QVERIFY(near(panel.BaseData.rows.at(0).values.at(8), 1.25));
}

void tst_FourPsNonEquivalent::rowWithoutMapDoesNotCountForTheMap()
{
    FourPs panel;
    prepareMap(panel, {quarter}, 2, 4);
    setTarget(panel, quarter);
    panel.EPoints.at(1)->loaded = false;
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Number of selected data sets 3 is less than 4."});
    clearMessages(panel);
    panel.calcTarget(); // for the target it does
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
}

void tst_FourPsNonEquivalent::fewerThanTwoUsedReferencesGiveNoMap()
{
    FourPs panel;
    prepareMap(panel, {quarter});
    useReferences(panel, {0});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(1)});
    clearMessages(panel);
    useReferences(panel, {});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(0)});
    clearMessages(panel);
    useRows(panel, {4});
    panel.calcMap();
    QCOMPARE(messages(panel),
             (QStringList{fewReferences.arg(0), "Number of selected data sets 1 is less than 2."}));
    QVERIFY(panel.BaseData.rows.isEmpty());
    QVERIFY(!panel.BaseData.extended);
}

void tst_FourPsNonEquivalent::refusedMapLeavesEverything()
{
    const struct {
        const char* what;
        void (*spoil)(FourPs&);
        QStringList said;
    } refusals[] = {
        {"three rows",
         [](FourPs& panel) {
             useRows(panel, {0, 1, 2});
         },
         {"Number of selected data sets 3 is less than 4."}},
        {"four rows and Victoreen",
         [](FourPs& panel) {
             chooseQuietly(panel.ui.NonEquivBGVic);
             useRows(panel, {0, 1, 2, 3});
         },
         {"Number of selected data sets 4 is less than 5."}},
        {"second reference",
         [](FourPs& panel) { panel.XafsFiles.at(1)->valid = false; },
         {fewReferences.arg(1), "Ref File 1 is not valid."}},
        {"third reference",
         [](FourPs& panel) {
             useReferences(panel, {0, 1, 2});
         },
         {"Ref File 2 is not valid."}},
        {"unused reference ahead",
         [](FourPs& panel) {
             makeReferenceValid(panel, 2);
             useReferences(panel, {1, 2});
         },
         {"Ref File 2 is not valid."}},
        {"one used reference",
         [](FourPs& panel) { useReferences(panel, {0}); },
         {fewReferences.arg(1)}},
        {"no used reference",
         [](FourPs& panel) { useReferences(panel, {}); },
         {fewReferences.arg(0)}},
    };
    for (const auto& refusal : refusals) {
        FourPs panel;
        prepareMap(panel, {quarter});
        setHistogramLimits(panel);
        panel.calcMap();
        const QStringList before = mapFields(panel);
        setPixels(panel, {negative, negative});
        panel.ui.HgABoxes->setText("3");
        panel.ui.HgTBoxes->setText("3");
        refusal.spoil(panel);
        clearMessages(panel);
        panel.calcMap();
        QVERIFY2(messages(panel) == refusal.said, refusal.what);
        QVERIFY2(mapFields(panel) == before, refusal.what);
    }
}

void tst_FourPsNonEquivalent::writeButtonWritesTheExtendedLayout()
{
    // 1 / hc is 8.06554e-05.
    QTemporaryDir dir;
    FourPs panel;
    prepareMap(panel, {quarter, negative});
    panel.EPoints.at(0)->headerLines = {"# sample  A"};
    for (QCheckBox* box :
         {panel.ui.RecRatio1, panel.ui.RecRatio2, panel.ui.RecRatio3, panel.ui.RecDMut1,
          panel.ui.RecDMut2, panel.ui.RecDMut4, panel.ui.RecMut0, panel.ui.RecC1, panel.ui.RecC2}) {
        box->setChecked(true);
    }
    const QString path = dir.filePath("result.dat");
    panel.ui.SaveFSelect->FileName->setText(path);
    QTest::mouseClick(panel.ui.WriteB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    const auto line = [](const QStringList& numbers) {
        QByteArray text;
        for (const QString& number : numbers) {
            text += ' ' + number.rightJustified(10).toUtf8();
        }
        return text + '\n';
    };
    QCOMPARE(readFile(path),
             "# qelk result map V1.0\n"
             "# sample  A\n"
             "\n"
             "# y x alpha1 alpha2 alpha3 dMut1 dMut2 dMut4 Mut0 C1 C2 Valence Total-dMut\n" +
                 line({"0", "0.5", "0.25", "0.75", "0", "1", "3", "0", "1.25", "4.03277e-05", "0",
                       "4.25", "4"}) +
                 line({"1", "0.5", "-0.2", "1.2", "0", "-1", "6", "0", "-2", "-8.06554e-05", "0",
                       "5.6", "5"}) +
                 "\n");
}

void tst_FourPsNonEquivalent::histogramsOfValenceAndTotalAreWritten()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareMap(panel, {quarter});
    setHistogramLimits(panel);
    const QString valence = writeFile(dir, "result_HGAlpha.dat", "old");
    const QString total = writeFile(dir, "result_HGThick.dat", "old");
    panel.ui.SaveFSelect->FileName->setText(dir.filePath("result.dat"));
    panel.calcAndWrite();
    QVERIFY(readFile(valence).contains("\n3.5 4 4.5  1\n"));
    QVERIFY(readFile(total).contains("\n3.5 4 4.5  1\n"));
    QCOMPARE(readFile(valence).count('\n'), 9);
    QCOMPARE(readFile(total).count('\n'), 13);
}

void tst_FourPsNonEquivalent::refusedRunWritesTheEarlierMap()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareMap(panel, {quarter});
    panel.calcMap();
    useRows(panel, {0, 1});
    const QString path = dir.filePath("result.dat");
    panel.ui.SaveFSelect->FileName->setText(path);
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{"Number of selected data sets 2 is less than 4."});
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "\n"
                             "# y x Valence Total-dMut\n"
                             "          0        0.5       4.25          4\n"
                             "\n");
}

QTEST_MAIN(tst_FourPsNonEquivalent)
#include "tst_FourPsNonEquivalent.moc"
