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

    /// Returns and clears the names of the pictures that the latest action leaves
    /// outdated on purpose. There are two cases: a release in the comparison plot changes
    /// only the colour of later points, and a double click on a colour bar takes effect
    /// at the next paint of its map.
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
