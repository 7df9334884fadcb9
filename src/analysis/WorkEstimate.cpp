#include "analysis/WorkEstimate.h"

namespace analysis
{

namespace
{

// About five times what the benchmarks in bench/ measure, as a margin for slow machines.
// secondsPerValue: one value of a pixel in the slowest method. secondsPerPoint: one point of
// a spectrum after a change of the edge, which repeats the linear combination fit once per
// reference.
constexpr double secondsPerValue = 250e-9;
constexpr double secondsPerPoint = 5e-6;

constexpr double longThresholdSeconds = 0.1;

} // namespace

bool mayTakeLong(const Work& work)
{
    return work.pixels * work.rows * secondsPerValue + work.points * secondsPerPoint >=
           longThresholdSeconds;
}

} // namespace analysis
