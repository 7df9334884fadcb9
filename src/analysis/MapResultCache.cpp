#include "analysis/MapResultCache.h"

#include <algorithm>
#include <cstring>

namespace analysis
{

namespace
{

bool sameBits(const QList<double>& a, const QList<double>& b)
{
    return a.size() == b.size() &&
           (a.isEmpty() || std::memcmp(a.constData(), b.constData(),
                                       static_cast<std::size_t>(a.size()) * sizeof(double)) == 0);
}

bool sameCounts(const HistogramCounts& a, const HistogramCounts& b)
{
    return sameBits({a.minV, a.maxV, a.step}, {b.minV, b.maxV, b.step}) && a.boxes == b.boxes &&
           a.total == b.total && a.bins == b.bins && a.under == b.under && a.over == b.over;
}

bool sameCounts(const QList<HistogramCounts>& a, const QList<HistogramCounts>& b)
{
    return std::equal(
        a.cbegin(), a.cend(), b.cbegin(), b.cend(),
        [](const HistogramCounts& x, const HistogramCounts& y) { return sameCounts(x, y); });
}

/// Whether both maps share the same list of rows and agree in all other fields.
bool isUnchanged(const A2DData& kept, const A2DData& now)
{
    return kept.rows.constData() == now.rows.constData() && kept.rows.size() == now.rows.size() &&
           kept.xNum == now.xNum && kept.yNum == now.yNum && kept.extended == now.extended &&
           kept.headerLines == now.headerLines;
}

} // namespace

QList<HistogramCounts> MapResultCache::countsOf(const QList<HistogramCounts*>& histograms)
{
    QList<HistogramCounts> counts;
    for (const HistogramCounts* histogram : histograms) {
        counts.append(*histogram);
    }
    return counts;
}

void MapResultCache::restore(const QList<HistogramCounts*>& histograms,
                             const QList<HistogramCounts>& counts)
{
    for (qsizetype i = 0; i < histograms.size(); ++i) {
        *histograms.at(i) = counts.at(i);
    }
}

bool MapResultCache::isRepetition(const Inputs& inputs, const A2DData& result,
                                  const QList<HistogramCounts>& counts,
                                  const QList<HistogramCounts>& started) const
{
    return m_hasEntry && sameBits(m_numbers, inputs.numbers) &&
           std::equal(
               m_maps.cbegin(), m_maps.cend(), inputs.maps.cbegin(), inputs.maps.cend(),
               [](const A2DData& kept, const A2DData* now) { return isUnchanged(kept, *now); }) &&
           isUnchanged(m_result, result) && sameCounts(m_started, started) &&
           sameCounts(m_counts, counts);
}

void MapResultCache::keep(const Inputs& inputs, const A2DData& result,
                          const QList<HistogramCounts>& counts,
                          const QList<HistogramCounts>& started)
{
    m_hasEntry = true;
    m_numbers = inputs.numbers;
    for (const A2DData* map : inputs.maps) {
        m_maps.append(*map);
    }
    m_result = result;
    m_counts = counts;
    m_started = started;
}

} // namespace analysis
