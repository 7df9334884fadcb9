#include "display/Legend.h"

#include "display/ChCoord.h"
#include "display/Pixels.h"

#include <QPoint>

namespace display
{

Legend::Legend(const ChCoord& coord)
    : m_coord(coord)
    , m_row(coord.textRow())
    , m_label(coord.labelWidth())
{
}

QRectF Legend::box(int row) const
{
    const double top = m_coord.areaY1 - truncated((1.0 - m_coord.textFill) * m_row) -
                       static_cast<double>(row) * m_row;
    return {m_coord.areaX1 - 2.1 * m_label, top, 2.0 * m_label,
            -1.0 * truncated(m_row * m_coord.textFill)};
}

bool Legend::isHit(int row, const QPoint& place) const
{
    const int right = truncated(m_coord.areaX1);
    const int left = right - 2 * m_label;
    const double lower = 1.0 * truncated(m_coord.areaY1) - m_row - static_cast<double>(row) * m_row;
    const double upper = lower + truncated(m_row * m_coord.textFill);
    return place.x() > left && place.x() < right && place.y() > upper && place.y() < lower;
}

} // namespace display
