// Cells of maps against one rectangle for each pixel of the measurement, pixel
// for pixel.

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

/// A map of few colours, so that neighbours often have the same one.
struct Map {
    int width;
    int height;
    QList<int> places;

    const QColor& at(int x, int y) const
    {
        return colors.at(static_cast<std::size_t>(places.at(y * width + x)));
    }
};

Map randomMap(std::mt19937& random, int width, int height)
{
    Map map{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        map.places.append(static_cast<int>(random() % colors.size()));
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

QImage drawn(const Map& map, const PlainMapView& view, bool grid)
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

QImage plain(const Map& map, const PlainMapView& view, bool grid)
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

/// Whether cells and reference give the same picture, with the grid and without.
bool looksPlain(const Map& map, const PlainMapView& view)
{
    for (const bool grid : {false, true}) {
        if (drawn(map, view, grid) != plain(map, view, grid)) {
            qWarning() << "map of" << map.width << "by" << map.height << "on" << view.surface
                       << "seen from" << view.left << view.bottom << "to" << view.right << view.top
                       << (grid ? "with grid" : "without grid");
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
    void wholeMapLooksLikeOneRectangleForEachPixel_data();
    void wholeMapLooksLikeOneRectangleForEachPixel();
    void anyMapLooksLikeOneRectangleForEachPixel();
    void anyViewLooksLikeOneRectangleForEachPixel();
    void edgesOnAndBesideTheSurfaceLookPlain();
    void hugeZoomLooksLikeOneRectangleForEachPixel_data();
    void hugeZoomLooksLikeOneRectangleForEachPixel();
    void mapFarAwayLeavesTheSurface();
    void distantViewIsAPixelOrNothing();
    void viewWithoutExtentHasNoCells_data();
    void viewWithoutExtentHasNoCells();
    void mapWithoutPixelsHasNoCells();

    void cellsStandWhereTheyBelong();
    void outlineRunsAlongEveryEdge();
    void outlineTakesThePen();
    void narrowCellsAreAllGrid();

    void coloursAreAskedForShownCellsAlone_data();
    void coloursAreAskedForShownCellsAlone();
    void coloursAreAskedOnceAtMost();
};

void tst_MapCells::wholeMapLooksLikeOneRectangleForEachPixel_data()
{
    QTest::addColumn<QSize>("map");
    QTest::addColumn<QSize>("surface");
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(100, 80);
    QTest::newRow("even division") << QSize(10, 8) << QSize(100, 80);
    QTest::newRow("uneven division") << QSize(7, 13) << QSize(100, 80);
    QTest::newRow("thirds") << QSize(3, 3) << QSize(100, 100);
    QTest::newRow("pixel for pixel") << QSize(100, 80) << QSize(100, 80);
    QTest::newRow("one column too many") << QSize(101, 81) << QSize(100, 80);
    QTest::newRow("one column too few") << QSize(99, 79) << QSize(100, 80);
    QTest::newRow("larger than the surface") << QSize(333, 257) << QSize(100, 80);
    QTest::newRow("wider alone") << QSize(333, 7) << QSize(100, 80);
    QTest::newRow("higher alone") << QSize(7, 333) << QSize(100, 80);
    QTest::newRow("surface of one pixel") << QSize(5, 6) << QSize(1, 1);
}

void tst_MapCells::wholeMapLooksLikeOneRectangleForEachPixel()
{
    QFETCH(QSize, map);
    QFETCH(QSize, surface);
    std::mt19937 random(11);
    const Map made = randomMap(random, map.width(), map.height());
    QVERIFY(looksPlain(made, wholeView(made, surface)));
}

void tst_MapCells::anyMapLooksLikeOneRectangleForEachPixel()
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
        QVERIFY(looksPlain(map, wholeView(map, {surfaceWidth, surfaceHeight})));
    }
}

void tst_MapCells::anyViewLooksLikeOneRectangleForEachPixel()
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
        QVERIFY(looksPlain(map, {{97, 61}, left, bottom, left + spanX, bottom + spanY}));
    }
}

// In halves of a pixel: edges right on the border of the surface, just inside
// and just outside.
void tst_MapCells::edgesOnAndBesideTheSurfaceLookPlain()
{
    std::mt19937 random(14);
    const Map map = randomMap(random, 12, 12);
    for (double left = -2.0; left <= 2.0; left += 0.05) {
        QVERIFY(looksPlain(map, {{100, 100}, left, left, left + 10.0, left + 10.0}));
        QVERIFY(looksPlain(map, {{100, 100}, left, -left, left + 9.9, 10.1 - left}));
    }
}

void tst_MapCells::hugeZoomLooksLikeOneRectangleForEachPixel_data()
{
    QTest::addColumn<double>("span");
    for (const double span : {1e-1, 1e-3, 1e-6, 1e-9, 1e-12}) {
        QTest::addRow("%g", span) << span;
    }
}

void tst_MapCells::hugeZoomLooksLikeOneRectangleForEachPixel()
{
    QFETCH(double, span);
    std::mt19937 random(15);
    const Map map = randomMap(random, 8, 8);
    const double half = span / 2;
    // Within a pixel, on an edge, on a corner, and on the corner of the map.
    for (const QPointF& at : {QPointF(3.5, 2.5), QPointF(3.0, 2.5), QPointF(3.5, 2.0),
                              QPointF(3.0, 2.0), QPointF(0.0, 0.0), QPointF(8.0, 8.0)}) {
        QVERIFY(looksPlain(map,
                           {{60, 50}, at.x() - half, at.y() - half, at.x() + half, at.y() + half}));
    }
}

void tst_MapCells::mapFarAwayLeavesTheSurface()
{
    std::mt19937 random(16);
    const Map map = randomMap(random, 5, 5);
    for (const double away : {6.0, 1e3, 1e9, 1e15, -2.0, -1e9}) {
        const PlainMapView view{{50, 40}, away, away, away + 1.0, away + 1.0};
        QCOMPARE(drawn(map, view, true), whitePicture(view.surface));
        const PlainMapView beside{{50, 40}, 0.0, away, 5.0, away + 1.0};
        QCOMPARE(drawn(map, beside, true), whitePicture(beside.surface));
    }
}

void tst_MapCells::distantViewIsAPixelOrNothing()
{
    std::mt19937 random(17);
    const Map map = randomMap(random, 30, 20);
    for (const double span : {1e3, 1e4, 1e6, 1e12}) {
        QVERIFY(looksPlain(map, {{100, 80}, -span, -span, span, span}));
        QVERIFY(looksPlain(map, {{100, 80}, 0.0, 0.0, span, span}));
    }
    const PlainMapView everything{{100, 80}, -1e300, -1e300, 1e300, 1e300};
    QCOMPARE(drawn(map, everything, false), whitePicture(everything.surface));
}

void tst_MapCells::viewWithoutExtentHasNoCells_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("at the origin") << 0.0 << 0.0;
    QTest::newRow("within a pixel") << 1.5 << 1.5;
    QTest::newRow("at the end") << 3.0 << 3.0;
    QTest::newRow("no number") << nan << 3.0;
    QTest::newRow("infinity") << 0.0 << infinity;
    QTest::newRow("from minus infinity") << -infinity << 3.0;
}

void tst_MapCells::viewWithoutExtentHasNoCells()
{
    QFETCH(double, left);
    QFETCH(double, right);
    std::mt19937 random(18);
    const Map map = randomMap(random, 3, 3);
    for (const PlainMapView& view : {PlainMapView{{50, 40}, left, 0.0, right, 3.0},
                                     PlainMapView{{50, 40}, 0.0, left, 3.0, right},
                                     PlainMapView{{50, 40}, left, left, right, right}}) {
        int asked = 0;
        QImage image = whitePicture(view.surface);
        QPainter p(&image);
        cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
            ++asked;
            return map.at(x, y);
        });
        p.end();
        QCOMPARE(asked, 0);
        QCOMPARE(image, whitePicture(view.surface));
    }
}

void tst_MapCells::mapWithoutPixelsHasNoCells()
{
    const PlainMapView view{{50, 40}, 0.0, 0.0, 3.0, 3.0};
    for (const Map& map : {Map{0, 3, {}}, Map{3, 0, {}}, Map{0, 0, {}}}) {
        QCOMPARE(drawn(map, view, false), whitePicture(view.surface));
    }
}

// 3 by 2 pixels on 10 by 5: columns start at 0, 3, 6, lines end at 5 and 2.
void tst_MapCells::cellsStandWhereTheyBelong()
{
    const Map map{3, 2, {0, 1, 2, 3, 0, 1}};
    const QImage image = drawn(map, wholeView(map, {10, 5}), false);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 10; ++x) {
            const int column = x < 3 ? 0 : (x < 6 ? 1 : 2);
            const int line = y < 2 ? 1 : 0;
            QCOMPARE(image.pixelColor(x, y), map.at(column, line));
        }
    }
}

void tst_MapCells::outlineRunsAlongEveryEdge()
{
    const Map map{3, 2, {0, 1, 2, 3, 0, 1}};
    const QImage image = drawn(map, wholeView(map, {10, 5}), true);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 10; ++x) {
            const bool onEdge = x == 0 || x == 3 || x == 6 || y == 0 || y == 2;
            QCOMPARE(image.pixelColor(x, y) == gridColor, onEdge);
        }
    }
}

void tst_MapCells::outlineTakesThePen()
{
    const Map map{2, 2, {0, 1, 2, 3}};
    const PlainMapView view{{20, 20}, -1.0, -1.0, 3.0, 3.0};
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    p.setPen(QColor(1, 2, 3));
    cellsOf(map, view).outline(&p);
    p.end();
    QImage wanted = whitePicture(view.surface);
    QPainter q(&wanted);
    q.setPen(QColor(1, 2, 3));
    plainOutline(&q, view, 2, 2);
    q.end();
    QCOMPARE(image, wanted);
    QCOMPARE(image.pixelColor(5, 15), QColor(1, 2, 3));
    QCOMPARE(image.pixelColor(15, 5), QColor(1, 2, 3));
    QCOMPARE(image.pixelColor(7, 7), QColor(Qt::white));
}

void tst_MapCells::narrowCellsAreAllGrid()
{
    std::mt19937 random(19);
    const Map map = randomMap(random, 200, 200);
    const PlainMapView view = wholeView(map, {50, 50});
    QImage grid = whitePicture(view.surface);
    grid.fill(gridColor);
    QCOMPARE(drawn(map, view, true), grid);
}

void tst_MapCells::coloursAreAskedForShownCellsAlone_data()
{
    QTest::addColumn<QRectF>("seen"); // y upward
    QTest::addColumn<QRect>("cells"); // the same
    QTest::newRow("whole map") << QRectF(0, 0, 20, 10) << QRect(0, 0, 20, 10);
    QTest::newRow("from outside") << QRectF(-20, -10, 60, 30) << QRect(0, 0, 20, 10);
    QTest::newRow("one cell") << QRectF(7.25, 3.25, 0.5, 0.5) << QRect(7, 3, 1, 1);
    QTest::newRow("four cells") << QRectF(7.5, 3.5, 1, 1) << QRect(7, 3, 2, 2);
    QTest::newRow("exactly three by two") << QRectF(4, 6, 3, 2) << QRect(4, 6, 3, 2);
    QTest::newRow("a corner") << QRectF(-1, -1, 2, 2) << QRect(0, 0, 1, 1);
    QTest::newRow("beside the map") << QRectF(21, 3, 2, 2) << QRect();
    QTest::newRow("above the map") << QRectF(3, 11, 2, 2) << QRect();
}

void tst_MapCells::coloursAreAskedForShownCellsAlone()
{
    QFETCH(QRectF, seen);
    QFETCH(QRect, cells);
    const PlainMapView view{{120, 90}, seen.left(), seen.top(), seen.right(), seen.bottom()};
    const Map map{20, 10, QList<int>(200, 0)};
    QSet<int> asked;
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
        asked.insert(y * 20 + x);
        return map.at(x, y);
    });
    QSet<int> wanted;
    for (int y = cells.top(); y < cells.top() + cells.height(); ++y) {
        for (int x = cells.left(); x < cells.left() + cells.width(); ++x) {
            wanted.insert(y * 20 + x);
        }
    }
    QCOMPARE(asked, wanted);
}

// A cell that has no pixel shows nothing either: 300 by 200 of them on 50 by 40.
void tst_MapCells::coloursAreAskedOnceAtMost()
{
    const Map map{300, 200, QList<int>(60000, 0)};
    const PlainMapView view = wholeView(map, {50, 40});
    QList<int> asked(60000, 0);
    int total = 0;
    QImage image = whitePicture(view.surface);
    QPainter p(&image);
    cellsOf(map, view).fill(&p, [&](int x, int y) -> const QColor& {
        ++asked[y * 300 + x];
        ++total;
        return map.at(x, y);
    });
    QCOMPARE(*std::max_element(asked.cbegin(), asked.cend()), 1);
    QCOMPARE(total, 50 * 40);
}

QTEST_MAIN(tst_MapCells)
#include "tst_MapCells.moc"
