// The target calculation in the panel: the inputs it reads, and the results it shows and
// stores. Its checks are tested in tst_CalculationPlan, its numbers in tst_TargetResult, its
// texts in tst_Wording.
#include "support/CalculationPanel.h"
#include "support/Mixes.h"

#include <QTest>

using namespace tests;

namespace
{

const QString quarterText =
    QStringLiteral("Result of NEQ ::  0.250 :  0.750, Valence =  4.250, t =  4.000");

// Everything that a target calculation writes, except the message box.
QStringList targetFields(const FourPs& panel)
{
    QStringList fields{panel.ui.CalcRes->text(), panel.ui.TargetDMut->text(),
                       allDigits(panel.TargetV), allDigits(panel.TargetT)};
    for (const ARefFile* row : panel.Refs.RefRows) {
        fields << row->RatioDisp->text() << row->AmountDisp->text();
    }
    return fields;
}

} // namespace

class tst_FourPsTarget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { resetPanel(*m_shared); }

    void targetButtonWithThreeRowsRunsTheThreePointForm();
    void exactFourPointResultIsShownWithoutAMessage();
    void leastSquareResultIsShownAndSentAsMessage();
    void threePointResultIsShownBeforeTheMessage();
    void nonEquivalentResultShowsSharesAmountsAndTotal();
    void nonEquivalentMessageIsSentBeforeTheResultIsShown();
    void resultsAreShownInTheRowsOfUsedReferences();
    void resultFieldsShowSixDigitsWithTheCursorAtTheStart();
    void targetRunLeavesMapAndHistogramsUnchanged();

    void targetValueIsReadFromTheFieldOfTheEnergyRow();
    void backgroundIsLinearExactlyIfTheLinearRadioIsChecked_data();
    void backgroundIsLinearExactlyIfTheLinearRadioIsChecked();

    void refusedCalculationIsReportedAndChangesNoResult_data();
    void refusedCalculationIsReportedAndChangesNoResult();

private:
    SharedPanel m_shared;
    FourPs& panel = *m_shared;
};

void tst_FourPsTarget::targetButtonWithThreeRowsRunsTheThreePointForm()
{
    QCOMPARE(panel.TargetV, 0.0);
    enterInputs(panel, threePointInputs());
    QTest::mouseClick(panel.ui.CalcTargetB, Qt::LeftButton);
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 2.5");
    QCOMPARE(messages(panel), QStringList{"3ps: a = 0.5, Valence = 2.5"});
    QCOMPARE(panel.TargetV, 0.5);
    QCOMPARE(panel.TargetT, 2.5);
}

void tst_FourPsTarget::exactFourPointResultIsShownWithoutAMessage()
{
    enterInputs(panel, fourPointInputs().chooseFourPoints(true, false));
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "a = 0.5, Valence = 2.5, t/ts = 1");
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(mixes::near(panel.TargetV, 0.5));
    QVERIFY(mixes::near(panel.TargetT, 2.5));
}

void tst_FourPsTarget::leastSquareResultIsShownAndSentAsMessage()
{
    const QString line = "4ps2: a = 0.5, Valence = 2.5, t/ts = 1";
    for (const bool chosen : {true, false}) { // false: both radio buttons are off
        enterInputs(panel, fourPointInputs().chooseFourPoints(false, chosen));
        clearMessages(panel);
        panel.ui.CalcRes->clear();
        panel.calcTarget();
        QCOMPARE(panel.ui.CalcRes->text(), line);
        QCOMPARE(messages(panel), QStringList{line});
        QVERIFY(mixes::near(panel.TargetV, 0.5));
    }
}

void tst_FourPsTarget::threePointResultIsShownBeforeTheMessage()
{
    enterInputs(panel, threePointInputs());
    QStringList messagesByThen{"nothing shown"};
    const auto watch = connect(panel.ui.CalcRes, &QLineEdit::textChanged, this,
                               [&] { messagesByThen = messages(panel); });
    panel.calcTarget();
    disconnect(watch);
    QCOMPARE(messagesByThen, QStringList());
    QCOMPARE(messages(panel).size(), 1);
}

void tst_FourPsTarget::nonEquivalentResultShowsSharesAmountsAndTotal()
{
    // The amounts (dMut) are 1 and 3, with a total of 4, for both kinds of background.
    for (const bool linear : {true, false}) {
        PanelInputs inputs = mixes::mixedInputs(linear ? mixes::quarter : mixes::curvedQuarter);
        resetPanel(*m_shared);
        enterInputs(panel, inputs.chooseNonEquivalent(linear));
        panel.calcTarget();
        QCOMPARE(panel.ui.CalcRes->text(), quarterText);
        QCOMPARE(messages(panel), QStringList{quarterText.simplified()});
        QVERIFY(mixes::near(panel.TargetV, 0.25));
        QVERIFY(mixes::near(panel.TargetT, 4.25));
        QCOMPARE(panel.ui.TargetDMut->text(), "4");
        QCOMPARE(panel.Refs.RefRows.at(0)->RatioDisp->text(), "0.25");
        QCOMPARE(panel.Refs.RefRows.at(1)->RatioDisp->text(), "0.75");
        QCOMPARE(panel.Refs.RefRows.at(0)->AmountDisp->text(), "1");
        QCOMPARE(panel.Refs.RefRows.at(1)->AmountDisp->text(), "3");
    }
}

void tst_FourPsTarget::nonEquivalentMessageIsSentBeforeTheResultIsShown()
{
    enterInputs(panel, mixes::mixedInputs(mixes::quarter));
    QStringList messagesByThen;
    QString totalByThen;
    const auto watch = connect(panel.ui.CalcRes, &QLineEdit::textChanged, this, [&] {
        messagesByThen = messages(panel);
        totalByThen = panel.ui.TargetDMut->text();
    });
    panel.calcTarget();
    disconnect(watch);
    QCOMPARE(messagesByThen, QStringList{quarterText.simplified()});
    QCOMPARE(totalByThen, "4");
}

void tst_FourPsTarget::resultsAreShownInTheRowsOfUsedReferences()
{
    // References 1 and 2 of the mixture are in rows 2 and 3; row 1 is valid, but not used.
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter, 3);
    mixes::setReference(inputs.spectra[1], 0);
    mixes::setReference(inputs.spectra[2], 1);
    inputs.valences = {9, 2, 5, 9};
    inputs.useReferences({1, 2});
    enterInputs(panel, inputs);
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

void tst_FourPsTarget::resultFieldsShowSixDigitsWithTheCursorAtTheStart()
{
    // The amounts (dMut) are 1/3 and 2, with a total of 7/3.
    enterInputs(panel, mixes::mixedInputs({{1.0 / 6.0, 1.0 / 3.0}}));
    panel.calcTarget();
    const ARefFile* first = panel.Refs.RefRows.at(0);
    const ARefFile* second = panel.Refs.RefRows.at(1);
    QCOMPARE(first->RatioDisp->text(), "0.142857");
    QCOMPARE(second->RatioDisp->text(), "0.857143");
    QCOMPARE(first->AmountDisp->text(), "0.333333");
    QCOMPARE(panel.ui.TargetDMut->text(), "2.33333");
    for (const QLineEdit* field : {first->RatioDisp, second->RatioDisp, first->AmountDisp,
                                   second->AmountDisp, panel.ui.TargetDMut}) {
        QCOMPARE(field->cursorPosition(), 0);
    }
}

void tst_FourPsTarget::targetRunLeavesMapAndHistogramsUnchanged()
{
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter);
    mixes::setPixels(inputs, {mixes::negative});
    enterInputs(panel, inputs);
    panel.calcMap();
    const QList<double> values = panel.BaseData.rows.at(0).values;
    QList<QByteArray> counts;
    for (const Histgram* histogram : allHistograms(panel)) {
        counts << histogram->fileText();
    }
    panel.ui.HgABoxes->setText("3");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), quarterText);
    QCOMPARE(panel.BaseData.rows.at(0).values, values);
    for (int i = 0; i < counts.size(); ++i) {
        QCOMPARE(allHistograms(panel).at(i)->fileText(), counts.at(i));
    }
}

void tst_FourPsTarget::targetValueIsReadFromTheFieldOfTheEnergyRow()
{
    // The target's value at the V row is changed from 3 to 3.5, so f(T) = (3.5 - 1) / (5 - 1)
    // = 5/8. With f(R1) = 3/4 and f(R2) = 1/4, a = (5/8 - 1/4) / (3/4 - 1/4) = 3/4.
    enterInputs(panel, threePointInputs());
    panel.EPoints.at(2)->MutT->setText("3.5");
    QVERIFY(panel.ui.CalcRes->text().isEmpty()); // changing the text starts no calculation
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.75, Valence = 2.25");
}

void tst_FourPsTarget::backgroundIsLinearExactlyIfTheLinearRadioIsChecked_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<bool>("victoreen");
    QTest::newRow("linear") << true << false;
    QTest::newRow("both radio buttons on") << true << true;
    QTest::newRow("Victoreen") << false << true;
    QTest::newRow("both radio buttons off") << false << false;
}

// Target and pixels have a linear background. The Victoreen background (a constant, L^3 and L^4)
// cannot fit a straight line at eight points, so it leads to other results.
void tst_FourPsTarget::backgroundIsLinearExactlyIfTheLinearRadioIsChecked()
{
    QFETCH(bool, linear);
    QFETCH(bool, victoreen);
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter, 2, 8);
    mixes::setPixels(inputs, {mixes::quarter}, 8);
    enterInputs(panel, inputs);
    setWithoutSignals(panel.ui.NonEquivBGLinear, linear);
    setWithoutSignals(panel.ui.NonEquivBGVic, victoreen);
    panel.calcTarget();
    panel.calcMap();
    QCOMPARE(panel.ui.CalcRes->text() == quarterText, linear);
    QCOMPARE(mixes::near(panel.BaseData.rows.at(0).intensity, 0.25), linear);
}

void tst_FourPsTarget::refusedCalculationIsReportedAndChangesNoResult_data()
{
    QTest::addColumn<PanelInputs>("inputs");
    QTest::addColumn<QStringList>("expected");
    const auto inputs = [] { return mixes::mixedInputs(mixes::negative); };
    const auto newRow = [](const char* name, const PanelInputs& refused,
                           const QStringList& expected) {
        QTest::newRow(name) << refused << expected;
    };
    newRow("no V row", inputs().markVRows({}), {"V Point is not selected."});
    newRow("invalid first reference", inputs().makeInvalid({0}),
           {fewReferences.arg(1), "The 1st Ref File is not valid."});
    newRow("invalid second reference", inputs().makeInvalid({1}),
           {fewReferences.arg(1), "The 2nd Ref File is not valid."});
    newRow("one used reference", inputs().useReferences({1}), {fewReferences.arg(1)});
    newRow("invalid target", inputs().makeTargetInvalid(), {"Target File1 is not valid."});
    newRow("three rows", inputs().useRows({0, 1, 2}), {wrongCount.arg(3).arg(4)});
    newRow("invalid third of four references", inputs().useFirstReferences(4).makeInvalid({2}),
           {"Ref File 2 is not valid."});
}

void tst_FourPsTarget::refusedCalculationIsReportedAndChangesNoResult()
{
    QFETCH(PanelInputs, inputs);
    enterInputs(panel, mixes::mixedInputs(mixes::quarter));
    panel.calcTarget();
    const QStringList before = targetFields(panel);
    enterInputs(panel, inputs);
    clearMessages(panel);
    panel.calcTarget();
    QTEST(messages(panel), "expected");
    QCOMPARE(targetFields(panel), before);
}

QTEST_MAIN(tst_FourPsTarget)
#include "tst_FourPsTarget.moc"
