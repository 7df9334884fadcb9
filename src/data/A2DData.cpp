#include "data/A2DData.h"

#include <algorithm>

namespace data
{

bool isSizeTooLarge(qint64 width, qint64 height)
{
    const qint64 columns = std::max<qint64>(width, 1);
    const qint64 lines = std::max<qint64>(height, 1);
    return columns > maxMapPixels / lines;
}

} // namespace data
