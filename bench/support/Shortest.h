// A run of the benchmarks that shows that they work, in the least time.
#pragma once

#include <cstdlib>

namespace bench
{

/// Whether AELK_BENCH_SHORTEST is in the environment: each benchmark then runs once,
/// and its times mean nothing.
inline bool isShortest()
{
    return std::getenv("AELK_BENCH_SHORTEST") != nullptr;
}

/// How much of something a benchmark works on: @p usual, or @p shortest in such a run.
inline int amount(int usual, int shortest)
{
    return isShortest() ? shortest : usual;
}

} // namespace bench
