#include "data/AMutE.h"

#include "data/Limits.h"
#include "data/MemoryCheck.h"
#include "data/ReadBounds.h"

void AMutE::beginRead()
{
    points.clear();
    valid = false;
    minAngle = minEnergy = minMut = data::emptyLimits.low;
    maxAngle = maxEnergy = maxMut = data::emptyLimits.high;
}

const char* AMutE::appendPoint(const MutPoint& point, qint64 bytesToReserve)
{
    if (points.size() >= data::maxSpectrumPoints) {
        return "more points than a spectrum may have";
    }
    if (!data::canGrow(points, 1, bytesToReserve)) {
        return "no memory for its points";
    }
    points.append(point);
    data::widen(point.angle, minAngle, maxAngle);
    data::widen(point.energy, minEnergy, maxEnergy);
    data::widen(point.mut, minMut, maxMut);
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
