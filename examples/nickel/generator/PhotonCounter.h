// Generates counting noise without the distributions of the standard library.
#pragma once

#include <cstdint>
#include <random>

namespace nickel
{

/// Draws random photon counts. The C++ standard specifies the random engine exactly, but
/// not the algorithms of the distributions, so this class generates normally
/// distributed numbers itself, with the polar method.
class PhotonCounter
{
public:
    explicit PhotonCounter(std::uint64_t seed)
        : engine(seed)
    {
    }

    /// A Poisson-distributed number with the mean @p mean, by the normal approximation; at
    /// least 1. The means in the sample are above 10^4, so the skewness of the Poisson
    /// distribution, 1 / sqrt(mean), is below 0.01 and the approximation is sufficient.
    std::int64_t count(double mean);

private:
    double uniform();
    double normal();

    std::mt19937_64 engine;
    double stored = 0.0;
    bool hasStored = false;
};

} // namespace nickel
