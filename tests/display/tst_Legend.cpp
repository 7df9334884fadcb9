// Tests of Legend: where its rows are drawn, and which pixels belong to the hit area of
// a row.
#include "display/Legend.h"

#include "display/ChCoord.h"

#include <QTest>

using display::Legend;

namespace
{

/// The coordinates of a surface with the usual margins.
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
    void rowsAreDrawnInTheirBoxes_data();
    void rowsAreDrawnInTheirBoxes();
    void rowsAreHitOnlyInTheirHitAreas_data();
    void rowsAreHitOnlyInTheirHitAreas();
    void noPixelHitsTwoRows();
    void leftmostStripOfDrawnBoxIsNotHit();
    void hitAreaExtendsBeyondDrawnBoxOnTheRight();
    void tinyPlotHasNoHitArea();
    void legendUsesThePlotsSettings();
};

void tst_Legend::rowsAreDrawnInTheirBoxes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("row");
    QTest::addColumn<QRectF>("box");
    // The plot area is columns 40 to 380 and rows 15 to 270. A row of text is
    // trunc(12.75) = 12 pixels high, the text in it trunc(10.2) = 10, the gap above the
    // text trunc(1.8) = 1. A box is 2 * 40 wide and starts 2.1 * 40 to the left of
    // column 380.
    QTest::newRow("400 by 300, first row") << QSize(400, 300) << 0 << QRectF(296, 16, 80, 10);
    QTest::newRow("400 by 300, second row") << QSize(400, 300) << 1 << QRectF(296, 28, 80, 10);
    QTest::newRow("400 by 300, eighth row") << QSize(400, 300) << 7 << QRectF(296, 100, 80, 10);
    // The margins are trunc(52.9) = 52 and trunc(26.45) = 26 columns, trunc(27.7) = 27
    // and trunc(13.85) = 13 rows. The plot area ends at column 503 and covers rows 13
    // to 250. A row of text is trunc(11.85) = 11 pixels high, the text in it 9.
    QTest::newRow("529 by 277, third row")
        << QSize(529, 277) << 2 << QRectF(503 - 2.1 * 52, 36, 104, 9);
    // The plot area is 340 of 400 pixels high: 20 rows of text of exactly 17 pixels.
    QTest::newRow("200 by 400, first row") << QSize(200, 400) << 0 << QRectF(148, 22, 40, 14);
}

void tst_Legend::rowsAreDrawnInTheirBoxes()
{
    QFETCH(QSize, size);
    QFETCH(int, row);
    QFETCH(QRectF, box);
    const Plot plot(size.width(), size.height());
    QCOMPARE(Legend(plot).box(row).normalized(), box);
}

void tst_Legend::rowsAreHitOnlyInTheirHitAreas_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QList<QRect>>("rows"); // the hit area of each row
    // The hit area of the first row is between columns 380 - 80 and 380 and between
    // rows 15 + 12 - 10 and 15 + 12; these columns and rows are excluded.
    QTest::newRow("400 by 300") << QSize(400, 300)
                                << QList<QRect>{{301, 18, 79, 9},
                                                {301, 30, 79, 9},
                                                {301, 42, 79, 9},
                                                {301, 54, 79, 9}};
    QTest::newRow("529 by 277") << QSize(529, 277)
                                << QList<QRect>{{400, 16, 103, 8}, {400, 27, 103, 8}};
    // The margins are 39 and 19 rows. A row of text is trunc(341 / 20) = 17 pixels
    // high, the text in it trunc(14.45) = 14.
    QTest::newRow("200 by 399") << QSize(200, 399) << QList<QRect>{{151, 23, 39, 13}};
}

void tst_Legend::rowsAreHitOnlyInTheirHitAreas()
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

void tst_Legend::noPixelHitsTwoRows()
{
    const Plot plot(387, 257);
    const Legend legend(plot);
    for (int y = 0; y < 257; ++y) {
        int hits = 0;
        for (int row = 0; row < 20; ++row) {
            hits += legend.isHit(row, {330, y}) ? 1 : 0;
        }
        // The rows of text are 11 pixels high and start at row 12. In each of them, the
        // upper 3 pixels are outside the hit area and the lower 8 inside.
        const bool insideRow = y >= 12 && y < 12 + 20 * 11 && (y - 12) % 11 >= 3;
        QCOMPARE(hits, insideRow ? 1 : 0);
    }
}

void tst_Legend::leftmostStripOfDrawnBoxIsNotHit()
{
    const Plot plot(400, 300);
    const Legend legend(plot);
    // The hit area starts 4 pixels to the right of the box, and its column 300 is excluded.
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
    const Plot plot(9, 9); // no margins, and rows of text are 0 pixels high
    const Legend legend(plot);
    for (int y = -2; y < 11; ++y) {
        for (int x = -2; x < 11; ++x) {
            QVERIFY(!legend.isHit(0, {x, y}));
        }
    }
}

void tst_Legend::legendUsesThePlotsSettings()
{
    Plot plot(400, 300);
    plot.textFill = 0.5;
    plot.titleDiv = 10; // a row of text is trunc(25.5) = 25 pixels high, the text 12, the gap 12
    plot.marginLeft = 0.2;
    const Legend legend(plot);
    QCOMPARE(legend.box(1).normalized(), QRectF(380 - 168, 15 + 12 + 25, 160, 12));
    QVERIFY(legend.isHit(1, {221, 15 + 50 - 11}));
    QVERIFY(!legend.isHit(1, {221, 15 + 50 - 12}));
    QVERIFY(!legend.isHit(1, {220, 15 + 50 - 11}));
}

QTEST_APPLESS_MAIN(tst_Legend)
#include "tst_Legend.moc"
