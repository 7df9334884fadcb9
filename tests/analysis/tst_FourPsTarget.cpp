#include "support/PanelTools.h"

#include <QTest>

#include <cmath>

using namespace tests;

class tst_FourPsTarget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threePointsShowFractionAndValence();
    void threePointsSpeakInTheMessageBoxToo();
    void oneNinthShowsSixDigits();
    void threePointsWithExactOnStayThreePoints();
    void exactFourPointsShowThicknessAndStaySilent();
    void leastSquareShowsThicknessAndSpeaks();
    void fourRowsWithNeitherRadioRunLeastSquare();
    void rowNumbersAreTakenAsDisplayed();
    void wordsInFieldsCountAsZero();
    void valenceOfWordsCountsAsZero();
    void uncheckedFirstReferenceMakesTheSecondTheFirst();
    void resultsAreKeptForTheComparison();
    void numericTroubleShowsInTheLabel();

    void noRowSelectedSaysVPointOnly();
    void vPointIsAskedForUnderTheNonEquivalentMethodToo();
    void oneValidReferenceIsCountedThenTheSecondIsRefused();
    void firstReferenceNotValidIsRefused();
    void targetNotValidIsRefused();
    void referencesAreAskedBeforeTheTarget();
    void fewerThanTwoUsedReferencesStopAfterTheCount();
    void noUsedReferenceStopsAfterTheCount();
    void countMessageAloneDoesNotStop();
    void wrongNumberOfRowsIsRefused_data();
    void wrongNumberOfRowsIsRefused();
    void usedRowWithoutMapIsSelected();
    void twoVRowsThatLeaveTooFewOthersAreRefused_data();
    void twoVRowsThatLeaveTooFewOthersAreRefused();
    void twoVRowsRunLeastSquareOnWhatIsLeft();
    void refusalLeavesEarlierResults();
};

void tst_FourPsTarget::threePointsShowFractionAndValence()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 2.5");
}

void tst_FourPsTarget::threePointsSpeakInTheMessageBoxToo()
{
    FourPs panel;
    prepareThreePoints(panel);
    QTest::mouseClick(panel.ui.CalcTargetB, Qt::LeftButton);
    QCOMPARE(messages(panel), QStringList{"3ps: a = 0.5, Valence = 2.5"});
}

void tst_FourPsTarget::oneNinthShowsSixDigits()
{
    // f(T) = 5.5/9, f(R1) = 3/2, f(R2) = 1/2: a = 1/9; valence 3 - 1/9.
    FourPs panel;
    prepareThreePoints(panel);
    setPoint(panel, 0, "8313", "0", "0", "0");
    setPoint(panel, 1, "8381", "1", "1", "9");
    setPoint(panel, 2, "8390", "1.5", "0.5", "5.5");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.111111, Valence = 2.88889");
}

void tst_FourPsTarget::threePointsWithExactOnStayThreePoints()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 2.5");
}

void tst_FourPsTarget::exactFourPointsShowThicknessAndStaySilent()
{
    FourPs panel;
    prepareFourPoints(panel);
    panel.ui.TypeTMKisExact->setChecked(true);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "a = 0.5, Valence = 2.5, t/ts = 1");
    QVERIFY(messages(panel).isEmpty());
}

void tst_FourPsTarget::leastSquareShowsThicknessAndSpeaks()
{
    FourPs panel;
    prepareFourPoints(panel);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "4ps2: a = 0.5, Valence = 2.5, t/ts = 1");
    QCOMPARE(messages(panel), QStringList{"4ps2: a = 0.5, Valence = 2.5, t/ts = 1"});
}

void tst_FourPsTarget::fourRowsWithNeitherRadioRunLeastSquare()
{
    FourPs panel;
    prepareFourPoints(panel);
    for (QRadioButton* radio : {panel.ui.TypeTMKisExact, panel.ui.TypeTMKisLS}) {
        radio->setAutoExclusive(false);
        radio->setChecked(false);
    }
    panel.calcTarget();
    QVERIFY(panel.ui.CalcRes->text().startsWith("4ps2: a = 0.5"));
}

void tst_FourPsTarget::rowNumbersAreTakenAsDisplayed()
{
    // Typed over: 3.5 in place of 3 at the V row gives f(T) = 2.5/4, a = 3/4.
    FourPs panel;
    prepareThreePoints(panel);
    panel.EPoints.at(2)->MutT->setText("3.5");
    QVERIFY(panel.ui.CalcRes->text().isEmpty()); // typing alone calculates nothing
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.75, Valence = 2.25");
}

void tst_FourPsTarget::wordsInFieldsCountAsZero()
{
    // T0 = 0 in place of 1: f(T) = 3/5, a = (3/5 - 1/4) * 2 = 0.7.
    FourPs panel;
    prepareThreePoints(panel);
    panel.EPoints.at(0)->MutT->setText("words");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.7, Valence = 2.3");
}

void tst_FourPsTarget::valenceOfWordsCountsAsZero()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.Refs.RefRows.at(0)->Valence->setText("two");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 1.5");
}

void tst_FourPsTarget::uncheckedFirstReferenceMakesTheSecondTheFirst()
{
    FourPs panel;
    prepareThreePoints(panel);
    makeReferenceValid(panel, 2);
    panel.Refs.RefRows.at(2)->Valence->setText("4");
    for (int i = 0; i < 3; ++i) {
        panel.EPoints.at(i)->Mut3->setText(i == 0 ? "0" : i == 1 ? "4" : "2");
    }
    useReferences(panel, {1, 2});
    panel.calcTarget();
    // f(T) = 1/2, f of the former second 1/4, f of the third 1/2: a = 0.
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0, Valence = 4");
}

void tst_FourPsTarget::resultsAreKeptForTheComparison()
{
    FourPs panel;
    QCOMPARE(panel.TargetV, 0.0);
    QCOMPARE(panel.TargetT, 0.0);
    prepareThreePoints(panel);
    panel.calcTarget();
    QCOMPARE(panel.TargetV, 0.5);
    QCOMPARE(panel.TargetT, 2.5);
}

void tst_FourPsTarget::numericTroubleShowsInTheLabel()
{
    FourPs panel;
    prepareThreePoints(panel);
    for (int i = 0; i < 3; ++i) {
        panel.EPoints.at(i)->MutT->setText("1");
    }
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = nan, Valence = nan");
}

void tst_FourPsTarget::noRowSelectedSaysVPointOnly()
{
    FourPs panel;
    prepareThreePoints(panel);
    useRows(panel, {});
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{"V Point is not selected."});
}

void tst_FourPsTarget::vPointIsAskedForUnderTheNonEquivalentMethodToo()
{
    FourPs panel;
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    clearMessages(panel);
    QVERIFY(panel.ui.TypeNonEquiv->isChecked());
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{"V Point is not selected."});
}

void tst_FourPsTarget::oneValidReferenceIsCountedThenTheSecondIsRefused()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.XafsFiles.at(1)->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel),
             (QStringList{fewReferences.arg(1), "The 2nd Ref File is not valid."}));
}

void tst_FourPsTarget::firstReferenceNotValidIsRefused()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.XafsFiles.at(0)->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel),
             (QStringList{fewReferences.arg(1), "The 1st Ref File is not valid."}));
}

void tst_FourPsTarget::targetNotValidIsRefused()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.ui.TargetFile->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{"Target File1 is not valid."});
}

void tst_FourPsTarget::referencesAreAskedBeforeTheTarget()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.ui.TargetFile->valid = false;
    panel.XafsFiles.at(1)->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel),
             (QStringList{fewReferences.arg(1), "The 2nd Ref File is not valid."}));
}

void tst_FourPsTarget::fewerThanTwoUsedReferencesStopAfterTheCount()
{
    FourPs panel;
    prepareThreePoints(panel);
    useReferences(panel, {0});
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(1)});
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
}

void tst_FourPsTarget::noUsedReferenceStopsAfterTheCount()
{
    FourPs panel;
    prepareThreePoints(panel);
    useReferences(panel, {});
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{fewReferences.arg(0)});
    QCOMPARE(panel.TargetT, 0.0);
}

void tst_FourPsTarget::countMessageAloneDoesNotStop()
{
    // The count message is followed by the next check, not by a stop.
    FourPs panel;
    prepareThreePoints(panel);
    panel.XafsFiles.at(0)->valid = false;
    panel.XafsFiles.at(1)->valid = false;
    panel.calcTarget();
    QCOMPARE(messages(panel),
             (QStringList{fewReferences.arg(0), "The 1st Ref File is not valid."}));
}

void tst_FourPsTarget::wrongNumberOfRowsIsRefused_data()
{
    QTest::addColumn<bool>("nonEquivalent");
    QTest::addColumn<bool>("exact");
    QTest::addColumn<bool>("linear");
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("named");
    QTest::newRow("two rows, though three would do") << false << false << true << 2 << 4;
    QTest::newRow("one row") << false << false << true << 1 << 4;
    QTest::newRow("five rows with exact on") << false << true << true << 5 << 4;
    QTest::newRow("linear, exactly three rows") << true << false << true << 3 << 4;
    QTest::newRow("two-term background, four rows") << true << false << false << 4 << 5;
}

void tst_FourPsTarget::wrongNumberOfRowsIsRefused()
{
    QFETCH(bool, nonEquivalent);
    QFETCH(bool, exact);
    QFETCH(bool, linear);
    QFETCH(int, selected);
    QFETCH(int, named);
    FourPs panel;
    prepareThreePoints(panel);
    panel.ui.TypeNonEquiv->setChecked(nonEquivalent);
    panel.ui.TypeTMKisExact->setChecked(exact);
    (linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic)->setChecked(true);
    const QList<int> order{2, 0, 1, 3, 4}; // the V row first
    useRows(panel, order.first(selected));
    clearMessages(panel);
    panel.calcTarget();
    QCOMPARE(messages(panel), QStringList{wrongCount.arg(selected).arg(named)});
}

void tst_FourPsTarget::usedRowWithoutMapIsSelected()
{
    FourPs panel;
    prepareThreePoints(panel);
    QVERIFY(!panel.EPoints.at(0)->loaded);
    panel.calcTarget();
    QVERIFY(!panel.ui.CalcRes->text().isEmpty());
}

void tst_FourPsTarget::twoVRowsThatLeaveTooFewOthersAreRefused_data()
{
    QTest::addColumn<bool>("exact");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("three points with one other row")
        << false << QList<int>{0, 1, 2} << wrongCount.arg(2).arg(3);
    QTest::newRow("exact with two other rows")
        << true << QList<int>{0, 1, 2, 3} << wrongCount.arg(3).arg(4);
}

void tst_FourPsTarget::twoVRowsThatLeaveTooFewOthersAreRefused()
{
    QFETCH(bool, exact);
    QFETCH(QList<int>, rows);
    FourPs panel;
    prepareFourPoints(panel);
    panel.ui.TypeTMKisExact->setChecked(exact);
    useRows(panel, rows);
    panel.EPoints.at(0)->VPointCB->setChecked(true);
    panel.calcTarget();
    QFETCH(QString, refusal);
    QCOMPARE(messages(panel), QStringList{refusal});
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
}

void tst_FourPsTarget::twoVRowsRunLeastSquareOnWhatIsLeft()
{
    FourPs panel;
    prepareFourPoints(panel);
    panel.EPoints.at(0)->VPointCB->setChecked(true);
    panel.calcTarget();
    QVERIFY(panel.ui.CalcRes->text().startsWith("4ps2: a = "));
}

void tst_FourPsTarget::refusalLeavesEarlierResults()
{
    FourPs panel;
    prepareThreePoints(panel);
    panel.calcTarget();
    useRows(panel, {2});
    panel.EPoints.at(2)->MutT->setText("99");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 2.5");
    QCOMPARE(panel.TargetV, 0.5);
    QCOMPARE(panel.TargetT, 2.5);
}

QTEST_MAIN(tst_FourPsTarget)
#include "tst_FourPsTarget.moc"
