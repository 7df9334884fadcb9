#include "display/GridLines.h"

#include "display/ChCoord.h"
#include "display/Pixels.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace display
{

namespace
{

/// Calls @p drawAt once for each pixel in the half-open interval [0, @p size) to which
/// the position of at least one value is truncated.
///
/// @param spacing  distance between neighbouring values in pixels, signed
/// @param toPixel  converts a value to its pixel position
/// @param drawAt   called with the pixel as an int
template <class ToPixel, class DrawAt>
void forEachPixel(const GridValues& values, double spacing, int size, ToPixel toPixel,
                  DrawAt drawAt)
{
    const double steps = std::floor((values.last - values.first) / values.step);
    const double begin = toPixel(values.first);
    if (!(values.step > 0.0) || values.last < values.first || !(steps >= 0.0) ||
        !std::isfinite(values.last) || !std::isfinite(begin) || !std::isfinite(spacing)) {
        return;
    }
    if (std::fabs(spacing) < 1.0) {
        // The spacing is below one pixel: every pixel between the ends contains a value.
        const double last = begin + spacing * steps;
        const auto [low, high] = std::minmax(begin, last);
        const double end = std::min(std::trunc(high), size - 1.0);
        for (double pixel = std::trunc(std::max(low, 0.0)); pixel <= end; ++pixel) {
            drawAt(static_cast<int>(pixel));
        }
        return;
    }
    const auto stepsTo = [&](double pixel) { return (pixel - begin) / spacing; };
    const double near = std::min(stepsTo(-1.0), stepsTo(size));
    const double start = std::max(0.0, std::floor(near));
    // A step is at least one pixel, so the values from pixel -1 to pixel size are at most
    // size + 1 steps apart. floor() adds at most one step: at most size + 3 values are checked.
    int previous = -1;
    for (int k = 0; k <= size + 2 && start + k <= steps; ++k) {
        const double place = toPixel(values.first + values.step * (start + k));
        const int pixel = place > -1.0 && place < size ? static_cast<int>(place) : previous;
        // Two values can have the same pixel: positions just below 0 and just above 0 both
        // truncate to 0.
        if (pixel != previous) {
            drawAt(pixel);
            previous = pixel;
        }
    }
}

} // namespace

void drawVerticalGrid(QPainter* p, const ChCoord& cc, const GridValues& values)
{
    const int bottom = truncated(cc.scrY0);
    forEachPixel(
        values, cc.r2sdX(values.step), truncated(cc.scrX1), [&](double v) { return cc.r2sX(v); },
        [&](int x) { p->drawLine(x, 0, x, bottom); });
}

void drawHorizontalGrid(QPainter* p, const ChCoord& cc, const GridValues& values)
{
    const int right = truncated(cc.scrX1);
    forEachPixel(
        values, cc.r2sdY(values.step), truncated(cc.scrY0), [&](double v) { return cc.r2sY(v); },
        [&](int y) { p->drawLine(0, y, right, y); });
}

} // namespace display
