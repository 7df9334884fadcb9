#include "display/Histgram.h"
#include "support/PanelTools.h"

#include <QTest>

#include <cmath>

using namespace tests;

namespace
{

void prepareFourPointMaps(FourPs& panel)
{
    prepareFourPoints(panel);
    setMap(panel, 0, {2});
    setMap(panel, 1, {2.5});
    setMap(panel, 2, {5});
    setMap(panel, 3, {6.5});
}

// Limits under which a valence of 2.5 and a thickness of 1 land in the middle
// of three boxes each, and below or above the other's.
void separateHistograms(FourPs& panel)
{
    panel.ui.HgAFrom->setText("2");
    panel.ui.HgATo->setText("3");
    panel.ui.HgTFrom->setText("0.5");
    panel.ui.HgTTo->setText("1.5");
    panel.ui.HgABoxes->setText("3");
    panel.ui.HgTBoxes->setText("3");
}

bool countedApart(const FourPs& panel)
{
    const QList<int> middle{0, 1, 0};
    return panel.HistV->bins == middle && panel.HistT->bins == middle;
}

// What a non-equivalent run would leave.
void countForReferences(FourPs& panel)
{
    for (Histgram* histogram : panel.HistRatio + panel.HistDMut) {
        histogram->start(-1.0, 2.0, 51);
        histogram->add(0.5);
        histogram->add(-7.0);
        histogram->add(7.0);
    }
}

// Whether a histogram of a reference is one that the panel's main one was when
// its run began.
bool isStartedLike(const Histgram* histogram, const Histgram* main)
{
    return histogram->minV == main->minV && histogram->maxV == main->maxV &&
           histogram->step == main->step && histogram->boxes == main->boxes &&
           histogram->bins == QList<int>(main->boxes, 0) && histogram->total == 0 &&
           histogram->under == 0 && histogram->over == 0;
}

bool near(double value, double expected)
{
    return std::abs(value - expected) < 1e-12;
}

} // namespace

class tst_FourPsMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threePointsFillResultAndHistograms();
    void exactFourPointsFillTheResult();
    void leastSquareFillsTheResult();
    void moreThanFourRowsRunLeastSquare();
    void valencesAreCountedByTheMixOfTheReferences();
    void valenceHalfABinUnderFromFallsIntoTheFirstBin();
    void limitsAreReadAtTheStartOfEachRun();
    void targetNeedNotBeValid();
    void histogramsOfReferencesHoldNothing_data();
    void histogramsOfReferencesHoldNothing();

    void vPointIsAskedForWithoutAPeriod();
    void nonEquivalentMethodNeedsNoVPoint();
    void twoRowsWithMapsAreRefused();
    void rowWithoutMapIsNotSelected();
    void fewerRowsThanUnknownsAreRefused();
    void fiveRowsWithExactOnAreRefused();
    void countMessageIsFollowedByTheReferenceCheck();
    void invalidReferenceIsNamedFromZero();
    void gapInTheUsedReferencesNamesTheIndexWithoutCounterpart();
    void onlyTheFirstReferenceUsedStopsAfterTheCount();
    void noUsedReferenceStopsAfterTheCount();
    void oneUsedReferenceAndTwoRowsAreCountedThenTheRowsRefused();
    void loneSecondReferenceIsCountedThenNamedOne();
    void twoVRowsThatLeaveTooFewOthersAreRefused();
    void refusalLeavesResultAndHistograms();
    void refusalLeavesTheHistogramsOfReferences();

    void vRowWithoutMapGivesAnEmptyResult();
    void usedRowWithoutMapEntersWithMinusOnePixels();
    void surplusUsedRowsAreLeftOutByTheExactForm();
    void mapOfNoLinesYieldsNoRows();
    void calcBothRunsTargetAndFitThoughTheMapIsRefused();
};

void tst_FourPsMap::threePointsFillResultAndHistograms()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.EPoints.at(2)->headerLines = {"# base row"};
    panel.EPoints.at(2)->rows[0].x = 12.5;
    QTest::mouseClick(panel.ui.CalcMapB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QCOMPARE(panel.BaseData.rows.at(0).intensity, 0.5);
    QCOMPARE(panel.BaseData.rows.at(0).i0, 1.0);
    QCOMPARE(panel.BaseData.rows.at(0).x, 12.5);
    QCOMPARE(panel.BaseData.headerLines, QStringList{"# base row"});
    QVERIFY(!panel.BaseData.extended);
}

void tst_FourPsMap::exactFourPointsFillTheResult()
{
    FourPs panel;
    prepareFourPointMaps(panel);
    separateHistograms(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    panel.calcMap();
    QVERIFY(countedApart(panel));
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.5));
    QVERIFY(near(panel.BaseData.rows.at(0).i0, 1.0));
    QVERIFY(panel.BaseData.rows.at(0).values.isEmpty());
}

void tst_FourPsMap::leastSquareFillsTheResult()
{
    FourPs panel;
    prepareFourPointMaps(panel);
    separateHistograms(panel);
    panel.calcMap();
    QVERIFY(countedApart(panel));
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.5));
    QVERIFY(near(panel.BaseData.rows.at(0).i0, 1.0));
}

void tst_FourPsMap::moreThanFourRowsRunLeastSquare()
{
    // A fifth row on the same plane S = 2 T changes nothing.
    FourPs panel;
    prepareFourPointMaps(panel);
    useRows(panel, {0, 1, 2, 3, 4});
    setPoint(panel, 4, "7", "3", "5");
    setMap(panel, 4, {4});
    panel.calcMap();
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.5));
    QVERIFY(near(panel.BaseData.rows.at(0).i0, 1.0));
}

void tst_FourPsMap::valencesAreCountedByTheMixOfTheReferences()
{
    // a = 1/2 between valences 2 and 3 is 2.5: the middle of 11 boxes over 2..3.
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.HgAFrom->setText("2");
    panel.ui.HgATo->setText("3");
    panel.ui.HgABoxes->setText("11");
    panel.calcMap();
    QList<int> expected(11, 0);
    expected[5] = 1;
    QCOMPARE(panel.HistV->bins, expected);
    QCOMPARE(panel.HistV->total, 1);
}

void tst_FourPsMap::valenceHalfABinUnderFromFallsIntoTheFirstBin()
{
    // Boxes centred on 2.75, 3.25, ...: the lower edge is 2.5, the valence of
    // the pixel. (With 3.125, 3.625, ... it lies half a bin and less than one
    // whole bin below the edge 2.875, and still counts in the first box.)
    FourPs panel;
    prepareThreePointMaps(panel);
    for (const auto& [from, to] : {std::pair("2.75", "3.75"), std::pair("3.125", "4.125")}) {
        panel.ui.HgAFrom->setText(from);
        panel.ui.HgATo->setText(to);
        panel.ui.HgABoxes->setText("3");
        panel.calcMap();
        QCOMPARE(panel.HistV->bins, (QList<int>{1, 0, 0}));
        QCOMPARE(panel.HistV->under, 0);
    }
}

void tst_FourPsMap::limitsAreReadAtTheStartOfEachRun()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.HgTFrom->setText("2");
    panel.ui.HgTTo->setText("3");
    panel.calcMap();
    QCOMPARE(panel.HistT->under, 1);
    panel.ui.HgTFrom->setText("0.5");
    panel.calcMap();
    QCOMPARE(panel.HistT->under, 0);
    QCOMPARE(panel.HistT->total, 1);
}

void tst_FourPsMap::targetNeedNotBeValid()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.TargetFile->valid = false;
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QCOMPARE(panel.BaseData.rows.size(), 1);
}

void tst_FourPsMap::histogramsOfReferencesHoldNothing_data()
{
    QTest::addColumn<int>("maps");
    QTest::addColumn<bool>("exact");
    QTest::addColumn<bool>("repeated");
    for (const bool repeated : {false, true}) {
        const char* times = repeated ? "repeated" : "first";
        QTest::addRow("three points, %s", times) << 3 << false << repeated;
        QTest::addRow("exact four points, %s", times) << 4 << true << repeated;
        QTest::addRow("least square, %s", times) << 4 << false << repeated;
    }
}

// A repeated run is skipped, since it would give the same result.
void tst_FourPsMap::histogramsOfReferencesHoldNothing()
{
    QFETCH(int, maps);
    QFETCH(bool, exact);
    QFETCH(bool, repeated);
    FourPs panel;
    if (maps == 3) {
        prepareThreePointMaps(panel);
    } else {
        prepareFourPointMaps(panel);
    }
    panel.ui.TypeTMKisExact->setChecked(exact);
    separateHistograms(panel);
    if (repeated) {
        panel.calcMap();
    }
    countForReferences(panel);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    for (int i = 0; i < 4; ++i) {
        QVERIFY(isStartedLike(panel.HistRatio.at(i), panel.HistV));
        QVERIFY(isStartedLike(panel.HistDMut.at(i), panel.HistT));
    }
    QVERIFY(countedApart(panel));
}

void tst_FourPsMap::vPointIsAskedForWithoutAPeriod()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"V Point is not selected"});
}

void tst_FourPsMap::nonEquivalentMethodNeedsNoVPoint()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.TypeNonEquiv->setChecked(true);
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    clearMessages(panel);
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Number of selected data sets 3 is less than 4."});
}

void tst_FourPsMap::twoRowsWithMapsAreRefused()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useRows(panel, {1, 2});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{wrongCount.arg(2).arg(4)});
}

void tst_FourPsMap::rowWithoutMapIsNotSelected()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.EPoints.at(0)->loaded = false;
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{wrongCount.arg(2).arg(4)});
    clearMessages(panel);
    panel.calcTarget(); // for the target it is
    QCOMPARE(messages(panel), QStringList{"3ps: a = 0.5, Valence = 2.5"});
}

void tst_FourPsMap::fewerRowsThanUnknownsAreRefused()
{
    FourPs panel;
    prepareFourPointMaps(panel);
    makeReferenceValid(panel, 2);
    useReferences(panel, {0, 1, 2});
    panel.ui.TypeNonEquiv->setChecked(true);
    clearMessages(panel);
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Number of selected data sets 4 is less than 5."});
    panel.ui.NonEquivBGVic->setChecked(true);
    clearMessages(panel);
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Number of selected data sets 4 is less than 6."});
}

void tst_FourPsMap::fiveRowsWithExactOnAreRefused()
{
    FourPs panel;
    prepareFourPointMaps(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    useRows(panel, {0, 1, 2, 3, 4});
    setMap(panel, 4, {4});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{wrongCount.arg(5).arg(4)});
}

void tst_FourPsMap::countMessageIsFollowedByTheReferenceCheck()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.XafsFiles.at(0)->valid = false;
    panel.calcMap();
    QCOMPARE(messages(panel), (QStringList{fewReferences.arg(1), "Ref File 0 is not valid."}));
}

void tst_FourPsMap::invalidReferenceIsNamedFromZero()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useReferences(panel, {0, 1, 2});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Ref File 2 is not valid."});
}

void tst_FourPsMap::gapInTheUsedReferencesNamesTheIndexWithoutCounterpart()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    makeReferenceValid(panel, 2);
    useReferences(panel, {0, 2});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{"Ref File 2 is not valid."});
    QVERIFY(panel.BaseData.rows.isEmpty());
}

void tst_FourPsMap::onlyTheFirstReferenceUsedStopsAfterTheCount()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useReferences(panel, {0});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(1)});
    QVERIFY(panel.BaseData.rows.isEmpty());
}

void tst_FourPsMap::noUsedReferenceStopsAfterTheCount()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useReferences(panel, {});
    panel.calcMap();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(0)});
    QVERIFY(panel.BaseData.rows.isEmpty());
}

void tst_FourPsMap::oneUsedReferenceAndTwoRowsAreCountedThenTheRowsRefused()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useReferences(panel, {0});
    useRows(panel, {1, 2});
    panel.calcMap();
    QCOMPARE(messages(panel), (QStringList{fewReferences.arg(1), wrongCount.arg(2).arg(4)}));
}

void tst_FourPsMap::loneSecondReferenceIsCountedThenNamedOne()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    useReferences(panel, {1});
    panel.calcMap();
    QCOMPARE(messages(panel), (QStringList{fewReferences.arg(1), "Ref File 1 is not valid."}));
}

void tst_FourPsMap::twoVRowsThatLeaveTooFewOthersAreRefused()
{
    FourPs panel;
    prepareFourPointMaps(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    panel.EPoints.at(0)->VPointCB->setChecked(true);
    panel.calcMap();
    useRows(panel, {0, 1, 2});
    panel.calcMap();
    QCOMPARE(messages(panel), (QStringList{wrongCount.arg(3).arg(4), wrongCount.arg(2).arg(3)}));
    QVERIFY(panel.BaseData.rows.isEmpty());
}

void tst_FourPsMap::refusalLeavesResultAndHistograms()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.calcMap();
    const QList<int> bins = panel.HistV->bins;
    panel.ui.HgABoxes->setText("3");
    useReferences(panel, {0});
    panel.calcMap();
    useReferences(panel, {0, 1});
    panel.EPoints.at(0)->VPointCB->setChecked(true);
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QCOMPARE(panel.BaseData.rows.at(0).intensity, 0.5);
    QCOMPARE(panel.HistV->bins, bins);
    panel.ui.TypeTMKisExact->setChecked(true);
    setMap(panel, 3, {7});
    useRows(panel, {0, 1, 2, 3});
    panel.calcMap(); // exact, with two rows beside two V rows
    QCOMPARE(messages(panel).last(), wrongCount.arg(3).arg(4));
    QCOMPARE(panel.HistV->bins, bins);
}

void tst_FourPsMap::refusalLeavesTheHistogramsOfReferences()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    countForReferences(panel);
    useReferences(panel, {0});
    panel.calcMap();
    useReferences(panel, {0, 1});
    useRows(panel, {0, 2});
    panel.calcMap();
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    panel.calcMap();
    for (const Histgram* histogram : panel.HistRatio + panel.HistDMut) {
        QCOMPARE(histogram->boxes, 51);
        QCOMPARE(histogram->total, 1);
        QCOMPARE(histogram->under, 1);
        QCOMPARE(histogram->over, 1);
    }
}

void tst_FourPsMap::vRowWithoutMapGivesAnEmptyResult()
{
    // Row 4 is a later V row in use, without a map: the collectors take it.
    FourPs panel;
    prepareFourPointMaps(panel);
    panel.EPoints.at(4)->VPointCB->setChecked(true);
    useRows(panel, {0, 1, 2, 3, 4});
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(panel.BaseData.rows.isEmpty());
    QCOMPARE(panel.BaseData.xNum, 0);
}

void tst_FourPsMap::usedRowWithoutMapEntersWithMinusOnePixels()
{
    // Row 1 has no map, rows 2, 3 (V) and 4 have: three count, and the
    // three-point form takes row 1 first, with T0 = -1:
    // f(T) = (3 + 1) / (5 + 1) = 2/3, a = (2/3 - 1/4) * 2 = 5/6.
    FourPs panel;
    prepareThreePointMaps(panel);
    useRows(panel, {0, 1, 2, 3});
    panel.EPoints.at(0)->clear();
    panel.EPoints.at(0)->loaded = false;
    setMap(panel, 3, {77});
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 5.0 / 6.0));
}

void tst_FourPsMap::surplusUsedRowsAreLeftOutByTheExactForm()
{
    // Four rows with maps choose the exact form; a fifth row in use without a
    // map comes after its first three.
    FourPs panel;
    prepareFourPointMaps(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    useRows(panel, {0, 1, 2, 3, 4});
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.5));
}

void tst_FourPsMap::mapOfNoLinesYieldsNoRows()
{
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.calcMap();
    panel.EPoints.at(2)->yNum = 0;
    panel.calcMap();
    QVERIFY(panel.BaseData.rows.isEmpty());
    QCOMPARE(panel.HistV->total, 0);
}

void tst_FourPsMap::calcBothRunsTargetAndFitThoughTheMapIsRefused()
{
    FourPs panel;
    prepareThreePoints(panel); // no map at all
    panel.calcBoth();
    QCOMPARE(messages(panel),
             (QStringList{"V Point is not selected", "3ps: a = 0.5, Valence = 2.5", noFitRange}));
}

QTEST_MAIN(tst_FourPsMap)
#include "tst_FourPsMap.moc"
