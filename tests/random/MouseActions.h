// What a random user does with the mouse in plots, maps and colour bars.
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

    /// The pictures that the latest actions leave as they are, by design: a release
    /// in the comparison changes the colour of later points alone, and a double
    /// click on a bar reaches its map with the map's own next paint. Empty after
    /// the call.
    QStringList takeLeftBehind();

private:
    QString turn(Draw& draw);
    QString moveAround(Draw& draw);
    QString stroke(Draw& draw);
    QString doubleClickAt(Draw& draw);
    QString pressInLegend(Draw& draw);
    QString dragLine(Draw& draw);
    QString dragBar(Draw& draw);

    QList<QWidget*> surfaces() const;
    void letGo(QWidget* widget, const QPointF& at, Qt::MouseButton button,
               Qt::KeyboardModifiers keys);

    PanelWindows& m_windows;
    QStringList m_leftBehind;
};

} // namespace tests
