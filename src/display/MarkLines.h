// The marker lines of a plot, and which of them the mouse holds.
#pragma once

#include <QList>
#include <QObject>

class MarkLine;

/// A set of marker lines. One set may serve several surfaces, which emit its
/// signals while the user drags.
class MarkLines : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Appends a line, which stays the caller's.
    void add(MarkLine* line);

    /// Forgets the lines without deleting them, and the selection.
    void clear();

    /// The value of line @p i, from its text: words count as 0. A relative line
    /// is added to the text of its base line. 0.0 for an index outside the set;
    /// a base outside the set counts as 0.
    double value(int i) const;

    /// The number in the edit of the line that line @p i is measured from; 0.0
    /// for a line that is not relative, and without such a line.
    double baseValue(int i) const;

    QList<MarkLine*> lines;
    bool selected = false;  ///< the mouse holds a line
    int selectedIndex = -1; ///< which one; -1 for none

Q_SIGNALS:
    /// The selected line was dragged; its edit has the new value.
    void moving();
    /// The selected line was let go.
    void newPos();
};
