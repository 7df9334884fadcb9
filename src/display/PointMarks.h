// Draws the marks of single points in a plot.
#pragma once

#include <QPoint>

#include <optional>

class ChCoord;
class QPainter;

namespace display
{

inline constexpr int innerRadius = 1; ///< radius of a mark's inner circle, pixels
inline constexpr int outerRadius = 2; ///< radius of a mark's outer circle, pixels

/// Returns MarkPlaces::at() of a single point (data values): its pixel, or nothing. For many
/// points, MarkPlaces is faster.
std::optional<QPoint> markPlace(const ChCoord& cc, double x, double y);

/// Draws a circle of @p radius pixels with the painter's pen.
void drawCircle(QPainter* p, const QPoint& centre, int radius);

/// Draws a mark with the painter's pen: two circles around @p centre.
void drawMark(QPainter* p, const QPoint& centre);

} // namespace display
