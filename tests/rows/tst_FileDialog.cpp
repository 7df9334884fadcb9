// Tests of FileDialog, the file dialog of a row.

#include "rows/DialogSettings.h"
#include "rows/FileDialog.h"
#include "support/TestFiles.h"

#include <QAbstractButton>
#include <QCompleter>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <sys/stat.h>

namespace
{

/// A waiting time in milliseconds that is long enough for the model's thread to read a
/// folder of a few files.
constexpr int quietMs = 150;

/// Whether this process watches @p folder, according to the kernel's inotify
/// information in /proc. False if the folder does not exist.
bool isWatched(const QString& folder)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(folder).constData(), &info) != 0) {
        return false;
    }
    const QRegularExpression watch(
        QStringLiteral("inotify wd:\\S+ ino:%1 ").arg(info.st_ino, 0, 16));
    const QDir descriptors(QStringLiteral("/proc/self/fdinfo"));
    const QStringList names = descriptors.entryList(QDir::Files);
    return std::any_of(names.cbegin(), names.cend(), [&](const QString& name) {
        return watch.match(QString::fromUtf8(tests::readFile(descriptors.filePath(name))))
            .hasMatch();
    });
}

/// A dialog, its parent window, and pointers to some of the objects in the dialog.
struct DialogFixture {
    DialogFixture()
    {
        dialog.setNameFilters({QStringLiteral("Data Files (*.dat)")});
        dialog.setFileMode(QFileDialog::ExistingFile);
    }

    /// Opens the dialog and waits until its window is active.
    bool open()
    {
        dialog.show();
        return QTest::qWaitForWindowActive(&dialog);
    }

    bool lists(const QString& path) const
    {
        return list->model()->rowCount(list->rootIndex()) > 0 && model->index(path).isValid() &&
               model->index(path).parent() == list->rootIndex();
    }

    QWidget window;
    rows::FileDialog dialog{&window};
    QFileSystemModel* model = dialog.findChild<QFileSystemModel*>();
    QTreeView* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    QLineEdit* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QCompleter* completer = dialog.findChild<QCompleter*>();
};

} // namespace

class tst_FileDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void reportedClassNameIsQFileDialog();
    void newDialogIsAHiddenWindowOfItsParent();

    void folderOfAHiddenDialogIsStoredButNotRead();
    void closedDialogNeitherReadsNorWatchesItsFolder();
    void dialogClosedWhileReadingWatchesNoFolder();
    void openDialogListsNewFilesInItsFolder();
    void reopeningReadsTheFolderAgain();

    void dialogOpensInTheGivenFolder();
    void dialogOpensInTheFolderChosenByTheUser();
    void dialogOpensInTheNearestExistingParentFolder();
    void emptyFolderNameIsIgnored();
    void openingHighlightsNoFile();
    void closingAddsNoHistoryEntry();
    void firstOpeningHasNoHistory();

    void completionListClosesWithItsDialog();
    void noCompletionListOpensForMatchesFoundAfterClosing();
    void completionListOpensAgainAfterReopening();

    void lastTypedNameIsSelectedOnReopening();
    void firstOpeningShowsNameSizeAndDate();
    void dialogAndColumnSizesSetByTheUserAreKept();
    void titleIsKeptIfModeOrLanguageChanges();

private:
    QString file(const QString& name) const { return tests::writeFile(*m_folder, name, "1 2\n"); }

    const tests::DialogSettings m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void tst_FileDialog::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_path = QDir(m_folder->path()).canonicalPath();
}

void tst_FileDialog::reportedClassNameIsQFileDialog()
{
    // Qt shows the native dialog only for exactly this class name.
    const DialogFixture fixture;
    QCOMPARE(fixture.dialog.metaObject()->className(), "QFileDialog");
}

void tst_FileDialog::newDialogIsAHiddenWindowOfItsParent()
{
    const DialogFixture fixture;
    QCOMPARE(fixture.dialog.parentWidget(), &fixture.window);
    QCOMPARE(fixture.dialog.windowType(), Qt::Window);
    QVERIFY(fixture.dialog.isHidden());
    QCOMPARE(fixture.dialog.directory().path(), QDir::currentPath());
}

void tst_FileDialog::folderOfAHiddenDialogIsStoredButNotRead()
{
    file(QStringLiteral("a.dat"));
    DialogFixture fixture;
    const QSignalSpy loads(fixture.model, &QFileSystemModel::directoryLoaded);
    fixture.dialog.setDirectory(m_path);
    QCOMPARE(fixture.dialog.directory().path(), m_path);
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QVERIFY(!isWatched(QDir::currentPath()));
    QVERIFY(!isWatched(QDir::rootPath()));
    for (const QList<QVariant>& load : loads) {
        QCOMPARE(load.first().toString(), QDir::rootPath());
    }
}

void tst_FileDialog::closedDialogNeitherReadsNorWatchesItsFolder()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTRY_VERIFY(isWatched(m_path));
    QTest::qWait(quietMs);
    const QSignalSpy loads(fixture.model, &QFileSystemModel::directoryLoaded);
    fixture.dialog.close();
    QVERIFY(!isWatched(m_path));
    const QString later = file(QStringLiteral("later.dat"));
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QCOMPARE(loads.size(), 0);
    QCOMPARE(fixture.list->model()->rowCount(fixture.list->rootIndex()), 0);
}

void tst_FileDialog::dialogClosedWhileReadingWatchesNoFolder()
{
    for (int i = 0; i < 500; ++i) {
        file(QStringLiteral("%1.dat").arg(i));
    }
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QSignalSpy loads(fixture.model, &QFileSystemModel::directoryLoaded);
    fixture.dialog.show();
    fixture.dialog.close();
    QTRY_VERIFY(!loads.isEmpty() && loads.last().first().toString() == m_path);
    loads.clear();
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QCOMPARE(loads.size(), 0);
}

void tst_FileDialog::openDialogListsNewFilesInItsFolder()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTRY_VERIFY(isWatched(m_path));
    const QString path = file(QStringLiteral("arrived.dat"));
    QTRY_VERIFY(fixture.lists(path));
}

void tst_FileDialog::reopeningReadsTheFolderAgain()
{
    const QString removed = file(QStringLiteral("removed.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTRY_VERIFY(fixture.lists(removed));
    fixture.dialog.close();
    const QString added = file(QStringLiteral("added.dat"));
    QVERIFY(QFile::remove(removed));
    QVERIFY(fixture.open());
    QTRY_VERIFY(fixture.lists(added));
    QTRY_COMPARE(fixture.list->model()->rowCount(fixture.list->rootIndex()), 1);
    QTRY_VERIFY(isWatched(m_path));
}

void tst_FileDialog::dialogOpensInTheGivenFolder()
{
    const QString path = file(QStringLiteral("a.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QCOMPARE(fixture.dialog.directory().path(), m_path);
    QTRY_VERIFY(fixture.lists(path));
    // An open dialog changes to the folder immediately.
    fixture.dialog.setDirectory(QDir::rootPath());
    QCOMPARE(fixture.dialog.directory().path(), QDir::rootPath());
    QCOMPARE(fixture.model->rootPath(), QDir::rootPath());
}

void tst_FileDialog::dialogOpensInTheFolderChosenByTheUser()
{
    QVERIFY(QDir(m_path).mkdir(QStringLiteral("below")));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTest::keyClicks(fixture.name, QStringLiteral("below"));
    QTest::keyClick(fixture.name, Qt::Key_Return);
    QCOMPARE(fixture.dialog.directory().dirName(), QStringLiteral("below"));
    fixture.dialog.close();
    QCOMPARE(fixture.dialog.directory().dirName(), QStringLiteral("below"));
    QVERIFY(fixture.open());
    QCOMPARE(fixture.model->rootPath(), m_path + QStringLiteral("/below"));
}

void tst_FileDialog::dialogOpensInTheNearestExistingParentFolder()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path + QStringLiteral("/run/1"));
    QVERIFY(fixture.open());
    QCOMPARE(fixture.model->rootPath(), m_path);
    fixture.dialog.close();
    fixture.dialog.setDirectory(QStringLiteral("//server/share"));
    QVERIFY(fixture.open());
    QCOMPARE(fixture.model->rootPath(), QDir::rootPath());
}

void tst_FileDialog::emptyFolderNameIsIgnored()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    fixture.dialog.setDirectory(QString());
    QCOMPARE(fixture.dialog.directory().path(), m_path);
    QVERIFY(fixture.open());
    fixture.dialog.setDirectory(QString());
    QCOMPARE(fixture.dialog.directory().path(), m_path);
}

void tst_FileDialog::openingHighlightsNoFile()
{
    const QString path = file(QStringLiteral("a.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    const QSignalSpy highlights(&fixture.dialog, &QFileDialog::currentChanged);
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(fixture.open());
        QTRY_VERIFY(fixture.lists(path));
        QTest::qWait(quietMs);
        QVERIFY(!fixture.list->currentIndex().isValid());
        fixture.dialog.close();
    }
    QCOMPARE(highlights.size(), 0);
}

void tst_FileDialog::closingAddsNoHistoryEntry()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    for (int opening = 0; opening < 3; ++opening) {
        QVERIFY(fixture.open());
        fixture.dialog.close();
    }
    QVERIFY(fixture.open());
    fixture.dialog.setDirectory(QDir::tempPath());
    auto* back = fixture.dialog.findChild<QAbstractButton*>(QStringLiteral("backButton"));
    QVERIFY(back && back->isEnabled());
    QTest::mouseClick(back, Qt::LeftButton);
    QCOMPARE(fixture.model->rootPath(), m_path);
    while (back->isEnabled()) {
        QTest::mouseClick(back, Qt::LeftButton);
        QVERIFY(!fixture.model->rootPath().isEmpty());
    }
}

void tst_FileDialog::firstOpeningHasNoHistory()
{
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    const auto* back = fixture.dialog.findChild<QAbstractButton*>(QStringLiteral("backButton"));
    QVERIFY(back && !back->isEnabled());
    fixture.dialog.setDirectory(QDir::tempPath());
    QVERIFY(back->isEnabled());
}

void tst_FileDialog::completionListClosesWithItsDialog()
{
    const QString path = file(QStringLiteral("ref_ni2.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTRY_VERIFY(fixture.lists(path));
    QTest::keyClicks(fixture.name, QStringLiteral("ref_ni2.dat"));
    QTRY_VERIFY(fixture.completer->popup()->isVisible());
    const QSignalSpy files(&fixture.dialog, &QFileDialog::fileSelected);
    // The completion list has the keyboard focus while it is open.
    QTest::keyClick(fixture.completer->popup(), Qt::Key_Return);
    QCOMPARE(files.size(), 1);
    QVERIFY(fixture.dialog.isHidden());
    QVERIFY(!fixture.completer->popup()->isVisible());
    QTest::qWait(quietMs);
    QVERIFY(!fixture.completer->popup()->isVisible());
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_FileDialog::noCompletionListOpensForMatchesFoundAfterClosing()
{
    for (int i = 0; i < 300; ++i) {
        file(QStringLiteral("ref_%1.dat").arg(i));
    }
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    const QSignalSpy loads(fixture.model, &QFileSystemModel::directoryLoaded);
    fixture.dialog.show();
    QTest::keyClicks(fixture.name, QStringLiteral("ref"));
    fixture.dialog.close();
    QCOMPARE(loads.size(), 0); // the folder is not read yet, so nothing matches
    // A completer without a widget opens no list.
    QVERIFY(!fixture.completer->widget());
    QTRY_VERIFY(!loads.isEmpty() && loads.last().first().toString() == m_path);
    QTest::qWait(quietMs);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!fixture.completer->popup()->isVisible());
}

void tst_FileDialog::completionListOpensAgainAfterReopening()
{
    const QString path = file(QStringLiteral("ref_ni2.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(fixture.open());
        QTRY_VERIFY(fixture.lists(path));
        QTest::keyClicks(fixture.name, QStringLiteral("ref"));
        QTRY_VERIFY(fixture.completer->popup()->isVisible());
        fixture.dialog.close();
        QVERIFY(!fixture.completer->popup()->isVisible());
    }
}

void tst_FileDialog::lastTypedNameIsSelectedOnReopening()
{
    file(QStringLiteral("target.dat"));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTest::keyClicks(fixture.name, QStringLiteral("target.dat"));
    fixture.dialog.close();
    QVERIFY(fixture.open());
    QTRY_VERIFY(fixture.name->hasFocus());
    QCOMPARE(fixture.name->selectedText(), QStringLiteral("target.dat"));
    QTest::keyClicks(fixture.name, QStringLiteral("mix.dat"));
    QCOMPARE(fixture.name->text(), QStringLiteral("mix.dat"));
}

void tst_FileDialog::firstOpeningShowsNameSizeAndDate()
{
    const QString path = tests::writeFile(*m_folder, QStringLiteral("spectrum_8345.75ev_a.dat"),
                                          QByteArray(1023990, '1'));
    DialogFixture fixture;
    fixture.dialog.setDirectory(m_path);
    QVERIFY(fixture.open());
    QTRY_VERIFY(fixture.lists(path));
    const QAbstractItemView* list = fixture.list;
    for (const int column : {0, 1, 3}) {
        const QByteArray which = "column " + QByteArray::number(column);
        QVERIFY2(list->sizeHintForColumn(column) <= fixture.list->columnWidth(column), which);
        const QRect cell = list->visualRect(fixture.model->index(path).siblingAtColumn(column));
        QVERIFY2(list->viewport()->rect().contains(cell), which);
    }
    QVERIFY(fixture.dialog.width() <= 1200 && fixture.dialog.height() <= 700);
}

void tst_FileDialog::dialogAndColumnSizesSetByTheUserAreKept()
{
    DialogFixture fixture;
    QVERIFY(fixture.open());
    const QSize chosen(450, 420);
    fixture.dialog.resize(chosen);
    fixture.list->header()->resizeSection(0, 90);
    fixture.dialog.close();
    QVERIFY(fixture.open());
    QCOMPARE(fixture.dialog.size(), chosen);
    QCOMPARE(fixture.list->columnWidth(0), 90);
}

void tst_FileDialog::titleIsKeptIfModeOrLanguageChanges()
{
    DialogFixture fixture;
    const QString title = QStringLiteral("Ref 1");
    fixture.dialog.setWindowTitle(title);
    fixture.dialog.setAcceptMode(QFileDialog::AcceptSave);
    fixture.dialog.setFileMode(QFileDialog::Directory);
    fixture.dialog.setAcceptMode(QFileDialog::AcceptOpen);
    QEvent language(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&fixture.dialog, &language);
    QVERIFY(fixture.open());
    QCOMPARE(fixture.dialog.windowTitle(), title);
}

QTEST_MAIN(tst_FileDialog)
#include "tst_FileDialog.moc"
