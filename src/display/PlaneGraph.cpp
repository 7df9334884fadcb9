#include "display/PlaneGraph.h"

#include "analysis/Limits.h"
#include "display/ChCoord.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QStylePainter>

namespace display
{

namespace
{

analysis::Limits spanOf(const QList<PlaneGraph::Point>& points, double PlaneGraph::Point::*axis)
{
    analysis::Limits span = analysis::emptyLimits;
    for (const PlaneGraph::Point& point : points) {
        span.widen(point.*axis);
    }
    const double width = span.high - span.low;
    const double around = width == 0.0 ? 0.1 : width * 0.1;
    return {span.low - around, span.high + around};
}

} // namespace

Graph::Range PlaneGraph::range() const
{
    const analysis::Limits x = spanOf(points, &Point::m2);
    const analysis::Limits y = spanOf(points, &Point::m3);
    // The limits of an axis are reversed if all its values are NaN.
    return {x.low, y.low, x.high, y.high, x.low <= x.high && y.low <= y.high};
}

void PlaneGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    drawPixelLine(p, QPen(Qt::black), {cc.scrX0, cc.r2sY(0.0)}, {cc.scrX1, cc.r2sY(0.0)});
    drawPixelLine(p, QPen(Qt::black), {cc.r2sX(0.0), cc.scrY1}, {cc.r2sX(0.0), cc.scrY0});
    const auto across = [&](const QColor& color, double slope, double constant) {
        const auto place = [&](double x) {
            return QPointF(cc.r2sX(x), cc.r2sY(slope * x + constant));
        };
        drawPixelLine(p, color, place(cc.realX0), place(cc.realX1));
    };
    across(QColor(255, 255, 0), lines.k1, 0.0);
    across(QColor(255, 0, 255), lines.k2, 0.0);
    across(QColor(0, 255, 255), lines.a, lines.b);
    for (const Point& point : points) {
        if (const auto place = markPlace(cc, point.m2, point.m3)) {
            p->setPen(point.vPoint ? Qt::red : Qt::blue);
            drawMark(p, *place);
        }
    }
}

} // namespace display
