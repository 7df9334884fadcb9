// The thirteen quantities of a result map, pixel by pixel.
#include "analysis/MapQuantity.h"

#include <QTest>

#include <cmath>
#include <limits>

using analysis::MapQuantity;
using analysis::ValenceMix;

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const ValenceMix twoToThree{true, 2.0, 3.0};

/// A result of 2 by 2 pixels. Value k of pixel i is 100 i + k, its intensity (the fraction a) is
/// 0.25 i, and its i0 (the thickness) is 10.5 + i.
A2DData usualResult(bool extended)
{
    A2DData result;
    result.extended = extended;
    result.xNum = 2;
    result.yNum = 2;
    for (int i = 0; i < 4; ++i) {
        A2DRow row{-7.0, -8.0, 0.25 * i, 10.5 + i, {}};
        for (int kind = 0; kind < 13; ++kind) {
            row.values.append(100.0 * i + kind);
        }
        result.rows.append(row);
    }
    return result;
}

} // namespace

class tst_MapQuantity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedValuesAreReadByIndex_data();
    void storedValuesAreReadByIndex();
    void pixelIsFoundByItsPosition();
    void nonExtendedResultUsesFractionAndThickness_data();
    void nonExtendedResultUsesFractionAndThickness();
    void nonExtendedResultIgnoresStoredValues();
    void storedValenceIsReadWithoutReferences();
    void valenceFromTheFractionIsZeroWithoutReferences();
    void fractionOutsideZeroToOneIsNotClamped();
    void quantitiesOfMissingPixelsAreZero_data();
    void quantitiesOfMissingPixelsAreZero();
    void pixelsBeyondTheMapSizeAreRead();
    void quantitiesOfAnEmptyResultAreZero();
    void missingValuesReadAsZero_data();
    void missingValuesReadAsZero();
    void quantityNumberOutOfRangeGivesZero_data();
    void quantityNumberOutOfRangeGivesZero();
    void nanAndInfinityAreKept();
};

void tst_MapQuantity::storedValuesAreReadByIndex_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < 13; ++kind) {
        QTest::addRow("quantity %d", kind) << kind;
    }
}

void tst_MapQuantity::storedValuesAreReadByIndex()
{
    QFETCH(int, kind);
    const A2DData result = usualResult(true);
    const MapQuantity quantity(result, twoToThree, kind);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(quantity.at(i), 100.0 * i + kind);
    }
}

void tst_MapQuantity::nonExtendedResultUsesFractionAndThickness_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QList<double>>("values"); // for a = 0, 1/4, 1/2, 3/4
    QTest::newRow("share of the first reference") << 0 << QList<double>{0.0, 0.25, 0.5, 0.75};
    QTest::newRow("share of the second reference") << 1 << QList<double>{1.0, 0.75, 0.5, 0.25};
    for (int kind = 2; kind < 11; ++kind) {
        QTest::addRow("quantity %d", kind) << kind << QList<double>{0.0, 0.0, 0.0, 0.0};
    }
    QTest::newRow("valence") << 11 << QList<double>{3.0, 2.75, 2.5, 2.25};
    QTest::newRow("total dMut") << 12 << QList<double>{10.5, 11.5, 12.5, 13.5};
}

void tst_MapQuantity::nonExtendedResultUsesFractionAndThickness()
{
    QFETCH(int, kind);
    QFETCH(QList<double>, values);
    const A2DData result = usualResult(false);
    const MapQuantity quantity(result, twoToThree, kind);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(quantity.at(i), values.at(i));
    }
}

void tst_MapQuantity::nonExtendedResultIgnoresStoredValues()
{
    A2DData bare = usualResult(false);
    for (A2DRow& row : bare.rows) {
        row.values.clear();
    }
    const A2DData full = usualResult(false);
    for (int kind = 0; kind < 13; ++kind) {
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(MapQuantity(bare, twoToThree, kind).at(i),
                     MapQuantity(full, twoToThree, kind).at(i));
        }
    }
}

void tst_MapQuantity::pixelIsFoundByItsPosition()
{
    A2DData result = usualResult(true);
    result.xNum = 3;
    const MapQuantity quantity(result, ValenceMix{}, 4);
    QCOMPARE(quantity.at(2, 0), 204.0);
    QCOMPARE(quantity.at(0, 1), 304.0);
    QCOMPARE(quantity.at(1, 1), 0.0); // outside the rows
    QCOMPARE(quantity.at(0, 1 << 30), 0.0);
}

void tst_MapQuantity::storedValenceIsReadWithoutReferences()
{
    const A2DData result = usualResult(true);
    QCOMPARE(MapQuantity(result, ValenceMix{}, 11).at(2), 211.0);
}

void tst_MapQuantity::valenceFromTheFractionIsZeroWithoutReferences()
{
    const A2DData result = usualResult(false);
    const ValenceMix mix{false, 2.0, 3.0};
    QCOMPARE(MapQuantity(result, mix, 11).at(1), 0.0);
    QCOMPARE(MapQuantity(result, mix, 0).at(1), 0.25);
    QCOMPARE(MapQuantity(result, mix, 1).at(1), 0.75);
    QCOMPARE(MapQuantity(result, mix, 12).at(1), 11.5);
}

void tst_MapQuantity::fractionOutsideZeroToOneIsNotClamped()
{
    A2DData result;
    result.rows = {{0.0, 0.0, 1.5, -0.5, {}}, {0.0, 0.0, -2.0, 9.0, {}}};
    QCOMPARE(MapQuantity(result, twoToThree, 1).at(0), -0.5);
    QCOMPARE(MapQuantity(result, twoToThree, 11).at(0), 1.5);
    QCOMPARE(MapQuantity(result, twoToThree, 12).at(0), -0.5);
    QCOMPARE(MapQuantity(result, twoToThree, 1).at(1), 3.0);
    QCOMPARE(MapQuantity(result, twoToThree, 11).at(1), 5.0);
}

void tst_MapQuantity::quantitiesOfMissingPixelsAreZero_data()
{
    QTest::addColumn<qint64>("index");
    QTest::newRow("before the first") << qint64{-1};
    QTest::newRow("after the last") << qint64{4};
    QTest::newRow("far before") << std::numeric_limits<qint64>::min();
    QTest::newRow("far after") << std::numeric_limits<qint64>::max();
    QTest::newRow("beyond 32 bits") << (qint64{1} << 32); // 0 if truncated to 32 bits
}

void tst_MapQuantity::quantitiesOfMissingPixelsAreZero()
{
    QFETCH(qint64, index);
    for (const bool extended : {false, true}) {
        A2DData result = usualResult(extended);
        result.rows[0].intensity = 0.625; // so that the tested quantities of pixel 0 are not 0
        result.rows[0].values.fill(77.0);
        for (const int kind : {0, 1, 11, 12}) {
            const MapQuantity quantity(result, twoToThree, kind);
            QVERIFY(quantity.at(0) != 0.0);
            QCOMPARE(quantity.at(index), 0.0);
        }
    }
}

// A pixel exists if it has a row, even if it is outside the size of the result.
void tst_MapQuantity::pixelsBeyondTheMapSizeAreRead()
{
    A2DData result = usualResult(true);
    result.xNum = 1;
    result.yNum = 1;
    QCOMPARE(MapQuantity(result, twoToThree, 5).at(3), 305.0);
    result.xNum = 100;
    result.yNum = 100;
    QCOMPARE(MapQuantity(result, twoToThree, 5).at(4), 0.0);
}

void tst_MapQuantity::quantitiesOfAnEmptyResultAreZero()
{
    for (const bool extended : {false, true}) {
        A2DData result;
        result.extended = extended;
        for (int kind = 0; kind < 13; ++kind) {
            QCOMPARE(MapQuantity(result, twoToThree, kind).at(0), 0.0);
        }
    }
}

void tst_MapQuantity::missingValuesReadAsZero_data()
{
    QTest::addColumn<int>("length");
    for (int length = 0; length <= 13; ++length) {
        QTest::addRow("%d values", length) << length;
    }
}

void tst_MapQuantity::missingValuesReadAsZero()
{
    QFETCH(int, length);
    A2DData result = usualResult(true);
    result.rows[1].values.resize(length);
    for (int kind = 0; kind < 13; ++kind) {
        const MapQuantity quantity(result, twoToThree, kind);
        QCOMPARE(quantity.at(1), kind < length ? 100.0 + kind : 0.0);
        QCOMPARE(quantity.at(2), 200.0 + kind); // pixel 2 has all values
    }
}

void tst_MapQuantity::quantityNumberOutOfRangeGivesZero_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("just below the range") << -1;
    QTest::newRow("just above the range") << 13;
    QTest::newRow("smallest int") << std::numeric_limits<int>::min();
    QTest::newRow("largest int") << std::numeric_limits<int>::max();
}

void tst_MapQuantity::quantityNumberOutOfRangeGivesZero()
{
    QFETCH(int, kind);
    for (const bool extended : {false, true}) {
        const A2DData result = usualResult(extended);
        QCOMPARE(MapQuantity(result, twoToThree, kind).at(1), 0.0);
    }
}

void tst_MapQuantity::nanAndInfinityAreKept()
{
    A2DData result = usualResult(true);
    result.rows[0].values[11] = notANumber;
    result.rows[1].values[12] = -infinity;
    QVERIFY(std::isnan(MapQuantity(result, twoToThree, 11).at(0)));
    QCOMPARE(MapQuantity(result, twoToThree, 12).at(1), -infinity);
    result.extended = false;
    result.rows[0].intensity = notANumber;
    result.rows[1].i0 = infinity;
    for (const int kind : {0, 1, 11}) {
        QVERIFY(std::isnan(MapQuantity(result, twoToThree, kind).at(0)));
    }
    QCOMPARE(MapQuantity(result, twoToThree, 12).at(1), infinity);
}

QTEST_GUILESS_MAIN(tst_MapQuantity)
#include "tst_MapQuantity.moc"
