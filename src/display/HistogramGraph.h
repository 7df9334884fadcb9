// The graph of the valence histograms or of the thickness histograms.
#pragma once

#include "analysis/HistogramCounts.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

/// The graph of histograms: the main histogram with wide bars, and in front of it the
/// histograms of single references with narrow bars side by side.
class HistogramGraph : public Graph
{
public:
    /// The histogram of a single reference.
    struct Series {
        analysis::HistogramCounts counts;
        QColor color;
    };

    /// True if no histogram is selected for display, or if nothing has been counted yet.
    bool isEmpty() const override;

    /// Returns the range from @c from to @c to on x, and from -0.1 to 1.1 times the highest
    /// count of the shown histograms on y. If all bins are empty, y is from 0 to 1 and
    /// Range::isFitted is false.
    Range range() const override;

    double from = 0.0; ///< lower limit in the form; the bins can be from an earlier limit
    double to = 0.0;   ///< upper limit in the form; the bins can be from an earlier limit
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
