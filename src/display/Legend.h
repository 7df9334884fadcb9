// The places of a legend's rows.
#pragma once

#include <QRectF>

class ChCoord;
class QPoint;

namespace display
{

/// The rows of names in the upper right of a plot, and where a press hits them.
class Legend
{
public:
    /// @param coord  of the plot as it was painted last; must outlive the legend
    explicit Legend(const ChCoord& coord);

    /// The box of row @p row (from 0) as it is drawn, pixels.
    QRectF box(int row) const;

    /// Whether @p place (pixels) is strictly inside the box that a press has to
    /// hit. That box lies a tenth of the left margin's width further right than
    /// the drawn one, on purpose, so the leftmost strip of a row is dead.
    bool isHit(int row, const QPoint& place) const;

private:
    const ChCoord& m_coord;
    int m_row;   ///< height of a row with the sense of y, negative on a surface
    int m_label; ///< the measure of its width
};

} // namespace display
