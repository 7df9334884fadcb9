// Fast path that counts blocks of values into a histogram.
#pragma once

#include "analysis/Lanes.h"

#include <vector>

namespace analysis
{

struct HistogramCounts;

/// The fast path of HistogramCounts::add(), for many values at a time.
///
/// The final counts equal those of single calls of add(): each bin index is calculated
/// by the same operations, and counts do not depend on the order of the values. The
/// highest count is searched once at the end, which is valid because counts only grow.
class HistogramCounter
{
public:
    /// @param counts  a histogram on which start() was called; must outlive the
    ///                counter. It is complete only after finish().
    explicit HistogramCounter(HistogramCounts& counts);

    /// Counts the first @p count elements of @p values.
    /// @param instructions  one of availableInstructions(); all give the same counts
    void add(const Block& values, int count, Instructions instructions = fastestInstructions());

    /// Adds the collected counts to the histogram. Call once, after the last add().
    void finish();

private:
    /// Neighbouring pixels often fall into the same bin, and each increment then waits
    /// for the previous store. Consecutive values are therefore counted in different
    /// tables, which finish() adds up. Histograms with more bins than maxTableBoxes are
    /// counted directly: clearing and adding up the tables would take longer than the
    /// delayed increments.
    static constexpr int tableCount = 4;
    static constexpr int maxTableBoxes = 1024;

    void countDirectly(const int* indices, int count);

    HistogramCounts& m_counts;
    int m_tableSize = 0;       ///< counts per table: below the range, the bins, above the range
    std::vector<int> m_tables; ///< one table after another; empty if counted directly
};

} // namespace analysis
