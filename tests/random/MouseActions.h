// Random mouse actions in plots, maps and colour bars.
#pragma once

#include "random/ActionKind.h"
#include "random/PanelWindows.h"

#include <QPointF>
#include <QStringList>

class DispArea;

namespace tests
{

class MouseActions
{
public:
    explicit MouseActions(PanelWindows& windows)
        : m_windows(windows)
    {
    }

    QList<ActionKind> kinds();

    /// Returns and clears the names of the pictures that the program, on purpose, does not
    /// repaint at once after the latest action. These pictures can be outdated. There are two
    /// cases. A release in the comparison plot changes the current colour; the plot of
    /// thickness against valence shows this colour only at its next paint. A double click
    /// on a colour bar changes its map only at the next paint of the map.
    QStringList takeStalePictures();

private:
    QString turnWheelIn(Draw& draw);
    QString moveAround(Draw& draw);
    QString dragFreely(Draw& draw);
    QString doubleClickAt(Draw& draw);
    QString pressInLegend(Draw& draw);
    QString dragLine(Draw& draw);
    QString dragBar(Draw& draw);

    QList<QWidget*> surfaces() const;
    void releaseButton(QWidget* widget, const QPointF& at, Qt::MouseButton button,
                       Qt::KeyboardModifiers keys);

    PanelWindows& m_windows;
    QStringList m_stalePictures;
};

} // namespace tests
