// Builds maps from given absorbances.
#pragma once

#include "data/A2DData.h"

#include <QList>

namespace tests
{

/// A map of @p width by @p height pixels with the absorbances @p muts. By the convention
/// of A2DData, I0 = 0 means that the intensity field stores the absorbance. Pixel i is at
/// x = 10 + i and y = 20.
inline A2DData absorbanceMap(int width, int height, const QList<double>& muts)
{
    A2DData map;
    map.xNum = width;
    map.yNum = height;
    for (qsizetype i = 0; i < muts.size(); ++i) {
        map.rows.append({10.0 + static_cast<double>(i), 20.0, muts.at(i), 0.0, {}});
    }
    return map;
}

} // namespace tests
