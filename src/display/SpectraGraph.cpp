#include "display/SpectraGraph.h"

#include "analysis/Limits.h"
#include "data/AMutE.h"
#include "display/ChCoord.h"
#include "display/CurvePainter.h"
#include "display/DrawText.h"
#include "display/Legend.h"
#include "display/Pixels.h"

#include <QStylePainter>

#include <algorithm>

namespace display
{

namespace
{

/// Draws a vertical line from the top of the widget. On purpose its length is the width
/// of the widget, not its height: if the widget is taller than it is wide, the line does
/// not reach the bottom.
void drawEnergy(QPainter* p, const ChCoord& cc, const QPen& pen, double energyEv)
{
    const double x = cc.r2sX(energyEv);
    drawPixelLine(p, pen, {x, cc.scrX0}, {x, cc.scrX1});
}

} // namespace

bool SpectraGraph::isEmpty() const
{
    return std::none_of(curves.cbegin(), curves.cend(),
                        [](const Curve& curve) { return !curve.spectrum->points.isEmpty(); });
}

Graph::Range SpectraGraph::range() const
{
    analysis::Limits found = analysis::emptyLimits;
    for (const Curve& curve : curves) {
        curve.spectrum->valueRange(kind, from, to, &found.low, &found.high);
    }
    const auto [lo, hi] = found;
    if (lo > hi) {
        return {from, 0.0, to, 1.0, false};
    }
    return {from, lo - 0.05 * (hi - lo), to, hi + 0.05 * (hi - lo)};
}

void SpectraGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    drawGuides(p, cc);
    for (const Curve& curve : curves) {
        drawCurve(p, cc, curve);
    }
    if (fitted) {
        p->setPen(QPen(QColor(255, 200, 255), 3));
        CurvePainter painter(p, cc);
        for (const MutPoint& point : fitted->points) {
            painter.add(point.energy - fitted->dE, point.mut);
        }
    }
}

void SpectraGraph::drawGuides(QStylePainter* p, const ChCoord& cc) const
{
    for (const double value : {0.0, 0.5, 1.0}) {
        const double y = cc.r2sY(value);
        drawPixelLine(p, QColor(200, 200, 200), {cc.scrX0, y}, {cc.scrX1, y});
    }
    for (const double energyEv : {edge, from, to}) {
        drawEnergy(p, cc, QColor(80, 255, 80), energyEv);
    }
    for (const EnergyMark& mark : marks) {
        drawEnergy(p, cc, QPen(mark.inFit ? Qt::red : Qt::blue, mark.used ? 3 : 1), mark.energy);
    }
}

void SpectraGraph::drawCurve(QStylePainter* p, const ChCoord& cc, const Curve& curve) const
{
    const AMutE& spectrum = *curve.spectrum;
    if (!spectrum.valid || !spectrum.switchedOn) {
        return;
    }
    p->setPen(QPen(curve.color, curve.width));
    CurvePainter painter(p, cc);
    for (int i = 0; i < spectrum.points.size(); ++i) {
        painter.add(spectrum.points.at(i).energy - spectrum.dE, spectrum.value(kind, i));
    }
}

void SpectraGraph::drawOnTop(QStylePainter* p, const ChCoord& cc) const
{
    const Legend legend(cc);
    DrawText text;
    int row = 0;
    for (const Curve& curve : curves) {
        if (!curve.spectrum->valid) {
            continue;
        }
        const QRectF box = legend.box(row);
        if (!curve.spectrum->switchedOn) {
            p->fillRect(box, QColor(220, 220, 220));
        }
        p->setPen(curve.color);
        text.drawText(p, box, QFont(), (Qt::AlignLeft | Qt::AlignVCenter).toInt(), DrawText::fit,
                      curve.name, -1.0);
        ++row;
    }
}

} // namespace display
