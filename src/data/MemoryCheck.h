// Checks that memory is available before it is needed, since a failed allocation would
// end the program: no code catches std::bad_alloc.
#pragma once

#include <QList>
#include <QtGlobal>
#include <QtMath>

class QIODevice;

namespace data
{

/// Whether a block of @p bytes bytes can be allocated now. Always true in a build with
/// AddressSanitizer.
bool canAllocate(qint64 bytes);

/// Upper bound of the memory, in bytes, that reading a text needs in addition to the
/// pixels or points that are kept: copies of a line before and after decoding, its
/// words, the comment lines, and a reserve for the windows that show the data.
/// The bound grows with the size of the file up to a maximum, which is also used for a
/// sequential device.
qint64 memoryToRead(const QIODevice& device);

/// Whether @p list can grow by @p more elements while @p bytesToReserve bytes remain
/// available.
///
/// QList rounds its memory up to a power of two. A list that is not shared needs no
/// second copy while it grows, because a large block is moved by remapping its pages.
template <typename T>
bool canGrow(const QList<T>& list, qsizetype more, qint64 bytesToReserve)
{
    const qsizetype needed = list.size() + more;
    const qsizetype owned = list.isDetached() ? list.capacity() : 0;
    if (owned >= needed) {
        return true;
    }
    constexpr qint64 size = sizeof(T);
    const auto grown = static_cast<qint64>(qNextPowerOfTwo(static_cast<quint64>(needed * size)));
    return canAllocate(grown - owned * size + bytesToReserve);
}

} // namespace data
