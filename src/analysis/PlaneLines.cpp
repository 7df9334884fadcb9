#include "analysis/PlaneLines.h"

#include "analysis/RowCollection.h"

#include <limits>

namespace analysis
{

PlaneLines planeLines(const CollectedRows& rows)
{
    double n = 0.0;
    double sX = 0.0;
    double sY = 0.0;
    double sXX = 0.0;
    double sXY = 0.0;
    for (const PointNumbers& row : rows.others) {
        n += 1.0;
        sX += row.r1;
        sY += row.r2;
        sXX += row.r1 * row.r1;
        sXY += row.r1 * row.r2;
    }
    PlaneLines lines;
    lines.k1 = 1.0 / rows.r;
    lines.k2 = rows.v.row < 0 ? std::numeric_limits<double>::quiet_NaN() : rows.v.r2 / rows.v.r1;
    lines.a = (n * sXY - sX * sY) / (n * sXX - sX * sX);
    lines.b = (sY - lines.a * sX) / n;
    return lines;
}

} // namespace analysis
