// Fast path that counts blocks of values into a histogram.
#pragma once

#include "analysis/Lanes.h"

#include <vector>

namespace analysis
{

struct HistogramCounts;

/// The fast path of HistogramCounts::add(), for many values at a time.
///
/// The final counts are the same as after one call of HistogramCounts::add() per value:
/// each bin index is calculated by the same operations, and the counts do not depend on
/// the order of the values. If the values are counted in tables, the highest count is
/// determined only in finish(); this is correct because counts never decrease.
class HistogramCounter
{
public:
    /// @param counts  a histogram on which HistogramCounts::start() was called; must outlive
    ///                the counter. The histogram is complete only after finish().
    explicit HistogramCounter(HistogramCounts& counts);

    /// Counts the first @p count elements of @p values.
    /// @param instructions  one of availableInstructions(); the counts are the same for
    ///                      all
    void add(const Block& values, int count, Instructions instructions = fastestInstructions());

    /// Adds the collected counts to the histogram. Call once, after the last add().
    void finish();

private:
    /// Number of tables. Neighbouring pixels often fall into the same bin, and each
    /// increment then waits for the previous store. Consecutive values are therefore
    /// counted in different tables, which finish() adds up.
    static constexpr int tableCount = 4;

    /// Largest number of bins for which tables are used. With more bins, clearing and adding
    /// up the tables can take more time than the tables save.
    static constexpr int maxTableBoxes = 1024;

    void countDirectly(const int* indices, int count);

    HistogramCounts& m_counts;
    int m_tableSize = 0;       ///< counts per table: below the range, one per bin, above the range
    std::vector<int> m_tables; ///< one table after another; empty if counted directly
};

} // namespace analysis
