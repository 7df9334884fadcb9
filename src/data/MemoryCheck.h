// Asks for memory before it is needed: nothing catches an allocation that fails.
#pragma once

#include <QList>
#include <QtGlobal>
#include <QtMath>

class QIODevice;

namespace data
{

/// Whether @p bytes more can be allocated now.
bool canAllocate(qint64 bytes);

/// What the reading of a text takes at most besides the rows or points that are
/// kept: a line in its several forms, its words, the comment lines; and a little for
/// the windows that show what was read. Bytes; in proportion to the file as long as
/// that is small.
qint64 memoryToRead(const QIODevice& device);

/// Whether @p list can grow by @p more elements, with @p besides bytes left. The
/// toolkit takes a power of two for it, and moves large blocks of memory by their
/// pages, without a second copy, while nobody shares the list.
template <typename T>
bool canGrow(const QList<T>& list, qsizetype more, qint64 besides)
{
    const qsizetype needed = list.size() + more;
    const qsizetype owned = list.isDetached() ? list.capacity() : 0;
    if (owned >= needed) {
        return true;
    }
    constexpr qint64 size = sizeof(T);
    const auto grown = static_cast<qint64>(qNextPowerOfTwo(static_cast<quint64>(needed * size)));
    return canAllocate(grown - owned * size + besides);
}

} // namespace data
