// Counts blocks of values into a histogram.
#pragma once

#include "analysis/Lanes.h"

#include <vector>

namespace analysis
{

struct HistogramCounts;

/// Collects what HistogramCounts::add() would count, for many values at a time.
///
/// It may differ from adding one by one, since counts do not depend on the order
/// of values and each value's bin is found by the same operations. The highest
/// count is looked for once at the end, which it reaches there at the latest.
class HistogramCounter
{
public:
    /// @param counts  started by the caller; must outlive this; has all of the
    ///                counts after finish() and not before
    explicit HistogramCounter(HistogramCounts& counts);

    /// Counts the first @p count values of a block. All instructions that are
    /// available count the same.
    void add(const Block& values, int count, Instructions instructions = fastestInstructions());

    /// Adds what was counted to the histogram.
    void finish();

private:
    /// Neighbouring pixels often fall into the same bin, and a count can only
    /// grow after it has been written: with several counts for each bin they do
    /// not wait for each other. Very many bins are counted in the histogram itself,
    /// since to prepare and to add up so many would take longer than to wait.
    static constexpr int tables = 4;
    static constexpr int mostBoxesOfTables = 1024;

    void countDirectly(const int* places, int count);

    HistogramCounts& m_counts;
    int m_places = 0;         ///< of a table: one for what lies below, the bins, one for above
    std::vector<int> m_found; ///< the tables; empty where they are not used
};

} // namespace analysis
