// Reference implementation of map painting. Each map pixel is filled and outlined by
// separate painter calls, and its edges are calculated separately.
#pragma once

#include "support/PlotPlace.h"

#include <QColor>
#include <QPainter>

#include <cmath>
#include <optional>

namespace tests
{

/// The part of a map that a surface without margins shows. The y axis points up.
struct PlainMapView {
    QSize surface; ///< size in pixels
    double left = 0.0;
    double bottom = 0.0;
    double right = 1.0;
    double top = 1.0;
};

/// The rectangle of map pixel (@p x, @p y) on the surface; nullopt if an edge is
/// not finite, for example because the view has no extent.
inline std::optional<QRect> plainCell(const PlainMapView& view, int x, int y)
{
    const PlotPlace place =
        PlotPlace::withoutMargins(view.surface, {view.left, view.bottom, view.right, view.top});
    for (const double at :
         {place.columnOf(x), place.columnOf(x + 1), place.rowOf(y), place.rowOf(y + 1)}) {
        if (!std::isfinite(at)) {
            return std::nullopt;
        }
    }
    const QPoint lowerLeft = place.pixel(x, y);
    const QPoint upperRight = place.pixel(x + 1, y + 1);
    return QRect(lowerLeft.x(), upperRight.y(), upperRight.x() - lowerLeft.x(),
                 lowerLeft.y() - upperRight.y());
}

/// Fills every pixel of a map with its colour.
///
/// @param colorAt  returns the colour of a pixel; called as colorAt(x, y)
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

/// Outlines every pixel of a map with the painter's pen. drawRects() omits corners of
/// rectangles that reach outside the surface, so such a rectangle is drawn as four lines.
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
            // drawRects() draws the lines at the right and at the bottom one pixel outside the
            // cell.
            const QRect outline = cell->adjusted(0, 0, 1, 1);
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
