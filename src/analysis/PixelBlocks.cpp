#include "analysis/PixelBlocks.h"

#include "data/VectorRegisters.h"

#include <algorithm>

namespace analysis
{

A2DRow* startResult(A2DData& result, const A2DData& base)
{
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    result.headerLines = base.headerLines;
    const qsizetype pixels = pixelCount(base);
    // Rows that are shared or too few would be copied, and those of a much larger
    // map keep too much memory.
    const qsizetype capacity = result.rows.capacity();
    if (!result.rows.isDetached() || capacity < pixels || capacity / 2 > pixels) {
        result.rows = {};
    }
    result.rows.reserve(pixels);
    result.rows.resize(pixels);
    data::cleanVectorRegisters(); // a paint may have come before
    return result.rows.data();
}

void copyCoordinates(const A2DData& base, qint64 first, int count, A2DRow* rows)
{
    const auto known =
        static_cast<int>(std::clamp<qint64>(base.rows.size() - first, 0, qint64{count}));
    for (int i = 0; i < known; ++i) {
        const A2DRow& from = base.rows.at(first + i);
        rows[i].x = from.x;
        rows[i].y = from.y;
    }
    for (int i = known; i < count; ++i) {
        rows[i].x = 0.0;
        rows[i].y = 0.0;
    }
}

StackBlocks::StackBlocks(const QList<const A2DData*>& maps, const data::AbsorbanceCache& cache,
                         const A2DData& base)
    : m_width(base.xNum)
    , m_blocks(static_cast<std::size_t>(maps.size()))
    , m_values(static_cast<std::size_t>(maps.size()))
{
    for (const A2DData* map : maps) {
        m_sources.push_back({cache.of(*map), map->rows.constData(), map->rows.size(), map->xNum});
    }
}

void StackBlocks::read(qint64 first, int count)
{
    for (std::size_t k = 0; k < m_sources.size(); ++k) {
        const Source& source = m_sources[k];
        if (source.absorbance != nullptr && source.width == m_width &&
            first + blockPixels <= source.size) {
            m_values[k] = source.absorbance + first;
        } else {
            copy(source, first, count, m_blocks[k]);
            m_values[k] = m_blocks[k].data();
        }
    }
}

/// In pieces of one line each, since the map may have a width of its own.
void StackBlocks::copy(const Source& source, qint64 first, int count, Block& block) const
{
    block.fill(data::absorbanceOutside);
    const qint64 end = first + count;
    for (qint64 at = first; at < end;) {
        const qint64 y = at / m_width;
        const qint64 pieceEnd = std::min(end, (y + 1) * m_width);
        const qint64 toSource = y * source.width - y * m_width;
        const qint64 from = std::clamp(qint64{0}, at + toSource, pieceEnd + toSource);
        const qint64 to = std::clamp(source.size, from, std::max(from, pieceEnd + toSource));
        for (qint64 i = from; i < to; ++i) {
            block[static_cast<std::size_t>(i - toSource - first)] =
                source.absorbance != nullptr ? source.absorbance[i]
                                             : data::absorbance(source.rows[i]);
        }
        at = pieceEnd;
    }
}

} // namespace analysis
