// A histogram whose limits stand in the panel's line edits.
#pragma once

#include "analysis/HistogramCounts.h"

#include <QObject>

class QAbstractButton;
class QLineEdit;

class Histgram : public QObject, public HistogramCounts
{
    Q_OBJECT

public:
    Histgram(QLineEdit* from, QLineEdit* to, QLineEdit* boxCount, QAbstractButton* automatic,
             QObject* parent = nullptr);

    /// Reads the limits and the number of bins from the widgets and zeroes the
    /// counts.
    void init();

    /// Writes the counts beside the result file @p path, to
    /// "<complete base name>_<name>.<suffix>".
    ///
    /// @return false when that file could not be opened or written. A file that
    ///         is not there yet cannot: see the implementation.
    bool write(const QString& path, const QString& name) const;

    QLineEdit* fromEdit;
    QLineEdit* toEdit;
    QLineEdit* boxesEdit;
    QAbstractButton* autoBox;
    bool autoMode = false; ///< state of autoBox at the last init()
};
