#include "analysis/HistogramCounter.h"

#include "analysis/HistogramCounts.h"

#include <algorithm>

namespace analysis
{

namespace
{

using LaneInts [[gnu::vector_size(16)]] = std::int32_t;

} // namespace

HistogramCounter::HistogramCounter(HistogramCounts& counts)
    : m_counts(counts)
    , m_tableSize(counts.boxes + 2)
{
    if (counts.boxes <= maxTableBoxes) {
        m_tables.resize(static_cast<std::size_t>(tableCount * m_tableSize));
    }
}

void HistogramCounter::add(const Block& values, int count, Instructions instructions)
{
    std::array<std::int32_t, blockPixels> indices;
    const double minV = m_counts.minV;
    const double step = m_counts.step;
    // Values above the range get the index after the last bin.
    const Lanes aboveRange = allLanes(m_counts.boxes);
    runKernel(
        instructions, [&]() __attribute__((always_inline)) {
            for (int at = 0; at < count; at += laneCount) {
                const Lanes position = (loadLanes(values.data() + at) - minV) / step;
                const LaneBits inRange =
                    (position > -1.0) & (position < HistogramCounts::beyondInt);
                const Lanes checked = inRange ? position : allLanes(-1.0);
                // Clamped before the conversion, so that the index + 1 fits into an int.
                const Lanes clamped = checked < aboveRange ? checked : aboveRange;
                const LaneInts tableIndex = __builtin_convertvector(clamped, LaneInts) + 1;
                std::memcpy(indices.data() + at, &tableIndex, sizeof tableIndex);
            }
        });
    if (m_tables.empty()) {
        countDirectly(indices.data(), count);
        return;
    }
    int* const counts = m_tables.data();
    for (int i = 0; i < count; ++i) {
        ++counts[(i % tableCount) * m_tableSize + indices[static_cast<std::size_t>(i)]];
    }
}

void HistogramCounter::countDirectly(const int* indices, int count)
{
    int* const bins = m_counts.bins.data();
    for (int i = 0; i < count; ++i) {
        const int index = indices[i];
        if (index == 0) {
            ++m_counts.under;
        } else if (index > m_counts.boxes) {
            ++m_counts.over;
        } else {
            m_counts.total = std::max(m_counts.total, ++bins[index - 1]);
        }
    }
}

void HistogramCounter::finish()
{
    if (m_tables.empty()) {
        return;
    }
    int* const bins = m_counts.bins.data();
    for (int table = 0; table < tableCount; ++table) {
        const int* const counts = m_tables.data() + table * m_tableSize;
        m_counts.under += counts[0];
        for (int i = 0; i < m_counts.boxes; ++i) {
            bins[i] += counts[i + 1];
        }
        m_counts.over += counts[m_counts.boxes + 1];
    }
    for (int i = 0; i < m_counts.boxes; ++i) {
        m_counts.total = std::max(m_counts.total, bins[i]);
    }
}

} // namespace analysis
