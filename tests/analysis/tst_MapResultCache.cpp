// When a map calculation is skipped because its inputs are unchanged.

#include "analysis/MapResultCache.h"

#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"
#include "support/ReadyMap.h"

#include <QtTest>

#include <functional>
#include <limits>

using analysis::MapResultCache;

namespace
{

// A stand-in for a calculation: its result is the sum of the maps' first pixels
// and the numbers, counted in one histogram.
struct Scene {
    A2DData first = tests::readyMap(2, 1, {1.0, 2.0});
    A2DData second = tests::readyMap(2, 1, {3.0, 4.0});
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

using Change = std::function<void(Scene&)>;

const A2DData someMap;
const A2DData otherMap;

// Stacks whose numbers all differ, so that none can stand for another.
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
    void repetitionLeavesResultAndCountsWithoutARun();
    void anyChangeMakesItCalculateAgain_data();
    void anyChangeMakesItCalculateAgain();
    void oppositeZerosAreDifferentNumbers();
    void equalNaNsAreTheSameNumber();
    void resultIsNotSharedWhileItIsMade();
    void changeAndBackCalculatesAgain();
    void inputsTellTheFormsApart();
    void fourPointsInputsTellEveryChange_data();
    void fourPointsInputsTellEveryChange();
    void nonEquivalentInputsTellEveryChange_data();
    void nonEquivalentInputsTellEveryChange();
};

void tst_MapResultCache::firstCalculationRuns()
{
    Scene scene;
    scene.calculate();
    QCOMPARE(scene.runs, 1);
    QCOMPARE(scene.result.rows.first().intensity, 15.0); // 5 + 6 + 1 + 3
    QCOMPARE(scene.histogram.bins.at(2), 1);             // edges at -5, 5, 15, 25, ...
}

void tst_MapResultCache::repetitionLeavesResultAndCountsWithoutARun()
{
    Scene scene;
    scene.calculate();
    const A2DRow* pixels = scene.result.rows.constData();
    const QByteArray counts = scene.histogram.fileText();
    scene.calculate();
    scene.calculate();
    QCOMPARE(scene.runs, 1);
    QCOMPARE(scene.result.rows.constData(), pixels);
    QCOMPARE(scene.histogram.fileText(), counts);
    QCOMPARE(scene.histogram.total, 1);
}

void tst_MapResultCache::anyChangeMakesItCalculateAgain_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("a number", [](Scene& s) { s.numbers[1] = 7.0; });
    row("one number more", [](Scene& s) { s.numbers.append(0.0); });
    row("the last bit of a number", [](Scene& s) { s.numbers[0] = std::nextafter(5.0, 6.0); });
    row("a pixel in its place", [](Scene& s) { s.second.rows[0].intensity = 8.0; });
    row("a pixel beside the ones looked at", [](Scene& s) { s.second.rows[1].i0 = 8.0; });
    row("a map read anew with equal pixels", [](Scene& s) {
        s.first = tests::readyMap(2, 1, {1.0, 2.0});
    });
    row("the width of a map", [](Scene& s) { s.first.xNum = 1; });
    row("the height of a map", [](Scene& s) { s.first.yNum = 2; });
    row("comment lines of a map", [](Scene& s) { s.first.headerLines << QStringLiteral("# x"); });
    row("maps exchanged", [](Scene& s) { std::swap(s.first, s.second); });
    row("a limit of the histogram", [](Scene& s) { s.from = 1.0; });
    row("a count", [](Scene& s) { ++s.histogram.bins[3]; });
    row("a count above", [](Scene& s) { ++s.histogram.over; });
    row("a count below", [](Scene& s) { ++s.histogram.under; });
    row("the sum of the counts", [](Scene& s) { ++s.histogram.total; });
    row("the lower limit of the counts", [](Scene& s) { s.histogram.minV -= 1.0; });
    row("the upper limit of the counts", [](Scene& s) { s.histogram.maxV += 1.0; });
    row("the width of a bin", [](Scene& s) { s.histogram.step *= 2.0; });
    row("the number of bins", [](Scene& s) { ++s.histogram.boxes; });
    row("a pixel of the result", [](Scene& s) { s.result.rows[0].intensity = 0.0; });
    row("the size of the result", [](Scene& s) { s.result.xNum = 2; });
    row("the height of the result", [](Scene& s) { s.result.yNum = 2; });
    row("comment lines of the result",
        [](Scene& s) { s.result.headerLines << QStringLiteral("# x"); });
    row("what the result carries", [](Scene& s) { s.result.extended = true; });
    row("the result emptied", [](Scene& s) { s.result.clear(); });
}

void tst_MapResultCache::anyChangeMakesItCalculateAgain()
{
    QFETCH(Change, change);
    Scene scene;
    scene.calculate();
    change(scene);
    scene.calculate();
    QCOMPARE(scene.runs, 2);
    scene.calculate();
    QCOMPARE(scene.runs, 2);
}

void tst_MapResultCache::oppositeZerosAreDifferentNumbers()
{
    Scene scene;
    scene.numbers = {0.0};
    scene.calculate();
    scene.numbers = {-0.0};
    scene.calculate();
    QCOMPARE(scene.runs, 2);
}

void tst_MapResultCache::equalNaNsAreTheSameNumber()
{
    Scene scene;
    scene.numbers = {std::numeric_limits<double>::quiet_NaN()};
    scene.calculate();
    scene.calculate();
    QCOMPARE(scene.runs, 1);
}

void tst_MapResultCache::resultIsNotSharedWhileItIsMade()
{
    Scene scene;
    scene.calculate();
    scene.numbers[0] = 9.0;
    bool shared = true;
    scene.memory.run(
        {scene.numbers, {}}, scene.result, {}, [] {},
        [&] { shared = !scene.result.rows.isDetached(); });
    QVERIFY(!shared);
}

void tst_MapResultCache::changeAndBackCalculatesAgain()
{
    Scene scene;
    scene.calculate();
    scene.numbers[0] = 9.0;
    scene.calculate();
    scene.numbers[0] = 5.0;
    scene.calculate();
    QCOMPARE(scene.runs, 3);
    QCOMPARE(scene.result.rows.first().intensity, 15.0);
}

void tst_MapResultCache::inputsTellTheFormsApart()
{
    using analysis::Variant;
    const analysis::MapStack stack = fourPoints();
    const auto exact = analysis::inputsOf(Variant::ExactFourPoints, stack);
    QVERIFY(areEqual(exact, analysis::inputsOf(Variant::ExactFourPoints, fourPoints())));
    QVERIFY(!areEqual(exact, analysis::inputsOf(Variant::LeastSquare, stack)));
    QVERIFY(!areEqual(exact, analysis::inputsOf(Variant::ThreePoints, stack)));
}

void tst_MapResultCache::fourPointsInputsTellEveryChange_data()
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
    row("one row less", [](Stack& s) { s.others.removeLast(); });
    row("the order of rows", [](Stack& s) { s.others.swapItemsAt(0, 1); });
    row("the ratio of the jumps", [](Stack& s) { s.r = 0.0; });
    row("enough references", [](Stack& s) { s.mix.enoughReferences = false; });
    row("the first valence", [](Stack& s) { s.mix.v1 = 0.0; });
    row("the second valence", [](Stack& s) { s.mix.v2 = 0.0; });
}

void tst_MapResultCache::fourPointsInputsTellEveryChange()
{
    QFETCH(FourPointsChange, change);
    analysis::MapStack changed = fourPoints();
    change(changed);
    constexpr auto form = analysis::Variant::LeastSquare;
    QVERIFY(!areEqual(analysis::inputsOf(form, changed), analysis::inputsOf(form, fourPoints())));
}

void tst_MapResultCache::nonEquivalentInputsTellEveryChange_data()
{
    QTest::addColumn<NonEquivalentChange>("change");
    const auto row = [](const char* name, const NonEquivalentChange& change) {
        QTest::newRow(name) << change;
    };
    using Stack = analysis::NeqStack;
    row("the background", [](Stack& s) { s.victoreen = true; });
    row("a reference at a row", [](Stack& s) { s.inputs.refValues[1][0] = 0.0; });
    row("one reference less", [](Stack& s) { s.inputs.refValues.removeLast(); });
    row("the order of references", [](Stack& s) { s.inputs.refValues.swapItemsAt(0, 1); });
    row("an energy", [](Stack& s) { s.inputs.energies[1] = 0.0; });
    row("a weight", [](Stack& s) { s.inputs.weights[1] = 0.0; });
    row("a valence", [](Stack& s) { s.inputs.valences[1] = 0.0; });
    row("one valence less", [](Stack& s) { s.inputs.valences.removeLast(); });
    row("the sum of the jumps", [](Stack& s) { s.inputs.jumpSum = 0.0; });
    row("the map of a row", [](Stack& s) { s.maps[1] = &otherMap; });
    row("the base map", [](Stack& s) { s.base = &otherMap; });
    row("a list cut where the next one goes on", [](Stack& s) {
        s.inputs.energies = {5.0};
        s.inputs.weights = {6.0, 7.0, 8.0};
    });
}

void tst_MapResultCache::nonEquivalentInputsTellEveryChange()
{
    QFETCH(NonEquivalentChange, change);
    analysis::NeqStack changed = nonEquivalent();
    QVERIFY(areEqual(analysis::inputsOf(changed), analysis::inputsOf(nonEquivalent())));
    change(changed);
    QVERIFY(!areEqual(analysis::inputsOf(changed), analysis::inputsOf(nonEquivalent())));
}

QTEST_APPLESS_MAIN(tst_MapResultCache)
#include "tst_MapResultCache.moc"
