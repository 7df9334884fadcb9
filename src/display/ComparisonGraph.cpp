#include "display/ComparisonGraph.h"

#include "display/ChCoord.h"
#include "display/GridLines.h"
#include "display/LayeredMarks.h"
#include "display/MarkPlaces.h"
#include "display/MarkStamp.h"
#include "display/PixelSet.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QStylePainter>

#include <algorithm>
#include <vector>

namespace display
{

Graph::Range ComparisonGraph::range() const
{
    constexpr double around = 0.2;
    return {lower - around, lower - around, upper + around, upper + around};
}

void ComparisonGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    const GridValues grid = valenceGrid(lower, upper);
    p->setPen(gridColor);
    drawVerticalGrid(p, cc, grid);
    drawHorizontalGrid(p, cc, grid);
    const QPointF bottom(cc.r2sX(lower), cc.r2sY(lower));
    const QPointF top(cc.r2sX(upper), cc.r2sY(upper));
    drawPixelLine(p, QColor(0, 200, 0), bottom, top);
    drawPoints(p, MarkPlaces(cc));
    // A red circle marks the newest point.
    const LCFPoint& last = points.last();
    if (const auto place = markPlace(cc, last.lcfValence, last.fourPsValence)) {
        p->setPen(Qt::red);
        drawCircle(p, *place, outerRadius);
    }
}

void ComparisonGraph::drawPoints(QPainter* p, const MarkPlaces& places) const
{
    const auto stamp = LayeredMarks::stampOf(*p, colors);
    if (!stamp) {
        drawOneByOne(p, places);
        return;
    }
    LayeredMarks marks(*stamp, places, colors);
    for (auto point = points.crbegin(); point != points.crend(); ++point) {
        if (const auto place = places.at(point->lcfValence, point->fourPsValence)) {
            marks.addBelow(*place, point->color % colors.size());
        }
    }
    marks.draw(p);
}

/// Fallback if there is no mark stamp, for example for a scaled painter on a
/// high-resolution screen or for transparent colours: draws the marks one by one, the
/// oldest first. A mark is skipped if a newer mark on the same pixel covers it completely.
void ComparisonGraph::drawOneByOne(QPainter* p, const MarkPlaces& places) const
{
    const auto colorOf = [this](const LCFPoint& point) {
        return colors.isEmpty() ? QColor(Qt::black) : colors.at(point.color % colors.size());
    };
    const bool areMarksOpaque =
        std::all_of(colors.cbegin(), colors.cend(),
                    [p](const QColor& color) { return isRedrawNoOp(*p, QPen(color)); });
    struct Mark {
        QPoint place;
        const LCFPoint* point;
    };
    std::vector<Mark> marks; // newest first
    PixelSet occupied(places.area());
    for (auto point = points.crbegin(); point != points.crend(); ++point) {
        const auto place = places.at(point->lcfValence, point->fourPsValence);
        if (place && (occupied.insert(*place) || !areMarksOpaque)) {
            marks.push_back({*place, &*point});
        }
    }
    for (auto mark = marks.crbegin(); mark != marks.crend(); ++mark) {
        p->setPen(colorOf(*mark->point));
        drawMark(p, mark->place);
    }
}

} // namespace display
