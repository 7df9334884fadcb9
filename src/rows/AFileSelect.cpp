#include "rows/AFileSelect.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace
{

// The colour shows whether the user can type into the field.
constexpr QLatin1String readOnlyStyle("background-color: rgb(255, 255, 220);");
constexpr QLatin1String editableStyle("background-color: rgb(255, 255, 255);");

// Resolves the directory, not the file: the canonical path of a file that does not exist
// yet is empty.
QString canonicalDirectory(const QFileInfo& info)
{
    return info.dir().canonicalPath();
}

// The path of a dropped URL; empty if it is not a "file://" URL.
QString droppedPath(const QUrl& url)
{
    const QString scheme = QStringLiteral("file://");
    const QString text = url.toString();
    if (!text.startsWith(scheme)) {
        return {};
    }
    const QString path = text.mid(scheme.size()).simplified();
    // A URL with a host name is a network share.
    return path.startsWith(u'/') ? path : QStringLiteral("//") + path;
}

} // namespace

AFileSelect::AFileSelect(QWidget* parent, int initialMode)
    : QFrame(parent)
    , dialog(new rows::FileDialog(this))
{
    setupUi(this);
    dEBase->hide();
    setAcceptDrops(true);
    // The field would insert a dropped URL as text. If the field refuses drops, the row
    // receives them.
    FileName->setAcceptDrops(false);

    dialog->setObjectName(QStringLiteral("dialog"));
    dialog->setNameFilters({QStringLiteral("Data Files (*.dat)"),
                            QStringLiteral("2dProc files (*.2dp)"), QStringLiteral("All (* *.*)")});
    dialog->installEventFilter(this);
    setMode(initialMode);

    connect(SelectB, &QPushButton::clicked, dialog, &QFileDialog::show);
    // If the dialog is already open, the main window can cover it, so the button also raises it.
    connect(SelectB, &QPushButton::clicked, dialog, &QFileDialog::raise);
    connect(SelectB, &QPushButton::clicked, dialog, &QFileDialog::activateWindow);
    connect(ClearB, &QPushButton::clicked, this, &AFileSelect::clearFileName);
    connect(dialog, &QFileDialog::fileSelected, this, &AFileSelect::newFile);
    connect(dialog, &QFileDialog::currentChanged, this, &AFileSelect::selectingFile);
    connect(dialog, &QFileDialog::filesSelected, this, &AFileSelect::newFiles);
    connect(dialog, &QFileDialog::finished, this, &AFileSelect::endDialog);
    connect(dE, &QLineEdit::editingFinished, this, &AFileSelect::newDE);
}

void AFileSelect::setMode(int m)
{
    mode = m;
    const bool saving = mode == SaveMode;
    if (saving) {
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setFileMode(QFileDialog::AnyFile);
    } else {
        dialog->setAcceptMode(QFileDialog::AcceptOpen);
        dialog->setFileMode(multi ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    }
    FileName->setReadOnly(!saving);
    FileName->setFocusPolicy(saving ? Qt::StrongFocus : Qt::ClickFocus);
    FileName->setStyleSheet(saving ? editableStyle : readOnlyStyle);
}

QString AFileSelect::fileText() const
{
    return FileName->text();
}

void AFileSelect::newFile(QString path)
{
    if (mode == SaveMode && !suffix.isEmpty() && QFileInfo(path).suffix() != suffix) {
        path += u'.' + suffix;
    }
    FileName->setText(path);
    const QFileInfo info(path);
    dir = canonicalDirectory(info);
    fileName = info.fileName();
    Q_EMIT newDir(dir);
    Q_EMIT newFilePath(path);
    Q_EMIT selectedFile();
}

void AFileSelect::newFiles(QStringList paths)
{
    QString names;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        names += info.fileName() + u' ';
        dir = canonicalDirectory(info);
    }
    FileName->setText(names);
    Q_EMIT newDir(dir);
    Q_EMIT newFilePaths(paths);
    Q_EMIT selectedFile();
}

void AFileSelect::clearFileName()
{
    FileName->clear();
    // newDir() is not emitted: the directory that the rows for input share does not change.
    Q_EMIT newFilePath(QString());
    Q_EMIT selectedFile();
}

void AFileSelect::selectingFile(QString path)
{
    // Code that changes the hidden dialog can also move its highlight, which calls this
    // slot.
    if (!dialog->isVisible()) {
        return;
    }
    const QFileInfo info(path);
    if (info.isFile() && info.isReadable()) {
        newFile(path);
    }
}

void AFileSelect::setDir(QString newDir)
{
    if (newDir == dir) {
        return;
    }
    dir = newDir;
    dialog->setDirectory(newDir);
}

void AFileSelect::showDE(bool f)
{
    dEBase->setVisible(f);
}

void AFileSelect::dragEnterEvent(QDragEnterEvent* event)
{
    event->acceptProposedAction();
}

void AFileSelect::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty()) {
        return;
    }
    const QString path = droppedPath(urls.first());
    if (path.isEmpty()) {
        return;
    }
    // Forces CopyAction so that the source of the drag keeps the file.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    newFile(path);
}

bool AFileSelect::eventFilter(QObject* watched, QEvent* event)
{
    // A spontaneous show event means that a minimised dialog is restored, not opened.
    if (watched == dialog && event->type() == QEvent::Show && !event->spontaneous()) {
        m_choiceBefore = Choice{FileName->text(), dir, fileName};
        if (mode == SaveMode) {
            dialog->showName(QFileInfo(FileName->text()).fileName());
        }
    }
    return QFrame::eventFilter(watched, event);
}

void AFileSelect::endDialog(int result)
{
    // If the user highlights a file, its path is written into the name field. "Cancel" must
    // restore the old text; otherwise the next result would overwrite the highlighted file.
    if (result == QDialog::Rejected && mode == SaveMode && m_choiceBefore) {
        FileName->setText(m_choiceBefore->text);
        dir = m_choiceBefore->dir;
        fileName = m_choiceBefore->fileName;
    }
    m_choiceBefore.reset();
}
