#include "data/ValueBlocks.h"

#include <algorithm>
#include <span>
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

std::span<double> ValueBlocks::share(std::size_t index, std::span<A2DRow> rows, int length)
{
    if (m_blocks.size() <= index) {
        m_blocks.resize(index + 1);
    }
    Memory& memory = m_blocks[index];
    const auto size = static_cast<qsizetype>(rows.size()) * length;
    const auto values = [&] { return std::span(memory.data(), static_cast<std::size_t>(size)); };
    if (isReusable(memory, rows, length)) {
        return values();
    }
    memory = Memory(QTypedArrayData<double>::allocate(size), size);
    Q_CHECK_PTR(memory.data());
    double* begin = memory.data();
    for (A2DRow& row : rows) {
        Memory list = memory; // increments the reference count
        list.setBegin(begin);
        list.size = length;
        row.values = QList<double>(std::move(list));
        begin += length;
    }
    return values();
}

/// Whether the block is used by the lists of @p rows, in their order, and by no other
/// list.
bool ValueBlocks::isReusable(Memory& memory, std::span<const A2DRow> rows, int length)
{
    const auto* const header = memory.d_ptr();
    if (header == nullptr || std::cmp_not_equal(header->ref_.loadRelaxed(), rows.size() + 1)) {
        return false;
    }
    const double* begin = memory.data();
    for (const A2DRow& row : rows) {
        if (row.values.constData() != begin || row.values.size() != length) {
            return false;
        }
        begin += length;
    }
    return true;
}

} // namespace data
