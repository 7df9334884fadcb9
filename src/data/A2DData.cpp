#include "data/A2DData.h"

#include <algorithm>
#include <limits>

void A2DData::clear()
{
    headerLines.clear();
    rows.clear();
    xNum = 0;
    yNum = 0;
}

void A2DData::deriveSize()
{
    qint64 alongX = 0;
    qint64 alongY = 0;
    if (!rows.isEmpty()) {
        alongX = alongY = 1;
        const double firstX = rows.first().x;
        const double firstY = rows.first().y;
        for (auto row = rows.cbegin() + 1; row != rows.cend(); ++row) {
            alongX += row->y == firstY ? 1 : 0;
            alongY += row->x == firstX ? 1 : 0;
        }
    }
    constexpr qint64 maxInt = std::numeric_limits<int>::max();
    xNum = static_cast<int>(std::min(alongX, maxInt));
    yNum = static_cast<int>(std::min(alongY, maxInt));
}

void A2DData::rowValues(int i, QList<double>& out) const
{
    if (i >= 0 && i < rows.size()) {
        out = rows.at(i).values;
    } else {
        out.fill(0.0);
    }
}

namespace data
{

bool isSizeTooLarge(qint64 width, qint64 height, qint64 stored)
{
    const qint64 columns = std::max(width, qint64{1});
    const qint64 lines = std::max(height, qint64{1});
    // Width and height are checked before they are multiplied, because the product of two
    // huge numbers would overflow.
    if (columns > maxMapPixels || lines > maxMapPixels || columns * lines > maxMapPixels) {
        return true;
    }
    const qint64 pixels = columns * lines;
    // The number of stored pixels is clamped, because for a huge file its product with
    // maxPixelsPerStored could overflow, too.
    return pixels > maxUncheckedPixels &&
           pixels > std::clamp(stored, qint64{0}, maxMapPixels) * maxPixelsPerStored;
}

} // namespace data
