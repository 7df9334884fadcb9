// A map painted on the plain road: one fillRect() and one drawRects() for each
// of its pixels, every edge worked out anew.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tests
{

/// A surface without margins, y growing upward.
struct PlainMapView {
    QSize surface; ///< pixels
    double left = 0.0;
    double bottom = 0.0;
    double right = 1.0;
    double top = 1.0;
};

/// A place on the screen as a whole number, cut towards zero. A million pixels
/// are further than any surface reaches, and few enough for a painter.
inline int plainPixel(double place)
{
    constexpr double reach = 1e6;
    return static_cast<int>(std::trunc(std::clamp(place, -reach, reach)));
}

/// The rectangle of a pixel of a map; nothing in a view without extent.
inline std::optional<QRect> plainCell(const PlainMapView& view, int x, int y)
{
    const double width = view.surface.width();
    const double height = view.surface.height();
    const auto toX = [&](int v) {
        return width / (view.right - view.left) * (v - view.left) + 0.0;
    };
    const auto toY = [&](int v) {
        return (0.0 - height) / (view.top - view.bottom) * (v - view.bottom) + height;
    };
    for (const double place : {toX(x), toX(x + 1), toY(y), toY(y + 1)}) {
        if (!std::isfinite(place)) {
            return std::nullopt;
        }
    }
    const QPoint lowerLeft(plainPixel(toX(x)), plainPixel(toY(y)));
    const QPoint upperRight(plainPixel(toX(x + 1)), plainPixel(toY(y + 1)));
    return QRect(lowerLeft.x(), upperRight.y(), upperRight.x() - lowerLeft.x(),
                 lowerLeft.y() - upperRight.y());
}

/// @param colorAt  called as colorAt(x, y) for every pixel of the map
template <class ColorAt>
void plainFill(QPainter* p, const PlainMapView& view, int width, int height, ColorAt colorAt)
{
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (const auto cell = plainCell(view, x, y)) {
                p->fillRect(*cell, QColor(colorAt(x, y)));
            }
        }
    }
}

/// In the painter's pen. drawRects() loses corners of rectangles that reach out
/// of the surface, so these are drawn side by side.
inline void plainOutline(QPainter* p, const PlainMapView& view, int width, int height)
{
    const QRect surface({0, 0}, view.surface);
    p->setBrush(Qt::NoBrush);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto cell = plainCell(view, x, y);
            if (!cell) {
                continue;
            }
            const QRect outline = cell->adjusted(0, 0, 1, 1); // its right() and bottom() count
            if (surface.contains(outline)) {
                p->drawRects(&*cell, 1);
                continue;
            }
            p->drawLine(outline.topLeft(), outline.topRight());
            p->drawLine(outline.bottomLeft(), outline.bottomRight());
            p->drawLine(outline.topLeft(), outline.bottomLeft());
            p->drawLine(outline.topRight(), outline.bottomRight());
        }
    }
}

} // namespace tests
