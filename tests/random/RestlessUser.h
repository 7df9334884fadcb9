// A user who does at random whatever the program lets him do.
#pragma once

#include "random/FileActions.h"
#include "random/MouseActions.h"
#include "random/PanelWindows.h"
#include "random/RandomFiles.h"
#include "random/WidgetActions.h"

#include <QStringList>

class Body;

namespace tests
{

/// Does actions by their numbers. What an action draws follows from the seed and
/// its number alone, so that actions may be left out; what it meets in the windows
/// follows from those before it.
class RestlessUser
{
public:
    /// Shows the main window and loads files into all rows. @p files must be ready.
    RestlessUser(Body& body, RandomFiles& files, unsigned seed);

    /// The kind of an action.
    QString kindOf(int action) const;

    /// Does an action, with all that follows from it, and says what it was.
    QString act(int action);

    /// The pictures that the latest action leaves as they are, by design. Empty after
    /// the call.
    QStringList takeLeftBehind() { return m_mouse.takeLeftBehind(); }

    /// Call it after the checks of an action. Keeps what grows by design within
    /// limits: lines of the message box, spectra for display, points of the
    /// comparison, long texts in fields; and what takes long within others: sizes of windows,
    /// numbers of bins.
    void tidy();

    /// Brings the panel to a state that is always the same size in memory.
    void settle();

    /// The pixels of the maps in use and of the visible windows together, to which
    /// the time of an action is in proportion.
    double pixels() const;

    /// Bytes that fields keep for ever since they had a long text.
    double keptByFields() const { return m_widgets.keptByFields(); }

private:
    const ActionKind& chosen(Draw& draw) const;
    void clearWhatGrows();
    void forgetUndo();

    unsigned m_seed;
    PanelWindows m_windows;
    WidgetActions m_widgets;
    MouseActions m_mouse;
    FileActions m_files;
    QList<ActionKind> m_kinds;
    int m_weight = 0;
};

} // namespace tests
