#include "data/AbsorbanceCache.h"

#include "data/VectorRegisters.h"

#include <algorithm>
#include <utility>

namespace data
{

void AbsorbanceCache::prepare(const QList<const A2DData*>& maps)
{
    const auto isWanted = [&](const Entry& entry) {
        return std::any_of(maps.cbegin(), maps.cend(),
                           [&](const A2DData* map) { return entry.holds(*map); });
    };
    const auto firstFree = std::partition(m_entries.begin(), m_entries.end(), isWanted);
    // Before new memory is allocated, the rows of maps that are no longer wanted are freed.
    std::for_each(firstFree, m_entries.end(), [](Entry& entry) { entry.rows = {}; });
    std::vector<Entry> free(std::make_move_iterator(firstFree),
                            std::make_move_iterator(m_entries.end()));
    m_entries.erase(firstFree, m_entries.end());
    for (const A2DData* map : maps) {
        if (map->rows.isEmpty() || !of(*map).empty()) {
            continue;
        }
        Entry entry;
        if (!free.empty()) {
            entry = std::move(free.back());
            free.pop_back();
        }
        entry.fill(map->rows);
        m_entries.push_back(std::move(entry));
    }
}

std::span<const double> AbsorbanceCache::of(const A2DData& map) const
{
    for (const Entry& entry : m_entries) {
        if (entry.holds(map)) {
            return {entry.values.get(), static_cast<std::size_t>(entry.rows.size())};
        }
    }
    return {};
}

void AbsorbanceCache::Entry::fill(const QList<A2DRow>& newRows)
{
    rows = newRows;
    const qsizetype size = rows.size();
    // The array of an earlier map is reused unless it is too small or more than twice as
    // large as needed.
    if (capacity < size || capacity / 2 > size) {
        values = nullptr;
        values = std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(size));
        capacity = size;
    }
    clearUpperVectorHalves(); // AVX state left by a paint would slow the loop
    const A2DRow* row = rows.constData();
    for (qsizetype i = 0; i < size; ++i, ++row) {
        values[static_cast<std::size_t>(i)] = absorbance(*row);
    }
}

} // namespace data
