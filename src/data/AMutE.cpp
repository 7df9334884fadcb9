#include "data/AMutE.h"

#include "data/MemoryCheck.h"
#include "data/ReadBounds.h"

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

const char* AMutE::appendPoint(const MutPoint& point, qint64 besides)
{
    if (points.size() >= data::maxSpectrumPoints) {
        return "more points than a spectrum may have";
    }
    if (!data::canGrow(points, 1, besides)) {
        return "no memory for its points";
    }
    points.append(point);
    widen(point.angle, &minAngle, &maxAngle);
    widen(point.energy, &minEnergy, &maxEnergy);
    widen(point.mut, &minMut, &maxMut);
    return nullptr;
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
