// Tests of A2DData, the map record, and of the limits of its size.
#include "data/A2DData.h"
#include "support/SameDouble.h"

#include <QTest>

#include <cmath>
#include <limits>

using tests::sameDouble;

namespace
{

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

constexpr qint64 maxPixels = 33554432; // 2^25

using Points = QList<QPair<double, double>>;

A2DRow pixel(double x, double y, double intensity = 1.0, double i0 = 1.0)
{
    return {x, y, intensity, i0, {}};
}

A2DData mapAt(const Points& points)
{
    A2DData map;
    for (const auto& [x, y] : points) {
        map.rows.append(pixel(x, y));
    }
    return map;
}

A2DData onePixel(double intensity, double i0)
{
    A2DData map;
    map.rows.append(pixel(0.0, 0.0, intensity, i0));
    map.xNum = map.yNum = 1;
    return map;
}

} // namespace

class tst_A2DData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newMapIsEmpty();
    void clearKeepsTheExtendedFlag();

    void derivedSizeCountsPixelsOfTheFirstMapLineAndColumn_data();
    void derivedSizeCountsPixelsOfTheFirstMapLineAndColumn();

    void validRowIndexCopiesTheRowValues();
    void invalidRowIndexFillsTheListWithZeros();

    void mapSizeBoundLimitsThePixelCountAndEachSide_data();
    void mapSizeBoundLimitsThePixelCountAndEachSide();
    void largeMapNeedsOneDataRowPer64Pixels_data();
    void largeMapNeedsOneDataRowPer64Pixels();

    void pixelMutFollowsFromIntensityAndI0_data();
    void pixelMutFollowsFromIntensityAndI0();
    void pixelIsFoundByGridIndexNotByCoordinates();
    void mutOfAMissingPixelIsMinusOne_data();
    void mutOfAMissingPixelIsMinusOne();
    void pixelIndexAbove32BitsDoesNotOverflow();
};

void tst_A2DData::newMapIsEmpty()
{
    const A2DData map;
    QVERIFY(!map.extended);
    QVERIFY(map.headerLines.isEmpty());
    QVERIFY(map.rows.isEmpty());
    QCOMPARE(map.xNum, 0);
    QCOMPARE(map.yNum, 0);
}

void tst_A2DData::clearKeepsTheExtendedFlag()
{
    A2DData map = onePixel(1.0, 2.0);
    map.extended = true;
    map.headerLines = QStringList{QStringLiteral("# a")};
    map.clear();
    QVERIFY(map.extended);
    QVERIFY(map.headerLines.isEmpty());
    QVERIFY(map.rows.isEmpty());
    QCOMPARE(map.xNum, 0);
    QCOMPARE(map.yNum, 0);
}

void tst_A2DData::derivedSizeCountsPixelsOfTheFirstMapLineAndColumn_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<int>("xNum");
    QTest::addColumn<int>("yNum");
    QTest::newRow("no rows") << Points{} << 0 << 0;
    QTest::newRow("one row") << Points{{3, 4}} << 1 << 1;
    QTest::newRow("one row of NaN") << Points{{NaN, NaN}} << 1 << 1;
    QTest::newRow("3 by 2") << Points{{0, 0}, {1, 0}, {2, 0}, {0, 5}, {1, 5}, {2, 5}} << 3 << 2;
    QTest::newRow("first x is not repeated") << Points{{0, 0}, {1, 0}, {2, 0}, {3, 1}} << 3 << 1;
    QTest::newRow("first y is not repeated") << Points{{0, 0}, {0, 1}, {0, 2}} << 1 << 3;
    QTest::newRow("all rows at one point") << Points{{1, 1}, {1, 1}, {1, 1}} << 3 << 3;
    QTest::newRow("comparison is exact") << Points{{0.3, 0}, {0.1 + 0.2, 1}, {0.3, 2}} << 1 << 2;
    QTest::newRow("0 equals -0") << Points{{0.0, 0.0}, {-0.0, 1}, {1, -0.0}} << 2 << 2;
    QTest::newRow("NaN does not equal NaN") << Points{{NaN, NaN}, {NaN, NaN}} << 1 << 1;
}

void tst_A2DData::derivedSizeCountsPixelsOfTheFirstMapLineAndColumn()
{
    QFETCH(Points, points);
    A2DData map = mapAt(points);
    map.xNum = map.yNum = 77;
    map.deriveSize();
    QTEST(map.xNum, "xNum");
    QTEST(map.yNum, "yNum");
}

void tst_A2DData::validRowIndexCopiesTheRowValues()
{
    A2DData map = mapAt({{0, 0}, {1, 0}});
    map.rows[1].values = {0.5, -2.0};
    QList<double> out{9.0, 9.0, 9.0};
    map.rowValues(1, out);
    QCOMPARE(out, (QList<double>{0.5, -2.0}));
    map.rowValues(0, out);
    QVERIFY(out.isEmpty());
}

void tst_A2DData::invalidRowIndexFillsTheListWithZeros()
{
    A2DData map = mapAt({{0, 0}, {1, 0}});
    map.rows[0].values = map.rows[1].values = {1.0};
    for (const int index :
         {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QList<double> out{9.0, NaN, 7.0};
        map.rowValues(index, out);
        QCOMPARE(out, (QList<double>{0.0, 0.0, 0.0}));
    }
}

void tst_A2DData::mapSizeBoundLimitsThePixelCountAndEachSide_data()
{
    QTest::addColumn<qint64>("width");
    QTest::addColumn<qint64>("height");
    QTest::addColumn<bool>("tooLarge");
    const qint64 huge = std::numeric_limits<qint64>::max();
    QTest::newRow("0 by 0") << qint64{0} << qint64{0} << false;
    QTest::newRow("negative") << qint64{-5} << qint64{-7} << false;
    QTest::newRow("at the bound") << qint64{8192} << qint64{4096} << false;
    QTest::newRow("one line at the bound") << maxPixels << qint64{1} << false;
    QTest::newRow("one pixel above the bound") << maxPixels + 1 << qint64{1} << true;
    QTest::newRow("one line above the bound") << qint64{8192} << qint64{4097} << true;
    QTest::newRow("huge width, no height") << maxPixels + 1 << qint64{0} << true;
    QTest::newRow("huge height, negative width") << qint64{-1} << maxPixels + 1 << true;
    QTest::newRow("product above 32 bits") << qint64{65536} << qint64{65536} << true;
    QTest::newRow("product above 64 bits") << huge << huge << true;
}

void tst_A2DData::mapSizeBoundLimitsThePixelCountAndEachSide()
{
    QFETCH(qint64, width);
    QFETCH(qint64, height);
    QTEST(data::isSizeTooLarge(width, height, maxPixels), "tooLarge");
}

void tst_A2DData::largeMapNeedsOneDataRowPer64Pixels_data()
{
    QTest::addColumn<qint64>("width");
    QTest::addColumn<qint64>("height");
    QTest::addColumn<qint64>("held");
    QTest::addColumn<bool>("tooLarge");
    const qint64 uncheckedPixels = 1048576; // 2^20
    QTest::newRow("2^20 pixels without rows") << qint64{1024} << qint64{1024} << qint64{0} << false;
    QTest::newRow("2^20 + 1 pixels, just enough rows")
        << uncheckedPixels + 1 << qint64{1} << qint64{16385} << false;
    QTest::newRow("2^20 + 1 pixels, one row too few")
        << uncheckedPixels + 1 << qint64{1} << qint64{16384} << true;
    QTest::newRow("2^25 pixels with 2^19 rows")
        << maxPixels << qint64{1} << qint64{524288} << false;
    QTest::newRow("2^25 pixels with one row fewer")
        << maxPixels << qint64{1} << qint64{524287} << true;
    QTest::newRow("2^25 pixels without rows") << maxPixels << qint64{1} << qint64{0} << true;
    QTest::newRow("negative number of rows") << maxPixels << qint64{1} << qint64{-1} << true;
    QTest::newRow("64 times the rows is above 64 bits")
        << maxPixels << qint64{1} << std::numeric_limits<qint64>::max() << false;
}

void tst_A2DData::largeMapNeedsOneDataRowPer64Pixels()
{
    QFETCH(qint64, width);
    QFETCH(qint64, height);
    QFETCH(qint64, held);
    QTEST(data::isSizeTooLarge(width, height, held), "tooLarge");
}

void tst_A2DData::pixelMutFollowsFromIntensityAndI0_data()
{
    QTest::addColumn<double>("intensity");
    QTest::addColumn<double>("i0");
    QTest::addColumn<double>("mut");
    QTest::newRow("ln(i0 / intensity)") << 1.0 << std::exp(1.0) << 1.0;
    QTest::newRow("ratio with i0 1") << 0.5 << 1.0 << std::log(2.0);
    QTest::newRow("i0 0: the intensity is mut") << 0.75 << 0.0 << 0.75;
    QTest::newRow("i0 -0: the intensity is mut") << 0.75 << -0.0 << 0.75;
    QTest::newRow("intensity and i0 0: the intensity is mut") << 0.0 << 0.0 << 0.0;
    QTest::newRow("i0 0: NaN intensity is mut") << NaN << 0.0 << NaN;
    QTest::newRow("intensity 0: mut is 1") << 0.0 << 5.0 << 1.0;
    QTest::newRow("intensity -0: mut is 1") << -0.0 << 5.0 << 1.0;
    QTest::newRow("intensity 0 with NaN i0: mut is 1") << 0.0 << NaN << 1.0;
    QTest::newRow("negative ratio") << -1.0 << 5.0 << NaN;
    QTest::newRow("NaN i0") << 1.0 << NaN << NaN;
    QTest::newRow("NaN intensity") << NaN << 1.0 << NaN;
    QTest::newRow("infinite i0") << 1.0 << inf << inf;
    QTest::newRow("infinite intensity") << inf << 1.0 << -inf;
}

void tst_A2DData::pixelMutFollowsFromIntensityAndI0()
{
    QFETCH(double, intensity);
    QFETCH(double, i0);
    QFETCH(double, mut);
    const double got = data::pixelMut(onePixel(intensity, i0), 0, 0);
    QVERIFY2(sameDouble(got, mut), qPrintable(QString::number(got, 'g', 17)));
}

void tst_A2DData::pixelIsFoundByGridIndexNotByCoordinates()
{
    A2DData map;
    for (int i = 0; i < 6; ++i) {
        map.rows.append(pixel(100.0 - i, -3.0, i, 0.0));
    }
    map.xNum = 3;
    map.yNum = 2;
    QCOMPARE(data::pixelMut(map, 2, 1), 5.0);
    QCOMPARE(data::pixelMut(map, 1, 0), 1.0);
    // The index is y * xNum + x. The range of x is not checked, so an x outside its line reads
    // a pixel of the next or the previous line.
    QCOMPARE(data::pixelMut(map, 4, 0), 4.0);
    QCOMPARE(data::pixelMut(map, -1, 1), 2.0);
}

void tst_A2DData::mutOfAMissingPixelIsMinusOne_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::newRow("negative x") << -1 << 0;
    QTest::newRow("negative y") << 0 << -1;
    QTest::newRow("first missing row") << 1 << 1;
    QTest::newRow("after the last line") << 0 << 2;
    QTest::newRow("largest int indices")
        << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
    QTest::newRow("smallest int indices")
        << std::numeric_limits<int>::min() << std::numeric_limits<int>::min();
}

void tst_A2DData::mutOfAMissingPixelIsMinusOne()
{
    QFETCH(int, x);
    QFETCH(int, y);
    A2DData map = mapAt({{0, 0}, {1, 0}, {0, 1}});
    map.xNum = map.yNum = 2;
    QCOMPARE(data::pixelMut(map, x, y), -1.0);
    QCOMPARE(data::pixelMut(A2DData(), 0, 0), -1.0);
}

void tst_A2DData::pixelIndexAbove32BitsDoesNotOverflow()
{
    A2DData map = onePixel(7.0, 0.0);
    map.xNum = 65536;
    // In 32 bits, 65536 * 65536 would overflow to 0, the index of the only pixel.
    QCOMPARE(data::pixelMut(map, 0, 65536), -1.0);
}

QTEST_APPLESS_MAIN(tst_A2DData)
#include "tst_A2DData.moc"
