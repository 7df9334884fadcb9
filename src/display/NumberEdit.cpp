#include "display/NumberEdit.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace display
{

void NumberEdit::keyPressEvent(QKeyEvent* event)
{
    FittedEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        endEditing();
        selectAll();
    }
}

void NumberEdit::mousePressEvent(QMouseEvent* event)
{
    m_selectedWhole = false;
    FittedEdit::mousePressEvent(event);
}

void NumberEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    FittedEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton) {
        selectAll();
        m_selectedWhole = true;
    }
}

void NumberEdit::mouseMoveEvent(QMouseEvent* event)
{
    // After a double click a small movement of the mouse must not change the selection.
    if (!m_selectedWhole) {
        FittedEdit::mouseMoveEvent(event);
    }
}

void NumberEdit::mouseReleaseEvent(QMouseEvent* event)
{
    m_selectedWhole = false;
    FittedEdit::mouseReleaseEvent(event);
}

} // namespace display
