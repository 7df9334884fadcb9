#include "analysis/MapScan.h"

namespace analysis
{

std::optional<MapPixel> pixelAt(const A2DData& map, double x, double y)
{
    if (!(x >= 0.0 && x < map.xNum && y >= 0.0 && y < map.yNum)) {
        return std::nullopt;
    }
    return MapPixel{static_cast<int>(x), static_cast<int>(y)};
}

} // namespace analysis
