// Which energy rows are selected, and the numbers collected from them.
#include "analysis/RowCollection.h"

#include "analysis/ReferenceSet.h"

#include <QTest>

using analysis::CollectedRows;
using analysis::PointState;
using analysis::ReferenceSet;
using analysis::Selection;

namespace
{

PointState point(bool used, bool vPoint, bool hasMap, double energy = 0.0)
{
    PointState state;
    state.used = used;
    state.vPoint = vPoint;
    state.hasMap = hasMap;
    state.energy = energy;
    state.mut = {energy + 1, energy + 2, energy + 3, energy + 4};
    state.mutT = energy + 5;
    return state;
}

ReferenceSet references(bool first, bool second, bool third)
{
    return ReferenceSet({{first, true, 0, 3}, {second, true, 2, 2}, {third, true, 3, 8}});
}

} // namespace

class tst_RowCollection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usedRowWithoutMapIsSelectedForTheTargetOnly();
    void laterOfTwoVRowsIsSelected();
    void unusedVRowIsIgnored();
    void usedRowsAreCollectedInOrderWithOrWithoutMap();
    void exactFormCollectsTheVRowAndTheFirstThreeOthers();
    void firstTwoUsedReferencesAreCollected();
    void earlierOfTwoVRowsIsLeftOut();
    void nothingIsCollectedWithFewerThanTwoUsedReferences();
    void withoutVRowUsableCountsOnlyTheOtherRows();
};

void tst_RowCollection::usedRowWithoutMapIsSelectedForTheTargetOnly()
{
    const QList<PointState> points{point(true, false, false), point(true, true, true),
                                   point(false, false, true)};
    QCOMPARE(analysis::selectedRows(points).count, 2);
    QCOMPARE(analysis::selectedMapRows(points).count, 1);
}

void tst_RowCollection::laterOfTwoVRowsIsSelected()
{
    const QList<PointState> points{point(true, true, true), point(true, false, true),
                                   point(true, true, true)};
    QCOMPARE(analysis::selectedRows(points).vRow, 2);
    QCOMPARE(analysis::selectedMapRows(points).vRow, 2);
}

void tst_RowCollection::unusedVRowIsIgnored()
{
    const QList<PointState> points{point(false, true, true), point(true, false, true)};
    QCOMPARE(analysis::selectedRows(points).vRow, -1);
    QCOMPARE(analysis::selectedMapRows({point(true, true, false)}).vRow, -1);
}

void tst_RowCollection::usedRowsAreCollectedInOrderWithOrWithoutMap()
{
    const CollectedRows rows =
        analysis::collectRowsLS({point(true, false, false, 100), point(false, false, true, 200),
                                 point(true, true, true, 300), point(true, false, true, 400)},
                                references(true, true, false));
    QCOMPARE(rows.others.size(), 2);
    QCOMPARE(rows.others.at(0).row, 0);
    QCOMPARE(rows.others.at(0).energy, 100.0);
    QCOMPARE(rows.others.at(1).row, 3);
    QCOMPARE(rows.others.at(1).energy, 400.0);
    QCOMPARE(rows.v.row, 2);
    QCOMPARE(rows.v.energy, 300.0);
    QCOMPARE(rows.usable(), 3);
    QCOMPARE(rows.r, 1.5);
}

void tst_RowCollection::exactFormCollectsTheVRowAndTheFirstThreeOthers()
{
    QList<PointState> points{point(true, true, true, 50)};
    for (const double energy : {100.0, 200.0, 300.0, 400.0}) {
        points.append(point(true, false, false, energy));
    }
    const ReferenceSet refs = references(true, true, false);
    const CollectedRows rows = analysis::collectRowsExact(points, refs);
    QCOMPARE(rows.others.size(), 3);
    QCOMPARE(rows.others.at(2).energy, 300.0);
    QCOMPARE(rows.v.energy, 50.0);
    QCOMPARE(analysis::collectRowsExact(points.first(2), refs).others.size(), 1);
}

void tst_RowCollection::firstTwoUsedReferencesAreCollected()
{
    const QList<PointState> points{point(true, true, true, 300)};
    const CollectedRows all = analysis::collectRowsLS(points, references(true, true, true));
    QCOMPARE(all.v.r1, 301.0);
    QCOMPARE(all.v.r2, 302.0);
    const CollectedRows withoutFirst =
        analysis::collectRowsLS(points, references(false, true, true));
    QCOMPARE(withoutFirst.v.r1, 302.0);
    QCOMPARE(withoutFirst.v.r2, 303.0);
    QCOMPARE(withoutFirst.r, 0.25);
}

void tst_RowCollection::earlierOfTwoVRowsIsLeftOut()
{
    const CollectedRows rows = analysis::collectRowsLS(
        {point(true, true, true, 100), point(true, false, true, 200), point(true, true, true, 300)},
        references(true, true, false));
    QCOMPARE(rows.v.row, 2);
    QCOMPARE(rows.others.size(), 1);
    QCOMPARE(rows.others.at(0).row, 1);
    QCOMPARE(rows.usable(), 2);
}

void tst_RowCollection::nothingIsCollectedWithFewerThanTwoUsedReferences()
{
    for (const bool isFirstUsed : {true, false}) {
        const CollectedRows rows = analysis::collectRowsLS({point(true, true, true, 100)},
                                                           references(isFirstUsed, false, false));
        QCOMPARE(rows.usable(), 0);
        QCOMPARE(rows.v.row, -1);
    }
}

void tst_RowCollection::withoutVRowUsableCountsOnlyTheOtherRows()
{
    const CollectedRows rows =
        analysis::collectRowsLS({point(true, false, true, 100)}, references(true, true, false));
    QCOMPARE(rows.usable(), 1);
}

QTEST_APPLESS_MAIN(tst_RowCollection)
#include "tst_RowCollection.moc"
