// Conversion of floating-point positions and line segments to whole pixels.
#pragma once

#include <QLine>
#include <QPoint>
#include <QPointF>

#include <optional>

class QPainter;
class QPen;

namespace display
{

/// Returns @p v truncated toward zero. Returns the lowest int for NaN, infinities and
/// values outside the range of int.
int truncated(double v);

/// Returns the pixel nearest to @p p, with halves rounded away from zero. A coordinate
/// that is NaN or does not fit into an int becomes the lowest int.
QPoint nearestPixel(const QPointF& p);

/// Returns the line segment between two positions on the widget (pixels), with
/// truncated coordinates.
///
/// A segment that extends beyond +-2^20 pixels is clipped to these limits before it
/// is truncated, so that its visible part is unchanged. Returns nothing if a
/// coordinate is not finite or if the whole segment is outside the limits.
std::optional<QLine> pixelLine(const QPointF& from, const QPointF& to);

/// Draws the segment pixelLine(@p from, @p to) with @p pen. If pixelLine() returns nothing,
/// the painter is not changed.
void drawPixelLine(QPainter* p, const QPen& pen, const QPointF& from, const QPointF& to);

} // namespace display
