#include "display/PointMarks.h"

#include "display/MarkPlaces.h"

#include <QPainter>

namespace display
{

std::optional<QPoint> markPlace(const ChCoord& cc, double x, double y)
{
    return MarkPlaces(cc).at(x, y);
}

void drawCircle(QPainter* p, const QPoint& centre, int radius)
{
    p->drawEllipse(QRect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
}

void drawMark(QPainter* p, const QPoint& centre)
{
    drawCircle(p, centre, innerRadius);
    drawCircle(p, centre, outerRadius);
}

} // namespace display
