// The linear combination fit in the panel: the inputs it reads, and the results it shows and
// stores. Its checks are tested in tst_CalculationPlan, its numbers in tst_FitTarget and
// tst_LinearFit, its texts in tst_Wording.
#include "support/CalculationPanel.h"
#include "support/FitMixes.h"

#include <QTest>

#include <cmath>

using namespace tests;
using namespace tests::fits;

namespace
{

const QString fewSpectra =
    QStringLiteral("Number of Valid Reference files is %1, which is less than 2");
const QString defaultText =
    QStringLiteral("Result of LCF ::  0.400 :  0.600, Valence =  4.000, Base =  0.125");

// Inputs for which both a three-point calculation and the fit can run.
PanelInputs threePointsAndFit()
{
    PanelInputs inputs = fitInputs();
    const PanelInputs points = threePointInputs();
    for (const int row : {0, 1, 2}) {
        inputs.points[row] = points.points.at(row);
    }
    return inputs;
}

bool near(double value, double expected)
{
    return std::abs(value - expected) < 1e-9;
}

QList<double> curveEnergies(const FourPs& panel)
{
    QList<double> result;
    for (const MutPoint& point : panel.LCFMut ? panel.LCFMut->points : QList<MutPoint>()) {
        result.append(point.energy);
    }
    return result;
}

} // namespace

class tst_FourPsLcf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { resetPanel(*m_shared); }

    void lcfButtonFitsTheTargetSpectrum();
    void messageIsSentBeforeTheResultIsShown();
    void nonNumericTextCountsAsZero();
    void curveHasDefaultSettingsAndOnePointPerFittedPoint();
    void curveIsReplacedByTheNextRun();

    void eachRunAddsOneComparisonPoint();
    void comparisonPointStoresTargetResultAndColour();
    void comparisonPointAfterARefusedTargetStoresTheEarlierResult();
    void clearingRemovesComparisonPointsAndResetsTheColour();
    void newColourWrapsAtTheNumberOfColours();

    void refusedCalculationIsReportedAndChangesNoResult_data();
    void refusedCalculationIsReportedAndChangesNoResult();
    void calcBothSetsLimitsThenRunsMapTargetAndFit();
    void calcBothFitsAfterMapAndTargetAreRefused();

private:
    SharedPanel m_shared;
    FourPs& panel = *m_shared;
};

// So far, only the calculations that the constructor starts have run in the shared panel.
void tst_FourPsLcf::initTestCase()
{
    QVERIFY(!panel.LCFMut);
    QVERIFY(panel.LCFvs4PS.isEmpty());
    QCOMPARE(panel.LCFColor, 0);
    QCOMPARE(panel.TargetV, 0.0);
    QCOMPARE(panel.TargetT, 0.0);
    QCOMPARE(panel.Colors.colors.size(), 45);
}

// The result field shows repeated spaces; the message has single spaces.
void tst_FourPsLcf::lcfButtonFitsTheTargetSpectrum()
{
    enterInputs(panel, fitInputs());
    QTest::mouseClick(panel.ui.LCFB, Qt::LeftButton);
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(messages(panel), QStringList{defaultText.simplified()});
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QVERIFY(panel.ui.CalcRes->text().isEmpty());
    QCOMPARE(panel.TargetV, 0.0);
}

void tst_FourPsLcf::messageIsSentBeforeTheResultIsShown()
{
    enterInputs(panel, fitInputs());
    QStringList messagesByThen;
    const auto watch = connect(panel.ui.LCFRes, &QLineEdit::textChanged, this,
                               [&] { messagesByThen = messages(panel); });
    panel.lcf();
    disconnect(watch);
    QCOMPARE(messagesByThen, QStringList{defaultText.simplified()});
}

void tst_FourPsLcf::nonNumericTextCountsAsZero()
{
    enterInputs(panel, fitInputs());
    panel.Refs.RefRows.at(1)->Valence->setText("four");
    panel.EPoints.at(7)->Energy->setText("low");
    panel.EPoints.at(6)->Energy->setText("4");
    panel.lcf();
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfValence, 1));
    QCOMPARE(curveEnergies(panel), (QList<double>{1, 2, 3, 4}));
}

void tst_FourPsLcf::curveHasDefaultSettingsAndOnePointPerFittedPoint()
{
    PanelInputs inputs = fitInputs();
    setRange(inputs, 2, 6);
    enterInputs(panel, inputs);
    panel.lcf();
    const QList<double> expected = mixed({0.5, 0.75}, 0.125);
    const AMutE& fitted = *panel.LCFMut;
    QCOMPARE(fitted.points.size(), 5);
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
    PanelInputs inputs = fitInputs();
    enterInputs(panel, inputs);
    panel.lcf();
    panel.LCFMut->valid = true;
    panel.LCFMut->dE = 5;
    setRange(inputs, 3, 4);
    enterInputs(panel, inputs);
    panel.lcf();
    QCOMPARE(curveEnergies(panel), (QList<double>{3, 4}));
    QVERIFY(!panel.LCFMut->valid);
    QCOMPARE(panel.LCFMut->dE, 0.0);
}

void tst_FourPsLcf::eachRunAddsOneComparisonPoint()
{
    PanelInputs inputs = fitInputs();
    enterInputs(panel, inputs);
    panel.lcf();
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 2);
    setTarget(inputs, {1.5, 0.5}, 0);
    enterInputs(panel, inputs);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 3);
    QVERIFY(near(panel.LCFvs4PS.at(0).lcfA, 0.4));
    QVERIFY(near(panel.LCFvs4PS.at(1).lcfA, 0.4));
    QVERIFY(near(panel.LCFvs4PS.at(2).lcfA, 0.75));
}

void tst_FourPsLcf::comparisonPointStoresTargetResultAndColour()
{
    enterInputs(panel, fitInputs());
    panel.TargetV = 0.375;
    panel.TargetT = 2.75;
    panel.LCFColor = 7;
    panel.lcf();
    const LCFPoint& point = panel.LCFvs4PS.at(0);
    QCOMPARE(point.fourPsA, 0.375);
    QCOMPARE(point.fourPsValence, 2.75);
    QCOMPARE(point.color, 7);
    QCOMPARE(panel.LCFColor, 7);
}

void tst_FourPsLcf::comparisonPointAfterARefusedTargetStoresTheEarlierResult()
{
    PanelInputs inputs = threePointsAndFit();
    inputs.useRows({});
    enterInputs(panel, inputs);
    panel.calcBoth();
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsA, 0.0);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsValence, 0.0);
    enterInputs(panel, threePointsAndFit());
    panel.calcTarget();
    enterInputs(panel, inputs);
    panel.calcBoth();
    QCOMPARE(panel.LCFvs4PS.size(), 2);
    QCOMPARE(panel.LCFvs4PS.at(1).fourPsA, 0.5);
    QCOMPARE(panel.LCFvs4PS.at(1).fourPsValence, 3.0); // a = 0.5: the mean of the valences 2 and 4
}

void tst_FourPsLcf::clearingRemovesComparisonPointsAndResetsTheColour()
{
    enterInputs(panel, fitInputs());
    panel.lcf();
    panel.newColorLCFvs4PS(nullptr);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.at(0).color, 0);
    QCOMPARE(panel.LCFvs4PS.at(1).color, 1);
    panel.clearLCFvs4PS(nullptr);
    QVERIFY(panel.LCFvs4PS.isEmpty());
    QCOMPARE(panel.LCFColor, 0);
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(curveEnergies(panel).size(), 7);
    panel.lcf();
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFvs4PS.at(0).color, 0);
}

void tst_FourPsLcf::newColourWrapsAtTheNumberOfColours()
{
    for (const int count : {45, 3}) {
        panel.Colors.colors.resize(count);
        panel.LCFColor = 0;
        for (int color = 1; color < count; ++color) {
            panel.newColorLCFvs4PS(nullptr);
            QCOMPARE(panel.LCFColor, color);
        }
        panel.newColorLCFvs4PS(nullptr);
        QCOMPARE(panel.LCFColor, 0);
    }
}

void tst_FourPsLcf::refusedCalculationIsReportedAndChangesNoResult_data()
{
    QTest::addColumn<PanelInputs>("inputs");
    QTest::addColumn<QString>("message");
    PanelInputs oneRow = fitInputs({1, 1}, 0);
    oneRow.points[6].inFit = false;
    QTest::newRow("one marked row") << oneRow << noFitRange;
    QTest::newRow("no used reference")
        << fitInputs({1, 1}, 0).useReferences({}) << fewSpectra.arg(0);
    QTest::newRow("one valid reference")
        << fitInputs({1, 1}, 0).makeInvalid({0}) << fewSpectra.arg(1);
}

void tst_FourPsLcf::refusedCalculationIsReportedAndChangesNoResult()
{
    QFETCH(PanelInputs, inputs);
    enterInputs(panel, fitInputs());
    panel.LCFColor = 3;
    panel.lcf();
    clearMessages(panel);
    const AMutE* before = panel.LCFMut;
    enterInputs(panel, inputs);
    panel.lcf();
    QFETCH(QString, message);
    QCOMPARE(messages(panel), QStringList{message});
    QCOMPARE(panel.ui.LCFRes->text(), defaultText);
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFColor, 3);
    QCOMPARE(panel.LCFMut, before);
    QCOMPARE(curveEnergies(panel).size(), 7);
}

void tst_FourPsLcf::calcBothSetsLimitsThenRunsMapTargetAndFit()
{
    // calcBoth() replaces the entered limit 70 by the automatic limits of the valence
    // histogram. For the valences 2 and 4, the bin centres then go from 2 - 0.5 = 1.5 to
    // 4 + 0.5 = 4.5. With 51 bins, the bin width is 3 / 50 = 0.06, so the lower edge of bin 0
    // is 1.5 - 0.03 = 1.47.
    PanelInputs inputs = threePointsAndFit();
    inputs.addMaps(3);
    enterInputs(panel, inputs);
    panel.ui.HgAFrom->setText("70");
    panel.calcBoth();
    QVERIFY(near(panel.HistV->minV, 1.47));
    QCOMPARE(panel.BaseData.rows.size(), 1);
    QCOMPARE(panel.TargetV, 0.5);
    QCOMPARE(panel.LCFvs4PS.size(), 1);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsA, 0.5);
    QCOMPARE(panel.LCFvs4PS.at(0).fourPsValence, 3.0);
    panel.EPoints.at(0)->loaded = false;
    clearMessages(panel);
    panel.calcBoth();
    QCOMPARE(messages(panel), (QStringList{wrongCount.arg(2).arg(4), panel.ui.CalcRes->text(),
                                           defaultText.simplified()}));
}

void tst_FourPsLcf::calcBothFitsAfterMapAndTargetAreRefused()
{
    PanelInputs inputs = threePointsAndFit();
    inputs.useRows({});
    enterInputs(panel, inputs);
    panel.calcBoth();
    QCOMPARE(messages(panel), (QStringList{"V Point is not selected", "V Point is not selected.",
                                           defaultText.simplified()}));
    QCOMPARE(panel.LCFvs4PS.size(), 1);
}

QTEST_MAIN(tst_FourPsLcf)
#include "tst_FourPsLcf.moc"
