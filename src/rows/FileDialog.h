// A file dialog that costs nothing while it is hidden.
#pragma once

#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QString>

class QCompleter;
class QFileSystemModel;
class QLineEdit;

namespace rows
{

/// The toolkit's dialog for an owner that keeps it, mostly hidden, for long.
///
/// While it is hidden it reads no folder and watches none, apart from one look at
/// the root folder as it is made: the folder that it is to show is only remembered,
/// and the dialog goes there when it opens. Call
/// setDirectory() and directory() through this class; those of the base know
/// nothing of the remembered folder.
///
/// No Q_OBJECT: the toolkit takes the desktop's own dialog only for an object
/// that calls itself a QFileDialog. Such a dialog has no widgets and no model
/// here.
class FileDialog : public QFileDialog
{
public:
    /// A hidden window of its own that belongs to @p parent and will open in
    /// the working directory.
    explicit FileDialog(QWidget* parent);

    /// The dialog shows @p folder, at once or when it opens. Opening leads to
    /// the nearest folder above it when it is gone by then. Nothing happens for
    /// an empty one.
    void setDirectory(const QString& folder);
    void setDirectory(const QDir& folder) { setDirectory(folder.absolutePath()); }

    /// The folder that the dialog shows, or will show when it opens.
    QDir directory() const;

    /// Puts @p name, which may be empty, into the name field of the open dialog and
    /// selects it; no file is highlighted and no signal goes out.
    void showName(const QString& name);

    /// Opens the dialog with the name of its last file selected, so that typing
    /// replaces it, or hides it with everything that belongs to it. It opens
    /// large enough to read at first; then it keeps the size the user gave it.
    void setVisible(bool visible) override;

private:
    QFileSystemModel* fileModel() const;
    QLineEdit* nameEdit() const;
    void rest();
    void takeCompleter();
    void wake();
    void makeReadable();

    QString m_folder;                 // of a hidden dialog
    QPointer<QCompleter> m_completer; // of a hidden dialog, taken from its name field
    bool m_readable = false;          // it has had its size
};

} // namespace rows
