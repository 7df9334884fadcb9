// The four-point family on a stack of maps.
#pragma once

#include "analysis/CalculationChoice.h"
#include "analysis/Lanes.h"
#include "analysis/MapResultCache.h"
#include "analysis/ValenceMix.h"

#include <QList>

class A2DData;

namespace analysis
{

struct CalculationMemory;
struct HistogramCounts;

/// One energy-point row of a map calculation.
struct MapPoint {
    const A2DData* map = nullptr; ///< never null; can differ in size from the V row's map
    double energy = 0.0;          ///< eV
    double r1 = 0.0;              ///< mut of the first reference
    double r2 = 0.0;              ///< mut of the second reference
};

/// The input of a map calculation by the four-point family.
struct MapStack {
    QList<MapPoint> others;              ///< the rows without the V row, in row order
    MapPoint v;                          ///< the V row; its map determines the size of the result
    double r = 0.0;                      ///< edge jump ratio of the first to the second reference
    ValenceMix mix;                      ///< converts a fraction to the valence of the histogram
    CalculationMemory* memory = nullptr; ///< null: caches are not kept for the next run
    Instructions instructions = fastestInstructions(); ///< affects speed only
};

/// Calculates a result map by the three-point form from the V row and the first two rows of
/// MapStack::others. Does nothing if @c others has fewer than two rows.
///
/// The result gets the size and the comment lines of the V row's map, and one A2DRow
/// per pixel, row-major: x and y of the pixel in the V row's map (0.0 if this map does
/// not contain it), the fraction a as intensity, the thickness as i0, and no value
/// list. Valence and thickness of each pixel are added to the histograms. No pixel is
/// skipped: where a map does not contain a pixel, the pixel's mut counts as -1.0. In each
/// map, pixel (x, y) is row y * xNum + x, with xNum of this map. Infinities and NaN are
/// stored as they are.
///
/// @param stack                      the input
/// @param[out] result                the result map; earlier contents are replaced
/// @param[in,out] valence,thickness  histograms on which start() was called
void mapThreePoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness);

/// Calculates a result map by the exact form from the V row and the first three rows of
/// MapStack::others. Does nothing if @c others has fewer than three rows. The result and the
/// parameters are as for mapThreePoints().
void mapExactFourPoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                        HistogramCounts& thickness);

/// Calculates a result map by the least-squares form from the V row and all rows of
/// MapStack::others. The result and the parameters are as for mapThreePoints().
void mapLeastSquare(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness);

/// The inputs for MapResultCache: everything in @p stack that affects the result of @p form.
MapResultCache::Inputs inputsOf(Variant form, const MapStack& stack);

} // namespace analysis
