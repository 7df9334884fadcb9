// The three lines in the graph whose axes are the absorbances of the two references.
#include "analysis/PlaneLines.h"
#include "analysis/RowCollection.h"

#include <QTest>

#include <cmath>

using analysis::CollectedRows;
using analysis::PlaneLines;
using analysis::planeLines;

namespace
{

using Point = QPair<double, double>; // x is R1, y is R2
using Points = QList<Point>;

/// Energy rows at the given points, and a V row at (2, 3). The edge jump ratio r is 0.5. The
/// energies have no effect.
CollectedRows rowsAt(const Points& points)
{
    CollectedRows rows;
    for (const auto& [r1, r2] : points) {
        rows.others.append({static_cast<int>(rows.others.size()), 8300.0, r1, r2});
    }
    rows.v = {7, 8390.0, 2.0, 3.0};
    rows.r = 0.5;
    return rows;
}

bool isNear(double value, double expected, double tolerance)
{
    if (!(std::fabs(value - expected) <= tolerance)) {
        qWarning() << value << "instead of" << expected;
        return false;
    }
    return true;
}

} // namespace

class tst_PlaneLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstSlopeIsOneOverTheJumpRatio_data();
    void firstSlopeIsOneOverTheJumpRatio();
    void secondSlopeIsR2OverR1OfTheVRow_data();
    void secondSlopeIsR2OverR1OfTheVRow();
    void secondSlopeIsNotFiniteIfTheVRowIsAtXZero();
    void secondSlopeIsNaNIfThereIsNoVRow();
    void secondSlopeIsCalculatedIfTheVRowIsTheFirstRow();
    void lineThroughAllRowsIsRecovered_data();
    void lineThroughAllRowsIsRecovered();
    void scatteredRowsGiveTheLeastSquaresLine();
    void orderOfTheRowsHasNoEffect();
    void vRowIsNotPartOfTheFit();
    void fewerThanTwoRowsGiveNoFiniteFittedLine_data();
    void fewerThanTwoRowsGiveNoFiniteFittedLine();
    void rowsWithEqualXGiveNoFiniteFittedLine();
    void nonFiniteRowMakesOnlyTheFittedLineNonFinite();
    void emptyCollectionGivesNoFiniteLine();
};

void tst_PlaneLines::firstSlopeIsOneOverTheJumpRatio_data()
{
    QTest::addColumn<double>("r");
    QTest::addColumn<double>("k1");
    QTest::newRow("equal jumps") << 1.0 << 1.0;
    QTest::newRow("first jump larger") << 4.0 << 0.25;
    QTest::newRow("second jump larger") << 0.125 << 8.0;
    QTest::newRow("negative ratio") << -2.0 << -0.5;
    QTest::newRow("second jump zero") << HUGE_VAL << 0.0;
    QTest::newRow("first jump zero") << 0.0 << HUGE_VAL;
}

void tst_PlaneLines::firstSlopeIsOneOverTheJumpRatio()
{
    QFETCH(double, r);
    CollectedRows rows = rowsAt({{0.0, 0.0}, {1.0, 1.0}});
    rows.r = r;
    QTEST(planeLines(rows).k1, "k1");
}

void tst_PlaneLines::secondSlopeIsR2OverR1OfTheVRow_data()
{
    QTest::addColumn<double>("r1");
    QTest::addColumn<double>("r2");
    QTest::addColumn<double>("k2");
    QTest::newRow("first quadrant") << 2.0 << 3.0 << 1.5;
    QTest::newRow("negative x") << -4.0 << 1.0 << -0.25;
    QTest::newRow("on the x axis") << 2.0 << 0.0 << 0.0;
    QTest::newRow("below one") << 0.5 << 0.125 << 0.25;
}

void tst_PlaneLines::secondSlopeIsR2OverR1OfTheVRow()
{
    QFETCH(double, r1);
    QFETCH(double, r2);
    CollectedRows rows = rowsAt({{0.0, 0.0}, {1.0, 1.0}});
    rows.v = {5, 8390.0, r1, r2};
    QTEST(planeLines(rows).k2, "k2");
}

void tst_PlaneLines::secondSlopeIsNotFiniteIfTheVRowIsAtXZero()
{
    CollectedRows rows = rowsAt({{0.0, 0.0}, {1.0, 1.0}});
    rows.v = {5, 8390.0, 0.0, 3.0};
    QVERIFY(!std::isfinite(planeLines(rows).k2));
    rows.v = {5, 8390.0, 0.0, 0.0};
    QVERIFY(!std::isfinite(planeLines(rows).k2));
    QCOMPARE(planeLines(rows).k1, 2.0);
    QCOMPARE(planeLines(rows).a, 1.0);
}

// If rows.v.row is -1, there is no V row, and the other numbers of rows.v have no effect.
void tst_PlaneLines::secondSlopeIsNaNIfThereIsNoVRow()
{
    CollectedRows rows = rowsAt({{0.0, 1.0}, {1.0, 3.0}});
    rows.v.row = -1;
    const PlaneLines lines = planeLines(rows);
    QVERIFY(std::isnan(lines.k2));
    QCOMPARE(lines.k1, 2.0);
    QCOMPARE(lines.a, 2.0);
    QCOMPARE(lines.b, 1.0);
}

void tst_PlaneLines::secondSlopeIsCalculatedIfTheVRowIsTheFirstRow()
{
    CollectedRows rows = rowsAt({{0.0, 1.0}, {1.0, 3.0}});
    rows.v.row = 0;
    QCOMPARE(planeLines(rows).k2, 1.5);
}

void tst_PlaneLines::lineThroughAllRowsIsRecovered_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::newRow("through the origin") << 2.0 << 0.0;
    QTest::newRow("above the origin") << 0.5 << 1.25;
    QTest::newRow("falling") << -3.0 << 4.0;
    QTest::newRow("level") << 0.0 << -0.75;
}

// The coordinates have few binary digits, so their sums are exact. 1e-14 is far above the rounding
// of a division: an ulp of 4, the largest slope or intercept, is 8.9e-16.
void tst_PlaneLines::lineThroughAllRowsIsRecovered()
{
    QFETCH(double, a);
    QFETCH(double, b);
    for (const QList<double>& xs : {QList<double>{1.0, 3.0},
                                    {0.5, 1.0, 4.0},
                                    {-2.0, 0.0, 1.0, 1.0, 5.0},
                                    {0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0}}) {
        Points points;
        for (const double x : xs) {
            points.append({x, a * x + b});
        }
        const PlaneLines lines = planeLines(rowsAt(points));
        QVERIFY(isNear(lines.a, a, 1e-14));
        QVERIFY(isNear(lines.b, b, 1e-14));
    }
}

// The points (0,0), (1,2), (2,1) and (3,5) have the mean coordinates 1.5 and 2. The sum of the
// products of the deviations is (-1.5)(-2) + (-0.5) 0 + 0.5 (-1) + 1.5 * 3 = 7. The sum of the
// squared x deviations is 2.25 + 0.25 + 0.25 + 2.25 = 5. So the slope a is 7 / 5 = 1.4 and the
// intercept b is 2 - 1.4 * 1.5 = -0.1.
void tst_PlaneLines::scatteredRowsGiveTheLeastSquaresLine()
{
    const PlaneLines lines = planeLines(rowsAt({{0.0, 0.0}, {1.0, 2.0}, {2.0, 1.0}, {3.0, 5.0}}));
    QVERIFY(isNear(lines.a, 1.4, 1e-15));
    QVERIFY(isNear(lines.b, -0.1, 1e-15));
}

void tst_PlaneLines::orderOfTheRowsHasNoEffect()
{
    const PlaneLines lines = planeLines(rowsAt({{3.0, 5.0}, {1.0, 2.0}, {0.0, 0.0}, {2.0, 1.0}}));
    QVERIFY(isNear(lines.a, 1.4, 1e-15));
    QVERIFY(isNear(lines.b, -0.1, 1e-15));
}

void tst_PlaneLines::vRowIsNotPartOfTheFit()
{
    CollectedRows rows = rowsAt({{0.0, 1.0}, {1.0, 3.0}});
    rows.v = {5, 8390.0, 100.0, -700.0};
    QCOMPARE(planeLines(rows).a, 2.0);
    QCOMPARE(planeLines(rows).b, 1.0);
}

void tst_PlaneLines::fewerThanTwoRowsGiveNoFiniteFittedLine_data()
{
    QTest::addColumn<Points>("points");
    QTest::newRow("no row") << Points{};
    QTest::newRow("one row") << Points{{1.0, 2.0}};
    QTest::newRow("one row at the origin") << Points{{0.0, 0.0}};
}

void tst_PlaneLines::fewerThanTwoRowsGiveNoFiniteFittedLine()
{
    QFETCH(Points, points);
    const PlaneLines lines = planeLines(rowsAt(points));
    QVERIFY(!std::isfinite(lines.a));
    QVERIFY(!std::isfinite(lines.b));
    QCOMPARE(lines.k1, 2.0);
    QCOMPARE(lines.k2, 1.5);
}

void tst_PlaneLines::rowsWithEqualXGiveNoFiniteFittedLine()
{
    const PlaneLines lines = planeLines(rowsAt({{1.5, 2.0}, {1.5, 4.0}, {1.5, 7.0}}));
    QVERIFY(!std::isfinite(lines.a));
    QVERIFY(!std::isfinite(lines.b));
}

void tst_PlaneLines::nonFiniteRowMakesOnlyTheFittedLineNonFinite()
{
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        const PlaneLines lines = planeLines(rowsAt({{0.0, 1.0}, {odd, 3.0}, {2.0, 5.0}}));
        QVERIFY(!std::isfinite(lines.a));
        QCOMPARE(lines.k1, 2.0);
        QCOMPARE(lines.k2, 1.5);
    }
}

// With fewer than two used references the collection is empty and r is 0.
void tst_PlaneLines::emptyCollectionGivesNoFiniteLine()
{
    const PlaneLines lines = planeLines(CollectedRows());
    QVERIFY(!std::isfinite(lines.k1));
    QVERIFY(std::isnan(lines.k2));
    QVERIFY(!std::isfinite(lines.a));
    QVERIFY(!std::isfinite(lines.b));
}

QTEST_GUILESS_MAIN(tst_PlaneLines)
#include "tst_PlaneLines.moc"
