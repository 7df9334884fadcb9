// The absorbance of maps, kept from one calculation to the next.
#pragma once

#include "data/A2DData.h"

#include <QList>

#include <memory>
#include <span>
#include <vector>

namespace data
{

/// Takes the logarithm of each pixel once for each map that is read, and not for
/// each calculation.
///
/// A calculation may read from here instead of asking pixelMut() for each pixel,
/// since the numbers are those of pixelMut() and change only when the map's rows
/// do. A map's rows are kept as an implicitly shared list: whoever changes them
/// gets a list of his own, and so the change is seen. Maps that share their rows
/// share their absorbance.
///
/// Memory: eight bytes for each row of the maps in use, and the rows themselves
/// after their map has let go of them, until the next prepare().
class AbsorbanceCache
{
public:
    /// Makes ready the absorbance of @p maps, and forgets all others.
    void prepare(const QList<const A2DData*>& maps);

    /// The absorbance of each row of @p map, in their order; empty if it was not
    /// among the maps that were made ready, or was changed since. Valid until
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
