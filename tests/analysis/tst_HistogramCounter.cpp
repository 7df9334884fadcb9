// Counting values in blocks, compared with counting them one by one.
#include "analysis/HistogramCounter.h"

#include "analysis/HistogramCounts.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"

#include <QTest>

#include <cmath>
#include <limits>

using analysis::Block;
using analysis::blockPixels;
using analysis::HistogramCounter;
using analysis::HistogramCounts;
using analysis::Instructions;

namespace
{

using Values = std::vector<double>;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool sameCounts(const HistogramCounts& a, const HistogramCounts& b)
{
    return a.bins == b.bins && a.under == b.under && a.over == b.over && a.total == b.total &&
           a.boxes == b.boxes && tests::sameDouble(a.minV, b.minV) &&
           tests::sameDouble(a.maxV, b.maxV) && tests::sameDouble(a.step, b.step);
}

bool sameCounts(const HistogramCounts& a, const tests::PlainHistogram& plain)
{
    return a.bins == plain.bins && a.under == plain.under && a.over == plain.over &&
           a.total == plain.total;
}

/// Counts @p values in blocks of @p perBlock values. Unused elements at the end of a block are
/// minV or NaN, which must not be counted.
/// @return whether a copy of @p counts from before the counting is unchanged
bool countInBlocks(HistogramCounts& counts, const Values& values, int perBlock,
                   Instructions instructions)
{
    HistogramCounter counter(counts);
    const HistogramCounts before = counts;
    const QList<int> binsBefore(before.bins.cbegin(), before.bins.cend());
    for (std::size_t first = 0; first < values.size();) {
        Block block;
        block.fill(first % 2 == 0 ? before.minV : notANumber);
        int count = 0;
        for (; count < perBlock && first < values.size(); ++count, ++first) {
            block[static_cast<std::size_t>(count)] = values[first];
        }
        counter.add(block, count, instructions);
    }
    counter.finish();
    return before.bins == binsBefore;
}

/// Random values on, next to and between bin edges, values whose bin numbers are near the limits
/// of int, and values from tests::specialNumbers.
Values valuesFor(const HistogramCounts& counts, std::mt19937_64& random, int number)
{
    Values values;
    for (int i = 0; i < number; ++i) {
        const int bin = tests::wholeNumber(random, -3, counts.boxes + 3);
        const double edge = counts.minV + counts.step * bin;
        switch (tests::wholeNumber(random, 0, 6)) {
        case 0:
            values.push_back(edge);
            break;
        case 1:
            values.push_back(std::nextafter(edge, inf));
            break;
        case 2:
            values.push_back(std::nextafter(edge, -inf));
            break;
        case 3:
            values.push_back(tests::specialNumbers[random() % tests::specialNumbers.size()]);
            break;
        case 4: // bin numbers around the limits of int
            values.push_back(counts.minV +
                             counts.step * (2147483648.0 * (tests::onceIn(random, 2) ? 1 : -1) +
                                            tests::wholeNumber(random, -2, 2)));
            break;
        default:
            values.push_back(edge + counts.step *
                                        std::uniform_real_distribution<double>(0.0, 1.0)(random));
        }
    }
    return values;
}

/// Whether the counts are equal if @p values are counted one by one, in blocks with each
/// instruction set, and by the reference implementation. Also checks that counting in blocks does
/// not change a copy of the histogram.
bool countsAgree(double from, double to, int boxes, const Values& values, int perBlock)
{
    HistogramCounts startState;
    startState.start(from, to, boxes);
    HistogramCounts expected = startState;
    tests::PlainHistogram plain{startState.minV, startState.step, startState.bins, 0, 0, 0};
    for (const double value : values) {
        expected.add(value);
        tests::plainCount(plain, value);
    }
    bool agree = sameCounts(expected, plain);
    for (const Instructions instructions : analysis::availableInstructions()) {
        HistogramCounts counts = startState;
        agree = countInBlocks(counts, values, perBlock, instructions) && agree;
        agree = sameCounts(counts, expected) && agree;
    }
    return agree;
}

} // namespace

class tst_HistogramCounter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countingInBlocksEqualsCountingOneByOne_data();
    void countingInBlocksEqualsCountingOneByOne();
    void blocksOfEveryLengthGiveTheSameCountsAsSingleValues();
    void valuesBeyondTheGivenBlockLengthAreIgnored_data();
    void valuesBeyondTheGivenBlockLengthAreIgnored();
    void valueOnABinEdgeCountsInTheBinAbove();
    void valuesLessThanOneBinBelowTheRangeCountInBinZero();
    void valuesWithBinNumbersBeyondIntCountAsBelow();
    void valuesInOneBinAreAllCounted();
    void countingInBlocksKeepsEarlierCounts();
    void higherEarlierCountRemainsTheMaximum();
    void finishAddsTheBlockCountsToTheHistogram();
    void finishWithoutBlocksChangesNothing();
};

void tst_HistogramCounter::countingInBlocksEqualsCountingOneByOne_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<int>("boxes");
    const QList<std::pair<double, double>> limits{
        {0.0, 1.0},        {-0.48, 1.52},     {1.52, -0.48},   {1.0, 1.0},
        {notANumber, 1.0}, {0.0, notANumber}, {0.0, inf},      {-inf, inf},
        {-1e308, 1e308},   {0.0, 5e-324},     {1e15, 1e15 + 8}};
    for (const int boxes : {0, 1, 2, 51, 1023, 1024, 1025}) {
        for (const auto& [from, to] : limits) {
            QTest::addRow("%d bins, %g to %g", boxes, from, to) << from << to << boxes;
        }
    }
    QTest::newRow("1000000 bins") << 0.0 << 1.0 << 1000000;
    QTest::newRow("1000000 bins, descending") << 7.0 << -1.0 << 1000000;
}

void tst_HistogramCounter::countingInBlocksEqualsCountingOneByOne()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(int, boxes);
    HistogramCounts counts;
    counts.start(from, to, boxes);
    std::mt19937_64 random(static_cast<unsigned>(boxes) + 1U);
    QVERIFY(countsAgree(from, to, boxes, valuesFor(counts, random, 3000), blockPixels));
    if (boxes <= 2000) {
        QVERIFY(countsAgree(from, to, boxes, valuesFor(counts, random, 500), 7));
    }
}

void tst_HistogramCounter::blocksOfEveryLengthGiveTheSameCountsAsSingleValues()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 11);
    std::mt19937_64 random(3);
    for (int perBlock = 1; perBlock <= blockPixels; ++perBlock) {
        QVERIFY(countsAgree(0.0, 1.0, 11, valuesFor(counts, random, 2 * perBlock + 1), perBlock));
    }
}

void tst_HistogramCounter::valuesBeyondTheGivenBlockLengthAreIgnored_data()
{
    QTest::addColumn<int>("boxes");
    QTest::addColumn<int>("count");
    for (const int boxes : {11, 2000}) {
        for (int count = 0; count <= blockPixels; ++count) {
            QTest::addRow("%d bins, %d values", boxes, count) << boxes << count;
        }
    }
}

void tst_HistogramCounter::valuesBeyondTheGivenBlockLengthAreIgnored()
{
    QFETCH(int, boxes);
    QFETCH(int, count);
    for (const Instructions instructions : analysis::availableInstructions()) {
        HistogramCounts counts;
        counts.start(0.0, 1.0, boxes);
        Block block;
        block.fill(1.0); // the unused values would be counted in the last bin
        std::fill_n(block.begin(), count, 0.0);
        HistogramCounter counter(counts);
        counter.add(block, count, instructions);
        counter.add(block, 0, instructions);
        counter.finish();
        QCOMPARE(counts.bins.first(), count);
        QCOMPARE(counts.bins.last(), 0);
        QCOMPARE(counts.total, count);
        QCOMPARE(counts.under + counts.over, 0);
    }
}

// Four bins of width 2; the edges 0, 2, 4, 6 and 8 are exact in binary.
void tst_HistogramCounter::valueOnABinEdgeCountsInTheBinAbove()
{
    for (const Instructions instructions : analysis::availableInstructions()) {
        HistogramCounts counts;
        counts.start(1.0, 7.0, 4);
        Block block{};
        const Values edges{0.0, 2.0, 4.0, 6.0, 8.0, std::nextafter(8.0, 0.0)};
        std::copy(edges.begin(), edges.end(), block.begin());
        HistogramCounter counter(counts);
        counter.add(block, 6, instructions);
        counter.finish();
        QCOMPARE(counts.bins, (QList<int>{1, 1, 1, 2}));
        QCOMPARE(counts.over, 1);
        QCOMPARE(counts.under, 0);
    }
}

void tst_HistogramCounter::valuesLessThanOneBinBelowTheRangeCountInBinZero()
{
    for (const Instructions instructions : analysis::availableInstructions()) {
        HistogramCounts counts;
        counts.start(1.0, 7.0, 4);
        Block block{};
        const Values below{-0.0, -5e-324, -1.0, std::nextafter(-2.0, 0.0), -2.0, -3.0};
        std::copy(below.begin(), below.end(), block.begin());
        HistogramCounter counter(counts);
        counter.add(block, 6, instructions);
        counter.finish();
        QCOMPARE(counts.bins, (QList<int>{4, 0, 0, 0}));
        QCOMPARE(counts.under, 2);
    }
}

// The bins start at 0 and have the width 2. 4294967294 and 4294967295.9 have the bin number
// 2^31 - 1, the largest int, and count as above. From 4294967296 on the bin number is not an
// int: these values, infinities and NaN count as below.
void tst_HistogramCounter::valuesWithBinNumbersBeyondIntCountAsBelow()
{
    for (const Instructions instructions : analysis::availableInstructions()) {
        HistogramCounts counts;
        counts.start(1.0, 7.0, 4);
        Block block{};
        const Values far{4294967294.0, 4294967295.9, 4294967296.0, 1e300, inf, -inf, notANumber};
        std::copy(far.begin(), far.end(), block.begin());
        HistogramCounter counter(counts);
        counter.add(block, 7, instructions);
        counter.finish();
        QCOMPARE(counts.over, 2);
        QCOMPARE(counts.under, 5);
        QCOMPARE(counts.total, 0);
    }
}

void tst_HistogramCounter::valuesInOneBinAreAllCounted()
{
    QVERIFY(countsAgree(0.0, 1.0, 11, Values(1000, 0.5), blockPixels));
    QVERIFY(countsAgree(0.0, 1.0, 5000, Values(1000, 0.5), blockPixels));
}

void tst_HistogramCounter::countingInBlocksKeepsEarlierCounts()
{
    for (const int boxes : {3, 2000}) {
        HistogramCounts counts;
        counts.start(0.0, 1.0, boxes);
        std::mt19937_64 random(5);
        HistogramCounts expected = counts;
        for (int round = 0; round < 4; ++round) {
            const Values values = valuesFor(counts, random, 100);
            for (const double value : values) {
                expected.add(value);
            }
            if (round % 2 == 0) {
                QVERIFY(
                    countInBlocks(counts, values, blockPixels, analysis::fastestInstructions()));
            } else {
                for (const double value : values) {
                    counts.add(value);
                }
            }
            QVERIFY(sameCounts(counts, expected));
        }
    }
}

void tst_HistogramCounter::higherEarlierCountRemainsTheMaximum()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 11);
    for (int i = 0; i < 9; ++i) {
        counts.add(0.0);
    }
    QVERIFY(countInBlocks(counts, Values(4, 1.0), blockPixels, analysis::fastestInstructions()));
    QCOMPARE(counts.total, 9);
    QVERIFY(countInBlocks(counts, Values(6, 1.0), blockPixels, analysis::fastestInstructions()));
    QCOMPARE(counts.total, 10);
}

void tst_HistogramCounter::finishAddsTheBlockCountsToTheHistogram()
{
    for (const int boxes : {11, 5001}) {
        HistogramCounts counts;
        counts.start(0.0, 1.0, boxes);
        Block block;
        block.fill(0.5);
        HistogramCounter counter(counts);
        counter.add(block, blockPixels);
        counter.finish();
        QCOMPARE(counts.bins.at(boxes / 2), blockPixels);
        QCOMPARE(counts.total, blockPixels);
    }
}

void tst_HistogramCounter::finishWithoutBlocksChangesNothing()
{
    HistogramCounts counts;
    counts.start(0.0, 1.0, 11);
    counts.add(0.5);
    const HistogramCounts before = counts;
    HistogramCounter counter(counts);
    counter.finish();
    QVERIFY(sameCounts(counts, before));
}

QTEST_APPLESS_MAIN(tst_HistogramCounter)
#include "tst_HistogramCounter.moc"
