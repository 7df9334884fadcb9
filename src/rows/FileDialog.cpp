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

// Object names of widgets within QFileDialog.
constexpr QLatin1String nameEditName("fileNameEdit");
constexpr QLatin1String backButtonName("backButton");
constexpr QLatin1String fileListName("treeView");
constexpr QLatin1String iconListName("listView");

enum Column { NameColumn, SizeColumn, KindColumn, DateColumn };

constexpr int nameLength = 24; // characters in a typical file name

// Returns @p folder, or its nearest parent that exists.
QString existingFolder(const QString& folder)
{
    QFileInfo info(folder.isEmpty() ? QDir::rootPath() : folder);
    while (!info.isDir() && info.absolutePath() != info.absoluteFilePath()) {
        info.setFile(info.absolutePath());
    }
    return info.absoluteFilePath();
}

// Widens the columns so that the name, the size and the date of a typical file are readable.
// Returns the total width of all columns, in pixels.
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

// Makes the model stop watching its folder. The signals of the model are blocked; otherwise
// the empty path would be added to the history of the "Back" button.
void leaveFolder(QFileSystemModel* model)
{
    const QSignalBlocker blocker(model);
    model->setRootPath(QString());
}

} // namespace

// The constructor of the base class starts to read and watch its folder argument. The
// argument is the root folder, which has few entries, and leaveFolder() stops watching it
// immediately. suspend() is not called here: setting DontWatchForChanges just after a watch has
// started takes about 10 ms.
FileDialog::FileDialog(QWidget* parent)
    : QFileDialog(parent, QString(), QDir::rootPath())
    , m_folder(QDir::currentPath())
{
    setWindowFlags(Qt::Window);
    detachCompleter();
    if (QFileSystemModel* model = fileModel()) {
        leaveFolder(model);
        // If the completer kept its prefix or a view kept its root index, the model would
        // read the root folder again.
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
        // resume() must run before the dialog is shown: a visible native dialog can ignore a
        // change of its folder.
        resume();
    } else if (wasVisible && !visible) {
        m_folder = QFileDialog::directory().path();
    }
    QFileDialog::setVisible(visible);
    if (wasVisible && !visible) {
        suspend();
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

void FileDialog::suspend()
{
    detachCompleter();
    // The root path of the model and the root index of the view are not changed, because
    // the view would then read the folder again.
    if (QFileSystemModel* model = fileModel()) {
        model->setOption(QFileSystemModel::DontWatchForChanges);
    }
}

void FileDialog::detachCompleter()
{
    // A thread reads the folder, so matches can arrive, and open the popup of the
    // completer, after the dialog is hidden. A completer without a line edit hides its
    // popup and cannot open it.
    if (QLineEdit* edit = nameEdit(); edit && edit->completer()) {
        m_completer = edit->completer();
        edit->setCompleter(nullptr);
    }
}

void FileDialog::resume()
{
    if (QFileSystemModel* model = fileModel()) {
        model->setOption(QFileSystemModel::DontWatchForChanges, false);
        // Makes the model read the folder again, even if the folder is unchanged.
        leaveFolder(model);
    }
    QFileDialog::setDirectory(existingFolder(m_folder));
    if (auto* back = findChild<QAbstractButton*>(backButtonName); back && !m_hasReadableSize) {
        back->setEnabled(false); // the history contains no folder that the user has seen
    }
    if (QLineEdit* edit = nameEdit()) {
        if (m_completer) {
            edit->setCompleter(m_completer);
        }
        edit->selectAll();
    }
    ensureReadableSize();
}

void FileDialog::showName(const QString& name)
{
    QLineEdit* edit = nameEdit();
    if (!edit) {
        return; // a native dialog
    }
    const QSignalBlocker blocker(this);
    for (const QLatin1String view : {fileListName, iconListName}) {
        if (auto* list = findChild<QAbstractItemView*>(view)) {
            list->selectionModel()->clear();
        }
    }
    edit->setText(name);
    edit->selectAll();
}

void FileDialog::ensureReadableSize()
{
    const auto* list = findChild<QTreeView*>(fileListName);
    const auto* splitter = findChild<QSplitter*>();
    if (m_hasReadableSize || !list || !splitter) {
        return;
    }
    m_hasReadableSize = true;
    ensurePolished();
    const int columns = widenColumns(list);
    const QMargins margins = layout()->contentsMargins();
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    const int wanted = splitter->widget(0)->sizeHint().width() + splitter->handleWidth() + columns +
                       scrollBar + 4 * list->frameWidth() + margins.left() + margins.right();
    const QSize readable(wanted, wanted * 2 / 3);
    // The remaining tenth of the screen leaves space for the window manager's frame.
    const QSize available = screen()->availableSize() * 9 / 10;
    resize(size().expandedTo(readable).boundedTo(available));
}

} // namespace rows
