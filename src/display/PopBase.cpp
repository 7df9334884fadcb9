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
        // Otherwise a field, or the button that docks, would have the focus.
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
    // A second close may come before the first one has been shown, when a
    // calculation kept the windows waiting. It must not take the drawing back
    // into a window that is closing.
    if (isVisible()) {
        Q_EMIT closed();
    }
    event->accept();
}
