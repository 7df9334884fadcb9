// The pixels of a map calculation, block by block.
//
// Blocks may take the place of the loop over single pixels because no pixel's
// result depends on another one. Within a pixel nothing is done in another order.
#pragma once

#include "analysis/Lanes.h"
#include "data/A2DData.h"
#include "data/AbsorbanceCache.h"

#include <QList>

#include <algorithm>
#include <span>
#include <vector>

namespace analysis
{

/// The pixels that @p base claims; none where a side is 0 or less.
inline qsizetype pixelCount(const A2DData& base)
{
    return base.xNum > 0 && base.yNum > 0 ? qsizetype{base.xNum} * base.yNum : 0;
}

/// Gives @p result the size and the comment lines of @p base and a row for each
/// of its pixels, in scan order. The fields of the rows are left to the caller,
/// who finds there what an earlier result had: its memory is used again where
/// nobody shares it.
/// @return the rows
std::span<A2DRow> startResult(A2DData& result, const A2DData& base);

/// Gives @p rows, the pixels of a result from @p first on, x and y of the rows of
/// @p base at this place, or 0.0 where it has none.
void copyCoordinates(const A2DData& base, qint64 first, std::span<A2DRow> rows);

/// The absorbances of a stack of maps at the pixels of a base map, as pixelMut()
/// gives them: each map with its own width.
class StackBlocks
{
public:
    /// @param cache  has the absorbance of some of @p maps, that of the others is
    ///               calculated where it is asked for; like them, must outlive this
    /// @param base   its width and height place the pixels
    StackBlocks(const QList<const A2DData*>& maps, const data::AbsorbanceCache& cache,
                const A2DData& base);

    /// Reads the pixels from @p first on (index in scan order), @p count of them,
    /// at most blockPixels.
    void read(qint64 first, int count);

    /// For each map the block that was read last; numbers behind its pixels mean
    /// nothing.
    std::span<const BlockView> values() const { return m_values; }

private:
    struct Source {
        std::span<const double> absorbance; ///< of all rows; empty where it is not kept
        std::span<const A2DRow> rows;
        qint64 width;
    };

    void copy(const Source& source, qint64 first, int count, Block& block) const;

    qint64 m_width;
    std::vector<Source> m_sources;
    std::vector<Block> m_blocks;
    std::vector<BlockView> m_values;
};

/// A block of a calculation.
struct PixelBlock {
    std::size_t index;                      ///< in scan order
    std::span<A2DRow> rows;                 ///< of the result; they have x and y
    std::span<const BlockView> absorbances; ///< of the maps, as of StackBlocks

    /// Pixels, at most blockPixels.
    int count() const { return static_cast<int>(rows.size()); }
};

/// Makes @p result, one row for each pixel of @p base, in scan order, with the size
/// and the comment lines of @p base. No pixel is skipped.
///
/// @param cache  as of StackBlocks
/// @param fill   called as fill(block) for each PixelBlock, to set the fields of its
///               rows beside x and y
template <class Fill>
void calculateBlocks(const QList<const A2DData*>& maps, const data::AbsorbanceCache& cache,
                     const A2DData& base, A2DData& result, Fill fill)
{
    const std::span<A2DRow> rows = startResult(result, base);
    StackBlocks stack(maps, cache, base);
    PixelBlock block{0, {}, stack.values()};
    for (std::size_t first = 0; first < rows.size(); first += blockPixels) {
        block.rows = rows.subspan(first, std::min<std::size_t>(blockPixels, rows.size() - first));
        copyCoordinates(base, static_cast<qint64>(first), block.rows);
        stack.read(static_cast<qint64>(first), block.count());
        fill(block);
        ++block.index;
    }
}

/// Blocks of a result with the size of @p base.
inline std::size_t blockCount(const A2DData& base)
{
    return static_cast<std::size_t>((pixelCount(base) + blockPixels - 1) / blockPixels);
}

} // namespace analysis
