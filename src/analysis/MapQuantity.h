// One quantity of a result map, as the map view shows it.
#pragma once

#include "analysis/NeqPlaces.h"
#include "analysis/ValenceMix.h"
#include "data/A2DData.h"

#include <cstddef>
#include <span>

namespace analysis
{

/// Reads one of the thirteen quantities of a result map, pixel by pixel, by its
/// column in the result file.
///
/// The non-equivalent method stores them all. The four-points family stores two
/// numbers for each pixel: of its quantities the share of the first reference is
/// the fraction a, that of the second 1 - a, the amount the thickness, and the
/// valence follows from a; every other one reads 0.
class MapQuantity
{
public:
    /// @param result  must outlive the quantity
    /// @param mix     valence of a fraction
    /// @param kind    0 to 12; anything else reads 0 everywhere
    MapQuantity(const A2DData& result, const ValenceMix& mix, int kind)
        : m_rows(result.rows)
        , m_width(result.xNum)
        , m_extended(result.extended)
        , m_mix(mix)
        , m_kind(kind)
    {
    }

    /// The value of row @p index; 0.0 outside the rows, and where the row has
    /// fewer values. Inline, since a paint asks for every pixel.
    double at(qint64 index) const
    {
        const auto place = static_cast<std::size_t>(index); // past the rows if below 0
        if (place >= m_rows.size()) {
            return 0.0;
        }
        const A2DRow& row = m_rows[place];
        if (!m_extended) {
            return ofFraction(row);
        }
        return m_kind >= 0 && m_kind < row.values.size() ? row.values.at(m_kind) : 0.0;
    }

    /// The value of the pixel at (x, y), which is found by its position.
    double at(int x, int y) const { return at(qint64{y} * m_width + x); }

private:
    double ofFraction(const A2DRow& row) const
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
