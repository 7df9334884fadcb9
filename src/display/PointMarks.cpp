#include "display/PointMarks.h"

#include "display/ChCoord.h"
#include "display/Pixels.h"

#include <QPainter>

namespace
{

bool showsAt(double place, double size)
{
    constexpr double reach = display::outerRadius + 1.0;
    return place > -reach && place < size + reach;
}

} // namespace

std::optional<QPoint> display::markPlace(const ChCoord& cc, double x, double y)
{
    const double column = cc.r2sX(x);
    const double row = cc.r2sY(y);
    if (!showsAt(column, cc.scrX1) || !showsAt(row, cc.scrY0)) {
        return std::nullopt;
    }
    return QPoint(truncated(column), truncated(row));
}

void display::drawCircle(QPainter* p, const QPoint& centre, int radius)
{
    p->drawEllipse(QRect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
}

void display::drawMark(QPainter* p, const QPoint& centre)
{
    drawCircle(p, centre, innerRadius);
    drawCircle(p, centre, outerRadius);
}
