#include "display/cBar.h"

#include "display/ColorTables.h"
#include "display/Pixels.h"
#include "ui_cBar.h"

#include <QMouseEvent>
#include <QStylePainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr double hitDistance = 10.0; // pixels

enum Handle { UpperLine, LowerLine };

} // namespace

cBar::cBar(QWidget* parent)
    : QFrame(parent)
{
    Ui_cBar().setupUi(this);
    setCBarType(0);
}

cBar::~cBar()
{
    qDeleteAll(table);
}

void cBar::setCBarType(int type)
{
    qDeleteAll(table);
    table.clear();
    const QList<QColor> colors = display::colorTable(type);
    for (const QColor& color : colors) {
        table.append(new QColor(color));
    }
    nColors = static_cast<int>(table.size());
    minIdx = 0;
    maxIdx = nColors;
    imin = 0.0;
    imax = nColors;
    update();
}

const QColor& cBar::color(double v) const
{
    const double place = (imax - imin) / (zmax - zmin) * (v - zmin) + imin;
    if (place >= nColors) {
        // The index is infinite for equal limits or an infinite value: use the first colour.
        return entry(std::isinf(place) ? 0 : nColors - 1);
    }
    return entry(place > 0.0 ? static_cast<int>(place) : 0); // also 0 for NaN
}

const QColor& cBar::entry(int i) const
{
    return *table.at(invert ? nColors - 1 - i : i);
}

void cBar::checkOrder()
{
    if (zmax < zmin) {
        std::swap(zmax, zmin);
    }
    Q_EMIT newScale();
}

void cBar::setAutoScale(bool f)
{
    autoScale = f;
    Q_EMIT newScale();
}

void cBar::newZmax(double max)
{
    zmax = max;
    checkOrder();
}

void cBar::newZmin(double min)
{
    zmin = min;
    checkOrder();
}

int cBar::maxCBarTypes()
{
    return display::colorTableCount;
}

void cBar::setInvertCBar(bool f)
{
    invert = f;
}

void cBar::paintEvent(QPaintEvent*)
{
    QStylePainter p;
    p.begin(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    cc.setScreen(0.0, height(), width(), 0.0);
    cc.setReal(0.0, imin, 1.0, imax);
    fillRows(&p, rowOf(minIdx), rowOf(imin), belowColor);
    drawTable(&p);
    fillRows(&p, rowOf(imax), rowOf(maxIdx), aboveColor);
    drawDragLines(&p);
}

int cBar::rowOf(double place) const
{
    return display::truncated(cc.r2sY(place));
}

/// Fills the pixel rows in the half-open interval [@p top, @p bottom) over the whole width.
void cBar::fillRows(QPainter* p, int top, int bottom, const QColor& color) const
{
    const int first = std::max(top, 0);
    const int end = std::min(bottom, height());
    if (first < end) {
        p->fillRect(0, first, width(), end - first, color);
    }
}

void cBar::drawTable(QPainter* p) const
{
    // r2sdY() is negative while table indices grow upward, and positive after one line was
    // dragged past the other. The band of an entry always extends upward from the pixel row of
    // its index.
    const int band = std::max(display::truncated(std::fabs(cc.r2sdY(1.0)) + 1.0), 1);
    for (int i = 0; i < nColors; ++i) {
        const int row = rowOf(i);
        if (row >= 0 && row - band < height()) {
            fillRows(p, row - band + 1, std::min(row, height()) + 1, entry(i));
        }
    }
}

void cBar::drawDragLines(QPainter* p)
{
    const int last = height() - 1;
    const auto clamped = [last](int row) { return std::max(0, std::min(row, last)); };
    p->setPen(lineColor);
    maxLineY = clamped(rowOf(maxIdx));
    minLineY = clamped(rowOf(minIdx));
    p->drawLine(0, maxLineY, width(), maxLineY);
    p->drawLine(0, minLineY, width(), minLineY);
}

void cBar::mousePressEvent(QMouseEvent* event)
{
    mouse.recordPressed(event);
    // If both lines are near the press, the lower one is dragged. On purpose neither a press
    // far from both lines nor a release clears the handle: the next drag then moves the line
    // that was dragged last.
    if (std::fabs(mouse.pressPos.y() - cc.r2sY(maxIdx)) < hitDistance) {
        dragHandle = UpperLine;
    }
    if (std::fabs(mouse.pressPos.y() - cc.r2sY(minIdx)) < hitDistance) {
        dragHandle = LowerLine;
    }
}

void cBar::mouseMoveEvent(QMouseEvent* event)
{
    mouse.moved(event);
    if (mouse.pressed) {
        stretchTo(mouse.now.y());
    }
    update();
}

void cBar::stretchTo(int y)
{
    const double upper = dragHandle == UpperLine ? y : rowOf(maxIdx);
    const double lower = dragHandle == LowerLine ? y : rowOf(minIdx);
    if (upper == lower) {
        return;
    }
    const double d = (maxIdx - minIdx) / (upper - lower);
    imax = -lower * d + minIdx;
    imin = (height() - lower) * d + minIdx;
    Q_EMIT newScale();
}

void cBar::mouseReleaseEvent(QMouseEvent* event)
{
    mouse.released(event);
    update();
}

void cBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    mouse.dClicked(event);
    imin = minIdx;
    imax = maxIdx;
    // newScale() is not emitted: the map shows the change only at its next paint.
    update();
}
