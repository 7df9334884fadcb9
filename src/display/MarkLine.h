// One line that marks a value in a plot.
#pragma once

#include <QObject>

class QLineEdit;

/// A marker line. It has no position of its own: its value is the text of an
/// edit, so that typing there and dragging the line are the same change.
class MarkLine : public QObject
{
    Q_OBJECT

public:
    /// @param lineEdit  whose text is the value; without one the line makes an
    ///                  edit of its own that is never shown
    /// @param axis      0 for a vertical line, whose value is an x; anything
    ///                  else for a horizontal one, whose value is a y
    MarkLine(QLineEdit* lineEdit, int axis, QObject* parent = nullptr);

    int index = 0;         ///< its place in the set, written by whoever builds that
    QLineEdit* edit;       ///< not owned
    int direction;         ///< 0 vertical, else horizontal
    bool relative = false; ///< the text holds an offset from another line
    int baseIndex = -1;    ///< the line that a relative one is measured from
};
