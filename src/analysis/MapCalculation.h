// From a stack of maps to a result map, pixel by pixel.
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
    const A2DData* map = nullptr; ///< read with its own width; never null
    double energy = 0.0;          ///< eV
    double r1 = 0.0;              ///< mut of the first reference
    double r2 = 0.0;              ///< mut of the second reference
};

/// What a form works on, gathered once.
struct MapStack {
    QList<MapPoint> others;              ///< the rows beside the V row, in row order
    MapPoint v;                          ///< the V row; its map places the pixels
    double r = 0.0;                      ///< edge jump of the first over the second reference
    ValenceMix mix;                      ///< valence of a fraction, for the histogram
    CalculationMemory* memory = nullptr; ///< null: nothing is kept for the next run
    Instructions instructions = fastestInstructions(); ///< all give the same bits
};

/// Three forms of the four-points method. Each replaces @p result by one row
/// per pixel of the V row's map (x and y of that map's row, or 0.0 where it has
/// none; intensity: the fraction a; i0: the thickness), in scan order, with the
/// V map's size and comment lines; and counts valence and thickness. No pixel
/// is skipped; one that a map lacks counts as a mut of -1.0.
///
/// mapThreePoints() takes the first two of the other rows and mapExactFourPoints()
/// the first three; with fewer they do nothing. mapLeastSquare() takes all.
///
/// @param valence,thickness  histograms, started by the caller
void mapThreePoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness);
void mapExactFourPoints(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                        HistogramCounts& thickness);
void mapLeastSquare(const MapStack& stack, A2DData& result, HistogramCounts& valence,
                    HistogramCounts& thickness);

/// All that @p form reads of @p stack.
MapResultCache::Inputs inputsOf(Variant form, const MapStack& stack);

} // namespace analysis
