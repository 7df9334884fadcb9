// Reference implementation of a plot's layout and coordinate transform.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace tests
{

/// The data values at the edges of a plot area: x0 left, x1 right, y0 bottom, y1 top.
struct PlotRange {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 1.0;
    double y1 = 1.0;
};

/// Truncates a coordinate to a whole pixel and clamps it to +-1e6. This range is larger
/// than any surface and small enough for QPainter.
inline int plainPixel(double place)
{
    constexpr double reach = 1e6;
    return static_cast<int>(std::trunc(std::clamp(place, -reach, reach)));
}

/// The layout of a plot. The left and bottom margins are a tenth of the surface, the
/// right and top margins a twentieth, each truncated to whole pixels. A line of text is a
/// twentieth of the plot area high (rowHeight()), and its characters are 0.85 times as high
/// as the line (textHeight()).
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

    /// The layout of a surface without margins.
    static PlotPlace withoutMargins(const QSize& surface, const PlotRange& values)
    {
        PlotPlace place(surface, values);
        place.left = place.top = 0;
        place.right = surface.width();
        place.bottom = surface.height();
        return place;
    }

    /// The position of a data value in pixels, before truncation.
    double columnOf(double x) const
    {
        return (right - left) / (range.x1 - range.x0) * (x - range.x0) + left;
    }
    double rowOf(double y) const
    {
        return (top - bottom) / (range.y1 - range.y0) * (y - range.y0) + bottom;
    }

    /// The data value at a pixel column; the inverse of columnOf().
    double valueAt(int column) const
    {
        return (range.x1 - range.x0) / (right - left) * (column - left) + range.x0;
    }

    /// The pixel of a data point. columnOf() and rowOf() must not be NaN.
    int column(double x) const { return plainPixel(columnOf(x)); }
    int row(double y) const { return plainPixel(rowOf(y)); }
    QPoint pixel(double x, double y) const { return {column(x), row(y)}; }

    /// The plot area including its outline, from pixel (left, top) to pixel (right, bottom),
    /// both included.
    QRect area() const { return {QPoint(left, top), QPoint(right, bottom)}; }

    /// The plot area without its outline.
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
