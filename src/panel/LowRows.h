// Rows of a form that are no higher than their text needs.
#pragma once

#include <QObject>

class QWidget;

namespace panel
{

/// Holds the rows of a form low, so that a form of many rows fits on the screen of
/// a small computer: line edits, push buttons and combo boxes get the height of a
/// line of text and their frame, check boxes and radio buttons less. The heights
/// follow the form's font and style. Windows that belong to the form, such as file
/// dialogs, keep theirs.
class LowRows : public QObject
{
public:
    /// Lowers the rows of what is inside @p form now, which also owns this.
    explicit LowRows(QWidget* form);

    /// Lowers them again after a change of the font or style; takes no event away.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void lower() const;

    QWidget* m_form;
};

} // namespace panel
