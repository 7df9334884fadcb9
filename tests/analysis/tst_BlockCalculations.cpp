// Map calculations in blocks of pixels, compared with their reference implementations, and the
// memory that is shared by successive calculations.
#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"
#include "support/PlainFits.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"

#include <QTest>

#include <array>
#include <utility>

using analysis::CalculationMemory;
using analysis::HistogramCounts;
using analysis::Instructions;
using tests::deepCopy;
using tests::Kind;
using tests::numberOf;
using tests::onceIn;
using tests::wholeNumber;

namespace
{

enum class Method { ThreePoints, ExactFourPoints, LeastSquare, NonEquivalent };

using Maps = std::array<A2DData, 8>;
using Random = std::mt19937_64;

/// Inputs of one calculation. The stacks have the types of the reference implementations.
struct Task {
    Method method = Method::ThreePoints;
    tests::PlainStack points;  ///< for the three- and four-point methods
    tests::PlainNeqStack fit;  ///< for the non-equivalent method
    HistogramCounts histogram; ///< start state of every histogram
};

/// Results of a calculation: the map, then the histograms of the valence and of the thickness
/// (non-equivalent method: of the total dMut). The non-equivalent method also fills four
/// histograms of shares and four of amounts.
struct Outcome {
    A2DData map;
    std::array<HistogramCounts, 10> counts;
};

QString text(double number)
{
    return QString::number(number, 'g', 17);
}

/// A stack of @p maps with reference values of @p kind; @p v is the index of the V row.
tests::PlainStack pointsOf(const QList<const A2DData*>& maps, qsizetype v, Kind kind,
                           Random& random)
{
    tests::PlainStack stack;
    stack.r = numberOf(kind, random);
    for (int i = 0; i < 2; ++i) {
        stack.references.append({true, !onceIn(random, 8), text(numberOf(kind, random))});
    }
    for (qsizetype i = 0; i < maps.size(); ++i) {
        const bool allEqual = kind == Kind::Singular;
        const double energy = allEqual ? 8300.0 : 8300.0 + 25.5 * static_cast<double>(i);
        const double reference = allEqual ? 1.0 : numberOf(kind, random);
        stack.points.append({maps.at(i), i == v, text(energy), text(reference),
                             text(allEqual ? 1.0 : numberOf(kind, random))});
    }
    return stack;
}

tests::PlainNeqStack fitOf(const QList<const A2DData*>& maps, int references, bool victoreen,
                           Kind kind, Random& random)
{
    const bool allEqual = kind == Kind::Singular;
    tests::PlainNeqStack stack;
    stack.victoreen = victoreen;
    stack.maps = maps;
    stack.jumpSum = numberOf(kind, random);
    for (qsizetype i = 0; i < maps.size(); ++i) {
        stack.energies.append(allEqual ? 8300.0 : 8300.0 + 25.5 * static_cast<double>(i));
    }
    for (int j = 0; j < references; ++j) {
        QList<double> values;
        for (qsizetype i = 0; i < maps.size(); ++i) {
            values.append(allEqual ? static_cast<double>(i % 2) : numberOf(kind, random));
        }
        stack.refValues.append(values);
        stack.weights.append(allEqual && j == 0 ? 0.0 : numberOf(kind, random));
        stack.valences.append(text(numberOf(kind, random)));
    }
    return stack;
}

tests::PlainHistogram plainOf(const HistogramCounts& started)
{
    return {started.minV, started.step, started.bins, 0, 0, 0};
}

HistogramCounts countsOf(const HistogramCounts& started, const tests::PlainHistogram& plain)
{
    HistogramCounts counts = started;
    counts.bins = plain.bins;
    counts.total = plain.total;
    counts.under = plain.under;
    counts.over = plain.over;
    return counts;
}

/// Result of the reference implementation, starting from an empty map.
Outcome expectedOf(const Task& task)
{
    Outcome expected;
    expected.counts.fill(task.histogram);
    const tests::PlainHistogram start = plainOf(task.histogram);
    if (task.method == Method::NonEquivalent) {
        tests::PlainNeqHistograms plain{start, start, QList<tests::PlainHistogram>(4, start),
                                        QList<tests::PlainHistogram>(4, start)};
        tests::plainNonEquivalent(task.fit, expected.map, plain);
        QList<tests::PlainHistogram> all{plain.valence, plain.total};
        all += plain.ratio + plain.dMut;
        for (std::size_t i = 0; i < expected.counts.size(); ++i) {
            expected.counts[i] = countsOf(task.histogram, all.at(static_cast<qsizetype>(i)));
        }
        return expected;
    }
    tests::PlainHistogram valence = start;
    tests::PlainHistogram thickness = start;
    if (task.method == Method::ThreePoints) {
        tests::plainThreePoints(task.points, expected.map, valence, thickness);
    } else if (task.method == Method::ExactFourPoints) {
        tests::plainExactFourPoints(task.points, expected.map, valence, thickness);
    } else {
        tests::plainLeastSquare(task.points, expected.map, valence, thickness);
    }
    expected.counts[0] = countsOf(task.histogram, valence);
    expected.counts[1] = countsOf(task.histogram, thickness);
    return expected;
}

/// Runs the program's calculation; @p outcome can contain an earlier result.
void calculate(const Task& task, Outcome& outcome, CalculationMemory* memory,
               Instructions instructions)
{
    auto& counts = outcome.counts;
    counts.fill(task.histogram);
    if (task.method == Method::NonEquivalent) {
        analysis::NeqStack stack = tests::neqStackOf(task.fit);
        stack.memory = memory;
        stack.instructions = instructions;
        analysis::mapNonEquivalent(stack, outcome.map,
                                   {&counts[0],
                                    &counts[1],
                                    {&counts[2], &counts[3], &counts[4], &counts[5]},
                                    {&counts[6], &counts[7], &counts[8], &counts[9]}});
        return;
    }
    analysis::MapStack stack = tests::mapStackOf(task.points);
    stack.memory = memory;
    stack.instructions = instructions;
    if (task.method == Method::ThreePoints) {
        analysis::mapThreePoints(stack, outcome.map, counts[0], counts[1]);
    } else if (task.method == Method::ExactFourPoints) {
        analysis::mapExactFourPoints(stack, outcome.map, counts[0], counts[1]);
    } else {
        analysis::mapLeastSquare(stack, outcome.map, counts[0], counts[1]);
    }
}

/// Describes the first difference between the counts or maps; empty if all are equal bit for bit.
QString differenceOf(const Outcome& outcome, const Outcome& expected)
{
    for (std::size_t i = 0; i < outcome.counts.size(); ++i) {
        const HistogramCounts& a = outcome.counts[i];
        const HistogramCounts& b = expected.counts[i];
        if (a.bins != b.bins || a.under != b.under || a.over != b.over || a.total != b.total) {
            return QStringLiteral("histogram %1").arg(i);
        }
    }
    return tests::differenceOf(outcome.map, expected.map);
}

HistogramCounts anyHistogram(Random& random)
{
    HistogramCounts counts;
    const double from = wholeNumber(random, -3, 3) * 0.5;
    const double to = wholeNumber(random, -3, 3) * 0.5;
    counts.start(from, to, onceIn(random, 10) ? 2000 : wholeNumber(random, 0, 60));
    return counts;
}

/// A number of rows (pixels with data) for a map of @p pixels pixels: often @p pixels, otherwise
/// a random number near it or below it.
int anyRowsFor(int pixels, Random& random)
{
    switch (wholeNumber(random, 0, 5)) {
    case 0:
        return std::max(pixels - wholeNumber(random, 0, 70), 0);
    case 1:
        return pixels + wholeNumber(random, 0, 70);
    case 2:
        return wholeNumber(random, 0, pixels);
    default:
        return pixels;
    }
}

/// An input map for a calculation whose other maps have @p width by @p height pixels. Its size
/// is usually equal, but can be different or even invalid.
A2DData anyMapUsedWith(int width, int height, Kind kind, Random& random)
{
    int otherWidth = width;
    if (onceIn(random, 3)) {
        otherWidth = wholeNumber(random, -2, width + 5);
    }
    return tests::mapOf(kind, otherWidth, onceIn(random, 6) ? 0 : height,
                        anyRowsFor(std::max(width * height, 0), random), random);
}

} // namespace

class tst_BlockCalculations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsOfManySizesMatchTheReferenceImplementation_data();
    void mapsOfManySizesMatchTheReferenceImplementation();
    void resultInReusedMemoryMatchesTheReferenceImplementation_data();
    void resultInReusedMemoryMatchesTheReferenceImplementation();
    void changedPixelIsRecalculated_data();
    void changedPixelIsRecalculated();
    void resultMemoryIsReusedUnlessACopyExists();
    void nextCalculationReleasesUnusedMaps();
};

void tst_BlockCalculations::mapsOfManySizesMatchTheReferenceImplementation_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("references");
    QTest::addColumn<bool>("victoreen");
    QTest::addColumn<int>("kind");
    for (const Kind kind : tests::allKinds) {
        const char* const name = tests::nameOf(kind);
        const auto number = static_cast<int>(kind);
        QTest::addRow("three points, %s", name)
            << static_cast<int>(Method::ThreePoints) << 2 << false << number;
        QTest::addRow("exact four points, %s", name)
            << static_cast<int>(Method::ExactFourPoints) << 2 << false << number;
        QTest::addRow("least square, %s", name)
            << static_cast<int>(Method::LeastSquare) << 2 << false << number;
        for (int references = 2; references <= 4; ++references) {
            for (const bool victoreen : {false, true}) {
                QTest::addRow("non-equivalent, %d references, %s, %s", references,
                              victoreen ? "Victoreen" : "linear", name)
                    << static_cast<int>(Method::NonEquivalent) << references << victoreen << number;
            }
        }
    }
}

void tst_BlockCalculations::mapsOfManySizesMatchTheReferenceImplementation()
{
    QFETCH(int, method);
    QFETCH(int, references);
    QFETCH(bool, victoreen);
    QFETCH(int, kind);
    const auto numbers = static_cast<Kind>(kind);
    Random random(static_cast<unsigned>(1000 * method + 100 * references + 10 * kind) +
                  (victoreen ? 1U : 0U));
    // Large maps need most of the run time, so each kind of numbers is tested with only one of
    // these six sizes.
    const std::array<std::pair<int, int>, 6> largest{
        {{1000, 1}, {16, 12}, {16, 16}, {20, 16}, {1, 321}, {25, 10}}};
    const std::array<std::pair<int, int>, 22> sizes{
        {{0, 0},   {5, 0},
         {0, 5},   {-1, 5},
         {5, -1},  {1, 1},
         {2, 1},   {3, 1},
         {63, 1},  {21, 3},
         {64, 1},  {1, 64},
         {8, 8},   {65, 1},
         {5, 13},  {127, 1},
         {128, 1}, {32, 4},
         {129, 1}, {3, 43},
         {70, 3},  largest[static_cast<std::size_t>(kind)]}};
    for (const auto& [width, height] : sizes) {
        const int minimumRows = method == static_cast<int>(Method::ThreePoints)       ? 3
                                : method == static_cast<int>(Method::ExactFourPoints) ? 4
                                                                                      : 1;
        const int rows = wholeNumber(random, minimumRows, 8);
        QList<A2DData> maps;
        for (int i = 0; i < rows; ++i) {
            maps.append(anyMapUsedWith(width, height, numbers, random));
        }
        const qsizetype base = method == static_cast<int>(Method::NonEquivalent)
                                   ? 0
                                   : wholeNumber(random, 0, rows - 1);
        maps[base].xNum = width;
        maps[base].yNum = height;
        QList<const A2DData*> mapPointers;
        for (const A2DData& map : std::as_const(maps)) {
            mapPointers.append(&map);
        }
        Task task;
        task.method = static_cast<Method>(method);
        task.points = pointsOf(mapPointers, base, numbers, random);
        task.fit = fitOf(mapPointers, references, victoreen, numbers, random);
        task.histogram = anyHistogram(random);
        const Outcome expected = expectedOf(task);
        for (const Instructions instructions : analysis::availableInstructions()) {
            Outcome outcome;
            calculate(task, outcome, nullptr, instructions);
            const QString difference = differenceOf(outcome, expected);
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1 by %2, %3 rows: %4")
                                                          .arg(width)
                                                          .arg(height)
                                                          .arg(rows)
                                                          .arg(difference)));
        }
    }
}

namespace
{

Kind anyKind(Random& random)
{
    return onceIn(random, 2) ? Kind::Random : tests::allKinds[random() % tests::allKinds.size()];
}

/// Changes or exchanges some of @p maps, or none. Some of these changes cannot be made by a user of
/// the program.
void change(Maps& maps, Random& random)
{
    const auto any = [&]() -> A2DData& { return maps[random() % maps.size()]; };
    A2DData& map = any();
    const Kind kind = anyKind(random);
    const int rows = static_cast<int>(map.rows.size());
    switch (wholeNumber(random, 0, 13)) {
    case 0: // another file of the same size
        map = tests::mapOf(kind, map.xNum, map.yNum, rows, random);
        break;
    case 1: { // another file of another size
        const int width = wholeNumber(random, 0, 40);
        const int height = onceIn(random, 30) ? 25 : wholeNumber(random, 0, 7);
        map = tests::mapOf(kind, width, height, anyRowsFor(std::max(width * height, 0), random),
                           random);
        break;
    }
    case 2: // one pixel changed in place
        if (rows > 0) {
            map.rows[wholeNumber(random, 0, rows - 1)] = tests::rowOf(kind, random);
        }
        break;
    case 3: // pixels appended
        for (int i = wholeNumber(random, 1, 70); i > 0 && rows < 1000; --i) {
            map.rows.append(tests::rowOf(kind, random));
        }
        break;
    case 4:
        map.clear();
        break;
    case 5: // a copy with separate memory
        map = deepCopy(map);
        break;
    case 6: // fewer pixels, as after a failed read
        map.rows.resize(wholeNumber(random, 0, rows));
        break;
    case 7: // the same pixels, with another size
        map.xNum = wholeNumber(random, -2, 40);
        map.yNum = wholeNumber(random, -1, 7);
        break;
    case 8: // two maps share their pixels
        map = A2DData(any());
        break;
    case 9: { // one pixel changed, in a copy that replaces the map
        A2DData copy = map;
        if (rows > 0) {
            copy.rows[wholeNumber(random, 0, rows - 1)] = tests::rowOf(kind, random);
        }
        map = copy;
        break;
    }
    case 10:
        std::swap(map, any());
        break;
    case 11:
        map.headerLines.append(QStringLiteral("# more"));
        break;
    default: // no change
        break;
    }
}

/// Sometimes changes a result, as other code could do between two calculations.
void modify(A2DData& result, const QList<std::pair<A2DData, A2DData>>& copies, Random& random)
{
    const int rows = static_cast<int>(result.rows.size());
    A2DRow* const any = rows > 0 ? &result.rows[wholeNumber(random, 0, rows - 1)] : nullptr;
    switch (wholeNumber(random, 0, 12)) {
    case 0:
        result.clear();
        break;
    case 1:
        result = A2DData();
        break;
    case 2:
        result.rows.resize(wholeNumber(random, 0, 300));
        break;
    case 3:
        if (any != nullptr) {
            any->values.append(1.0);
        }
        break;
    case 4:
        if (any != nullptr && !any->values.isEmpty()) {
            any->values.first() = 4711.0;
        }
        break;
    case 5:
        if (any != nullptr) {
            any->values = result.rows.at(0).values;
        }
        break;
    case 6:
        if (any != nullptr) {
            std::swap(*any, result.rows.last());
        }
        break;
    case 7:
        if (!copies.isEmpty()) {
            result = copies.last().first;
        }
        break;
    default:
        break;
    }
}

/// A random calculation on a random selection of @p maps, in array order. If fewer than four
/// maps are selected, random maps are added.
Task anyTask(const Maps& maps, Random& random)
{
    Task task;
    task.method =
        onceIn(random, 2) ? Method::NonEquivalent : static_cast<Method>(wholeNumber(random, 0, 2));
    QList<const A2DData*> mapPointers;
    for (const A2DData& map : maps) {
        if (onceIn(random, 2)) {
            mapPointers.append(&map);
        }
    }
    while (mapPointers.size() < 4) {
        mapPointers.append(&maps[random() % maps.size()]);
    }
    const Kind kind = anyKind(random);
    const int v = wholeNumber(random, 0, static_cast<int>(mapPointers.size()) - 1);
    task.points = pointsOf(mapPointers, v, kind, random);
    task.fit = fitOf(mapPointers, wholeNumber(random, 2, 4), onceIn(random, 2), kind, random);
    task.histogram = anyHistogram(random);
    return task;
}

/// Copies of results and of their value lists, each with a deep copy of the original content.
class Copies
{
public:
    void take(const A2DData& result, Random& random)
    {
        if (onceIn(random, 4)) {
            maps.append({result, deepCopy(result)});
        }
        if (!result.rows.isEmpty() && onceIn(random, 2)) {
            const int last = static_cast<int>(result.rows.size()) - 1;
            const QList<double> list = result.rows.at(wholeNumber(random, 0, last)).values;
            m_lists.append({list, deepCopy(list)});
        }
        if (maps.size() > 3) {
            maps.removeAt(wholeNumber(random, 0, 3));
        }
        if (m_lists.size() > 6) {
            m_lists.removeAt(wholeNumber(random, 0, 6));
        }
        if (onceIn(random, 15)) {
            maps.clear();
            m_lists.clear();
        }
    }

    bool areUnchanged() const
    {
        return std::all_of(maps.cbegin(), maps.cend(),
                           [](const auto& each) {
                               return tests::differenceOf(each.first, each.second).isEmpty();
                           }) &&
               std::all_of(m_lists.cbegin(), m_lists.cend(), [](const auto& each) {
                   return tests::sameNumbers(each.first, each.second);
               });
    }

    QList<std::pair<A2DData, A2DData>> maps;

private:
    QList<std::pair<QList<double>, QList<double>>> m_lists;
};

} // namespace

void tst_BlockCalculations::resultInReusedMemoryMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 5; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void tst_BlockCalculations::resultInReusedMemoryMatchesTheReferenceImplementation()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    Maps maps;
    for (A2DData& map : maps) {
        map = anyMapUsedWith(13, 10, anyKind(random), random);
    }
    CalculationMemory memory;
    Outcome outcome;
    Outcome secondOutcome; // uses the same CalculationMemory
    Copies copies;
    Task task = anyTask(maps, random);
    for (int step = 0; step < 80; ++step) {
        if (!onceIn(random, 3)) {
            change(maps, random);
        }
        if (!onceIn(random, 3)) {
            task = anyTask(maps, random); // otherwise the previous task runs again
        }
        modify(outcome.map, copies.maps, random);
        const auto& available = analysis::availableInstructions();
        const Instructions instructions = available[random() % available.size()];
        Outcome& result = onceIn(random, 15) ? secondOutcome : outcome;
        calculate(task, result, &memory, instructions);
        const QString difference = differenceOf(result, expectedOf(task));
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("step %1: %2").arg(step).arg(difference)));
        QVERIFY2(copies.areUnchanged(), qPrintable(QString::number(step)));
        copies.take(result.map, random);
    }
    memory = {};
    QVERIFY(copies.areUnchanged());
    outcome = {};
    secondOutcome = {};
    QVERIFY(copies.areUnchanged());
}

void tst_BlockCalculations::changedPixelIsRecalculated_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("three points") << static_cast<int>(Method::ThreePoints);
    QTest::newRow("exact four points") << static_cast<int>(Method::ExactFourPoints);
    QTest::newRow("least square") << static_cast<int>(Method::LeastSquare);
    QTest::newRow("non-equivalent") << static_cast<int>(Method::NonEquivalent);
}

// Changes one pixel of one map at a time. The changed pixels are at or near the block boundaries.
void tst_BlockCalculations::changedPixelIsRecalculated()
{
    QFETCH(int, method);
    Random random(7);
    QList<A2DData> maps;
    QList<const A2DData*> mapPointers;
    const int rows = method == static_cast<int>(Method::ThreePoints) ? 3 : 4;
    for (int i = 0; i < rows; ++i) {
        maps.append(tests::mapOf(Kind::Random, 26, 5, 130, random));
        for (A2DRow& row : maps.last().rows) {
            row.i0 = 0.0; // mut is then the intensity; ln(I0 / I) could remain NaN
        }
    }
    for (const A2DData& map : std::as_const(maps)) {
        mapPointers.append(&map);
    }
    Task task;
    task.method = static_cast<Method>(method);
    task.points = pointsOf(mapPointers, rows - 1, Kind::Random, random);
    task.fit = fitOf(mapPointers, 2, false, Kind::Random, random);
    task.histogram.start(-0.5, 1.5, 21);
    CalculationMemory memory;
    Outcome outcome;
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    for (A2DData& map : maps) {
        for (const int pixel : {0, 1, 63, 64, 127, 128, 129}) {
            const A2DData before = deepCopy(outcome.map);
            map.rows[pixel].intensity += 1.0;
            calculate(task, outcome, &memory, analysis::fastestInstructions());
            QCOMPARE(differenceOf(outcome, expectedOf(task)), QString());
            QVERIFY(!tests::differenceOf(outcome.map, before).isEmpty());
        }
    }
}

void tst_BlockCalculations::resultMemoryIsReusedUnlessACopyExists()
{
    Random random(8);
    Maps maps;
    for (A2DData& map : maps) {
        map = tests::mapOf(Kind::Random, 10, 13, 130, random);
    }
    Task task = anyTask(maps, random);
    task.method = Method::NonEquivalent;
    CalculationMemory memory;
    Outcome outcome;
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    const A2DRow* const rows = outcome.map.rows.constData();
    const double* const first = outcome.map.rows.constFirst().values.constData();
    const double* const last = outcome.map.rows.constLast().values.constData();
    maps[0] = tests::mapOf(Kind::Random, 10, 13, 130, random);
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    QVERIFY(outcome.map.rows.constData() == rows);
    QVERIFY(outcome.map.rows.constFirst().values.constData() == first);
    QVERIFY(outcome.map.rows.constLast().values.constData() == last);
    const Outcome copy = outcome;
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    QVERIFY(outcome.map.rows.constFirst().values.constData() != first);
    QCOMPARE(differenceOf(outcome, copy), QString());
}

void tst_BlockCalculations::nextCalculationReleasesUnusedMaps()
{
    Random random(9);
    Maps maps;
    for (A2DData& map : maps) {
        map = tests::mapOf(Kind::Random, 10, 13, 130, random);
    }
    CalculationMemory memory;
    Outcome outcome;
    Task task;
    task.histogram.start(0.0, 1.0, 3);
    task.points = pointsOf({&maps[0], &maps[1], &maps[2]}, 2, Kind::Random, random);
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    QVERIFY(!maps[0].rows.isDetached());
    task.points = pointsOf({&maps[3], &maps[1], &maps[2]}, 2, Kind::Random, random);
    calculate(task, outcome, &memory, analysis::fastestInstructions());
    QVERIFY(maps[0].rows.isDetached());
    QCOMPARE(differenceOf(outcome, expectedOf(task)), QString());
}

QTEST_APPLESS_MAIN(tst_BlockCalculations)
#include "tst_BlockCalculations.moc"
