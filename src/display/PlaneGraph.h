// The graph of the absorbance of the second reference against that of the first.
#pragma once

#include "analysis/PlaneLines.h"
#include "display/Graph.h"

#include <QList>

namespace display
{

/// One point for each energy of the measurement: the mut (absorbance) of the first
/// used reference on x, and of the second used reference on y. The lines of
/// analysis::PlaneLines, which the four-points methods use, are drawn as well.
class PlaneGraph : public Graph
{
public:
    struct Point {
        double m2;   ///< mut of the first used reference
        double m3;   ///< mut of the second used reference
        bool vPoint; ///< the energy is marked as a V point
    };

    bool isEmpty() const override { return points.isEmpty(); }

    /// The range of the points on each axis, extended by a tenth of its width on both
    /// sides, or by 0.1 if the width is 0. Not fitted if all values on an axis are NaN.
    Range range() const override;

    QList<Point> points; ///< empty with fewer than two used references
    analysis::PlaneLines lines;

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
};

} // namespace display
