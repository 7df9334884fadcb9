#include "data/ValueBlocks.h"

#include <algorithm>
#include <utility>

namespace data
{

void ValueBlocks::keepFirst(std::size_t count)
{
    m_blocks.resize(std::min(m_blocks.size(), count));
}

void ValueBlocks::forget(std::size_t index)
{
    if (index < m_blocks.size()) {
        m_blocks[index] = {};
    }
}

double* ValueBlocks::share(std::size_t index, A2DRow* rows, int count, int length)
{
    if (m_blocks.size() <= index) {
        m_blocks.resize(index + 1);
    }
    Memory& memory = m_blocks[index];
    if (isFree(memory, rows, count, length)) {
        return memory.data();
    }
    const qsizetype size = qsizetype{count} * length;
    memory = Memory(QTypedArrayData<double>::allocate(size), size);
    Q_CHECK_PTR(memory.data());
    for (int i = 0; i < count; ++i) {
        Memory list = memory; // one owner more
        list.setBegin(list.data() + qsizetype{length} * i);
        list.size = length;
        rows[i].values = QList<double>(std::move(list));
    }
    return memory.data();
}

/// Whether @p rows have the block to themselves: each its list there, and no list
/// anywhere else.
bool ValueBlocks::isFree(Memory& memory, const A2DRow* rows, int count, int length)
{
    const auto* const header = memory.d_ptr();
    if (header == nullptr || header->ref_.loadRelaxed() != count + 1) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        const QList<double>& list = rows[i].values;
        if (list.constData() != memory.data() + qsizetype{length} * i || list.size() != length) {
            return false;
        }
    }
    return true;
}

} // namespace data
