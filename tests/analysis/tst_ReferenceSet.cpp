// The references in use: their order, edge jumps and valences, and the limits of maps and
// histograms that are derived from them.
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
    void usedRowsIncludeInvalidReferences();
    void unusedReferenceIsSkippedByRatioAndValenceMix();
    void usedReferencesWithoutAGapAllHaveCounterparts();
    void gapInUsedReferencesLeavesALaterRowWithoutCounterpart();
    void referenceRowWithAnInvalidCounterpartIsFound();
    void edgeJumpRatioIgnoresValidity();
    void edgeJumpRatioIsNaNWithFewerThanTwoUsedReferences();
    void edgeJumpRatioIsInfiniteIfTheSecondJumpIsZero();
    void valenceMixInterpolatesBetweenTheFirstTwoValences();
    void valenceMixIsZeroWithFewerThanTwoValidReferences();
    void valenceMixReadsUsedReferencesEvenIfInvalid();
    void valenceRangeWithoutUsedReferencesIsTenToZero();
    void lowerLimitIsTenForValencesAboveTen();
    void upperLimitIsZeroForNegativeValences();
    void unusedReferencesDoNotEnterTheValenceRange();
    void firstTwoValencesKeepTheirOrderAndAreZeroIfMissing();
    void totalJumpSumsUsedReferences();
    void numberOfUsedValencesIsTheNumberOfUsedAndValidReferences();
    void totalJumpIncludesUsedReferenceWithoutSpectrum();
    void mapLimitsAreKnownForEveryQuantityExceptC1AndC2_data();
    void mapLimitsAreKnownForEveryQuantityExceptC1AndC2();
    void valenceMapWithoutReferencesHasReversedLimits();
    void histogramLimitsReachHalfAUnitBeyondTheReferences();
};

void tst_ReferenceSet::usedRowsIncludeInvalidReferences()
{
    const ReferenceSet refs({reference(false, true), reference(true, false), reference(true, true),
                             reference(false, false)});
    QCOMPARE(refs.usedRow(0), 1);
    QCOMPARE(refs.usedRow(1), 2);
    QCOMPARE(refs.usedRow(2), -1);
    QCOMPARE(refs.validCount(), 1);
    QVERIFY(!refs.used(2));
}

void tst_ReferenceSet::unusedReferenceIsSkippedByRatioAndValenceMix()
{
    QList<ReferenceState> rows{reference(true, true, 0, 1), reference(true, true, 2, 3),
                               reference(true, true, 3, 6)};
    QCOMPARE(ReferenceSet(rows).edgeJumpRatio(), 1.0 / 3.0);
    rows[0].used = false;
    QCOMPARE(ReferenceSet(rows).edgeJumpRatio(), 0.5);
    QCOMPARE(ReferenceSet(rows).valenceMix()(1.0), 2.0);
}

void tst_ReferenceSet::usedReferencesWithoutAGapAllHaveCounterparts()
{
    QCOMPARE(ReferenceSet({reference(true, true), reference(true, true), reference(false, false)})
                 .rowWithoutValidCounterpart(),
             -1);
    QCOMPARE(ReferenceSet({reference(false, false)}).rowWithoutValidCounterpart(), -1);
}

void tst_ReferenceSet::gapInUsedReferencesLeavesALaterRowWithoutCounterpart()
{
    // The counterpart of row i is the used reference with the index i. Used: rows 0 and 2. So
    // reference 0 is row 0 and reference 1 is row 2. Row 2 has no counterpart.
    QCOMPARE(ReferenceSet({reference(true, true), reference(false, true), reference(true, true)})
                 .rowWithoutValidCounterpart(),
             2);
    // Used: rows 1 and 2. So reference 0 is row 1 and reference 1 is row 2. The counterpart of
    // row 1 is row 2. Row 2 has no counterpart.
    QCOMPARE(ReferenceSet({reference(false, true), reference(true, true), reference(true, true)})
                 .rowWithoutValidCounterpart(),
             2);
}

void tst_ReferenceSet::referenceRowWithAnInvalidCounterpartIsFound()
{
    QCOMPARE(
        ReferenceSet({reference(true, true), reference(true, false)}).rowWithoutValidCounterpart(),
        1);
    // Used: rows 1 and 2; valid: rows 0 and 1. The counterpart of row 1 is the used reference
    // with the index 1, which is row 2. Row 2 is invalid.
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

void tst_ReferenceSet::edgeJumpRatioIsNaNWithFewerThanTwoUsedReferences()
{
    QVERIFY(std::isnan(ReferenceSet({reference(false, true, 0, 3)}).edgeJumpRatio()));
    QVERIFY(std::isnan(
        ReferenceSet({reference(true, true, 0, 3), reference(false, true, 0, 2)}).edgeJumpRatio()));
}

void tst_ReferenceSet::edgeJumpRatioIsInfiniteIfTheSecondJumpIsZero()
{
    QVERIFY(std::isinf(
        ReferenceSet({reference(true, true, 0, 3), reference(true, true, 0, 0)}).edgeJumpRatio()));
}

void tst_ReferenceSet::valenceMixInterpolatesBetweenTheFirstTwoValences()
{
    const auto mix =
        ReferenceSet({reference(true, true, 2), reference(true, true, 3)}).valenceMix();
    QCOMPARE(mix(1.0), 2.0);
    QCOMPARE(mix(0.0), 3.0);
    QCOMPARE(mix(0.25), 2.75);
    QCOMPARE(mix(-1.0), 4.0); // not clamped
}

void tst_ReferenceSet::valenceMixIsZeroWithFewerThanTwoValidReferences()
{
    QCOMPARE(ReferenceSet({reference(true, true, 2), reference(true, false, 3)}).valenceMix()(0.5),
             0.0);
    QCOMPARE(ReferenceSet({reference(true, true, 2), reference(false, true, 3)}).valenceMix()(0.5),
             0.0);
}

void tst_ReferenceSet::valenceMixReadsUsedReferencesEvenIfInvalid()
{
    // Used: rows 0, 1 and 2; valid: rows 1 and 2. There are two valid references, so the
    // valence is not 0. It is mixed from the first two used references, rows 0 and 1.
    const ReferenceSet refs(
        {reference(true, false, 7), reference(true, true, 2), reference(true, true, 3)});
    QCOMPARE(refs.valenceMix()(1.0), 7.0);
    QCOMPARE(refs.valenceMix()(0.0), 2.0);
}

void tst_ReferenceSet::valenceRangeWithoutUsedReferencesIsTenToZero()
{
    const Limits range = ReferenceSet({reference(false, true, 5)}).valenceRange();
    QCOMPARE(range.low, 10.0);
    QCOMPARE(range.high, 0.0);
}

void tst_ReferenceSet::lowerLimitIsTenForValencesAboveTen()
{
    const Limits range =
        ReferenceSet({reference(true, true, 12), reference(true, true, 14)}).valenceRange();
    QCOMPARE(range.low, 10.0);
    QCOMPARE(range.high, 14.0);
}

void tst_ReferenceSet::upperLimitIsZeroForNegativeValences()
{
    const Limits range =
        ReferenceSet({reference(true, true, -3), reference(true, true, -2)}).valenceRange();
    QCOMPARE(range.low, -3.0);
    QCOMPARE(range.high, 0.0);
}

void tst_ReferenceSet::unusedReferencesDoNotEnterTheValenceRange()
{
    const Limits range = ReferenceSet({reference(true, false, 2), reference(true, true, 3),
                                       reference(false, true, 0), reference(false, true, 4)})
                             .valenceRange();
    QCOMPARE(range.low, 2.0);
    QCOMPARE(range.high, 3.0);
}

void tst_ReferenceSet::numberOfUsedValencesIsTheNumberOfUsedAndValidReferences()
{
    // Used: rows 0, 2 and 3; valid: rows 0, 1 and 3. Two used references are valid, so there
    // are two valences. They are read from the first two used references, rows 0 and 2,
    // although row 2 is invalid.
    const ReferenceSet refs(
        {{true, true, 2, 1}, {false, true, 3, 1}, {true, false, 4, 1}, {true, true, 5, 1}});
    QCOMPARE(refs.usedValences(), (QList<double>{2, 4}));
    QCOMPARE(ReferenceSet(QList<ReferenceState>()).usedValences(), QList<double>{});
}

void tst_ReferenceSet::firstTwoValencesKeepTheirOrderAndAreZeroIfMissing()
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

void tst_ReferenceSet::totalJumpIncludesUsedReferenceWithoutSpectrum()
{
    // Used: rows 0, 1 and 2; valid: rows 1 and 2. There are two valid references, so the total
    // has two terms: the edge jumps of the first two used references, 0.0 for row 0 and 2.0
    // for row 1.
    QCOMPARE(ReferenceSet({reference(true, false, 0, 0.0), reference(true, true, 0, 2.0),
                           reference(true, true, 0, 4.0)})
                 .totalJump(),
             2.0);
}

void tst_ReferenceSet::mapLimitsAreKnownForEveryQuantityExceptC1AndC2_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("known");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    for (int kind = 0; kind <= 3; ++kind) {
        QTest::addRow("share %d", kind) << kind << true << -0.1 << 1.1;
    }
    for (const int kind : {4, 5, 6, 7, 8, 12}) { // limits: -10 % and 110 % of 3, the total jump
        QTest::addRow("quantity %d", kind) << kind << true << -0.3 << 3.3;
    }
    QTest::addRow("valence") << 11 << true << 1.5 << 3.5;
    QTest::addRow("C1") << 9 << false << 0.0 << 0.0;
    QTest::addRow("C2") << 10 << false << 0.0 << 0.0;
    QTest::addRow("index above the last") << 13 << false << 0.0 << 0.0;
    QTest::addRow("negative index") << -1 << false << 0.0 << 0.0;
}

void tst_ReferenceSet::mapLimitsAreKnownForEveryQuantityExceptC1AndC2()
{
    QFETCH(int, kind);
    QFETCH(bool, known);
    const ReferenceSet refs({reference(true, true, 2, 1), reference(true, true, 3, 2)});
    const std::optional<Limits> limits = analysis::mapLimits(kind, refs);
    QCOMPARE(limits.has_value(), known);
    if (known) {
        QTEST(limits->low, "low"); // QTEST allows a relative error of 1e-12
        QTEST(limits->high, "high");
    }
}

void tst_ReferenceSet::valenceMapWithoutReferencesHasReversedLimits()
{
    const std::optional<Limits> limits = analysis::mapLimits(11, ReferenceSet({}));
    QVERIFY(limits);
    QCOMPARE(limits->low, 9.5);
    QCOMPARE(limits->high, 0.5);
}

void tst_ReferenceSet::histogramLimitsReachHalfAUnitBeyondTheReferences()
{
    const ReferenceSet refs({reference(true, true, 2, 1), reference(true, true, 3, 2)});
    QCOMPARE(analysis::valenceLimits(refs).low, 1.5);
    QCOMPARE(analysis::valenceLimits(refs).high, 3.5);
    QCOMPARE(analysis::jumpHistogramLimits(refs).low, -0.5);
    QCOMPARE(analysis::jumpHistogramLimits(refs).high, 3.5);
}

QTEST_APPLESS_MAIN(tst_ReferenceSet)
#include "tst_ReferenceSet.moc"
