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
    , m_places(counts.boxes + 2)
{
    if (counts.boxes <= mostBoxesOfTables) {
        m_found.resize(static_cast<std::size_t>(tables * m_places));
    }
}

void HistogramCounter::add(const Block& values, int count, Instructions instructions)
{
    std::array<std::int32_t, blockPixels> places;
    const double minV = m_counts.minV;
    const double step = m_counts.step;
    const Lanes most = allLanes(m_counts.boxes); // the index of all values above the range
    runKernel(
        instructions, [&]() __attribute__((always_inline)) {
            for (int at = 0; at < count; at += laneCount) {
                const Lanes place = (loadLanes(values.data() + at) - minV) / step;
                const LaneBits fits = (place > -1.0) & (place < HistogramCounts::beyondInt);
                const Lanes known = fits ? place : allLanes(-1.0);
                // Clamped before the conversion: index + 1 must fit an int.
                const Lanes held = known < most ? known : most;
                const LaneInts place0 = __builtin_convertvector(held, LaneInts) + 1;
                std::memcpy(places.data() + at, &place0, sizeof place0);
            }
        });
    if (m_found.empty()) {
        countDirectly(places.data(), count);
        return;
    }
    int* const found = m_found.data();
    for (int i = 0; i < count; ++i) {
        ++found[(i % tables) * m_places + places[static_cast<std::size_t>(i)]];
    }
}

void HistogramCounter::countDirectly(const int* places, int count)
{
    int* const bins = m_counts.bins.data();
    for (int i = 0; i < count; ++i) {
        const int place = places[i];
        if (place == 0) {
            ++m_counts.under;
        } else if (place > m_counts.boxes) {
            ++m_counts.over;
        } else {
            m_counts.total = std::max(m_counts.total, ++bins[place - 1]);
        }
    }
}

void HistogramCounter::finish()
{
    if (m_found.empty()) {
        return;
    }
    int* const bins = m_counts.bins.data();
    for (int table = 0; table < tables; ++table) {
        const int* const found = m_found.data() + table * m_places;
        m_counts.under += found[0];
        for (int i = 0; i < m_counts.boxes; ++i) {
            bins[i] += found[i + 1];
        }
        m_counts.over += found[m_counts.boxes + 1];
    }
    for (int i = 0; i < m_counts.boxes; ++i) {
        m_counts.total = std::max(m_counts.total, bins[i]);
    }
}

} // namespace analysis
