// The window that holds a drawing while it is popped out of its frame.
#pragma once

#include "ui_PopBase.h"

#include <QFrame>

/// A window of its own for a frame's drawing; the form's layout
/// @c PopBaseLayout takes it.
class PopBase : public QFrame, public Ui_PopBase
{
    Q_OBJECT

public:
    /// A hidden window of 800 by 600 that belongs to @p owner.
    explicit PopBase(QWidget* owner);

    /// Takes @p content from its place in @p home (row 1, column 0) into this
    /// window and shows it, or puts it back there and hides the window;
    /// @p docked says where it is and is turned over.
    void popDock(QWidget* content, QGridLayout* home, bool* docked);

public Q_SLOTS:
    /// Repaints the window's own background, what its content leaves free. An
    /// update of the whole window would repaint the content too, whose paint
    /// asks for this one.
    void update();

Q_SIGNALS:
    /// The window was closed while it was in sight.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
};
