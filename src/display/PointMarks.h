// The marks of single points in a plot.
#pragma once

#include <QPoint>

#include <optional>

class ChCoord;
class QPainter;

namespace display
{

/// Radii of the two circles that mark a point, pixels.
inline constexpr int innerRadius = 1;
inline constexpr int outerRadius = 2;

/// The pixel of a single point, see MarkPlaces.
std::optional<QPoint> markPlace(const ChCoord& cc, double x, double y);

/// Draws a circle in the painter's pen.
void drawCircle(QPainter* p, const QPoint& centre, int radius);

/// Draws both circles.
void drawMark(QPainter* p, const QPoint& centre);

} // namespace display
