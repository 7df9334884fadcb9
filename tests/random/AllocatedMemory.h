// How much memory the process has in use.
#pragma once

#ifdef __SANITIZE_ADDRESS__
#define AELK_ASKS_THE_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define AELK_ASKS_THE_SANITIZER
#endif
#endif

#ifdef AELK_ASKS_THE_SANITIZER
#include <cstddef>
// Of the sanitizer; not every compiler brings its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

namespace tests
{

/// Bytes that are allocated and not freed.
inline double allocatedBytes()
{
#ifdef AELK_ASKS_THE_SANITIZER
    return static_cast<double>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
#endif
}

/// How many times slower than usual the process may be.
#ifdef AELK_ASKS_THE_SANITIZER
inline constexpr double slowness = 4.0;
#else
inline constexpr double slowness = 1.0;
#endif

} // namespace tests
