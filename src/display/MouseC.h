// The latest mouse state of a widget.
#pragma once

#include <QObject>
#include <QPoint>

class QMouseEvent;

/// Position, button and modifier keys of the latest mouse event of each kind.
/// Positions are rounded to the nearest pixel of the widget, halves away from zero.
/// A pointer to a MouseC that a signal passes must be used only during the emission:
/// the next event changes the object.
class MouseC : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Records a move.
    void moved(const QMouseEvent* event);
    /// Records a press and sets @c pressed.
    void recordPressed(const QMouseEvent* event);
    /// Records a release and clears @c pressed.
    void released(const QMouseEvent* event);
    /// Records a double click. Does not change @c now and @c prev.
    void dClicked(const QMouseEvent* event);

    QPoint prev; ///< the value of @c now before the last move, press or release
    QPoint now;  ///< position of the last move, press or release
    QPoint pressPos;
    QPoint releasePos;
    QPoint dClickPos;
    bool pressed = false; ///< true from a press of any button until the next release
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
