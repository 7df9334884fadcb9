// What the mouse did last on a surface.
#pragma once

#include <QObject>
#include <QPoint>

class QMouseEvent;

/// Positions (widget pixels, halves away from zero), buttons and modifiers of
/// the last mouse events. A signal that carries a MouseC lends it for the length
/// of the emission.
class MouseC : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Record an event of their kind.
    void moved(const QMouseEvent* event);
    void recordPressed(const QMouseEvent* event);
    void released(const QMouseEvent* event);
    void dClicked(const QMouseEvent* event);

    QPoint prev;          ///< @c now before the last move, press or release
    QPoint now;           ///< the latest of these
    QPoint pressPos;      ///< of the last press
    QPoint releasePos;    ///< of the last release
    QPoint dClickPos;     ///< of the last double click
    bool pressed = false; ///< from a press of any button to the next release
    Qt::MouseButton moveButton = Qt::NoButton;
    Qt::MouseButton pressButton = Qt::NoButton;
    Qt::MouseButton releaseButton = Qt::NoButton;
    Qt::MouseButton dClickButton = Qt::NoButton;
    Qt::KeyboardModifiers moveMods;
    Qt::KeyboardModifiers pressMods;
    Qt::KeyboardModifiers releaseMods;
    Qt::KeyboardModifiers dClickMods;

private:
    QPoint moveTo(const QMouseEvent* event);
};
