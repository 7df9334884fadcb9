// Shared memory blocks for the value lists of result pixels.
#pragma once

#include "data/A2DData.h"

#include <QArrayDataPointer>

#include <span>
#include <vector>

namespace data
{

/// Allocates the value lists of many result pixels in a few blocks of memory, and
/// reuses a block for the next result if possible. This saves one allocation per pixel.
///
/// Many lists can share a block because a QList counts the references to its memory and
/// need not start at the beginning of it. A copy of a list keeps its block in memory and
/// unchanged; code that writes to a list gets a new allocation for the list.
///
/// Such a list is made with QArrayDataPointer and the QList constructor for it, which are
/// public in Qt's headers but not documented. This works with Qt 6.4; tst_ValueBlocks
/// tests it. Run that test with a new version of Qt.
class ValueBlocks
{
public:
    /// Releases all blocks from index @p count on. Existing lists keep their values.
    void keepFirst(std::size_t count);

    /// Releases block @p index. Existing lists keep their values.
    void forget(std::size_t index);

    /// Sets the value list of each of @p rows to a list of @p length values in block
    /// @p index. If the block is already used by exactly these lists, in the order of the
    /// rows, and by no copies of them, its memory is reused.
    ///
    /// @param rows    at least one. Keep a block small: a write to one list can
    ///                allocate as much memory as the whole block
    /// @param length  above 0
    /// @return the values of all rows, row by row. Fill them before a list is read or
    ///         copied
    std::span<double> share(std::size_t index, std::span<A2DRow> rows, int length);

private:
    using Memory = QArrayDataPointer<double>;

    static bool isReusable(Memory& memory, std::span<const A2DRow> rows, int length);

    std::vector<Memory> m_blocks;
};

} // namespace data
