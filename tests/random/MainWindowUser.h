// A simulated user who performs random actions in the whole program.
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

/// Performs actions by number. The random choices of an action depend only on the seed
/// and its number, so actions can be left out. Its effect depends on the state that
/// earlier actions left.
class MainWindowUser
{
public:
    /// Shows the main window and loads files into all rows. @p files must be ready.
    MainWindowUser(Body& body, RandomFiles& files, unsigned seed);

    /// The name of an action's kind.
    QString kindOf(int action) const;

    /// Performs an action, processes all resulting events, and returns a description.
    QString act(int action);

    /// Returns and clears the names of the pictures that the latest action makes stale on
    /// purpose.
    QStringList takeStalePictures() { return m_mouse.takeStalePictures(); }

    /// Call this after the checks of an action. Limits everything that grows by design
    /// (lines of the message box, spectra for display, points of the comparison, long
    /// texts in fields) and everything that makes actions slow (window sizes, numbers of
    /// bins).
    void tidy();

    /// Resets the panel to a state that always takes the same amount of memory.
    void settle();

    /// The number of pixels of all loaded maps and all visible windows. The time of an
    /// action is proportional to it.
    double pixels() const;

    /// Bytes that fields keep permanently because they once had a long text.
    double keptByFields() const { return m_widgets.keptByFields(); }

private:
    const ActionKind& chosen(Draw& draw) const;
    void limitGrowth();
    void clearUndo();

    unsigned m_seed;
    PanelWindows m_windows;
    WidgetActions m_widgets;
    MouseActions m_mouse;
    FileActions m_files;
    QList<ActionKind> m_kinds;
    int m_weight = 0;
};

} // namespace tests
