// Appends lines to the message box.
#pragma once

#include <QTextCursor>

class QString;
class QTextEdit;

namespace panel
{

/// Appends lines to a text box and scrolls to the last one.
///
/// After each change, QTextEdit lays out the lines near the end of the text again, and
/// looks up the position of each of these lines in a tree of all lines. To do this only
/// once, all lines of a Batch are laid out together at the end of the batch. The text of
/// the box contains each line immediately.
class MessageLines
{
public:
    /// A scope in which several lines can be appended, such as a recalculation. A nested
    /// batch is part of the outermost one. Do not process events inside a batch, since the
    /// box would be painted with an outdated layout.
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

    /// Sets the text box.
    /// @param box  must outlive this object
    void setBox(QTextEdit* box) { m_box = box; }

    /// Appends a line at the end of the text and scrolls to it. Inside a batch, the box scrolls
    /// to the new lines only when the batch ends.
    /// @pre setBox() was called
    void append(const QString& line);

private:
    void openBatch();
    void closeBatch();

    QTextEdit* m_box = nullptr;
    QTextCursor m_edit; ///< the open edit block; null until a batch appends its first line
    int m_batches = 0;
};

} // namespace panel
