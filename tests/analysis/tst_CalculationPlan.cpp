// What refuses a calculation, in which order, and which rows it runs on.
#include "analysis/CalculationPlan.h"

#include "support/Mixes.h"
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

// What a user does before the calculation.
struct Change {
    void (*apply)(PanelInputs& inputs);
};

void choose(PanelInputs& inputs, bool exact, bool leastSquare)
{
    inputs.radios.exact = exact;
    inputs.radios.leastSquare = leastSquare;
}

void chooseNonEquivalent(PanelInputs& inputs, bool linear)
{
    inputs.radios.nonEquivalent = true;
    inputs.radios.linearBackground = linear;
}

void makeInvalid(PanelInputs& inputs, const Rows& references)
{
    for (const int row : references) {
        inputs.spectra.at(static_cast<std::size_t>(row)).valid = false;
    }
}

// As many valid references in use, from the first.
void useValidReferences(PanelInputs& inputs, int count)
{
    for (int i = 0; i < count; ++i) {
        setJump(inputs.spectra.at(static_cast<std::size_t>(i)), 1.0);
    }
    useReferences(inputs, mixes::firstRows(count));
}

// All eight rows with a map, as many in use, row 3 as V row.
PanelInputs inputsWithMaps(int rows)
{
    PanelInputs inputs = fourPointInputs();
    addMaps(inputs, 8);
    useRows(inputs, mixes::firstRows(rows));
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

void newRow(const char* name, void (*change)(PanelInputs&), const Messages& messages)
{
    QTest::newRow(name) << Change{change} << messages;
}

void newRow(const char* name, void (*change)(PanelInputs&), Variant variant, const Rows& others,
            int vRow)
{
    QTest::newRow(name) << Change{change} << variant << others << vRow;
}

void addRunColumns()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<Variant>("variant");
    QTest::addColumn<Rows>("others");
    QTest::addColumn<int>("vRow");
}

Message fewReferences(int valid)
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

} // namespace

class tst_CalculationPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void targetIsRefused_data();
    void targetIsRefused();
    void targetRuns_data();
    void targetRuns();
    void numbersAreThoseOfTheUsedReferences();

    void mapIsRefused_data();
    void mapIsRefused();
    void mapRuns_data();
    void mapRuns();
    void mapBoundFollowsTheReferences_data();
    void mapBoundFollowsTheReferences();

    void fitIsRefused_data();
    void fitIsRefused();
    void fitRunsBetweenTheMarkedRows();
    void fitDoesNotAskForTheTarget();
};

void tst_CalculationPlan::targetIsRefused_data()
{
    using In = PanelInputs;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Messages>("messages");
    const Messages noVPoint{{MessageId::NoTargetVPoint}};
    newRow(
        "no row: the V point and nothing else", [](In& in) { useRows(in, {}); }, noVPoint);
    newRow(
        "V row not in use",
        [](In& in) {
            useRows(in, {0, 1, 3});
        },
        noVPoint);
    newRow(
        "no V row, non-equivalent method too",
        [](In& in) {
            chooseNonEquivalent(in, true);
            markVRows(in, {});
        },
        noVPoint);
    newRow(
        "V point before references and target",
        [](In& in) {
            markVRows(in, {});
            makeInvalid(in, {0, 1});
            in.target.valid = false;
        },
        noVPoint);
    newRow("first reference", [](In& in) { makeInvalid(in, {0}); },
           {fewReferences(1), firstInvalid});
    newRow("one valid reference is counted, then the second named",
           [](In& in) { makeInvalid(in, {1}); }, {fewReferences(1), secondInvalid});
    newRow("both references: the count does not stop the check of the first",
           [](In& in) {
               makeInvalid(in, {0, 1});
           },
           {fewReferences(0), firstInvalid});
    newRow("an invalid reference ahead of two valid ones",
           [](In& in) {
               useValidReferences(in, 3);
               makeInvalid(in, {0});
           },
           {firstInvalid});
    newRow("one used reference stops after the count", [](In& in) { useReferences(in, {0}); },
           {fewReferences(1)});
    newRow("no used reference stops after the count", [](In& in) { useReferences(in, {}); },
           {fewReferences(0)});
    newRow("target", [](In& in) { in.target.valid = false; }, {{MessageId::TargetInvalid}});
    newRow("references before the target",
           [](In& in) {
               makeInvalid(in, {1});
               in.target.valid = false;
           },
           {fewReferences(1), secondInvalid});
    newRow("target before the number of rows",
           [](In& in) {
               in.target.valid = false;
               useRows(in, {2});
           },
           {{MessageId::TargetInvalid}});
    newRow("two rows, though three would do",
           [](In& in) {
               useRows(in, {0, 2});
           },
           {wrongCount(2, 4)});
    newRow("one row", [](In& in) { useRows(in, {2}); }, {wrongCount(1, 4)});
    newRow("five rows with exact on",
           [](In& in) {
               useRows(in, {0, 1, 2, 3, 4});
               choose(in, true, false);
           },
           {wrongCount(5, 4)});
    newRow("five rows with neither radio on",
           [](In& in) {
               useRows(in, {0, 1, 2, 3, 4});
               choose(in, false, false);
           },
           {wrongCount(5, 4)});
    newRow("linear background, three rows",
           [](In& in) {
               chooseNonEquivalent(in, true);
               useRows(in, {0, 1, 2});
           },
           {wrongCount(3, 4)});
    newRow("linear background, three rows and four references",
           [](In& in) {
               chooseNonEquivalent(in, true);
               useValidReferences(in, 4);
               useRows(in, {0, 1, 2});
           },
           {wrongCount(3, 4)});
    newRow("Victoreen background, four rows", [](In& in) { chooseNonEquivalent(in, false); },
           {wrongCount(4, 5)});
    newRow("three points, two V rows that leave one other",
           [](In& in) {
               useRows(in, {0, 1, 2});
               markVRows(in, {0, 2});
           },
           {wrongCount(2, 3)});
    newRow("exact, two V rows that leave two others",
           [](In& in) {
               choose(in, true, false);
               markVRows(in, {0, 2});
           },
           {wrongCount(3, 4)});
    newRow("non-equivalent, an invalid reference among the first",
           [](In& in) {
               chooseNonEquivalent(in, true);
               useValidReferences(in, 4);
               makeInvalid(in, {2});
           },
           {invalid(2)});
    newRow("non-equivalent, rows before the further references",
           [](In& in) {
               chooseNonEquivalent(in, false);
               useValidReferences(in, 4);
               makeInvalid(in, {2});
           },
           {wrongCount(4, 5)});
}

void tst_CalculationPlan::targetIsRefused()
{
    QFETCH(Change, change);
    PanelInputs inputs = fourPointInputs();
    change.apply(inputs);
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.variant);
}

void tst_CalculationPlan::targetRuns_data()
{
    using In = PanelInputs;
    addRunColumns();
    newRow(
        "three rows",
        [](In& in) {
            useRows(in, {0, 2, 3});
        },
        Variant::ThreePoints, {0, 3}, 2);
    newRow(
        "three rows stay three points with exact on",
        [](In& in) {
            useRows(in, {0, 1, 2});
            choose(in, true, false);
        },
        Variant::ThreePoints, {0, 1}, 2);
    newRow(
        "four rows, exact", [](In& in) { choose(in, true, false); }, Variant::ExactFourPoints,
        {0, 1, 3}, 2);
    newRow(
        "four rows, least square", [](In&) {}, Variant::LeastSquare, {0, 1, 3}, 2);
    newRow(
        "four rows with neither radio on", [](In& in) { choose(in, false, false); },
        Variant::LeastSquare, {0, 1, 3}, 2);
    newRow(
        "five rows",
        [](In& in) {
            useRows(in, {0, 1, 2, 5, 7});
        },
        Variant::LeastSquare, {0, 1, 5, 7}, 2);
    newRow(
        "two V rows: the later one counts, the earlier one is left out",
        [](In& in) {
            markVRows(in, {1, 2});
        },
        Variant::LeastSquare, {0, 3}, 2);
    newRow(
        "an invalid reference behind the first two plays no part",
        [](In& in) {
            useValidReferences(in, 3);
            makeInvalid(in, {2});
        },
        Variant::LeastSquare, {0, 1, 3}, 2);
    newRow(
        "linear background, four rows whatever the references",
        [](In& in) {
            chooseNonEquivalent(in, true);
            useValidReferences(in, 4);
        },
        Variant::NonEquivalentLinear, {}, -1);
    newRow(
        "Victoreen background, five rows whatever the references",
        [](In& in) {
            chooseNonEquivalent(in, false);
            useValidReferences(in, 4);
            useRows(in, {0, 1, 2, 3, 4});
        },
        Variant::NonEquivalentVictoreen, {}, -1);
    newRow(
        "non-equivalent, an invalid reference behind the first",
        [](In& in) {
            chooseNonEquivalent(in, true);
            useValidReferences(in, 3);
            makeInvalid(in, {2});
        },
        Variant::NonEquivalentLinear, {}, -1);
}

// None of the rows has a map.
void tst_CalculationPlan::targetRuns()
{
    QFETCH(Change, change);
    PanelInputs inputs = fourPointInputs();
    change.apply(inputs);
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.variant.has_value());
    QTEST(*plan.variant, "variant");
    QTEST(rowsOf(plan), "others");
    QTEST(plan.rows.v.row, "vRow");
}

void tst_CalculationPlan::numbersAreThoseOfTheUsedReferences()
{
    PanelInputs inputs = fourPointInputs();
    useRows(inputs, {0, 1, 2});
    setJump(inputs.spectra[2], 4.0);
    useReferences(inputs, {1, 2});
    inputs.points[1].mut = {90, 91, 92, 93};
    const CalculationPlan plan = analysis::planTarget(inputs.state());
    const analysis::PointNumbers& row = plan.rows.others.at(1);
    QCOMPARE(row.energy, 1.0);
    QCOMPARE(row.r1, 91.0);
    QCOMPARE(row.r2, 92.0);
    QCOMPARE(plan.rows.r, 0.25);
}

void tst_CalculationPlan::mapIsRefused_data()
{
    using In = PanelInputs;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Messages>("messages");
    const Messages noVPoint{{MessageId::NoMapVPoint}};
    newRow(
        "no V row", [](In& in) { markVRows(in, {}); }, noVPoint);
    newRow(
        "V row without a map", [](In& in) { in.points[2].hasMap = false; }, noVPoint);
    newRow(
        "V point before the references",
        [](In& in) {
            markVRows(in, {});
            makeInvalid(in, {0});
        },
        noVPoint);
    newRow("two rows", [](In& in) { useRows(in, {1, 2}); }, {wrongCount(2, 4)});
    newRow("a row without a map is not selected",
           [](In& in) {
               useRows(in, {0, 1, 2});
               in.points[0].hasMap = false;
           },
           {wrongCount(2, 4)});
    newRow("five rows with exact on",
           [](In& in) {
               useRows(in, {0, 1, 2, 3, 4});
               choose(in, true, false);
           },
           {wrongCount(5, 4)});
    newRow("the count is followed by the check of the references",
           [](In& in) { makeInvalid(in, {0}); }, {fewReferences(1), invalid(0)});
    newRow("every used reference is checked and named from 0",
           [](In& in) {
               useReferences(in, {0, 1, 2});
           },
           {invalid(2)});
    newRow("a gap in the used references names the row without a counterpart",
           [](In& in) {
               setJump(in.spectra[2], 1.0);
               useReferences(in, {0, 2});
           },
           {invalid(2)});
    newRow("an unused reference ahead",
           [](In& in) {
               setJump(in.spectra[2], 1.0);
               useReferences(in, {1, 2});
           },
           {invalid(2)});
    newRow("the first reference alone stops after the count",
           [](In& in) { useReferences(in, {0}); }, {fewReferences(1)});
    newRow("no used reference stops after the count", [](In& in) { useReferences(in, {}); },
           {fewReferences(0)});
    newRow("one used reference and two rows: the count, then the rows",
           [](In& in) {
               useReferences(in, {0});
               useRows(in, {1, 2});
           },
           {fewReferences(1), wrongCount(2, 4)});
    newRow("the second reference alone is counted, then named 1",
           [](In& in) { useReferences(in, {1}); }, {fewReferences(1), invalid(1)});
    newRow("three points, two V rows that leave one other",
           [](In& in) {
               useRows(in, {0, 1, 2});
               markVRows(in, {0, 2});
           },
           {wrongCount(2, 3)});
    newRow("exact, two V rows that leave two others",
           [](In& in) {
               choose(in, true, false);
               markVRows(in, {0, 2});
           },
           {wrongCount(3, 4)});
    newRow("non-equivalent, no V row: the number of rows is next",
           [](In& in) {
               chooseNonEquivalent(in, true);
               markVRows(in, {});
               useRows(in, {0, 1, 3});
           },
           {tooFewRows(3, 4)});
    newRow("non-equivalent, a row without a map does not count",
           [](In& in) {
               chooseNonEquivalent(in, true);
               in.points[1].hasMap = false;
           },
           {tooFewRows(3, 4)});
    newRow("non-equivalent, an invalid reference",
           [](In& in) {
               chooseNonEquivalent(in, true);
               makeInvalid(in, {1});
           },
           {fewReferences(1), invalid(1)});
    newRow("non-equivalent, one used reference and rows enough for it",
           [](In& in) {
               chooseNonEquivalent(in, true);
               useReferences(in, {0});
           },
           {fewReferences(1)});
    newRow("non-equivalent, no used reference and one row: the count, then the rows",
           [](In& in) {
               chooseNonEquivalent(in, true);
               useReferences(in, {});
               useRows(in, {3});
           },
           {fewReferences(0), tooFewRows(1, 2)});
}

void tst_CalculationPlan::mapIsRefused()
{
    QFETCH(Change, change);
    PanelInputs inputs = inputsWithMaps(4);
    change.apply(inputs);
    const CalculationPlan plan = analysis::planMap(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.variant);
}

void tst_CalculationPlan::mapRuns_data()
{
    using In = PanelInputs;
    addRunColumns();
    newRow(
        "three rows",
        [](In& in) {
            useRows(in, {0, 2, 3});
        },
        Variant::ThreePoints, {0, 3}, 2);
    newRow(
        "four rows, exact", [](In& in) { choose(in, true, false); }, Variant::ExactFourPoints,
        {0, 1, 3}, 2);
    newRow(
        "four rows with neither radio on", [](In& in) { choose(in, false, false); },
        Variant::LeastSquare, {0, 1, 3}, 2);
    newRow(
        "five rows",
        [](In& in) {
            useRows(in, {0, 1, 2, 3, 4});
        },
        Variant::LeastSquare, {0, 1, 3, 4}, 2);
    newRow(
        "the target is not asked for", [](In& in) { in.target.valid = false; },
        Variant::LeastSquare, {0, 1, 3}, 2);
    newRow(
        "a used row without a map is collected all the same",
        [](In& in) { in.points[0].hasMap = false; }, Variant::ThreePoints, {0, 1, 3}, 2);
    newRow(
        "a later V row without a map is the V row",
        [](In& in) {
            useRows(in, {0, 1, 2, 3, 4});
            markVRows(in, {2, 4});
            in.points[4].hasMap = false;
        },
        Variant::LeastSquare, {0, 1, 3}, 4);
    newRow(
        "exact leaves out what is behind its first three rows",
        [](In& in) {
            useRows(in, {0, 1, 2, 3, 4});
            in.points[4].hasMap = false;
            choose(in, true, false);
        },
        Variant::ExactFourPoints, {0, 1, 3}, 2);
    newRow(
        "non-equivalent without a V row",
        [](In& in) {
            chooseNonEquivalent(in, true);
            markVRows(in, {});
        },
        Variant::NonEquivalentLinear, {}, -1);
}

void tst_CalculationPlan::mapRuns()
{
    QFETCH(Change, change);
    PanelInputs inputs = inputsWithMaps(4);
    change.apply(inputs);
    const CalculationPlan plan = analysis::planMap(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.variant.has_value());
    QTEST(*plan.variant, "variant");
    QTEST(rowsOf(plan), "others");
    QTEST(plan.rows.v.row, "vRow");
}

void tst_CalculationPlan::mapBoundFollowsTheReferences_data()
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

void tst_CalculationPlan::mapBoundFollowsTheReferences()
{
    QFETCH(bool, linear);
    QFETCH(int, references);
    QFETCH(int, bound);
    PanelInputs inputs = inputsWithMaps(bound - 1);
    chooseNonEquivalent(inputs, linear);
    useValidReferences(inputs, references);
    const CalculationPlan below = analysis::planMap(inputs.state());
    QCOMPARE(below.messages, Messages{tooFewRows(bound - 1, bound)});
    QVERIFY(!below.variant);
    useRows(inputs, mixes::firstRows(bound));
    const CalculationPlan at = analysis::planMap(inputs.state());
    QCOMPARE(at.messages, Messages());
    QVERIFY(at.variant ==
            (linear ? Variant::NonEquivalentLinear : Variant::NonEquivalentVictoreen));
}

void tst_CalculationPlan::fitIsRefused_data()
{
    using In = PanelInputs;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Messages>("messages");
    const Messages noRange{{MessageId::NoFitRange}};
    const auto few = [](int valid) { return Messages{{MessageId::FewFitReferences, valid}}; };
    newRow(
        "no marked row", [](In& in) { in.points[6].inFit = in.points[7].inFit = false; }, noRange);
    newRow(
        "one marked row, though lowest and highest are the same",
        [](In& in) { in.points[6].inFit = false; }, noRange);
    newRow(
        "energies that are no numbers",
        [](In& in) {
            in.points[6].energy = in.points[7].energy = std::numeric_limits<double>::quiet_NaN();
        },
        noRange);
    newRow(
        "the range before the references",
        [](In& in) {
            in.points[6].inFit = false;
            useReferences(in, {});
        },
        noRange);
    newRow(
        "no used reference", [](In& in) { useReferences(in, {}); }, few(0));
    newRow(
        "one used reference", [](In& in) { useReferences(in, {1}); }, few(1));
    newRow(
        "one valid reference", [](In& in) { makeInvalid(in, {0}); }, few(1));
    newRow(
        "three used, one valid",
        [](In& in) {
            useReferences(in, {0, 1, 2});
            makeInvalid(in, {1});
        },
        few(1));
}

void tst_CalculationPlan::fitIsRefused()
{
    QFETCH(Change, change);
    PanelInputs inputs = fourPointInputs();
    inputs.points[6].inFit = true;
    inputs.points[7].inFit = true;
    change.apply(inputs);
    const FitPlan plan = analysis::planFit(inputs.state());
    QTEST(plan.messages, "messages");
    QVERIFY(!plan.range);
}

void tst_CalculationPlan::fitRunsBetweenTheMarkedRows()
{
    PanelInputs inputs = fourPointInputs();
    for (const int row : {1, 3, 7}) {
        inputs.points[row].inFit = true; // row 8 is not in use
    }
    inputs.points[7].energy = 4;
    const FitPlan plan = analysis::planFit(inputs.state());
    QCOMPARE(plan.messages, Messages());
    QVERIFY(plan.range.has_value());
    QCOMPARE(plan.range->lowest, 1.0);
    QCOMPARE(plan.range->highest, 5.0);
}

void tst_CalculationPlan::fitDoesNotAskForTheTarget()
{
    PanelInputs inputs = fourPointInputs();
    inputs.points[0].inFit = true;
    inputs.points[1].inFit = true;
    inputs.target.valid = false;
    QVERIFY(analysis::planFit(inputs.state()).range.has_value());
}

QTEST_APPLESS_MAIN(tst_CalculationPlan)
#include "tst_CalculationPlan.moc"
