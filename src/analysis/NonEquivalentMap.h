// The non-equivalent method on a stack of maps, pixel by pixel.
#pragma once

#include "analysis/Lanes.h"
#include "analysis/MapResultCache.h"
#include "analysis/NonEquivalent.h"

class A2DData;

namespace analysis
{

struct CalculationMemory;
struct HistogramCounts;

/// What the method works on, gathered once.
struct NeqStack {
    bool victoreen = false;
    NeqInputs inputs;
    QList<const A2DData*> maps;    ///< one for each of inputs.rowIndices; may be empty
    const A2DData* base = nullptr; ///< the map of inputs.baseRow; places the pixels; never null
    CalculationMemory* memory = nullptr;               ///< null: nothing is kept for the next run
    Instructions instructions = fastestInstructions(); ///< all give the same bits
};

/// Histograms, started by the caller; those of shares and amounts in the order
/// of the references.
struct NeqHistograms {
    HistogramCounts* valence = nullptr;
    HistogramCounts* totalDMut = nullptr;
    QList<HistogramCounts*> share;
    QList<HistogramCounts*> dMut;
};

/// Replaces @p result by one row per pixel of the base map (x and y of that
/// map's row, or 0.0 where it has none; intensity: the share of the first
/// reference; i0: the total dMut; values: all of neq::count), in scan order,
/// with the base map's size and comment lines; and counts valence, total,
/// shares and amounts. No pixel is skipped; one that a map lacks counts as a
/// mut of -1.0. Each map is read with its own width.
void mapNonEquivalent(const NeqStack& stack, A2DData& result, const NeqHistograms& histograms);

/// All that the method reads of @p stack.
MapResultCache::Inputs inputsOf(const NeqStack& stack);

} // namespace analysis
