#include "support/Memory.h"

#include <algorithm>

// In place of data::canAllocate(qint64): the linker turns the calls to here. The name is
// the one that it has there.
extern "C" bool __wrap__ZN4data11canAllocateEx(qint64 bytes)
{
    fuzz::mostAsked = std::max(fuzz::mostAsked, bytes);
    return bytes <= fuzz::freeMemory;
}
