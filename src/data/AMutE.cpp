#include "data/AMutE.h"

namespace
{

// Strict comparisons: a NaN changes no extreme.
void widen(double value, double* min, double* max)
{
    if (value < *min) {
        *min = value;
    }
    if (value > *max) {
        *max = value;
    }
}

} // namespace

void AMutE::beginRead()
{
    constexpr double beyondAll = 1e300;
    points.clear();
    valid = false;
    minAngle = minEnergy = minMut = beyondAll;
    maxAngle = maxEnergy = maxMut = -beyondAll;
}

void AMutE::appendPoint(const MutPoint& point)
{
    points.append(point);
    widen(point.angle, &minAngle, &maxAngle);
    widen(point.energy, &minEnergy, &maxEnergy);
    widen(point.mut, &minMut, &maxMut);
}

bool AMutE::finishRead()
{
    if (points.isEmpty()) {
        return false;
    }
    valid = true;
    fitLines();
    return true;
}
