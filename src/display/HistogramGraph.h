// The graph of the valence histograms or of the thickness histograms.
#pragma once

#include "analysis/HistogramCounts.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

/// The graph of histograms: the main histogram with bars as wide as its bins, and in front
/// of it the histograms of single references with narrow bars side by side.
class HistogramGraph : public Graph
{
public:
    /// The histogram of a single reference.
    struct Series {
        analysis::HistogramCounts counts;
        QColor color;
    };

    /// True if no histogram is selected for display, or if the main histogram has no bins,
    /// as before the first map calculation.
    bool isEmpty() const override;

    /// Returns the range: on x from @c from to @c to; on y from -0.1 times to 1.1 times the
    /// highest count of the shown histograms. If all bins are empty, y is from 0 to 1 and
    /// Range::isFitted is false.
    Range range() const override;

    double from = 0.0; ///< lower limit now shown on the panel; the bins can be older
    double to = 0.0;   ///< upper limit now shown on the panel; the bins can be older
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
