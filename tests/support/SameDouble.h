// Exact comparison of doubles, NaN and the sign of zero included.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tests
{

/// Whether both have the same bits; all NaN count as the same.
inline bool sameDouble(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace tests
