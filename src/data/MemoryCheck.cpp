#include "data/MemoryCheck.h"

#include <QIODevice>

#include <algorithm>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

namespace data
{

bool canAllocate([[maybe_unused]] qint64 bytes)
{
#ifdef __SANITIZE_ADDRESS__
    // Its allocator ends the process where others fail, and takes as long for a large
    // block as the reading of many files.
    return true;
#else
    // Volatile, so that the compiler leaves the pair of calls alone.
    void* volatile memory = ::operator new(static_cast<std::size_t>(bytes), std::nothrow);
    ::operator delete(memory);
    return memory != nullptr;
#endif
}

qint64 memoryToRead(const QIODevice& device)
{
    constexpr qint64 mebibyte = 1024 * 1024;
    constexpr qint64 windows = 32 * mebibyte;
    // A line at the bound takes 300 MiB when it is all words, and comment lines at
    // theirs 130 MiB.
    constexpr qint64 mostForText = 448 * mebibyte;
    constexpr qint64 forEachByte = 16;
    if (device.isSequential() || device.size() > mostForText / forEachByte) {
        return windows + mostForText;
    }
    return windows + forEachByte * device.size();
}

} // namespace data
