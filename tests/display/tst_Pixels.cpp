// Tests of the conversion of doubles to whole pixels and of the clipping of long lines.
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
constexpr int clipLimit = 1048576; // long segments are clipped to +-clipLimit pixels

bool isWithinOnePixel(const QPoint& a, const QPoint& b)
{
    return qAbs(a.x() - b.x()) <= 1 && qAbs(a.y() - b.y()) <= 1;
}

} // namespace

class tst_Pixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valueIsTruncatedOrLowestIntIfOutOfRange_data();
    void valueIsTruncatedOrLowestIntIfOutOfRange();
    void nearestPixelRoundsHalvesAwayFromZero_data();
    void nearestPixelRoundsHalvesAwayFromZero();
    void endsOfShortLinesAreTruncatedToPixels_data();
    void endsOfShortLinesAreTruncatedToPixels();
    void longLinesAreClippedAtTheClipLimits_data();
    void longLinesAreClippedAtTheClipLimits();
    void lineEndInsideTheClipLimitsIsKept();
    void reversedLineHasTheSameClippedEnds();
    void largestDoublesAreClippedToTheLimits();
    void linesOutsideTheLimitsAreDropped_data();
    void linesOutsideTheLimitsAreDropped();
    void nonFiniteLinesAreDropped_data();
    void nonFiniteLinesAreDropped();
};

void tst_Pixels::valueIsTruncatedOrLowestIntIfOutOfRange_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("pixel");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("integer") << 41.0 << 41;
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

void tst_Pixels::valueIsTruncatedOrLowestIntIfOutOfRange()
{
    QFETCH(double, value);
    QTEST(display::truncated(value), "pixel");
}

void tst_Pixels::nearestPixelRoundsHalvesAwayFromZero_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<QPoint>("pixel");
    QTest::newRow("origin") << QPointF(0, 0) << QPoint(0, 0);
    QTest::newRow("integers") << QPointF(12, -7) << QPoint(12, -7);
    QTest::newRow("below one half") << QPointF(12.49, -7.49) << QPoint(12, -7);
    QTest::newRow("halves") << QPointF(12.5, -7.5) << QPoint(13, -8);
    QTest::newRow("halves beside zero") << QPointF(0.5, -0.5) << QPoint(1, -1);
    QTest::newRow("above one half") << QPointF(12.51, -7.51) << QPoint(13, -8);
    QTest::newRow("coordinates are rounded independently") << QPointF(-0.4, 3.6) << QPoint(0, 4);
    QTest::newRow("outside the range of int") << QPointF(1e300, -1e300) << QPoint(lowest, lowest);
    QTest::newRow("NaN and infinity") << QPointF(notANumber, infinite) << QPoint(lowest, lowest);
}

void tst_Pixels::nearestPixelRoundsHalvesAwayFromZero()
{
    QFETCH(QPointF, position);
    QTEST(display::nearestPixel(position), "pixel");
}

void tst_Pixels::endsOfShortLinesAreTruncatedToPixels_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QLine>("line");
    QTest::newRow("fractions") << QPointF(1.9, 2.9) << QPointF(30.1, -4.9) << QLine(1, 2, 30, -4);
    QTest::newRow("point") << QPointF(5.5, 6.5) << QPointF(5.7, 6.9) << QLine(5, 6, 5, 6);
    QTest::newRow("outside any window, not clipped")
        << QPointF(-9000.5, -9000.5) << QPointF(-8000, 90000.5)
        << QLine(-9000, -9000, -8000, 90000);
    QTest::newRow("exactly at the clip limits")
        << QPointF(-clipLimit, clipLimit) << QPointF(clipLimit, -clipLimit)
        << QLine(-clipLimit, clipLimit, clipLimit, -clipLimit);
}

void tst_Pixels::endsOfShortLinesAreTruncatedToPixels()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QLine, line);
    const auto made = display::pixelLine(from, to);
    QVERIFY(made.has_value());
    QCOMPARE(*made, line);
}

void tst_Pixels::longLinesAreClippedAtTheClipLimits_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QLine>("line");
    QTest::newRow("horizontal") << QPointF(-1e9, 50.5) << QPointF(1e9, 50.5)
                                << QLine(-clipLimit, 50, clipLimit, 50);
    QTest::newRow("vertical") << QPointF(70.5, -1e12) << QPointF(70.5, 1e12)
                              << QLine(70, -clipLimit, 70, clipLimit);
    QTest::newRow("second end outside, slope 1/2")
        << QPointF(0, 0) << QPointF(4e6, 2e6) << QLine(0, 0, clipLimit, clipLimit / 2);
    QTest::newRow("first end outside")
        << QPointF(4e6, 2e6) << QPointF(0, 0) << QLine(clipLimit, clipLimit / 2, 0, 0);
    QTest::newRow("horizontal, largest doubles")
        << QPointF(-huge, 50.5) << QPointF(huge, 50.5) << QLine(-clipLimit, 50, clipLimit, 50);
    QTest::newRow("vertical, first end far outside")
        << QPointF(70.5, -1e30) << QPointF(70.5, 20.5) << QLine(70, -clipLimit, 70, 20);
    QTest::newRow("vertical, second end far outside")
        << QPointF(70.5, 20.5) << QPointF(70.5, -1e30) << QLine(70, 20, 70, -clipLimit);
    // The line y = 2 x meets y = -clipLimit and y = clipLimit.
    QTest::newRow("both ends outside, steep")
        << QPointF(-2.0 * clipLimit, -4.0 * clipLimit) << QPointF(2.0 * clipLimit, 4.0 * clipLimit)
        << QLine(-clipLimit / 2, -clipLimit, clipLimit / 2, clipLimit);
    // The line y = x + clipLimit / 2 meets x = -clipLimit and y = clipLimit.
    QTest::newRow("both ends outside, near a corner")
        << QPointF(-2.0 * clipLimit, -1.5 * clipLimit) << QPointF(2.0 * clipLimit, 2.5 * clipLimit)
        << QLine(-clipLimit, -clipLimit / 2, clipLimit / 2, clipLimit);
}

// The tolerance is one pixel: the rounding error of a clipped coordinate can change the
// truncated number by one.
void tst_Pixels::longLinesAreClippedAtTheClipLimits()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QFETCH(QLine, line);
    const auto made = display::pixelLine(from, to);
    QVERIFY(made.has_value());
    QVERIFY(isWithinOnePixel(made->p1(), line.p1()));
    QVERIFY(isWithinOnePixel(made->p2(), line.p2()));
}

void tst_Pixels::lineEndInsideTheClipLimitsIsKept()
{
    const auto out = display::pixelLine({123.75, 45.25}, {1e200, -1e250});
    QVERIFY(out.has_value());
    QCOMPARE(out->p1(), QPoint(123, 45));
    const auto in = display::pixelLine({1e200, -1e250}, {123.75, 45.25});
    QVERIFY(in.has_value());
    QCOMPARE(in->p2(), QPoint(123, 45));
}

// The tolerance is one pixel, as in longLinesAreClippedAtTheClipLimits().
void tst_Pixels::reversedLineHasTheSameClippedEnds()
{
    const QPointF from(-7.3e6, -2.1e5);
    const QPointF to(5.2e8, 1.9e7);
    const auto forward = display::pixelLine(from, to);
    const auto backward = display::pixelLine(to, from);
    QVERIFY(forward.has_value() && backward.has_value());
    QVERIFY(isWithinOnePixel(forward->p1(), backward->p2()));
    QVERIFY(isWithinOnePixel(forward->p2(), backward->p1()));
}

void tst_Pixels::largestDoublesAreClippedToTheLimits()
{
    const QRect clipArea(QPoint(-clipLimit, -clipLimit), QPoint(clipLimit, clipLimit));
    for (const double x : {-huge, 0.0, huge}) {
        for (const double y : {-huge, 0.0, huge}) {
            const auto made = display::pixelLine({x, y}, {-x, -y});
            QVERIFY(made.has_value());
            QVERIFY(clipArea.contains(made->p1()) && clipArea.contains(made->p2()));
        }
    }
}

void tst_Pixels::linesOutsideTheLimitsAreDropped_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    const double out = 2.0 * clipLimit;
    QTest::newRow("right of the limits") << QPointF(out, 0) << QPointF(2 * out, 10);
    QTest::newRow("left of the limits") << QPointF(-out, 0) << QPointF(-2 * out, 10);
    QTest::newRow("below the limits, vertical") << QPointF(5, out) << QPointF(5, 2 * out);
    QTest::newRow("horizontal, outside in y") << QPointF(-out, out) << QPointF(out, out);
    QTest::newRow("vertical, outside in x") << QPointF(out, -out) << QPointF(out, out);
    // The line x + y = 3 clipLimit passes outside the corner (clipLimit, clipLimit).
    QTest::newRow("past a corner") << QPointF(3.0 * clipLimit, 0) << QPointF(0, 3.0 * clipLimit);
    QTest::newRow("one point, far outside") << QPointF(1e300, 1e300) << QPointF(1e300, 1e300);
}

void tst_Pixels::linesOutsideTheLimitsAreDropped()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QVERIFY(!display::pixelLine(from, to).has_value());
    QVERIFY(!display::pixelLine(to, from).has_value());
}

void tst_Pixels::nonFiniteLinesAreDropped_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::newRow("NaN in x") << QPointF(notANumber, 5);
    QTest::newRow("NaN in y") << QPointF(5, notANumber);
    QTest::newRow("infinite x") << QPointF(infinite, 5);
    QTest::newRow("infinite y") << QPointF(5, -infinite);
    QTest::newRow("all NaN") << QPointF(notANumber, notANumber);
}

void tst_Pixels::nonFiniteLinesAreDropped()
{
    QFETCH(QPointF, position);
    for (const QPointF& other : {QPointF(1, 2), QPointF(1e300, -1e300), position}) {
        QVERIFY(!display::pixelLine(position, other).has_value());
        QVERIFY(!display::pixelLine(other, position).has_value());
    }
}

QTEST_APPLESS_MAIN(tst_Pixels)
#include "tst_Pixels.moc"
