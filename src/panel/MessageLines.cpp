#include "panel/MessageLines.h"

#include <QTextEdit>

namespace panel
{

MessageLines::Batch::Batch(MessageLines* lines)
    : m_lines(lines)
{
    ++m_lines->m_batches;
}

MessageLines::Batch::~Batch()
{
    if (--m_lines->m_batches == 0) {
        m_lines->closeBatch();
    }
}

void MessageLines::append(const QString& line)
{
    const QTextCursor shown = m_box->textCursor();
    if (shown.hasSelection() || !shown.atEnd()) {
        m_box->moveCursor(QTextCursor::End); // the user has moved the cursor
    }
    openBatch();
    m_box->insertPlainText(line + QLatin1Char('\n'));
    if (m_batches == 0) {
        m_box->moveCursor(QTextCursor::End);
    }
}

void MessageLines::openBatch()
{
    if (m_batches > 0 && m_edit.isNull()) {
        m_edit = QTextCursor(m_box->document());
        m_edit.beginEditBlock();
    }
}

void MessageLines::closeBatch()
{
    if (!m_edit.isNull()) {
        m_edit.endEditBlock();
        m_edit = QTextCursor();
        m_box->moveCursor(QTextCursor::End);
    }
}

} // namespace panel
