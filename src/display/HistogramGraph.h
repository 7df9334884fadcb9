// The graph of the valence histograms or of the thickness histograms.
#pragma once

#include "analysis/HistogramCounts.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

/// The main histogram with wide bars, and in front of it the histograms of single
/// references with narrow bars side by side.
class HistogramGraph : public Graph
{
public:
    /// The histogram of a single reference.
    struct Series {
        analysis::HistogramCounts counts;
        QColor color;
    };

    /// True if no histogram is selected for display, or before the first count.
    bool isEmpty() const override;

    /// From @c from to @c to on x. On y from -0.1 to 1.1 times the highest count of
    /// the shown histograms, or from 0 to 1 and not fitted if all bins are empty.
    Range range() const override;

    double from = 0.0; ///< current limits in the line edits; the bins can have older limits
    double to = 0.0;
    analysis::HistogramCounts main;
    bool mainShown = false;
    QColor mainColor;
    QList<Series> references; ///< only the references that are shown

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawGrid(QPainter* p, const ChCoord& cc) const;
};

} // namespace display
