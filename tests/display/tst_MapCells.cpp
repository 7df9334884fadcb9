// Tests of MapCells, which draws the same picture as one rectangle per map pixel.

#include "display/ChCoord.h"
#include "display/MapCells.h"
#include "support/PictureTools.h"
#include "support/PlainMapCells.h"

#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QSet>
#include <QTest>

#include <array>
#include <limits>
#include <random>

using namespace tests;

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
const QColor gridColor(200, 200, 200);

const std::array<QColor, 4> colors{QColor(255, 0, 0), QColor(0, 160, 0), QColor(0, 0, 255),
                                   QColor(0, 0, 0)};

/// A map of four colours, so that neighbouring cells often have the same colour.
struct Map {
    int width;
    int height;
    QList<int> colorIndices;

    const QColor& at(int x, int y) const
    {
        return colors.at(static_cast<std::size_t>(colorIndices.at(y * width + x)));
    }
};

Map randomMap(std::mt19937& random, int width, int height)
{
    Map map{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        map.colorIndices.append(static_cast<int>(random() % colors.size()));
    }
    return map;
}

display::MapCells cellsOf(const Map& map, const PlainMapView& view)
{
    ChCoord cc;
    cc.setScreen(0.0, view.surface.height(), view.surface.width(), 0.0);
    cc.setReal(view.left, view.bottom, view.right, view.top);
    return {cc, map.width, map.height};
}

QImage drawnMap(const Map& map, const PlainMapView& view, bool grid)
{
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    const display::MapCells cells = cellsOf(map, view);
    cells.fill(&p, [&map](int x, int y) -> const QColor& { return map.at(x, y); });
    if (grid) {
        p.setPen(gridColor);
        cells.outline(&p);
    }
    return image;
}

QImage referenceMap(const Map& map, const PlainMapView& view, bool grid)
{
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    plainFill(&p, view, map.width, map.height, [&map](int x, int y) { return map.at(x, y); });
    if (grid) {
        p.setPen(gridColor);
        plainOutline(&p, view, map.width, map.height);
    }
    return image;
}

/// Whether MapCells draws the same picture as the reference drawing, with and without
/// the grid.
bool matchesReference(const Map& map, const PlainMapView& view)
{
    for (const bool grid : {false, true}) {
        if (drawnMap(map, view, grid) != referenceMap(map, view, grid)) {
            qWarning() << "map of" << map.width << "by" << map.height << "on" << view.surface
                       << "with the view from" << view.left << view.bottom << "to" << view.right
                       << view.top << (grid ? "with grid" : "without grid");
            return false;
        }
    }
    return true;
}

PlainMapView wholeView(const Map& map, const QSize& surface)
{
    return {surface, 0.0, 0.0, double(map.width), double(map.height)};
}

} // namespace

class tst_MapCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeMapMatchesReference_data();
    void wholeMapMatchesReference();
    void randomMapsMatchReference();
    void randomViewsMatchReference();
    void mapEdgesAtTheSurfaceBorderMatchReference();
    void mapZoomedFarInMatchesReference_data();
    void mapZoomedFarInMatchesReference();
    void mapOutsideTheViewDrawsNothing();
    void mapZoomedFarOutMatchesReference();
    void emptyOrNonFiniteViewHasNoCells_data();
    void emptyOrNonFiniteViewHasNoCells();
    void mapWithoutPixelsDrawsNothing();

    void cellEdgesAreTruncatedToWholePixels();
    void outlineIsDrawnAlongEveryCellEdge();
    void outlineIsDrawnWithThePenOfThePainter();
    void cellsSmallerThanAPixelShowOnlyTheGrid();

    void coloursAreRequestedOnlyForVisibleCells_data();
    void coloursAreRequestedOnlyForVisibleCells();
    void coloursAreRequestedAtMostOncePerCell();
};

void tst_MapCells::wholeMapMatchesReference_data()
{
    QTest::addColumn<QSize>("map");
    QTest::addColumn<QSize>("surface");
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(100, 80);
    QTest::newRow("cells of 10 by 10 screen pixels") << QSize(10, 8) << QSize(100, 80);
    QTest::newRow("cells of fractional width and height") << QSize(7, 13) << QSize(100, 80);
    QTest::newRow("three by three cells on 100 by 100 pixels") << QSize(3, 3) << QSize(100, 100);
    QTest::newRow("one screen pixel per cell") << QSize(100, 80) << QSize(100, 80);
    QTest::newRow("one cell more than screen pixels per side") << QSize(101, 81) << QSize(100, 80);
    QTest::newRow("one cell fewer than screen pixels per side") << QSize(99, 79) << QSize(100, 80);
    QTest::newRow("larger than the surface") << QSize(333, 257) << QSize(100, 80);
    QTest::newRow("only wider than the surface") << QSize(333, 7) << QSize(100, 80);
    QTest::newRow("only higher than the surface") << QSize(7, 333) << QSize(100, 80);
    QTest::newRow("surface of one pixel") << QSize(5, 6) << QSize(1, 1);
}

void tst_MapCells::wholeMapMatchesReference()
{
    QFETCH(QSize, map);
    QFETCH(QSize, surface);
    std::mt19937 random(11);
    const Map made = randomMap(random, map.width(), map.height());
    QVERIFY(matchesReference(made, wholeView(made, surface)));
}

void tst_MapCells::randomMapsMatchReference()
{
    std::mt19937 random(12);
    std::uniform_int_distribution<int> side(1, 60);
    std::uniform_int_distribution<int> pixels(1, 150);
    for (int i = 0; i < 100; ++i) {
        const int width = side(random);
        const int height = side(random);
        const Map map = randomMap(random, width, height);
        const int surfaceWidth = pixels(random);
        const int surfaceHeight = pixels(random);
        QVERIFY(matchesReference(map, wholeView(map, {surfaceWidth, surfaceHeight})));
    }
}

void tst_MapCells::randomViewsMatchReference()
{
    std::mt19937 random(13);
    std::uniform_int_distribution<int> side(1, 40);
    std::uniform_real_distribution<double> part(-0.5, 1.5);
    std::uniform_real_distribution<double> scale(-4.0, 1.0);
    for (int i = 0; i < 200; ++i) {
        const int width = side(random);
        const int height = side(random);
        const Map map = randomMap(random, width, height);
        const double left = width * part(random);
        const double bottom = height * part(random);
        const double spanX = width * std::pow(2.0, scale(random));
        const double spanY = height * std::pow(2.0, scale(random));
        QVERIFY(matchesReference(map, {{97, 61}, left, bottom, left + spanX, bottom + spanY}));
    }
}

// The view shows about 10 cells on 100 pixels and moves in steps of 0.05 cells, which is
// about half a pixel. So the edges of the map are on the border of the surface, just
// inside it and just outside it.
void tst_MapCells::mapEdgesAtTheSurfaceBorderMatchReference()
{
    std::mt19937 random(14);
    const Map map = randomMap(random, 12, 12);
    for (double left = -2.0; left <= 2.0; left += 0.05) {
        QVERIFY(matchesReference(map, {{100, 100}, left, left, left + 10.0, left + 10.0}));
        QVERIFY(matchesReference(map, {{100, 100}, left, -left, left + 9.9, 10.1 - left}));
    }
}

void tst_MapCells::mapZoomedFarInMatchesReference_data()
{
    QTest::addColumn<double>("span");
    for (const double span : {1e-1, 1e-3, 1e-6, 1e-9, 1e-12}) {
        QTest::addRow("%g cells visible", span) << span;
    }
}

void tst_MapCells::mapZoomedFarInMatchesReference()
{
    QFETCH(double, span);
    std::mt19937 random(15);
    const Map map = randomMap(random, 8, 8);
    const double half = span / 2;
    // The zoom is centred inside a cell, on edges, on a corner of a cell, and on two
    // corners of the map.
    for (const QPointF& at : {QPointF(3.5, 2.5), QPointF(3.0, 2.5), QPointF(3.5, 2.0),
                              QPointF(3.0, 2.0), QPointF(0.0, 0.0), QPointF(8.0, 8.0)}) {
        QVERIFY(matchesReference(
            map, {{60, 50}, at.x() - half, at.y() - half, at.x() + half, at.y() + half}));
    }
}

void tst_MapCells::mapOutsideTheViewDrawsNothing()
{
    std::mt19937 random(16);
    const Map map = randomMap(random, 5, 5);
    for (const double distance : {6.0, 1e3, 1e9, 1e15, -2.0, -1e9}) {
        const PlainMapView view{{50, 40}, distance, distance, distance + 1.0, distance + 1.0};
        QCOMPARE(drawnMap(map, view, true), whitePicture(view.surface));
        const PlainMapView beside{{50, 40}, 0.0, distance, 5.0, distance + 1.0};
        QCOMPARE(drawnMap(map, beside, true), whitePicture(beside.surface));
    }
}

void tst_MapCells::mapZoomedFarOutMatchesReference()
{
    std::mt19937 random(17);
    const Map map = randomMap(random, 30, 20);
    for (const double span : {1e3, 1e4, 1e6, 1e12}) {
        QVERIFY(matchesReference(map, {{100, 80}, -span, -span, span, span}));
        QVERIFY(matchesReference(map, {{100, 80}, 0.0, 0.0, span, span}));
    }
    const PlainMapView everything{{100, 80}, -1e300, -1e300, 1e300, 1e300};
    QCOMPARE(drawnMap(map, everything, false), whitePicture(everything.surface));
}

void tst_MapCells::emptyOrNonFiniteViewHasNoCells_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("at the origin") << 0.0 << 0.0;
    QTest::newRow("inside a cell") << 1.5 << 1.5;
    QTest::newRow("at the end of the map") << 3.0 << 3.0;
    QTest::newRow("NaN") << nan << 3.0;
    QTest::newRow("infinity") << 0.0 << infinity;
    QTest::newRow("from minus infinity") << -infinity << 3.0;
}

void tst_MapCells::emptyOrNonFiniteViewHasNoCells()
{
    QFETCH(double, left);
    QFETCH(double, right);
    std::mt19937 random(18);
    const Map map = randomMap(random, 3, 3);
    for (const PlainMapView& view : {PlainMapView{{50, 40}, left, 0.0, right, 3.0},
                                     PlainMapView{{50, 40}, 0.0, left, 3.0, right},
                                     PlainMapView{{50, 40}, left, left, right, right}}) {
        int requested = 0;
        QImage image = whitePicture(view.surface);
        QPainter p(&image);
        cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
            ++requested;
            return map.at(x, y);
        });
        p.end();
        QCOMPARE(requested, 0);
        QCOMPARE(image, whitePicture(view.surface));
    }
}

void tst_MapCells::mapWithoutPixelsDrawsNothing()
{
    const PlainMapView view{{50, 40}, 0.0, 0.0, 3.0, 3.0};
    for (const Map& map : {Map{0, 3, {}}, Map{3, 0, {}}, Map{0, 0, {}}}) {
        QCOMPARE(drawnMap(map, view, false), whitePicture(view.surface));
    }
}

// 3 by 2 cells on 10 by 5 pixels: a cell is 10 / 3 pixels wide and 2.5 pixels high, and
// its edges are truncated to whole pixels. So the cells start at the pixel columns 0, 3
// and 6. The upper cells cover the pixel rows 0 and 1, the lower cells the rows 2 to 4.
void tst_MapCells::cellEdgesAreTruncatedToWholePixels()
{
    const Map map{3, 2, {0, 1, 2, 3, 0, 1}};
    const QImage image = drawnMap(map, wholeView(map, {10, 5}), false);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 10; ++x) {
            const int column = x < 3 ? 0 : (x < 6 ? 1 : 2);
            const int line = y < 2 ? 1 : 0;
            QCOMPARE(image.pixelColor(x, y), map.at(column, line));
        }
    }
}

void tst_MapCells::outlineIsDrawnAlongEveryCellEdge()
{
    const Map map{3, 2, {0, 1, 2, 3, 0, 1}};
    const QImage image = drawnMap(map, wholeView(map, {10, 5}), true);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 10; ++x) {
            const bool onEdge = x == 0 || x == 3 || x == 6 || y == 0 || y == 2;
            QCOMPARE(image.pixelColor(x, y) == gridColor, onEdge);
        }
    }
}

void tst_MapCells::outlineIsDrawnWithThePenOfThePainter()
{
    const Map map{2, 2, {0, 1, 2, 3}};
    const PlainMapView view{{20, 20}, -1.0, -1.0, 3.0, 3.0};
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    p.setPen(QColor(1, 2, 3));
    cellsOf(map, view).outline(&p);
    p.end();
    QImage expected = whitePicture(view.surface);
    QPainter q(&expected);
    q.setPen(QColor(1, 2, 3));
    plainOutline(&q, view, 2, 2);
    q.end();
    QCOMPARE(image, expected);
    QCOMPARE(image.pixelColor(5, 15), QColor(1, 2, 3));
    QCOMPARE(image.pixelColor(15, 5), QColor(1, 2, 3));
    QCOMPARE(image.pixelColor(7, 7), QColor(Qt::white));
}

void tst_MapCells::cellsSmallerThanAPixelShowOnlyTheGrid()
{
    std::mt19937 random(19);
    const Map map = randomMap(random, 200, 200);
    const PlainMapView view = wholeView(map, {50, 50});
    QImage grid = whitePicture(view.surface);
    grid.fill(gridColor);
    QCOMPARE(drawnMap(map, view, true), grid);
}

void tst_MapCells::coloursAreRequestedOnlyForVisibleCells_data()
{
    QTest::addColumn<QRectF>("visibleArea"); // left, bottom, width and height in data values
    QTest::addColumn<QRect>("cells");        // x, y, width and height of the visible cells
    QTest::newRow("whole map") << QRectF(0, 0, 20, 10) << QRect(0, 0, 20, 10);
    QTest::newRow("map and surroundings") << QRectF(-20, -10, 60, 30) << QRect(0, 0, 20, 10);
    QTest::newRow("one cell") << QRectF(7.25, 3.25, 0.5, 0.5) << QRect(7, 3, 1, 1);
    QTest::newRow("four cells") << QRectF(7.5, 3.5, 1, 1) << QRect(7, 3, 2, 2);
    QTest::newRow("exactly three by two cells") << QRectF(4, 6, 3, 2) << QRect(4, 6, 3, 2);
    QTest::newRow("corner of the map") << QRectF(-1, -1, 2, 2) << QRect(0, 0, 1, 1);
    QTest::newRow("right of the map") << QRectF(21, 3, 2, 2) << QRect();
    QTest::newRow("above the map") << QRectF(3, 11, 2, 2) << QRect();
}

void tst_MapCells::coloursAreRequestedOnlyForVisibleCells()
{
    QFETCH(QRectF, visibleArea);
    QFETCH(QRect, cells);
    const PlainMapView view{{120, 90},
                            visibleArea.left(),
                            visibleArea.top(),
                            visibleArea.right(),
                            visibleArea.bottom()};
    const Map map{20, 10, QList<int>(200, 0)};
    QSet<int> requested;
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
        requested.insert(y * 20 + x);
        return map.at(x, y);
    });
    QSet<int> expected;
    for (int y = cells.top(); y < cells.top() + cells.height(); ++y) {
        for (int x = cells.left(); x < cells.left() + cells.width(); ++x) {
            expected.insert(y * 20 + x);
        }
    }
    QCOMPARE(requested, expected);
}

// 300 by 200 cells on 50 by 40 pixels: most cells cover no pixel, so their colours need
// not be requested.
void tst_MapCells::coloursAreRequestedAtMostOncePerCell()
{
    const Map map{300, 200, QList<int>(60000, 0)};
    const PlainMapView view = wholeView(map, {50, 40});
    QList<int> requested(60000, 0);
    int total = 0;
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
        ++requested[y * 300 + x];
        ++total;
        return map.at(x, y);
    });
    QCOMPARE(*std::max_element(requested.cbegin(), requested.cend()), 1);
    QCOMPARE(total, 50 * 40);
}

QTEST_MAIN(tst_MapCells)
#include "tst_MapCells.moc"
