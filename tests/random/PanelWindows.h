// The windows of the program and what can be seen in them.
#pragma once

#include <QList>
#include <QWidget>

class Body;
class FourPs;

namespace tests
{

/// The main window, the graph window, both map windows and the windows of what is
/// popped out of them; no file dialog.
class PanelWindows
{
public:
    /// Has all of them shown once, then calls reset(): a window that was shown keeps
    /// the memory of its picture.
    explicit PanelWindows(Body& body);

    FourPs& panel() const { return m_panel; }
    const QList<QWidget*>& all() const { return m_windows; }

    /// The visible widgets of a class in all windows, those that are disabled not
    /// among them.
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

    /// The name of a widget, with its number where there are others of that name beside
    /// it, and with the title of the plot or map that it belongs to.
    static QString nameOf(const QWidget* widget);

    /// Has everything docked and small, and the main window, the plots and the result
    /// map shown.
    void reset();

    /// Brings the main window back where it was closed, and very large windows to
    /// an ordinary size, since each later picture would take its time.
    void tidy();

private:
    QSize ordinarySize(const QWidget* window) const;

    Body& m_body;
    FourPs& m_panel;
    QList<QWidget*> m_windows;
};

} // namespace tests
