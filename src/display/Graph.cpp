#include "display/Graph.h"

#include "display/DispABase.h"

namespace display
{

void Graph::paint(DispABase* plot, QStylePainter* p, const QString& xTitle, const QString& yTitle,
                  Range* range) const
{
    DispArea* surface = plot->DispA;
    ChCoord& cc = surface->cc;
    cc.computeArea();
    plot->setXYTitle(xTitle, yTitle);
    p->fillRect(surface->rect(), Qt::white);
    if (isEmpty()) {
        cc.drawn = false;
        return;
    }
    *range = this->range();
    if (range->isFitted) {
        plot->setRealCoord(range->x0, range->y0, range->x1, range->y1);
    } else if (!surface->hasScale) {
        cc.setReal(range->x0, range->y0, range->x1, range->y1);
    }
    drawData(p, cc);
    surface->drawFrame(p, true);
    drawOnTop(p, cc);
}

void Graph::drawOnTop(QStylePainter*, const ChCoord&) const {}

} // namespace display
