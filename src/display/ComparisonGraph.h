// The graph of the fit against the target calculation.
#pragma once

#include "display/Graph.h"

#include <QColor>
#include <QList>

/// Each run of the linear combination fit beside the target's result at that
/// time, as valences, with the diagonal on which the two agree.
class ComparisonGraph : public Graph
{
public:
    struct Point {
        double fit;    ///< valence by the fit, on x
        double target; ///< valence by the target calculation, on y
        QColor color;
    };

    bool isEmpty() const override { return points.isEmpty(); }

    /// From the lower to the upper valence with 0.2 around, on both axes.
    Range range() const override;

    double lower = 0.0; ///< valence of the first used reference
    double upper = 0.0; ///< valence of the second one
    QList<Point> points;

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
};
