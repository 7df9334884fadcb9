// Limits, counting and the file text of histograms.
#include "analysis/HistogramCounts.h"

#include <QTest>

#include <cmath>
#include <limits>

using analysis::HistogramCounts;

namespace
{

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Four bins of width 2; the edges 0, 2, 4, 6 and 8 are exact in binary.
HistogramCounts fourBins()
{
    HistogramCounts counts;
    counts.start(1.0, 7.0, 4);
    return counts;
}

} // namespace

class tst_HistogramCounts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberOfBinsIsTruncatedAndClamped_data();
    void numberOfBinsIsTruncatedAndClamped();
    void limitsAreCentresOfTheOuterBins();
    void startZeroesAllCounts();
    void startClampsTheNumberOfBins();
    void valueIsCountedInItsBin_data();
    void valueIsCountedInItsBin();
    void valueHalfABinBelowTheLowerLimitIsInBinZero();
    void totalIsTheHighestCount();
    void valuesOutsideTheLimitsDoNotRaiseTheHighestCount();
    void valuesAreCountedBetweenDescendingLimits();
    void withOneBinEveryValueCountsAsBelow_data();
    void withOneBinEveryValueCountsAsBelow();
    void withoutBinsEveryValueCountsAsOutside();
    void fileHasTwoLinesMoreThanBins_data();
    void fileHasTwoLinesMoreThanBins();
    void fileLinesHaveEdgesCentreAndCount();
    void fileWithoutBinsHasTwoLines();
    void fileOfOneBinShowsInfinityAndNaN();
    void fileRoundsExactHalvesAwayFromZero();
};

void tst_HistogramCounts::numberOfBinsIsTruncatedAndClamped_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("boxes");
    QTest::newRow("whole") << 50.0 << 50;
    QTest::newRow("truncated, not rounded") << 10.99 << 10;
    QTest::newRow("one") << 1.0 << 1;
    QTest::newRow("below one") << 0.999 << 0;
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("negative") << -7.0 << 0;
    QTest::newRow("NaN") << notANumber << 0;
    QTest::newRow("minus infinity") << -inf << 0;
    QTest::newRow("just below the maximum") << 999999.9 << 999999;
    QTest::newRow("the maximum") << 1e6 << 1000000;
    QTest::newRow("above the maximum") << 1000001.0 << 1000000;
    QTest::newRow("beyond int") << 1e300 << 1000000;
    QTest::newRow("infinity") << inf << 1000000;
}

void tst_HistogramCounts::numberOfBinsIsTruncatedAndClamped()
{
    QFETCH(double, number);
    QTEST(HistogramCounts::boxesFrom(number), "boxes");
}

// Eleven bins with centres from 0 to 1, so the bin width is 0.1. The tolerance 1e-15 is
// between four and five ulps of 1 (2.2e-16).
void tst_HistogramCounts::limitsAreCentresOfTheOuterBins()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 11);
    QCOMPARE(counts.boxes, 11);
    QVERIFY(std::abs(counts.step - 0.1) < 1e-15);
    QVERIFY(std::abs(counts.minV + 0.05) < 1e-15);
    QVERIFY(std::abs(counts.maxV - 1.05) < 1e-15);
    counts.add(0.0); // the centre of bin 0
    counts.add(1.0); // the centre of the last bin
    QCOMPARE(counts.bins.first(), 1);
    QCOMPARE(counts.bins.last(), 1);
}

void tst_HistogramCounts::startZeroesAllCounts()
{
    HistogramCounts counts = fourBins();
    for (const double value : {-9.0, 1.0, 1.0, 99.0}) {
        counts.add(value);
    }
    counts.start(1.0, 3.0, 3);
    QCOMPARE(counts.bins, (QList<int>{0, 0, 0}));
    QCOMPARE(counts.under, 0);
    QCOMPARE(counts.over, 0);
    QCOMPARE(counts.total, 0);
}

void tst_HistogramCounts::startClampsTheNumberOfBins()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, -5);
    QCOMPARE(counts.boxes, 0);
    QCOMPARE(counts.bins.size(), 0);
    counts.start(0.0, 1.0, std::numeric_limits<int>::max());
    QCOMPARE(counts.boxes, 1000000);
    QCOMPARE(counts.bins.size(), 1000000);
}

void tst_HistogramCounts::valueIsCountedInItsBin_data()
{
    constexpr int below = -1;
    constexpr int above = 4;
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("bin");
    QTest::newRow("lower edge of bin 0") << 0.0 << 0;
    QTest::newRow("inside bin 0") << 1.5 << 0;
    QTest::newRow("an edge belongs to the upper bin") << 2.0 << 1;
    QTest::newRow("last bin") << 7.999 << 3;
    QTest::newRow("upper edge of the last bin") << 8.0 << above;
    QTest::newRow("above") << 100.0 << above;
    QTest::newRow("half a bin below falls into bin 0") << -1.0 << 0;
    QTest::newRow("nearly one bin below falls into bin 0") << std::nextafter(-2.0, 0.0) << 0;
    QTest::newRow("one bin below") << -2.0 << below;
    QTest::newRow("far below") << -1e9 << below;
    QTest::newRow("largest bin number in int") << 4294967294.0 << above;
    QTest::newRow("beyond int") << 4294967296.0 << below;
    QTest::newRow("huge") << 1e300 << below;
    QTest::newRow("hugely negative") << -1e300 << below;
    QTest::newRow("infinity") << inf << below;
    QTest::newRow("minus infinity") << -inf << below;
    QTest::newRow("NaN") << notANumber << below;
}

void tst_HistogramCounts::valueIsCountedInItsBin()
{
    QFETCH(double, value);
    QFETCH(int, bin);
    HistogramCounts counts = fourBins();
    counts.add(value);
    QCOMPARE(counts.under, bin == -1 ? 1 : 0);
    QCOMPARE(counts.over, bin == 4 ? 1 : 0);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(counts.bins.at(i), bin == i ? 1 : 0);
    }
}

// The lower limit 1 is the centre of bin 0 and the bin width is 2. The value 0 is half a bin
// width below the limit, on the lower edge of bin 0.
void tst_HistogramCounts::valueHalfABinBelowTheLowerLimitIsInBinZero()
{
    HistogramCounts counts = fourBins();
    counts.add(1.0 - 0.5 * 2.0);
    QCOMPARE(counts.bins.at(0), 1);
    QCOMPARE(counts.under, 0);
}

void tst_HistogramCounts::totalIsTheHighestCount()
{
    HistogramCounts counts = fourBins();
    for (const double value : {1.0, 3.0, 3.5, 2.5, 5.0, 5.5}) {
        counts.add(value);
    }
    QCOMPARE(counts.bins, (QList<int>{1, 3, 2, 0}));
    QCOMPARE(counts.total, 3);
}

void tst_HistogramCounts::valuesOutsideTheLimitsDoNotRaiseTheHighestCount()
{
    HistogramCounts counts = fourBins();
    for (int i = 0; i < 5; ++i) {
        counts.add(-50.0);
        counts.add(50.0);
    }
    counts.add(3.0);
    QCOMPARE(counts.total, 1);
    QCOMPARE(counts.under, 5);
    QCOMPARE(counts.over, 5);
}

// Limits from 7 to 1 with four bins: the bin width is -2 and bin 0 extends from 8 down to 6.
// So 11 is before bin 0 and -1 after the last bin.
void tst_HistogramCounts::valuesAreCountedBetweenDescendingLimits()
{
    HistogramCounts counts;
    counts.start(7.0, 1.0, 4);
    QCOMPARE(counts.minV, 8.0);
    QCOMPARE(counts.maxV, 0.0);
    counts.add(7.0);
    counts.add(1.0);
    counts.add(11.0);
    counts.add(-1.0);
    QCOMPARE(counts.bins, (QList<int>{1, 0, 0, 1}));
    QCOMPARE(counts.under, 1);
    QCOMPARE(counts.over, 1);
}

void tst_HistogramCounts::withOneBinEveryValueCountsAsBelow_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("ascending") << 0.0 << 1.0;
    QTest::newRow("descending") << 1.0 << 0.0;
    QTest::newRow("equal") << 1.0 << 1.0;
}

void tst_HistogramCounts::withOneBinEveryValueCountsAsBelow()
{
    QFETCH(double, from);
    QFETCH(double, to);
    HistogramCounts counts;
    counts.start(from, to, 1);
    QVERIFY(!std::isfinite(counts.step));
    for (const double value : {0.0, 0.5, 1.0, -1e300, 1e300, inf, -inf, notANumber}) {
        counts.add(value);
    }
    QCOMPARE(counts.bins, (QList<int>{0}));
    QCOMPARE(counts.under, 8);
    QCOMPARE(counts.over, 0);
}

void tst_HistogramCounts::withoutBinsEveryValueCountsAsOutside()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 0);
    QCOMPARE(counts.step, -1.0);
    counts.add(0.0);   // bin trunc((0 - 0.5) / -1) = 0, after the last of 0 bins
    counts.add(100.0); // bin trunc((100 - 0.5) / -1) = -99, before bin 0
    counts.add(notANumber);
    QCOMPARE(counts.bins.size(), 0);
    QCOMPARE(counts.over, 1);
    QCOMPARE(counts.under, 2);
    QCOMPARE(counts.total, 0);
}

void tst_HistogramCounts::fileHasTwoLinesMoreThanBins_data()
{
    QTest::addColumn<int>("boxes");
    for (const int boxes : {0, 1, 2, 11, 50, 1000}) {
        QTest::addRow("%d bins", boxes) << boxes;
    }
}

void tst_HistogramCounts::fileHasTwoLinesMoreThanBins()
{
    QFETCH(int, boxes);
    HistogramCounts counts;
    counts.start(0.0, 1.0, boxes);
    QCOMPARE(counts.fileText().count('\n'), boxes + 2);
}

void tst_HistogramCounts::fileLinesHaveEdgesCentreAndCount()
{
    HistogramCounts counts = fourBins();
    for (const double value : {-5.0, -5.0, -5.0, 1.0, 3.0, 3.0, 7.0, 8.0, 9.0}) {
        counts.add(value);
    }
    QCOMPARE(counts.fileText(), QByteArray("-2 -1 0  3\n"
                                           "0 1 2  1\n"
                                           "2 3 4  2\n"
                                           "4 5 6  0\n"
                                           "6 7 8  1\n"
                                           "8 9 10  2\n"));
}

// The bin width is (1 - 0) / (0 - 1) = -1 and the lower edge 0 + 0.5 = 0.5. The first line is
// for the values below the range (bin -1), the second for the values above it (bin 0).
void tst_HistogramCounts::fileWithoutBinsHasTwoLines()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 0);
    QCOMPARE(counts.fileText(), QByteArray("1.5 1 0.5  0\n"
                                           "0.5 0 -0.5  0\n"));
}

// With one bin, the bin width is 1 / 0, which is infinite, and the lower edge is minus
// infinity. Edges and centres are k * inf - inf, which is -inf for k < 0 and NaN for k >= 0.
void tst_HistogramCounts::fileOfOneBinShowsInfinityAndNaN()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 1);
    counts.add(0.5);
    QCOMPARE(counts.fileText(), QByteArray("-inf -inf nan  1\n"
                                           "nan nan nan  0\n"
                                           "nan nan nan  0\n"));
}

// The bin centres +-100000.5 and +-100001.5 are exactly representable. Each is halfway between
// two six-digit numbers.
void tst_HistogramCounts::fileRoundsExactHalvesAwayFromZero()
{
    HistogramCounts counts;
    counts.start(100000.5, 100001.5, 2);
    QCOMPARE(counts.fileText(), QByteArray("99999 99999.5 100000  0\n"
                                           "100000 100001 100001  0\n"
                                           "100001 100002 100002  0\n"
                                           "100002 100003 100003  0\n"));
    counts.start(-100001.5, -100000.5, 2);
    QCOMPARE(counts.fileText(), QByteArray("-100003 -100003 -100002  0\n"
                                           "-100002 -100002 -100001  0\n"
                                           "-100001 -100001 -100000  0\n"
                                           "-100000 -99999.5 -99999  0\n"));
}

QTEST_GUILESS_MAIN(tst_HistogramCounts)
#include "tst_HistogramCounts.moc"
