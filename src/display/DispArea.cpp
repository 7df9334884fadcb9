#include "display/DispArea.h"

#include "display/LineEditText.h"
#include "display/MarkLine.h"
#include "display/MarkLines.h"
#include "display/Pixels.h"
#include "ui_DispArea.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

using display::truncated;

namespace
{

constexpr double hitDistance = 20.0; // pixels
constexpr Qt::KeyboardModifiers controlOrAlt = Qt::ControlModifier | Qt::AltModifier;

} // namespace

DispArea::DispArea(QWidget* parent)
    : QFrame(parent)
{
    Ui_DispArea().setupUi(this);
    setMouseTracking(true);
}

void DispArea::paintEvent(QPaintEvent*)
{
    QStylePainter p;
    p.begin(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    cc.drawn = true;
    useWholeWidget();
    m_painted = true;
    if (!hasScale) {
        cc.setReal(0.0, 0.0, 1.0, 1.0);
    }
    Q_EMIT draw(&p);
}

void DispArea::useWholeWidget()
{
    cc.setScreen(0.0, height(), width(), 0.0);
}

void DispArea::useWholeWidgetBeforeFirstPaint()
{
    // Not after the first paint: useWholeWidget() also resets the plot area, which the client
    // sets in each paint.
    if (!m_painted) {
        useWholeWidget();
    }
}

void DispArea::fitTo(double x0, double y0, double x1, double y1)
{
    if (hasScale) {
        return;
    }
    cc.setReal(x0, y0, x1, y1);
    hasScale = true;
}

void DispArea::mousePressEvent(QMouseEvent* event)
{
    useWholeWidgetBeforeFirstPaint();
    mouse.recordPressed(event);
    const bool plain = !(mouse.pressMods & (Qt::ShiftModifier | controlOrAlt));
    if (mouse.pressButton != Qt::LeftButton || !plain) {
        return;
    }
    selectMarkLine();
    Q_EMIT mPressed(&mouse);
}

void DispArea::mouseMoveEvent(QMouseEvent* event)
{
    useWholeWidgetBeforeFirstPaint();
    mouse.moved(event);
    Q_EMIT nowPos(cc.s2rX(mouse.now.x()), cc.s2rY(mouse.now.y()));
    // Uses the modifier keys at the time of the press, not the current ones.
    if (!mouse.pressed || mouse.pressButton != Qt::LeftButton || (mouse.pressMods & controlOrAlt)) {
        return;
    }
    if (mouse.pressMods & Qt::ShiftModifier) {
        pan();
    } else {
        dragMarkLine();
        Q_EMIT mDragging(&mouse);
    }
}

void DispArea::mouseReleaseEvent(QMouseEvent* event)
{
    useWholeWidgetBeforeFirstPaint();
    mouse.released(event);
    endMarkDrag();
    Q_EMIT mReleased(&mouse);
}

void DispArea::mouseDoubleClickEvent(QMouseEvent* event)
{
    mouse.dClicked(event);
    hasScale = false;
    Q_EMIT mDClicked(&mouse);
    update();
}

void DispArea::wheelEvent(QWheelEvent* event)
{
    useWholeWidgetBeforeFirstPaint();
    // Each event zooms by one step: out if its vertical angle is negative, otherwise in. The
    // size of the angle is not used.
    const double turn = event->angleDelta().y() * 0.125 / 15.0;
    zoom(turn < 0.0 ? 1.1 : 1.0 / 1.1);
    event->accept();
}

void DispArea::zoom(double factor)
{
    // The zoom is centred on the position of the last mouse move; the position in the wheel
    // event is not used. Near the left or right edge only y is zoomed. Near the top or bottom
    // edge only x is zoomed. Elsewhere, and in the corners, both axes are zoomed.
    const QPoint at = mouse.now;
    const double cx = cc.s2rX(at.x());
    const double cy = cc.s2rY(at.y());
    const bool besideY = cc.nearAreaEdgeX(at.x());
    const bool besideX = cc.nearAreaEdgeY(at.y());
    if (besideY || !besideX) {
        cc.setRealY((cc.realY0 - cy) * factor + cy, (cc.realY1 - cy) * factor + cy);
    }
    if (besideX || !besideY) {
        cc.setRealX((cc.realX0 - cx) * factor + cx, (cc.realX1 - cx) * factor + cx);
    }
    update();
}

void DispArea::pan()
{
    const double dx = cc.s2rX(mouse.prev.x()) - cc.s2rX(mouse.now.x());
    const double dy = cc.s2rY(mouse.prev.y()) - cc.s2rY(mouse.now.y());
    cc.setReal(cc.realX0 + dx, cc.realY0 + dy, cc.realX1 + dx, cc.realY1 + dy);
    update();
}

double DispArea::distanceTo(int line) const
{
    const double value = markLines->value(line);
    // Only the distance perpendicular to the line counts, so the user can also grab the line
    // in the margins.
    return markLines->lines.at(line)->direction == 0
               ? std::fabs(cc.r2sX(value) - mouse.pressPos.x())
               : std::fabs(cc.r2sY(value) - mouse.pressPos.y());
}

void DispArea::selectMarkLine()
{
    if (!markLines) {
        return;
    }
    double best = 1e300;
    int candidate = -1;
    for (int i = 0; i < markLines->lines.size(); ++i) {
        const double distance = distanceTo(i);
        if (distance < best) {
            best = distance;
            candidate = i;
        }
    }
    if (best >= hitDistance) {
        return;
    }
    if (markLines->selected) {
        Q_EMIT markLines->newPos();
    }
    markLines->selected = true;
    markLines->selectedIndex = candidate;
}

void DispArea::dragMarkLine()
{
    if (!markLines || !markLines->selected || markLines->selectedIndex < 0 ||
        markLines->selectedIndex >= markLines->lines.size()) {
        return;
    }
    const int i = markLines->selectedIndex;
    const MarkLine* line = markLines->lines.at(i);
    const double at = line->direction == 0 ? cc.s2rX(mouse.now.x()) : cc.s2rY(mouse.now.y());
    display::showNumber(line->edit, line->relative ? at - markLines->baseValue(i) : at);
    Q_EMIT markLines->moving();
}

void DispArea::endMarkDrag()
{
    if (!markLines) {
        return;
    }
    dragMarkLine();
    if (markLines->selected) {
        Q_EMIT markLines->newPos();
    }
    markLines->selected = false;
    markLines->selectedIndex = -1;
}

void DispArea::drawFrame(QStylePainter* p, bool maskMargins)
{
    if (maskMargins) {
        fillMargins(p);
    }
    p->setPen(QColor(150, 150, 150));
    p->setBrush(Qt::NoBrush);
    p->drawRect(QRectF(cc.areaX0, cc.areaY1, cc.areaX1 - cc.areaX0, cc.areaY0 - cc.areaY1));
    drawRangeLabels(p);
}

void DispArea::fillMargins(QStylePainter* p) const
{
    const auto fill = [p](double x0, double y0, double x1, double y1) {
        p->fillRect(QRectF(QPointF(x0, y0), QPointF(x1, y1)).normalized(), Qt::white);
    };
    fill(cc.scrX0, cc.scrY0, cc.areaX0, cc.scrY1);
    fill(cc.scrX0, cc.scrY0, cc.scrX1, cc.areaY0);
    fill(cc.scrX0, cc.areaY1, cc.scrX1, cc.scrY1);
    fill(cc.areaX1, cc.scrY0, cc.scrX1, cc.scrY1);
}

void DispArea::drawRangeLabels(QStylePainter* p)
{
    constexpr int yCharacters = 5;
    constexpr int xCharacters = 6;
    constexpr double maxPoints = 12.0;
    const int rowHeight = cc.textRow(); // negative: y values grow upward, pixels downward
    const int labelWidth = cc.labelWidth();
    const int textHeight = truncated(rowHeight * cc.textFill);
    const double below = cc.areaY0 - truncated((1.0 - cc.textFill) * rowHeight);
    const auto label = [&](double value, int characters, const QRectF& box, Qt::Alignment side) {
        // Characters are cut off at the end, so an exponent can be lost. This is on purpose.
        const QString text = QString::number(value, 'g', 6).left(characters);
        dt.drawText(p, box, QFont(), static_cast<int>(Qt::AlignVCenter | side), DrawText::fit, text,
                    maxPoints);
    };
    p->setPen(Qt::black);
    label(cc.realY1, yCharacters, {0.0, cc.areaY1, labelWidth * 0.95, -1.0 * textHeight},
          Qt::AlignRight);
    label(cc.realY0, yCharacters, {0.0, cc.areaY0, labelWidth * 0.95, 1.0 * textHeight},
          Qt::AlignRight);
    label(cc.realX0, xCharacters, {cc.areaX0, below, labelWidth * 2.0, -1.0 * textHeight},
          Qt::AlignLeft);
    label(cc.realX1, xCharacters, {cc.areaX1, below, labelWidth * -2.0, -1.0 * textHeight},
          Qt::AlignRight);
}
