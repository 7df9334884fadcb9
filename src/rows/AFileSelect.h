// A row in which the user selects a file.
#pragma once

#include "rows/FileDialog.h"
#include "ui_AFileSelect.h"

#include <QFrame>
#include <QString>
#include <QStringList>

#include <optional>

/// A row with a button that opens a file dialog, a field with the name of the selected
/// file, a button that clears this field, and an optional field for the energy shift. A file
/// can also be dropped on the row. The row emits the paths as signals and does not read the
/// files.
class AFileSelect : public QFrame, public Ui_AFileSelect
{
    Q_OBJECT

public:
    static constexpr int OpenMode = 0;
    static constexpr int SaveMode = 1;

    /// Creates an empty row whose energy shift field is hidden; @p initialMode is the
    /// argument of setMode().
    explicit AFileSelect(QWidget* parent = nullptr, int initialMode = OpenMode);

    /// Sets save mode if @p m is 1 (SaveMode), otherwise open mode. The mode determines
    /// the settings of the dialog, and whether the user can type into the name field. The
    /// colour of the field shows this. Set @c multi before the call: in open mode it
    /// determines how many files the dialog can select.
    void setMode(int m);

    /// Returns the text of the name field.
    QString fileText() const;

    int mode = OpenMode;
    bool multi = false;                 ///< whether several files can be selected at once
    QString dir;                        ///< the current directory; starts empty
    QString fileName;                   ///< file name of the latest newFile(), without directory
    rows::FileDialog* dialog = nullptr; ///< owned as a child
    QString suffix = QStringLiteral("dat"); ///< file name extension in save mode

public Q_SLOTS:
    /// Selects the file @p path: shows the path in the name field and emits newDir(),
    /// newFilePath() and selectedFile(), in this order. The file need not exist. In save
    /// mode, a dot and @c suffix are appended to a path with another extension, unless
    /// @c suffix is empty. If @p path is a symbolic link, newDir() reports the directory that
    /// contains the link.
    void newFile(QString path);

    /// Selects several files: shows their names in the name field and emits newDir() with
    /// the directory of the last path, newFilePaths() and selectedFile(), in this order.
    void newFiles(QStringList paths);

    /// Clears the name field and emits newFilePath() with an empty path, then
    /// selectedFile(). The directory does not change.
    void clearFileName();

    /// Preview while the user browses in the dialog: calls newFile() for a readable
    /// regular file. Does nothing for other paths or while the dialog is hidden. If the
    /// user cancels the dialog of a save row, the name field, @c dir and @c fileName are
    /// restored to their values before the dialog opened, without a signal.
    void selectingFile(QString path);

    /// Sets the directory of the dialog. Does not emit newDir(): the panel handles newDir()
    /// by calling setDir() of the rows, so the calls would recurse. Does nothing if
    /// @p newDir is the current directory.
    void setDir(QString newDir);

    /// Shows or hides the energy shift field.
    void showDE(bool f);

Q_SIGNALS:
    /// A path in the directory @p dir was selected. @p dir is canonical, or empty if the
    /// directory does not exist, for example on a network share that is not mounted. If the
    /// path is a symbolic link, @p dir is the directory that contains the link.
    void newDir(QString dir);

    /// @p path was selected; it is empty after clearFileName().
    void newFilePath(QString path);

    /// Several paths were selected at once.
    void newFilePaths(QStringList paths);

    /// Emitted after each newFilePath() and newFilePaths().
    void selectedFile();

    /// Editing of the energy shift field was finished, even if the text is unchanged.
    void newDE();

protected:
    /// Accepts every drag.
    void dragEnterEvent(QDragEnterEvent* event) override;

    /// Applies QString::simplified() to the path of the first dropped URL and calls
    /// newFile() with the result. Does nothing if this URL is not a "file://" URL.
    void dropEvent(QDropEvent* event) override;

    /// Saves the current selection when the dialog opens, so that it can be restored if the
    /// user cancels the dialog. In save mode, also writes the file name into the dialog.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Choice {
        QString text;
        QString dir;
        QString fileName;
    };

    void endDialog(int result);

    std::optional<Choice> m_choiceBefore; // set while the dialog is open
};
