// Bitwise comparison of doubles.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace tests
{

/// Whether both numbers have the same bits, so 0.0 and -0.0 differ. Any two NaNs are
/// equal.
inline bool sameDouble(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace tests
