// The map calculation in the panel: its inputs, and its effect on the result map,
// the histograms and the message box. Its checks are tested in tst_CalculationPlan, its
// numbers in tst_MapStacks, tst_MapCalculation and tst_NonEquivalentMap.
#include "support/CalculationPanel.h"
#include "support/Mixes.h"

#include <QTest>

using namespace tests;
using mixes::near;

namespace
{

const QString tooFewRows = QStringLiteral("Number of selected data sets %1 is less than %2.");

PanelInputs threePointMaps()
{
    return threePointInputs().addMaps(3);
}

PanelInputs fourPointMaps(bool exact)
{
    return fourPointInputs().addMaps(4).chooseFourPoints(exact, !exact);
}

PanelInputs mixedMaps(const QList<mixes::Mix>& pixels, int references = 2, int rows = 5)
{
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter, references, rows);
    mixes::setPixels(inputs, pixels, rows);
    return inputs;
}

// Limits for histograms of three bins each: a valence of 2.5 and a thickness of 1 are in the
// middle bins. Each value is outside the limits of the other histogram.
void separateHistograms(FourPs& panel)
{
    panel.ui.HgAFrom->setText("2");
    panel.ui.HgATo->setText("3");
    panel.ui.HgTFrom->setText("0.5");
    panel.ui.HgTTo->setText("1.5");
    panel.ui.HgABoxes->setText("3");
    panel.ui.HgTBoxes->setText("3");
}

bool eachIsInItsMiddleBin(const FourPs& panel)
{
    const QList<int> middle{0, 1, 0};
    return panel.HistV->bins == middle && panel.HistT->bins == middle;
}

// Bin centres from 0 to 6 for the valence and the shares, from -4 to 6 for the total and the
// amounts.
void setHistogramLimits(FourPs& panel)
{
    panel.ui.HgAFrom->setText("0");
    panel.ui.HgATo->setText("6");
    panel.ui.HgABoxes->setText("7");
    panel.ui.HgTFrom->setText("-4");
    panel.ui.HgTTo->setText("6");
    panel.ui.HgTBoxes->setText("11");
}

// The rounded centres of the filled bins. The centre of a bin with the count n occurs n times.
QList<int> countedCentres(const Histgram* histogram)
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
    return countedCentres(histogram).isEmpty() && histogram->under == 0 && histogram->over == 0 &&
           histogram->total == 0;
}

// Fills the histograms of the references, as an earlier run of the non-equivalent method would
// do.
void fillReferenceHistograms(FourPs& panel)
{
    for (Histgram* histogram : panel.HistRatio + panel.HistDMut) {
        histogram->start(-1.0, 2.0, 51);
        for (const double value : {0.5, -7.0, 7.0}) {
            histogram->add(value);
        }
    }
}

// Whether a reference's histogram is empty and has the limits of the main histogram.
bool isEmptyWithLimitsOf(const Histgram* histogram, const Histgram* main)
{
    return histogram->minV == main->minV && histogram->maxV == main->maxV &&
           histogram->step == main->step && histogram->boxes == main->boxes && isEmpty(histogram);
}

// The result map and all histograms as text.
QStringList mapFields(const FourPs& panel)
{
    QStringList fields{QString::number(panel.BaseData.xNum), QString::number(panel.BaseData.yNum),
                       panel.BaseData.headerLines.join(u'|'),
                       panel.BaseData.extended ? "extended" : "simple"};
    for (const A2DRow& row : panel.BaseData.rows) {
        for (const double value : QList<double>{row.x, row.y, row.intensity, row.i0} + row.values) {
            fields << allDigits(value);
        }
    }
    for (const Histgram* histogram : allHistograms(panel)) {
        fields << QString::fromUtf8(histogram->fileText());
    }
    return fields;
}

} // namespace

class tst_FourPsMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { resetPanel(*m_shared); }

    void mapButtonWithThreeRowsRunsTheThreePointForm();
    void fourPointFormsFillResultAndHistograms_data();
    void fourPointFormsFillResultAndHistograms();
    void nonEquivalentMethodFillsAllPixelValues_data();
    void nonEquivalentMethodFillsAllPixelValues();
    void rowWithoutMapIsCountedForTheTargetButNotTheMap();
    void mapsOfHeightZeroGiveAResultWithoutPixels();
    void secondRunReplacesTheResult();

    void histogramLimitsAreReadAtTheStartOfEachRun();
    void histogramsCountValenceTotalSharesAndAmounts();
    void secondRunReplacesLimitsAndCountsOfAllHistograms();
    void threeAndFourPointFormsEmptyTheReferenceHistograms_data();
    void threeAndFourPointFormsEmptyTheReferenceHistograms();

    void refusedCalculationIsReportedAndChangesNoResult_data();
    void refusedCalculationIsReportedAndChangesNoResult();
    void calcBothRunsTargetAndFitAfterTheMapIsRefused();

private:
    SharedPanel m_shared;
    FourPs& panel = *m_shared;
};

void tst_FourPsMap::mapButtonWithThreeRowsRunsTheThreePointForm()
{
    PanelInputs inputs = threePointMaps();
    inputs.target.valid = false; // the map calculation does not need the target
    inputs.maps[2].headerLines = {"# base row"};
    inputs.maps[2].rows[0].x = 12.5;
    enterInputs(panel, inputs);
    separateHistograms(panel);
    QTest::mouseClick(panel.ui.CalcMapB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QCOMPARE(panel.BaseData.rows.at(0).intensity, 0.5);
    QCOMPARE(panel.BaseData.rows.at(0).i0, 1.0);
    QCOMPARE(panel.BaseData.rows.at(0).x, 12.5);
    QCOMPARE(panel.BaseData.headerLines, QStringList{"# base row"});
    QVERIFY(!panel.BaseData.extended);
    QVERIFY(eachIsInItsMiddleBin(panel));
}

void tst_FourPsMap::fourPointFormsFillResultAndHistograms_data()
{
    QTest::addColumn<bool>("exact");
    QTest::newRow("exact") << true;
    QTest::newRow("least square") << false;
}

void tst_FourPsMap::fourPointFormsFillResultAndHistograms()
{
    QFETCH(bool, exact);
    enterInputs(panel, fourPointMaps(exact));
    separateHistograms(panel);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(eachIsInItsMiddleBin(panel));
    QVERIFY(near(panel.BaseData.rows.at(0).intensity, 0.5));
    QVERIFY(near(panel.BaseData.rows.at(0).i0, 1.0));
    QVERIFY(panel.BaseData.rows.at(0).values.isEmpty());
}

void tst_FourPsMap::nonEquivalentMethodFillsAllPixelValues_data()
{
    QTest::addColumn<bool>("linear");
    QTest::newRow("linear") << true;
    QTest::newRow("Victoreen") << false;
}

void tst_FourPsMap::nonEquivalentMethodFillsAllPixelValues()
{
    QFETCH(bool, linear);
    PanelInputs inputs = mixedMaps({linear ? mixes::quarter : mixes::curvedQuarter}, 2, 8);
    // The map calculation needs neither a valid target nor a V row.
    inputs.chooseNonEquivalent(linear).makeTargetInvalid().markVRows({});
    enterInputs(panel, inputs);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(panel.BaseData.extended);
    if (linear) {
        QVERIFY(near(mixes::scaledValues(panel.BaseData, 0), mixes::quarterValues));
    } else {
        QVERIFY(near(panel.BaseData.rows.at(0).values,
                     {0.25, 0.75, 0, 0, 1, 3, 0, 0, 1.25, 2, -0.5, 4.25, 4}));
    }
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
    QVERIFY(panel.Refs.RefRows.at(0)->RatioDisp->text().isEmpty());
}

void tst_FourPsMap::rowWithoutMapIsCountedForTheTargetButNotTheMap()
{
    enterInputs(panel, threePointMaps());
    panel.EPoints.at(0)->loaded = false;
    panel.calcMap();
    panel.calcTarget();
    QCOMPARE(messages(panel),
             (QStringList{wrongCount.arg(2).arg(4), "3ps: a = 0.5, Valence = 2.5"}));
}

void tst_FourPsMap::mapsOfHeightZeroGiveAResultWithoutPixels()
{
    for (const PanelInputs& inputs : {threePointMaps(), mixedMaps({mixes::quarter})}) {
        enterInputs(panel, inputs);
        panel.calcMap();
        QCOMPARE(panel.BaseData.rows.size(), 1);
        for (AEPoint* row : std::as_const(panel.EPoints)) {
            row->yNum = 0;
        }
        panel.calcMap();
        QVERIFY(panel.BaseData.rows.isEmpty());
        QCOMPARE(panel.BaseData.xNum, 1);
        QVERIFY(isEmpty(panel.HistV));
    }
}

void tst_FourPsMap::secondRunReplacesTheResult()
{
    PanelInputs inputs = mixedMaps({mixes::quarter, mixes::negative});
    inputs.maps[0].headerLines = {"# once"};
    enterInputs(panel, inputs);
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 2);
    enterInputs(panel, mixedMaps({mixes::negative}));
    panel.calcMap();
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QVERIFY(near(mixes::scaledValues(panel.BaseData, 0), mixes::negativeValues));
    QVERIFY(panel.BaseData.headerLines.isEmpty());
    QCOMPARE(panel.HistT->total + panel.HistT->under + panel.HistT->over, 1);
}

void tst_FourPsMap::histogramLimitsAreReadAtTheStartOfEachRun()
{
    enterInputs(panel, threePointMaps());
    panel.ui.HgTFrom->setText("2");
    panel.ui.HgTTo->setText("3");
    panel.calcMap();
    QCOMPARE(panel.HistT->under, 1);
    panel.ui.HgTFrom->setText("0.5");
    panel.calcMap();
    QCOMPARE(panel.HistT->under, 0);
    QCOMPARE(panel.HistT->total, 1);
}

void tst_FourPsMap::histogramsCountValenceTotalSharesAndAmounts()
{
    enterInputs(panel, mixedMaps({mixes::quarter, mixes::negative}));
    setHistogramLimits(panel);
    panel.calcMap();
    QCOMPARE(countedCentres(panel.HistV), (QList<int>{4, 6}));           // values 4.25 and 5.6
    QCOMPARE(countedCentres(panel.HistT), (QList<int>{4, 5}));           // values 4 and 5
    QCOMPARE(countedCentres(panel.HistRatio.at(0)), (QList<int>{0, 0})); // values 0.25 and -0.2
    QCOMPARE(countedCentres(panel.HistRatio.at(1)), (QList<int>{1, 1})); // values 0.75 and 1.2
    QCOMPARE(countedCentres(panel.HistDMut.at(0)), (QList<int>{-1, 1}));
    QCOMPARE(countedCentres(panel.HistDMut.at(1)), (QList<int>{3, 6}));
    QCOMPARE(panel.HistRatio.at(0)->total, 2);
    for (const int missing : {2, 3}) {
        QVERIFY(isEmpty(panel.HistRatio.at(missing)));
        QVERIFY(isEmpty(panel.HistDMut.at(missing)));
    }
}

void tst_FourPsMap::secondRunReplacesLimitsAndCountsOfAllHistograms()
{
    enterInputs(panel, mixedMaps({mixes::quarter}));
    setHistogramLimits(panel);
    panel.calcMap();
    for (Histgram* histogram : allHistograms(panel)) {
        histogram->bins.fill(9);
        histogram->total = histogram->under = histogram->over = 9;
    }
    panel.ui.HgATo->setText("3");
    panel.ui.HgABoxes->setText("4");
    panel.ui.HgTTo->setText("5");
    panel.ui.HgTBoxes->setText("10");
    panel.calcMap();
    QCOMPARE(countedCentres(panel.HistT), QList<int>{4});
    QCOMPARE(panel.HistV->over, 1);
    QCOMPARE(countedCentres(panel.HistRatio.at(1)), QList<int>{1});
    QCOMPARE(countedCentres(panel.HistDMut.at(1)), QList<int>{3});
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(panel.HistRatio.at(i)->bins.size(), 4);
        QCOMPARE(panel.HistDMut.at(i)->bins.size(), 10);
        QCOMPARE(isEmpty(panel.HistRatio.at(i)), i > 1);
        QCOMPARE(isEmpty(panel.HistDMut.at(i)), i > 1);
    }
}

void tst_FourPsMap::threeAndFourPointFormsEmptyTheReferenceHistograms_data()
{
    QTest::addColumn<int>("maps");
    QTest::addColumn<bool>("exact");
    QTest::addColumn<bool>("repeated");
    for (const bool repeated : {false, true}) {
        const char* run = repeated ? "repeated run" : "first run";
        QTest::addRow("three points, %s", run) << 3 << false << repeated;
        QTest::addRow("exact four points, %s", run) << 4 << true << repeated;
        QTest::addRow("least square, %s", run) << 4 << false << repeated;
    }
}

// A repeated run with unchanged inputs skips the calculation, but it still resets the
// histograms of the references.
void tst_FourPsMap::threeAndFourPointFormsEmptyTheReferenceHistograms()
{
    QFETCH(int, maps);
    QFETCH(bool, exact);
    QFETCH(bool, repeated);
    enterInputs(panel, maps == 3 ? threePointMaps() : fourPointMaps(exact));
    separateHistograms(panel);
    if (repeated) {
        panel.calcMap();
    }
    fillReferenceHistograms(panel);
    panel.calcMap();
    QVERIFY(messages(panel).isEmpty());
    for (int i = 0; i < 4; ++i) {
        QVERIFY(isEmptyWithLimitsOf(panel.HistRatio.at(i), panel.HistV));
        QVERIFY(isEmptyWithLimitsOf(panel.HistDMut.at(i), panel.HistT));
    }
    QVERIFY(eachIsInItsMiddleBin(panel));
}

void tst_FourPsMap::refusedCalculationIsReportedAndChangesNoResult_data()
{
    QTest::addColumn<PanelInputs>("inputs");
    QTest::addColumn<QStringList>("expected");
    const auto newRow = [](const char* name, const PanelInputs& refused,
                           const QStringList& expected) {
        QTest::newRow(name) << refused << expected;
    };
    const auto inputs = [] { return mixedMaps({mixes::negative, mixes::negative}); };
    const auto points = [&inputs] { return inputs().chooseFourPoints(false, true); };
    newRow("no V row", points().markVRows({}), {"V Point is not selected"});
    newRow("two rows", points().useRows({1, 2}), {wrongCount.arg(2).arg(4)});
    newRow("two V rows", points().useRows({0, 1, 2}).markVRows({0, 2}), {wrongCount.arg(2).arg(3)});
    newRow("one used reference for the four-point family",
           points().useRows({0, 1, 2}).useReferences({0}), {fewReferences.arg(1)});
    newRow("fewer rows than unknowns", inputs().useRows({0, 1, 2}), {tooFewRows.arg(3).arg(4)});
    newRow("invalid second reference", inputs().makeInvalid({1}),
           {fewReferences.arg(1), "Ref File 1 is not valid."});
    newRow("invalid third reference", inputs().useReferences({0, 1, 2}),
           {"Ref File 2 is not valid."});
    newRow("no used reference", inputs().useReferences({}), {fewReferences.arg(0)});
}

void tst_FourPsMap::refusedCalculationIsReportedAndChangesNoResult()
{
    QFETCH(PanelInputs, inputs);
    enterInputs(panel, mixedMaps({mixes::quarter}));
    setHistogramLimits(panel);
    panel.calcMap();
    const QStringList before = mapFields(panel);
    enterInputs(panel, inputs);
    panel.ui.HgABoxes->setText("3");
    panel.ui.HgTBoxes->setText("3");
    clearMessages(panel);
    panel.calcMap();
    QTEST(messages(panel), "expected");
    QCOMPARE(mapFields(panel), before);
}

void tst_FourPsMap::calcBothRunsTargetAndFitAfterTheMapIsRefused()
{
    enterInputs(panel, threePointInputs()); // no row has a map
    panel.calcBoth();
    QCOMPARE(messages(panel),
             (QStringList{"V Point is not selected", "3ps: a = 0.5, Valence = 2.5", noFitRange}));
}

QTEST_MAIN(tst_FourPsMap)
#include "tst_FourPsMap.moc"
