// Division of a map calculation into blocks of pixels, and the start of a result.
#include "analysis/PixelBlocks.h"

#include "support/AbsorbanceMap.h"

#include <QTest>

using analysis::PixelBlock;

namespace
{

/// Calls @p fill for all blocks of a result of the size of @p base. The only input map is
/// @p base.
template <class Fill>
void calculate(const A2DData& base, A2DData& result, Fill fill)
{
    data::AbsorbanceCache cache;
    cache.prepare({&base});
    analysis::calculateBlocks({&base}, cache, base, result, fill);
}

} // namespace

class tst_PixelBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixelIsInOneBlockInScanOrder();
    void coordinatesComeFromTheBaseMapOrAreZeroIfMissing();
    void coordinatesOfAnEarlierResultAreReplaced();
    void startingAResultKeepsTheExtendedFlag();
    void memoryOfAMuchLargerEarlierResultIsReleased();
    void memoryOfASimilarEarlierResultIsReused();
    void copyOfAnEarlierResultIsUnchanged();
    void pixelsWithoutDataHaveAbsorbanceMinusOne();
    void uncachedAbsorbanceIsCalculated();
    void valuesOfAnEarlierResultAreDroppedWhenTheResultGrows();
};

void tst_PixelBlocks::everyPixelIsInOneBlockInScanOrder()
{
    A2DData base = tests::absorbanceMap(50, 3, {});
    for (int i = 0; i < 150; ++i) {
        base.rows.append({0.0, 0.0, static_cast<double>(i), 0.0, {}});
    }
    base.headerLines = QStringList{"# a"};
    A2DData result;
    QList<int> counts;
    calculate(base, result, [&](const PixelBlock& block) {
        QCOMPARE(block.index, static_cast<std::size_t>(counts.size()));
        counts.append(block.count());
        for (int i = 0; i < block.count(); ++i) {
            block.rows[i].intensity = block.absorbances[0][i];
        }
    });
    QCOMPARE(counts, (QList<int>{64, 64, 22}));
    for (int i = 0; i < 150; ++i) {
        QCOMPARE(result.rows.at(i).intensity, static_cast<double>(i));
    }
    QCOMPARE(result.headerLines, base.headerLines);
    QCOMPARE(result.xNum, 50);
    QCOMPARE(result.yNum, 3);
}

void tst_PixelBlocks::coordinatesComeFromTheBaseMapOrAreZeroIfMissing()
{
    A2DData base = tests::absorbanceMap(2, 1, {9.0});
    base.rows[0].x = 7.0;
    base.rows[0].y = 8.0;
    A2DData result;
    calculate(base, result, [](const PixelBlock&) {});
    QCOMPARE(result.rows.at(0).x, 7.0);
    QCOMPARE(result.rows.at(0).y, 8.0);
    QCOMPARE(result.rows.at(1).x, 0.0);
    QCOMPARE(result.rows.at(1).y, 0.0);
}

void tst_PixelBlocks::coordinatesOfAnEarlierResultAreReplaced()
{
    const A2DData base = tests::absorbanceMap(2, 1, {9.0});
    A2DData result;
    result.rows = {{1, 2, 3, 4, {}}, {5, 6, 7, 8, {}}};
    calculate(base, result, [](const PixelBlock&) {});
    QCOMPARE(result.rows.at(0).x, 10.0);
    QCOMPARE(result.rows.at(0).y, 20.0);
    QCOMPARE(result.rows.at(1).x, 0.0);
    QCOMPARE(result.rows.at(1).y, 0.0);
}

void tst_PixelBlocks::startingAResultKeepsTheExtendedFlag()
{
    A2DData result;
    result.extended = true;
    analysis::startResult(result, A2DData());
    QVERIFY(result.extended);
}

void tst_PixelBlocks::memoryOfAMuchLargerEarlierResultIsReleased()
{
    const A2DData base = tests::absorbanceMap(10, 1, {});
    A2DData result;
    result.rows.resize(100000);
    analysis::startResult(result, base);
    QCOMPARE(result.rows.size(), 10);
    QVERIFY(result.rows.capacity() < 100);
}

void tst_PixelBlocks::memoryOfASimilarEarlierResultIsReused()
{
    const A2DData base = tests::absorbanceMap(900, 1, {});
    A2DData result;
    result.rows.resize(1000);
    const A2DRow* const before = result.rows.constData();
    QVERIFY(analysis::startResult(result, base).data() == before);
    QCOMPARE(result.rows.size(), 900);
}

void tst_PixelBlocks::copyOfAnEarlierResultIsUnchanged()
{
    const A2DData base = tests::absorbanceMap(1, 1, {9.0});
    A2DData result;
    result.rows = {{1, 2, 3, 4, {}}};
    const QList<A2DRow> copy = result.rows;
    calculate(base, result, [](const PixelBlock& block) { block.rows[0].i0 = 5.0; });
    QCOMPARE(result.rows.first().i0, 5.0);
    QCOMPARE(copy.first().i0, 4.0);
    QCOMPARE(copy.first().x, 1.0);
}

void tst_PixelBlocks::pixelsWithoutDataHaveAbsorbanceMinusOne()
{
    const A2DData base = tests::absorbanceMap(100, 2, QList<double>(65, 3.0));
    A2DData result;
    QList<double> last;
    calculate(base, result, [&](const PixelBlock& block) {
        last.append(block.absorbances[0][block.count() - 1]);
    });
    QCOMPARE(last, (QList<double>{3.0, -1.0, -1.0, -1.0}));
}

void tst_PixelBlocks::uncachedAbsorbanceIsCalculated()
{
    A2DData base = tests::absorbanceMap(70, 1, {});
    A2DData narrow = tests::absorbanceMap(7, 20, {});
    for (int i = 0; i < 90; ++i) {
        base.rows.append({0.0, 0.0, 1.0 + i, 100.0, {}});
        narrow.rows.append({0.0, 0.0, 2.0 + i, 50.0, {}});
    }
    data::AbsorbanceCache cache;
    cache.prepare({&narrow});
    for (const QList<const A2DData*>& maps :
         {QList<const A2DData*>{&base, &narrow}, QList<const A2DData*>{&narrow, &base}}) {
        A2DData result;
        int pixel = 0;
        analysis::calculateBlocks(maps, cache, base, result, [&](const PixelBlock& block) {
            for (int i = 0; i < block.count(); ++i, ++pixel) {
                for (qsizetype k = 0; k < maps.size(); ++k) {
                    QCOMPARE(block.absorbances[k][i], data::pixelMut(*maps.at(k), pixel, 0));
                }
            }
        });
        QCOMPARE(pixel, 70);
    }
}

void tst_PixelBlocks::valuesOfAnEarlierResultAreDroppedWhenTheResultGrows()
{
    // Resizing the list of rows would leave the old values in its first row, so a new list is
    // needed.
    A2DData result;
    result.rows.append({1.0, 2.0, 3.0, 4.0, {5.0}});
    analysis::startResult(result, tests::absorbanceMap(100, 1, {}));
    QCOMPARE(result.rows.size(), 100);
    QVERIFY(result.rows.first().values.isEmpty());
}

QTEST_APPLESS_MAIN(tst_PixelBlocks)
#include "tst_PixelBlocks.moc"
