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
    // The allocator of AddressSanitizer ends the process instead of returning null, and is
    // very slow for large blocks.
    return true;
#else
    // volatile prevents the compiler from removing the pair of new and delete.
    void* volatile memory = ::operator new(static_cast<std::size_t>(bytes), std::nothrow);
    ::operator delete(memory);
    return memory != nullptr;
#endif
}

qint64 memoryToRead(const QIODevice& device)
{
    constexpr qint64 mebibyte = 1024 * 1024;
    constexpr qint64 forWindows = 32 * mebibyte;
    // A line of the maximum length needs 300 MiB if it consists of short words, and
    // comment lines of the maximum total size need 130 MiB: together less than 448 MiB.
    constexpr qint64 maxForText = 448 * mebibyte;
    constexpr qint64 perFileByte = 16;
    if (device.isSequential() || device.size() > maxForText / perFileByte) {
        return forWindows + maxForText;
    }
    return forWindows + perFileByte * device.size();
}

} // namespace data
