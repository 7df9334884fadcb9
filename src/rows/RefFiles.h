// The list of reference rows, and one place to listen to all of them.
#pragma once

#include <QList>
#include <QObject>

class ARefFile;

/// Holds the reference rows in list order. The panel connects each row to the
/// two signals, so that it need listen in one place only.
class RefFiles : public QObject
{
    Q_OBJECT

public:
    explicit RefFiles(QObject* parent = nullptr);

    QList<ARefFile*> RefRows; ///< owned by the panel's widget tree

Q_SIGNALS:
    /// A row was switched on or off.
    void changedUse();
    /// A row was given a file, or cleared.
    void selectedFile();
};
