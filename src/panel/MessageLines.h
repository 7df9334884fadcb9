// The lines of the message box.
#pragma once

#include <QTextCursor>

class QString;
class QTextEdit;

namespace panel
{

/// Appends lines to a text box and shows the last one.
///
/// Each change of a text lays out the lines near its end again, and each of them
/// looks up its place in a tree of all lines. The lines of a reflex are therefore
/// laid out together, at its end; the text of the box has each of them at once.
class MessageLines
{
public:
    /// A reflex that may bring several lines. Nested ones belong to the outermost.
    /// No events may be processed meanwhile, since the box is not up to date.
    class [[nodiscard]] Batch
    {
    public:
        explicit Batch(MessageLines* lines);
        ~Batch();

        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        MessageLines* m_lines;
    };

    /// @param box  must outlive the lines
    void setBox(QTextEdit* box) { m_box = box; }

    /// Appends a line and moves the box's cursor behind it, within a batch at the
    /// end of that.
    void append(const QString& line);

private:
    void openBatch();
    void closeBatch();

    QTextEdit* m_box = nullptr;
    QTextCursor m_edit; ///< null unless a batch has brought a line
    int m_batches = 0;
};

} // namespace panel
