// Builds maps from given absorbances.
#pragma once

#include "data/A2DData.h"

#include <QList>

namespace tests
{

/// A map whose pixels hold ready absorbances (I0 is 0). The x coordinate of pixel i is 10
/// + i; y is 20.
inline A2DData readyMap(int width, int height, const QList<double>& muts)
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
