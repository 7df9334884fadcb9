// A short run of the benchmarks that only shows that they work.
#pragma once

#include <cstdlib>

namespace bench
{

/// Whether AELK_BENCH_SHORTEST is set in the environment. Each benchmark then runs once
/// on little data, and its times mean nothing.
inline bool isShortest()
{
    return std::getenv("AELK_BENCH_SHORTEST") != nullptr;
}

/// The amount of data of a benchmark: @p shortest in a short run, otherwise @p usual.
inline int amount(int usual, int shortest)
{
    return isShortest() ? shortest : usual;
}

} // namespace bench
