#include "analysis/MapCalculation.h"

#include "analysis/FourPointForms.h"
#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"

#include <array>
#include <vector>

namespace analysis
{

namespace
{

// Clears the result and gives it the base map's size and comment lines.
void startResult(A2DData& result, const A2DData& base)
{
    result.clear();
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    result.headerLines = base.headerLines;
    const qsizetype pixels = base.xNum > 0 && base.yNum > 0 ? qsizetype{base.xNum} * base.yNum : 0;
    if (result.rows.capacity() / 2 > pixels) {
        result.rows = {}; // gives back the room of a much larger map
    }
    result.rows.reserve(pixels);
}

// The frame that the forms share: `solve(x, y)` gives a pixel's fraction and
// thickness.
template <class Solve>
void walk(const MapStack& stack, A2DData& result, HistogramCounts& valence,
          HistogramCounts& thickness, Solve solve)
{
    const A2DData& base = *stack.v.map;
    startResult(result, base);
    const ValenceMix mix = stack.mix;
    const A2DRow* const baseRows = base.rows.constData();
    const qsizetype baseCount = base.rows.size();
    qsizetype i = 0;
    for (int y = 0; y < base.yNum; ++y) {
        for (int x = 0; x < base.xNum; ++x, ++i) {
            const FractionAndThickness pixel = solve(x, y);
            const bool inside = i < baseCount;
            result.rows.emplaceBack(A2DRow{inside ? baseRows[i].x : 0.0,
                                           inside ? baseRows[i].y : 0.0,
                                           pixel.a,
                                           pixel.thickness,
                                           {}});
            valence.add(mix(pixel.a));
            thickness.add(pixel.thickness);
        }
        if (base.xNum <= 0) {
            break; // no pixel in any line
        }
    }
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

} // namespace analysis
