// The extremes of a map, and the place of a point on it.
#pragma once

#include "analysis/Limits.h"
#include "data/A2DData.h"
#include "data/VectorRegisters.h"

#include <optional>

namespace analysis
{

/// The lowest and the highest value over the pixels that @p map claims; NaN
/// changes neither. Nothing when no pixel has a value.
///
/// @param valueAt  called as valueAt(x, y)
template <class ValueAt>
std::optional<Limits> scanMap(const A2DData& map, ValueAt valueAt)
{
    data::cleanVectorRegisters(); // most often this runs within a paint
    Limits found = noLimits;
    for (int y = 0; y < map.yNum; ++y) {
        for (int x = 0; x < map.xNum; ++x) {
            found.widen(valueAt(x, y));
        }
        if (map.xNum <= 0) {
            break; // no pixel in any line
        }
    }
    if (found.low > found.high) {
        return std::nullopt;
    }
    return found;
}

/// A pixel of a map.
struct MapPixel {
    int x = 0;
    int y = 0;
};

/// The pixel at a place in the view of @p map (pixels from its lower left
/// corner); nothing outside the map, and for NaN.
std::optional<MapPixel> pixelAt(const A2DData& map, double x, double y);

} // namespace analysis
