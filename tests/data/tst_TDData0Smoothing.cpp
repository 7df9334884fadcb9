// Smoothing of a map by moving averages, compared with a direct mean over every window.
#include "data/MaskItem.h"
#include "data/TDData0.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A map with random values from -5 to 5; about one pixel in five is invalid.
std::unique_ptr<TDData0> randomMap(int width, int height)
{
    std::mt19937 random(20240917);
    std::uniform_real_distribution<double> values(-5.0, 5.0);
    std::bernoulli_distribution isValid(0.8);
    auto map = std::make_unique<TDData0>(width, height);
    for (qsizetype i = 0; i < map->data.size(); ++i) {
        map->data[i] = values(random);
        map->validFlags[i] = isValid(random);
    }
    return map;
}

/// The mean of the valid pixels that are at most @p nx columns and @p ny lines away from pixel
/// (@p x, @p y), or nullopt if this pixel is invalid.
std::optional<double> plainMean(const TDData0& map, int x, int y, int nx, int ny)
{
    if (!map.validFlags[y * map.width + x]) {
        return std::nullopt;
    }
    double sum = 0.0;
    int count = 0;
    for (int j = std::max(y - ny, 0); j <= std::min(y + ny, map.height - 1); ++j) {
        for (int i = std::max(x - nx, 0); i <= std::min(x + nx, map.width - 1); ++i) {
            if (map.validFlags[j * map.width + i]) {
                sum += map.data[j * map.width + i];
                ++count;
            }
        }
    }
    return sum / count;
}

/// Whether every pixel of @p smooth is the mean of its window in @p map. The mean is a running
/// sum of at most 200 values between -5 and 5, divided by their number. Its rounding error is
/// below 2e-13, so the tolerance is 1e-12.
bool containsMeans(const TDData0& smooth, const TDData0& map, int nx, int ny)
{
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            const auto mean = plainMean(map, x, y, nx, ny);
            const qsizetype i = y * map.width + x;
            if (smooth.validFlags[i] != mean.has_value() ||
                std::abs(smooth.data[i] - mean.value_or(0.0)) > 1e-12) {
                return false;
            }
        }
    }
    return true;
}

/// A map of one line of valid pixels.
std::unique_ptr<TDData0> line(const QList<double>& values)
{
    auto map = std::make_unique<TDData0>(static_cast<int>(values.size()), 1);
    map->data = values;
    map->validFlags.fill(true);
    return map;
}

/// A map of one column of valid pixels.
std::unique_ptr<TDData0> column(const QList<double>& values)
{
    auto map = line(values);
    std::swap(map->width, map->height);
    return map;
}

/// Counts deferred deletions of objects.
class DeletionCounter : public QObject
{
public:
    DeletionCounter() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::DeferredDelete ? 1 : 0;
        return false;
    }
    int count = 0;
};

} // namespace

class TestTDData0Smoothing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void smoothingGivesTheMeanOfTheWindow_data();
    void smoothingGivesTheMeanOfTheWindow();
    void meanAtTheMapBorderUsesOnlyPixelsInsideTheMap();
    void invalidPixelsAreSkipped();
    void targetKeepsItsValuesAtInvalidPixels();
    void nanPixelMakesTheRestOfTheMapLineNan();
    void extremesAreWidenedByTheMeansNotByTheInput();
    void negativeWindowLeavesTheTargetUnchanged();
    void hugeWindowIsLimitedToTheMapLineOrColumn();
    void smallTargetReceivesThePixelsWithinItsSize();
    void pixelsMissingFromTheDataOrFlagListAreSkipped();

    void smoothingWithNonPositiveWindowsCopiesTheMap_data();
    void smoothingWithNonPositiveWindowsCopiesTheMap();
    void directionWithANonPositiveWindowIsNotSmoothed_data();
    void directionWithANonPositiveWindowIsNotSmoothed();
    void smoothingInBothDirectionsStartsAlongX();
    void smoothedMapHasNoIdentifierRegionOrMaskItems();
    void smoothedExtremesIncludeZero();
    void deletionOfTheIntermediateMapIsDeferred();
    void smoothedEmptyMapIsEmpty();
};

void TestTDData0Smoothing::smoothingGivesTheMeanOfTheWindow_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("n");
    for (const int n : {0, 1, 2, 3, 7, 16, 17, 18, 19, 100}) {
        QTest::addRow("17 by 18, n %d", n) << 17 << 18 << n;
    }
    QTest::newRow("one line") << 9 << 1 << 2;
    QTest::newRow("one column") << 1 << 9 << 2;
    QTest::newRow("one pixel") << 1 << 1 << 1;
    QTest::newRow("no pixel") << 0 << 0 << 1;
}

void TestTDData0Smoothing::smoothingGivesTheMeanOfTheWindow()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, n);
    const auto map = randomMap(width, height);
    TDData0 alongX(width, height);
    map->smoothAlongX(&alongX, n);
    QVERIFY(containsMeans(alongX, *map, n, 0));
    TDData0 alongY(width, height);
    map->smoothAlongY(&alongY, n);
    QVERIFY(containsMeans(alongY, *map, 0, n));
}

void TestTDData0Smoothing::meanAtTheMapBorderUsesOnlyPixelsInsideTheMap()
{
    // Windows of 2, 3, 3 and 2 pixels; all means are exactly representable.
    const QList<double> values = {2, 4, 12, 32};
    const QList<double> means = {3, 6, 16, 22};
    TDData0 alongX(4, 1);
    line(values)->smoothAlongX(&alongX, 1);
    QCOMPARE(alongX.data, means);
    TDData0 alongY(1, 4);
    column(values)->smoothAlongY(&alongY, 1);
    QCOMPARE(alongY.data, means);
}

void TestTDData0Smoothing::invalidPixelsAreSkipped()
{
    const auto map = line({2, 1000, 4, 8});
    map->validFlags[1] = false;
    TDData0 dest(4, 1);
    map->smoothAlongX(&dest, 1);
    QCOMPARE(dest.data, QList<double>({2, 0, 6, 6}));
    QCOMPARE(dest.validFlags, QList<bool>({true, false, true, true}));
}

void TestTDData0Smoothing::targetKeepsItsValuesAtInvalidPixels()
{
    const auto map = line({2, 1000, 4});
    map->validFlags[1] = false;
    const auto dest = line({-1, -2, -3});
    map->smoothAlongX(dest.get(), 1);
    QCOMPARE(dest->data, QList<double>({2, -2, 4}));
    QCOMPARE(dest->validFlags, QList<bool>({true, true, true}));
}

void TestTDData0Smoothing::nanPixelMakesTheRestOfTheMapLineNan()
{
    TDData0 map(4, 2);
    map.data = {1, notANumber, 3, 4, 1, 2, 3, 4};
    map.validFlags.fill(true);
    TDData0 dest(4, 2);
    map.smoothAlongX(&dest, 0);
    QCOMPARE(dest.data[0], 1.0);
    QVERIFY(std::isnan(dest.data[1]));
    // The NaN is outside the windows of pixels 2 and 3, but it is still in the running sum.
    QVERIFY(std::isnan(dest.data[2]));
    QVERIFY(std::isnan(dest.data[3]));
    QCOMPARE(dest.data.mid(4), QList<double>({1, 2, 3, 4}));
}

void TestTDData0Smoothing::extremesAreWidenedByTheMeansNotByTheInput()
{
    const auto map = line({2, 4, 12, 32});
    TDData0 dest(4, 1);
    dest.minVal = 1e300;
    dest.maxVal = -1e300;
    map->smoothAlongX(&dest, 1);
    QCOMPARE(dest.minVal, 3.0);
    QCOMPARE(dest.maxVal, 22.0);
}

void TestTDData0Smoothing::negativeWindowLeavesTheTargetUnchanged()
{
    const auto map = line({2, 4, 12, 32});
    TDData0 dest(4, 1);
    map->smoothAlongX(&dest, -1);
    map->smoothAlongY(&dest, std::numeric_limits<int>::min());
    QCOMPARE(dest.data, QList<double>(4, 0.0));
    QCOMPARE(dest.validFlags, QList<bool>(4, false));
}

void TestTDData0Smoothing::hugeWindowIsLimitedToTheMapLineOrColumn()
{
    const auto map = randomMap(300, 200);
    QElapsedTimer timer;
    timer.start();
    TDData0 dest(300, 200);
    map->smoothAlongX(&dest, std::numeric_limits<int>::max());
    map->smoothAlongY(&dest, std::numeric_limits<int>::max());
    QVERIFY2(timer.elapsed() < 30'000, "500 lines of 2^31 steps take hours");
    QVERIFY(containsMeans(dest, *map, 0, 200));
}

void TestTDData0Smoothing::smallTargetReceivesThePixelsWithinItsSize()
{
    TDData0 map(3, 2);
    map.data = {2, 4, 6, 10, 20, 30};
    map.validFlags.fill(true);
    TDData0 dest(2, 1);
    map.smoothAlongX(&dest, 1);
    QCOMPARE(dest.data, QList<double>({3, 4}));
    TDData0 destAlongY(2, 1);
    map.smoothAlongY(&destAlongY, 1);
    QCOMPARE(destAlongY.data, QList<double>({6, 12}));
}

void TestTDData0Smoothing::pixelsMissingFromTheDataOrFlagListAreSkipped()
{
    const auto map = line({2, 4, 12, 32});
    map->data.resize(2);
    TDData0 dest(4, 1);
    map->smoothAlongX(&dest, 1);
    QCOMPARE(dest.data, QList<double>({3, 3, 0, 0}));
    dest.validFlags.resize(1);
    map->smoothAlongY(&dest, 1);
    QCOMPARE(dest.data, QList<double>({2, 3, 0, 0}));
}

void TestTDData0Smoothing::smoothingWithNonPositiveWindowsCopiesTheMap_data()
{
    QTest::addColumn<int>("nx");
    QTest::addColumn<int>("ny");
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("negative") << -1 << -7;
}

void TestTDData0Smoothing::smoothingWithNonPositiveWindowsCopiesTheMap()
{
    QFETCH(int, nx);
    QFETCH(int, ny);
    const auto map = randomMap(5, 4);
    map->dataId = "id";
    map->setRegion(QRect(1, 1, 2, 2));
    map->maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
    const std::unique_ptr<TDData0> copy(map->smoothed(nx, ny));
    QCOMPARE(copy->width, 5);
    QCOMPARE(copy->height, 4);
    QCOMPARE(copy->data, map->data);
    QCOMPARE(copy->validFlags, map->validFlags);
    QCOMPARE(copy->dataId, "id");
    QCOMPARE(copy->region, QRect(1, 1, 2, 2));
    QVERIFY(copy->regionSet);
    QCOMPARE(copy->maskItems.size(), 1);
    QCOMPARE(copy->maskItems.first()->label(), "c");
}

void TestTDData0Smoothing::directionWithANonPositiveWindowIsNotSmoothed_data()
{
    QTest::addColumn<int>("nx");
    QTest::addColumn<int>("ny");
    QTest::newRow("along x") << 2 << 0;
    QTest::newRow("along x, y negative") << 1 << -1;
    QTest::newRow("along y") << 0 << 3;
    QTest::newRow("along y, x negative") << -1 << 1;
}

void TestTDData0Smoothing::directionWithANonPositiveWindowIsNotSmoothed()
{
    QFETCH(int, nx);
    QFETCH(int, ny);
    const auto map = randomMap(9, 8);
    const std::unique_ptr<TDData0> smooth(map->smoothed(nx, ny));
    QVERIFY(containsMeans(*smooth, *map, std::max(nx, 0), std::max(ny, 0)));
}

void TestTDData0Smoothing::smoothingInBothDirectionsStartsAlongX()
{
    // The invalid pixel at (1, 1) makes the order of the two passes visible:
    //   2 4    along x   3  3    along y   5.5 3
    //   8 -              8  -              5.5 -
    // With the pass along y first, the pixel (0, 0) would be 4.5.
    TDData0 map(2, 2);
    map.data = {2, 4, 8, 1000};
    map.validFlags = {true, true, true, false};
    const std::unique_ptr<TDData0> smooth(map.smoothed(1, 1));
    QCOMPARE(smooth->data, QList<double>({5.5, 3, 5.5, 0}));
    QCOMPARE(smooth->validFlags, map.validFlags);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestTDData0Smoothing::smoothedMapHasNoIdentifierRegionOrMaskItems()
{
    const auto map = randomMap(5, 4);
    map->dataId = "id";
    map->setRegion(QRect(1, 1, 2, 2));
    map->maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
    for (const auto& [nx, ny] : {std::pair{1, 0}, std::pair{0, 1}, std::pair{1, 1}}) {
        const std::unique_ptr<TDData0> smooth(map->smoothed(nx, ny));
        QVERIFY(smooth->dataId.isEmpty());
        QVERIFY(!smooth->regionSet);
        QVERIFY(smooth->maskItems.isEmpty());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void TestTDData0Smoothing::smoothedExtremesIncludeZero()
{
    const auto map = line({2, 4, 12, 32});
    const std::unique_ptr<TDData0> smooth(map->smoothed(1, 0));
    QCOMPARE(smooth->minVal, 0.0);
    QCOMPARE(smooth->maxVal, 22.0);
    const std::unique_ptr<TDData0> copy(map->smoothed(0, 0));
    QCOMPARE(copy->minVal, 0.0);
    QCOMPARE(copy->maxVal, 32.0);
}

void TestTDData0Smoothing::deletionOfTheIntermediateMapIsDeferred()
{
    const auto map = randomMap(5, 4);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const DeletionCounter deletions;
    const std::unique_ptr<TDData0> smooth(map->smoothed(1, 1));
    QCOMPARE(deletions.count, 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(deletions.count, 1);
}

void TestTDData0Smoothing::smoothedEmptyMapIsEmpty()
{
    const TDData0 map(0, 0);
    for (const int n : {0, 1}) {
        const std::unique_ptr<TDData0> smooth(map.smoothed(n, n));
        QVERIFY(smooth->data.isEmpty());
        QCOMPARE(smooth->minVal, 1e300);
        QCOMPARE(smooth->maxVal, -1e300);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QTEST_GUILESS_MAIN(TestTDData0Smoothing)
#include "tst_TDData0Smoothing.moc"
