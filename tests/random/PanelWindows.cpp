#include "random/PanelWindows.h"

#include "app/Body.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"
#include "support/ShownPictures.h"

namespace tests
{

PanelWindows::PanelWindows(Body& body)
    : m_body(body)
    , m_panel(*body.findChild<FourPs*>())
    , m_windows{&body, m_panel.Disps, m_panel.MapDisp, m_panel.DMapDisp}
{
    for (const DispABase* plot : std::as_const(m_panel.Disps->disps)) {
        m_windows.append(plot->pop);
    }
    m_windows += {m_panel.MapDisp->pop, m_panel.DMapDisp->pop};
    reset();
    m_panel.DMapDisp->show();
    m_panel.ui.DispCondsB->setChecked(true);
    for (DispABase* plot : std::as_const(m_panel.Disps->disps)) {
        plot->popDock();
    }
    m_panel.MapDisp->popDock();
    m_panel.DMapDisp->popDock();
    processPendingEvents();
    m_panel.ui.DispCondsB->setChecked(false);
    reset();
}

void PanelWindows::reset()
{
    for (QWidget* window : std::as_const(m_windows)) {
        const bool isAlwaysShown =
            window == &m_body || window == m_panel.Disps || window == m_panel.MapDisp;
        if (isAlwaysShown) {
            window->show();
        } else {
            window->close(); // closing also docks a popped-out plot or map
        }
        window->resize(ordinarySize(window));
    }
    processPendingEvents();
}

QSize PanelWindows::ordinarySize(const QWidget* window) const
{
    if (window == &m_body) {
        return {1016, 673};
    }
    return window == m_panel.Disps ? QSize(480, 360) : QSize(220, 170);
}

QString PanelWindows::nameOf(const QWidget* widget)
{
    QString name = widget->objectName();
    const QWidget* parent = widget->parentWidget();
    if (!parent) {
        return name;
    }
    const auto alike = parent->findChildren<QWidget*>(name, Qt::FindDirectChildrenOnly);
    if (alike.size() > 1) {
        name += u' ' + QString::number(alike.indexOf(const_cast<QWidget*>(widget)) + 1);
    }
    for (; parent; parent = parent->parentWidget()) {
        if (const auto* plot = qobject_cast<const DispABase*>(parent)) {
            return name + " of " + plot->Title->text();
        }
        if (const auto* map = qobject_cast<const DispMBase*>(parent)) {
            return name + " of " + map->Title->text();
        }
    }
    return name;
}

void PanelWindows::tidy()
{
    for (QWidget* window : std::as_const(m_windows)) {
        const QSize ordinary = ordinarySize(window);
        if (window->width() > 2 * ordinary.width() || window->height() > 2 * ordinary.height()) {
            window->resize(ordinary);
        }
    }
    m_body.show();
}

} // namespace tests
