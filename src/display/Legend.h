// Layout and hit test of a legend's rows.
#pragma once

#include <QRectF>

class ChCoord;
class QPoint;

namespace display
{

/// The layout of a legend: rows of names in the upper right corner of a plot. Each row
/// has a box in which it is drawn, and a hit area for mouse presses.
class Legend
{
public:
    /// @param coord  coordinates of the plot at its last paint; must outlive the
    ///               legend
    explicit Legend(const ChCoord& coord);

    /// Returns the box in which row @p row (from 0) is drawn, in pixels.
    QRectF box(int row) const;

    /// Whether @p place (pixels) is strictly inside the hit area of row @p row. On
    /// purpose the hit area is not the drawn box: it is shifted to the right by a
    /// tenth of the left margin's width, so that a press on the left end of a row has
    /// no effect.
    bool isHit(int row, const QPoint& place) const;

private:
    const ChCoord& m_coord;
    int m_row;   ///< row height, with the sign of y: negative on a painting surface
    int m_label; ///< half the width of a row
};

} // namespace display
