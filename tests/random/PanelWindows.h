// The windows of the program and their visible widgets.
#pragma once

#include <QList>
#include <QWidget>

class Body;
class FourPs;

namespace tests
{

/// The main window, the graph window, both map windows and the windows of popped-out
/// plots and maps. File dialogs are not included.
class PanelWindows
{
public:
    /// Shows every window once and then calls reset(). A window that was shown keeps the
    /// memory of its backing store, so this memory is allocated before the actions.
    explicit PanelWindows(Body& body);

    FourPs& panel() const { return m_panel; }
    const QList<QWidget*>& all() const { return m_windows; }

    /// The visible and enabled widgets of a class in all windows.
    template <class Widget>
    QList<Widget*> visible() const
    {
        QList<Widget*> found;
        for (const QWidget* window : m_windows) {
            if (!window->isVisible()) {
                continue;
            }
            const auto children = window->findChildren<Widget*>();
            for (Widget* child : children) {
                if (child->window() == window && child->isVisible() && child->isEnabled()) {
                    found.append(child);
                }
            }
        }
        return found;
    }

    /// The name of a widget, followed by a number if siblings have the same name, and by
    /// the title of the plot or map that contains it, if any.
    static QString nameOf(const QWidget* widget);

    /// Docks all surfaces, resizes all windows to their ordinary size, and shows only the
    /// main window, the graph window and the result map.
    void reset();

    /// Shows the main window if it was closed, and resizes very large windows to their
    /// ordinary size, because large pictures slow down all later checks.
    void tidy();

private:
    QSize ordinarySize(const QWidget* window) const;

    Body& m_body;
    FourPs& m_panel;
    QList<QWidget*> m_windows;
};

} // namespace tests
