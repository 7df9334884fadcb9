// The graph of the fit against the target calculation.
#pragma once

#include "analysis/LCFPoint.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

class MarkPlaces;

/// Each run of the linear combination fit beside the target's result at that
/// time, as valences (fit on x, target on y), with the diagonal on which they agree.
class ComparisonGraph : public Graph
{
public:
    bool isEmpty() const override { return points.isEmpty(); }

    /// From the lower to the upper valence with 0.2 around, on both axes.
    Range range() const override;

    double lower = 0.0; ///< valence of the first used reference
    double upper = 0.0; ///< valence of the second one
    QList<LCFPoint> points;
    QList<QColor> colors; ///< of the runs, used cyclically; black without any

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawPoints(QPainter* p, const MarkPlaces& places) const;
    void drawOneByOne(QPainter* p, const MarkPlaces& places) const;
};

} // namespace display
