// Extremes of a map, and the pixel at a position.
#pragma once

#include "analysis/Limits.h"
#include "data/A2DData.h"
#include "data/VectorRegisters.h"

#include <optional>

namespace analysis
{

/// The lowest and the highest value of a map.
///
/// @param map      only its size xNum by yNum is used
/// @param valueAt  called as valueAt(x, y) for each pixel, row-major
/// @return the extremes; NaN is ignored. No value if there are no pixels, or all are NaN.
template <class ValueAt>
std::optional<Limits> scanMap(const A2DData& map, ValueAt valueAt)
{
    data::clearUpperVectorHalves(); // prevents slow AVX-SSE transitions after a paint
    Limits found = emptyLimits;
    for (int y = 0; y < map.yNum; ++y) {
        for (int x = 0; x < map.xNum; ++x) {
            found.widen(valueAt(x, y));
        }
        if (map.xNum <= 0) {
            break; // no pixels: do not loop over a large yNum
        }
    }
    if (found.low > found.high) {
        return std::nullopt;
    }
    return found;
}

/// Column x and image line y of a pixel, counted from 0.
struct MapPixel {
    int x = 0;
    int y = 0;
};

/// The pixel at a position in the view of @p map.
///
/// @param x,y  position in pixels from the lower left corner; truncated
/// @return the pixel; no value if the position is outside the map or NaN
std::optional<MapPixel> pixelAt(const A2DData& map, double x, double y);

} // namespace analysis
