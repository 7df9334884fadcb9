// The list of drawing colours for graphs.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>

/// A list of drawing colours. A short list is extended with derived colours.
class CColors : public QObject
{
    Q_OBJECT

public:
    /// Makes the base list of 45 colours (15 colours, repeated three times) and
    /// extends it to @p n colours if @p n is greater than 45.
    explicit CColors(int n = 40);

    /// Copies @p list and extends it to @p n colours if it has fewer.
    ///
    /// The list is extended in rounds until it has @p n colours. A round derives one
    /// new colour from each pair of neighbours in the list as it was before the round;
    /// the last colour is paired with the first. An empty list stays empty.
    CColors(const QList<QColor>& list, int n);

    QList<QColor> colors;

private:
    void grow(int n);
};
