// Generates maps of counts for the benchmarks.
#pragma once

#include "data/A2DData.h"

#include <QList>

#include <cmath>
#include <random>

namespace bench
{

/// Returns @p count square maps with @p side pixels per axis. I0 is 1e5, and I
/// corresponds to the absorbance mutOf(k, f) plus noise, where k is the index of the map and
/// f = x / @p side rises from 0 to nearly 1 with the pixel index x.
template <class MutOf>
QList<A2DData> measuredMaps(int count, int side, MutOf mutOf)
{
    QList<A2DData> maps;
    for (int k = 0; k < count; ++k) {
        std::mt19937_64 random(static_cast<unsigned>(k) + 1);
        std::uniform_real_distribution<double> noise(-0.01, 0.01);
        A2DData map;
        map.xNum = side;
        map.yNum = side;
        map.rows.reserve(qsizetype{side} * side);
        for (int i = 0; i < side * side; ++i) {
            const double mut = mutOf(k, (i % side) / static_cast<double>(side)) + noise(random);
            map.rows.append(
                {i % side * 0.5, i / side * 0.5, std::round(1e5 * std::exp(-mut)), 1e5, {}});
        }
        maps.append(map);
    }
    return maps;
}

} // namespace bench
