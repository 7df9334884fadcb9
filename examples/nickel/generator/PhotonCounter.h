// Counting noise that is reproducible with every compiler and library.
#pragma once

#include <cstdint>
#include <random>

namespace nickel
{

/// Draws photon counts from a seed. The C++ standard specifies the engine but not the
/// algorithms of the distributions, so the normal numbers are generated here.
class PhotonCounter
{
public:
    explicit PhotonCounter(std::uint64_t seed)
        : engine(seed)
    {
    }

    /// A Poisson number of mean @p mean by the normal approximation; at least 1. The
    /// sample's means are above 10^4, where the two distributions differ by less than a
    /// hundredth of their width.
    std::int64_t count(double mean);

private:
    double uniform();
    double normal();

    std::mt19937_64 engine;
    double stored = 0.0;
    bool hasStored = false;
};

} // namespace nickel
