#include "analysis/WorkEstimate.h"

namespace analysis
{

namespace
{

// About five times the values that bench/ measures. secondsPerValue is for one value of a
// pixel in the slowest method. secondsPerPoint is for one point of a spectrum when the edge
// changes, which repeats the linear combination fit once per reference.
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
