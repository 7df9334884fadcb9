// Draws the spectrum of a row in its frame of the graph window.

#include "rows/AXafsFileSelect.h"

#include "display/CurvePainter.h"
#include "display/DispABase.h"
#include "display/Pixels.h"

#include <cmath>

using display::truncated;

void AXafsFileSelect::draw(QStylePainter* p)
{
    if (!frame) {
        return;
    }
    ChCoord& cc = frame->DispA->cc;
    cc.computeArea();
    frame->setXYTitle(tr("Eng.[eV]"), tr("mut"));
    p->fillRect(QRectF(0.0, 0.0, std::fabs(cc.scrX1 - cc.scrX0) - 1.0,
                       std::fabs(cc.scrY1 - cc.scrY0) - 1.0),
                Qt::white);
    if (points.isEmpty()) {
        cc.drawn = false;
        return;
    }
    // The range is calculated from the energies of the file, without dE. A change of dE
    // therefore moves the curve within the range.
    const double dx = (maxEnergy - minEnergy) * 0.05;
    const double dy = (maxMut - minMut) * 0.05;
    frame->setRealCoord(minEnergy - dx, minMut - dy, maxEnergy + dx, maxMut + dy);
    drawLimits(p, cc, minMut - dy, maxMut + dy);
    drawCurves(p, cc);
    frame->DispA->drawFrame(p, true);
    drawEdgeJump(p, cc);
}

void AXafsFileSelect::drawLimits(QStylePainter* p, const ChCoord& cc, double bottom,
                                 double top) const
{
    const auto vertical = [&](double energyEv, const QColor& color) {
        const double x = cc.r2sX(energyEv);
        display::drawPixelLine(p, color, {x, cc.r2sY(bottom)}, {x, cc.r2sY(top)});
    };
    const QColor limitColor(255, 200, 200);
    vertical(preEdgeEnd, limitColor);
    vertical(postEdgeStart, limitColor);
    vertical(edgeEnergy, QColor(255, 0, 0));
}

void AXafsFileSelect::drawCurves(QStylePainter* p, const ChCoord& cc) const
{
    const auto curve = [&](const QColor& color, const auto& valueOf) {
        p->setPen(color);
        display::CurvePainter painter(p, cc);
        for (const MutPoint& point : points) {
            const double working = point.energy - AMutE::dE;
            painter.add(working, valueOf(point, working));
        }
    };
    curve(Qt::black, [](const MutPoint& point, double) { return point.mut; });
    curve(QColor(0, 200, 0), [this](const MutPoint&, double E) { return preValue(E); });
    curve(QColor(0, 0, 200), [this](const MutPoint&, double E) { return postValue(E); });
}

void AXafsFileSelect::drawEdgeJump(QStylePainter* p, const ChCoord& cc) const
{
    const int T = cc.textRow(); // negative: y values grow upward, pixels downward
    const int L = cc.labelWidth();
    const QRectF box(truncated(cc.areaX1) - 3 * L,
                     truncated(cc.areaY1) - truncated(T * (1.0 - cc.textFill)), 3 * L,
                     truncated(std::abs(T) * cc.textFill));
    DrawText text;
    text.drawText(p, box, QFont(), (Qt::AlignLeft | Qt::AlignVCenter).toInt(), DrawText::fit,
                  tr("Edge Jump : %1").arg(edgeJump()), -1.0);
}

void AXafsFileSelect::mPressed(MouseC*) {}

void AXafsFileSelect::mDragging(MouseC*) {}

void AXafsFileSelect::mReleased(MouseC*) {}
