#include "display/ComparisonGraph.h"

#include "display/ChCoord.h"
#include "display/GridLines.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QStylePainter>

Graph::Range ComparisonGraph::range() const
{
    constexpr double around = 0.2;
    return {lower - around, lower - around, upper + around, upper + around};
}

void ComparisonGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    const display::GridValues grid = display::valenceGrid(lower, upper);
    p->setPen(display::gridColor);
    display::drawVerticalGrid(p, cc, grid);
    display::drawHorizontalGrid(p, cc, grid);
    const QPointF bottom(cc.r2sX(lower), cc.r2sY(lower));
    const QPointF top(cc.r2sX(upper), cc.r2sY(upper));
    display::drawPixelLine(p, QColor(0, 200, 0), bottom, top);
    for (const Point& point : points) {
        if (const auto place = display::markPlace(cc, point.fit, point.target)) {
            p->setPen(point.color);
            display::drawMark(p, *place);
        }
    }
    // The newest stands out.
    const Point& last = points.last();
    if (const auto place = display::markPlace(cc, last.fit, last.target)) {
        p->setPen(Qt::red);
        display::drawCircle(p, *place, display::outerRadius);
    }
}
