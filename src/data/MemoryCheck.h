// Asks for memory before it is needed: nothing catches an allocation that fails.
#pragma once

#include <QList>
#include <QtGlobal>
#include <QtMath>

namespace data
{

/// Left free by every read: for its lines and buffers, and for the windows that
/// show what was read.
inline constexpr qint64 memoryLeftFree = qint64{128} * 1024 * 1024;

/// Whether @p bytes more and memoryLeftFree can be allocated now.
bool canAllocate(qint64 bytes);

/// Whether @p list can grow by @p more elements. The toolkit takes a power of two
/// for it, and moves large blocks of memory by their pages, without a second copy,
/// while nobody shares the list.
template <typename T>
bool canGrow(const QList<T>& list, qsizetype more)
{
    const qsizetype needed = list.size() + more;
    const qsizetype owned = list.isDetached() ? list.capacity() : 0;
    if (owned >= needed) {
        return true;
    }
    constexpr qint64 size = sizeof(T);
    const auto grown = static_cast<qint64>(qNextPowerOfTwo(static_cast<quint64>(needed * size)));
    return canAllocate(grown - owned * size);
}

} // namespace data
