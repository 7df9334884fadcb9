// From doubles to whole pixels.
#pragma once

#include <QLine>
#include <QPoint>
#include <QPointF>

#include <optional>

class QPainter;
class QPen;

namespace display
{

/// @p v cut towards zero. What no int can hold (NaN, infinities, values beyond
/// its range) gives the lowest int.
int truncated(double v);

/// The pixel nearest to @p p, halves away from zero; coordinates as in
/// truncated().
QPoint nearestPixel(const QPointF& p);

/// The segment between two places on the screen (pixels), each coordinate
/// truncated.
///
/// What reaches further than a million pixels is cut there before it becomes
/// whole, so that whatever crosses a window still does so in its place, however
/// far its ends are. Nothing when a coordinate is not finite or the segment
/// stays out there.
std::optional<QLine> pixelLine(const QPointF& from, const QPointF& to);

/// Draws pixelLine() in @p pen; without a line the painter keeps its own.
void drawPixelLine(QPainter* p, const QPen& pen, const QPointF& from, const QPointF& to);

} // namespace display
