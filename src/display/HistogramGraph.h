// The graph of one family of histograms.
#pragma once

#include "analysis/HistogramCounts.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>

class QPainter;

namespace display
{

/// The histogram of all references together behind those of single references,
/// whose bars stand beside one another.
class HistogramGraph : public Graph
{
public:
    struct Series {
        analysis::HistogramCounts counts;
        QColor color;
    };

    /// Also when no histogram is shown, and before the first count.
    bool isEmpty() const override;

    /// From @c from to @c to, and the highest count of all that is shown with a
    /// tenth of it around; 0 to 1 and not fitted while none is above 0.
    Range range() const override;

    double from = 0.0; ///< the user's limits, whatever the bins were counted with
    double to = 0.0;
    analysis::HistogramCounts main;
    bool mainShown = false;
    QColor mainColor;
    QList<Series> references; ///< those that are shown

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawGrid(QPainter* p, const ChCoord& cc) const;
};

} // namespace display
