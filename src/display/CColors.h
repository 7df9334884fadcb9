// The list of colours from which spectra and references take theirs.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>

/// A list of colours that can be made as long as wanted.
class CColors : public QObject
{
    Q_OBJECT

public:
    /// The base list of 45 colours (fifteen, three times over), grown to
    /// @p n if that is more.
    explicit CColors(int n = 40);

    /// @p list, grown to @p n colours if it has fewer.
    ///
    /// Each round derives further colours from neighbours in the list as it
    /// stood, wrapping at its end. An empty list has no neighbours and stays
    /// empty.
    CColors(const QList<QColor>& list, int n);

    QList<QColor> colors;

private:
    void grow(int n);
};
