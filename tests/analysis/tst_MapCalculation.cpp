// The three-point and four-point methods on maps.
#include "analysis/MapCalculation.h"

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"
#include "support/AbsorbanceMap.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using analysis::HistogramCounts;
using analysis::MapStack;
using analysis::ValenceMix;
using tests::absorbanceMap;

namespace
{

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

struct Result {
    A2DData map;
    HistogramCounts valence;
    HistogramCounts thickness;

    Result()
    {
        valence.start(2.0, 3.0, 11);
        thickness.start(0.0, 2.0, 11);
    }
};

using Form = void (*)(const MapStack&, A2DData&, HistogramCounts&, HistogramCounts&);
using PlainForm = void (*)(const tests::PlainStack&, A2DData&, tests::PlainHistogram&,
                           tests::PlainHistogram&);

// A stack with two references that differ only at the V row. At row 0, row 1 and the V row, R1
// is 0, 4 and 3, and R2 is 0, 4 and 1. The valences are 2 and 3.
MapStack threePointStack(const A2DData& m0, const A2DData& m1, const A2DData& mv)
{
    return {{{&m0, 100, 0, 0}, {&m1, 200, 4, 4}}, {&mv, 150, 3, 1}, 1.0, {true, 2.0, 3.0}};
}

QString text(double value)
{
    return QString::number(value, 'g', 17);
}

} // namespace

Q_DECLARE_METATYPE(Form)
Q_DECLARE_METATYPE(PlainForm)

class tst_MapCalculation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resultHasOneRowPerPixelInScanOrder();
    void threePointsMatchAHandCalculation();
    void coordinatesAreReadFromTheVRowsMap();
    void pixelMissingInTheVRowsMapHasZeroCoordinates();
    void mapOfAnotherSizeIsIndexedWithItsOwnWidth();
    void headerLinesAndSizeAreReadFromTheVRow();
    void newResultReplacesOldPixelsAndClearsExtendedFlag();
    void mapOfHeightZeroGivesNoPixels();
    void mapOfZeroWidthAndHugeHeightGivesNoPixels();
    void nanPixelGivesNaNAndIsCountedBelowTheHistogram();
    void tooFewRowsLeaveTheResultUnchanged();
    void exactFourPointFormIgnoresAFourthRowBesidesTheVRow();
    void leastSquareOfTheVRowAloneGivesNaN();
    void methodsMatchTheReferenceImplementationBitForBit_data();
    void methodsMatchTheReferenceImplementationBitForBit();
};

void tst_MapCalculation::resultHasOneRowPerPixelInScanOrder()
{
    const A2DData map = absorbanceMap(3, 2, {1, 2, 3, 4, 5, 6});
    Result result;
    analysis::mapThreePoints(threePointStack(map, map, map), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.rows.size(), 6);
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(result.map.rows.at(i).x, 10.0 + i);
        QVERIFY(result.map.rows.at(i).values.isEmpty());
    }
}

void tst_MapCalculation::threePointsMatchAHandCalculation()
{
    // T is 1 at row 0, 5 at row 1 and 3 at the V row, so f(T) = (3 - 1) / (5 - 1) = 1/2. In
    // the same way f(R1) = 3/4 and f(R2) = 1/4, so a = (1/2 - 1/4) / (3/4 - 1/4) = 1/2. The
    // thickness is (5 - 1) / (0.5 * ((4 - 0) + (4 - 0))) = 1.
    const A2DData m0 = absorbanceMap(1, 1, {1});
    const A2DData m1 = absorbanceMap(1, 1, {5});
    const A2DData mv = absorbanceMap(1, 1, {3});
    Result result;
    analysis::mapThreePoints(threePointStack(m0, m1, mv), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.rows.at(0).intensity, 0.5);
    QCOMPARE(result.map.rows.at(0).i0, 1.0);
    // Both histograms have eleven bins. The valence 2.5 is in the middle of the limits 2 to 3,
    // the thickness 1 in the middle of 0 to 2.
    QCOMPARE(result.valence.bins.at(5), 1);
    QCOMPARE(result.thickness.bins.at(5), 1);
    QCOMPARE(result.valence.total, 1);
}

void tst_MapCalculation::coordinatesAreReadFromTheVRowsMap()
{
    A2DData m0 = absorbanceMap(1, 1, {1});
    m0.rows[0].x = 77;
    A2DData mv = absorbanceMap(1, 1, {3});
    mv.rows[0].x = -1.5;
    mv.rows[0].y = 2.5;
    Result result;
    analysis::mapThreePoints(threePointStack(m0, m0, mv), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.rows.at(0).x, -1.5);
    QCOMPARE(result.map.rows.at(0).y, 2.5);
}

void tst_MapCalculation::pixelMissingInTheVRowsMapHasZeroCoordinates()
{
    const A2DData mv = absorbanceMap(2, 1, {3}); // data for one pixel, but a size of two pixels
    Result result;
    analysis::mapThreePoints(threePointStack(mv, mv, mv), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.rows.size(), 2);
    QCOMPARE(result.map.rows.at(1).x, 0.0);
    QCOMPARE(result.map.rows.at(1).y, 0.0);
}

void tst_MapCalculation::mapOfAnotherSizeIsIndexedWithItsOwnWidth()
{
    // The maps of the V row and of row 0 have 20 by 20 pixels. The map of row 1 has 10 by 10
    // pixels with the values 1000 + index. T0 is 0, so the thickness T1 / 4 shows which value
    // was read as T1.
    const A2DData mv = absorbanceMap(20, 20, QList<double>(400, 3.0));
    QList<double> small;
    for (int i = 0; i < 100; ++i) {
        small.append(1000 + i);
    }
    const A2DData m1 = absorbanceMap(10, 10, small);
    const A2DData m0 = absorbanceMap(20, 20, QList<double>(400, 0.0));
    Result result;
    analysis::mapThreePoints(threePointStack(m0, m1, mv), result.map, result.valence,
                             result.thickness);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            const int index = y * 10 + x; // the index uses the width of the small map
            const double t1 = index < 100 ? 1000 + index : -1.0;
            QCOMPARE(result.map.rows.at(y * 20 + x).i0, t1 / 4);
        }
    }
}

void tst_MapCalculation::headerLinesAndSizeAreReadFromTheVRow()
{
    A2DData m0 = absorbanceMap(1, 1, {1});
    m0.headerLines = {"# other"};
    A2DData mv = absorbanceMap(2, 1, {3, 3});
    mv.headerLines = {"# one", "#  two "};
    Result result;
    analysis::mapThreePoints(threePointStack(m0, m0, mv), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.headerLines, mv.headerLines);
    QCOMPARE(result.map.xNum, 2);
    QCOMPARE(result.map.yNum, 1);
}

void tst_MapCalculation::newResultReplacesOldPixelsAndClearsExtendedFlag()
{
    const A2DData mv = absorbanceMap(1, 1, {3});
    Result result;
    result.map = absorbanceMap(3, 1, {7, 8, 9});
    result.map.extended = true;
    analysis::mapThreePoints(threePointStack(mv, mv, mv), result.map, result.valence,
                             result.thickness);
    QCOMPARE(result.map.rows.size(), 1);
    QVERIFY(!result.map.extended);
}

void tst_MapCalculation::mapOfHeightZeroGivesNoPixels()
{
    const A2DData m = absorbanceMap(5, 0, {1, 2, 3, 4, 5});
    Result result;
    result.map = m;
    analysis::mapThreePoints(threePointStack(m, m, m), result.map, result.valence,
                             result.thickness);
    QVERIFY(result.map.rows.isEmpty());
    QCOMPARE(result.map.xNum, 5);
}

void tst_MapCalculation::mapOfZeroWidthAndHugeHeightGivesNoPixels()
{
    const A2DData m = absorbanceMap(0, std::numeric_limits<int>::max(), {1});
    Result result;
    analysis::mapThreePoints(threePointStack(m, m, m), result.map, result.valence,
                             result.thickness);
    QVERIFY(result.map.rows.isEmpty());
}

void tst_MapCalculation::nanPixelGivesNaNAndIsCountedBelowTheHistogram()
{
    const A2DData mv = absorbanceMap(1, 1, {NaN});
    Result result;
    analysis::mapThreePoints(threePointStack(mv, mv, mv), result.map, result.valence,
                             result.thickness);
    QVERIFY(std::isnan(result.map.rows.at(0).intensity));
    QCOMPARE(result.valence.under, 1);
    QCOMPARE(result.thickness.under, 1);
}

void tst_MapCalculation::tooFewRowsLeaveTheResultUnchanged()
{
    const A2DData m = absorbanceMap(1, 1, {3});
    MapStack stack = threePointStack(m, m, m);
    Result result;
    result.map = absorbanceMap(1, 1, {42});
    analysis::mapExactFourPoints(stack, result.map, result.valence, result.thickness);
    QCOMPARE(result.map.rows.at(0).intensity, 42.0);
    stack.others.removeLast();
    analysis::mapThreePoints(stack, result.map, result.valence, result.thickness);
    QCOMPARE(result.map.rows.at(0).intensity, 42.0);
}

void tst_MapCalculation::exactFourPointFormIgnoresAFourthRowBesidesTheVRow()
{
    // The numbers of exactFormGivesFractionHalfAndThicknessOneForEqualParts() in
    // tst_FourPointForms: the target is half the sum of the references, so a = 0.5 and t/ts = 1. A
    // fourth row must be ignored.
    const A2DData t0 = absorbanceMap(1, 1, {2});
    const A2DData t1 = absorbanceMap(1, 1, {2.5});
    const A2DData t2 = absorbanceMap(1, 1, {6.5});
    const A2DData tv = absorbanceMap(1, 1, {5});
    const A2DData surplus = absorbanceMap(1, 1, {999});
    const MapStack stack{{{&t0, 0, 1, 3}, {&t1, 1, 2, 3}, {&t2, 5, 4, 9}, {&surplus, 7, 1, 1}},
                         {&tv, 2, 8, 2},
                         1.0,
                         {true, 2.0, 3.0}};
    Result result;
    analysis::mapExactFourPoints(stack, result.map, result.valence, result.thickness);
    QVERIFY2(std::abs(result.map.rows.at(0).intensity - 0.5) < 1e-14,
             qPrintable(text(result.map.rows.at(0).intensity)));
    QVERIFY2(std::abs(result.map.rows.at(0).i0 - 1.0) < 1e-14,
             qPrintable(text(result.map.rows.at(0).i0)));
}

void tst_MapCalculation::leastSquareOfTheVRowAloneGivesNaN()
{
    const A2DData m = absorbanceMap(2, 1, {3, 4});
    const MapStack stack{{}, {&m, 150, 3, 1}, 1.0, {true, 2.0, 3.0}};
    Result result;
    analysis::mapLeastSquare(stack, result.map, result.valence, result.thickness);
    QCOMPARE(result.map.rows.size(), 2);
    QVERIFY(std::isnan(result.map.rows.at(0).intensity));
    QVERIFY(std::isnan(result.map.rows.at(1).intensity));
}

void tst_MapCalculation::methodsMatchTheReferenceImplementationBitForBit_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<PlainForm>("plain");
    QTest::addColumn<int>("minimumOthers"); // smallest number of rows besides the V row
    QTest::newRow("three points") << &analysis::mapThreePoints << &tests::plainThreePoints << 2;
    QTest::newRow("exact") << &analysis::mapExactFourPoints << &tests::plainExactFourPoints << 3;
    QTest::newRow("least square") << &analysis::mapLeastSquare << &tests::plainLeastSquare << 0;
}

namespace
{

A2DData hostileMap(std::mt19937_64& random)
{
    const int width = tests::wholeNumber(random, 0, 8) * (tests::onceIn(random, 20) ? -1 : 1);
    const int height = tests::wholeNumber(random, 0, 6);
    return tests::mapOf(tests::Kind::Odd, width, height, tests::wholeNumber(random, 0, 69), random);
}

QString oddText(std::mt19937_64& random)
{
    static const QStringList texts{"0", "1.5",  "nan",  "inf",   "-2", "words",
                                   "",  "8345", "1e-5", "0.125", "7",  "3,5"};
    return texts.at(static_cast<qsizetype>(random() % 12));
}

bool sameCounts(const HistogramCounts& counts, const tests::PlainHistogram& plain)
{
    return counts.bins == plain.bins && counts.under == plain.under && counts.over == plain.over &&
           counts.total == plain.total;
}

} // namespace

void tst_MapCalculation::methodsMatchTheReferenceImplementationBitForBit()
{
    QFETCH(Form, form);
    QFETCH(PlainForm, plain);
    QFETCH(int, minimumOthers);
    std::mt19937_64 random(4711);
    for (int round = 0; round < 2000; ++round) {
        QList<A2DData> maps;
        const int others = minimumOthers + static_cast<int>(random() % 4);
        for (int i = 0; i <= others; ++i) {
            maps.append(hostileMap(random));
        }
        tests::PlainStack plainStack;
        plainStack.r = tests::numberOf(tests::Kind::Odd, random);
        plainStack.references = {{true, true, oddText(random)},
                                 {true, random() % 4 != 0, oddText(random)}};
        for (int i = 0; i <= others; ++i) {
            plainStack.points.append(
                {&maps.at(i), i == others, oddText(random), oddText(random), oddText(random)});
        }
        Result result;
        form(tests::mapStackOf(plainStack), result.map, result.valence, result.thickness);
        Result empty;
        A2DData plainMap;
        tests::PlainHistogram valence{
            empty.valence.minV, empty.valence.step, empty.valence.bins, 0, 0, 0};
        tests::PlainHistogram thickness{
            empty.thickness.minV, empty.thickness.step, empty.thickness.bins, 0, 0, 0};
        plain(plainStack, plainMap, valence, thickness);
        QCOMPARE(tests::differenceOf(result.map, plainMap), QString());
        QVERIFY2(sameCounts(result.valence, valence), qPrintable(QString::number(round)));
        QVERIFY2(sameCounts(result.thickness, thickness), qPrintable(QString::number(round)));
    }
}

QTEST_APPLESS_MAIN(tst_MapCalculation)
#include "tst_MapCalculation.moc"
