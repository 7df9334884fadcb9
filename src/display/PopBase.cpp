#include "display/PopBase.h"

#include <QCloseEvent>
#include <QGridLayout>

PopBase::PopBase(QWidget* owner)
    : QFrame(owner, Qt::Window)
{
    setupUi(this);
    resize(800, 600);
    hide();
}

void PopBase::popDock(QWidget* content, QGridLayout* home, bool* docked)
{
    if (*docked) {
        PopBaseLayout->addWidget(content);
        show();
        // Without this, a line edit or the button that docks the drawing would get the focus.
        setFocus();
    } else {
        home->addWidget(content, 1, 0);
        hide();
    }
    *docked = !*docked;
}

void PopBase::update()
{
    QWidget::update(QRegion(rect()) - childrenRegion());
}

void PopBase::closeEvent(QCloseEvent* event)
{
    // If a calculation blocks the event loop, the user can request a second close before
    // the first one has been handled. The second one must not move the drawing back into
    // the window that is closing.
    if (isVisible()) {
        Q_EMIT closed();
    }
    event->accept();
}
