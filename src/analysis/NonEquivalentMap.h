// The non-equivalent method on a stack of maps.
#pragma once

#include "analysis/Lanes.h"
#include "analysis/MapResultCache.h"
#include "analysis/NonEquivalent.h"

class A2DData;

namespace analysis
{

struct CalculationMemory;
struct HistogramCounts;

/// The input of a map calculation by the non-equivalent method.
struct NeqStack {
    bool victoreen = false; ///< Victoreen background instead of the linear one
    NeqInputs inputs;
    QList<const A2DData*> maps;          ///< map of each row in inputs.rowIndices; never null
    const A2DData* base = nullptr;       ///< map of inputs.baseRow; never null
    CalculationMemory* memory = nullptr; ///< null: caches are not kept for the next run
    Instructions instructions = fastestInstructions(); ///< affects speed only
};

/// The histograms of a map calculation. The caller has called start() on each. No pointer
/// may be null.
struct NeqHistograms {
    HistogramCounts* valence = nullptr;
    HistogramCounts* totalDMut = nullptr;
    QList<HistogramCounts*> share; ///< element i is for reference i; extra ones are not used
    QList<HistogramCounts*> dMut;  ///< element i is for reference i; extra ones are not used
};

/// Calculates a result map by the non-equivalent method. NeqFit describes the model.
///
/// The result gets the size and the comment lines of the base map, and one A2DRow per
/// pixel, row-major: x and y of the pixel in the base map (0.0 if this map does not
/// contain it), the share of the first reference as intensity, the total dMut as i0,
/// and all neq::count values as the value list. Valence, total dMut, shares and dMut of
/// each pixel are added to the histograms. No pixel is skipped: where a map does not
/// contain a pixel, the pixel's mut counts as -1.0. In each map, pixel (x, y) is row
/// y * xNum + x, with xNum of this map.
///
/// @param[out] result  the result map, with A2DData::extended set; earlier contents are
///                     replaced
void mapNonEquivalent(const NeqStack& stack, A2DData& result, const NeqHistograms& histograms);

/// The inputs for MapResultCache: everything in @p stack that affects the result.
MapResultCache::Inputs inputsOf(const NeqStack& stack);

} // namespace analysis
