#include "random/MouseActions.h"

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Legend.h"
#include "display/MarkLines.h"
#include "panel/FourPs.h"
#include "random/MouseDraws.h"
#include "support/MouseInput.h"

namespace tests
{

namespace
{

/// A random position, mostly inside the widget.
QPointF positionIn(const QWidget* widget, Draw& draw)
{
    if (draw.onceIn(12)) {
        return draw.oneOf<QPointF>({{-5, -5}, {1e5, -1e5}, {0, 0}, {2e9, 2e9}});
    }
    const int x = draw.upTo(widget->width());
    return {x + 0.25 * draw.upTo(4), double(draw.upTo(widget->height()))};
}

/// A random wheel turn in eighths of a degree: mostly one notch (120) up or down;
/// sometimes part of a notch, ten notches, sideways or diagonal.
QPoint randomTurn(Draw& draw)
{
    const int size = draw.oneOf({120, 120, 120, 15, 1, 1200});
    const int turn = draw.onceIn(2) ? size : -size;
    return draw.oneOf<QPoint>({{0, turn}, {0, turn}, {0, turn}, {turn, 0}, {turn, -turn}});
}

} // namespace

QList<ActionKind> MouseActions::kinds()
{
    return {
        {"wheel", 6, [this](Draw& draw) { return turnWheelIn(draw); }},
        {"move", 3, [this](Draw& draw) { return moveAround(draw); }},
        {"free drag", 8, [this](Draw& draw) { return dragFreely(draw); }},
        {"double click", 8, [this](Draw& draw) { return doubleClickAt(draw); }},
        {"legend", 3, [this](Draw& draw) { return pressInLegend(draw); }},
        {"line", 5, [this](Draw& draw) { return dragLine(draw); }},
        {"colour bar", 4, [this](Draw& draw) { return dragBar(draw); }},
    };
}

QStringList MouseActions::takeStalePictures()
{
    return std::exchange(m_stalePictures, {});
}

QList<QWidget*> MouseActions::surfaces() const
{
    QList<QWidget*> all;
    const auto areas = m_windows.visible<DispArea>();
    const auto bars = m_windows.visible<cBar>();
    for (DispArea* area : areas) {
        all.append(area);
    }
    for (cBar* bar : bars) {
        all.append(bar);
    }
    return all;
}

void MouseActions::releaseButton(QWidget* widget, const QPointF& at, Qt::MouseButton button,
                                 Qt::KeyboardModifiers keys)
{
    const Displays* graphs = m_windows.panel().Disps;
    release(widget, at, button, keys);
    if (widget == graphs->frame(Displays::DLCFvs4PS)->DispA) {
        m_stalePictures.append(graphs->frame(Displays::DDMutVsA)->Title->text());
    }
}

QString MouseActions::turnWheelIn(Draw& draw)
{
    const QList<QWidget*> all = surfaces();
    if (all.isEmpty()) {
        return {};
    }
    QWidget* surface = draw.oneOf(all);
    const QPointF at = positionIn(surface, draw);
    move(surface, at);
    const int turns = draw.onceIn(20) ? 300 : 1 + draw.upTo(3);
    const QPoint delta = randomTurn(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    for (int i = 0; i < turns; ++i) {
        turnWheel(surface, at, delta, keys);
    }
    return QStringLiteral("%1 times in %2").arg(turns).arg(PanelWindows::nameOf(surface));
}

QString MouseActions::moveAround(Draw& draw)
{
    const QList<QWidget*> all = surfaces();
    if (all.isEmpty()) {
        return {};
    }
    QWidget* surface = draw.oneOf(all);
    for (int i = 0; i < 3; ++i) {
        move(surface, positionIn(surface, draw));
    }
    return PanelWindows::nameOf(surface);
}

// Sends a press, up to three moves and a release. Each of them can be missing, so that
// incomplete drags are tested too.
QString MouseActions::dragFreely(Draw& draw)
{
    const QList<QWidget*> all = surfaces();
    if (all.isEmpty()) {
        return {};
    }
    QWidget* surface = draw.oneOf(all);
    const Qt::MouseButton button = someButton(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    if (!draw.onceIn(6)) {
        press(surface, positionIn(surface, draw), button, keys);
    }
    for (int i = draw.upTo(4); i > 0; --i) {
        move(surface, positionIn(surface, draw), button, keys);
    }
    if (!draw.onceIn(3)) {
        releaseButton(surface, positionIn(surface, draw), button, keys);
    }
    return PanelWindows::nameOf(surface);
}

QString MouseActions::doubleClickAt(Draw& draw)
{
    const QList<QWidget*> all = surfaces();
    if (all.isEmpty()) {
        return {};
    }
    QWidget* surface = draw.oneOf(all);
    const QPointF at = positionIn(surface, draw);
    const Qt::MouseButton button = someButton(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    press(surface, at, button, keys);
    releaseButton(surface, at, button, keys);
    doubleClick(surface, at, button, keys);
    if (!draw.onceIn(3)) {
        releaseButton(surface, at, button, keys);
    }
    for (const DispMBase* map : {m_windows.panel().MapDisp, m_windows.panel().DMapDisp}) {
        if (surface == map->CBar) {
            m_stalePictures.append(map->Title->text());
        }
    }
    return PanelWindows::nameOf(surface);
}

QString MouseActions::pressInLegend(Draw& draw)
{
    DispArea* surface = m_windows.panel().Disps->frame(Displays::DMuts)->DispA;
    const int row = draw.upTo(8);
    const Qt::MouseButton button = mostlyLeftButton(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    if (surface->isVisible()) {
        const QPointF at = display::Legend(surface->cc).box(row).center();
        press(surface, at, button, keys);
        releaseButton(surface, at, button, keys);
    }
    return QString::number(row);
}

QString MouseActions::dragLine(Draw& draw)
{
    const auto id = draw.oneOf({Displays::DMuts, Displays::DRef1, Displays::DTarget});
    DispArea* surface = m_windows.panel().Disps->frame(id)->DispA;
    const int line = draw.upTo(static_cast<int>(surface->markLines->lines.size()));
    const double step = draw.oneOf({7.0, -4.0, 0.5});
    const bool isReleased = !draw.onceIn(3);
    const Qt::MouseButton button = mostlyLeftButton(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    if (surface->isVisible()) {
        const QPointF from(surface->cc.r2sX(surface->markLines->value(line)), 20.0);
        press(surface, from, button, keys);
        move(surface, from + QPointF(step, 0.0), button, keys);
        if (isReleased) {
            releaseButton(surface, from + QPointF(1.5 * step, 0.0), button, keys);
        }
    }
    return QString::number(line) + (isReleased ? ", released" : "");
}

QString MouseActions::dragBar(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    cBar* bar = draw.oneOf({panel.MapDisp, panel.DMapDisp})->CBar;
    const int row = draw.onceIn(2) ? bar->maxLineY : bar->minLineY;
    const QPointF to = positionIn(bar, draw);
    const Qt::MouseButton button = mostlyLeftButton(draw);
    const Qt::KeyboardModifiers keys = someKeys(draw);
    if (bar->isVisible()) {
        press(bar, {3.0, double(row)}, button, keys);
        move(bar, to, button, keys);
        if (!draw.onceIn(3)) {
            release(bar, to, button, keys);
        }
    }
    return PanelWindows::nameOf(bar);
}

} // namespace tests
