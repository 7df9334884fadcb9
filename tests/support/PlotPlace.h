// Where the things of a plot have their places on a surface.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace tests
{

/// Data values at the edges of a plot area.
struct PlotRange {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 1.0;
    double y1 = 1.0;
};

/// A place on the screen as a whole number, cut towards zero. A million pixels
/// are further than any surface reaches, and few enough for a painter.
inline int plainPixel(double place)
{
    constexpr double reach = 1e6;
    return static_cast<int>(std::trunc(std::clamp(place, -reach, reach)));
}

/// The margins of a plot are a tenth at the left and at the bottom and a
/// twentieth at the right and at the top, each cut to whole pixels; a row of text
/// is a twentieth of the plot area high, and its text fills 0.85 of it.
struct PlotPlace {
    PlotPlace(const QSize& surface, const PlotRange& values)
        : size(surface)
        , range(values)
        , left(size.width() / 10)
        , right(size.width() - size.width() / 20)
        , top(size.height() / 20)
        , bottom(size.height() - size.height() / 10)
    {
    }

    /// A surface that is plot area all over.
    static PlotPlace withoutMargins(const QSize& surface, const PlotRange& values)
    {
        PlotPlace place(surface, values);
        place.left = place.top = 0;
        place.right = surface.width();
        place.bottom = surface.height();
        return place;
    }

    /// Where a value falls, in pixels.
    double columnOf(double x) const
    {
        return (right - left) / (range.x1 - range.x0) * (x - range.x0) + left;
    }
    double rowOf(double y) const
    {
        return (top - bottom) / (range.y1 - range.y0) * (y - range.y0) + bottom;
    }

    /// The value that a column shows.
    double valueAt(int column) const
    {
        return (range.x1 - range.x0) / (right - left) * (column - left) + range.x0;
    }

    /// The pixel of a point; for one that has a place.
    int column(double x) const { return plainPixel(columnOf(x)); }
    int row(double y) const { return plainPixel(rowOf(y)); }
    QPoint pixel(double x, double y) const { return {column(x), row(y)}; }

    /// The plot area with the outline of its frame, which is a pixel larger than
    /// what is drawn as its rectangle.
    QRect area() const { return {QPoint(left, top), QPoint(right, bottom)}; }

    /// The pixels that the outline leaves to the data.
    QRect inside() const { return area().adjusted(1, 1, -1, -1); }

    int rowHeight() const { return (bottom - top) / 20; }
    int textHeight() const { return static_cast<int>(rowHeight() * 0.85); }
    int gap() const { return static_cast<int>(rowHeight() * (1.0 - 0.85)); }

    QSize size;
    PlotRange range;
    int left;
    int right;
    int top;
    int bottom;
};

} // namespace tests
