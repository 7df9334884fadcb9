// Layout and hit test of the lines of text in a legend.
#pragma once

#include <QRectF>

class ChCoord;
class QPoint;

namespace display
{

/// The layout of a legend: a list of names, one line of text each, in the upper right
/// corner of a plot. Each line has a box in which the name is drawn, and a hit area for
/// mouse presses.
class Legend
{
public:
    /// @param coord  coordinates of the plot at its last paint; must outlive the
    ///               legend
    explicit Legend(const ChCoord& coord);

    /// Returns the box (pixels) of the line of text with index @p row (from 0).
    QRectF box(int row) const;

    /// Whether @p place (pixels) is strictly inside the hit area of the line of text with
    /// index @p row (from 0). On purpose the hit area is not the box: it is shifted to the right
    /// by a tenth of the left margin's width, so that a press on the left end of the box
    /// has no effect.
    bool isHit(int row, const QPoint& place) const;

private:
    const ChCoord& m_coord;
    int m_row;   ///< height of a line of text, pixels; negative, see ChCoord::textRow()
    int m_label; ///< half the width of a box, pixels
};

} // namespace display
