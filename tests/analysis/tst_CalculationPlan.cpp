// Checks before a calculation: the inputs that prevent it, the order of the checks, and the
// variant, the rows and the fit range that a calculation uses.
#include "analysis/CalculationPlan.h"

#include "support/PanelInputs.h"

#include <QTest>

#include <limits>

using namespace tests;
using analysis::CalculationPlan;
using analysis::FitPlan;
using analysis::Message;
using analysis::MessageId;
using analysis::Variant;

namespace
{

using Messages = QList<Message>;
using Rows = QList<int>;

void refused(const char* name, const PanelInputs& inputs, const Messages& messages)
{
    QTest::newRow(name) << inputs << messages;
}

void runs(const char* name, const PanelInputs& inputs, Variant variant, const Rows& others = {},
          int vRow = -1)
{
    QTest::newRow(name) << inputs << variant << others << vRow;
}

void addRefusalColumns()
{
    QTest::addColumn<PanelInputs>("inputs");
    QTest::addColumn<Messages>("messages");
}

void addRunColumns()
{
    QTest::addColumn<PanelInputs>("inputs");
    QTest::addColumn<Variant>("variant");
    QTest::addColumn<Rows>("others");
    QTest::addColumn<int>("vRow");
}

// The first four rows are in use and the third row is the V row; no row has a map.
PanelInputs four()
{
    return fourPointInputs();
}

PanelInputs five()
{
    return four().useRows({0, 1, 2, 3, 4});
}

PanelInputs linear()
{
    return four().chooseNonEquivalent(true);
}

PanelInputs victoreen()
{
    return four().chooseNonEquivalent(false);
}

// The inputs of four(), with a map in each of the eight rows.
PanelInputs fourMaps()
{
    return four().addMaps(8);
}

PanelInputs linearMaps()
{
    return linear().addMaps(8);
}

// The inputs of four(), with a fit range marked by the last two rows.
PanelInputs fit()
{
    PanelInputs inputs = four();
    inputs.points[6].inFit = true;
    inputs.points[7].inFit = true;
    return inputs;
}

PanelInputs fitOfOneRow()
{
    PanelInputs inputs = fit();
    inputs.points[6].inFit = false;
    return inputs;
}

Rows rowsOf(const CalculationPlan& plan)
{
    Rows rows;
    for (const analysis::PointNumbers& row : plan.rows.others) {
        rows.append(row.row);
    }
    return rows;
}

Message few(int valid)
{
    return {MessageId::FewReferences, valid};
}

Message wrongCount(int selected, int needed)
{
    return {MessageId::WrongCount, selected, needed};
}

Message tooFewRows(int selected, int needed)
{
    return {MessageId::TooFewRows, selected, needed};
}

Message invalid(int reference)
{
    return {MessageId::ReferenceInvalid, reference};
}

const Message firstInvalid{MessageId::FirstReferenceInvalid};
const Message secondInvalid{MessageId::SecondReferenceInvalid};
const Message targetInvalid{MessageId::TargetInvalid};

} // namespace

class tst_CalculationPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void targetWithUnusableInputsIsRefused_data();
    void targetWithUnusableInputsIsRefused();
    void planTargetSelectsVariantAndRows_data();
    void planTargetSelectsVariantAndRows();
    void targetReadsTheNumbersOfTheUsedReferences();

    void mapWithUnusableInputsIsRefused_data();
    void mapWithUnusableInputsIsRefused();
    void planMapSelectsVariantAndRows_data();
    void planMapSelectsVariantAndRows();
    void nonEquivalentMapNeedsOneMoreRowForEachAddedReference_data();
    void nonEquivalentMapNeedsOneMoreRowForEachAddedReference();

    void fitWithUnusableInputsIsRefused_data();
    void fitWithUnusableInputsIsRefused();
    void fitRangeSpansTheMarkedRows();
    void fitWithAnInvalidTargetIsAccepted();
};

void tst_CalculationPlan::targetWithUnusableInputsIsRefused_data()
{
    addRefusalColumns();
    const Messages noVPoint{{MessageId::NoTargetVPoint}};
    refused("no row: only the V point is reported", four().useRows({}), noVPoint);
    refused("V row not in use", four().useRows({0, 1, 3}), noVPoint);
    refused("non-equivalent method, no V row", linear().markVRows({}), noVPoint);
    refused("the V point is checked before references and target",
            four().markVRows({}).makeInvalid({0, 1}).makeTargetInvalid(), noVPoint);
    refused("invalid first reference", four().makeInvalid({0}), {few(1), firstInvalid});
    refused("invalid second reference: the count, then its name", four().makeInvalid({1}),
            {few(1), secondInvalid});
    refused("no valid reference: the count, then the first one's name", four().makeInvalid({0, 1}),
            {few(0), firstInvalid});
    refused("an invalid reference before two valid ones",
            four().useFirstReferences(3).makeInvalid({0}), {firstInvalid});
    refused("one used reference stops after the count", four().useReferences({0}), {few(1)});
    refused("one used reference stops before target and rows",
            four().useReferences({0}).makeTargetInvalid().useRows({2}), {few(1)});
    refused("non-equivalent method, one used reference", linear().useReferences({0}), {few(1)});
    refused("no used reference stops after the count", four().useReferences({}), {few(0)});
    refused("invalid target", four().makeTargetInvalid(), {targetInvalid});
    refused("references are checked before the target", four().makeInvalid({1}).makeTargetInvalid(),
            {few(1), secondInvalid});
    refused("the target is checked before the number of rows",
            four().makeTargetInvalid().useRows({2}), {targetInvalid});
    refused("two rows: the message says four although three are enough", four().useRows({0, 2}),
            {wrongCount(2, 4)});
    refused("one row", four().useRows({2}), {wrongCount(1, 4)});
    refused("five rows with exact on", five().chooseFourPoints(true, false), {wrongCount(5, 4)});
    refused("five rows with neither radio on", five().chooseFourPoints(false, false),
            {wrongCount(5, 4)});
    refused("linear background, three rows", linear().useRows({0, 1, 2}), {wrongCount(3, 4)});
    refused("linear background, three rows and four references",
            linear().useRows({0, 1, 2}).useFirstReferences(4), {wrongCount(3, 4)});
    refused("Victoreen background, four rows", victoreen(), {wrongCount(4, 5)});
    refused("three points, two V rows: one other row is left",
            four().useRows({0, 1, 2}).markVRows({0, 2}), {wrongCount(2, 3)});
    refused("exact, two V rows: two other rows are left",
            four().chooseFourPoints(true, false).markVRows({0, 2}), {wrongCount(3, 4)});
    refused("non-equivalent, invalid third of four references",
            linear().useFirstReferences(4).makeInvalid({2}), {invalid(2)});
    refused("non-equivalent, rows are checked before the third reference",
            victoreen().useFirstReferences(4).makeInvalid({2}), {wrongCount(4, 5)});
}

void tst_CalculationPlan::targetWithUnusableInputsIsRefused()
{
    QFETCH(PanelInputs, inputs);
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.variant);
}

void tst_CalculationPlan::planTargetSelectsVariantAndRows_data()
{
    addRunColumns();
    runs("three rows", four().useRows({0, 2, 3}), Variant::ThreePoints, {0, 3}, 2);
    runs("three rows with exact on: still three points",
         four().useRows({0, 1, 2}).chooseFourPoints(true, false), Variant::ThreePoints, {0, 1}, 2);
    runs("four rows, exact", four().chooseFourPoints(true, false), Variant::ExactFourPoints,
         {0, 1, 3}, 2);
    runs("four rows, least square", four(), Variant::LeastSquare, {0, 1, 3}, 2);
    runs("four rows with neither radio on", four().chooseFourPoints(false, false),
         Variant::LeastSquare, {0, 1, 3}, 2);
    runs("five rows", four().useRows({0, 1, 2, 5, 7}), Variant::LeastSquare, {0, 1, 5, 7}, 2);
    runs("two V rows: the later one counts, the earlier one is left out", four().markVRows({1, 2}),
         Variant::LeastSquare, {0, 3}, 2);
    runs("an invalid reference after the first two is ignored",
         four().useFirstReferences(3).makeInvalid({2}), Variant::LeastSquare, {0, 1, 3}, 2);
    runs("linear background, four rows for any number of references",
         linear().useFirstReferences(4), Variant::NonEquivalentLinear);
    runs("Victoreen background, five rows for any number of references",
         five().chooseNonEquivalent(false).useFirstReferences(4), Variant::NonEquivalentVictoreen);
    runs("non-equivalent, an invalid reference after the first two is ignored",
         linear().useFirstReferences(3).makeInvalid({2}), Variant::NonEquivalentLinear);
}

void tst_CalculationPlan::planTargetSelectsVariantAndRows()
{
    QFETCH(PanelInputs, inputs);
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.variant.has_value());
    QTEST(*plan.variant, "variant");
    QTEST(rowsOf(plan), "others");
    QTEST(plan.rows.v.row, "vRow");
}

void tst_CalculationPlan::targetReadsTheNumbersOfTheUsedReferences()
{
    PanelInputs inputs = four().useRows({0, 1, 2}).useFirstReferences(3).useReferences({1, 2});
    setJump(inputs.spectra[2], 4.0);
    inputs.points[1].mut = {90, 91, 92, 93};
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    const analysis::PointNumbers& row = plan.rows.others.at(1);
    QCOMPARE(row.energy, 1.0);
    QCOMPARE(row.r1, 91.0);
    QCOMPARE(row.r2, 92.0);
    QCOMPARE(plan.rows.r, 0.25);
}

void tst_CalculationPlan::mapWithUnusableInputsIsRefused_data()
{
    addRefusalColumns();
    const Messages noVPoint{{MessageId::NoMapVPoint}};
    refused("no V row", fourMaps().markVRows({}), noVPoint);
    refused("V row without a map", fourMaps().removeMap(2), noVPoint);
    refused("the V point is checked before the references",
            fourMaps().markVRows({}).makeInvalid({0}), noVPoint);
    refused("two rows", fourMaps().useRows({1, 2}), {wrongCount(2, 4)});
    refused("a row without a map is not selected", fourMaps().useRows({0, 1, 2}).removeMap(0),
            {wrongCount(2, 4)});
    refused("five rows with exact on", five().addMaps(8).chooseFourPoints(true, false),
            {wrongCount(5, 4)});
    refused("the count is followed by the check of the references", fourMaps().makeInvalid({0}),
            {few(1), invalid(0)});
    refused("every used reference is checked, numbered from 0", fourMaps().useReferences({0, 1, 2}),
            {invalid(2)});
    refused("a gap in the used references: the message names the row after it",
            fourMaps().useFirstReferences(3).useReferences({0, 2}), {invalid(2)});
    refused("an unused reference before the used ones",
            fourMaps().useFirstReferences(3).useReferences({1, 2}), {invalid(2)});
    refused("only the first reference: stops after the count", fourMaps().useReferences({0}),
            {few(1)});
    refused("no used reference stops after the count", fourMaps().useReferences({}), {few(0)});
    refused("one used reference and two rows: the count, then the rows",
            fourMaps().useReferences({0}).useRows({1, 2}), {few(1), wrongCount(2, 4)});
    refused("only the second reference: the count, then its number 1",
            fourMaps().useReferences({1}), {few(1), invalid(1)});
    refused("three points, two V rows: one other row is left",
            fourMaps().useRows({0, 1, 2}).markVRows({0, 2}), {wrongCount(2, 3)});
    refused("exact, two V rows: two other rows are left",
            fourMaps().chooseFourPoints(true, false).markVRows({0, 2}), {wrongCount(3, 4)});
    refused("non-equivalent, no V row: only the number of rows is checked",
            linearMaps().markVRows({}).useRows({0, 1, 3}), {tooFewRows(3, 4)});
    refused("non-equivalent, no row", linearMaps().useRows({}), {tooFewRows(0, 4)});
    refused("non-equivalent, a row without a map does not count", linearMaps().removeMap(1),
            {tooFewRows(3, 4)});
    refused("non-equivalent, an invalid reference", linearMaps().makeInvalid({1}),
            {few(1), invalid(1)});
    refused("non-equivalent, one used reference and enough rows for it",
            linearMaps().useReferences({0}), {few(1)});
    refused("non-equivalent, no used reference and one row: the count, then the rows",
            linearMaps().useReferences({}).useRows({3}), {few(0), tooFewRows(1, 2)});
}

void tst_CalculationPlan::mapWithUnusableInputsIsRefused()
{
    QFETCH(PanelInputs, inputs);
    const CalculationPlan plan = analysis::planMap(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.variant);
}

void tst_CalculationPlan::planMapSelectsVariantAndRows_data()
{
    addRunColumns();
    runs("three rows", fourMaps().useRows({0, 2, 3}), Variant::ThreePoints, {0, 3}, 2);
    runs("four rows, exact", fourMaps().chooseFourPoints(true, false), Variant::ExactFourPoints,
         {0, 1, 3}, 2);
    runs("four rows with neither radio on", fourMaps().chooseFourPoints(false, false),
         Variant::LeastSquare, {0, 1, 3}, 2);
    runs("five rows", five().addMaps(8), Variant::LeastSquare, {0, 1, 3, 4}, 2);
    runs("an invalid target is ignored", fourMaps().makeTargetInvalid(), Variant::LeastSquare,
         {0, 1, 3}, 2);
    runs("a used row without a map is still collected", fourMaps().removeMap(0),
         Variant::ThreePoints, {0, 1, 3}, 2);
    runs("a later V row without a map is the V row",
         five().addMaps(8).removeMap(4).markVRows({2, 4}), Variant::LeastSquare, {0, 1, 3}, 4);
    runs("exact ignores the rows after its first three",
         five().addMaps(8).removeMap(4).chooseFourPoints(true, false), Variant::ExactFourPoints,
         {0, 1, 3}, 2);
    runs("non-equivalent without a V row", linearMaps().markVRows({}),
         Variant::NonEquivalentLinear);
}

void tst_CalculationPlan::planMapSelectsVariantAndRows()
{
    QFETCH(PanelInputs, inputs);
    const CalculationPlan plan = analysis::planMap(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.variant.has_value());
    QTEST(*plan.variant, "variant");
    QTEST(rowsOf(plan), "others");
    QTEST(plan.rows.v.row, "vRow");
}

void tst_CalculationPlan::nonEquivalentMapNeedsOneMoreRowForEachAddedReference_data()
{
    QTest::addColumn<bool>("isLinear");
    QTest::addColumn<int>("references");
    QTest::addColumn<int>("bound");
    QTest::newRow("linear, two references") << true << 2 << 4;
    QTest::newRow("linear, three references") << true << 3 << 5;
    QTest::newRow("linear, four references") << true << 4 << 6;
    QTest::newRow("Victoreen, two references") << false << 2 << 5;
    QTest::newRow("Victoreen, three references") << false << 3 << 6;
    QTest::newRow("Victoreen, four references") << false << 4 << 7;
}

void tst_CalculationPlan::nonEquivalentMapNeedsOneMoreRowForEachAddedReference()
{
    QFETCH(bool, isLinear);
    QFETCH(int, references);
    QFETCH(int, bound);
    PanelInputs inputs = fourMaps().chooseNonEquivalent(isLinear).useFirstReferences(references);
    inputs.useRows(firstRows(bound - 1));
    const CalculationPlan below = analysis::planMap(inputs.state());
    QCOMPARE(below.messages, Messages{tooFewRows(bound - 1, bound)});
    QVERIFY(!below.variant);
    inputs.useRows(firstRows(bound));
    const CalculationPlan at = analysis::planMap(inputs.state());
    QCOMPARE(at.messages, Messages());
    QVERIFY(at.variant ==
            (isLinear ? Variant::NonEquivalentLinear : Variant::NonEquivalentVictoreen));
}

void tst_CalculationPlan::fitWithUnusableInputsIsRefused_data()
{
    addRefusalColumns();
    const Messages noRange{{MessageId::NoFitRange}};
    const auto fewReferences = [](int valid) {
        return Messages{{MessageId::FewFitReferences, valid}};
    };
    PanelInputs noNumbers = fit();
    noNumbers.points[6].energy = noNumbers.points[7].energy =
        std::numeric_limits<double>::quiet_NaN();
    refused("no marked row", four(), noRange);
    refused("one marked row", fitOfOneRow(), noRange);
    refused("NaN energies", noNumbers, noRange);
    refused("the range is checked before the references", fitOfOneRow().useReferences({}), noRange);
    refused("no used reference", fit().useReferences({}), fewReferences(0));
    refused("one used reference", fit().useReferences({1}), fewReferences(1));
    refused("one valid reference", fit().makeInvalid({0}), fewReferences(1));
    refused("three used, one valid", fit().useReferences({0, 1, 2}).makeInvalid({1}),
            fewReferences(1));
}

void tst_CalculationPlan::fitWithUnusableInputsIsRefused()
{
    QFETCH(PanelInputs, inputs);
    const FitPlan plan = analysis::planFit(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.range);
}

void tst_CalculationPlan::fitRangeSpansTheMarkedRows()
{
    PanelInputs inputs = four();
    for (const int row : {1, 3, 7}) {
        inputs.points[row].inFit = true; // the last row is not in use
    }
    inputs.points[7].energy = 4;
    const FitPlan plan = analysis::planFit(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.range.has_value());
    QCOMPARE(plan.range->energies.low, 1.0);
    QCOMPARE(plan.range->energies.high, 5.0);
}

void tst_CalculationPlan::fitWithAnInvalidTargetIsAccepted()
{
    QVERIFY(analysis::planFit(fit().makeTargetInvalid().state()).range.has_value());
}

QTEST_APPLESS_MAIN(tst_CalculationPlan)
#include "tst_CalculationPlan.moc"
