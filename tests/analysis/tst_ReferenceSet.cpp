#include "analysis/ReferenceSet.h"

#include <QTest>

#include <cmath>

using analysis::Limits;
using analysis::ReferenceSet;
using analysis::ReferenceState;

namespace
{

ReferenceState reference(bool used, bool valid, double valence = 0.0, double jump = 0.0)
{
    return {used, valid, valence, jump};
}

} // namespace

class tst_ReferenceSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usedRowsCountWhetherValidOrNot();
    void uncheckingTheFirstMakesTheFormerSecondTheFirst();
    void unbrokenRunHasNoRowWithoutCounterpart();
    void gapNamesTheRowWithoutCounterpart();
    void invalidCounterpartIsNamedByItsRow();
    void edgeJumpRatioIgnoresValidity();
    void edgeJumpRatioNeedsTwoUsedReferences();
    void secondJumpOfZeroGivesInfinity();
    void valenceMixIsPureFirstAtOneAndPureSecondAtZero();
    void valenceMixIsZeroWithFewerThanTwoValid();
    void valenceMixTakesUsedRowsWhileTheCountAsksForValidOnes();
    void valenceRangeWithoutReferenceIsTenToZero();
    void valenceAboveTenDoesNotRaiseTheLowest();
    void negativeValenceDoesNotLowerTheHighest();
    void unusedRowsDoNotEnterTheValenceRange();
    void firstTwoValencesKeepTheirOrderAndMissingOnesAreZero();
    void totalJumpSumsUsedReferences();
    void valencesAreThoseOfAsManyUsedReferencesAsAreValid();
    void usedRowWithoutSpectrumShiftsTheTermsOfTheTotal();
    void mapLimitsByColumn_data();
    void mapLimitsByColumn();
    void valenceMapWithoutReferenceScalesFromNineAndAHalfToAHalf();
    void histogramLimitsFollowTheReferences();
};

void tst_ReferenceSet::usedRowsCountWhetherValidOrNot()
{
    const ReferenceSet refs({reference(false, true), reference(true, false), reference(true, true),
                             reference(false, false)});
    QCOMPARE(refs.usedRow(0), 1);
    QCOMPARE(refs.usedRow(1), 2);
    QCOMPARE(refs.usedRow(2), -1);
    QCOMPARE(refs.validCount(), 1);
    QVERIFY(!refs.used(2));
}

void tst_ReferenceSet::uncheckingTheFirstMakesTheFormerSecondTheFirst()
{
    QList<ReferenceState> rows{reference(true, true, 0, 1), reference(true, true, 2, 3),
                               reference(true, true, 3, 6)};
    QCOMPARE(ReferenceSet(rows).edgeJumpRatio(), 1.0 / 3.0);
    rows[0].used = false;
    QCOMPARE(ReferenceSet(rows).edgeJumpRatio(), 0.5);
    QCOMPARE(ReferenceSet(rows).valenceMix()(1.0), 2.0);
}

void tst_ReferenceSet::unbrokenRunHasNoRowWithoutCounterpart()
{
    QCOMPARE(ReferenceSet({reference(true, true), reference(true, true), reference(false, false)})
                 .rowWithoutValidCounterpart(),
             -1);
    QCOMPARE(ReferenceSet({reference(false, false)}).rowWithoutValidCounterpart(), -1);
}

void tst_ReferenceSet::gapNamesTheRowWithoutCounterpart()
{
    // Rows 0 and 2 are used: for row 2 there is no used reference number 2.
    QCOMPARE(ReferenceSet({reference(true, true), reference(false, true), reference(true, true)})
                 .rowWithoutValidCounterpart(),
             2);
    // Rows 1 and 2: row 1 finds number 1 (which is row 2), row 2 finds none.
    QCOMPARE(ReferenceSet({reference(false, true), reference(true, true), reference(true, true)})
                 .rowWithoutValidCounterpart(),
             2);
}

void tst_ReferenceSet::invalidCounterpartIsNamedByItsRow()
{
    QCOMPARE(
        ReferenceSet({reference(true, true), reference(true, false)}).rowWithoutValidCounterpart(),
        1);
    // Row 1 is valid itself, but used reference number 1 is row 2, which is not.
    QCOMPARE(ReferenceSet({reference(false, true), reference(true, true), reference(true, false)})
                 .rowWithoutValidCounterpart(),
             1);
}

void tst_ReferenceSet::edgeJumpRatioIgnoresValidity()
{
    QCOMPARE(
        ReferenceSet({reference(true, false, 0, 3), reference(true, false, 0, 2)}).edgeJumpRatio(),
        1.5);
}

void tst_ReferenceSet::edgeJumpRatioNeedsTwoUsedReferences()
{
    QVERIFY(std::isnan(ReferenceSet({reference(false, true, 0, 3)}).edgeJumpRatio()));
    QVERIFY(std::isnan(
        ReferenceSet({reference(true, true, 0, 3), reference(false, true, 0, 2)}).edgeJumpRatio()));
}

void tst_ReferenceSet::secondJumpOfZeroGivesInfinity()
{
    QVERIFY(std::isinf(
        ReferenceSet({reference(true, true, 0, 3), reference(true, true, 0, 0)}).edgeJumpRatio()));
}

void tst_ReferenceSet::valenceMixIsPureFirstAtOneAndPureSecondAtZero()
{
    const auto mix =
        ReferenceSet({reference(true, true, 2), reference(true, true, 3)}).valenceMix();
    QCOMPARE(mix(1.0), 2.0);
    QCOMPARE(mix(0.0), 3.0);
    QCOMPARE(mix(0.25), 2.75);
    QCOMPARE(mix(-1.0), 4.0); // no clamp
}

void tst_ReferenceSet::valenceMixIsZeroWithFewerThanTwoValid()
{
    QCOMPARE(ReferenceSet({reference(true, true, 2), reference(true, false, 3)}).valenceMix()(0.5),
             0.0);
    QCOMPARE(ReferenceSet({reference(true, true, 2), reference(false, true, 3)}).valenceMix()(0.5),
             0.0);
}

void tst_ReferenceSet::valenceMixTakesUsedRowsWhileTheCountAsksForValidOnes()
{
    // Two valid used rows are there, but the first used row is an invalid one.
    const ReferenceSet refs(
        {reference(true, false, 7), reference(true, true, 2), reference(true, true, 3)});
    QCOMPARE(refs.valenceMix()(1.0), 7.0);
    QCOMPARE(refs.valenceMix()(0.0), 2.0);
}

void tst_ReferenceSet::valenceRangeWithoutReferenceIsTenToZero()
{
    const Limits range = ReferenceSet({reference(false, true, 5)}).valenceRange();
    QCOMPARE(range.low, 10.0);
    QCOMPARE(range.high, 0.0);
}

void tst_ReferenceSet::valenceAboveTenDoesNotRaiseTheLowest()
{
    const Limits range =
        ReferenceSet({reference(true, true, 12), reference(true, true, 14)}).valenceRange();
    QCOMPARE(range.low, 10.0);
    QCOMPARE(range.high, 14.0);
}

void tst_ReferenceSet::negativeValenceDoesNotLowerTheHighest()
{
    const Limits range =
        ReferenceSet({reference(true, true, -3), reference(true, true, -2)}).valenceRange();
    QCOMPARE(range.low, -3.0);
    QCOMPARE(range.high, 0.0);
}

void tst_ReferenceSet::unusedRowsDoNotEnterTheValenceRange()
{
    const Limits range = ReferenceSet({reference(true, false, 2), reference(true, true, 3),
                                       reference(false, true, 0), reference(false, true, 4)})
                             .valenceRange();
    QCOMPARE(range.low, 2.0);
    QCOMPARE(range.high, 3.0);
}

void tst_ReferenceSet::valencesAreThoseOfAsManyUsedReferencesAsAreValid()
{
    // The second row is not in use; the third, used but without a spectrum,
    // takes its place and pushes the last one out.
    const ReferenceSet refs(
        {{true, true, 2, 1}, {false, true, 3, 1}, {true, false, 4, 1}, {true, true, 5, 1}});
    QCOMPARE(refs.usedValences(), (QList<double>{2, 4}));
    QCOMPARE(ReferenceSet(QList<ReferenceState>()).usedValences(), QList<double>{});
}

void tst_ReferenceSet::firstTwoValencesKeepTheirOrderAndMissingOnesAreZero()
{
    const ReferenceSet refs(
        {{false, true, 9, 1}, {true, false, 3, 1}, {true, true, 2, 1}, {true, true, 5, 1}});
    QCOMPARE(refs.firstTwoValences().lower, 3.0);
    QCOMPARE(refs.firstTwoValences().upper, 2.0);
    const ReferenceSet one(QList<ReferenceState>{{true, true, 3, 1}, {false, true, 4, 1}});
    QCOMPARE(one.firstTwoValences().lower, 3.0);
    QCOMPARE(one.firstTwoValences().upper, 0.0);
    QCOMPARE(ReferenceSet(QList<ReferenceState>()).firstTwoValences().lower, 0.0);
}

void tst_ReferenceSet::totalJumpSumsUsedReferences()
{
    QCOMPARE(ReferenceSet({reference(true, true, 0, 1.5), reference(true, true, 0, 2.0),
                           reference(false, true, 0, 8.0)})
                 .totalJump(),
             3.5);
    QCOMPARE(ReferenceSet(QList<ReferenceState>()).totalJump(), 0.0);
}

void tst_ReferenceSet::usedRowWithoutSpectrumShiftsTheTermsOfTheTotal()
{
    // Two valid references, so two terms, read from the first two used rows:
    // the empty one and the 2.0; the 4.0 is left out.
    QCOMPARE(ReferenceSet({reference(true, false, 0, 0.0), reference(true, true, 0, 2.0),
                           reference(true, true, 0, 4.0)})
                 .totalJump(),
             2.0);
}

void tst_ReferenceSet::mapLimitsByColumn_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("known");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    for (int kind = 0; kind <= 3; ++kind) {
        QTest::addRow("share %d", kind) << kind << true << -0.1 << 1.1;
    }
    for (const int kind : {4, 5, 6, 7, 8, 12}) { // total jump 3: -0.3 to 3.3
        QTest::addRow("amount %d", kind) << kind << true << -0.3 << 3.3;
    }
    QTest::addRow("valence") << 11 << true << 1.5 << 3.5;
    QTest::addRow("C1") << 9 << false << 0.0 << 0.0;
    QTest::addRow("C2") << 10 << false << 0.0 << 0.0;
    QTest::addRow("beyond") << 13 << false << 0.0 << 0.0;
    QTest::addRow("negative") << -1 << false << 0.0 << 0.0;
}

void tst_ReferenceSet::mapLimitsByColumn()
{
    QFETCH(int, kind);
    QFETCH(bool, known);
    const ReferenceSet refs({reference(true, true, 2, 1), reference(true, true, 3, 2)});
    const std::optional<Limits> limits = analysis::mapLimits(kind, refs);
    QCOMPARE(limits.has_value(), known);
    if (known) {
        QTEST(limits->low, "low"); // QCOMPARE's relative 1e-12 for doubles
        QTEST(limits->high, "high");
    }
}

void tst_ReferenceSet::valenceMapWithoutReferenceScalesFromNineAndAHalfToAHalf()
{
    const std::optional<Limits> limits = analysis::mapLimits(11, ReferenceSet({}));
    QVERIFY(limits);
    QCOMPARE(limits->low, 9.5);
    QCOMPARE(limits->high, 0.5);
}

void tst_ReferenceSet::histogramLimitsFollowTheReferences()
{
    const ReferenceSet refs({reference(true, true, 2, 1), reference(true, true, 3, 2)});
    QCOMPARE(analysis::valenceLimits(refs).low, 1.5);
    QCOMPARE(analysis::valenceLimits(refs).high, 3.5);
    QCOMPARE(analysis::jumpHistogramLimits(refs).low, -0.5);
    QCOMPARE(analysis::jumpHistogramLimits(refs).high, 3.5);
}

QTEST_APPLESS_MAIN(tst_ReferenceSet)
#include "tst_ReferenceSet.moc"
