// The target calculation in the panel: what it reads, what it shows, and where. What
// it decides is in tst_CalculationPlan, its numbers in tst_TargetResult, its words in
// tst_ResultTexts.
#include "support/CalculationPanel.h"
#include "support/Mixes.h"

#include <QTest>

using namespace tests;

namespace
{

const QString quarterText =
    QStringLiteral("Result of NEQ ::  0.250 :  0.750, Valence =  4.250, t =  4.000");

struct Change {
    void (*apply)(PanelInputs& inputs);
};

// All that a target calculation writes, the message box aside.
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
    void init() { m_shared.reset(); }

    void buttonCalculatesThreePoints();
    void exactFourPointsLeaveTheMessageBoxAlone();
    void leastSquareIsShownAndSaid();
    void fourPointsLineIsShownBeforeTheMessage();
    void nonEquivalentResultGoesToItsFields();
    void nonEquivalentMessageIsSentBeforeTheLineIsShown();
    void resultsGoToTheUsedReferencesBehindAnUnusedOne();
    void resultFieldsShowSixDigitsFromTheirStart();
    void mapAndHistogramsStay();

    void rowNumbersAreTakenAsDisplayed();
    void wordsInFieldsCountAsZero();
    void onlyTheLinearRadioIsAsked_data();
    void onlyTheLinearRadioIsAsked();
    void spectraAreTakenLessTheChosenLines();

    void refusalIsSaidAndLeavesEverything_data();
    void refusalIsSaidAndLeavesEverything();

private:
    CalculationPanel m_shared;
    FourPs& panel = *m_shared;
};

void tst_FourPsTarget::buttonCalculatesThreePoints()
{
    QCOMPARE(panel.TargetV, 0.0);
    enterInputs(panel, threePointInputs());
    QTest::mouseClick(panel.ui.CalcTargetB, Qt::LeftButton);
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.5, Valence = 2.5");
    QCOMPARE(messages(panel), QStringList{"3ps: a = 0.5, Valence = 2.5"});
    QCOMPARE(panel.TargetV, 0.5);
    QCOMPARE(panel.TargetT, 2.5);
}

void tst_FourPsTarget::exactFourPointsLeaveTheMessageBoxAlone()
{
    PanelInputs inputs = fourPointInputs();
    inputs.radios.exact = true;
    inputs.radios.leastSquare = false;
    enterInputs(panel, inputs);
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "a = 0.5, Valence = 2.5, t/ts = 1");
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(mixes::near(panel.TargetV, 0.5));
    QVERIFY(mixes::near(panel.TargetT, 2.5));
}

void tst_FourPsTarget::leastSquareIsShownAndSaid()
{
    PanelInputs inputs = fourPointInputs();
    const QString line = "4ps2: a = 0.5, Valence = 2.5, t/ts = 1";
    for (const bool chosen : {true, false}) { // with neither radio on too
        inputs.radios.leastSquare = chosen;
        enterInputs(panel, inputs);
        clearMessages(panel);
        panel.ui.CalcRes->clear();
        panel.calcTarget();
        QCOMPARE(panel.ui.CalcRes->text(), line);
        QCOMPARE(messages(panel), QStringList{line});
        QVERIFY(mixes::near(panel.TargetV, 0.5));
    }
}

void tst_FourPsTarget::fourPointsLineIsShownBeforeTheMessage()
{
    enterInputs(panel, threePointInputs());
    QStringList saidByThen{"nothing shown"};
    const auto watch = connect(panel.ui.CalcRes, &QLineEdit::textChanged, this,
                               [&] { saidByThen = messages(panel); });
    panel.calcTarget();
    disconnect(watch);
    QCOMPARE(saidByThen, QStringList());
    QCOMPARE(messages(panel).size(), 1);
}

void tst_FourPsTarget::nonEquivalentResultGoesToItsFields()
{
    // dMut 1 and 3 of 4, over either background.
    for (const bool linear : {true, false}) {
        PanelInputs inputs = mixes::mixedInputs(linear ? mixes::quarter : mixes::curvedQuarter);
        inputs.radios.linearBackground = linear;
        m_shared.reset();
        enterInputs(panel, inputs);
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

void tst_FourPsTarget::nonEquivalentMessageIsSentBeforeTheLineIsShown()
{
    enterInputs(panel, mixes::mixedInputs(mixes::quarter));
    QStringList saidByThen;
    QString totalByThen;
    const auto watch = connect(panel.ui.CalcRes, &QLineEdit::textChanged, this, [&] {
        saidByThen = messages(panel);
        totalByThen = panel.ui.TargetDMut->text();
    });
    panel.calcTarget();
    disconnect(watch);
    QCOMPARE(saidByThen, QStringList{quarterText.simplified()});
    QCOMPARE(totalByThen, "4");
}

void tst_FourPsTarget::resultsGoToTheUsedReferencesBehindAnUnusedOne()
{
    // Shapes 1 and 2 are in rows 2 and 3; row 1, valid too, is not in use.
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter, 3);
    mixes::setReference(inputs.spectra[1], 0);
    mixes::setReference(inputs.spectra[2], 1);
    inputs.valences = {9, 2, 5, 9};
    useReferences(inputs, {1, 2});
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

void tst_FourPsTarget::resultFieldsShowSixDigitsFromTheirStart()
{
    // dMut 1/3 and 2 of 7/3.
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

void tst_FourPsTarget::mapAndHistogramsStay()
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

void tst_FourPsTarget::rowNumbersAreTakenAsDisplayed()
{
    // Typed over: 3.5 in place of 3 at the V row gives f(T) = 2.5/4, a = 3/4.
    enterInputs(panel, threePointInputs());
    panel.EPoints.at(2)->MutT->setText("3.5");
    QVERIFY(panel.ui.CalcRes->text().isEmpty()); // typing alone calculates nothing
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.75, Valence = 2.25");
}

void tst_FourPsTarget::wordsInFieldsCountAsZero()
{
    // T0 = 0 in place of 1: f(T) = 3/5, a = (3/5 - 1/4) * 2 = 0.7; valence 0.3 * 3.
    enterInputs(panel, threePointInputs());
    panel.EPoints.at(0)->MutT->setText("words");
    panel.Refs.RefRows.at(0)->Valence->setText("two");
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text(), "3ps: a = 0.7, Valence = 0.9");
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter);
    inputs.radios.linearBackground = false;
    enterInputs(panel, inputs);
    panel.EPoints.at(0)->Energy->setText("low"); // where the wavelength is infinite
    panel.calcTarget();
    QCOMPARE(panel.ui.CalcRes->text().count("nan"), 4);
    QCOMPARE(panel.ui.TargetDMut->text(), "nan");
}

void tst_FourPsTarget::onlyTheLinearRadioIsAsked_data()
{
    QTest::addColumn<bool>("linear");
    QTest::addColumn<bool>("victoreen");
    QTest::newRow("linear") << true << false;
    QTest::newRow("both") << true << true;
    QTest::newRow("Victoreen") << false << true;
    QTest::newRow("neither") << false << false;
}

// Two terms in L do not follow a straight line through eight points.
void tst_FourPsTarget::onlyTheLinearRadioIsAsked()
{
    QFETCH(bool, linear);
    QFETCH(bool, victoreen);
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter, 2, 8);
    mixes::setPixels(inputs, {mixes::quarter}, 8);
    enterInputs(panel, inputs);
    setQuietly(panel.ui.NonEquivBGLinear, linear);
    setQuietly(panel.ui.NonEquivBGVic, victoreen);
    panel.calcTarget();
    panel.calcMap();
    QCOMPARE(panel.ui.CalcRes->text() == quarterText, linear);
    QCOMPARE(mixes::near(panel.BaseData.rows.at(0).intensity, 0.25), linear);
}

void tst_FourPsTarget::spectraAreTakenLessTheChosenLines()
{
    // The second reference is L^3, and so is the distance of the lines of target
    // and first reference. Less its post-edge line the target is short of one L^3;
    // less theirs the first reference is, for which the second makes up.
    QList<double> cubes;
    QList<double> muts;
    for (int row = 0; row < mixes::wavelengths.size(); ++row) {
        cubes.append(std::pow(mixes::wavelengths.at(row), 3));
        muts.append(0.5 * mixes::shapes.at(0).at(row) + 0.5 * cubes.last() + 1.25);
    }
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter);
    setSpectrum(inputs.spectra[0], mixes::rowEnergies(), mixes::shapes.at(0), {}, {1, 1, 0});
    inputs.spectra[0].edgeEnergy = mixes::hc;
    setSpectrum(inputs.spectra[1], mixes::rowEnergies(), cubes, {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(inputs.target, mixes::rowEnergies(), muts, {}, {3, 1, 0});
    enterInputs(panel, inputs);
    panel.calcTarget();
    QCOMPARE(panel.ui.TargetDMut->text(), "4"); // 1 and 3
    inputs.subPostForTarget = true;
    enterChoices(panel, inputs);
    panel.calcTarget();
    QCOMPARE(panel.ui.TargetDMut->text(), "-2"); // 1 and -3
    inputs.subPostForTarget = false;
    inputs.subPostForRef = true;
    enterChoices(panel, inputs);
    panel.calcTarget();
    QCOMPARE(panel.ui.TargetDMut->text(), "7"); // 1 and 6
}

void tst_FourPsTarget::refusalIsSaidAndLeavesEverything_data()
{
    using In = PanelInputs;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("said");
    const auto newRow = [](const char* name, void (*change)(In&), const QStringList& said) {
        QTest::newRow(name) << Change{change} << said;
    };
    newRow("no V row", [](In& in) { markVRows(in, {}); }, {"V Point is not selected."});
    newRow("first reference", [](In& in) { in.spectra[0].valid = false; },
           {fewReferences.arg(1), "The 1st Ref File is not valid."});
    newRow("second reference", [](In& in) { in.spectra[1].valid = false; },
           {fewReferences.arg(1), "The 2nd Ref File is not valid."});
    newRow("one used reference", [](In& in) { useReferences(in, {1}); }, {fewReferences.arg(1)});
    newRow("target", [](In& in) { in.target.valid = false; }, {"Target File1 is not valid."});
    newRow("three rows", [](In& in) { useRows(in, {0, 1, 2}); }, {wrongCount.arg(3).arg(4)});
    newRow("third of four references",
           [](In& in) {
               setJump(in.spectra[3], 1.0);
               useReferences(in, {0, 1, 2, 3});
           },
           {"Ref File 2 is not valid."});
}

void tst_FourPsTarget::refusalIsSaidAndLeavesEverything()
{
    QFETCH(Change, change);
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter);
    enterInputs(panel, inputs);
    panel.calcTarget();
    const QStringList before = targetFields(panel);
    mixes::setTarget(inputs.target, mixes::negative);
    change.apply(inputs);
    enterInputs(panel, inputs);
    clearMessages(panel);
    panel.calcTarget();
    QTEST(messages(panel), "said");
    QCOMPARE(targetFields(panel), before);
}

QTEST_MAIN(tst_FourPsTarget)
#include "tst_FourPsTarget.moc"
