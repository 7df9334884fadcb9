// Inputs and results of the latest map calculation.
#pragma once

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"

#include <QList>

namespace analysis
{

/// Skips a map calculation whose inputs are unchanged.
///
/// Each movement of the edge marker runs the map calculation once per reference with a
/// valid spectrum, and the release of the marker runs it again. Many of these runs have the
/// same inputs as the run before. Skipping them is safe because a calculation depends only
/// on its inputs, and because the cache also detects changes of the result and the
/// histograms.
///
/// Maps and result are kept as implicitly shared lists. Code that modifies such a list
/// gets a new copy, and the cache detects the change by the different data pointer.
/// Data that was replaced therefore remains in memory until the next calculation.
class MapResultCache
{
public:
    /// Everything that affects a calculation, except the limits and the numbers of bins of its
    /// histograms.
    struct Inputs {
        /// Compared bit by bit. If it contains several lists, each list is preceded by its
        /// length, so that different lists cannot result in the same numbers.
        QList<double> numbers;
        QList<const A2DData*> maps; ///< never null
    };

    /// Runs the calculation, unless it would only repeat the latest run. A calculation is a
    /// repetition if the inputs and the settings of the histograms (limits and numbers of
    /// bins) are the same as in the latest run, and neither @p result nor a histogram has
    /// changed since. A repetition leaves @p result and the histograms unchanged.
    ///
    /// @param start      called as start(); applies the current settings of the histograms and
    ///                   zeroes their counts
    /// @param calculate  called as calculate(); fills @p result and @p histograms
    template <class Start, class Calculate>
    void run(const Inputs& inputs, A2DData& result, const QList<HistogramCounts*>& histograms,
             Start start, Calculate calculate)
    {
        const QList<HistogramCounts> before = countsOf(histograms);
        start();
        const QList<HistogramCounts> started = countsOf(histograms);
        if (isRepetition(inputs, result, before, started)) {
            restore(histograms, before);
            return;
        }
        // Releases the shared lists, so that the calculation can reuse the result's memory.
        *this = MapResultCache();
        calculate();
        keep(inputs, result, countsOf(histograms), started);
    }

private:
    static QList<HistogramCounts> countsOf(const QList<HistogramCounts*>& histograms);
    static void restore(const QList<HistogramCounts*>& histograms,
                        const QList<HistogramCounts>& counts);
    bool isRepetition(const Inputs& inputs, const A2DData& result,
                      const QList<HistogramCounts>& counts,
                      const QList<HistogramCounts>& started) const;
    void keep(const Inputs& inputs, const A2DData& result, const QList<HistogramCounts>& counts,
              const QList<HistogramCounts>& started);

    bool m_hasEntry = false;
    QList<double> m_numbers;
    QList<A2DData> m_maps;
    A2DData m_result;
    QList<HistogramCounts> m_counts;
    QList<HistogramCounts> m_started;
};

} // namespace analysis
