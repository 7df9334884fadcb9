// Sends mouse and wheel events, including some that QTest cannot send, such as events at
// fractional positions and moves with modifier keys.
#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

namespace tests
{

/// Sends one mouse event to @p widget; @p at is in the widget's coordinates.
inline void sendMouse(QWidget* widget, QEvent::Type type, const QPointF& at, Qt::MouseButton button,
                      Qt::MouseButtons held, Qt::KeyboardModifiers keys)
{
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, keys);
    QCoreApplication::sendEvent(widget, &event);
}

inline void press(QWidget* widget, const QPointF& at, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers keys = {})
{
    sendMouse(widget, QEvent::MouseButtonPress, at, button, button, keys);
}

inline void release(QWidget* widget, const QPointF& at, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers keys = {})
{
    sendMouse(widget, QEvent::MouseButtonRelease, at, button, {}, keys);
}

/// Sends only the double-click event, without the press and release events that come
/// before it in a real double click and without the final release event.
inline void doubleClick(QWidget* widget, const QPointF& at, Qt::MouseButton button = Qt::LeftButton,
                        Qt::KeyboardModifiers keys = {})
{
    sendMouse(widget, QEvent::MouseButtonDblClick, at, button, button, keys);
}

/// Sends a mouse move while the buttons @p held are pressed.
inline void move(QWidget* widget, const QPointF& at, Qt::MouseButtons held = {},
                 Qt::KeyboardModifiers keys = {})
{
    sendMouse(widget, QEvent::MouseMove, at, Qt::NoButton, held, keys);
}

/// Sends a mouse move while the left button is pressed.
inline void drag(QWidget* widget, const QPointF& at, Qt::KeyboardModifiers keys = {})
{
    move(widget, at, Qt::LeftButton, keys);
}

/// Turns the wheel by @p delta, in eighths of a degree. One notch of the wheel is 120.
inline void turnWheel(QWidget* widget, const QPointF& at, const QPoint& delta,
                      Qt::KeyboardModifiers keys = {})
{
    QWheelEvent event(at, widget->mapToGlobal(at), QPoint(), delta, Qt::NoButton, keys,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace tests
