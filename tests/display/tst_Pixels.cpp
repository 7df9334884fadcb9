// From doubles to whole pixels, whatever the doubles are.
#include "display/Pixels.h"

#include <QTest>

#include <limits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();
constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();
constexpr int reach = 1048576; // where long segments are cut, pixels

bool isWithinOnePixel(const QPoint& a, const QPoint& b)
{
    return qAbs(a.x() - b.x()) <= 1 && qAbs(a.y() - b.y()) <= 1;
}

} // namespace

class tst_Pixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void truncationGoesTowardsZero_data();
    void truncationGoesTowardsZero();
    void nearestPixelRoundsHalvesAwayFromZero_data();
    void nearestPixelRoundsHalvesAwayFromZero();
    void shortLinesAreTruncatedAtBothEnds_data();
    void shortLinesAreTruncatedAtBothEnds();
    void longLinesAreCutOnTheirWay_data();
    void longLinesAreCutOnTheirWay();
    void endInsideStaysWhereItIs();
    void lineTurnedRoundKeepsItsPlace();
    void largestDoublesStayWithinReach();
    void farAwayLinesAreNone_data();
    void farAwayLinesAreNone();
    void linesWithoutAPlaceAreNone_data();
    void linesWithoutAPlaceAreNone();
};

void tst_Pixels::truncationGoesTowardsZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("pixel");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("whole") << 41.0 << 41;
    QTest::newRow("fraction") << 41.999 << 41;
    QTest::newRow("negative fraction") << -41.999 << -41;
    QTest::newRow("just below zero") << -0.999 << 0;
    QTest::newRow("highest int") << 2147483647.0 << highest;
    QTest::newRow("highest int and a fraction") << 2147483647.75 << highest;
    QTest::newRow("one above the highest") << 2147483648.0 << lowest;
    QTest::newRow("lowest int") << -2147483648.0 << lowest;
    QTest::newRow("lowest int and a fraction") << -2147483648.75 << lowest;
    QTest::newRow("one above the lowest") << -2147483647.5 << lowest + 1;
    QTest::newRow("one below the lowest") << -2147483649.0 << lowest;
    QTest::newRow("far above") << huge << lowest;
    QTest::newRow("far below") << -huge << lowest;
    QTest::newRow("infinity") << infinite << lowest;
    QTest::newRow("negative infinity") << -infinite << lowest;
    QTest::newRow("NaN") << notANumber << lowest;
}

void tst_Pixels::truncationGoesTowardsZero()
{
    QFETCH(double, value);
    QTEST(display::truncated(value), "pixel");
}

void tst_Pixels::nearestPixelRoundsHalvesAwayFromZero_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<QPoint>("pixel");
    QTest::newRow("origin") << QPointF(0, 0) << QPoint(0, 0);
    QTest::newRow("whole") << QPointF(12, -7) << QPoint(12, -7);
    QTest::newRow("below the half") << QPointF(12.49, -7.49) << QPoint(12, -7);
    QTest::newRow("halves") << QPointF(12.5, -7.5) << QPoint(13, -8);
    QTest::newRow("halves beside zero") << QPointF(0.5, -0.5) << QPoint(1, -1);
    QTest::newRow("above the half") << QPointF(12.51, -7.51) << QPoint(13, -8);
    QTest::newRow("each coordinate by itself") << QPointF(-0.4, 3.6) << QPoint(0, 4);
    QTest::newRow("beyond any int") << QPointF(1e300, -1e300) << QPoint(lowest, lowest);
    QTest::newRow("no place") << QPointF(notANumber, infinite) << QPoint(lowest, lowest);
}

void tst_Pixels::nearestPixelRoundsHalvesAwayFromZero()
{
    QFETCH(QPointF, place);
    QTEST(display::nearestPixel(place), "pixel");
}

void tst_Pixels::shortLinesAreTruncatedAtBothEnds_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QLine>("line");
    QTest::newRow("fractions") << QPointF(1.9, 2.9) << QPointF(30.1, -4.9) << QLine(1, 2, 30, -4);
    QTest::newRow("point") << QPointF(5.5, 6.5) << QPointF(5.7, 6.9) << QLine(5, 6, 5, 6);
    QTest::newRow("outside of any window") << QPointF(-9000.5, -9000.5) << QPointF(-8000, 90000.5)
                                           << QLine(-9000, -9000, -8000, 90000);
    QTest::newRow("up to the reach")
        << QPointF(-reach, reach) << QPointF(reach, -reach) << QLine(-reach, reach, reach, -reach);
}

void tst_Pixels::shortLinesAreTruncatedAtBothEnds()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QLine, line);
    const auto made = display::pixelLine(from, to);
    QVERIFY(made.has_value());
    QCOMPARE(*made, line);
}

void tst_Pixels::longLinesAreCutOnTheirWay_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QLine>("line");
    QTest::newRow("level") << QPointF(-1e9, 50.5) << QPointF(1e9, 50.5)
                           << QLine(-reach, 50, reach, 50);
    QTest::newRow("upright") << QPointF(70.5, -1e12) << QPointF(70.5, 1e12)
                             << QLine(70, -reach, 70, reach);
    QTest::newRow("one end out, half as steep")
        << QPointF(0, 0) << QPointF(4e6, 2e6) << QLine(0, 0, reach, reach / 2);
    QTest::newRow("other end out")
        << QPointF(4e6, 2e6) << QPointF(0, 0) << QLine(reach, reach / 2, 0, 0);
    QTest::newRow("level, of the largest doubles")
        << QPointF(-huge, 50.5) << QPointF(huge, 50.5) << QLine(-reach, 50, reach, 50);
    QTest::newRow("upright, from far out")
        << QPointF(70.5, -1e30) << QPointF(70.5, 20.5) << QLine(70, -reach, 70, 20);
    QTest::newRow("upright, far out")
        << QPointF(70.5, 20.5) << QPointF(70.5, -1e30) << QLine(70, 20, 70, -reach);
    // y = 2 x meets y = -reach and y = reach.
    QTest::newRow("through, steep")
        << QPointF(-2.0 * reach, -4.0 * reach) << QPointF(2.0 * reach, 4.0 * reach)
        << QLine(-reach / 2, -reach, reach / 2, reach);
    // y = x + reach / 2 meets x = -reach and y = reach.
    QTest::newRow("through, over a corner")
        << QPointF(-2.0 * reach, -1.5 * reach) << QPointF(2.0 * reach, 2.5 * reach)
        << QLine(-reach, -reach / 2, reach / 2, reach);
}

// Tolerance: a pixel at the cut, for rounding before the truncation.
void tst_Pixels::longLinesAreCutOnTheirWay()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QLine, line);
    const auto made = display::pixelLine(from, to);
    QVERIFY(made.has_value());
    QVERIFY(isWithinOnePixel(made->p1(), line.p1()));
    QVERIFY(isWithinOnePixel(made->p2(), line.p2()));
}

void tst_Pixels::endInsideStaysWhereItIs()
{
    const auto out = display::pixelLine({123.75, 45.25}, {1e200, -1e250});
    QVERIFY(out.has_value());
    QCOMPARE(out->p1(), QPoint(123, 45));
    const auto in = display::pixelLine({1e200, -1e250}, {123.75, 45.25});
    QVERIFY(in.has_value());
    QCOMPARE(in->p2(), QPoint(123, 45));
}

// Tolerance: a pixel, as above.
void tst_Pixels::lineTurnedRoundKeepsItsPlace()
{
    const QPointF from(-7.3e6, -2.1e5);
    const QPointF to(5.2e8, 1.9e7);
    const auto forth = display::pixelLine(from, to);
    const auto back = display::pixelLine(to, from);
    QVERIFY(forth.has_value() && back.has_value());
    QVERIFY(isWithinOnePixel(forth->p1(), back->p2()));
    QVERIFY(isWithinOnePixel(forth->p2(), back->p1()));
}

void tst_Pixels::largestDoublesStayWithinReach()
{
    const QRect reachable(QPoint(-reach, -reach), QPoint(reach, reach));
    for (const double x : {-huge, 0.0, huge}) {
        for (const double y : {-huge, 0.0, huge}) {
            const auto made = display::pixelLine({x, y}, {-x, -y});
            QVERIFY(made.has_value());
            QVERIFY(reachable.contains(made->p1()) && reachable.contains(made->p2()));
        }
    }
}

void tst_Pixels::farAwayLinesAreNone_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    const double out = 2.0 * reach;
    QTest::newRow("beyond on x") << QPointF(out, 0) << QPointF(2 * out, 10);
    QTest::newRow("before on x") << QPointF(-out, 0) << QPointF(-2 * out, 10);
    QTest::newRow("beyond on y, upright") << QPointF(5, out) << QPointF(5, 2 * out);
    QTest::newRow("level, out on y") << QPointF(-out, out) << QPointF(out, out);
    QTest::newRow("upright, out on x") << QPointF(out, -out) << QPointF(out, out);
    // x + y = 3 reach stays off the corner (reach, reach).
    QTest::newRow("past a corner") << QPointF(3.0 * reach, 0) << QPointF(0, 3.0 * reach);
    QTest::newRow("one place, far out") << QPointF(1e300, 1e300) << QPointF(1e300, 1e300);
}

void tst_Pixels::farAwayLinesAreNone()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QVERIFY(!display::pixelLine(from, to).has_value());
    QVERIFY(!display::pixelLine(to, from).has_value());
}

void tst_Pixels::linesWithoutAPlaceAreNone_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::newRow("NaN in x") << QPointF(notANumber, 5);
    QTest::newRow("NaN in y") << QPointF(5, notANumber);
    QTest::newRow("infinite x") << QPointF(infinite, 5);
    QTest::newRow("infinite y") << QPointF(5, -infinite);
    QTest::newRow("nothing at all") << QPointF(notANumber, notANumber);
}

void tst_Pixels::linesWithoutAPlaceAreNone()
{
    QFETCH(QPointF, place);
    for (const QPointF& other : {QPointF(1, 2), QPointF(1e300, -1e300), place}) {
        QVERIFY(!display::pixelLine(place, other).has_value());
        QVERIFY(!display::pixelLine(other, place).has_value());
    }
}

QTEST_APPLESS_MAIN(tst_Pixels)
#include "tst_Pixels.moc"
