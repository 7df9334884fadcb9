// Memory allocated by the process, and how much AddressSanitizer slows it down.
#pragma once

#ifdef __SANITIZE_ADDRESS__
#define AELK_WITH_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define AELK_WITH_ADDRESS_SANITIZER
#endif
#endif

#ifdef AELK_WITH_ADDRESS_SANITIZER
#include <cstddef>
// Declared here because not every compiler ships the sanitizer's header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

namespace tests
{

/// The number of bytes that are allocated and not yet freed.
inline double allocatedBytes()
{
#ifdef AELK_WITH_ADDRESS_SANITIZER
    return static_cast<double>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
#endif
}

/// Approximate factor by which AddressSanitizer slows the process down; 1 without
/// AddressSanitizer.
#ifdef AELK_WITH_ADDRESS_SANITIZER
inline constexpr double slowness = 4.0;
#else
inline constexpr double slowness = 1.0;
#endif

} // namespace tests
