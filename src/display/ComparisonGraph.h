// The graph that compares the linear combination fit with the target calculation.
#pragma once

#include "analysis/LCFPoint.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

class MarkPlaces;

/// The graph that compares the results of two methods for the target. Each point shows
/// one run of the linear combination fit: x is the valence from the fit, y the valence
/// from the latest target calculation at that time. The diagonal line shows where the
/// two valences are equal.
class ComparisonGraph : public Graph
{
public:
    bool isEmpty() const override { return points.isEmpty(); }

    /// Returns the range from @c lower - 0.2 to @c upper + 0.2 on both axes.
    Range range() const override;

    double lower = 0.0; ///< valence of the first used reference
    double upper = 0.0; ///< valence of the second used reference
    QList<LCFPoint> points;
    QList<QColor> colors; ///< colours of the runs, used cyclically; black if empty

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawPoints(QPainter* p, const MarkPlaces& places) const;
    void drawOneByOne(QPainter* p, const MarkPlaces& places) const;
};

} // namespace display
