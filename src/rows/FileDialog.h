// A file dialog that does not watch a folder while it is hidden.
#pragma once

#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QString>

class QCompleter;
class QFileSystemModel;
class QLineEdit;

/// The file dialog of the input rows.
namespace rows
{

/// A QFileDialog for an owner that keeps it hidden most of the time.
///
/// A hidden dialog only stores the path of its folder; the folder is read when the dialog
/// is shown. A hidden dialog does not watch a folder and does not start to read one, except
/// that the constructor reads the root folder once. Call setDirectory() and directory() through
/// this class: the functions of the base class ignore the stored folder.
///
/// It has no Q_OBJECT because Qt shows the native dialog of the desktop only if the
/// meta-object has the class name QFileDialog. A native dialog has no Qt widgets and no
/// model, so code that looks for them must accept null pointers.
class FileDialog : public QFileDialog
{
public:
    /// Creates a hidden window, owned by @p parent, that opens in the working directory.
    explicit FileDialog(QWidget* parent);

    /// Sets the folder. A visible dialog shows the folder immediately; a hidden dialog shows
    /// it when it opens. If @p folder does not exist when the dialog opens, the dialog shows
    /// the nearest existing parent folder. Does nothing if @p folder is empty.
    void setDirectory(const QString& folder);

    /// Calls setDirectory() with the absolute path of @p folder.
    void setDirectory(const QDir& folder) { setDirectory(folder.absolutePath()); }

    /// Returns the folder that the dialog shows, or will show when it opens.
    QDir directory() const;

    /// Writes @p name, which can be empty, into the name field of the open dialog and
    /// selects the text. Clears the highlight in the list of files. No signal is emitted.
    /// Does nothing for a native dialog.
    void showName(const QString& name);

    /// Shows or hides the dialog. When it is shown, the text of the name field is
    /// selected, so that typing replaces it. When it is first shown, it is made large
    /// enough to read the list of files, as far as the screen permits; later it keeps the
    /// size that the user set.
    void setVisible(bool visible) override;

private:
    QFileSystemModel* fileModel() const;
    QLineEdit* nameEdit() const;
    void suspend();
    void detachCompleter();
    void resume();
    void ensureReadableSize();

    QString m_folder;                 // the folder of a hidden dialog
    QPointer<QCompleter> m_completer; // detached from the name field of a hidden dialog
    bool m_hasReadableSize = false;   // whether the dialog has been made large enough
};

} // namespace rows
