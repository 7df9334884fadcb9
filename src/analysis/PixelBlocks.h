// The loop over the pixels of a map calculation, in blocks of pixels.
//
// Working in blocks does not change the results: no pixel depends on another, and the
// order of operations within a pixel is unchanged.
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

/// Number of pixels of @p base by its size: xNum * yNum, or 0 if xNum or yNum is 0 or less.
/// The list of rows can be longer or shorter.
inline qsizetype pixelCount(const A2DData& base)
{
    return base.xNum > 0 && base.yNum > 0 ? qsizetype{base.xNum} * base.yNum : 0;
}

/// Copies the size and the comment lines of @p base to @p result, and makes one A2DRow
/// per pixel. The memory of an earlier result is reused where possible, so the fields of
/// the rows have arbitrary values; the caller sets them.
/// @return the rows of @p result, row-major
std::span<A2DRow> startResult(A2DData& result, const A2DData& base);

/// Copies x and y to @p rows from the rows of @p base, starting at index @p first of @p base.
/// Sets x and y to 0.0 where @p base has no row.
void copyCoordinates(const A2DData& base, qint64 first, std::span<A2DRow> rows);

/// Reads the absorbances of a stack of maps in blocks of pixels of a base map.
///
/// The values equal the results of pixelMut(): in each map, pixel (x, y) is row y * xNum + x
/// with xNum of this map, and pixels outside its rows have the value data::absorbanceOutside.
class StackBlocks
{
public:
    /// @param maps   must not contain null pointers; must outlive this object
    /// @param cache  absorbances of some or all of @p maps; read() calculates those of
    ///               the other maps. Must outlive this object.
    /// @param base   its width is the number of pixels per image line
    StackBlocks(const QList<const A2DData*>& maps, const data::AbsorbanceCache& cache,
                const A2DData& base);

    /// Reads @p count pixels, at most blockPixels, from index @p first (row-major).
    void read(qint64 first, int count);

    /// One view for each map: the absorbances from the latest read(). If that read() got fewer
    /// than blockPixels pixels, the remaining numbers of a view are unspecified. The span
    /// remains valid, but each read() replaces its views.
    std::span<const BlockView> values() const { return m_values; }

private:
    struct Source {
        std::span<const double> absorbance; ///< one per row of the map; empty if not cached
        std::span<const A2DRow> rows;
        qint64 width;
    };

    void copy(const Source& source, qint64 first, int count, Block& block) const;

    qint64 m_width;
    std::vector<Source> m_sources;
    std::vector<Block> m_blocks;
    std::vector<BlockView> m_values;
};

/// A block of pixels in calculateBlocks().
struct PixelBlock {
    std::size_t index;                      ///< number of the block, from 0
    std::span<A2DRow> rows;                 ///< rows of the result; x and y are set
    std::span<const BlockView> absorbances; ///< one block per map, see StackBlocks::values()

    /// Number of pixels, at most blockPixels.
    int count() const { return static_cast<int>(rows.size()); }
};

/// Fills @p result with one A2DRow per pixel of @p base, row-major. No pixel is skipped.
/// The result gets the size and the comment lines of @p base.
///
/// @param maps,cache  see StackBlocks
/// @param fill        called as fill(block) for each PixelBlock in order; sets all fields
///                    of its rows except x and y
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

/// Number of blocks of a result with the size of @p base.
inline std::size_t blockCount(const A2DData& base)
{
    return static_cast<std::size_t>((pixelCount(base) + blockPixels - 1) / blockPixels);
}

} // namespace analysis
