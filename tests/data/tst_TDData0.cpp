// The two-dimensional map record: size, copies, mask items, region, identifier.
#include "data/MaskItem.h"
#include "data/TDData0.h"
#include "support/DataRows.h"

#include <QTest>

#include <limits>
#include <memory>

namespace
{

constexpr double noMin = 1e300;
constexpr double noMax = -1e300;
constexpr int intMin = std::numeric_limits<int>::min();
constexpr int intMax = std::numeric_limits<int>::max();

/// A map whose pixel (x, y) is 100 + 10 y + x and is valid if x + y is even. The extremes keep
/// the values that the constructor sets.
std::unique_ptr<TDData0> countedMap(int width, int height)
{
    auto map = std::make_unique<TDData0>(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            map->data[y * width + x] = 100.0 + 10 * y + x;
            map->validFlags[y * width + x] = (x + y) % 2 == 0;
        }
    }
    return map;
}

QRect cornerRect(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}

} // namespace

class TestTDData0 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newMapWithPixelsHasExtremesOfZero();
    void newMapWithoutPixelsHasReversedExtremes_data();
    void newMapWithoutPixelsHasReversedExtremes();
    void setSizeClearsEveryPixel();
    void setSizeWidensTheExtremesToIncludeZero_data();
    void setSizeWidensTheExtremesToIncludeZero();

    void blockIsCopiedToTheOrigin();
    void copyWithoutMovingKeepsThePixelPositions();
    void blockCopyIncludesTheLastColumnAndMapLine();
    void copiedInvalidPixelsWidenTheExtremes();
    void blockCopySetsTheIdentifierOfTheTarget();
    void copyWithoutAnActiveRegionSetsTheWholeMapAsRegion();
    void activeRegionIsCopiedToTheTarget();
    void copySkipsPixelsOutsideTheSourceOrTarget_data();
    void copySkipsPixelsOutsideTheSourceOrTarget();
    void copySkipsPixelsMissingFromTheDataOrFlagList();

    void maskItemReportsItsKind();
    void maskItemsAreDeepCopiedInOrder();
    void copyingMaskItemsTwiceAppendsDuplicates();
    void maskItemsCanBeCopiedOntoTheirOwnMap();

    void clearedRegionIsInactiveButKeepsItsRectangle();
    void setRegionAndRegionClearedCanBeInvokedAsSlots();

    void fileSafeIdReplacesSlashesAndDoubleUnderscores_data();
    void fileSafeIdReplacesSlashesAndDoubleUnderscores();
};

void TestTDData0::newMapWithPixelsHasExtremesOfZero()
{
    const TDData0 map(3, 2);
    QCOMPARE(map.width, 3);
    QCOMPARE(map.height, 2);
    QCOMPARE(map.data, QList<double>(6, 0.0));
    QCOMPARE(map.validFlags, QList<bool>(6, false));
    QCOMPARE(map.minVal, 0.0);
    QCOMPARE(map.maxVal, 0.0);
    QVERIFY(map.dataId.isEmpty());
    QCOMPARE(map.region, cornerRect(0, 0, -1, -1));
    QVERIFY(!map.regionSet);
    QVERIFY(map.maskItems.isEmpty());
}

void TestTDData0::newMapWithoutPixelsHasReversedExtremes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("0 by 0") << 0 << 0;
    QTest::newRow("0 by 5") << 0 << 5;
    QTest::newRow("5 by 0") << 5 << 0;
    QTest::newRow("both negative, with a positive product") << -2 << -3;
    QTest::newRow("smallest int") << intMin << intMin;
}

void TestTDData0::newMapWithoutPixelsHasReversedExtremes()
{
    QFETCH(int, width);
    QFETCH(int, height);
    const TDData0 map(width, height);
    QCOMPARE(map.width, std::max(width, 0));
    QCOMPARE(map.height, std::max(height, 0));
    QVERIFY(map.data.isEmpty());
    QVERIFY(map.validFlags.isEmpty());
    QCOMPARE(map.minVal, noMin);
    QCOMPARE(map.maxVal, noMax);
}

void TestTDData0::setSizeClearsEveryPixel()
{
    const auto map = countedMap(2, 2);
    map->setSize(3, 1);
    QCOMPARE(map->width, 3);
    QCOMPARE(map->height, 1);
    QCOMPARE(map->data, QList<double>(3, 0.0));
    QCOMPARE(map->validFlags, QList<bool>(3, false));
}

void TestTDData0::setSizeWidensTheExtremesToIncludeZero_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("newMin");
    QTest::addColumn<double>("newMax");
    QTest::newRow("above zero") << 2.0 << 5.0 << 1 << 0.0 << 5.0;
    QTest::newRow("below zero") << -5.0 << -2.0 << 1 << -5.0 << 0.0;
    QTest::newRow("around zero") << -5.0 << 5.0 << 1 << -5.0 << 5.0;
    QTest::newRow("no pixels") << 2.0 << 5.0 << 0 << 2.0 << 5.0;
}

void TestTDData0::setSizeWidensTheExtremesToIncludeZero()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(int, width);
    TDData0 map(0, 0);
    map.minVal = min;
    map.maxVal = max;
    map.setSize(width, 1);
    QTEST(map.minVal, "newMin");
    QTEST(map.maxVal, "newMax");
}

void TestTDData0::blockIsCopiedToTheOrigin()
{
    const auto map = countedMap(4, 3);
    TDData0 dest(4, 3);
    map->copyBlockTo(&dest, cornerRect(1, 1, 2, 2), true);
    QCOMPARE(dest.data, QList<double>({111, 112, 0, 0, 121, 122, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(dest.validFlags, QList<bool>({true, false, false, false, false, true, false, false,
                                           false, false, false, false}));
}

void TestTDData0::copyWithoutMovingKeepsThePixelPositions()
{
    const auto map = countedMap(4, 3);
    TDData0 dest(3, 3); // another width: pixels keep their column and line
    map->copyBlockTo(&dest, cornerRect(1, 1, 2, 2), false);
    QCOMPARE(dest.data, QList<double>({0, 0, 0, 0, 111, 112, 0, 121, 122}));
    QCOMPARE(dest.validFlags,
             QList<bool>({false, false, false, false, true, false, false, false, true}));
}

void TestTDData0::blockCopyIncludesTheLastColumnAndMapLine()
{
    const auto map = countedMap(2, 2);
    TDData0 dest(2, 2);
    map->copyBlockTo(&dest, cornerRect(0, 0, 1, 1), false);
    QCOMPARE(dest.data, map->data);
    QCOMPARE(dest.validFlags, map->validFlags);
}

void TestTDData0::copiedInvalidPixelsWidenTheExtremes()
{
    TDData0 map(3, 1);
    map.data = {-4.0, 7.0, 99.0};
    TDData0 dest(3, 1);
    map.copyBlockTo(&dest, cornerRect(0, 0, 1, 0), false);
    QCOMPARE(dest.minVal, -4.0);
    QCOMPARE(dest.maxVal, 7.0);

    dest.minVal = noMin;
    dest.maxVal = noMax;
    map.copyBlockTo(&dest, cornerRect(1, 0, 1, 0), false);
    QCOMPARE(dest.minVal, 7.0);
    QCOMPARE(dest.maxVal, 7.0);
}

void TestTDData0::blockCopySetsTheIdentifierOfTheTarget()
{
    TDData0 map(1, 1);
    map.dataId = "mu*t at 8333 eV";
    TDData0 dest(1, 1);
    dest.dataId = "old";
    map.copyBlockTo(&dest, QRect(), true);
    QCOMPARE(dest.dataId, "mu*t at 8333 eV");
}

void TestTDData0::copyWithoutAnActiveRegionSetsTheWholeMapAsRegion()
{
    TDData0 map(4, 3);
    map.region = cornerRect(1, 1, 1, 1);
    TDData0 dest(4, 3);
    map.copyBlockTo(&dest, cornerRect(0, 0, 0, 0), true);
    QVERIFY(dest.regionSet);
    QCOMPARE(dest.region, cornerRect(0, 0, 3, 2));
}

void TestTDData0::activeRegionIsCopiedToTheTarget()
{
    TDData0 map(4, 3);
    map.setRegion(cornerRect(1, 0, 2, 1));
    TDData0 dest(4, 3);
    map.copyBlockTo(&dest, cornerRect(0, 0, 0, 0), true);
    QVERIFY(dest.regionSet);
    QCOMPARE(dest.region, cornerRect(1, 0, 2, 1));
}

void TestTDData0::copySkipsPixelsOutsideTheSourceOrTarget_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<bool>("toOrigin");
    QTest::addColumn<QList<double>>("pixels"); // expected values in the target of 2 by 2 pixels
    using Pixels = QList<double>;
    QTest::newRow("larger than both maps")
        << cornerRect(intMin, intMin, intMax, intMax) << false << Pixels{100, 101, 110, 111};
    QTest::newRow("larger than both maps, to the origin")
        << cornerRect(intMin, intMin, intMax, intMax) << true << Pixels{0, 0, 0, 0};
    QTest::newRow("beyond the first corner")
        << cornerRect(-1, -1, 5, 5) << true << Pixels{0, 0, 0, 100};
    QTest::newRow("beyond the last corner")
        << cornerRect(2, 1, 9, 9) << true << Pixels{112, 0, 122, 0};
    QTest::newRow("larger than the target")
        << cornerRect(0, 0, 2, 2) << false << Pixels{100, 101, 110, 111};
    QTest::newRow("outside") << cornerRect(7, 7, 9, 9) << true << Pixels{0, 0, 0, 0};
    QTest::newRow("empty") << QRect() << true << Pixels{0, 0, 0, 0};
}

void TestTDData0::copySkipsPixelsOutsideTheSourceOrTarget()
{
    QFETCH(QRect, rect);
    QFETCH(bool, toOrigin);
    const auto map = countedMap(3, 3);
    TDData0 dest(2, 2);
    map->copyBlockTo(&dest, rect, toOrigin);
    QTEST(dest.data, "pixels");
}

void TestTDData0::copySkipsPixelsMissingFromTheDataOrFlagList()
{
    const auto map = countedMap(2, 2);
    map->data.resize(3);
    TDData0 dest(2, 2);
    dest.validFlags.resize(2);
    map->copyBlockTo(&dest, cornerRect(0, 0, 1, 1), false);
    QCOMPARE(dest.data, QList<double>({100, 101, 0, 0}));
    QCOMPARE(dest.maxVal, 101.0);
}

void TestTDData0::maskItemReportsItsKind()
{
    QCOMPARE(static_cast<int>(MaskItem(MaskItem::Points{{1.5, 2.5}}, "a").kind()), 1);
    QCOMPARE(static_cast<int>(MaskItem(MaskItem::Rectangles{{1, 2, 3, 4}}, "b").kind()), 2);
    QCOMPARE(static_cast<int>(MaskItem(QRectF(1, 2, 3, 4), "c").kind()), 3);
}

void TestTDData0::maskItemsAreDeepCopiedInOrder()
{
    TDData0 dest(1, 1);
    {
        TDData0 map(1, 1);
        map.maskItems.append(new MaskItem(MaskItem::Points{{1.5, 2.5}, {3, 4}}, "a"));
        map.maskItems.append(new MaskItem(MaskItem::Rectangles{{1, 2, 3, 4}}, "b"));
        map.maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
        map.copyMaskItemsTo(&dest);
        QCOMPARE(map.maskItems.size(), 3);
        QVERIFY(dest.maskItems.first() != map.maskItems.first());
    } // the originals are destroyed here
    QCOMPARE(dest.maskItems.size(), 3);
    QCOMPARE(dest.maskItems[0]->label(), "a");
    QCOMPARE(std::get<MaskItem::Points>(dest.maskItems[0]->shape()),
             MaskItem::Points({{1.5, 2.5}, {3, 4}}));
    QCOMPARE(dest.maskItems[1]->label(), "b");
    QCOMPARE(std::get<MaskItem::Rectangles>(dest.maskItems[1]->shape()),
             MaskItem::Rectangles({{1, 2, 3, 4}}));
    QCOMPARE(dest.maskItems[2]->label(), "c");
    QCOMPARE(std::get<QRectF>(dest.maskItems[2]->shape()), QRectF(5, 6, 7, 8));
}

void TestTDData0::copyingMaskItemsTwiceAppendsDuplicates()
{
    TDData0 map(1, 1);
    map.maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
    TDData0 dest(1, 1);
    map.copyMaskItemsTo(&dest);
    map.copyMaskItemsTo(&dest);
    QCOMPARE(dest.maskItems.size(), 2);
    QCOMPARE(dest.maskItems[1]->label(), "c");
}

void TestTDData0::maskItemsCanBeCopiedOntoTheirOwnMap()
{
    TDData0 map(1, 1);
    map.maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
    map.copyMaskItemsTo(&map);
    QCOMPARE(map.maskItems.size(), 2);
    QVERIFY(map.maskItems[0] != map.maskItems[1]);
}

void TestTDData0::clearedRegionIsInactiveButKeepsItsRectangle()
{
    TDData0 map(4, 3);
    map.setRegion(cornerRect(1, 0, 2, 1));
    QVERIFY(map.regionSet);
    QCOMPARE(map.region, cornerRect(1, 0, 2, 1));
    map.regionCleared();
    QVERIFY(!map.regionSet);
    QCOMPARE(map.region, cornerRect(1, 0, 2, 1));
}

void TestTDData0::setRegionAndRegionClearedCanBeInvokedAsSlots()
{
    TDData0 map(4, 3);
    QVERIFY(QMetaObject::invokeMethod(&map, "setRegion", Q_ARG(QRect, cornerRect(1, 0, 2, 1))));
    QVERIFY(map.regionSet);
    QVERIFY(QMetaObject::invokeMethod(&map, "regionCleared"));
    QVERIFY(!map.regionSet);
}

void TestTDData0::fileSafeIdReplacesSlashesAndDoubleUnderscores_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("expected");
    tests::addTexts("plain", {"Ni map_1", "Ni map_1"});
    tests::addTexts("slash becomes div", {"I0/I1/x", "I0divI1divx"});
    tests::addTexts("two underscores become one", {"a__b", "a_b"});
    tests::addTexts("three underscores become two", {"a___b", "a__b"});
    tests::addTexts("four underscores become two", {"a____b", "a__b"});
    tests::addTexts("slash between underscores", {"a_/_b", "a_div_b"});
    tests::addTexts("empty", {"", ""});
}

void TestTDData0::fileSafeIdReplacesSlashesAndDoubleUnderscores()
{
    QFETCH(QString, id);
    TDData0 map(0, 0);
    map.dataId = id;
    const QString result = map.fileSafeId();
    QTEST(result, "expected");
}

QTEST_GUILESS_MAIN(TestTDData0)
#include "tst_TDData0.moc"
