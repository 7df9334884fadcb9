// The list of reference rows, with signals that combine the signals of all rows.
#pragma once

#include <QList>
#include <QObject>

class ARefFile;

/// Contains the reference rows in their order on the panel. The panel connects changedUse()
/// and selectedFile() of each row to the signals of the same name here, so that a receiver
/// needs only one connection.
class RefFiles : public QObject
{
    Q_OBJECT

public:
    explicit RefFiles(QObject* parent = nullptr);

    QList<ARefFile*> RefRows; ///< not owned: the rows are child widgets of the panel

Q_SIGNALS:
    /// A row was switched on or off.
    void changedUse();
    /// A file was selected in the file row of a reference, or this file row was cleared.
    void selectedFile();
};
