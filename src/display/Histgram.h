// A histogram whose limits and number of bins are read from line edits of the panel.
#pragma once

#include "analysis/HistogramCounts.h"

#include <QObject>

class QAbstractButton;
class QLineEdit;

/// A histogram with the limits and the number of bins that the user has typed. The
/// widgets are not owned and must exist whenever init() is called.
class Histgram : public QObject, public analysis::HistogramCounts
{
    Q_OBJECT

public:
    Histgram(QLineEdit* from, QLineEdit* to, QLineEdit* boxCount, QAbstractButton* automatic,
             QObject* parent = nullptr);

    /// Reads the limits and the number of bins from the widgets and sets all counts to 0.
    /// Unparsable text counts as 0. The number of bins is limited by boxesFrom(). Also
    /// updates @c autoMode.
    void init();

    /// Writes fileText() to "<complete base name>_<name>.<suffix>" next to the result
    /// file @p path. Symbolic links are resolved, so the histogram file is written to the
    /// folder of the actual result file. If @p path has no suffix, the file name ends
    /// with a dot.
    ///
    /// Writes to existing files only: creating the file is the opt-in of the user.
    /// If @p path itself does not exist, the current working folder is used.
    ///
    /// @param incomplete  receives the path of the file if it was opened but could
    ///                    not be written completely; unchanged otherwise
    /// @return whether the file could be opened
    bool write(const QString& path, const QString& name, QString* incomplete = nullptr) const;

    QLineEdit* fromEdit;
    QLineEdit* toEdit;
    QLineEdit* boxesEdit;
    QAbstractButton* autoBox;
    bool autoMode = false; ///< whether autoBox was checked at the last init()
};
