#include "data/MemoryCheck.h"

#include <new>

bool data::canAllocate(qint64 bytes)
{
    // Volatile, so that the compiler leaves the pair of calls alone.
    void* volatile memory =
        ::operator new(static_cast<std::size_t>(bytes + memoryLeftFree), std::nothrow);
    ::operator delete(memory);
    return memory != nullptr;
}
