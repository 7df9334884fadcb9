// Converts the points of a plot to the pixels of their marks.
#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class ChCoord;

namespace display
{

/// Fast path for converting many points (plots can have a million) to pixels.
///
/// The scale of each axis (pixels per unit of the data) is calculated only once. The
/// remaining operations are in the same order as in ChCoord::r2sX() and r2sY(), so the
/// results are equal bit for bit.
class MarkPlaces
{
public:
    /// Calculates the scales from the current coordinates @p cc of the plot. Later changes of
    /// @p cc have no effect.
    explicit MarkPlaces(const ChCoord& cc);

    /// Returns the pixel of the point (@p x, @p y) (data values), with truncated
    /// coordinates. Returns nothing if a coordinate is NaN, or if the point is at least
    /// outerRadius + 1 pixels outside the widget, so that its mark is not visible.
    std::optional<QPoint> at(double x, double y) const
    {
        const double column = m_x.toPixel(x);
        const double row = m_y.toPixel(y);
        if (!m_x.showsAt(column) || !m_y.showsAt(row)) {
            return std::nullopt;
        }
        return QPoint(static_cast<int>(column), static_cast<int>(row));
    }

    /// Returns a rectangle that contains all pixels that at() can return: the widget and a
    /// narrow border around it.
    QRect area() const { return m_area; }

private:
    struct Axis {
        double toPixel(double v) const { return scale * (v - real0) + area0; }
        bool showsAt(double place) const { return place > low && place < high; }

        double scale; ///< pixels per unit of the data
        double real0; ///< data value at pixel position area0
        double area0; ///< areaX0 or areaY0 of ChCoord, pixels
        double low;   ///< marks at or below this pixel position are not visible
        double high;  ///< marks at or above this pixel position are not visible
    };

    Axis m_x;
    Axis m_y;
    QRect m_area;
};

} // namespace display
