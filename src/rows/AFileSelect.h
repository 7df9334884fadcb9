// The row through which every file of the program is named.
#pragma once

#include "ui_AFileSelect.h"

#include <QFrame>
#include <QString>
#include <QStringList>

class QFileDialog;

/// A button that opens a file dialog, a field that shows the choice, a clear
/// button, drag and drop, and an optional energy shift field. It hands paths
/// on by signals and knows nothing of what the files hold.
class AFileSelect : public QFrame, public Ui_AFileSelect
{
    Q_OBJECT

public:
    static constexpr int OpenMode = 0;
    static constexpr int SaveMode = 1;

    explicit AFileSelect(QWidget* parent = nullptr, int initialMode = OpenMode);

    /// Open mode (0) or save mode (1): sets the dialog up, and whether the
    /// name field can be typed in. Set @c multi first.
    void setMode(int m);

    /// The text of the name field.
    QString fileText() const;

    int mode = OpenMode;
    bool multi = false; ///< several files may be picked; set before setMode()
    QString dir;        ///< the directory last used
    QString fileName;   ///< the name without its directory
    QFileDialog* dialog = nullptr;
    QString suffix = QStringLiteral("dat"); ///< what a save path must bear

public Q_SLOTS:
    void newFile(QString path);
    void newFiles(QStringList paths);
    void clearFileName();
    void selectingFile(QString path);
    void setDir(QString newDir);
    void showDE(bool f);

Q_SIGNALS:
    void newDir(QString dir);
    void newFilePath(QString path);
    void newFilePaths(QStringList paths);
    void selectedFile();
    void newDE();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};
