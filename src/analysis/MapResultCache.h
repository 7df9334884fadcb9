// What the latest map calculation was made of, and what it gave.
#pragma once

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"

#include <QList>

namespace analysis
{

/// Leaves out a map calculation that is repeated with nothing changed: one drag of
/// the edge runs the whole reflex once for each reference, and its release once
/// more for each.
///
/// A calculation may be left out since it depends on nothing but its inputs, and
/// result and counts are compared as well. The outcome is the same to the last
/// bit.
///
/// Maps and result are kept as implicitly shared lists. Whoever changes one of
/// them afterwards gets a copy of his own, which is how the change is seen. What
/// was replaced stays in memory until the next calculation.
class MapResultCache
{
public:
    /// All that a calculation reads, beside the limits of its histograms.
    struct Inputs {
        QList<double> numbers;      ///< compared bit for bit; lists go with their lengths
        QList<const A2DData*> maps; ///< never null
    };

    /// Starts the histograms and runs the calculation, or leaves @p result and
    /// the counts as they are when they are what it would give.
    ///
    /// @param start      zeroes the histograms with the present limits
    /// @param calculate  fills @p result and counts
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
        // Shared lists would be copied by the calculation's writing.
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

    bool m_known = false;
    QList<double> m_numbers;
    QList<A2DData> m_maps;
    A2DData m_result;
    QList<HistogramCounts> m_counts;
    QList<HistogramCounts> m_started;
};

} // namespace analysis
