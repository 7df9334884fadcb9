// A cache of the absorbance of each pixel, kept from one calculation to the next.
#pragma once

#include "data/A2DData.h"

#include <QList>

#include <memory>
#include <span>
#include <vector>

namespace data
{

/// Caches the absorbance of each pixel, so that a calculation with unchanged maps need not
/// take the logarithms of their pixels again.
///
/// The cached values equal the results of pixelMut() as long as the rows of the map are
/// unchanged. The cache detects a change because it keeps an implicitly shared copy of
/// the list: code that writes to the rows of the map gets a new list with another
/// address. Maps that share their rows share their cache entry.
///
/// Memory: eight bytes for each pixel of the cached maps, or up to about sixteen if the
/// array of an earlier map is reused. If a map is changed or deleted, its old rows remain in
/// memory until the next prepare().
class AbsorbanceCache
{
public:
    /// Adds each of @p maps that is not in the cache yet, and removes all maps that are not
    /// in @p maps.
    void prepare(const QList<const A2DData*>& maps);

    /// The absorbance of each pixel of @p map, in the order of its rows. Empty if the
    /// latest prepare() did not cache the current rows of @p map. The result is valid until
    /// the next prepare().
    std::span<const double> of(const A2DData& map) const;

private:
    struct Entry {
        QList<A2DRow> rows;
        std::unique_ptr<double[]> values; // NOLINT(modernize-avoid-c-arrays)
        qsizetype capacity = 0;

        bool holds(const A2DData& map) const
        {
            return rows.constData() == map.rows.constData() && rows.size() == map.rows.size();
        }
        void fill(const QList<A2DRow>& newRows);
    };

    std::vector<Entry> m_entries;
};

} // namespace data
