// One quantity of a result map.
#pragma once

#include "analysis/NeqColumns.h"
#include "analysis/ValenceMix.h"
#include "data/A2DData.h"

#include <cstddef>
#include <span>

namespace analysis
{

/// Read access to one of the thirteen quantities of a result map. A quantity is
/// identified by its column in the extended result file; see analysis::neq.
///
/// The non-equivalent method stores all quantities of a pixel. The four-point family
/// stores only the fraction a and the thickness. Its share of the first reference is a,
/// its share of the second reference is 1 - a, its total dMut is the thickness, and its
/// valence is calculated from a. All other quantities are 0.
class MapQuantity
{
public:
    /// @param result  must neither change nor be destroyed while the quantity is used
    /// @param mix     converts a fraction to a valence; four-point family only
    /// @param kind    column 0 to 12; with any other number all values are 0
    MapQuantity(const A2DData& result, const ValenceMix& mix, int kind)
        : m_rows(result.rows)
        , m_width(result.xNum)
        , m_extended(result.extended)
        , m_mix(mix)
        , m_kind(kind)
    {
    }

    /// The value of the pixel at @p index of the result's rows; 0.0 if there is no such
    /// pixel, or if its value list is too short. The function is inline because loops over
    /// the pixels call it.
    double at(qint64 index) const
    {
        const auto position =
            static_cast<std::size_t>(index); // a negative index becomes larger than any size
        if (position >= m_rows.size()) {
            return 0.0;
        }
        const A2DRow& row = m_rows[position];
        if (!m_extended) {
            return fourPointsValue(row);
        }
        return m_kind >= 0 && m_kind < row.values.size() ? row.values.at(m_kind) : 0.0;
    }

    /// The value of the pixel at index y * width + x. The coordinates are not checked:
    /// outside the map, the pixel at this index is used if it exists.
    double at(int x, int y) const { return at(qint64{y} * m_width + x); }

private:
    double fourPointsValue(const A2DRow& row) const
    {
        switch (m_kind) {
        case neq::share:
            return row.intensity;
        case neq::share + 1:
            return 1.0 - row.intensity;
        case neq::valence:
            return m_mix(row.intensity);
        case neq::totalDMut:
            return row.i0;
        default:
            return 0.0;
        }
    }

    std::span<const A2DRow> m_rows;
    int m_width;
    bool m_extended;
    ValenceMix m_mix;
    int m_kind;
};

} // namespace analysis
