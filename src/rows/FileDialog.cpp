#include "rows/FileDialog.h"

#include <QAbstractButton>
#include <QCompleter>
#include <QDateTime>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLayout>
#include <QLineEdit>
#include <QLocale>
#include <QScreen>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTreeView>

#include <algorithm>
#include <array>

namespace rows
{

namespace
{

// Names of the toolkit's own widgets.
constexpr QLatin1String nameEditName("fileNameEdit");
constexpr QLatin1String backButtonName("backButton");
constexpr QLatin1String fileListName("treeView");
constexpr QLatin1String iconListName("listView");

enum Column { NameColumn, SizeColumn, KindColumn, DateColumn };

constexpr int nameLength = 24; // characters of an ordinary file name

// The folder, or the nearest one above it that is there.
QString existingFolder(const QString& folder)
{
    QFileInfo info(folder.isEmpty() ? QDir::rootPath() : folder);
    while (!info.isDir() && info.absolutePath() != info.absoluteFilePath()) {
        info.setFile(info.absolutePath());
    }
    return info.absoluteFilePath();
}

// Widens the columns until an ordinary file is readable in them; the width of
// all columns together is the result, px.
int widenColumns(const QTreeView* list)
{
    const QLocale locale = QLocale::system();
    const QDateTime longDate(QDate(2028, 12, 28), QTime(22, 58, 58));
    const std::array<std::pair<Column, QString>, 3> samples{{
        {NameColumn, QString(nameLength, QLatin1Char('0'))},
        {SizeColumn, locale.formattedDataSize(1023990)},
        {DateColumn, locale.toString(longDate, QLocale::ShortFormat)},
    }};
    const QFontMetrics metrics = list->fontMetrics();
    const int iconWidth = list->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, list);
    const int gap = metrics.horizontalAdvance(QStringLiteral("00"));
    QHeaderView* header = list->header();
    for (const auto& [column, text] : samples) {
        const int icon = column == NameColumn ? iconWidth : 0;
        const int needed =
            std::max(metrics.horizontalAdvance(text) + icon + gap, header->sectionSizeHint(column));
        header->resizeSection(column, std::max(header->sectionSize(column), needed));
    }
    return header->length();
}

// Ends the watch of the folder. The model's signals are blocked, or the place
// between two folders would become one for "Back" to return to.
void leaveFolder(QFileSystemModel* model)
{
    const QSignalBlocker quiet(model);
    model->setRootPath(QString());
}

} // namespace

// The base reads the folder that it is made with. It gets the root, which is
// small, and leaves it at once. rest() would end the watch as well, but takes some
// 10 ms: closing a watch that has just begun is slow.
FileDialog::FileDialog(QWidget* parent)
    : QFileDialog(parent, QString(), QDir::rootPath())
    , m_folder(QDir::currentPath())
{
    setWindowFlags(Qt::Window);
    takeCompleter();
    if (QFileSystemModel* model = fileModel()) {
        leaveFolder(model);
        // What stays there would read it again.
        if (m_completer) {
            m_completer->setCompletionPrefix(QString());
        }
        for (const QLatin1String name : {fileListName, iconListName}) {
            if (auto* view = findChild<QAbstractItemView*>(name)) {
                view->setRootIndex(QModelIndex());
            }
        }
    }
}

void FileDialog::setDirectory(const QString& folder)
{
    if (folder.isEmpty()) {
        return;
    }
    if (isVisible()) {
        QFileDialog::setDirectory(folder);
    } else {
        m_folder = folder;
    }
}

QDir FileDialog::directory() const
{
    return isVisible() ? QFileDialog::directory() : QDir(m_folder);
}

void FileDialog::setVisible(bool visible)
{
    const bool wasVisible = isVisible();
    if (visible && !wasVisible) {
        // Before it is shown: a desktop's own dialog takes nothing later.
        wake();
    } else if (wasVisible && !visible) {
        m_folder = QFileDialog::directory().path();
    }
    QFileDialog::setVisible(visible);
    if (wasVisible && !visible) {
        rest();
    }
}

QFileSystemModel* FileDialog::fileModel() const
{
    return findChild<QFileSystemModel*>();
}

QLineEdit* FileDialog::nameEdit() const
{
    return findChild<QLineEdit*>(nameEditName);
}

void FileDialog::rest()
{
    takeCompleter();
    // The model keeps its folder, and the list its place: sent elsewhere, the
    // list would read the folder again.
    if (QFileSystemModel* model = fileModel()) {
        model->setOption(QFileSystemModel::DontWatchForChanges);
    }
}

void FileDialog::takeCompleter()
{
    // The folder is read in a thread: matches may come, and open the list of
    // the completer, after the dialog has gone. Without its field the completer
    // hides its list and cannot open it.
    if (QLineEdit* edit = nameEdit(); edit && edit->completer()) {
        m_completer = edit->completer();
        edit->setCompleter(nullptr);
    }
}

void FileDialog::wake()
{
    if (QFileSystemModel* model = fileModel()) {
        model->setOption(QFileSystemModel::DontWatchForChanges, false);
        // The same folder, too, is to be read again.
        leaveFolder(model);
    }
    QFileDialog::setDirectory(existingFolder(m_folder));
    if (auto* back = findChild<QAbstractButton*>(backButtonName); back && !m_readable) {
        back->setEnabled(false); // the user has been in no folder before this one
    }
    if (QLineEdit* edit = nameEdit()) {
        if (m_completer) {
            edit->setCompleter(m_completer);
        }
        edit->selectAll();
    }
    makeReadable();
}

void FileDialog::showName(const QString& name)
{
    QLineEdit* edit = nameEdit();
    if (!edit) {
        return; // a desktop's own dialog
    }
    const QSignalBlocker quiet(this);
    for (const QLatin1String view : {fileListName, iconListName}) {
        if (auto* list = findChild<QAbstractItemView*>(view)) {
            list->selectionModel()->clear();
        }
    }
    edit->setText(name);
    edit->selectAll();
}

void FileDialog::makeReadable()
{
    const auto* list = findChild<QTreeView*>(fileListName);
    const auto* splitter = findChild<QSplitter*>();
    if (m_readable || !list || !splitter) {
        return;
    }
    m_readable = true;
    ensurePolished();
    const int columns = widenColumns(list);
    const QMargins margins = layout()->contentsMargins();
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    const int wanted = splitter->widget(0)->sizeHint().width() + splitter->handleWidth() + columns +
                       scrollBar + 4 * list->frameWidth() + margins.left() + margins.right();
    const QSize readable(wanted, wanted * 2 / 3);
    // The window manager's frame fits on the screen, too.
    const QSize available = screen()->availableSize() * 9 / 10;
    resize(size().expandedTo(readable).boundedTo(available));
}

} // namespace rows
