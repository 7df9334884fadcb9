#include "analysis/PixelBlocks.h"

#include "data/VectorRegisters.h"

#include <algorithm>

namespace analysis
{

std::span<A2DRow> startResult(A2DData& result, const A2DData& base)
{
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    result.headerLines = base.headerLines;
    const qsizetype pixels = pixelCount(base);
    // Memory is reused only if it is unshared and of a suitable size: a shared or too small
    // list would be copied, and the list of a much larger map would waste memory.
    const qsizetype capacity = result.rows.capacity();
    if (!result.rows.isDetached() || capacity < pixels || capacity / 2 > pixels) {
        result.rows = {};
    }
    result.rows.reserve(pixels);
    result.rows.resize(pixels);
    // Prevents slow AVX-SSE transitions in a calculation after a paint.
    data::clearUpperVectorHalves();
    return result.rows;
}

void copyCoordinates(const A2DData& base, qint64 first, std::span<A2DRow> rows)
{
    const auto begin = static_cast<std::size_t>(std::min<qint64>(first, base.rows.size()));
    const auto from = std::span<const A2DRow>(base.rows).subspan(begin);
    const std::size_t known = std::min(from.size(), rows.size());
    for (std::size_t i = 0; i < known; ++i) {
        rows[i].x = from[i].x;
        rows[i].y = from[i].y;
    }
    for (A2DRow& row : rows.subspan(known)) {
        row.x = 0.0;
        row.y = 0.0;
    }
}

StackBlocks::StackBlocks(const QList<const A2DData*>& maps, const data::AbsorbanceCache& cache,
                         const A2DData& base)
    : m_width(base.xNum)
    , m_blocks(static_cast<std::size_t>(maps.size()))
    , m_values(m_blocks.begin(), m_blocks.end())
{
    for (const A2DData* map : maps) {
        m_sources.push_back({cache.of(*map), map->rows, map->xNum});
    }
}

void StackBlocks::read(qint64 first, int count)
{
    for (std::size_t k = 0; k < m_sources.size(); ++k) {
        const Source& source = m_sources[k];
        if (source.width == m_width &&
            first + blockPixels <= static_cast<qint64>(source.absorbance.size())) {
            m_values[k] = source.absorbance.subspan(static_cast<std::size_t>(first))
                              .first<std::size_t{blockPixels}>();
        } else {
            copy(source, first, count, m_blocks[k]);
            m_values[k] = m_blocks[k];
        }
    }
}

/// Copies one image line at a time, because the width of the map can differ from the
/// width of the base map.
void StackBlocks::copy(const Source& source, qint64 first, int count, Block& block) const
{
    block.fill(data::absorbanceOutside);
    const qint64 end = first + count;
    for (qint64 at = first; at < end;) {
        const qint64 y = at / m_width;
        const qint64 pieceEnd = std::min(end, (y + 1) * m_width);
        const qint64 shift = y * source.width - y * m_width;
        const qint64 from = std::clamp(qint64{0}, at + shift, pieceEnd + shift);
        const qint64 to = std::clamp(static_cast<qint64>(source.rows.size()), from,
                                     std::max(from, pieceEnd + shift));
        for (qint64 i = from; i < to; ++i) {
            const auto row = static_cast<std::size_t>(i);
            block[static_cast<std::size_t>(i - shift - first)] =
                source.absorbance.empty() ? data::absorbance(source.rows[row])
                                          : source.absorbance[row];
        }
        at = pieceEnd;
    }
}

} // namespace analysis
