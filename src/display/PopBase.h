// The separate window for a drawing that is popped out of its frame.
#pragma once

#include "ui_PopBase.h"

#include <QFrame>

/// A separate window for the drawing of a frame. The drawing is placed in the layout
/// @c PopBaseLayout of the form.
class PopBase : public QFrame, public Ui_PopBase
{
    Q_OBJECT

public:
    /// Creates a hidden window of 800 by 600 pixels that is owned by @p owner.
    explicit PopBase(QWidget* owner);

    /// If @p docked is true, moves @p content from @p home into this window and shows
    /// the window. Otherwise moves it back to row 1, column 0 of @p home and hides the
    /// window. Then inverts @p docked.
    void popDock(QWidget* content, QGridLayout* home, bool* docked);

public Q_SLOTS:
    /// Repaints only the background that the content does not cover. Each paint of
    /// the content calls this slot; an update of the whole window would repaint the
    /// content again, in an endless loop.
    void update();

Q_SIGNALS:
    /// The window was closed while it was visible.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
};
