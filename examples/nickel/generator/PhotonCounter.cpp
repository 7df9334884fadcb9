#include "PhotonCounter.h"

#include <algorithm>
#include <cmath>

namespace nickel
{

std::int64_t PhotonCounter::count(double mean)
{
    return std::max<std::int64_t>(std::llround(mean + std::sqrt(mean) * normal()), 1);
}

/// A uniformly distributed number in [-1, 1), from the upper 53 bits of one output of the
/// random engine.
double PhotonCounter::uniform()
{
    return std::ldexp(static_cast<double>(engine() >> 11U), -52) - 1.0;
}

/// A standard normal number by the polar method (Marsaglia and Bray, SIAM Review 6, 260,
/// 1964). The method generates two numbers at a time; the second number is stored for the
/// next call.
double PhotonCounter::normal()
{
    if (hasStored) {
        hasStored = false;
        return stored;
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
    stored = v * factor;
    hasStored = true;
    return u * factor;
}

} // namespace nickel
