// The cache that keeps the absorbance of maps between calculations.
#include "data/AbsorbanceCache.h"

#include "support/AbsorbanceMap.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"

#include <QTest>

#include <functional>
#include <span>
#include <utility>

using data::AbsorbanceCache;
using tests::absorbanceMap;
using tests::Kind;
using tests::sameDouble;

namespace
{

using Change = std::function<void(A2DData&)>;

/// Whether @p cache contains the correct absorbance for each row of @p map.
bool isCorrect(const AbsorbanceCache& cache, const A2DData& map)
{
    const std::span<const double> values = cache.of(map);
    if (std::cmp_not_equal(values.size(), map.rows.size())) {
        return false;
    }
    A2DData line = map; // the same pixels as a single line, so that x is the index
    line.xNum = static_cast<int>(map.rows.size());
    line.yNum = 1;
    for (int i = 0; i < line.xNum; ++i) {
        if (!sameDouble(values[i], data::pixelMut(line, i, 0)) ||
            !sameDouble(values[i], tests::plainPixelMut(line, i, 0))) {
            return false;
        }
    }
    return true;
}

/// A map with one row for each pair of special values, such as zeros, NaN and infinities.
A2DData mapOfSpecialPairs()
{
    A2DData map;
    for (const double intensity : tests::specialNumbers) {
        for (const double i0 : tests::specialNumbers) {
            map.rows.append({1.0, 2.0, intensity, i0, {}});
        }
    }
    map.xNum = map.yNum = static_cast<int>(tests::specialNumbers.size());
    return map;
}

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_AbsorbanceCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cachedValuesEqualTheAbsorbanceOfThePixels_data();
    void cachedValuesEqualTheAbsorbanceOfThePixels();
    void absorbanceMatchesAHandCalculation();
    void mapSizeDoesNotAffectTheCachedAbsorbance();
    void unpreparedMapHasNoCachedAbsorbance();
    void emptyMapsHaveNoAbsorbance();
    void mapListedTwiceIsCachedAndLaterFullyReleased();
    void mapsWithSharedRowsShareOneAbsorbanceArray();
    void absorbanceOutlivesTheMap();
    void absorbanceOfAChangedMapIsCalculatedAgain_data();
    void absorbanceOfAChangedMapIsCalculatedAgain();
    void changedMapDoesNotAffectAMapWithTheSameRows();
    void unchangedMapKeepsItsAbsorbanceArray();
    void mapsMissingFromThePreparedListAreDropped();
    void oldRowsOfAChangedMapAreReleased();
    void preparingAnEmptyListDropsTheCachedMap();
    void memoryOfADroppedMapIsReused();
    void mapLargerThanTheDroppedMapIsCached();
    void memoryMuchLargerThanTheNewMapIsReleased();
    void cacheIsUpToDateAfterRandomChanges_data();
    void cacheIsUpToDateAfterRandomChanges();
};

void tst_AbsorbanceCache::cachedValuesEqualTheAbsorbanceOfThePixels_data()
{
    QTest::addColumn<A2DData>("map");
    std::mt19937_64 random(1);
    QTest::newRow("pairs of special values") << mapOfSpecialPairs();
    for (const Kind kind : tests::allKinds) {
        for (const int rows : {1, 3, 63, 64, 65, 300}) {
            QTest::addRow("%s, %d rows", tests::nameOf(kind), rows)
                << tests::mapOf(kind, 7, 9, rows, random);
        }
    }
}

void tst_AbsorbanceCache::cachedValuesEqualTheAbsorbanceOfThePixels()
{
    QFETCH(A2DData, map);
    AbsorbanceCache cache;
    cache.prepare({&map});
    QVERIFY(!cache.of(map).empty());
    QVERIFY(isCorrect(cache, map));
}

void tst_AbsorbanceCache::absorbanceMatchesAHandCalculation()
{
    A2DData map;
    map.rows = {{0, 0, 5.0, 0.0, {}}, {0, 0, 0.0, 3.0, {}}, {0, 0, 1.0, 1.0, {}}};
    AbsorbanceCache cache;
    cache.prepare({&map});
    QCOMPARE(cache.of(map)[0], 5.0); // i0 is 0: the intensity field is the absorbance
    QCOMPARE(cache.of(map)[1], 1.0); // the intensity is 0: 1 by convention
    QCOMPARE(cache.of(map)[2], 0.0); // ln(1)
}

void tst_AbsorbanceCache::mapSizeDoesNotAffectTheCachedAbsorbance()
{
    A2DData map = absorbanceMap(3, 1, {1, 2, 3});
    AbsorbanceCache cache;
    cache.prepare({&map});
    for (const int width : {-3, 0, 1, 3, 1000}) {
        map.xNum = width;
        map.yNum = width;
        QVERIFY(isCorrect(cache, map));
        cache.prepare({&map});
        QVERIFY(isCorrect(cache, map));
    }
}

void tst_AbsorbanceCache::unpreparedMapHasNoCachedAbsorbance()
{
    const A2DData map = absorbanceMap(2, 1, {1, 2});
    const A2DData equal = absorbanceMap(2, 1, {1, 2});
    AbsorbanceCache cache;
    QVERIFY(cache.of(map).empty());
    cache.prepare({&map});
    QVERIFY(!cache.of(map).empty());
    QVERIFY(cache.of(equal).empty());
}

void tst_AbsorbanceCache::emptyMapsHaveNoAbsorbance()
{
    const A2DData none;
    A2DData cleared = absorbanceMap(2, 1, {1, 2});
    cleared.rows.clear();
    A2DData sizeOnly;
    sizeOnly.xNum = sizeOnly.yNum = 4;
    const A2DData map = absorbanceMap(2, 1, {1, 2});
    AbsorbanceCache cache;
    cache.prepare({&none, &map, &cleared, &sizeOnly});
    QVERIFY(cache.of(none).empty());
    QVERIFY(cache.of(cleared).empty());
    QVERIFY(cache.of(sizeOnly).empty());
    QVERIFY(isCorrect(cache, map));
}

void tst_AbsorbanceCache::mapListedTwiceIsCachedAndLaterFullyReleased()
{
    const A2DData a = absorbanceMap(2, 1, {1, 2});
    const A2DData b = absorbanceMap(2, 1, {3, 4});
    AbsorbanceCache cache;
    for (int round = 0; round < 2; ++round) {
        cache.prepare({&a, &b, &a, &a, &b});
        QVERIFY(isCorrect(cache, a));
        QVERIFY(isCorrect(cache, b));
        QVERIFY(cache.of(a).data() != cache.of(b).data());
    }
    cache.prepare({}); // must remove every entry, because an entry shares the rows of its map
    QVERIFY(a.rows.isDetached());
    QVERIFY(b.rows.isDetached());
}

void tst_AbsorbanceCache::mapsWithSharedRowsShareOneAbsorbanceArray()
{
    const A2DData a = absorbanceMap(3, 1, {1, 2, 3});
    A2DData b = a;
    b.xNum = 1;
    b.yNum = 3;
    AbsorbanceCache cache;
    cache.prepare({&a, &b});
    QVERIFY(!cache.of(a).empty());
    QVERIFY(cache.of(a).data() == cache.of(b).data());
    const A2DData later = a;
    QVERIFY(cache.of(later).data() == cache.of(a).data());
}

void tst_AbsorbanceCache::absorbanceOutlivesTheMap()
{
    AbsorbanceCache cache;
    std::span<const double> values;
    {
        const A2DData map = absorbanceMap(2, 1, {1, 2});
        cache.prepare({&map});
        values = cache.of(map);
    }
    QCOMPARE(values[1], 2.0);
    // A new map can have the address of the destroyed map. It must not be mistaken for the old
    // one.
    for (int round = 0; round < 100; ++round) {
        const A2DData map = absorbanceMap(2, 1, {5, 6});
        QVERIFY(cache.of(map).empty());
    }
}

void tst_AbsorbanceCache::absorbanceOfAChangedMapIsCalculatedAgain_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("first pixel changed", [](A2DData& map) { map.rows[0].intensity = 50.0; });
    row("last pixel changed", [](A2DData& map) { map.rows.last().i0 = 50.0; });
    row("written with the same value", [](A2DData& map) { map.rows[0].x = map.rows.at(0).x; });
    row("row appended", [](A2DData& map) { map.rows.append({0, 0, 50.0, 0.0, {}}); });
    row("row inserted at the front", [](A2DData& map) { map.rows.prepend({0, 0, 50.0, 0.0, {}}); });
    row("row removed", [](A2DData& map) { map.rows.removeLast(); });
    row("first row removed", [](A2DData& map) { map.rows.removeFirst(); });
    row("truncated", [](A2DData& map) { map.rows.resize(3); });
    row("made longer", [](A2DData& map) { map.rows.resize(100); });
    row("two rows exchanged", [](A2DData& map) { map.rows.swapItemsAt(0, 4); });
    row("filled", [](A2DData& map) { map.rows.fill({0, 0, 50.0, 0.0, {}}); });
    row("equal copy", [](A2DData& map) { map = tests::deepCopy(map); });
    row("detached", [](A2DData& map) { map.rows.detach(); });
    row("replaced by another map", [](A2DData& map) {
        map = absorbanceMap(5, 1, {9, 8, 7, 6, 5});
    });
    row("read again", [](A2DData& map) {
        map.clear();
        for (int i = 0; i < 5; ++i) {
            map.rows.append({0, 0, 50.0 + i, 0.0, {}});
        }
    });
    row("moved away and read again", [](A2DData& map) {
        const QList<A2DRow> elsewhere = std::move(map.rows);
        map.rows = absorbanceMap(5, 1, {9, 8, 7, 6, 5}).rows;
    });
    row("changed in a copy", [](A2DData& map) {
        A2DData copy = map;
        copy.rows[2].intensity = 50.0;
        map = copy;
    });
    row("cleared", [](A2DData& map) { map.clear(); });
}

void tst_AbsorbanceCache::absorbanceOfAChangedMapIsCalculatedAgain()
{
    QFETCH(Change, change);
    A2DData map = absorbanceMap(5, 1, {1, 2, 3, 4, 5});
    AbsorbanceCache cache;
    cache.prepare({&map});
    QVERIFY(isCorrect(cache, map));
    change(map);
    QVERIFY(cache.of(map).empty());
    cache.prepare({&map});
    QVERIFY(isCorrect(cache, map));
    change(map);
    cache.prepare({&map});
    QVERIFY(isCorrect(cache, map));
}

void tst_AbsorbanceCache::changedMapDoesNotAffectAMapWithTheSameRows()
{
    const A2DData a = absorbanceMap(3, 1, {1, 2, 3});
    A2DData b = a;
    AbsorbanceCache cache;
    cache.prepare({&a, &b});
    const double* const before = cache.of(a).data();
    b.rows[1].intensity = 50.0;
    QVERIFY(cache.of(b).empty());
    QVERIFY(cache.of(a).data() == before);
    cache.prepare({&b, &a});
    QVERIFY(isCorrect(cache, a));
    QVERIFY(isCorrect(cache, b));
    QVERIFY(cache.of(a).data() == before);
}

void tst_AbsorbanceCache::unchangedMapKeepsItsAbsorbanceArray()
{
    const A2DData a = absorbanceMap(3, 1, {1, 2, 3});
    const A2DData b = absorbanceMap(3, 1, {4, 5, 6});
    const A2DData c = absorbanceMap(3, 1, {7, 8, 9});
    AbsorbanceCache cache;
    cache.prepare({&a, &b});
    const double* const before = cache.of(b).data();
    cache.prepare({&c, &b});
    QVERIFY(cache.of(b).data() == before);
    cache.prepare({&b});
    QVERIFY(cache.of(b).data() == before);
    QVERIFY(isCorrect(cache, b));
}

void tst_AbsorbanceCache::mapsMissingFromThePreparedListAreDropped()
{
    const A2DData a = absorbanceMap(2, 1, {1, 2});
    const A2DData b = absorbanceMap(2, 1, {3, 4});
    const A2DData c = absorbanceMap(2, 1, {5, 6});
    AbsorbanceCache cache;
    cache.prepare({&a, &b});
    QVERIFY(!a.rows.isDetached());
    cache.prepare({&b, &c});
    QVERIFY(cache.of(a).empty());
    QVERIFY(a.rows.isDetached());
    QVERIFY(!b.rows.isDetached());
    QVERIFY(isCorrect(cache, c));
}

void tst_AbsorbanceCache::oldRowsOfAChangedMapAreReleased()
{
    A2DData map = absorbanceMap(2, 1, {1, 2});
    AbsorbanceCache cache;
    cache.prepare({&map});
    const QList<A2DRow> earlier = map.rows;
    map.rows[0].intensity = 9.0;
    QVERIFY(!earlier.isDetached());
    cache.prepare({&map});
    QVERIFY(earlier.isDetached());
}

void tst_AbsorbanceCache::preparingAnEmptyListDropsTheCachedMap()
{
    const A2DData map = absorbanceMap(2, 1, {1, 2});
    AbsorbanceCache cache;
    cache.prepare({&map});
    cache.prepare({});
    QVERIFY(cache.of(map).empty());
    QVERIFY(map.rows.isDetached());
}

void tst_AbsorbanceCache::memoryOfADroppedMapIsReused()
{
    A2DData map = absorbanceMap(100, 1, QList<double>(100, 1.0));
    AbsorbanceCache cache;
    cache.prepare({&map});
    const double* const before = cache.of(map).data();
    for (const int rows : {100, 80, 100, 50}) {
        map = absorbanceMap(rows, 1, QList<double>(rows, 1.0 * rows));
        cache.prepare({&map});
        QVERIFY(cache.of(map).data() == before);
        QVERIFY(isCorrect(cache, map));
    }
}

void tst_AbsorbanceCache::mapLargerThanTheDroppedMapIsCached()
{
    AbsorbanceCache cache;
    for (const int rows : {10, 11, 5000, 5001}) {
        const A2DData map = absorbanceMap(rows, 1, QList<double>(rows, 1.0 * rows));
        cache.prepare({&map});
        QVERIFY(isCorrect(cache, map));
    }
}

// The allocator places a large array in its own memory mapping. So the array of the small map
// has another address, unless it reuses the memory of the large array.
void tst_AbsorbanceCache::memoryMuchLargerThanTheNewMapIsReleased()
{
    A2DData map = absorbanceMap(10, 1, QList<double>(10, 1.0));
    const A2DData small = map;
    map.rows.resize(1'000'000);
    AbsorbanceCache cache;
    cache.prepare({&map});
    const double* const before = cache.of(map).data();
    map.clear();
    cache.prepare({&small});
    QVERIFY(cache.of(small).data() != before);
    QVERIFY(isCorrect(cache, small));
}

void tst_AbsorbanceCache::cacheIsUpToDateAfterRandomChanges_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 8; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void tst_AbsorbanceCache::cacheIsUpToDateAfterRandomChanges()
{
    QFETCH(int, seed);
    std::mt19937_64 random(static_cast<unsigned>(seed));
    QList<A2DData> maps(6);
    const auto anyMap = [&]() -> A2DData& { return maps[tests::wholeNumber(random, 0, 5)]; };
    AbsorbanceCache cache;
    for (int round = 0; round < 150; ++round) {
        A2DData& map = anyMap();
        switch (tests::wholeNumber(random, 0, 6)) {
        case 0:
            map = tests::mapOf(Kind::Odd, 3, 3, tests::wholeNumber(random, 0, 90), random);
            break;
        case 1:
            map.rows.append(tests::rowOf(Kind::Odd, random));
            break;
        case 2:
            map = A2DData(anyMap());
            break;
        case 3:
            map.clear();
            break;
        default:
            if (!map.rows.isEmpty()) {
                map.rows.last() = tests::rowOf(Kind::Odd, random);
            }
        }
        QList<const A2DData*> requested;
        while (!tests::onceIn(random, 5)) {
            requested.append(&anyMap());
        }
        cache.prepare(requested);
        for (const A2DData* each : std::as_const(requested)) {
            QVERIFY(isCorrect(cache, *each));
        }
        for (const A2DData& each : std::as_const(maps)) {
            QVERIFY(cache.of(each).empty() || isCorrect(cache, each));
        }
    }
}

QTEST_APPLESS_MAIN(tst_AbsorbanceCache)
#include "tst_AbsorbanceCache.moc"
