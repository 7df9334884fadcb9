// The short run of the benchmarks, which only checks that they work.
#pragma once

#include <cstdlib>

namespace bench
{

/// Whether the environment variable AELK_BENCH_SHORTEST is set. Most benchmarks then do
/// less work, so the printed times are meaningless.
inline bool isShortest()
{
    return std::getenv("AELK_BENCH_SHORTEST") != nullptr;
}

/// The amount of data of a benchmark: @p shortest in the short run, otherwise @p usual.
inline int amount(int usual, int shortest)
{
    return isShortest() ? shortest : usual;
}

} // namespace bench
