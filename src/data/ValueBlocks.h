// The memory of the lists of values in a result's rows.
#pragma once

#include "data/A2DData.h"

#include <QArrayDataPointer>

#include <span>
#include <vector>

namespace data
{

/// Gives the rows of a result their lists of values as views on a few blocks of
/// memory, and fills the same blocks again for the next result.
///
/// A block may replace the memory of many lists because a list of the toolkit counts
/// the owners of its memory and need not begin where that begins. A copy of a list
/// keeps its block alive and unchanged, and whoever writes to a list gets memory of
/// his own for it.
///
/// To make such a list takes QArrayDataPointer and the list's constructor from it:
/// public in the toolkit's headers, but not documented. Checked with Qt 6.4, where
/// tst_ValueBlocks tries each operation of a list on them; run it with a new version.
class ValueBlocks
{
public:
    /// Forgets all blocks from @p count on; their lists stay.
    void keepFirst(std::size_t count);

    /// Forgets block @p index; its lists stay.
    void forget(std::size_t index);

    /// Gives each of @p rows a list of @p length values in block @p index. Lists
    /// that are there already, and that nobody else has a copy of, stay and are
    /// filled anew.
    ///
    /// @param rows    at least one. A write to one list allocates up to the whole
    ///                block again, so a block is better kept small.
    /// @param length  above 0
    /// @return the values of all rows, row by row. To be filled before a list is
    ///         read or copied
    std::span<double> share(std::size_t index, std::span<A2DRow> rows, int length);

private:
    using Memory = QArrayDataPointer<double>;

    static bool isFree(Memory& memory, std::span<const A2DRow> rows, int length);

    std::vector<Memory> m_blocks;
};

} // namespace data
