#include "PhotonCounter.h"

#include <algorithm>
#include <cmath>

namespace nickel
{

std::int64_t PhotonCounter::count(double mean)
{
    return std::max<std::int64_t>(std::llround(mean + std::sqrt(mean) * normal()), 1);
}

/// In [-1, 1), from the upper 53 bits of one draw.
double PhotonCounter::uniform()
{
    return std::ldexp(static_cast<double>(engine() >> 11U), -52) - 1.0;
}

/// Standard normal number by Marsaglia's polar method (SIAM Review 6, 260,
/// 1964), which makes two at a time.
double PhotonCounter::normal()
{
    if (hasSpare) {
        hasSpare = false;
        return spare;
    }
    double u = 0.0;
    double v = 0.0;
    double square = 0.0;
    do {
        u = uniform();
        v = uniform();
        square = u * u + v * v;
    } while (square >= 1.0 || square == 0.0);
    const double factor = std::sqrt(-2.0 * std::log(square) / square);
    spare = v * factor;
    hasSpare = true;
    return u * factor;
}

} // namespace nickel
