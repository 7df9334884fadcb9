// The marker lines of a plot, and the line that the mouse drags.
#pragma once

#include <QList>
#include <QObject>

class MarkLine;

/// A set of marker lines. Several painting surfaces can use one set; they emit its
/// signals while the user drags a line.
class MarkLines : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Appends a line. The set does not own its lines.
    void add(MarkLine* line);

    /// Removes all lines from the set without deleting them, and clears the selection.
    void clear();

    /// Returns the value of line @p i: the number in its edit, plus baseValue().
    /// Unparsable text counts as 0. Returns 0.0 for an index outside the set.
    double value(int i) const;

    /// Returns the number in the edit of the line to which line @p i is relative, see
    /// MarkLine::baseIndex. Returns 0.0 if line @p i is not relative, or if one of the two
    /// lines does not exist.
    double baseValue(int i) const;

    QList<MarkLine*> lines;
    bool selected = false;  ///< whether the mouse drags a line
    int selectedIndex = -1; ///< index of the dragged line, or -1

Q_SIGNALS:
    /// The selected line was dragged; its edit already shows the new number.
    void moving();
    /// The selected line was released.
    void newPos();
};
