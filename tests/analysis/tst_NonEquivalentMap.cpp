// The non-equivalent method for a stack of maps. tst_BlockCalculations compares it with the
// reference implementation.
#include "analysis/NonEquivalentMap.h"

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"
#include "support/AbsorbanceMap.h"

#include <QTest>

#include <array>
#include <cmath>
#include <limits>
#include <random>

using analysis::HistogramCounts;

namespace neq = analysis::neq;
using tests::absorbanceMap;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Result {
    A2DData map;
    std::array<HistogramCounts, 10> counts;

    Result()
    {
        for (HistogramCounts& histogram : counts) {
            histogram.start(-0.48, 1.52, 51);
        }
    }

    analysis::NeqHistograms histograms()
    {
        return {&counts[0],
                &counts[1],
                {&counts[2], &counts[3], &counts[4], &counts[5]},
                {&counts[6], &counts[7], &counts[8], &counts[9]}};
    }
};

int counted(const HistogramCounts& histogram)
{
    int sum = histogram.under + histogram.over;
    for (const int bin : histogram.bins) {
        sum += bin;
    }
    return sum;
}

// A stack of four rows with two references that are linearly independent.
analysis::NeqStack twoReferenceStack(const QList<const A2DData*>& maps)
{
    analysis::NeqStack stack;
    stack.inputs.refValues = {{0, 1, 0, 4}, {1, 0, 2, 4}};
    stack.inputs.energies = {1, 2, 3, 4};
    stack.inputs.weights = {0.5, 0.5};
    stack.inputs.valences = {2, 3};
    stack.inputs.jumpSum = 2.0;
    stack.inputs.rowIndices = {0, 1, 2, 3};
    stack.maps = maps;
    stack.base = maps.first();
    return stack;
}

} // namespace

class tst_NonEquivalentMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mixtureOfAPixelIsRecovered();
    void baseMapSetsSizeCoordinatesAndHeader();
    void baseMapWithoutPixelsGivesAnEmptyExtendedResult();
    void pixelWithoutDataHasAllThirteenValues();
    void mapOfAnotherSizeIsIndexedWithItsOwnWidth();
    void linearBackgroundLeavesC2Zero();
    void histogramsCountEveryPixelExceptForUnusedReferences();
    void pixelsWithoutDataShareOneValueList();
    void pixelsOfAUniformBlockShareOneValueList();
    void pixelAmountIsShareTimesSumThenTimesJumpSum();
};

void tst_NonEquivalentMap::mixtureOfAPixelIsRecovered()
{
    // T = R1 + 3 R2. The coefficients 1 and 3 times the weights of 1/2 add up to 2. So the
    // shares are 1/4 and 3/4, and the valence is 1/4 * 2 + 3/4 * 3 = 2.75. The total dMut is
    // 2 * jumpSum = 4, and the amounts (dMut) are 1/4 * 4 = 1 and 3/4 * 4 = 3.
    const A2DData m0 = absorbanceMap(1, 1, {3});
    const A2DData m1 = absorbanceMap(1, 1, {1});
    const A2DData m2 = absorbanceMap(1, 1, {6});
    const A2DData m3 = absorbanceMap(1, 1, {16});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&m0, &m1, &m2, &m3}), result.map,
                               result.histograms());
    QCOMPARE(result.map.rows.size(), 1);
    const A2DRow& row = result.map.rows.first();
    const QList<double> expected{0.25, 0.75, 0, 0, 1, 3, 0, 0, 0, 0, 0, 2.75, 4};
    QCOMPARE(row.values.size(), 13);
    for (int i = 0; i < neq::count; ++i) {
        QVERIFY2(std::fabs(row.values.at(i) - expected.at(i)) < 1e-12,
                 qPrintable(QString("%1: %2").arg(i).arg(row.values.at(i))));
    }
    QCOMPARE(row.intensity, row.values.at(0));
    QCOMPARE(row.i0, row.values.at(12));
    QVERIFY(result.map.extended);
}

void tst_NonEquivalentMap::baseMapSetsSizeCoordinatesAndHeader()
{
    A2DData base = absorbanceMap(2, 2, {1, 2, 3}); // data for three of the four pixels
    base.headerLines = QStringList{"# first", "# second"};
    const A2DData other = absorbanceMap(1, 1, {1});
    Result result;
    result.map.headerLines = QStringList{"# earlier"};
    analysis::mapNonEquivalent(twoReferenceStack({&base, &other, &other, &other}), result.map,
                               result.histograms());
    QCOMPARE(result.map.xNum, 2);
    QCOMPARE(result.map.yNum, 2);
    QCOMPARE(result.map.headerLines, base.headerLines);
    QCOMPARE(result.map.rows.size(), 4);
    QCOMPARE(result.map.rows.at(2).x, 12.0);
    QCOMPARE(result.map.rows.at(2).y, 20.0);
    QCOMPARE(result.map.rows.at(3).x, 0.0);
    QCOMPARE(result.map.rows.at(3).y, 0.0);
}

void tst_NonEquivalentMap::baseMapWithoutPixelsGivesAnEmptyExtendedResult()
{
    const A2DData none;
    const A2DData other = absorbanceMap(1, 1, {1});
    Result result;
    result.map = other;
    analysis::mapNonEquivalent(twoReferenceStack({&none, &other, &other, &other}), result.map,
                               result.histograms());
    QVERIFY(result.map.rows.isEmpty());
    QCOMPARE(result.map.xNum, 0);
    QVERIFY(result.map.extended);
}

void tst_NonEquivalentMap::pixelWithoutDataHasAllThirteenValues()
{
    // A pixel without data has the absorbance -1 at all rows, which is a constant background.
    // The coefficients of the references are about 0 and the shares have no meaning, but the
    // pixel still has all thirteen values.
    A2DData base = absorbanceMap(3, 1, {1});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&base, &base, &base, &base}), result.map,
                               result.histograms());
    QCOMPARE(result.map.rows.size(), 3);
    for (const int i : {1, 2}) {
        QCOMPARE(result.map.rows.at(i).values.size(), 13);
        QVERIFY(std::fabs(result.map.rows.at(i).values.at(neq::mut0) + 1) < 1e-12);
        QVERIFY(std::fabs(result.map.rows.at(i).values.at(neq::totalDMut)) < 1e-12);
    }
    QCOMPARE(counted(result.counts[0]), 3);
}

void tst_NonEquivalentMap::mapOfAnotherSizeIsIndexedWithItsOwnWidth()
{
    // Pixel (0, 1) has the index 1 in the map of width 1 and the index 2 in the base map of
    // width 2. Its values 3, 1, 6 and 16 are the mixture of mixtureOfAPixelIsRecovered().
    const A2DData base = absorbanceMap(2, 2, {0, 0, 3, 0});
    const A2DData narrow = absorbanceMap(1, 2, {7, 1});
    const A2DData third = absorbanceMap(2, 2, {0, 0, 6, 0});
    const A2DData fourth = absorbanceMap(2, 2, {0, 0, 16, 0});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&base, &narrow, &third, &fourth}), result.map,
                               result.histograms());
    QVERIFY(std::fabs(result.map.rows.at(2).values.at(0) - 0.25) < 1e-12);
}

void tst_NonEquivalentMap::linearBackgroundLeavesC2Zero()
{
    const A2DData a = absorbanceMap(3, 1, {1, 2, 3});
    const A2DData b = absorbanceMap(3, 1, {5, 1, 0});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&a, &b, &b, &a}), result.map,
                               result.histograms());
    for (const A2DRow& row : std::as_const(result.map.rows)) {
        QCOMPARE(row.values.at(neq::c2), 0.0);
        QVERIFY(row.values.at(neq::c1) != 0.0);
    }
}

void tst_NonEquivalentMap::histogramsCountEveryPixelExceptForUnusedReferences()
{
    const A2DData a = absorbanceMap(3, 1, {1, 2, notANumber});
    const A2DData b = absorbanceMap(3, 1, {5, 1, 0});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&a, &b, &b, &a}), result.map,
                               result.histograms());
    const std::array<int, 10> pixels{3, 3, 3, 3, 0, 0, 3, 3, 0, 0};
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        QCOMPARE(counted(result.counts[i]), pixels[i]);
    }
    QVERIFY(result.counts[0].under >= 1); // the NaN pixel
}

void tst_NonEquivalentMap::pixelsWithoutDataShareOneValueList()
{
    const A2DData base = absorbanceMap(1000, 1, {1, 2});
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&base, &base, &base, &base}), result.map,
                               result.histograms());
    QCOMPARE(result.map.rows.size(), 1000);
    // The first block of 64 pixels contains the two pixels with data. The pixels of the other
    // blocks have no data and share one list.
    QVERIFY(result.map.rows.at(64).values.constData() ==
            result.map.rows.at(999).values.constData());
    QVERIFY(result.map.rows.at(0).values.constData() != result.map.rows.at(1).values.constData());
}

void tst_NonEquivalentMap::pixelsOfAUniformBlockShareOneValueList()
{
    // Five blocks of 64 pixels with the values 1 (block 0), 2 (blocks 1 and 2) and NaN
    // (block 4). In block 3, the last pixel is 3 and the other pixels are 2.
    QList<double> muts(64, 1.0);
    muts += QList<double>(191, 2.0) + QList<double>{3.0} + QList<double>(64, notANumber);
    const A2DData base = absorbanceMap(320, 1, muts);
    const A2DData flat = absorbanceMap(320, 1, QList<double>(320, 0.5));
    Result result;
    analysis::mapNonEquivalent(twoReferenceStack({&base, &flat, &flat, &base}), result.map,
                               result.histograms());
    const auto listOf = [&](int pixel) { return result.map.rows.at(pixel).values.constData(); };
    QVERIFY(listOf(0) == listOf(63));
    QVERIFY(listOf(64) == listOf(191));
    QVERIFY(listOf(0) != listOf(64));
    QVERIFY(listOf(192) != listOf(193));
    QVERIFY(listOf(256) == listOf(319));
    QCOMPARE(result.map.rows.at(192).values, result.map.rows.at(64).values);
    QVERIFY(result.map.rows.at(0).values != result.map.rows.at(64).values);
    QVERIFY(result.map.rows.at(255).values != result.map.rows.at(254).values);
}

void tst_NonEquivalentMap::pixelAmountIsShareTimesSumThenTimesJumpSum()
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> uniform(0.0, 3.0);
    int differentRoundings = 0;
    for (int trial = 0; trial < 50; ++trial) {
        QList<A2DData> made;
        QList<const A2DData*> maps;
        QList<double> T;
        for (int k = 0; k < 4; ++k) {
            T.append(uniform(random));
            made.append(absorbanceMap(1, 1, {T.last()}));
        }
        for (const A2DData& map : std::as_const(made)) {
            maps.append(&map);
        }
        analysis::NeqStack stack = twoReferenceStack(maps);
        stack.inputs.jumpSum = uniform(random);
        double sum = 0.0;
        QList<double> out;
        analysis::neqSolve(false, T, stack.inputs.refValues, stack.inputs.energies,
                           stack.inputs.weights, &sum, out);
        Result result;
        analysis::mapNonEquivalent(stack, result.map, result.histograms());
        const QList<double> values = result.map.rows.first().values;
        for (int i = 0; i < 2; ++i) {
            QVERIFY(values.at(neq::dMut + i) ==
                    out.at(i) * sum * stack.inputs.jumpSum); // to the last bit
            differentRoundings +=
                values.at(neq::dMut + i) != out.at(i) * (sum * stack.inputs.jumpSum) ? 1 : 0;
        }
    }
    QVERIFY(differentRoundings > 0);
}

QTEST_APPLESS_MAIN(tst_NonEquivalentMap)
#include "tst_NonEquivalentMap.moc"
