// Tests of Legend: where the legend rows are drawn, and which pixels belong to the hit
// area of each legend row.
#include "display/Legend.h"

#include "display/ChCoord.h"

#include <QTest>

using display::Legend;

namespace
{

/// The coordinates of a surface with the default margins.
struct Plot : ChCoord {
    explicit Plot(int width, int height)
    {
        setScreen(0, height, width, 0);
        computeArea();
    }
};

} // namespace

class tst_Legend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void legendRowBoxFollowsFromPlotSizeAndRowNumber_data();
    void legendRowBoxFollowsFromPlotSizeAndRowNumber();
    void legendRowHitAreaFollowsFromPlotSizeAndRowNumber_data();
    void legendRowHitAreaFollowsFromPlotSizeAndRowNumber();
    void pixelsOfAColumnHitAtMostOneLegendRow();
    void leftEndOfDrawnBoxIsNotHit();
    void hitAreaExtendsBeyondDrawnBoxOnTheRight();
    void tinyPlotHasNoHitArea();
    void legendUsesTheLayoutSettingsOfThePlot();
};

void tst_Legend::legendRowBoxFollowsFromPlotSizeAndRowNumber_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("row");
    QTest::addColumn<QRectF>("box");
    // The margins are 40 (left), 20 (right), 30 (bottom) and 15 (top) pixels, so the
    // plot area spans x = 40 to 380 and y = 15 to 270. A legend row is a line of text,
    // trunc(255 / 20) = 12 pixels high. Its box is trunc(0.85 * 12) = 10 pixels high
    // and starts trunc(0.15 * 12) = 1 pixel below the top of the line. The box is twice
    // the left margin wide, 80 pixels, and starts 2.1 * 40 = 84 pixels to the left of
    // x = 380.
    QTest::newRow("400 by 300, first row") << QSize(400, 300) << 0 << QRectF(296, 16, 80, 10);
    QTest::newRow("400 by 300, second row") << QSize(400, 300) << 1 << QRectF(296, 28, 80, 10);
    QTest::newRow("400 by 300, eighth row") << QSize(400, 300) << 7 << QRectF(296, 100, 80, 10);
    // The margins are trunc(52.9) = 52 (left), trunc(26.45) = 26 (right),
    // trunc(27.7) = 27 (bottom) and trunc(13.85) = 13 (top) pixels. So the plot area
    // ends at x = 503 and spans y = 13 to 250. A line of text is trunc(237 / 20) = 11
    // pixels high, and its box trunc(0.85 * 11) = 9.
    QTest::newRow("529 by 277, third row")
        << QSize(529, 277) << 2 << QRectF(503 - 2.1 * 52, 36, 104, 9);
    // The plot area spans y = 20 to 360. A line of text is 340 / 20 = 17 pixels high,
    // its box trunc(0.85 * 17) = 14, and the gap above the box trunc(0.15 * 17) = 2.
    // The left margin is 20 pixels, so the box starts at x = 190 - 2.1 * 20 = 148.
    QTest::newRow("200 by 400, first row") << QSize(200, 400) << 0 << QRectF(148, 22, 40, 14);
}

void tst_Legend::legendRowBoxFollowsFromPlotSizeAndRowNumber()
{
    QFETCH(QSize, size);
    QFETCH(int, row);
    QFETCH(QRectF, box);
    const Plot plot(size.width(), size.height());
    QCOMPARE(Legend(plot).box(row).normalized(), box);
}

void tst_Legend::legendRowHitAreaFollowsFromPlotSizeAndRowNumber_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QList<QRect>>("rows"); // the hit area of each legend row
    // The sizes are explained in legendRowBoxFollowsFromPlotSizeAndRowNumber_data(). A hit
    // area ends at the right edge of the plot area, x = 380, and at the bottom of its line
    // of text, y = 15 + 12 = 27 in the first legend row. It is 80 pixels wide and 10
    // pixels high like the box, but all four edges are excluded: x = 301 to 379 and
    // y = 18 to 26.
    QTest::newRow("400 by 300") << QSize(400, 300)
                                << QList<QRect>{{301, 18, 79, 9},
                                                {301, 30, 79, 9},
                                                {301, 42, 79, 9},
                                                {301, 54, 79, 9}};
    QTest::newRow("529 by 277") << QSize(529, 277)
                                << QList<QRect>{{400, 16, 103, 8}, {400, 27, 103, 8}};
    // The bottom and top margins are trunc(39.9) = 39 and trunc(19.95) = 19 pixels, so
    // the plot area is 399 - 58 = 341 pixels high. A line of text is
    // trunc(341 / 20) = 17 pixels high, its box trunc(0.85 * 17) = 14.
    QTest::newRow("200 by 399") << QSize(200, 399) << QList<QRect>{{151, 23, 39, 13}};
}

void tst_Legend::legendRowHitAreaFollowsFromPlotSizeAndRowNumber()
{
    QFETCH(QSize, size);
    QFETCH(QList<QRect>, rows);
    const Plot plot(size.width(), size.height());
    const Legend legend(plot);
    for (int row = 0; row < rows.size(); ++row) {
        for (int y = -5; y < size.height() + 5; ++y) {
            for (int x = -5; x < size.width() + 5; ++x) {
                if (legend.isHit(row, {x, y}) != rows.at(row).contains(x, y)) {
                    QFAIL(qPrintable(QStringLiteral("%1: %2, %3").arg(row).arg(x).arg(y)));
                }
            }
        }
    }
}

void tst_Legend::pixelsOfAColumnHitAtMostOneLegendRow()
{
    const Plot plot(387, 257);
    const Legend legend(plot);
    for (int y = 0; y < 257; ++y) {
        int hits = 0;
        for (int row = 0; row < 20; ++row) {
            hits += legend.isHit(row, {330, y}) ? 1 : 0;
        }
        // The plot area spans y = 12 to 232. So the lines of text start at y = 12 and
        // are 220 / 20 = 11 pixels high. In each line, the upper 3 pixel rows are
        // outside the hit area and the lower 8 inside.
        const bool insideRow = y >= 12 && y < 12 + 20 * 11 && (y - 12) % 11 >= 3;
        QCOMPARE(hits, insideRow ? 1 : 0);
    }
}

void tst_Legend::leftEndOfDrawnBoxIsNotHit()
{
    const Plot plot(400, 300);
    const Legend legend(plot);
    // The left edge of the hit area, x = 380 - 80 = 300, is a tenth of the left margin
    // to the right of the box's left edge, x = 296. The edge is excluded from the hit
    // area.
    for (int x = 296; x <= 300; ++x) {
        QVERIFY(legend.box(0).normalized().contains(QPointF(x, 20)));
        QVERIFY(!legend.isHit(0, {x, 20}));
    }
    QVERIFY(legend.isHit(0, {301, 20}));
}

void tst_Legend::hitAreaExtendsBeyondDrawnBoxOnTheRight()
{
    const Plot plot(400, 300);
    const Legend legend(plot);
    QVERIFY(!legend.box(0).normalized().contains(QPointF(379, 20)));
    QVERIFY(legend.isHit(0, {379, 20}));
}

void tst_Legend::tinyPlotHasNoHitArea()
{
    // Margins of 0.9 and 0.45 pixels are truncated to 0, and so is the height of a line
    // of text, 9 / 20 pixels.
    const Plot plot(9, 9);
    const Legend legend(plot);
    for (int y = -2; y < 11; ++y) {
        for (int x = -2; x < 11; ++x) {
            QVERIFY(!legend.isHit(0, {x, y}));
        }
    }
}

void tst_Legend::legendUsesTheLayoutSettingsOfThePlot()
{
    Plot plot(400, 300);
    plot.textFill = 0.5;
    // A line of text is trunc(255 / 10) = 25 pixels high. Its box and the gap above the
    // box are trunc(0.5 * 25) = 12 pixels high each. With a label width of
    // 0.2 * 400 = 80 pixels, the box is 2 * 80 = 160 pixels wide and starts
    // 2.1 * 80 = 168 pixels to the left of x = 380.
    plot.titleDiv = 10;
    plot.marginLeft = 0.2;
    const Legend legend(plot);
    QCOMPARE(legend.box(1).normalized(), QRectF(380 - 168, 15 + 12 + 25, 160, 12));
    QVERIFY(legend.isHit(1, {221, 15 + 50 - 11}));
    QVERIFY(!legend.isHit(1, {221, 15 + 50 - 12}));
    QVERIFY(!legend.isHit(1, {220, 15 + 50 - 11}));
}

QTEST_APPLESS_MAIN(tst_Legend)
#include "tst_Legend.moc"
