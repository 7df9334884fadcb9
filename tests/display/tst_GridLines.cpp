// Tests of the grid lines: they look the same as with a plain loop over all lines, but
// the run time is bounded by the widget's size.
#include "display/GridLines.h"

#include "support/PlotSurface.h"

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <cmath>
#include <limits>

using display::GridValues;
using namespace tests;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

constexpr int width = 400;
constexpr int height = 300;

const QColor ink(0, 0, 200);

QImage grid(const ChCoord& cc, const GridValues& values, bool vertical)
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(ink);
    vertical ? display::drawVerticalGrid(&p, cc, values)
             : display::drawHorizontalGrid(&p, cc, values);
    return image;
}

/// A white picture with a line across it at each of @p pixels, which are pixel columns
/// if @p vertical is true and pixel rows otherwise.
QImage lines(const QSet<int>& pixels, bool vertical)
{
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(ink);
    for (const int at : pixels) {
        vertical ? p.drawLine(at, 0, at, height) : p.drawLine(0, at, width, at);
    }
    return image;
}

QSet<int> pixelRange(int first, int last)
{
    QSet<int> pixels;
    for (int at = first; at <= last; ++at) {
        pixels.insert(at);
    }
    return pixels;
}

/// The reference implementation: a loop over all values. It draws each line whose
/// truncated position is inside the widget. It is too slow for huge grids.
QImage plainGrid(const ChCoord& cc, const GridValues& values, bool vertical)
{
    const double slope =
        vertical ? 340.0 / (cc.realX1 - cc.realX0) : -255.0 / (cc.realY1 - cc.realY0);
    const double from = vertical ? cc.realX0 : cc.realY0;
    const double origin = vertical ? 40.0 : 270.0;
    QSet<int> pixels;
    for (int i = 0; values.first + i * values.step <= values.last; ++i) {
        const double place = slope * (values.first + i * values.step - from) + origin;
        if (place > -1.0 && place < (vertical ? width : height)) {
            pixels.insert(static_cast<int>(place));
        }
    }
    return lines(pixels, vertical);
}

/// Whether the vertical and the horizontal grid look the same as with the reference
/// implementation.
bool matchesPlainGrid(const ChCoord& cc, const GridValues& values)
{
    return grid(cc, values, true) == plainGrid(cc, values, true) &&
           grid(cc, values, false) == plainGrid(cc, values, false);
}

bool isEmpty(const ChCoord& cc, const GridValues& values)
{
    return grid(cc, values, true) == whiteSurface() && grid(cc, values, false) == whiteSurface();
}

} // namespace

class tst_GridLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreAtTheirValues();
    void linesCrossTheWholeWidget();
    void linesUseThePen();
    void gridLinesMatchTheReferenceLoop_data();
    void gridLinesMatchTheReferenceLoop();
    void randomGridsMatchTheReferenceLoop();
    void denseGridHasOneLinePerPixel();
    void millionsOfLinesFillEveryPixel();
    void positionsTruncatedToZeroShareALine();
    void zoomIntoHugeGridKeepsLinePositions();
    void gridOfOneValueHasOneLine();
    void invalidGridsAreEmpty_data();
    void invalidGridsAreEmpty();
    void onlyValidGridsOfExtremeNumbersAreDrawn();
    void valenceGridEndsWithinHalfAStepOfTheUpperValence();
};

// One unit of x is 20 pixels, with 10 at pixel column 40. One unit of y is 51 pixels,
// with -1 at pixel row 270; y values grow upward.
void tst_GridLines::linesAreAtTheirValues()
{
    const PlotSurface cc(10, -1, 27, 4);
    QCOMPARE(grid(cc, {12, 2.51, 20}, true), lines({80, 130, 180, 230}, true));
    QCOMPARE(grid(cc, {-0.5, 1.1, 3}, false), lines({244, 188, 132, 76}, false));
    // Lines are also drawn in the margins.
    QCOMPARE(grid(cc, {7, 1.5, 29}, true),
             lines({10, 40, 70, 100, 130, 160, 190, 220, 250, 280, 310, 340, 370}, true));
}

void tst_GridLines::linesCrossTheWholeWidget()
{
    const PlotSurface cc(10, -1, 27, 4);
    const QImage vertical = grid(cc, {15, 100, 16}, true);
    const QImage horizontal = grid(cc, {0, 100, 1}, false);
    const QColor line = vertical.pixelColor(140, 100);
    QVERIFY(line != Qt::white);
    for (int y = 0; y < height; ++y) {
        QCOMPARE(vertical.pixelColor(140, y), line);
    }
    for (int x = 0; x < width; ++x) {
        QCOMPARE(horizontal.pixelColor(x, 219), line);
    }
}

void tst_GridLines::linesUseThePen()
{
    const PlotSurface cc(10, -1, 27, 4);
    QImage image = whiteSurface();
    QPainter p(&image);
    p.setPen(QPen(Qt::red, 3));
    display::drawVerticalGrid(&p, cc, {15, 100, 16});
    p.setPen(Qt::green);
    display::drawHorizontalGrid(&p, cc, {0, 100, 1});
    p.end();
    for (int x = 136; x <= 144; ++x) {
        QCOMPARE(image.pixelColor(x, 50), QColor(x >= 139 && x <= 141 ? Qt::red : Qt::white));
    }
    QCOMPARE(image.pixelColor(140, 219), QColor(Qt::green));
    QCOMPARE(display::gridColor, QColor(200, 200, 255));
}

void tst_GridLines::gridLinesMatchTheReferenceLoop_data()
{
    QTest::addColumn<QRectF>("range");         // left = x0, top = y0, right = x1, bottom = y1
    QTest::addColumn<QList<double>>("values"); // first, step, last
    const auto range = [](double x0, double y0, double x1, double y1) {
        return QRectF(x0, y0, x1 - x0, y1 - y0);
    };
    using Values = QList<double>;
    QTest::newRow("tenths") << range(1.8, 1.8, 3.2, 3.2) << Values{2.0, 0.1, 3.05};
    QTest::newRow("all visible") << range(10, 10, 27, 27) << Values{12, 1.25, 25};
    QTest::newRow("beyond both ends") << range(10, 10, 27, 27) << Values{-200, 0.7, 300};
    QTest::newRow("start not visible") << range(10, 10, 27, 27) << Values{-200.5, 3.3, 15};
    QTest::newRow("end not visible") << range(10, 10, 27, 27) << Values{15, 3.3, 1500};
    QTest::newRow("all below the range") << range(10, 10, 27, 27) << Values{-50, 1, -20};
    QTest::newRow("all above the range") << range(10, 10, 27, 27) << Values{80, 1, 90};
    QTest::newRow("between two lines") << range(10, 10, 11, 11) << Values{0, 100, 500};
    QTest::newRow("reversed axes") << range(27, 27, 10, 10) << Values{-200, 0.7, 300};
    QTest::newRow("reversed axes, start visible") << range(27, 27, 10, 10) << Values{15, 0.7, 300};
    QTest::newRow("last value is on the grid") << range(0, 0, 17, 17) << Values{1, 2, 9};
    QTest::newRow("one pixel apart on x") << range(0, 0, 340, 340) << Values{-100, 1, 500};
    QTest::newRow("one pixel apart on y") << range(0, 0, 255, 255) << Values{-100, 1, 500};
    QTest::newRow("slightly more than a pixel apart")
        << range(0, 0, 337, 251) << Values{-60, 1, 500};
    QTest::newRow("dense") << range(0, 0, 1000, 1000) << Values{200, 1, 700};
    QTest::newRow("dense beyond both ends") << range(0, 0, 1000, 1000) << Values{-9000, 1, 9000};
    QTest::newRow("dense, reversed axes") << range(1000, 1000, 0, 0) << Values{200, 1, 700};
    QTest::newRow("dense, below the range") << range(0, 0, 1000, 1000) << Values{-9000, 1, -500};
    QTest::newRow("dense, above the range") << range(0, 0, 1000, 1000) << Values{1500, 1, 9000};
    QTest::newRow("dense, up to the left edge")
        << range(0, 0, 1000, 1000) << Values{-9000, 1, -118};
    QTest::newRow("dense, from the right edge") << range(0, 0, 1000, 1000) << Values{1057, 1, 1070};
}

void tst_GridLines::gridLinesMatchTheReferenceLoop()
{
    QFETCH(QRectF, range);
    QFETCH(QList<double>, values);
    const PlotSurface cc(range.left(), range.top(), range.left() + range.width(),
                         range.top() + range.height());
    QVERIFY(matchesPlainGrid(cc, {values.at(0), values.at(1), values.at(2)}));
}

void tst_GridLines::randomGridsMatchTheReferenceLoop()
{
    QRandomGenerator random(7);
    const auto number = [&random](double span) { return span * (random.generateDouble() - 0.5); };
    int nonEmpty = 0;
    for (int i = 0; i < 400; ++i) {
        const double x0 = number(20.0);
        const double y0 = number(20.0);
        const PlotSurface cc(x0, y0, x0 + number(40.0), y0 + number(40.0));
        const GridValues values{number(60.0), std::pow(10.0, number(4.0) - 0.5), number(90.0)};
        QVERIFY2(matchesPlainGrid(cc, values),
                 qPrintable(QStringLiteral("%1 %2 %3, x %4 %5, y %6 %7")
                                .arg(values.first)
                                .arg(values.step)
                                .arg(values.last)
                                .arg(cc.realX0)
                                .arg(cc.realX1)
                                .arg(cc.realY0)
                                .arg(cc.realY1)));
        nonEmpty += isEmpty(cc, values) ? 0 : 1;
    }
    QVERIFY(nonEmpty > 100);
}

// One unit is one pixel, so the values are a tenth of a pixel apart. The first
// value, 17.05, is at pixel column 57.05. The last one, 170.45, is at pixel column
// 210.45.
void tst_GridLines::denseGridHasOneLinePerPixel()
{
    const PlotSurface cc(0, 0, 340, 255);
    QCOMPARE(grid(cc, {17.05, 0.1, 170.5}, true), lines(pixelRange(57, 210), true));
}

void tst_GridLines::millionsOfLinesFillEveryPixel()
{
    const QSet<int> columns = pixelRange(0, width - 1);
    const QSet<int> rows = pixelRange(0, height - 1);
    for (const double end : {1e7, 1e12, 1e300}) {
        const PlotSurface cc(0, 0, end, end);
        QCOMPARE(grid(cc, {-end, 0.1, 2 * end}, true), lines(columns, true));
        QCOMPARE(grid(cc, {-end, 0.1, 2 * end}, false), lines(rows, false));
    }
}

// 337 units of x are 340 pixels wide, and 0 is at pixel column 40. So the value v is at
// pixel column 40 + v * 340 / 337. The values -40.25 and -39.25 are at -0.61 and 0.40;
// both are truncated to 0.
void tst_GridLines::positionsTruncatedToZeroShareALine()
{
    const PlotSurface cc(0.0, 0.0, 337.0, 1.0);
    QCOMPARE(grid(cc, {-40.25, 1.0, -39.25}, true), lines({0}, true));
}

// The range is 10 steps long, so one step is 340 / 10 = 34 pixels in x and
// 255 / 10 = 25.5 pixels in y. The range starts midway between two lines, far
// from the first of about 1e9 lines.
void tst_GridLines::zoomIntoHugeGridKeepsLinePositions()
{
    const PlotSurface cc(5e8 + 0.5, 5e8 + 0.5, 5e8 + 10.5, 5e8 + 10.5);
    const GridValues values{0.0, 1.0, 1e9};
    QSet<int> columns;
    for (int k = -1; k <= 10; ++k) {
        columns.insert(40 + 17 + 34 * k);
    }
    QCOMPARE(grid(cc, values, true), lines(columns, true));
    QSet<int> rows;
    for (int k = -1; k <= 10; ++k) {
        const double place = 270.0 - 12.75 - 25.5 * k;
        if (place > -1.0) {
            rows.insert(static_cast<int>(place));
        }
    }
    QCOMPARE(grid(cc, values, false), lines(rows, false));
}

void tst_GridLines::gridOfOneValueHasOneLine()
{
    const PlotSurface cc(10, -1, 27, 4);
    QCOMPARE(grid(cc, {15, 3, 15}, true), lines({140}, true));
    QCOMPARE(grid(cc, {15, 3, 17.9}, true), lines({140}, true));
    QCOMPARE(grid(cc, {15, 1e300, 16}, true), lines({140}, true));
    QCOMPARE(grid(cc, {0, 3, 0}, false), lines({219}, false));
}

void tst_GridLines::invalidGridsAreEmpty_data()
{
    QTest::addColumn<QList<double>>("values"); // first, step, last
    using Values = QList<double>;
    QTest::newRow("last below the first") << Values{20, 1, 19.999};
    QTest::newRow("last far below the first") << Values{1e300, 1, -1e300};
    QTest::newRow("last below the first by much less than a step") << Values{smallest, 20, 0};
    QTest::newRow("zero step") << Values{12, 0, 20};
    QTest::newRow("negative step") << Values{12, -1, 20};
    QTest::newRow("negative step, last below the first") << Values{20, -1, 12};
    QTest::newRow("NaN first") << Values{notANumber, 1, 20};
    QTest::newRow("NaN step") << Values{12, notANumber, 20};
    QTest::newRow("NaN last") << Values{12, 1, notANumber};
    QTest::newRow("infinite first") << Values{-infinite, 1, 20};
    QTest::newRow("infinite step") << Values{12, infinite, 20};
    QTest::newRow("infinite last") << Values{12, 1, infinite};
    QTest::newRow("all infinite") << Values{-infinite, infinite, infinite};
}

void tst_GridLines::invalidGridsAreEmpty()
{
    QFETCH(QList<double>, values);
    const GridValues grid{values.at(0), values.at(1), values.at(2)};
    QVERIFY(isEmpty(PlotSurface(10, 10, 27, 27), grid));
    QVERIFY(isEmpty(PlotSurface(27, 27, 10, 10), grid));
}

// Every call must return quickly. Grids with a non-finite number or a step of 0 or less
// must draw nothing; of the other grids, at least one must draw something.
void tst_GridLines::onlyValidGridsOfExtremeNumbersAreDrawn()
{
    const QList<double> numbers{0,    0.1,      -1,       1e17,      1e300,     -1e300,
                                huge, smallest, infinite, -infinite, notANumber};
    QImage withValidGrids = whiteSurface();
    QImage withInvalidGrids = whiteSurface(); // must stay white
    for (const double first : numbers) {
        for (const double step : numbers) {
            for (const double last : numbers) {
                const bool isGrid =
                    std::isfinite(first) && step > 0.0 && step < infinite && std::isfinite(last);
                QPainter p(isGrid ? &withValidGrids : &withInvalidGrids);
                for (const auto& [from, to] : {std::pair{0.0, 10.0}, std::pair{-huge, huge},
                                               std::pair{0.0, smallest}, std::pair{2e17, 1e17}}) {
                    const PlotSurface cc(from, from, to, to);
                    display::drawVerticalGrid(&p, cc, {first, step, last});
                    display::drawHorizontalGrid(&p, cc, {first, step, last});
                }
            }
        }
    }
    QVERIFY(withValidGrids != whiteSurface());
    QCOMPARE(withInvalidGrids, whiteSurface());
}

void tst_GridLines::valenceGridEndsWithinHalfAStepOfTheUpperValence()
{
    const GridValues values = display::valenceGrid(2.0, 3.0);
    QCOMPARE(values.first, 2.0);
    QCOMPARE(values.step, 0.1);
    QCOMPARE(values.last, 3.05);
    // The lines are 0.1 apart and end at most half a step, 0.05, above the upper
    // valence. The grid from 2 to 3 has eleven lines. With the upper valence 2.36 the
    // line at 2.4 is drawn, so there are five lines; with 2.34 there are four.
    const PlotSurface cc(1.9, 0, 3.6, 1); // one unit is 340 / 1.7 = 200 pixels wide
    const auto linesOf = [&cc](double upper) {
        int count = 0;
        const QImage image = grid(cc, display::valenceGrid(2.0, upper), true);
        for (int x = 0; x < width; ++x) {
            count += image.pixelColor(x, 9) == Qt::white ? 0 : 1;
        }
        return count;
    };
    QCOMPARE(linesOf(3.0), 11);
    QCOMPARE(linesOf(2.36), 5);
    QCOMPARE(linesOf(2.34), 4);
    QCOMPARE(linesOf(1.96), 1);
    QCOMPARE(linesOf(1.94), 0);
}

QTEST_MAIN(tst_GridLines)
#include "tst_GridLines.moc"
