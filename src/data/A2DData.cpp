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
    constexpr qint64 most = std::numeric_limits<int>::max();
    xNum = static_cast<int>(std::min(alongX, most));
    yNum = static_cast<int>(std::min(alongY, most));
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

bool isSizeTooLarge(qint64 width, qint64 height, qint64 held)
{
    const qint64 columns = std::max(width, qint64{1});
    const qint64 lines = std::max(height, qint64{1});
    // The sides first: the product of two lying sides may not fit 64 bits.
    if (columns > maxMapPixels || lines > maxMapPixels || columns * lines > maxMapPixels) {
        return true;
    }
    const qint64 pixels = columns * lines;
    // Clamped, since this product may not fit 64 bits either.
    return pixels > pixelsOnTrust &&
           pixels > std::clamp(held, qint64{0}, maxMapPixels) * pixelsForEachHeld;
}

} // namespace data
