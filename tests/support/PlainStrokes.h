// Reference implementation of the lines and circles of a plot, without clipping.
#pragma once

#include "support/PlotPlace.h"

#include <QColor>
#include <QPainter>

namespace tests
{

inline const QColor plainGrid(200, 200, 255);

/// A vertical line over the full height of the surface.
inline void plainVertical(QPainter* p, const PlotPlace& place, double x)
{
    p->drawLine(place.column(x), 0, place.column(x), place.size.height());
}

inline void plainHorizontal(QPainter* p, const PlotPlace& place, double y)
{
    p->drawLine(0, place.row(y), place.size.width(), place.row(y));
}

inline void plainCircle(QPainter* p, const QPoint& centre, int radius)
{
    p->drawEllipse(QRect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
}

/// A point mark: two concentric circles.
inline void plainMark(QPainter* p, const PlotPlace& place, double x, double y)
{
    plainCircle(p, place.pixel(x, y), 1);
    plainCircle(p, place.pixel(x, y), 2);
}

/// Vertical lines 0.1 apart, from @p lower up to @p upper + 0.05.
inline void plainTenths(QPainter* p, const PlotPlace& place, double lower, double upper)
{
    for (int i = 0; lower + 0.1 * i <= upper + 0.05; ++i) {
        plainVertical(p, place, lower + 0.1 * i);
    }
}

} // namespace tests
