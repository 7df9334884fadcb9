// Grid lines of plots.
#pragma once

#include <QColor>

class ChCoord;
class QPainter;

namespace display
{

/// Equally spaced values of grid lines: @c first, @c first + @c step, and so on, up to
/// the largest value that is not above @c last. There are no values if one of the three
/// numbers is not finite, if @c step is not greater than 0, or if @c last is below
/// @c first.
struct GridValues {
    double first = 0.0;
    double step = 1.0;
    double last = 0.0;
};

/// Returns the grid lines of a valence axis: steps of 0.1 from @p lower to @p upper,
/// which are the valences of the first two used references. The upper end is extended
/// by half a step, so that a rounding error cannot drop the last line; the last line can
/// therefore be slightly above @p upper.
inline GridValues valenceGrid(double lower, double upper)
{
    return {lower, 0.1, upper + 0.05};
}

inline constexpr QColor gridColor{200, 200, 255};

/// Draws a vertical line over the whole height of the widget at each value, with the
/// painter's pen. The position of a line is truncated to a whole pixel.
///
/// Positions are calculated from an integer counter, so that rounding errors do not
/// add up. Lines outside the widget are skipped, and each pixel gets at most one
/// line, so the time is limited by the size of the widget for any values.
void drawVerticalGrid(QPainter* p, const ChCoord& cc, const GridValues& values);

/// Draws a horizontal line over the whole width of the widget at each value, with the
/// painter's pen. Truncation and skipped lines are as in drawVerticalGrid().
void drawHorizontalGrid(QPainter* p, const ChCoord& cc, const GridValues& values);

} // namespace display
