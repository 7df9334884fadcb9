// Tests positions in a plot: coordinate conversions with extreme ranges, the hit test of
// the legend, the clipping of lines, sets of pixels, grid lines, and the marks of many
// points.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/SameDouble.h"

#include "display/ChCoord.h"
#include "display/GatheredMarks.h"
#include "display/GridLines.h"
#include "display/LayeredMarks.h"
#include "display/Legend.h"
#include "display/MarkPlaces.h"
#include "display/PixelSet.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace
{

using tests::sameDouble;

constexpr int maxPoints = 24;

struct Axis {
    double real0;
    double real1;
};

Axis nextAxis(fuzz::ByteReader& in)
{
    if (in.number(0, 1) == 0) {
        return {0.0, 1.0 * in.number(1, 40)};
    }
    return {in.anyDouble(), in.anyDouble()};
}

void setUp(ChCoord& cc, fuzz::ByteReader& in, const QSize& surface)
{
    cc.setScreen(0.0, surface.height(), surface.width(), 0.0);
    cc.computeArea();
    const Axis x = nextAxis(in);
    const Axis y = nextAxis(in);
    cc.setReal(x.real0, y.real0, x.real1, y.real1);
}

QSize nextSurface(fuzz::ByteReader& in)
{
    return {in.number(0, 70), in.number(0, 40)};
}

int plainTruncated(double v)
{
    const double whole = std::trunc(v);
    return whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()
               ? static_cast<int>(whole)
               : std::numeric_limits<int>::min();
}

void checkTick(const ChCoord& cc, double base, double minPixels)
{
    const double step = cc.tickStep(base, minPixels);
    FUZZ_REQUIRE(sameDouble(step, cc.tickStepY(base, minPixels)));
    const double scale = (cc.areaX1 - cc.areaX0) / (cc.realX1 - cc.realX0);
    double m = 1.0;
    for (int i = 0; i < 24; ++i) {
        const double candidate = (i % 3 == 0 ? 1.0 : i % 3 == 1 ? 2.0 : 5.0) * (base * m);
        if (candidate * scale > minPixels) {
            FUZZ_REQUIRE(sameDouble(step, candidate));
            return;
        }
        m *= i % 3 == 2 ? 10.0 : 1.0;
    }
    FUZZ_REQUIRE(sameDouble(step, base * 1e8));
}

void checkClamped(double clamped, double unclamped, double end0, double end1)
{
    const double low = std::min(end0, end1);
    const double high = std::max(end0, end1);
    if (std::isnan(unclamped) || std::isnan(end0) || std::isnan(end1)) {
        return;
    }
    FUZZ_REQUIRE(clamped == std::clamp(unclamped, low, high));
}

void tryConversions(fuzz::ByteReader& in)
{
    ChCoord cc;
    const bool isSurface = in.number(0, 3) != 0;
    if (!isSurface) {
        cc.setScreen(in.anyDouble(), in.anyDouble(), in.anyDouble(), in.anyDouble());
        cc.computeArea();
        cc.setRealX(in.anyDouble(), in.anyDouble());
        cc.setRealY(in.anyDouble(), in.anyDouble());
    } else {
        setUp(cc, in, nextSurface(in));
    }
    const double v = in.anyDouble();
    const double p = in.anyDouble();
    const double scaleX = (cc.areaX1 - cc.areaX0) / (cc.realX1 - cc.realX0);
    const double scaleY = (cc.areaY1 - cc.areaY0) / (cc.realY1 - cc.realY0);
    FUZZ_REQUIRE(sameDouble(cc.r2sX(v), scaleX * (v - cc.realX0) + cc.areaX0));
    FUZZ_REQUIRE(sameDouble(cc.r2sY(v), scaleY * (v - cc.realY0) + cc.areaY0));
    FUZZ_REQUIRE(sameDouble(cc.r2sdX(v), scaleX * v) && sameDouble(cc.r2sdY(v), scaleY * v));
    const double perPixelX = (cc.realX1 - cc.realX0) / (cc.areaX1 - cc.areaX0);
    const double perPixelY = (cc.realY1 - cc.realY0) / (cc.areaY1 - cc.areaY0);
    FUZZ_REQUIRE(sameDouble(cc.s2rX(p), perPixelX * (p - cc.areaX0) + cc.realX0));
    FUZZ_REQUIRE(sameDouble(cc.s2rY(p), perPixelY * (p - cc.areaY0) + cc.realY0));
    FUZZ_REQUIRE(sameDouble(cc.s2rdX(p), perPixelX * p) && sameDouble(cc.s2rdY(p), perPixelY * p));
    checkClamped(cc.s2rClampX(p), cc.s2rX(p), cc.realX0, cc.realX1);
    checkClamped(cc.s2rClampY(p), cc.s2rY(p), cc.realY0, cc.realY1);
    FUZZ_REQUIRE(cc.textRow() == plainTruncated((cc.areaY1 - cc.areaY0) / cc.titleDiv));
    FUZZ_REQUIRE(cc.labelWidth() == plainTruncated((cc.scrX1 - cc.scrX0) * cc.marginLeft));
    checkTick(cc, in.anyDouble(), in.anyDouble());
    if (!isSurface) {
        return; // marks need the coordinate transform of a widget
    }
    const display::MarkPlaces places(cc);
    if (const auto place = places.at(v, p)) {
        FUZZ_REQUIRE(place->x() == plainTruncated(cc.r2sX(v)));
        FUZZ_REQUIRE(place->y() == plainTruncated(cc.r2sY(p)));
        FUZZ_REQUIRE(places.area().contains(*place));
    }
}

void tryLegend(fuzz::ByteReader& in)
{
    ChCoord cc;
    setUp(cc, in, {in.number(0, 2000), in.number(0, 2000)});
    const display::Legend legend(cc);
    const int row = in.number(0, 40);
    const QRectF box = legend.box(row);
    FUZZ_REQUIRE(box.width() >= 0.0 && box.height() >= 0.0);
    const QPoint place(in.number(-10, 2010), in.number(-10, 2010));
    if (legend.isHit(row, place)) {
        // The hit area is as wide as the text rectangle, but is shifted to the right by a
        // tenth of the left margin, so it ends at the right edge of the plot area.
        FUZZ_REQUIRE(place.x() > box.left() && place.x() < cc.areaX1);
        FUZZ_REQUIRE(!legend.isHit(row + 1, place));
    }
}

double nextPlace(fuzz::ByteReader& in)
{
    switch (in.number(0, 2)) {
    case 0:
        return in.anyDouble();
    case 1:
        return in.number(-3'000'000, 3'000'000) / 2.0;
    default:
        return in.doubleIn(-1e12, 1e12);
    }
}

/// The distance between @p pixel and the infinite line through @p from and @p to, in
/// pixels.
long double distance(const QPointF& from, const QPointF& to, const QPoint& pixel)
{
    const long double dx = static_cast<long double>(to.x()) - from.x();
    const long double dy = static_cast<long double>(to.y()) - from.y();
    const long double cross = dx * (pixel.y() - static_cast<long double>(from.y())) -
                              dy * (pixel.x() - static_cast<long double>(from.x()));
    return std::fabs(cross) / std::hypot(dx, dy);
}

void tryLines(fuzz::ByteReader& in)
{
    constexpr int reach = 1 << 20;
    const QPointF from(nextPlace(in), nextPlace(in));
    const QPointF to(nextPlace(in), nextPlace(in));
    for (const double v : {from.x(), from.y(), to.x(), to.y()}) {
        FUZZ_REQUIRE(display::truncated(v) == plainTruncated(v));
        const double up = std::abs(v) + 0.5;
        FUZZ_REQUIRE(display::nearestPixel({v, 0.0}).x() == plainTruncated(std::copysign(up, v)));
    }
    const auto isNear = [](const QPointF& p) {
        return std::abs(p.x()) <= reach && std::abs(p.y()) <= reach;
    };
    const auto isFinite = [](const QPointF& p) {
        return std::isfinite(p.x()) && std::isfinite(p.y());
    };
    const auto isBelowTrillion = [](const QPointF& p) {
        return std::abs(p.x()) <= 1e12 && std::abs(p.y()) <= 1e12;
    };
    const auto line = display::pixelLine(from, to);
    FUZZ_REQUIRE(!line || (isNear(line->p1()) && isNear(line->p2())));
    FUZZ_REQUIRE(!line || (isFinite(from) && isFinite(to)));
    FUZZ_REQUIRE(line || !(isNear(from) || isNear(to)) || !isFinite(from) || !isFinite(to));
    for (const auto& [end, pixel] : {std::pair(from, line.value_or(QLine()).p1()),
                                     std::pair(to, line.value_or(QLine()).p2())}) {
        if (line && isNear(end)) {
            FUZZ_REQUIRE(pixel == QPoint(plainTruncated(end.x()), plainTruncated(end.y())));
        } else if (line && isBelowTrillion(from) && isBelowTrillion(to) && from != to) {
            FUZZ_REQUIRE(distance(from, to, pixel) < 2.0L);
        }
    }
}

using Places = std::set<std::pair<int, int>>; // (pixel row, pixel column)

Places pixelsOf(const display::PixelSet& set)
{
    Places places;
    int lastY = std::numeric_limits<int>::min();
    int lastEnd = 0;
    set.forEachRun([&](int x, int y, int length) {
        FUZZ_REQUIRE(length > 0 && (y > lastY || (y == lastY && x > lastEnd)));
        lastY = y;
        lastEnd = x + length;
        for (int i = 0; i < length; ++i) {
            places.emplace(y, x + i);
        }
    });
    return places;
}

std::uint64_t nextBits(fuzz::ByteReader& in, int most)
{
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) {
        bits = bits << 8 | in.byte();
    }
    return most < 64 ? bits & ((std::uint64_t{1} << most) - 1) : bits;
}

void trySets(fuzz::ByteReader& in)
{
    const QRect area(in.number(-70, 70), in.number(-9, 9), in.number(1, 140), in.number(1, 6));
    display::PixelSet set(area);
    Places plain;
    for (int i = in.number(0, maxPoints); i > 0; --i) {
        const QPoint at(in.number(area.left(), area.right()), in.number(area.top(), area.bottom()));
        if (in.number(0, 1) == 0) {
            FUZZ_REQUIRE(set.insert(at) == plain.emplace(at.y(), at.x()).second);
            continue;
        }
        const std::uint64_t bits = nextBits(in, area.right() - at.x() + 1);
        std::uint64_t wanted = 0;
        for (int k = 0; k < 64; ++k) {
            if ((bits >> k & 1) != 0 && plain.emplace(at.y(), at.x() + k).second) {
                wanted |= std::uint64_t{1} << k;
            }
        }
        FUZZ_REQUIRE(set.insertRow(at, bits) == wanted);
    }
    FUZZ_REQUIRE(pixelsOf(set) == plain);

    std::vector<std::uint64_t> stamp(static_cast<std::size_t>(2 * in.number(0, 2) + 1));
    const int size = static_cast<int>(stamp.size());
    for (std::uint64_t& row : stamp) {
        row = nextBits(in, size);
    }
    Places dilated;
    for (const auto& [y, x] : plain) {
        for (int row = 0; row < size; ++row) {
            for (int k = 0; k < size; ++k) {
                if ((stamp[static_cast<std::size_t>(row)] >> k & 1) != 0) {
                    dilated.emplace(y + row - size / 2, x + k - size / 2);
                }
            }
        }
    }
    FUZZ_REQUIRE(pixelsOf(set.dilated(stamp)) == dilated);
}

QImage whiteImage(const QSize& size)
{
    QImage image(size.expandedTo({1, 1}), QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

/// Reference implementation of a grid: draws each line separately.
template <class ToPixel, class DrawAt>
void plainGrid(const display::GridValues& values, int size, ToPixel toPixel, DrawAt drawAt)
{
    const double steps = std::floor((values.last - values.first) / values.step);
    for (double k = 0.0; k <= steps && !(values.last < values.first); ++k) {
        const double place = toPixel(values.first + values.step * k);
        if (place > -1.0 && place < size) {
            drawAt(static_cast<int>(place));
        }
    }
}

void tryGrid(fuzz::ByteReader& in)
{
    const QSize surface = nextSurface(in);
    ChCoord cc;
    setUp(cc, in, surface);
    const display::GridValues values =
        in.number(0, 1) == 0 ? display::GridValues{in.anyDouble(), in.anyDouble(), in.anyDouble()}
                             : display::GridValues{in.number(-99, 99) / 8.0, in.number(1, 99) / 8.0,
                                                   in.number(-99, 99) / 8.0};
    QImage drawn = whiteImage(surface);
    {
        QPainter p(&drawn);
        display::drawVerticalGrid(&p, cc, values);
        display::drawHorizontalGrid(&p, cc, values);
    }
    const double steps = std::floor((values.last - values.first) / values.step);
    const bool isOrdinary =
        values.step > 0.0 && steps < 300.0 && std::abs(values.first) < 1e3 &&
        std::abs(cc.realX0) < 1e3 && std::abs(cc.realY0) < 1e3 &&
        std::abs(cc.r2sdX(values.step)) >= 1.0 && std::abs(cc.r2sdY(values.step)) >= 1.0 &&
        std::isfinite(cc.r2sdX(values.step)) && std::isfinite(cc.r2sdY(values.step));
    if (!isOrdinary) {
        return;
    }
    QImage plain = whiteImage(surface);
    QPainter p(&plain);
    plainGrid(
        values, surface.width(), [&](double v) { return cc.r2sX(v); },
        [&](int x) { p.drawLine(x, 0, x, surface.height()); });
    plainGrid(
        values, surface.height(), [&](double v) { return cc.r2sY(v); },
        [&](int y) { p.drawLine(0, y, surface.width(), y); });
    p.end();
    FUZZ_REQUIRE(drawn == plain);
}

void setState(QPainter* p, int state)
{
    switch (state) {
    case 1:
        p->translate(3, -2);
        break;
    case 2:
        p->setClipRect(5, 4, 21, 11);
        break;
    case 3:
        p->setOpacity(0.5);
        break;
    case 4:
        p->setRenderHint(QPainter::Antialiasing);
        break;
    case 5:
        p->scale(1.5, 0.75);
        break;
    case 6:
        p->setBrush(Qt::yellow);
        break;
    default:
        break;
    }
}

struct Mark {
    QPoint place;
    qsizetype layer;
};

QImage gathered(const QSize& surface, const display::MarkPlaces& places, int state,
                const std::vector<Mark>& marks)
{
    QImage image = whiteImage(surface);
    QPainter p(&image);
    setState(&p, state);
    p.setPen(Qt::blue);
    display::GatheredMarks all(&p, places);
    for (const Mark& mark : marks) {
        all.add(mark.place);
    }
    all.draw();
    return image;
}

/// The picture of marks drawn by LayeredMarks; nullopt if LayeredMarks does not support the
/// state of the painter, so that each mark must be drawn separately.
std::optional<QImage> layered(const QSize& surface, const display::MarkPlaces& places, int state,
                              const QList<QColor>& colors, const std::vector<Mark>& marks)
{
    QImage image = whiteImage(surface);
    QPainter p(&image);
    setState(&p, state);
    const auto stamp = display::LayeredMarks::stampOf(p, colors);
    if (!stamp) {
        return std::nullopt;
    }
    display::LayeredMarks layers(*stamp, places, colors);
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        layers.addBelow(mark->place, mark->layer);
    }
    layers.draw(&p);
    return image;
}

QImage plainMarks(const QSize& surface, int state, const QList<QColor>& colors,
                  const std::vector<Mark>& marks)
{
    QImage image = whiteImage(surface);
    QPainter p(&image);
    setState(&p, state);
    for (const Mark& mark : marks) {
        p.setPen(colors.at(mark.layer));
        display::drawMark(&p, mark.place);
    }
    return image;
}

void tryMarks(fuzz::ByteReader& in)
{
    const QSize surface = nextSurface(in);
    ChCoord cc;
    setUp(cc, in, surface);
    const display::MarkPlaces places(cc);
    const QList<QColor> colors{Qt::red, Qt::blue, Qt::darkGreen};
    const int state = in.number(0, 6);
    std::vector<Mark> marks;
    for (int i = in.number(0, maxPoints); i > 0; --i) {
        const double x = in.number(0, 3) == 0 ? in.anyDouble() : in.number(-8, 160) / 4.0;
        const double y = in.number(0, 3) == 0 ? in.anyDouble() : in.number(-8, 160) / 4.0;
        if (const auto place = places.at(x, y)) {
            marks.push_back({*place, in.number(0, 2)});
        }
    }
    if (const auto picture = layered(surface, places, state, colors, marks)) {
        FUZZ_REQUIRE(*picture == plainMarks(surface, state, colors, marks));
    }
    FUZZ_REQUIRE(gathered(surface, places, state, marks) ==
                 plainMarks(surface, state, {Qt::blue, Qt::blue, Qt::blue}, marks));
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    switch (in.number(0, 7)) {
    case 0:
    case 1:
        return tryConversions(in);
    case 2:
        return tryLegend(in);
    case 3:
        return tryLines(in);
    case 4:
    case 5:
        return trySets(in);
    case 6:
        return tryGrid(in);
    default:
        return tryMarks(in);
    }
}
