// Counts the paint events of each plot of a graph window.
#pragma once

#include "display/Displays.h"
#include "support/PaintCounter.h"

#include <QEvent>
#include <QList>
#include <QObject>

namespace tests
{

/// Counts the paint events of every plot surface of a graph window. The counts are in the
/// order of Displays::disps.
class SurfacePaints : public QObject
{
public:
    explicit SurfacePaints(const Displays& graphs)
        : m_counts(graphs.disps.size(), 0)
    {
        for (const DispABase* plot : graphs.disps) {
            m_surfaces.append(plot->DispA);
            plot->DispA->installEventFilter(this);
        }
        restart();
    }

    /// Processes pending paint events, then sets all counts to 0.
    void restart()
    {
        waitForPaints();
        m_counts.fill(0);
    }

    /// The number of paint events of each surface since restart(). Processes pending paint
    /// events first.
    QList<int> counts()
    {
        waitForPaints();
        return m_counts;
    }

protected:
    bool eventFilter(QObject* surface, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++m_counts[m_surfaces.indexOf(surface)];
        }
        return false;
    }

private:
    QList<QObject*> m_surfaces;
    QList<int> m_counts;
};

/// The value of counts() if each of the ten plots in the grid received @p times paint
/// events and the plot outside the grid received none.
inline QList<int> paintsOfGridPlots(int times)
{
    return QList<int>(10, times) + QList<int>{0};
}

} // namespace tests
