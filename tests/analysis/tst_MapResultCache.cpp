// When a map calculation is skipped because its inputs are unchanged, and the list of the inputs of
// each method.

#include "analysis/MapResultCache.h"

#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"
#include "support/AbsorbanceMap.h"

#include <QtTest>

#include <functional>
#include <limits>

using analysis::MapResultCache;

namespace
{

// A fake calculation. Its result has one pixel: the sum of `numbers` and of the first pixels of
// both maps. The sum is also counted in one histogram.
struct FakeCalculation {
    A2DData first = tests::absorbanceMap(2, 1, {1.0, 2.0});
    A2DData second = tests::absorbanceMap(2, 1, {3.0, 4.0});
    QList<double> numbers{5.0, 6.0};
    A2DData result;
    analysis::HistogramCounts histogram;
    double from = 0.0;
    MapResultCache memory;
    int runs = 0;

    void calculate()
    {
        memory.run(
            {numbers, {&first, &second}}, result, {&histogram},
            [this] { histogram.start(from, 100.0, 11); },
            [this] {
                ++runs;
                double sum = 0.0;
                for (const double number : std::as_const(numbers)) {
                    sum += number;
                }
                sum += first.rows.first().intensity + second.rows.first().intensity;
                result.clear();
                result.rows.append({0.0, 0.0, sum, 0.0, {}});
                result.xNum = 1;
                result.yNum = 1;
                histogram.add(sum);
            });
    }
};

using Change = std::function<void(FakeCalculation&)>;

const A2DData someMap;
const A2DData otherMap;

// In these stacks all numbers are different, so the tests detect a mix-up of two numbers.
analysis::MapStack fourPoints()
{
    return {{{&someMap, 1.0, 2.0, 3.0}, {&someMap, 4.0, 5.0, 6.0}},
            {&someMap, 7.0, 8.0, 9.0},
            10.0,
            {true, 11.0, 12.0}};
}

analysis::NeqStack nonEquivalent()
{
    analysis::NeqInputs inputs;
    inputs.refValues = {{1.0, 2.0}, {3.0, 4.0}};
    inputs.energies = {5.0, 6.0};
    inputs.weights = {7.0, 8.0};
    inputs.valences = {9.0, 10.0};
    inputs.jumpSum = 11.0;
    return {false, inputs, {&someMap, &someMap}, &someMap};
}

bool areEqual(const MapResultCache::Inputs& a, const MapResultCache::Inputs& b)
{
    return a.numbers == b.numbers && a.maps == b.maps;
}

using FourPointsChange = std::function<void(analysis::MapStack&)>;
using NonEquivalentChange = std::function<void(analysis::NeqStack&)>;

} // namespace
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(FourPointsChange)
Q_DECLARE_METATYPE(NonEquivalentChange)

class tst_MapResultCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstCalculationRuns();
    void unchangedInputsDoNotRunTheCalculationAgain();
    void changedInputOrResultRunsTheCalculationAgain_data();
    void changedInputOrResultRunsTheCalculationAgain();
    void changedSignOfZeroRunsTheCalculationAgain();
    void equalNaNInputsDoNotRunTheCalculationAgain();
    void resultIsNotSharedWithTheCacheDuringACalculation();
    void inputsChangedAndRestoredAreCalculatedAgain();
    void inputsOfDifferentMethodsDiffer();
    void fourPointsInputsDifferAfterEveryChange_data();
    void fourPointsInputsDifferAfterEveryChange();
    void nonEquivalentInputsDifferAfterEveryChange_data();
    void nonEquivalentInputsDifferAfterEveryChange();
};

void tst_MapResultCache::firstCalculationRuns()
{
    FakeCalculation fake;
    fake.calculate();
    QCOMPARE(fake.runs, 1);
    QCOMPARE(fake.result.rows.first().intensity, 15.0); // numbers 5 and 6, pixels 1 and 3
    QCOMPARE(fake.histogram.bins.at(2), 1);             // bin 2 is from 15 to 25
}

void tst_MapResultCache::unchangedInputsDoNotRunTheCalculationAgain()
{
    FakeCalculation fake;
    fake.calculate();
    const A2DRow* pixels = fake.result.rows.constData();
    const QByteArray counts = fake.histogram.fileText();
    fake.calculate();
    fake.calculate();
    QCOMPARE(fake.runs, 1);
    QCOMPARE(fake.result.rows.constData(), pixels);
    QCOMPARE(fake.histogram.fileText(), counts);
    QCOMPARE(fake.histogram.total, 1);
}

void tst_MapResultCache::changedInputOrResultRunsTheCalculationAgain_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("a number", [](FakeCalculation& s) { s.numbers[1] = 7.0; });
    row("one more number", [](FakeCalculation& s) { s.numbers.append(0.0); });
    row("the last bit of a number",
        [](FakeCalculation& s) { s.numbers[0] = std::nextafter(5.0, 6.0); });
    row("a pixel that the calculation reads",
        [](FakeCalculation& s) { s.second.rows[0].intensity = 8.0; });
    row("a pixel that the calculation does not read",
        [](FakeCalculation& s) { s.second.rows[1].i0 = 8.0; });
    row("a map read again with equal pixels", [](FakeCalculation& s) {
        s.first = tests::absorbanceMap(2, 1, {1.0, 2.0});
    });
    row("the width of a map", [](FakeCalculation& s) { s.first.xNum = 1; });
    row("the height of a map", [](FakeCalculation& s) { s.first.yNum = 2; });
    row("comment lines of a map",
        [](FakeCalculation& s) { s.first.headerLines << QStringLiteral("# x"); });
    row("maps exchanged", [](FakeCalculation& s) { std::swap(s.first, s.second); });
    row("a limit of the histogram", [](FakeCalculation& s) { s.from = 1.0; });
    row("the count of a bin", [](FakeCalculation& s) { ++s.histogram.bins[3]; });
    row("the count of values above", [](FakeCalculation& s) { ++s.histogram.over; });
    row("the count of values below", [](FakeCalculation& s) { ++s.histogram.under; });
    row("the highest count", [](FakeCalculation& s) { ++s.histogram.total; });
    row("the lower limit of the counts", [](FakeCalculation& s) { s.histogram.minV -= 1.0; });
    row("the upper limit of the counts", [](FakeCalculation& s) { s.histogram.maxV += 1.0; });
    row("the width of a bin", [](FakeCalculation& s) { s.histogram.step *= 2.0; });
    row("the number of bins", [](FakeCalculation& s) { ++s.histogram.boxes; });
    row("a pixel of the result", [](FakeCalculation& s) { s.result.rows[0].intensity = 0.0; });
    row("the width of the result", [](FakeCalculation& s) { s.result.xNum = 2; });
    row("the height of the result", [](FakeCalculation& s) { s.result.yNum = 2; });
    row("comment lines of the result",
        [](FakeCalculation& s) { s.result.headerLines << QStringLiteral("# x"); });
    row("the extended flag of the result", [](FakeCalculation& s) { s.result.extended = true; });
    row("the result emptied", [](FakeCalculation& s) { s.result.clear(); });
}

void tst_MapResultCache::changedInputOrResultRunsTheCalculationAgain()
{
    QFETCH(Change, change);
    FakeCalculation fake;
    fake.calculate();
    change(fake);
    fake.calculate();
    QCOMPARE(fake.runs, 2);
    fake.calculate();
    QCOMPARE(fake.runs, 2);
}

void tst_MapResultCache::changedSignOfZeroRunsTheCalculationAgain()
{
    FakeCalculation fake;
    fake.numbers = {0.0};
    fake.calculate();
    fake.numbers = {-0.0};
    fake.calculate();
    QCOMPARE(fake.runs, 2);
}

void tst_MapResultCache::equalNaNInputsDoNotRunTheCalculationAgain()
{
    FakeCalculation fake;
    fake.numbers = {std::numeric_limits<double>::quiet_NaN()};
    fake.calculate();
    fake.calculate();
    QCOMPARE(fake.runs, 1);
}

void tst_MapResultCache::resultIsNotSharedWithTheCacheDuringACalculation()
{
    FakeCalculation fake;
    fake.calculate();
    fake.numbers[0] = 9.0;
    bool shared = true;
    fake.memory.run(
        {fake.numbers, {}}, fake.result, {}, [] {},
        [&] { shared = !fake.result.rows.isDetached(); });
    QVERIFY(!shared);
}

void tst_MapResultCache::inputsChangedAndRestoredAreCalculatedAgain()
{
    FakeCalculation fake;
    fake.calculate();
    fake.numbers[0] = 9.0;
    fake.calculate();
    fake.numbers[0] = 5.0;
    fake.calculate();
    QCOMPARE(fake.runs, 3);
    QCOMPARE(fake.result.rows.first().intensity, 15.0);
}

void tst_MapResultCache::inputsOfDifferentMethodsDiffer()
{
    using analysis::Variant;
    const analysis::MapStack stack = fourPoints();
    const auto exact = analysis::inputsOf(Variant::ExactFourPoints, stack);
    QVERIFY(areEqual(exact, analysis::inputsOf(Variant::ExactFourPoints, fourPoints())));
    QVERIFY(!areEqual(exact, analysis::inputsOf(Variant::LeastSquare, stack)));
    QVERIFY(!areEqual(exact, analysis::inputsOf(Variant::ThreePoints, stack)));
}

void tst_MapResultCache::fourPointsInputsDifferAfterEveryChange_data()
{
    QTest::addColumn<FourPointsChange>("change");
    const auto row = [](const char* name, const FourPointsChange& change) {
        QTest::newRow(name) << change;
    };
    using Stack = analysis::MapStack;
    row("the map of the V row", [](Stack& s) { s.v.map = &otherMap; });
    row("the energy of the V row", [](Stack& s) { s.v.energy = 0.0; });
    row("the first reference at the V row", [](Stack& s) { s.v.r1 = 0.0; });
    row("the second reference at the V row", [](Stack& s) { s.v.r2 = 0.0; });
    row("the map of another row", [](Stack& s) { s.others[1].map = &otherMap; });
    row("the energy of another row", [](Stack& s) { s.others[1].energy = 0.0; });
    row("the first reference at another row", [](Stack& s) { s.others[1].r1 = 0.0; });
    row("the second reference at another row", [](Stack& s) { s.others[1].r2 = 0.0; });
    row("one row fewer", [](Stack& s) { s.others.removeLast(); });
    row("the order of rows", [](Stack& s) { s.others.swapItemsAt(0, 1); });
    row("the ratio of the jumps", [](Stack& s) { s.r = 0.0; });
    row("the flag for enough references", [](Stack& s) { s.mix.enoughReferences = false; });
    row("the first valence", [](Stack& s) { s.mix.v1 = 0.0; });
    row("the second valence", [](Stack& s) { s.mix.v2 = 0.0; });
}

void tst_MapResultCache::fourPointsInputsDifferAfterEveryChange()
{
    QFETCH(FourPointsChange, change);
    analysis::MapStack changed = fourPoints();
    change(changed);
    constexpr auto form = analysis::Variant::LeastSquare;
    QVERIFY(!areEqual(analysis::inputsOf(form, changed), analysis::inputsOf(form, fourPoints())));
}

void tst_MapResultCache::nonEquivalentInputsDifferAfterEveryChange_data()
{
    QTest::addColumn<NonEquivalentChange>("change");
    const auto row = [](const char* name, const NonEquivalentChange& change) {
        QTest::newRow(name) << change;
    };
    using Stack = analysis::NeqStack;
    row("the background", [](Stack& s) { s.victoreen = true; });
    row("a reference at a row", [](Stack& s) { s.inputs.refValues[1][0] = 0.0; });
    row("one reference fewer", [](Stack& s) { s.inputs.refValues.removeLast(); });
    row("the order of references", [](Stack& s) { s.inputs.refValues.swapItemsAt(0, 1); });
    row("an energy", [](Stack& s) { s.inputs.energies[1] = 0.0; });
    row("a weight", [](Stack& s) { s.inputs.weights[1] = 0.0; });
    row("a valence", [](Stack& s) { s.inputs.valences[1] = 0.0; });
    row("one valence fewer", [](Stack& s) { s.inputs.valences.removeLast(); });
    row("the sum of the jumps", [](Stack& s) { s.inputs.jumpSum = 0.0; });
    row("the map of a row", [](Stack& s) { s.maps[1] = &otherMap; });
    row("the base map", [](Stack& s) { s.base = &otherMap; });
    row("a number moved from one list to the next", [](Stack& s) {
        s.inputs.energies = {5.0};
        s.inputs.weights = {6.0, 7.0, 8.0};
    });
}

void tst_MapResultCache::nonEquivalentInputsDifferAfterEveryChange()
{
    QFETCH(NonEquivalentChange, change);
    analysis::NeqStack changed = nonEquivalent();
    QVERIFY(areEqual(analysis::inputsOf(changed), analysis::inputsOf(nonEquivalent())));
    change(changed);
    QVERIFY(!areEqual(analysis::inputsOf(changed), analysis::inputsOf(nonEquivalent())));
}

QTEST_APPLESS_MAIN(tst_MapResultCache)
#include "tst_MapResultCache.moc"
