// Tests of AFileSelect, the file row: its form, its open and save modes, and the
// ways in which a user chooses a path.

#include "rows/AFileSelect.h"
#include "rows/DialogSettings.h"
#include "rows/FormChecks.h"
#include "support/DataRows.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>
#include <QWindow>
#include <QtTest>

#include <functional>
#include <memory>
#include <sys/stat.h>

namespace
{

// Records the signals of a row about selected paths, in the order of emission.
class SignalRecorder : public QObject
{
    Q_OBJECT

public:
    explicit SignalRecorder(AFileSelect* row)
    {
        connect(row, &AFileSelect::newDir, this,
                [this](const QString& dir) { entries << QStringLiteral("newDir ") + dir; });
        connect(row, &AFileSelect::newFilePath, this,
                [this](const QString& path) { entries << QStringLiteral("newFilePath ") + path; });
        connect(row, &AFileSelect::newFilePaths, this, [this](const QStringList& paths) {
            entries << QStringLiteral("newFilePaths ") + paths.join(u'|');
        });
        connect(row, &AFileSelect::selectedFile, this,
                [this] { entries << QStringLiteral("selectedFile"); });
    }

    QStringList entries;
};

void enter(AFileSelect* row, const QMimeData& mime, bool* accepted)
{
    QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                          Qt::NoModifier);
    event.setDropAction(Qt::MoveAction);
    event.ignore();
    QCoreApplication::sendEvent(row, &event);
    *accepted = event.isAccepted();
}

// Drops @p mime on the row. Returns the drop action that the source of the drag
// receives; IgnoreAction if the row does not accept the drop.
Qt::DropAction drop(AFileSelect* row, const QMimeData& mime)
{
    bool accepted = false;
    enter(row, mime, &accepted);
    if (!accepted) {
        return Qt::IgnoreAction;
    }
    QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                     Qt::NoModifier);
    event.setDropAction(Qt::MoveAction);
    event.ignore();
    QCoreApplication::sendEvent(row, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction dropUrls(AFileSelect* row, const QList<QUrl>& urls)
{
    QMimeData mime;
    mime.setUrls(urls);
    return drop(row, mime);
}

/// A function that creates the row of a test case.
using MakeRow = std::function<AFileSelect*()>;

/// Closes a dialog as a user can: with Cancel, with Escape or by the window manager.
using CloseDialog = std::function<void(QFileDialog*)>;

/// The model index of a file in the list of the row's open dialog; invalid while the
/// file is not listed.
QModelIndex indexOfFile(const AFileSelect& row, const QString& path)
{
    const auto* list = row.dialog->findChild<QTreeView*>(QStringLiteral("treeView"));
    const auto* model = qobject_cast<const QFileSystemModel*>(list->model());
    for (int i = 0; i < model->rowCount(list->rootIndex()); ++i) {
        const QModelIndex cell = model->index(i, 0, list->rootIndex());
        if (model->filePath(cell) == path) {
            return cell;
        }
    }
    return {};
}

/// Clicks a file in the list of the row's open dialog. Returns false, without a click,
/// if the file is not listed in time.
bool clickFile(const AFileSelect& row, const QString& path)
{
    const auto* list = row.dialog->findChild<QTreeView*>(QStringLiteral("treeView"));
    const bool listed =
        QTest::qWaitForWindowActive(row.dialog) &&
        QTest::qWaitFor([&] { return indexOfFile(row, path).isValid(); }) &&
        QTest::qWaitFor([&] { return !list->visualRect(indexOfFile(row, path)).isEmpty(); });
    if (listed) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualRect(indexOfFile(row, path)).center());
    }
    return listed;
}

/// A visible save row that contains the name of a result file. Its dialog shows
/// @p folder.
struct SaveRow {
    explicit SaveRow(const QString& folder)
    {
        row->newFile(QStringLiteral("/results/") + fileName);
        row->dir = dir;
        row->dialog->setDirectory(folder);
        row->show();
    }

    AFileSelect* operator->() const { return row.get(); }
    AFileSelect& operator*() const { return *row; }
    AFileSelect* get() const { return row.get(); }

    std::unique_ptr<AFileSelect> row =
        std::make_unique<AFileSelect>(nullptr, AFileSelect::SaveMode);
    QString dir = QStringLiteral("/results");
    QString fileName = QStringLiteral("result_1.dat");
    QString text = QStringLiteral("/results/result_1.dat");
};

} // namespace

Q_DECLARE_METATYPE(CloseDialog)

class tst_AFileSelect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void formContainsTheExpectedWidgets();
    void formHasTheExpectedWidthsAndSpacings();
    void shiftFieldIsInDEBaseAndStartsAtZero();
    void rowStartsEmptyInOpenMode();
    void slotsAreCallableByName();

    void dialogIsAWindowOwnedByTheRow();
    void dialogFiltersAreDatThen2dpThenAllFiles();
    void newDialogStartsInTheWorkingDirectory();
    void selectButtonShowsTheDialogWithoutBlocking();
    void selectButtonBringsTheDialogThatIsAlreadyOpenToTheFront();

    void modeSetsDialogModesAndWhetherTheFieldIsReadOnly_data();
    void modeSetsDialogModesAndWhetherTheFieldIsReadOnly();
    void multiFlagAloneKeepsTheDialogAtOneFile();

    void newFileShowsThePathAndEmitsSignalsInOrder();
    void newFileStoresTheCanonicalDirectory();
    void symbolicLinkToAFileKeepsItsOwnFolder();
    void newFileShowsThePathOfAMissingFile();
    void directoryOfAnUnsavedFileIsStored();
    void savePathGetsTheSuffix_data();
    void savePathGetsTheSuffix();

    void newFilesShowsNamesFollowedBySpaces();
    void newFilesStoresTheDirectoryOfTheLastPath();
    void newFilesWithEmptyListClearsTheField();

    void clearKeepsTheDirectoryAndEmitsAnEmptyPath();

    void highlightedFileIsLoadedImmediatelyAndAgainOnOpen();
    void acceptingTheDialogEmitsTheSelectedPath();
    void highlightIsIgnoredWhileTheDialogIsHidden();
    void highlightOfNonRegularFileIsIgnored_data();
    void highlightOfNonRegularFileIsIgnored();
    void highlightedUnreadableFileIsIgnored();
    void severalSelectedFilesAreEmittedTogether();
    void openingTheDialogLoadsNoFile();

    void cancelRestoresTheFileNameOfTheSaveRow_data();
    void cancelRestoresTheFileNameOfTheSaveRow();
    void secondClickOnSelectKeepsTheNameToRestore();
    void cancelRestoresTheNameOfTheLatestOpening();
    void nameConfirmedInTheDialogIsKept();
    void cancelOfAHiddenDialogKeepsTheName();
    void cancelInOpenModeKeepsTheHighlightedFile();

    void saveDialogOpensWithTheNameOfItsRow();
    void settingTheSameDirectoryKeepsTheDialogDirectory();
    void newDirectoryIsSetWithoutSignals();

    void dragWithoutFilesIsAcceptedButItsDropIsIgnored();
    void nameFieldOfASaveRowAcceptsNoDrops();
    void droppedLocalFileIsLoaded_data();
    void droppedLocalFileIsLoaded();
    void droppedUrlIsShownAsPath_data();
    void droppedUrlIsShownAsPath();
    void dropOfSeveralFilesUsesTheFirstFile();
    void dropIsIgnoredUnlessTheFirstUrlIsALocalFile_data();
    void dropIsIgnoredUnlessTheFirstUrlIsALocalFile();
    void fileDroppedInSaveModeGetsTheSuffix();
    void dropActionIsCopyInsteadOfMove();

    void showDEShowsAndHidesTheShiftField();
    void returnInTheShiftFieldEmitsNewDE();

private:
    const tests::DialogSettings m_settings;
    QString file(const QString& name) const { return tests::writeFile(*folder, name, "1 2 3\n"); }

    std::unique_ptr<QTemporaryDir> folder;
    QString canonicalFolder;
};

void tst_AFileSelect::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
    canonicalFolder = QDir(folder->path()).canonicalPath();
}

void tst_AFileSelect::cleanup()
{
    folder.reset();
}

void tst_AFileSelect::formContainsTheExpectedWidgets()
{
    const AFileSelect row;
    const QList<tests::FormWidget> expectedForm{
        {"ExInfo", 4, "QWidget"},
        {"label_4", 5, "QLabel", "File"},
        {"SelectB", 6, "QPushButton", "Sel."},
        {"FileName", 7, "QLineEdit"},
        {"ClearB", 8, "QPushButton", "Clear"},
        {"dEBase", 9, "QWidget"},
    };
    QCOMPARE(tests::formDifferences(&row, expectedForm), QStringList());
}

void tst_AFileSelect::formHasTheExpectedWidthsAndSpacings()
{
    const AFileSelect row;
    QCOMPARE(row.objectName(), QStringLiteral("AFileSelect"));
    const auto* grid = qobject_cast<QGridLayout*>(row.layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->horizontalSpacing(), 3);
    QCOMPARE(grid->verticalSpacing(), 3);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    const auto* extra = qobject_cast<QGridLayout*>(row.ExInfo->layout());
    QVERIFY(extra != nullptr);
    QCOMPARE(extra->objectName(), QStringLiteral("gridLayout_2"));
    QCOMPARE(extra->horizontalSpacing(), 1);
    QCOMPARE(extra->verticalSpacing(), 1);
    QCOMPARE(extra->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(extra->count(), 0);
    QCOMPARE(row.SelectB->maximumWidth(), 50);
    QCOMPARE(row.FileName->minimumWidth(), 250);
    QCOMPARE(row.ClearB->maximumWidth(), 50);
}

void tst_AFileSelect::shiftFieldIsInDEBaseAndStartsAtZero()
{
    const AFileSelect row;
    const auto* grid = qobject_cast<QGridLayout*>(row.dEBase->layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->objectName(), QStringLiteral("gridLayout_3"));
    QCOMPARE(grid->horizontalSpacing(), 3);
    QCOMPARE(grid->verticalSpacing(), 0);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(tests::directChild(row.dEBase, QStringLiteral("label")), row.label);
    QCOMPARE(row.label->text(), QStringLiteral("dE[eV]"));
    QCOMPARE(tests::directChild(row.dEBase, QStringLiteral("dE")), row.dE);
    QCOMPARE(row.dE->text(), QStringLiteral("0"));
    QCOMPARE(row.dE->maximumWidth(), 40);
    QVERIFY(tests::isRightAligned(row.dE));
}

void tst_AFileSelect::rowStartsEmptyInOpenMode()
{
    const AFileSelect row;
    QCOMPARE(row.mode, 0);
    QCOMPARE(row.multi, false);
    QCOMPARE(row.dir, QString());
    QCOMPARE(row.fileName, QString());
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(row.suffix, QStringLiteral("dat"));
    QVERIFY(row.acceptDrops());
}

void tst_AFileSelect::slotsAreCallableByName()
{
    for (const char* signature : {"newFile(QString)", "newFiles(QStringList)", "clearFileName()",
                                  "selectingFile(QString)", "setDir(QString)", "showDE(bool)"}) {
        QVERIFY2(AFileSelect::staticMetaObject.indexOfSlot(signature) >= 0, signature);
    }
}

void tst_AFileSelect::dialogIsAWindowOwnedByTheRow()
{
    const AFileSelect row;
    QVERIFY(row.dialog != nullptr);
    QCOMPARE(row.dialog->parentWidget(), &row);
    QVERIFY(row.dialog->isWindow());
    QCOMPARE(row.dialog->windowType(), Qt::Window);
    QVERIFY(!row.dialog->isModal());
    QCOMPARE(row.dialog->objectName(), QStringLiteral("dialog"));
}

void tst_AFileSelect::dialogFiltersAreDatThen2dpThenAllFiles()
{
    const AFileSelect row;
    const QStringList filters{QStringLiteral("Data Files (*.dat)"),
                              QStringLiteral("2dProc files (*.2dp)"),
                              QStringLiteral("All (* *.*)")};
    QCOMPARE(row.dialog->nameFilters(), filters);
}

void tst_AFileSelect::newDialogStartsInTheWorkingDirectory()
{
    // By default QFileDialog starts in the directory of the previous dialog. The row
    // must override this.
    {
        QFileDialog earlier;
        earlier.setDirectory(folder->path());
    }
    const AFileSelect row;
    QCOMPARE(row.dialog->directory().canonicalPath(), QDir::current().canonicalPath());
    QCOMPARE(row.dir, QString());
}

void tst_AFileSelect::selectButtonShowsTheDialogWithoutBlocking()
{
    AFileSelect row;
    row.show();
    QTest::mouseClick(row.SelectB, Qt::LeftButton);
    QVERIFY(row.dialog->isVisible());
    row.dialog->close();
}

void tst_AFileSelect::selectButtonBringsTheDialogThatIsAlreadyOpenToTheFront()
{
    AFileSelect row;
    row.show();
    QVERIFY(QTest::qWaitForWindowExposed(&row));
    row.SelectB->click();
    QTRY_COMPARE(QGuiApplication::focusWindow(), row.dialog->windowHandle());
    row.activateWindow();
    QTRY_COMPARE(QGuiApplication::focusWindow(), row.windowHandle());

    row.SelectB->click();
    QTRY_COMPARE(QGuiApplication::focusWindow(), row.dialog->windowHandle());
}

void tst_AFileSelect::modeSetsDialogModesAndWhetherTheFieldIsReadOnly_data()
{
    QTest::addColumn<MakeRow>("make");
    QTest::addColumn<bool>("saves");
    QTest::addColumn<QFileDialog::FileMode>("files");
    QTest::newRow("opens a file") << MakeRow([] { return new AFileSelect; }) << false
                                  << QFileDialog::ExistingFile;
    QTest::newRow("opens several files") << MakeRow([] {
        auto* row = new AFileSelect;
        row->multi = true;
        row->setMode(AFileSelect::OpenMode);
        return row;
    }) << false << QFileDialog::ExistingFiles;
    QTest::newRow("saves") << MakeRow([] {
        auto* row = new AFileSelect;
        row->setMode(1);
        return row;
    }) << true << QFileDialog::AnyFile;
    QTest::newRow("constructed in save mode")
        << MakeRow([] { return new AFileSelect(nullptr, AFileSelect::SaveMode); }) << true
        << QFileDialog::AnyFile;
    QTest::newRow("opens a file after save mode") << MakeRow([] {
        auto* row = new AFileSelect(nullptr, AFileSelect::SaveMode);
        row->setMode(0);
        return row;
    }) << false << QFileDialog::ExistingFile;
}

void tst_AFileSelect::modeSetsDialogModesAndWhetherTheFieldIsReadOnly()
{
    QFETCH(MakeRow, make);
    QFETCH(bool, saves);
    QFETCH(QFileDialog::FileMode, files);
    const std::unique_ptr<AFileSelect> row(make());
    QCOMPARE(row->mode, saves ? 1 : 0);
    QCOMPARE(row->dialog->acceptMode(), saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    QCOMPARE(row->dialog->fileMode(), files);
    QCOMPARE(row->FileName->isReadOnly(), !saves);
    QCOMPARE(row->FileName->styleSheet(), saves ? "background-color: rgb(255, 255, 255);"
                                                : "background-color: rgb(255, 255, 220);");
}

void tst_AFileSelect::multiFlagAloneKeepsTheDialogAtOneFile()
{
    AFileSelect row;
    row.multi = true;
    QCOMPARE(row.dialog->fileMode(), QFileDialog::ExistingFile);
}

void tst_AFileSelect::newFileShowsThePathAndEmitsSignalsInOrder()
{
    AFileSelect row;
    const SignalRecorder recorder(&row);
    const QString path = file(QStringLiteral("map.2dp")); // the suffix is kept in open mode
    row.newFile(path);
    QCOMPARE(row.fileText(), path);
    QCOMPARE(row.fileName, QStringLiteral("map.2dp"));
    const QStringList expected{QStringLiteral("newDir ") + canonicalFolder,
                               QStringLiteral("newFilePath ") + path,
                               QStringLiteral("selectedFile")};
    QCOMPARE(recorder.entries, expected);
}

void tst_AFileSelect::newFileStoresTheCanonicalDirectory()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("real")));
    file(QStringLiteral("real/map.dat"));
    QVERIFY(QFile::link(folder->filePath(QStringLiteral("real")),
                        folder->filePath(QStringLiteral("link"))));
    AFileSelect row;
    const QString path = folder->filePath(QStringLiteral("link/../link/map.dat"));
    row.newFile(path);
    QCOMPARE(row.dir, canonicalFolder + QStringLiteral("/real"));
    QCOMPARE(row.fileText(), path);
}

void tst_AFileSelect::symbolicLinkToAFileKeepsItsOwnFolder()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("measured")));
    QVERIFY(QFile::link(file(QStringLiteral("measured/map.dat")),
                        folder->filePath(QStringLiteral("link.dat"))));
    AFileSelect row;
    row.newFile(folder->filePath(QStringLiteral("link.dat")));
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(row.fileName, QStringLiteral("link.dat"));
}

void tst_AFileSelect::newFileShowsThePathOfAMissingFile()
{
    AFileSelect row;
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    const QString missing = QStringLiteral("/nowhere/at/all/map.dat");
    row.newFile(missing);
    QCOMPARE(row.fileText(), missing);
    QCOMPARE(row.fileName, QStringLiteral("map.dat"));
    QCOMPARE(row.dir, QString());
    QCOMPARE(paths.size(), 1);
}

void tst_AFileSelect::directoryOfAnUnsavedFileIsStored()
{
    AFileSelect row(nullptr, AFileSelect::SaveMode);
    row.newFile(folder->filePath(QStringLiteral("result.dat")));
    QCOMPARE(row.dir, canonicalFolder);
}

void tst_AFileSelect::savePathGetsTheSuffix_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("saved");
    tests::addTexts("no suffix", {"dat", "result", "result.dat"});
    tests::addTexts("another suffix", {"dat", "result.txt", "result.txt.dat"});
    tests::addTexts("suffix already present", {"dat", "result.dat", "result.dat"});
    tests::addTexts("suffix in upper case", {"dat", "result.DAT", "result.DAT.dat"});
    tests::addTexts("only the last suffix counts", {"dat", "a.dat.gz", "a.dat.gz.dat"});
    tests::addTexts("trailing dot", {"dat", "result.", "result..dat"});
    tests::addTexts("no suffix required", {"", "result", "result"});
    tests::addTexts("other suffix required", {"csv", "result.dat", "result.dat.csv"});
}

void tst_AFileSelect::savePathGetsTheSuffix()
{
    QFETCH(QString, suffix);
    QFETCH(QString, name);
    QFETCH(QString, saved);
    AFileSelect row(nullptr, AFileSelect::SaveMode);
    row.suffix = suffix;
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    row.newFile(folder->filePath(name));
    QCOMPARE(row.fileText(), folder->filePath(saved));
    QCOMPARE(row.fileName, saved);
    QCOMPARE(paths.size(), 1);
    QCOMPARE(paths.at(0).at(0).toString(), folder->filePath(saved));
}

void tst_AFileSelect::newFilesShowsNamesFollowedBySpaces()
{
    AFileSelect row;
    const SignalRecorder recorder(&row);
    const QStringList paths{file(QStringLiteral("a.dat")), file(QStringLiteral("b c.dat"))};
    row.newFiles(paths);
    QCOMPARE(row.fileText(), QStringLiteral("a.dat b c.dat "));
    const QStringList expected{QStringLiteral("newDir ") + canonicalFolder,
                               QStringLiteral("newFilePaths ") + paths.join(u'|'),
                               QStringLiteral("selectedFile")};
    QCOMPARE(recorder.entries, expected);
}

void tst_AFileSelect::newFilesStoresTheDirectoryOfTheLastPath()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("later")));
    AFileSelect row;
    row.newFiles({file(QStringLiteral("a.dat")), file(QStringLiteral("later/b.dat"))});
    QCOMPARE(row.dir, canonicalFolder + QStringLiteral("/later"));
}

void tst_AFileSelect::newFilesWithEmptyListClearsTheField()
{
    AFileSelect row;
    row.newFile(file(QStringLiteral("a.dat")));
    const QSignalSpy paths(&row, &AFileSelect::newFilePaths);
    row.newFiles({});
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(paths.size(), 1);
}

void tst_AFileSelect::clearKeepsTheDirectoryAndEmitsAnEmptyPath()
{
    AFileSelect row;
    row.newFile(file(QStringLiteral("map.dat")));
    const SignalRecorder recorder(&row);
    QTest::mouseClick(row.ClearB, Qt::LeftButton);
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(row.dir, canonicalFolder);
    const QStringList expected{QStringLiteral("newFilePath "), QStringLiteral("selectedFile")};
    QCOMPARE(recorder.entries, expected);
}

void tst_AFileSelect::highlightedFileIsLoadedImmediatelyAndAgainOnOpen()
{
    AFileSelect row;
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    const QString path = file(QStringLiteral("map.dat"));
    row.dialog->show();
    Q_EMIT row.dialog->currentChanged(path);
    QCOMPARE(paths.size(), 1);
    QCOMPARE(row.fileText(), path);
    Q_EMIT row.dialog->fileSelected(path);
    QCOMPARE(paths.size(), 2);
    QCOMPARE(paths.at(1).at(0).toString(), path);
}

void tst_AFileSelect::acceptingTheDialogEmitsTheSelectedPath()
{
    AFileSelect row;
    row.dialog->setOption(QFileDialog::DontUseNativeDialog);
    const QString path = file(QStringLiteral("map.dat"));
    row.dialog->show();
    row.dialog->setDirectory(folder->path());
    row.dialog->selectFile(path);
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    const QSignalSpy lists(&row, &AFileSelect::newFilePaths);
    QVERIFY(QMetaObject::invokeMethod(row.dialog, "accept"));
    QVERIFY(paths.size() >= 1);
    QCOMPARE(paths.last().at(0).toString(), path);
    QCOMPARE(lists.size(), 1);
    QCOMPARE(row.fileText(), path);
}

void tst_AFileSelect::highlightIsIgnoredWhileTheDialogIsHidden()
{
    AFileSelect row;
    const SignalRecorder recorder(&row);
    Q_EMIT row.dialog->currentChanged(file(QStringLiteral("map.dat")));
    QCOMPARE(recorder.entries, QStringList());
    QCOMPARE(row.fileText(), QString());
}

void tst_AFileSelect::highlightOfNonRegularFileIsIgnored_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("directory") << ".";
    QTest::newRow("missing file") << "missing.dat";
    QTest::newRow("no name") << QString();
    QTest::newRow("pipe") << "pipe";
}

void tst_AFileSelect::highlightOfNonRegularFileIsIgnored()
{
    QFETCH(QString, name);
    const QByteArray pipe = QFile::encodeName(folder->filePath("pipe"));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    AFileSelect row;
    const SignalRecorder recorder(&row);
    row.dialog->show();
    row.selectingFile(name.isEmpty() ? name : folder->filePath(name));
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AFileSelect::highlightedUnreadableFileIsIgnored()
{
    const QString path = file(QStringLiteral("secret.dat"));
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(QFile::setPermissions(folder->path(), QFile::Permissions(0x7755)));
    AFileSelect row;
    const SignalRecorder recorder(&row);
    row.dialog->show();
    {
        const tests::Unprivileged rights;
        QVERIFY(rights.holds());
        row.selectingFile(path);
    }
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AFileSelect::severalSelectedFilesAreEmittedTogether()
{
    AFileSelect row;
    row.multi = true;
    row.setMode(AFileSelect::OpenMode);
    const QSignalSpy lists(&row, &AFileSelect::newFilePaths);
    const QStringList paths{file(QStringLiteral("a.dat")), file(QStringLiteral("b.dat"))};
    Q_EMIT row.dialog->filesSelected(paths);
    QCOMPARE(lists.size(), 1);
    QCOMPARE(lists.at(0).at(0).toStringList(), paths);
}

void tst_AFileSelect::openingTheDialogLoadsNoFile()
{
    const QString path = file(QStringLiteral("first.dat"));
    AFileSelect row;
    row.show();
    row.setDir(canonicalFolder);
    const SignalRecorder recorder(&row);
    QTest::mouseClick(row.SelectB, Qt::LeftButton);
    QTRY_VERIFY(indexOfFile(row, path).isValid());
    QTest::qWait(50);
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AFileSelect::cancelRestoresTheFileNameOfTheSaveRow_data()
{
    QTest::addColumn<CloseDialog>("end");
    QTest::newRow("Cancel") << CloseDialog([](QFileDialog* dialog) {
        const auto* buttons = dialog->findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QTest::newRow("Escape") << CloseDialog(
        [](QFileDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QTest::newRow("closed by the window manager")
        << CloseDialog([](QFileDialog* dialog) { dialog->windowHandle()->close(); });
}

void tst_AFileSelect::cancelRestoresTheFileNameOfTheSaveRow()
{
    QFETCH(CloseDialog, end);
    const SaveRow row(canonicalFolder);
    const QString measured = file(QStringLiteral("map.dat"));
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(clickFile(*row, measured));
    QCOMPARE(row->fileText(), measured);

    const SignalRecorder recorder(row.get());
    end(row->dialog);
    QVERIFY(row->dialog->isHidden());
    QCOMPARE(row->fileText(), row.text);
    QCOMPARE(row->dir, row.dir);
    QCOMPARE(row->fileName, row.fileName);
    QCOMPARE(recorder.entries, QStringList());
}

// Whenever the dialog opens, it selects the row's own file name, even if the user
// highlighted another file before and cancelled. Otherwise a keystroke that activates
// "Save" would overwrite the highlighted file.
void tst_AFileSelect::saveDialogOpensWithTheNameOfItsRow()
{
    const SaveRow row(canonicalFolder);
    const QString measured = file(QStringLiteral("map.dat"));
    for (int opening = 0; opening < 2; ++opening) {
        const SignalRecorder recorder(row.get());
        QTest::mouseClick(row->SelectB, Qt::LeftButton);
        const auto* name = row->dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        QCOMPARE(name->text(), row.fileName);
        QCOMPARE(name->selectedText(), row.fileName);
        QCOMPARE(recorder.entries, QStringList());
        QVERIFY(clickFile(*row, measured));
        QTest::keyClick(row->dialog, Qt::Key_Escape);
    }
    row->clearFileName();
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QCOMPARE(row->dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(), QString());
}

void tst_AFileSelect::secondClickOnSelectKeepsTheNameToRestore()
{
    const SaveRow row(canonicalFolder);
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(clickFile(*row, file(QStringLiteral("map.dat"))));
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QTest::keyClick(row->dialog, Qt::Key_Escape);
    QCOMPARE(row->fileText(), row.text);
}

void tst_AFileSelect::cancelRestoresTheNameOfTheLatestOpening()
{
    const SaveRow row(canonicalFolder);
    row->dialog->show();
    row->dialog->reject();
    row->FileName->setText(QStringLiteral("typed.dat"));
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(clickFile(*row, file(QStringLiteral("map.dat"))));
    QTest::keyClick(row->dialog, Qt::Key_Escape);
    QCOMPARE(row->fileText(), QStringLiteral("typed.dat"));
}

void tst_AFileSelect::nameConfirmedInTheDialogIsKept()
{
    const SaveRow row(canonicalFolder);
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(QTest::qWaitForWindowActive(row->dialog));
    auto* name = row->dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QTest::keyClicks(name, QStringLiteral("result"));
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(row->dialog->isHidden());
    const QString saved = canonicalFolder + QStringLiteral("/result.dat");
    QCOMPARE(row->fileText(), saved);
    QCOMPARE(row->dir, canonicalFolder);
    QCOMPARE(row->fileName, QStringLiteral("result.dat"));
}

void tst_AFileSelect::cancelOfAHiddenDialogKeepsTheName()
{
    const SaveRow row(canonicalFolder);
    row->dialog->show();
    row->dialog->reject();
    row->FileName->setText(QStringLiteral("typed.dat"));
    row->dialog->reject();
    QCOMPARE(row->fileText(), QStringLiteral("typed.dat"));
}

void tst_AFileSelect::cancelInOpenModeKeepsTheHighlightedFile()
{
    const QString path = file(QStringLiteral("map.dat"));
    AFileSelect row;
    row.show();
    row.setDir(canonicalFolder);
    QTest::mouseClick(row.SelectB, Qt::LeftButton);
    QVERIFY(clickFile(row, path));
    QTest::keyClick(row.dialog, Qt::Key_Escape);
    QVERIFY(row.dialog->isHidden());
    QCOMPARE(row.fileText(), path);
}

void tst_AFileSelect::settingTheSameDirectoryKeepsTheDialogDirectory()
{
    AFileSelect row;
    row.setDir(canonicalFolder);
    // The user selects another directory in the dialog. A second setDir() with the directory of
    // the row must not undo this.
    row.dialog->setDirectory(QDir::rootPath());
    row.setDir(canonicalFolder);
    QCOMPARE(row.dialog->directory().path(), QDir::rootPath());
}

void tst_AFileSelect::newDirectoryIsSetWithoutSignals()
{
    AFileSelect row;
    const SignalRecorder recorder(&row);
    row.setDir(canonicalFolder);
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(row.dialog->directory().canonicalPath(), canonicalFolder);
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AFileSelect::dragWithoutFilesIsAcceptedButItsDropIsIgnored()
{
    AFileSelect row;
    QMimeData mime;
    mime.setText(QStringLiteral("no file at all"));
    bool accepted = false;
    enter(&row, mime, &accepted);
    QVERIFY(accepted);
    const SignalRecorder recorder(&row);
    QCOMPARE(drop(&row, mime), Qt::IgnoreAction);
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AFileSelect::nameFieldOfASaveRowAcceptsNoDrops()
{
    const AFileSelect row(nullptr, AFileSelect::SaveMode);
    QVERIFY(!row.FileName->acceptDrops());
}

void tst_AFileSelect::droppedLocalFileIsLoaded_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ASCII name") << "map.dat";
    QTest::newRow("space in the name") << "my map.dat";
    QTest::newRow("Japanese name") << QString::fromUtf8("ニッケル.dat");
}

void tst_AFileSelect::droppedLocalFileIsLoaded()
{
    QFETCH(QString, name);
    const QString path = file(name);
    AFileSelect row;
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    dropUrls(&row, {QUrl::fromLocalFile(path)});
    QCOMPARE(paths.size(), 1);
    QCOMPARE(paths.at(0).at(0).toString(), path);
    QCOMPARE(row.fileText(), path);
    QCOMPARE(row.dir, canonicalFolder);
}

void tst_AFileSelect::droppedUrlIsShownAsPath_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("text");
    tests::addTexts("whitespace is simplified", {"file:///maps/a%20%20b.dat%20", "/maps/a b.dat"});
    tests::addTexts("network share keeps its host",
                    {"file://server/share/map.dat", "//server/share/map.dat"});
}

void tst_AFileSelect::droppedUrlIsShownAsPath()
{
    QFETCH(QString, url);
    AFileSelect row;
    dropUrls(&row, {QUrl(url)});
    QTEST(row.fileText(), "text");
}

void tst_AFileSelect::dropOfSeveralFilesUsesTheFirstFile()
{
    AFileSelect row;
    row.multi = true;
    row.setMode(AFileSelect::OpenMode);
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    const QSignalSpy lists(&row, &AFileSelect::newFilePaths);
    const QString first = file(QStringLiteral("a.dat"));
    dropUrls(&row,
             {QUrl::fromLocalFile(first), QUrl::fromLocalFile(file(QStringLiteral("b.dat")))});
    QCOMPARE(paths.size(), 1);
    QCOMPARE(row.fileText(), first);
    QCOMPARE(lists.size(), 0);
}

void tst_AFileSelect::dropIsIgnoredUnlessTheFirstUrlIsALocalFile_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    const QUrl local = QUrl::fromLocalFile(QStringLiteral("/tmp/map.dat"));
    QTest::newRow("http URL") << QList<QUrl>{QUrl(QStringLiteral("http://example.org/map.dat"))};
    QTest::newRow("path without scheme") << QList<QUrl>{QUrl(QStringLiteral("/tmp/map.dat"))};
    QTest::newRow("only the second URL is a file")
        << QList<QUrl>{QUrl(QStringLiteral("http://example.org/map.dat")), local};
    QTest::newRow("no URL") << QList<QUrl>{};
}

void tst_AFileSelect::dropIsIgnoredUnlessTheFirstUrlIsALocalFile()
{
    QFETCH(QList<QUrl>, urls);
    AFileSelect row;
    row.newFile(file(QStringLiteral("before.dat")));
    const QString before = row.fileText();
    const SignalRecorder recorder(&row);
    dropUrls(&row, urls);
    QCOMPARE(recorder.entries, QStringList());
    QCOMPARE(row.fileText(), before);
}

void tst_AFileSelect::fileDroppedInSaveModeGetsTheSuffix()
{
    AFileSelect row(nullptr, AFileSelect::SaveMode);
    const QString path = file(QStringLiteral("result"));
    dropUrls(&row, {QUrl::fromLocalFile(path)});
    QCOMPARE(row.fileText(), path + QStringLiteral(".dat"));
}

void tst_AFileSelect::dropActionIsCopyInsteadOfMove()
{
    AFileSelect row;
    const QString path = file(QStringLiteral("map.dat"));
    QCOMPARE(dropUrls(&row, {QUrl::fromLocalFile(path)}), Qt::CopyAction);
}

void tst_AFileSelect::showDEShowsAndHidesTheShiftField()
{
    AFileSelect row;
    QVERIFY(row.dEBase->isHidden());
    row.showDE(true);
    QVERIFY(!row.dEBase->isHidden());
    row.showDE(false);
    QVERIFY(row.dEBase->isHidden());
}

void tst_AFileSelect::returnInTheShiftFieldEmitsNewDE()
{
    AFileSelect row;
    const QSignalSpy shifts(&row, &AFileSelect::newDE);
    row.dE->setText(QStringLiteral("1.5"));
    QCOMPARE(shifts.size(), 0);
    QTest::keyClick(row.dE, Qt::Key_Return);
    QCOMPARE(shifts.size(), 1);
}

QTEST_MAIN(tst_AFileSelect)
#include "tst_AFileSelect.moc"
