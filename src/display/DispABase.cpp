#include "display/DispABase.h"

#include "display/LineEditText.h"
#include "display/Pixels.h"

#include <algorithm>
#include <cmath>

using display::truncated;

namespace
{

constexpr double maxTitlePoints = 12.0;
constexpr int buttonPadding = 8; // pixels, left and right of the text together
constexpr int buttonColumn = 7;

} // namespace

DispABase::DispABase(QWidget* parent)
    : DrawingFrame(parent)
{
    setupUi(this);
    // The button is only slightly wider than its text, so that the rest of the strip remains
    // for the mouse position.
    const int textWidth = PopDockB->fontMetrics().horizontalAdvance(PopDockB->text());
    gridLayout_2->setColumnMinimumWidth(
        buttonColumn, std::min(textWidth + buttonPadding, PopDockB->maximumWidth()));
    connectDrawing(this);
}

void DispABase::setXYTitle(const QString& x, const QString& y)
{
    xTitle = x;
    yTitle = y;
    // Empty labels are hidden, because the layout adds spacing around visible ones.
    XTitle->setText(xTitleInArea ? QString() : xTitle);
    XTitle->setHidden(XTitle->text().isEmpty());
    YTitle->setText(yTitleInArea ? QString() : yTitle);
    YTitle->setHidden(YTitle->text().isEmpty());
}

void DispABase::receiveNowPos(double rx, double ry)
{
    display::showNumber(XPos, rx);
    display::showNumber(YPos, ry);
}

void DispABase::receiveDraw(QStylePainter* p)
{
    Q_EMIT draw(p);
    if (DispA->cc.drawn) {
        drawXYTitle(p);
    }
}

void DispABase::popDock()
{
    popOrDock();
}

void DispABase::drawXYTitle(QStylePainter* p)
{
    const ChCoord& cc = DispA->cc;
    const int rowHeight = cc.textRow(); // negative: y values grow upward, pixels downward
    const double textHeight = -1.0 * truncated(rowHeight * cc.textFill);
    DrawText drawer;
    const auto title = [&](const QRectF& box, const QString& text) {
        drawer.drawText(p, box, QFont(), Qt::AlignCenter, DrawText::fit, text, maxTitlePoints);
    };
    p->setPen(Qt::black);
    if (xTitleInArea) {
        const double top = 1.0 * truncated(cc.areaY0) - truncated((1.0 - cc.textFill) * rowHeight);
        title({1.0 * truncated(cc.areaX0), top, 1.0 * truncated(std::fabs(cc.areaX1 - cc.areaX0)),
               textHeight},
              xTitle);
    }
    if (yTitleInArea) {
        const int length = truncated(std::fabs(cc.scrY1 - cc.scrY0));
        p->rotate(270.0);
        title({-1.0 * length, textHeight, 1.0 * length,
               1.0 * truncated(std::abs(rowHeight) * cc.textFill)},
              yTitle);
        p->rotate(-270.0);
    }
}

void DispABase::clearScale()
{
    discardRange();
}

void DispABase::update()
{
    updateAll();
}
