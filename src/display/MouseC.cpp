#include "display/MouseC.h"

#include "display/Pixels.h"

#include <QMouseEvent>

void MouseC::moved(const QMouseEvent* event)
{
    moveTo(event);
    moveButton = event->button();
    moveMods = event->modifiers();
}

void MouseC::recordPressed(const QMouseEvent* event)
{
    pressPos = moveTo(event);
    pressed = true;
    pressButton = event->button();
    pressMods = event->modifiers();
}

void MouseC::released(const QMouseEvent* event)
{
    releasePos = moveTo(event);
    pressed = false;
    releaseButton = event->button();
    releaseMods = event->modifiers();
}

void MouseC::dClicked(const QMouseEvent* event)
{
    dClickPos = display::nearestPixel(event->position());
    dClickButton = event->button();
    dClickMods = event->modifiers();
}

QPoint MouseC::moveTo(const QMouseEvent* event)
{
    prev = now;
    now = display::nearestPixel(event->position());
    return now;
}
