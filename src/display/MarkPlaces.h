// The pixels on which the points of a plot are marked.
#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class ChCoord;

namespace display
{

/// Finds the pixel of each point of a plot, the conversion of both axes prepared
/// once.
///
/// It may differ from two calls of ChCoord because a plot of a million points
/// asks for each of them. The quotient of the spans is taken beforehand and all
/// else is calculated in the same order, so that the bits are the same.
class MarkPlaces
{
public:
    explicit MarkPlaces(const ChCoord& cc);

    /// The pixel of a point, coordinates truncated; nothing when its mark would
    /// not show on the widget, and for NaN. Inline, since a paint asks for every
    /// point.
    std::optional<QPoint> at(double x, double y) const
    {
        const double column = m_x.toPixel(x);
        const double row = m_y.toPixel(y);
        if (!m_x.showsAt(column) || !m_y.showsAt(row)) {
            return std::nullopt;
        }
        return QPoint(static_cast<int>(column), static_cast<int>(row));
    }

    /// A rectangle that holds every place: the widget and a little around it.
    QRect area() const { return m_area; }

private:
    struct Axis {
        double toPixel(double v) const { return scale * (v - real0) + area0; }
        bool showsAt(double place) const { return place > low && place < high; }

        double scale; ///< pixels per unit of the data
        double real0; ///< data value and pixel of the plot area's first edge
        double area0;
        double low; ///< a mark shows between these, exclusive
        double high;
    };

    Axis m_x;
    Axis m_y;
    QRect m_area;
};

} // namespace display
