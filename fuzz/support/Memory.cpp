#include "support/Memory.h"

#include <algorithm>

// Replaces data::canAllocate(qint64). The linker option --wrap redirects the calls of
// canAllocate() to this function, whose name must be "__wrap_" followed by the mangled name
// of canAllocate().
extern "C" bool __wrap__ZN4data11canAllocateEx(qint64 bytes)
{
    fuzz::peakRequest = std::max(fuzz::peakRequest, bytes);
    return bytes <= fuzz::freeMemory;
}
