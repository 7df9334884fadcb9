// A histogram whose limits stand in the panel's line edits.
#pragma once

#include "analysis/HistogramCounts.h"

#include <QObject>

class QAbstractButton;
class QLineEdit;

/// Counts values between the limits that the user typed. The widgets are not
/// owned; they outlive the calls of init().
class Histgram : public QObject, public analysis::HistogramCounts
{
    Q_OBJECT

public:
    Histgram(QLineEdit* from, QLineEdit* to, QLineEdit* boxCount, QAbstractButton* automatic,
             QObject* parent = nullptr);

    /// Reads the limits and the number of bins from the widgets and zeroes the
    /// counts. Text that is no number counts as 0; see boxesFrom() for what
    /// becomes of the number of bins.
    void init();

    /// Writes fileText() beside the result file @p path, to
    /// "<complete base name>_<name>.<suffix>" in the folder where that file
    /// really is; the name ends in a point when @p path has no suffix.
    ///
    /// Existing files only: creating one is the opt-in. When @p path itself is not
    /// there, the working folder counts as its own.
    ///
    /// @param cutShort  takes the path of a file that could be opened but not
    ///                  written to its end; left alone otherwise
    /// @return whether the file could be opened
    bool write(const QString& path, const QString& name, QString* cutShort = nullptr) const;

    QLineEdit* fromEdit;
    QLineEdit* toEdit;
    QLineEdit* boxesEdit;
    QAbstractButton* autoBox;
    bool autoMode = false; ///< state of autoBox at the last init()
};
