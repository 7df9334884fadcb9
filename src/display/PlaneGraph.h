// The graph that plots the absorbances of two references against each other.
#pragma once

#include "analysis/PlaneLines.h"
#include "display/Graph.h"

#include <QList>

namespace display
{

/// The graph of two references against each other. It has one point for each energy of
/// the measurement: x is the mut (absorbance) of the first used reference, y the mut of
/// the second used reference. The three lines of analysis::PlaneLines are drawn as well.
class PlaneGraph : public Graph
{
public:
    /// One energy of the measurement.
    struct Point {
        double m2;   ///< mut of the first used reference
        double m3;   ///< mut of the second used reference
        bool vPoint; ///< whether the energy is marked as a V point
    };

    bool isEmpty() const override { return points.isEmpty(); }

    /// Returns the range of the points on each axis, extended by a tenth of its width on
    /// both sides, or by 0.1 if the width is 0. Range::isFitted is false if all
    /// values on an axis are NaN.
    Range range() const override;

    QList<Point> points; ///< empty with fewer than two used references
    analysis::PlaneLines lines;

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
};

} // namespace display
