#include "display/PlaneGraph.h"

#include "analysis/Limits.h"
#include "display/ChCoord.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QStylePainter>

namespace
{

analysis::Limits spanOf(const QList<PlaneGraph::Point>& points, double PlaneGraph::Point::*axis)
{
    analysis::Limits span{1e300, -1e300};
    for (const PlaneGraph::Point& point : points) {
        const double value = point.*axis;
        span.low = value < span.low ? value : span.low;
        span.high = value > span.high ? value : span.high;
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
    // Reversed where no point has a number.
    return {x.low, y.low, x.high, y.high, x.low <= x.high && y.low <= y.high};
}

void PlaneGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    const auto draw = [&](const QColor& color, const QPointF& from, const QPointF& to) {
        if (const auto line = display::pixelLine(from, to)) {
            p->setPen(color);
            p->drawLine(*line);
        }
    };
    draw(Qt::black, {cc.scrX0, cc.r2sY(0.0)}, {cc.scrX1, cc.r2sY(0.0)});
    draw(Qt::black, {cc.r2sX(0.0), cc.scrY1}, {cc.r2sX(0.0), cc.scrY0});
    const auto across = [&](const QColor& color, double slope, double constant) {
        const auto place = [&](double x) {
            return QPointF(cc.r2sX(x), cc.r2sY(slope * x + constant));
        };
        draw(color, place(cc.realX0), place(cc.realX1));
    };
    across(QColor(255, 255, 0), lines.k1, 0.0);
    across(QColor(255, 0, 255), lines.k2, 0.0);
    across(QColor(0, 255, 255), lines.a, lines.b);
    for (const Point& point : points) {
        if (const auto place = display::markPlace(cc, point.m2, point.m3)) {
            p->setPen(point.vPoint ? Qt::red : Qt::blue);
            display::drawMark(p, *place);
        }
    }
}
