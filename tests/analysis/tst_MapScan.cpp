// The extremes of a map, and the pixel at a position.

#include "analysis/MapScan.h"

#include <QTest>

#include <limits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

A2DData sized(int width, int height)
{
    A2DData map;
    map.xNum = width;
    map.yNum = height;
    return map;
}

/// The extremes of a map with the row-major @p values.
std::optional<analysis::Limits> scan(int width, int height, const QList<double>& values)
{
    return analysis::scanMap(sized(width, height),
                             [&](int x, int y) { return values.at(y * width + x); });
}

} // namespace

class tst_MapScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scanFindsTheExtremesOfTheNumbers_data();
    void scanFindsTheExtremesOfTheNumbers();
    void mapWithoutNumbersHasNoExtremes_data();
    void mapWithoutNumbersHasNoExtremes();
    void everyPixelIsReadOnce();
    void scanReadsTheGivenNumbersInsteadOfTheMapRows();
    void mapWithoutColumnsHasNoExtremesDespiteMaximumHeight();

    void positionInsideTheMapGivesItsPixel_data();
    void positionInsideTheMapGivesItsPixel();
    void positionOutsideTheMapHasNoPixel_data();
    void positionOutsideTheMapHasNoPixel();
};

void tst_MapScan::scanFindsTheExtremesOfTheNumbers_data()
{
    using Values = QList<double>;
    QTest::addColumn<Values>("values"); // of 2 by 2 pixels, row-major
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("rising") << Values{1, 2, 3, 4} << 1.0 << 4.0;
    QTest::newRow("falling") << Values{4, 3, 2, 1} << 1.0 << 4.0;
    QTest::newRow("extremes in the middle") << Values{2, 4, 1, 3} << 1.0 << 4.0;
    QTest::newRow("negative") << Values{-2, -4, -1, -3} << -4.0 << -1.0;
    QTest::newRow("equal numbers") << Values{7, 7, 7, 7} << 7.0 << 7.0;
    QTest::newRow("NaN first") << Values{notANumber, 2, 3, 1} << 1.0 << 3.0;
    QTest::newRow("NaN last") << Values{3, 1, 2, notANumber} << 1.0 << 3.0;
    QTest::newRow("one number among NaN")
        << Values{notANumber, 5, notANumber, notANumber} << 5.0 << 5.0;
    QTest::newRow("infinity") << Values{1, infinity, 2, 3} << 1.0 << infinity;
    QTest::newRow("minus infinity") << Values{1, -infinity, 2, 3} << -infinity << 3.0;
    QTest::newRow("both infinities") << Values{infinity, -infinity, 2, 3} << -infinity << infinity;
    QTest::newRow("very large numbers") << Values{1e299, -1e299, 2, 3} << -1e299 << 1e299;
}

void tst_MapScan::scanFindsTheExtremesOfTheNumbers()
{
    QFETCH(QList<double>, values);
    const auto limits = scan(2, 2, values);
    QVERIFY(limits);
    QTEST(limits->low, "low");
    QTEST(limits->high, "high");
}

void tst_MapScan::mapWithoutNumbersHasNoExtremes_data()
{
    using Values = QList<double>;
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<Values>("values");
    QTest::newRow("only NaN") << 2 << 1 << Values{notANumber, notANumber};
    QTest::newRow("no columns") << 0 << 2 << Values{};
    QTest::newRow("no lines") << 2 << 0 << Values{};
    QTest::newRow("negative width") << -2 << 3 << Values{};
    QTest::newRow("negative height") << 2 << -3 << Values{};
}

void tst_MapScan::mapWithoutNumbersHasNoExtremes()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QList<double>, values);
    QVERIFY(!scan(width, height, values));
}

void tst_MapScan::everyPixelIsReadOnce()
{
    QList<int> reads(3 * 4, 0);
    analysis::scanMap(sized(3, 4), [&](int x, int y) {
        ++reads[y * 3 + x];
        return 0.0;
    });
    QCOMPARE(reads, QList<int>(3 * 4, 1));
}

void tst_MapScan::scanReadsTheGivenNumbersInsteadOfTheMapRows()
{
    A2DData map = sized(2, 1);
    map.rows.append({0.0, 0.0, 99.0, -99.0, {}});
    const auto limits = analysis::scanMap(map, [](int x, int) { return 1.0 + x; });
    QVERIFY(limits);
    QCOMPARE(limits->low, 1.0);
    QCOMPARE(limits->high, 2.0);
}

// A loop over the 2^31 - 1 empty lines would take seconds.
void tst_MapScan::mapWithoutColumnsHasNoExtremesDespiteMaximumHeight()
{
    QVERIFY(!scan(0, std::numeric_limits<int>::max(), {}));
    QVERIFY(!scan(-1, std::numeric_limits<int>::max(), {}));
}

void tst_MapScan::positionInsideTheMapGivesItsPixel_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("line");
    QTest::newRow("origin") << 0.0 << 0.0 << 0 << 0;
    QTest::newRow("minus zero") << -0.0 << -0.0 << 0 << 0;
    QTest::newRow("inside the first pixel") << 0.9999 << 0.9999 << 0 << 0;
    QTest::newRow("on an edge in x") << 1.0 << 0.5 << 1 << 0;
    QTest::newRow("on an edge in y") << 0.5 << 1.0 << 0 << 1;
    QTest::newRow("inside the last pixel") << 2.9999 << 1.9999 << 2 << 1;
}

void tst_MapScan::positionInsideTheMapGivesItsPixel()
{
    QFETCH(double, x);
    QFETCH(double, y);
    const auto pixel = analysis::pixelAt(sized(3, 2), x, y);
    QVERIFY(pixel);
    QTEST(pixel->x, "column");
    QTEST(pixel->y, "line");
}

void tst_MapScan::positionOutsideTheMapHasNoPixel_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("left") << -1e-9 << 0.5;
    QTest::newRow("right edge") << 3.0 << 0.5;
    QTest::newRow("below") << 0.5 << -1e-9;
    QTest::newRow("upper edge") << 0.5 << 2.0;
    QTest::newRow("far right") << 1e300 << 0.5;
    QTest::newRow("far below") << 0.5 << -1e300;
    QTest::newRow("NaN in x") << notANumber << 0.5;
    QTest::newRow("NaN in y") << 0.5 << notANumber;
    QTest::newRow("infinity") << infinity << 0.5;
    QTest::newRow("minus infinity") << 0.5 << -infinity;
}

void tst_MapScan::positionOutsideTheMapHasNoPixel()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QVERIFY(!analysis::pixelAt(sized(3, 2), x, y));
    QVERIFY(!analysis::pixelAt(sized(0, 0), 0.0, 0.0));
}

QTEST_MAIN(tst_MapScan)
#include "tst_MapScan.moc"
