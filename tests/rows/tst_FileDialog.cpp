// The file dialog of a row: at rest while hidden, ready to type when it opens.

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

/// Long enough for a thread to read a folder of a few files.
constexpr int quietMs = 150;

/// Whether this process has the folder watched, as the kernel tells.
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

/// A dialog of a window, with the toolkit's own widgets inside.
struct Desk {
    Desk()
    {
        dialog.setNameFilters({QStringLiteral("Data Files (*.dat)")});
        dialog.setFileMode(QFileDialog::ExistingFile);
    }

    /// Opens the dialog, ready for the keyboard.
    bool open()
    {
        dialog.show();
        return QTest::qWaitForWindowActive(&dialog);
    }

    bool holds(const QString& path) const
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

    void desktopsMayShowTheirOwnDialog();
    void isAHiddenWindowOfItsParent();

    void hiddenDialogOnlyRemembersItsFolder();
    void dialogThatWasClosedNeitherReadsNorWatches();
    void dialogClosedWhileItReadsWatchesNothingLater();
    void openDialogFollowsItsFolder();
    void openingReadsTheFolderAgain();

    void opensInTheFolderThatItWasGiven();
    void opensWhereTheUserWent();
    void opensAboveAFolderThatIsGone();
    void emptyFolderIsNoFolder();
    void openingHighlightsNoFile();
    void pausesAreNoPlacesToGoBackTo();
    void firstOpeningHasNoPlaceToGoBackTo();

    void completionListGoesWithItsDialog();
    void matchesThatComeLateOpenNoList();
    void completionWorksOnTheNextOpening();

    void lastNameIsSelectedOnEachOpening();
    void firstOpeningShowsNameSizeAndDate();
    void sizeThatTheUserChoseStays();
    void titleStaysWhateverTheModes();

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

void tst_FileDialog::desktopsMayShowTheirOwnDialog()
{
    // The toolkit asks for exactly this name.
    const Desk desk;
    QCOMPARE(desk.dialog.metaObject()->className(), "QFileDialog");
}

void tst_FileDialog::isAHiddenWindowOfItsParent()
{
    const Desk desk;
    QCOMPARE(desk.dialog.parentWidget(), &desk.window);
    QCOMPARE(desk.dialog.windowType(), Qt::Window);
    QVERIFY(desk.dialog.isHidden());
    QCOMPARE(desk.dialog.directory().path(), QDir::currentPath());
}

void tst_FileDialog::hiddenDialogOnlyRemembersItsFolder()
{
    file(QStringLiteral("a.dat"));
    Desk desk;
    const QSignalSpy loads(desk.model, &QFileSystemModel::directoryLoaded);
    desk.dialog.setDirectory(m_path);
    QCOMPARE(desk.dialog.directory().path(), m_path);
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QVERIFY(!isWatched(QDir::currentPath()));
    QVERIFY(!isWatched(QDir::rootPath()));
    for (const QList<QVariant>& load : loads) {
        QCOMPARE(load.first().toString(), QDir::rootPath());
    }
}

void tst_FileDialog::dialogThatWasClosedNeitherReadsNorWatches()
{
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTRY_VERIFY(isWatched(m_path));
    QTest::qWait(quietMs);
    const QSignalSpy loads(desk.model, &QFileSystemModel::directoryLoaded);
    desk.dialog.close();
    QVERIFY(!isWatched(m_path));
    const QString later = file(QStringLiteral("later.dat"));
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QCOMPARE(loads.size(), 0);
    QCOMPARE(desk.list->model()->rowCount(desk.list->rootIndex()), 0);
}

void tst_FileDialog::dialogClosedWhileItReadsWatchesNothingLater()
{
    for (int i = 0; i < 500; ++i) {
        file(QStringLiteral("%1.dat").arg(i));
    }
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QSignalSpy loads(desk.model, &QFileSystemModel::directoryLoaded);
    desk.dialog.show();
    desk.dialog.close();
    QTRY_VERIFY(!loads.isEmpty() && loads.last().first().toString() == m_path);
    loads.clear();
    QTest::qWait(quietMs);
    QVERIFY(!isWatched(m_path));
    QCOMPARE(loads.size(), 0);
}

void tst_FileDialog::openDialogFollowsItsFolder()
{
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTRY_VERIFY(isWatched(m_path));
    const QString path = file(QStringLiteral("arrived.dat"));
    QTRY_VERIFY(desk.holds(path));
}

void tst_FileDialog::openingReadsTheFolderAgain()
{
    const QString removed = file(QStringLiteral("removed.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.holds(removed));
    desk.dialog.close();
    const QString added = file(QStringLiteral("added.dat"));
    QVERIFY(QFile::remove(removed));
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.holds(added));
    QTRY_COMPARE(desk.list->model()->rowCount(desk.list->rootIndex()), 1);
    QTRY_VERIFY(isWatched(m_path));
}

void tst_FileDialog::opensInTheFolderThatItWasGiven()
{
    const QString path = file(QStringLiteral("a.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QCOMPARE(desk.dialog.directory().path(), m_path);
    QTRY_VERIFY(desk.holds(path));
    // One that is open goes there at once.
    desk.dialog.setDirectory(QDir::rootPath());
    QCOMPARE(desk.dialog.directory().path(), QDir::rootPath());
    QCOMPARE(desk.model->rootPath(), QDir::rootPath());
}

void tst_FileDialog::opensWhereTheUserWent()
{
    QVERIFY(QDir(m_path).mkdir(QStringLiteral("below")));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTest::keyClicks(desk.name, QStringLiteral("below"));
    QTest::keyClick(desk.name, Qt::Key_Return);
    QCOMPARE(desk.dialog.directory().dirName(), QStringLiteral("below"));
    desk.dialog.close();
    QCOMPARE(desk.dialog.directory().dirName(), QStringLiteral("below"));
    QVERIFY(desk.open());
    QCOMPARE(desk.model->rootPath(), m_path + QStringLiteral("/below"));
}

void tst_FileDialog::opensAboveAFolderThatIsGone()
{
    Desk desk;
    desk.dialog.setDirectory(m_path + QStringLiteral("/run/1"));
    QVERIFY(desk.open());
    QCOMPARE(desk.model->rootPath(), m_path);
    desk.dialog.close();
    desk.dialog.setDirectory(QStringLiteral("//server/share"));
    QVERIFY(desk.open());
    QCOMPARE(desk.model->rootPath(), QDir::rootPath());
}

void tst_FileDialog::emptyFolderIsNoFolder()
{
    Desk desk;
    desk.dialog.setDirectory(m_path);
    desk.dialog.setDirectory(QString());
    QCOMPARE(desk.dialog.directory().path(), m_path);
    QVERIFY(desk.open());
    desk.dialog.setDirectory(QString());
    QCOMPARE(desk.dialog.directory().path(), m_path);
}

void tst_FileDialog::openingHighlightsNoFile()
{
    const QString path = file(QStringLiteral("a.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    const QSignalSpy highlights(&desk.dialog, &QFileDialog::currentChanged);
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(desk.open());
        QTRY_VERIFY(desk.holds(path));
        QTest::qWait(quietMs);
        QVERIFY(!desk.list->currentIndex().isValid());
        desk.dialog.close();
    }
    QCOMPARE(highlights.size(), 0);
}

void tst_FileDialog::pausesAreNoPlacesToGoBackTo()
{
    Desk desk;
    desk.dialog.setDirectory(m_path);
    for (int opening = 0; opening < 3; ++opening) {
        QVERIFY(desk.open());
        desk.dialog.close();
    }
    QVERIFY(desk.open());
    desk.dialog.setDirectory(QDir::tempPath());
    auto* back = desk.dialog.findChild<QAbstractButton*>(QStringLiteral("backButton"));
    QVERIFY(back && back->isEnabled());
    QTest::mouseClick(back, Qt::LeftButton);
    QCOMPARE(desk.model->rootPath(), m_path);
    while (back->isEnabled()) {
        QTest::mouseClick(back, Qt::LeftButton);
        QVERIFY(!desk.model->rootPath().isEmpty());
    }
}

void tst_FileDialog::firstOpeningHasNoPlaceToGoBackTo()
{
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    const auto* back = desk.dialog.findChild<QAbstractButton*>(QStringLiteral("backButton"));
    QVERIFY(back && !back->isEnabled());
    desk.dialog.setDirectory(QDir::tempPath());
    QVERIFY(back->isEnabled());
}

void tst_FileDialog::completionListGoesWithItsDialog()
{
    const QString path = file(QStringLiteral("ref_ni2.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.holds(path));
    QTest::keyClicks(desk.name, QStringLiteral("ref_ni2.dat"));
    QTRY_VERIFY(desk.completer->popup()->isVisible());
    const QSignalSpy files(&desk.dialog, &QFileDialog::fileSelected);
    // While it is open the list has the keyboard.
    QTest::keyClick(desk.completer->popup(), Qt::Key_Return);
    QCOMPARE(files.size(), 1);
    QVERIFY(desk.dialog.isHidden());
    QVERIFY(!desk.completer->popup()->isVisible());
    QTest::qWait(quietMs);
    QVERIFY(!desk.completer->popup()->isVisible());
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_FileDialog::matchesThatComeLateOpenNoList()
{
    for (int i = 0; i < 300; ++i) {
        file(QStringLiteral("ref_%1.dat").arg(i));
    }
    Desk desk;
    desk.dialog.setDirectory(m_path);
    const QSignalSpy loads(desk.model, &QFileSystemModel::directoryLoaded);
    desk.dialog.show();
    QTest::keyClicks(desk.name, QStringLiteral("ref"));
    desk.dialog.close();
    QCOMPARE(loads.size(), 0); // so nothing matches yet
    // Without a field a completer opens nothing.
    QVERIFY(!desk.completer->widget());
    QTRY_VERIFY(!loads.isEmpty() && loads.last().first().toString() == m_path);
    QTest::qWait(quietMs);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(!desk.completer->popup()->isVisible());
}

void tst_FileDialog::completionWorksOnTheNextOpening()
{
    const QString path = file(QStringLiteral("ref_ni2.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(desk.open());
        QTRY_VERIFY(desk.holds(path));
        QTest::keyClicks(desk.name, QStringLiteral("ref"));
        QTRY_VERIFY(desk.completer->popup()->isVisible());
        desk.dialog.close();
        QVERIFY(!desk.completer->popup()->isVisible());
    }
}

void tst_FileDialog::lastNameIsSelectedOnEachOpening()
{
    file(QStringLiteral("target.dat"));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTest::keyClicks(desk.name, QStringLiteral("target.dat"));
    desk.dialog.close();
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.name->hasFocus());
    QCOMPARE(desk.name->selectedText(), QStringLiteral("target.dat"));
    QTest::keyClicks(desk.name, QStringLiteral("mix.dat"));
    QCOMPARE(desk.name->text(), QStringLiteral("mix.dat"));
}

void tst_FileDialog::firstOpeningShowsNameSizeAndDate()
{
    const QString path = tests::writeFile(*m_folder, QStringLiteral("spectrum_8345.75ev_a.dat"),
                                          QByteArray(1023990, '1'));
    Desk desk;
    desk.dialog.setDirectory(m_path);
    QVERIFY(desk.open());
    QTRY_VERIFY(desk.holds(path));
    const QAbstractItemView* list = desk.list;
    for (const int column : {0, 1, 3}) {
        const QByteArray which = "column " + QByteArray::number(column);
        QVERIFY2(list->sizeHintForColumn(column) <= desk.list->columnWidth(column), which);
        const QRect cell = list->visualRect(desk.model->index(path).siblingAtColumn(column));
        QVERIFY2(list->viewport()->rect().contains(cell), which);
    }
    QVERIFY(desk.dialog.width() <= 1200 && desk.dialog.height() <= 700);
}

void tst_FileDialog::sizeThatTheUserChoseStays()
{
    Desk desk;
    QVERIFY(desk.open());
    const QSize chosen(450, 420);
    desk.dialog.resize(chosen);
    desk.list->header()->resizeSection(0, 90);
    desk.dialog.close();
    QVERIFY(desk.open());
    QCOMPARE(desk.dialog.size(), chosen);
    QCOMPARE(desk.list->columnWidth(0), 90);
}

void tst_FileDialog::titleStaysWhateverTheModes()
{
    Desk desk;
    const QString title = QStringLiteral("Ref 1");
    desk.dialog.setWindowTitle(title);
    desk.dialog.setAcceptMode(QFileDialog::AcceptSave);
    desk.dialog.setFileMode(QFileDialog::Directory);
    desk.dialog.setAcceptMode(QFileDialog::AcceptOpen);
    QEvent language(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&desk.dialog, &language);
    QVERIFY(desk.open());
    QCOMPARE(desk.dialog.windowTitle(), title);
}

QTEST_MAIN(tst_FileDialog)
#include "tst_FileDialog.moc"
