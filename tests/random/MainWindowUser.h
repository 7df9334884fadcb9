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
/// and on the number of the action, so a run can omit actions without changing the choices
/// of the other actions. The effect of an action also depends on the state after the
/// earlier actions.
class MainWindowUser
{
public:
    /// Shows the main window, loads files and calculates a result. files.isReady() must be true.
    /// @p body and @p files must outlive this object.
    MainWindowUser(Body& body, RandomFiles& files, unsigned seed);

    /// The kind of the action with the number @p action, as a text for the log.
    QString kindOf(int action) const;

    /// Performs the action with the number @p action and processes all resulting events.
    /// Returns a description of the action.
    QString act(int action);

    /// Returns and clears the names of the pictures that the program, on purpose, does not
    /// repaint at once after the latest action. These pictures can be outdated.
    QStringList takeStalePictures() { return m_mouse.takeStalePictures(); }

    /// Call this after the checks of each action. It limits what grows by design (lines of
    /// the message box, displayed spectra, points of the comparison plot, long texts in
    /// fields) and what slows actions down (window sizes, numbers of bins).
    void tidy();

    /// Resets what affects the memory of the panel most. Its memory then hardly depends on
    /// earlier actions, so two measurements can be compared.
    void resetToFixedState();

    /// The number of pixels of all loaded maps and all visible windows. The time that an
    /// action is allowed to take grows with this number.
    double pixels() const;

    /// Bytes used by the undo histories of the text fields, see WidgetActions::keptByFields().
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
