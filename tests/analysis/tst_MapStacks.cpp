// From the panel's inputs to result maps. In most tests each pixel is a known mixture of the
// references, from which the expected numbers follow.
#include "analysis/MapStacks.h"

#include "analysis/CalculationPlan.h"
#include "analysis/HistogramCounts.h"
#include "support/Mixes.h"
#include "support/PanelInputs.h"

#include <QTest>

#include <cmath>

using namespace tests;
using namespace tests::mixes;
using analysis::NeqStack;

namespace
{

A2DData nonEquivalentMap(const PanelInputs& inputs, bool victoreen = false)
{
    analysis::HistogramCounts valence;
    analysis::HistogramCounts total;
    std::array<analysis::HistogramCounts, 4> shares;
    std::array<analysis::HistogramCounts, 4> amounts;
    A2DData map;
    analysis::mapNonEquivalent(analysis::neqStack(inputs.state(), victoreen), map,
                               {&valence,
                                &total,
                                {&shares[0], &shares[1], &shares[2], &shares[3]},
                                {&amounts[0], &amounts[1], &amounts[2], &amounts[3]}});
    return map;
}

PanelInputs mixedMaps(const QList<Mix>& pixels, int references = 2, int rows = 5)
{
    PanelInputs inputs = mixedInputs(quarter, references, rows);
    setPixels(inputs, pixels, rows);
    return inputs;
}

bool isQuarter(const A2DData& map)
{
    return map.rows.size() == 1 && near(scaledValues(map, 0), quarterValues);
}

} // namespace

class tst_MapStacks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stackContainsTheMapsAndNumbersOfItsRows();
    void usedRowWithoutMapHasAbsorbanceMinusOne();
    void vRowWithoutMapGivesAnEmptyResult();

    void nonEquivalentMapHasThirteenValuesPerPixel();
    void fourReferencesFillAllThirteenValues();
    void victoreenFitOfFiveRowsPassesThroughAllPoints();
    void postEdgeLineIsSubtractedFromReferencesOnRequest();
    void countsAreConvertedToMutBeforeTheFit();
    void baseRowIsTheFirstUsedRowAndNotTheVRow();
    void baseRowWithoutMapGivesNoPixels();
    void rowWithoutMapIsFittedAsAbsorbanceMinusOne();
    void rowWithAFailedReloadIsFittedWithItsOldPixels();
    void mutValuesOfTheEnergyRowsDoNotAffectTheMap();
    void asManyRowsAsUnknownsDetermineTheFit_data();
    void asManyRowsAsUnknownsDetermineTheFit();
};

void tst_MapStacks::stackContainsTheMapsAndNumbersOfItsRows()
{
    PanelInputs inputs = fourPointInputs();
    inputs.addMaps(4);
    setJump(inputs.spectra[0], 3.0);
    const analysis::CalculationState state = inputs.state();
    const analysis::MapStack stack = analysis::mapStack(state, analysis::planMap(state).rows);
    QCOMPARE(stack.others.size(), 3);
    for (const auto& [index, row] : {std::pair(0, 0), std::pair(1, 1), std::pair(2, 3)}) {
        const analysis::MapPoint& point = stack.others.at(index);
        QCOMPARE(point.map, &inputs.maps.at(static_cast<std::size_t>(row)));
        QCOMPARE(point.energy, inputs.points.at(row).energy);
        QCOMPARE(point.r1, inputs.points.at(row).mut[0]);
        QCOMPARE(point.r2, inputs.points.at(row).mut[1]);
    }
    QCOMPARE(stack.v.map, &inputs.maps[2]);
    QCOMPARE(stack.v.r1, 8.0);
    QCOMPARE(stack.r, 3.0);
    QCOMPARE(stack.mix(0.5), 2.5);
    QVERIFY(!stack.memory);
}

void tst_MapStacks::usedRowWithoutMapHasAbsorbanceMinusOne()
{
    // Used: rows 1 to 4, with row 3 as the V row; with a map: rows 2 to 4. Three rows with a
    // map select the three-point form. It still uses row 1 as its first row, with T0 = -1:
    // f(T) = (3 + 1) / (5 + 1) = 2/3. With f(R1) = 3/4 and f(R2) = 1/4,
    // a = (2/3 - 1/4) / (3/4 - 1/4) = 5/6.
    const auto inputs = threePointInputs().addMaps(4).useRows({0, 1, 2, 3}).removeMap(0);
    const analysis::CalculationState state = inputs.state();
    A2DData map;
    analysis::HistogramCounts valence;
    analysis::HistogramCounts thickness;
    analysis::mapThreePoints(analysis::mapStack(state, analysis::planMap(state).rows), map, valence,
                             thickness);
    QCOMPARE(map.rows.size(), 1);
    QVERIFY(near(map.rows.at(0).intensity, 5.0 / 6.0));
}

void tst_MapStacks::vRowWithoutMapGivesAnEmptyResult()
{
    // Rows 3 and 5 are marked as V rows. The later one, row 5, is used although it has no map.
    const auto inputs = fourPointInputs().addMaps(4).useRows({0, 1, 2, 3, 4}).markVRows({2, 4});
    const analysis::CalculationState state = inputs.state();
    A2DData map = inputs.maps[0];
    analysis::HistogramCounts valence;
    analysis::HistogramCounts thickness;
    analysis::mapLeastSquare(analysis::mapStack(state, analysis::planMap(state).rows), map, valence,
                             thickness);
    QVERIFY(map.rows.isEmpty());
    QCOMPARE(map.xNum, 0);
}

void tst_MapStacks::nonEquivalentMapHasThirteenValuesPerPixel()
{
    const A2DData map = nonEquivalentMap(mixedMaps({quarter, negative}));
    QVERIFY(map.extended);
    QCOMPARE(map.rows.size(), 2);
    QVERIFY(near(scaledValues(map, 0), quarterValues));
    QVERIFY(near(scaledValues(map, 1), negativeValues));
    for (const A2DRow& row : map.rows) {
        QCOMPARE(row.intensity, row.values.at(0));
        QCOMPARE(row.i0, row.values.at(12));
        for (const int missing : {2, 3, 6, 7, 10}) {
            QCOMPARE(row.values.at(missing), 0.0);
        }
    }
}

void tst_MapStacks::fourReferencesFillAllThirteenValues()
{
    // The amounts (dMut) are 1, 3, 4 and 8 with the total 16, so the shares are 1/16, 3/16,
    // 4/16 and 8/16. The valence is 2/16 + 5 * 3/16 + 4 * 4/16 + 7 * 8/16 = 5.5625.
    Mix mix = curvedQuarter;
    mix.parts = {0.5, 0.5, 1, 1};
    const A2DData map = nonEquivalentMap(mixedMaps({mix}, 4, 8), true);
    QVERIFY(near(map.rows.at(0).values,
                 {0.0625, 0.1875, 0.25, 0.5, 1, 3, 4, 8, 1.25, 2, -0.5, 5.5625, 16}));
}

void tst_MapStacks::victoreenFitOfFiveRowsPassesThroughAllPoints()
{
    PanelInputs inputs = mixedInputs(quarter);
    const QList<double> pixels{1, -2, 0.5, 3, -1};
    for (int row = 0; row < pixels.size(); ++row) {
        inputs.setMap(row, {pixels.at(row)});
    }
    const QList<double> values = nonEquivalentMap(inputs, true).rows.at(0).values;
    const Mix fit{{values.at(4) / jumps.at(0), values.at(5) / jumps.at(1)},
                  values.at(8),
                  0,
                  values.at(9),
                  values.at(10)};
    QVERIFY(near(fit.atAllRows().first(5), pixels));
}

void tst_MapStacks::postEdgeLineIsSubtractedFromReferencesOnRequest()
{
    // If the post-edge line is subtracted instead of the pre-edge line, each reference is
    // lower by its edge jump. The fitted constant is then higher by the total dMut:
    // 1.25 + 4 = 5.25. The option for the target has no effect on maps.
    PanelInputs inputs = mixedMaps({quarter});
    inputs.subPostForTarget = true;
    QVERIFY(isQuarter(nonEquivalentMap(inputs)));
    inputs.subPostForRef = true;
    const A2DData map = nonEquivalentMap(inputs);
    QVERIFY(near(map.rows.at(0).values.at(8), 5.25));
    QVERIFY(near(map.rows.at(0).intensity, 0.25));
}

void tst_MapStacks::countsAreConvertedToMutBeforeTheFit()
{
    PanelInputs inputs = mixedMaps({quarter});
    for (int row = 0; row < 5; ++row) {
        A2DRow& pixel = inputs.maps.at(static_cast<std::size_t>(row)).rows[0];
        pixel.i0 = 1000;
        pixel.intensity = 1000 * std::exp(-quarter.at(row));
    }
    QVERIFY(isQuarter(nonEquivalentMap(inputs)));
}

void tst_MapStacks::baseRowIsTheFirstUsedRowAndNotTheVRow()
{
    // Rows 2 to 6 are used. The V row, row 3, has a wider map. Row 1 also has a map, but is
    // not used. So the base row is row 2.
    PanelInputs inputs = mixedMaps({quarter, negative}, 2, 6);
    inputs.setMap(0, {1, 2, 3});
    inputs.maps[2].rows.append({9, 9, 7, 0, {}});
    inputs.maps[2].xNum = 3;
    inputs.maps[2].headerLines = {"# V row"};
    inputs.maps[0].headerLines = {"# not in use"};
    A2DData& base = inputs.maps[1];
    base.headerLines = {"# base  row", "#"};
    base.rows[1].x = 12.5;
    base.rows[1].y = -3;
    base.rows.append({20, 20, 5, 0, {}}); // a third pixel outside the map's size
    inputs.useRows({1, 2, 3, 4, 5});
    const A2DData map = nonEquivalentMap(inputs);
    QCOMPARE(map.headerLines, (QStringList{"# base  row", "#"}));
    QCOMPARE(map.xNum, 2);
    QCOMPARE(map.yNum, 1);
    QCOMPARE(map.rows.size(), 2);
    QCOMPARE(map.rows.at(0).y, 0.5);
    QCOMPARE(map.rows.at(1).x, 12.5);
    QCOMPARE(map.rows.at(1).y, -3.0);
    QVERIFY(near(scaledValues(map, 0), quarterValues));
    QVERIFY(near(scaledValues(map, 1), negativeValues));
}

void tst_MapStacks::baseRowWithoutMapGivesNoPixels()
{
    const A2DData map = nonEquivalentMap(mixedMaps({quarter}, 2, 6).removeMap(0));
    QVERIFY(map.rows.isEmpty());
    QCOMPARE(map.xNum, 0);
    QVERIFY(map.extended);
}

void tst_MapStacks::rowWithoutMapIsFittedAsAbsorbanceMinusOne()
{
    // The constant is chosen so that the mixture is -1 at the row without a map.
    Mix mix = quarter;
    mix.constant -= quarter.at(3) + 1;
    PanelInputs inputs = mixedMaps({mix}, 2, 6);
    inputs.removeMap(3);
    const A2DData map = nonEquivalentMap(inputs);
    QVERIFY(near(map.rows.at(0).intensity, 0.25));
    QVERIFY(near(map.rows.at(0).values.at(8), mix.constant));
    // With the original constant the mixture is not -1 at this row, so the share is wrong.
    setPixels(inputs, {quarter}, 6);
    inputs.removeMap(3);
    QVERIFY(!near(nonEquivalentMap(inputs).rows.at(0).intensity, 0.25));
}

void tst_MapStacks::rowWithAFailedReloadIsFittedWithItsOldPixels()
{
    PanelInputs inputs = mixedMaps({quarter}, 2, 6);
    inputs.points[3].hasMap = false;
    QVERIFY(isQuarter(nonEquivalentMap(inputs)));
    inputs.maps[3].rows[0].intensity += 1;
    QVERIFY(!isQuarter(nonEquivalentMap(inputs)));
}

void tst_MapStacks::mutValuesOfTheEnergyRowsDoNotAffectTheMap()
{
    PanelInputs inputs = mixedMaps({quarter});
    for (analysis::PointState& point : inputs.points) {
        point.mut.fill(99);
        point.mutT = 99;
    }
    QVERIFY(isQuarter(nonEquivalentMap(inputs)));
}

void tst_MapStacks::asManyRowsAsUnknownsDetermineTheFit_data()
{
    QTest::addColumn<bool>("victoreen");
    QTest::addColumn<int>("references");
    QTest::addColumn<int>("rows");
    for (int references = 2; references <= 4; ++references) {
        QTest::addRow("linear, %d references", references) << false << references << references + 2;
        QTest::addRow("Victoreen, %d references", references)
            << true << references << references + 3;
    }
}

// With the smallest number of rows that a plan accepts, the fit determines all unknowns.
void tst_MapStacks::asManyRowsAsUnknownsDetermineTheFit()
{
    QFETCH(bool, victoreen);
    QFETCH(int, references);
    QFETCH(int, rows);
    const Mix mix{{0.5, 0.5}, 1.25, victoreen ? 0.0 : 0.5};
    const A2DData map = nonEquivalentMap(mixedMaps({mix}, references, rows), victoreen);
    QVERIFY(near(map.rows.at(0).intensity, 0.25));
    QVERIFY(near(map.rows.at(0).values.at(8), 1.25));
}

QTEST_APPLESS_MAIN(tst_MapStacks)
#include "tst_MapStacks.moc"
