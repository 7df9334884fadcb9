#include "analysis/MapCalculation.h"

#include "analysis/FourPointForms.h"
#include "analysis/HistogramCounts.h"
#include "analysis/PixelWalk.h"

#include <array>
#include <vector>

namespace analysis
{

namespace
{

// The frame that the forms share: `solve(x, y)` gives a pixel's fraction and
// thickness.
template <class Solve>
void walk(const MapStack& stack, A2DData& result, HistogramCounts& valence,
          HistogramCounts& thickness, Solve solve)
{
    const ValenceMix mix = stack.mix;
    walkPixels(*stack.v.map, result, [&](int x, int y, A2DRow& row) {
        const FractionAndThickness pixel = solve(x, y);
        row.intensity = pixel.a;
        row.i0 = pixel.thickness;
        valence.add(mix(pixel.a));
        thickness.add(pixel.thickness);
    });
    result.extended = false;
}

} // namespace

void mapThreePoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness)
{
    if (stack.others.size() < 2) {
        return;
    }
    const MapPoint p0 = stack.others.at(0);
    const MapPoint p1 = stack.others.at(1);
    const MapPoint pv = stack.v;
    const ThreeValues r1{p0.r1, p1.r1, pv.r1};
    const ThreeValues r2{p0.r2, p1.r2, pv.r2};
    walk(stack, result, valence, thickness, [=](int x, int y) {
        const ThreeValues t{data::pixelMut(*p0.map, x, y), data::pixelMut(*p1.map, x, y),
                            data::pixelMut(*pv.map, x, y)};
        return FractionAndThickness{threePointFraction(t, r1, r2), threePointThickness(t, r1, r2)};
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
    walk(stack, result, valence, thickness, [=](int x, int y) {
        FractionAndThickness pixel;
        pixel.a = exactFourPoints(data::pixelMut(*p0.map, x, y), data::pixelMut(*p1.map, x, y),
                                  data::pixelMut(*p2.map, x, y), data::pixelMut(*pv.map, x, y),
                                  p0.r1, p1.r1, p2.r1, pv.r1, p0.r2, p1.r2, p2.r2, pv.r2, p0.energy,
                                  p1.energy, p2.energy, pv.energy, r, &pixel.thickness);
        return pixel;
    });
}

void mapLeastSquare(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness)
{
    QList<double> r1;
    QList<double> r2;
    QList<double> energies;
    std::vector<const A2DData*> maps;
    for (const MapPoint& point : stack.others) {
        r1.append(point.r1);
        r2.append(point.r2);
        energies.append(point.energy);
        maps.push_back(point.map);
    }
    const LeastSquarePlane plane(r1, r2, energies);
    const VPointNumbers v{stack.v.r1, stack.v.r2, stack.v.energy, stack.r};
    const A2DData* const vMap = stack.v.map;
    std::vector<double> t(maps.size()); // reused from pixel to pixel
    walk(stack, result, valence, thickness, [&](int x, int y) {
        for (std::size_t k = 0; k < maps.size(); ++k) {
            t[k] = data::pixelMut(*maps[k], x, y);
        }
        return fractionFromPlane(plane.coefficients(t.data()), data::pixelMut(*vMap, x, y), v);
    });
}

MapMemory::Inputs inputsOf(Variant form, const MapStack& stack)
{
    MapMemory::Inputs inputs;
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
