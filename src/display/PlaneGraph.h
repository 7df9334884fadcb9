// The graph of the plane of the two references' absorbance.
#pragma once

#include "analysis/PlaneLines.h"
#include "display/Graph.h"

#include <QList>

namespace display
{

/// One point for each energy of the measurement: the mut of the first used
/// reference on x, that of the second on y; and the lines that the four-points
/// family draws from them.
class PlaneGraph : public Graph
{
public:
    struct Point {
        double m2;   ///< mut of the first used reference
        double m3;   ///< mut of the second one
        bool vPoint; ///< marked as V point
    };

    bool isEmpty() const override { return points.isEmpty(); }

    /// The span of the points with a tenth of it around; 0.1 around where they
    /// agree. Not fitted while no point has a number.
    Range range() const override;

    QList<Point> points; ///< none with fewer than two used references
    analysis::PlaneLines lines;

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
};

} // namespace display
