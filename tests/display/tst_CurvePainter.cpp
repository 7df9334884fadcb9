// Tests of CurvePainter, which draws a curve as line segments between whole pixels.
#include "display/CurvePainter.h"

#include "support/PlotSurface.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <optional>

using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();

using Points = QList<QPointF>;

QImage curve(const ChCoord& cc, const Points& points, const QPen& pen = {})
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(pen);
    {
        display::CurvePainter painter(&p, cc);
        for (const QPointF& point : points) {
            painter.add(point.x(), point.y());
        }
    }
    return image;
}

/// The pixel of a point on PlotSurface, calculated independently of ChCoord; nullopt
/// if a pixel coordinate is not finite. Finite pixel coordinates must fit an int.
std::optional<QPoint> pixelOf(const QPointF& point)
{
    const double x = 40.0 + 340.0 / 17.0 * (point.x() - 10.0);
    const double y = 270.0 - 255.0 / 5.0 * (point.y() + 1.0);
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return std::nullopt;
    }
    return QPoint(static_cast<int>(x), static_cast<int>(y));
}

/// The reference drawing: one drawLine() call per segment.
QImage singleLines(const Points& points, const QPen& pen = {})
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(pen);
    for (qsizetype i = 1; i < points.size(); ++i) {
        const auto from = pixelOf(points.at(i - 1));
        const auto to = pixelOf(points.at(i));
        if (from && to) {
            p.drawLine(*from, *to);
        }
    }
    return image;
}

/// Random points in and around the plot. Equal seeds yield equal points.
Points randomPoints(int count, quint32 seed)
{
    QRandomGenerator random(seed);
    Points points;
    for (int i = 0; i < count; ++i) {
        points.append({5.0 + random.bounded(27.0), -3.0 + random.bounded(9.0)});
    }
    return points;
}

bool isDark(const QImage& image, int x, int y)
{
    return image.pixelColor(x, y) == Qt::black;
}

} // namespace

class tst_CurvePainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void curveMatchesOneDrawCallPerSegment_data();
    void curveMatchesOneDrawCallPerSegment();
    void pointsAreTruncatedToPixels();
    void fewerThanTwoPointsDrawNothing();
    void twoEqualPointsDrawADot();
    void nonFinitePointDropsItsSegments_data();
    void nonFinitePointDropsItsSegments();
    void curveInAnEmptyRangeIsNotDrawn();
    void deepZoomKeepsSegmentsThatCrossTheView_data();
    void deepZoomKeepsSegmentsThatCrossTheView();
    void horizontalLineWithDistantEndsStaysHorizontal();
    void bothFlanksOfAHighPeakAreDrawn_data();
    void bothFlanksOfAHighPeakAreDrawn();
    void extremeNumbersCauseNoInvalidConversions();
};

void tst_CurvePainter::curveMatchesOneDrawCallPerSegment_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QPen>("pen");
    const QPen thin(Qt::black);
    const QPen cosmetic(Qt::blue, 0.0);
    const QPen wide(QColor(255, 0, 0), 2.0);
    const QPen wider(QColor(255, 200, 255), 3.0);
    QTest::newRow("two points") << 2 << thin;
    QTest::newRow("255 segments") << 256 << thin;
    QTest::newRow("256 segments") << 257 << thin;
    QTest::newRow("257 segments") << 258 << thin;
    QTest::newRow("512 segments") << 513 << wide;
    QTest::newRow("1499 segments") << 1500 << thin;
    QTest::newRow("long, cosmetic pen") << 700 << cosmetic;
    QTest::newRow("long, wide pen") << 700 << wide;
    QTest::newRow("long, wider pen") << 700 << wider;
    QTest::newRow("long, dashed pen") << 700 << QPen(Qt::black, 1.0, Qt::DashLine);
}

void tst_CurvePainter::curveMatchesOneDrawCallPerSegment()
{
    QFETCH(int, count);
    QFETCH(QPen, pen);
    for (const quint32 seed : {1U, 20U, 300U}) {
        const Points points = randomPoints(count, seed);
        QCOMPARE(curve(PlotSurface(), points, pen), singleLines(points, pen));
    }
}

// The points are at the pixel coordinates (140.8, 219.9) and (181.6, 219.4).
void tst_CurvePainter::pointsAreTruncatedToPixels()
{
    const QImage image = curve(PlotSurface(), {{15.04, -0.9 / 51.0}, {17.08, -0.4 / 51.0}});
    for (int x = 139; x <= 183; ++x) {
        QCOMPARE(isDark(image, x, 219), x >= 140 && x <= 181);
        QVERIFY(!isDark(image, x, 218) && !isDark(image, x, 220));
    }
}

void tst_CurvePainter::fewerThanTwoPointsDrawNothing()
{
    QCOMPARE(curve(PlotSurface(), {}), whiteSurface());
    QCOMPARE(curve(PlotSurface(), {{15, 0}}), whiteSurface());
}

void tst_CurvePainter::twoEqualPointsDrawADot()
{
    QImage expected = whiteSurface();
    expected.setPixelColor(140, 219, Qt::black);
    QCOMPARE(curve(PlotSurface(), {{15, 0}, {15, 0}}), expected);
}

void tst_CurvePainter::nonFinitePointDropsItsSegments_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::newRow("NaN in x") << QPointF(notANumber, 1);
    QTest::newRow("NaN in y") << QPointF(20, notANumber);
    QTest::newRow("infinite x") << QPointF(infinite, 1);
    QTest::newRow("negative infinite x") << QPointF(-infinite, 1);
    QTest::newRow("infinite y") << QPointF(20, infinite);
    QTest::newRow("negative infinite y") << QPointF(20, -infinite);
    QTest::newRow("pixel coordinate overflows") << QPointF(20, -huge);
}

// The point replaces the first and the last point of the curve, the points at the single
// indices 3, 100, 400 and 512, and the points at the indices 254 to 257. CurvePainter draws
// batches of 256 segments, so the curve needs more than one batch.
void tst_CurvePainter::nonFinitePointDropsItsSegments()
{
    QFETCH(QPointF, point);
    Points points = randomPoints(620, 4);
    for (const int i : {0, 3, 100, 254, 255, 256, 257, 400, 512, 619}) {
        points[i] = point;
    }
    QCOMPARE(curve(PlotSurface(), points), singleLines(points));
}

void tst_CurvePainter::curveInAnEmptyRangeIsNotDrawn()
{
    const Points points = randomPoints(10, 5);
    PlotSurface noWidth;
    noWidth.setRealX(15, 15);
    QCOMPARE(curve(noWidth, points), whiteSurface());
    PlotSurface noHeight;
    noHeight.setRealY(2, 2);
    QCOMPARE(curve(noHeight, points), whiteSurface());
}

void tst_CurvePainter::deepZoomKeepsSegmentsThatCrossTheView_data()
{
    QTest::addColumn<double>("half"); // half of the visible range
    QTest::newRow("range of hundredths") << 1e-2;
    QTest::newRow("range of millionths") << 1e-6;
    QTest::newRow("range of billionths") << 1e-9;
    QTest::newRow("range near the precision of a double") << 1e-12;
}

// The line from (-3, -3) to (4, 4) passes through (0.5, 0.5), the centre of the zoom.
// The visible ranges of x and y are equal, so the line crosses two opposite corners of the
// plot area: it rises by 255 pixels over 340 pixels, which is 0.75 per pixel column. The tolerance
// is two pixel rows, because the expected row and the ends of the drawn line are truncated to whole
// pixels.
void tst_CurvePainter::deepZoomKeepsSegmentsThatCrossTheView()
{
    QFETCH(double, half);
    PlotSurface cc;
    cc.setReal(0.5 - half, 0.5 - half, 0.5 + half, 0.5 + half);
    const QImage image = curve(cc, {{-3, -3}, {4, 4}});
    for (int x = 40; x <= 380; ++x) {
        const int row = static_cast<int>(270.0 - 0.75 * (x - 40.0));
        bool found = false;
        for (int y = 0; y < 300; ++y) {
            const bool near = std::abs(y - row) <= 2;
            found |= near && isDark(image, x, y);
            QVERIFY2(near || !isDark(image, x, y), qPrintable(QString::number(x)));
        }
        QVERIFY2(found, qPrintable(QString::number(x)));
    }
}

// The value 2 is at pixel row 270 - 51 * 3 = 117. One unit of x is 20 pixels wide, so
// the ends of the line are 2e10 pixels outside the plot.
void tst_CurvePainter::horizontalLineWithDistantEndsStaysHorizontal()
{
    const QImage image = curve(PlotSurface(), {{-1e9, 2}, {1e9, 2}});
    QImage expected = whiteSurface();
    for (int x = 0; x < 400; ++x) {
        expected.setPixelColor(x, 117, Qt::black);
    }
    QCOMPARE(image, expected);
}

void tst_CurvePainter::bothFlanksOfAHighPeakAreDrawn_data()
{
    QTest::addColumn<double>("height");
    QTest::newRow("a million") << 1e6;
    QTest::newRow("1e12") << 1e12;
    QTest::newRow("1e20") << 1e20;
    QTest::newRow("1e300") << 1e300;
}

// The curve rises from (16, 0) at pixel (160, 219) to a peak at x = 18 above the
// picture, and falls to (20, 0) at pixel (240, 219). Its flanks are so steep that they
// look vertical. The tolerance is one pixel column, because the peak is clipped and
// truncated.
void tst_CurvePainter::bothFlanksOfAHighPeakAreDrawn()
{
    QFETCH(double, height);
    const QImage image = curve(PlotSurface(), {{16, 0}, {18, height}, {20, 0}});
    for (int y = 0; y < 219; ++y) {
        QVERIFY2(isDark(image, 160, y) || isDark(image, 161, y), "rising");
        QVERIFY2(isDark(image, 240, y) || isDark(image, 239, y), "falling");
    }
}

// The picture is not checked. The sanitizers report invalid conversions and accesses.
void tst_CurvePainter::extremeNumbersCauseNoInvalidConversions()
{
    const QList<double> values{0,    1,       -1,     1e9,   -1e10,      1e20,     -1e20,
                               1e30, -1e300,  1e300,  huge,  -huge,      infinite, -infinite,
                               20,   -5e-324, 1e-310, 2.5e9, notANumber, 4};
    Points points;
    for (const double x : values) {
        for (const double y : values) {
            points.append({x, y});
            points.append({y, 2.0});
        }
    }
    PlotSurface cc;
    QVERIFY(!curve(cc, points).isNull());
    cc.setReal(0, 0, 5e-324, 5e-324);
    QVERIFY(!curve(cc, points).isNull());
    cc.setReal(-huge, -huge, huge, huge);
    QVERIFY(!curve(cc, points).isNull());
}

QTEST_MAIN(tst_CurvePainter)
#include "tst_CurvePainter.moc"
