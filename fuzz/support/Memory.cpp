#include "support/Memory.h"

#include "data/MemoryCheck.h"

#include <algorithm>

// In place of the product's: the linker takes this one, since it comes first.
bool data::canAllocate(qint64 bytes)
{
    fuzz::mostAsked = std::max(fuzz::mostAsked, bytes);
    return bytes <= fuzz::freeMemory;
}
