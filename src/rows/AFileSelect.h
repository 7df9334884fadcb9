// The row through which every file of the program is named.
#pragma once

#include "rows/FileDialog.h"
#include "ui_AFileSelect.h"

#include <QFrame>
#include <QString>
#include <QStringList>

#include <optional>

/// A button that opens a file dialog, a field that shows the choice, a clear
/// button, drag and drop, and an optional energy shift field. It hands paths
/// on by signals and knows nothing of what the files hold.
class AFileSelect : public QFrame, public Ui_AFileSelect
{
    Q_OBJECT

public:
    static constexpr int OpenMode = 0;
    static constexpr int SaveMode = 1;

    /// An empty row with its energy shift field hidden; see setMode() for
    /// @p initialMode.
    explicit AFileSelect(QWidget* parent = nullptr, int initialMode = OpenMode);

    /// Open mode (0) or save mode (1): sets the dialog up, and whether the
    /// name field can be typed in, which its colour tells. Anything but 1
    /// opens. Set @c multi first.
    void setMode(int m);

    /// The text of the name field.
    QString fileText() const;

    int mode = OpenMode;
    bool multi = false;                     ///< several files may be picked; set before setMode()
    QString dir;                            ///< the directory last used
    QString fileName;                       ///< the name without its directory
    rows::FileDialog* dialog = nullptr;     ///< the one dialog of the row, its child
    QString suffix = QStringLiteral("dat"); ///< what a save path must bear

public Q_SLOTS:
    /// Takes a path, which need not be a file: shows it and tells newDir(),
    /// newFilePath() and selectedFile(). In save mode a path that does not bear
    /// @c suffix gets it appended. A symbolic link to a file is in the folder
    /// of the link, not in that of the file.
    void newFile(QString path);

    /// Takes several paths: shows their names and tells newDir() with the
    /// directory of the last one, newFilePaths() and selectedFile().
    void newFiles(QStringList paths);

    /// Empties the name field; an empty newFilePath() and selectedFile() go
    /// out. The directory stays.
    void clearFileName();

    /// Preview while the user browses: newFile() for a readable regular file,
    /// nothing for anything else and while the dialog is hidden. When the
    /// dialog of a save row is cancelled, the text of the name field, @c dir and
    /// @c fileName are again what they were when it opened; no signal goes out.
    void selectingFile(QString path);

    /// Sends the dialog to @p newDir without telling, so that a directory
    /// shared by many rows does not come back round as newDir(). Does nothing
    /// for the present directory.
    void setDir(QString newDir);

    /// Shows or hides the energy shift field.
    void showDE(bool f);

Q_SIGNALS:
    /// A path came from @p dir, a canonical path; empty when there is no such
    /// directory, as for a share that is not mounted. The folder of a symbolic
    /// link to a file is that of the link.
    void newDir(QString dir);

    /// The row names @p path now; empty after it was cleared.
    void newFilePath(QString path);

    void newFilePaths(QStringList paths);

    /// After each of the two above.
    void selectedFile();

    /// The energy shift field was left or confirmed.
    void newDE();

protected:
    /// Accepts whatever is dragged.
    void dragEnterEvent(QDragEnterEvent* event) override;

    /// newFile() for the first URL of the drop; nothing when that is no
    /// "file://" one. Blanks in the path are folded.
    void dropEvent(QDropEvent* event) override;

    /// Notes what the row names when its dialog opens.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Choice {
        QString text;
        QString dir;
        QString fileName;
    };

    void endDialog(int result);

    std::optional<Choice> m_choiceBefore; // while the dialog is open
};
