// A line that marks a value in a plot.
#pragma once

#include <QObject>

class QLineEdit;

/// A marker line. Its position is not stored: the value is the text of a line edit,
/// so that typing in the edit and dragging the line have the same effect.
class MarkLine : public QObject
{
    Q_OBJECT

public:
    /// @param lineEdit  the edit whose text is the value; if null, the line creates
    ///                  an edit that is never shown
    /// @param axis      0 for a vertical line, which marks a value of x; any other number
    ///                  for a horizontal line, which marks a value of y
    MarkLine(QLineEdit* lineEdit, int axis, QObject* parent = nullptr);

    int index = 0;         ///< index in MarkLines::lines; set by the code that fills the set
    QLineEdit* edit;       ///< not owned
    int direction;         ///< 0 for a vertical line, otherwise horizontal
    bool relative = false; ///< the text is an offset from another line
    int baseIndex = -1;    ///< index of the other line, whose number is added to the offset
};
