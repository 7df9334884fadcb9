#include "display/WaitCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace display
{

namespace
{

int guards = 0; // number of existing guards that were created with isWanted

} // namespace

WaitCursor::WaitCursor(bool isWanted)
    : m_isWanted(isWanted)
{
    if (m_isWanted && guards++ == 0) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
}

WaitCursor::~WaitCursor()
{
    if (m_isWanted && --guards == 0) {
        QGuiApplication::restoreOverrideCursor();
    }
}

} // namespace display
