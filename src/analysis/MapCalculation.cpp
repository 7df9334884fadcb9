#include "analysis/MapCalculation.h"

#include "analysis/CalculationMemory.h"
#include "analysis/FourPointForms.h"
#include "analysis/HistogramCounter.h"
#include "analysis/PixelBlocks.h"

#include <algorithm>
#include <span>

namespace analysis
{

namespace
{

void fillRows(std::span<A2DRow> rows, const Block& a, const Block& thickness)
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].intensity = a[i];
        rows[i].i0 = thickness[i];
        if (!rows[i].values.isEmpty()) {
            rows[i].values = {}; // the list of an earlier result in reused memory
        }
    }
}

/// Whether to cache the absorbance of @p maps for the next calculation. Very large maps
/// are not cached, to save memory; each calculation then takes the logarithm of each of
/// their pixels again.
bool isWorthCaching(const QList<const A2DData*>& maps)
{
    constexpr qsizetype maxPixels = qsizetype{1} << 24; // 128 MiB of doubles
    qsizetype pixels = 0;
    for (const A2DData* map : maps) {
        pixels += map->rows.size();
    }
    return pixels <= maxPixels;
}

/// Does the work that all forms have in common: result rows, caches and histograms.
///
/// @param points  the rows whose maps are read
/// @param solve   called as solve(t, count, a, thickness) for each block of pixels;
///                calculates fractions and thicknesses from the absorbances t, one
///                block per point
template <class Solve>
void calculate(const MapStack& stack, const QList<MapPoint>& points, A2DData& result,
               HistogramCounts& valence, HistogramCounts& thickness, Solve solve)
{
    QList<const A2DData*> maps;
    for (const MapPoint& point : points) {
        maps.append(point.map);
    }
    CalculationMemory ownMemory;
    CalculationMemory& memory = stack.memory != nullptr ? *stack.memory : ownMemory;
    memory.values.keepFirst(0); // this result has no value lists
    memory.absorbances.prepare(isWorthCaching(maps) ? maps : QList<const A2DData*>());
    HistogramCounter valences(valence);
    HistogramCounter thicknesses(thickness);
    const ValenceMix mix = stack.mix;
    Block a;
    Block t;
    Block v;
    calculateBlocks(maps, memory.absorbances, *stack.v.map, result, [&](const PixelBlock& block) {
        solve(block.absorbances, block.count(), a, t);
        std::transform(a.begin(), a.begin() + block.count(), v.begin(), mix);
        fillRows(block.rows, a, t);
        valences.add(v, block.count(), stack.instructions);
        thicknesses.add(t, block.count(), stack.instructions);
    });
    valences.finish();
    thicknesses.finish();
    result.extended = false;
}

/// calculate() for the forms that are a closed formula, applied to four pixels side by
/// side.
///
/// @tparam Points  number of @p points
/// @param solve    called as solve(t, a, thickness) with the absorbances of the points
///                 at four pixels
template <std::size_t Points, class Solve>
void calculateByLanes(const MapStack& stack, const QList<MapPoint>& points, A2DData& result,
                      HistogramCounts& valence, HistogramCounts& thickness, Solve solve)
{
    const auto solveBlock = [&](std::span<const BlockView> values, int count, Block& a, Block& t) {
        runKernel(
            stack.instructions, [&]() __attribute__((always_inline)) {
                for (int at = 0; at < count; at += laneCount) {
                    std::array<Lanes, Points> four;
                    for (std::size_t k = 0; k < Points; ++k) {
                        four[k] = loadLanes(values[k].data() + at);
                    }
                    Lanes fraction;
                    Lanes thick;
                    solve(four, fraction, thick);
                    storeLanes(a.data() + at, fraction);
                    storeLanes(t.data() + at, thick);
                }
            });
    };
    calculate(stack, points, result, valence, thickness, solveBlock);
}

} // namespace

void mapThreePoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness)
{
    if (stack.others.size() < 2) {
        return;
    }
    const QList<MapPoint> p{stack.others.at(0), stack.others.at(1), stack.v};
    const ThreeValues r1{p.at(0).r1, p.at(1).r1, p.at(2).r1};
    const ThreeValues r2{p.at(0).r2, p.at(1).r2, p.at(2).r2};
    calculateByLanes<3>(
        stack, p, result, valence, thickness,
        [&](const std::array<Lanes, 3>& values, Lanes& a, Lanes& thick)
            __attribute__((always_inline)) {
                const ThreeOf<Lanes> t{values[0], values[1], values[2]};
                a = threePointFraction(t, r1, r2);
                thick = threePointThickness(t, r1, r2);
            });
}

void mapExactFourPoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                        HistogramCounts& thickness)
{
    if (stack.others.size() < 3) {
        return;
    }
    const MapPoint p0 = stack.others.at(0);
    const MapPoint p1 = stack.others.at(1);
    const MapPoint p2 = stack.others.at(2);
    const MapPoint pv = stack.v;
    const double r = stack.r;
    calculateByLanes<4>(
        stack, {p0, p1, p2, pv}, result, valence, thickness,
        [&](const std::array<Lanes, 4>& t, Lanes& a, Lanes& thick) __attribute__((always_inline)) {
            a = exactFourPointsOf(t[0], t[1], t[2], t[3], p0.r1, p1.r1, p2.r1, pv.r1, p0.r2, p1.r2,
                                  p2.r2, pv.r2, p0.energy, p1.energy, p2.energy, pv.energy, r,
                                  &thick);
        });
}

void mapLeastSquare(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness)
{
    QList<double> r1;
    QList<double> r2;
    QList<double> energies;
    for (const MapPoint& point : stack.others) {
        r1.append(point.r1);
        r2.append(point.r2);
        energies.append(point.energy);
    }
    const LeastSquarePlane plane(r1, r2, energies,
                                 {stack.v.r1, stack.v.r2, stack.v.energy, stack.r});
    calculate(stack, stack.others + QList<MapPoint>{stack.v}, result, valence, thickness,
              [&](std::span<const BlockView> t, int count, Block& a, Block& thicknesses) {
                  plane.solve(t, t.back(), count, a, thicknesses, stack.instructions);
              });
}

MapResultCache::Inputs inputsOf(Variant form, const MapStack& stack)
{
    MapResultCache::Inputs inputs;
    inputs.numbers = {static_cast<double>(form), stack.r, stack.mix.enoughReferences ? 1.0 : 0.0,
                      stack.mix.v1, stack.mix.v2};
    const auto add = [&inputs](const MapPoint& point) {
        inputs.numbers << point.energy << point.r1 << point.r2;
        inputs.maps << point.map;
    };
    add(stack.v);
    for (const MapPoint& point : stack.others) {
        add(point);
    }
    return inputs;
}

} // namespace analysis
