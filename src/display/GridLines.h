// The lines of a plot's grid.
#pragma once

#include <QColor>

class ChCoord;
class QPainter;

namespace display
{

/// Values from @c first in steps of @c step up to @c last, which is one of them
/// where a step falls on it. None when a number is not finite, the step is not
/// above 0, or the last lies below the first.
struct GridValues {
    double first = 0.0;
    double step = 1.0;
    double last = 0.0;
};

/// The grid that graphs of valences have: every tenth from that of the first used
/// reference to that of the second, the last one also where it falls a little
/// beyond.
inline GridValues valenceGrid(double lower, double upper)
{
    return {lower, 0.1, upper + 0.05};
}

inline constexpr QColor gridColor{200, 200, 255};

/// Draw a line across the whole widget at each value, in the painter's pen, the
/// pixel truncated. The lines are counted by whole numbers, those out of view are
/// left out, and no pixel takes more than one: the time is bounded by the
/// widget's size, whatever the values are.
void drawVerticalGrid(QPainter* p, const ChCoord& cc, const GridValues& values);
void drawHorizontalGrid(QPainter* p, const ChCoord& cc, const GridValues& values);

} // namespace display
