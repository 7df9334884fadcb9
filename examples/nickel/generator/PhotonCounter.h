// Counting noise that is the same with every compiler and library.
#pragma once

#include <cstdint>
#include <random>

namespace nickel
{

/// Draws photon counts from a seed. The engine is fixed by the standard, its
/// distributions are not, so the normal numbers are made here.
class PhotonCounter
{
public:
    explicit PhotonCounter(std::uint64_t seed)
        : engine(seed)
    {
    }

    /// A Poisson count of mean @p mean by its normal approximation, never below
    /// 1. The sample's means are above 10^4, where the two laws differ by less
    /// than a hundredth of their width.
    std::int64_t count(double mean);

private:
    double uniform();
    double normal();

    std::mt19937_64 engine;
    double spare = 0.0;
    bool hasSpare = false;
};

} // namespace nickel
