// The list of reference rows, and one place to listen to all of them.
#pragma once

#include <QList>
#include <QObject>

class ARefFile;

class RefFiles : public QObject
{
    Q_OBJECT

public:
    explicit RefFiles(QObject* parent = nullptr);

    QList<ARefFile*> RefRows; ///< owned by the panel's widget tree

Q_SIGNALS:
    void changedUse();
    void selectedFile();
};
