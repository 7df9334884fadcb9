#include "analysis/WorkEstimate.h"

namespace analysis
{

namespace
{

// About five times what bench/ measures: one value of a pixel in the slowest
// method, and one point of a spectrum in a change of the edge, which repeats the
// linear combination fit once for each reference.
constexpr double secondsPerValue = 250e-9;
constexpr double secondsPerPoint = 5e-6;

constexpr double longSeconds = 0.1;

} // namespace

bool mayTakeLong(const Work& work)
{
    return work.pixels * work.rows * secondsPerValue + work.points * secondsPerPoint >= longSeconds;
}

} // namespace analysis
