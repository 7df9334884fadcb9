// The file row: its form, its two modes, and every way in which a path comes.

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

// Writes down in which order a row's signals came, with their arguments.
class Journal : public QObject
{
    Q_OBJECT

public:
    explicit Journal(AFileSelect* row)
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

// Drags @p mime over the row and lets it go. What was done with it, as the
// place that the drag came from is told, is the result.
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

/// How a row is made.
using Make = std::function<AFileSelect*()>;

/// How a user ends a dialog.
using End = std::function<void(QFileDialog*)>;

/// The place of a file in the list of the row's open dialog; invalid as long as
/// it is not listed.
QModelIndex fileCell(const AFileSelect& row, const QString& path)
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

/// Clicks on a file in the list of the row's open dialog.
bool clickFile(const AFileSelect& row, const QString& path)
{
    const auto* list = row.dialog->findChild<QTreeView*>(QStringLiteral("treeView"));
    const bool listed =
        QTest::qWaitForWindowActive(row.dialog) &&
        QTest::qWaitFor([&] { return fileCell(row, path).isValid(); }) &&
        QTest::qWaitFor([&] { return !list->visualRect(fileCell(row, path)).isEmpty(); });
    if (listed) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualRect(fileCell(row, path)).center());
    }
    return listed;
}

/// A shown save row that names a result, with its dialog at @p folder.
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

Q_DECLARE_METATYPE(End)

class tst_AFileSelect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void formHasTheWidgetsOfItsRow();
    void formHasItsLimitsAndSpacings();
    void shiftFieldIsPartOfItsHolder();
    void fieldsStartEmpty();
    void slotsAreCallableByName();

    void dialogIsAWindowThatBelongsToTheRow();
    void dialogOffersItsFiltersInOrder();
    void firstDialogOpensInTheWorkingDirectory();
    void selectButtonShowsTheDialogWithoutBlocking();
    void selectButtonBringsAnOpenDialogToTheFront();

    void modeDecidesTheDialogAndTheField_data();
    void modeDecidesTheDialogAndTheField();
    void multiCountsOnlyOnceTheModeIsSet();

    void newFileShowsThePathAndTellsItInOrder();
    void newFileStoresTheCanonicalDirectory();
    void linkToAFileIsInTheFolderOfTheLink();
    void newFileShowsAPathThatCannotBeRead();
    void directoryOfAFileYetToBeSavedIsKnown();
    void savePathBearsTheSuffix_data();
    void savePathBearsTheSuffix();

    void newFilesShowsNamesEachWithABlank();
    void newFilesKeepsTheDirectoryOfTheLastPath();
    void newFilesOfNothingEmptiesTheField();

    void clearLeavesTheDirectoryAndTellsAnEmptyPath();

    void highlightedFileLoadsAtOnceAndAgainOnOpen();
    void openByTheDialogEndsWithThePathOfTheFile();
    void highlightIsIgnoredWhileTheDialogIsHidden();
    void highlightOfNoReadableFilePassesWithoutEffect_data();
    void highlightOfNoReadableFilePassesWithoutEffect();
    void highlightedUnreadableFilePassesWithoutEffect();
    void severalPickedFilesArriveTogether();
    void openingByTheButtonLoadsNothing();

    void cancelGivesTheSaveRowItsEarlierNameBack_data();
    void cancelGivesTheSaveRowItsEarlierNameBack();
    void selectButtonOfAnOpenDialogIsNoOpening();
    void eachOpeningOfTheSaveRowCountsAnew();
    void savedNameStays();
    void cancelOfAHiddenDialogChangesNothing();
    void cancelInOpenModeKeepsThePreview();

    void saveDialogOpensWithTheNameOfItsRow();
    void presentDirectoryDoesNotTouchTheDialog();
    void newDirectoryGoesToTheDialogInSilence();

    void dragOfAnythingIsAccepted();
    void dragOverTheSaveFieldFallsToTheRow();
    void dropLoadsALocalFile_data();
    void dropLoadsALocalFile();
    void dropShowsThePathOfTheUrl_data();
    void dropShowsThePathOfTheUrl();
    void dropOfSeveralFilesCountsAsTheFirst();
    void dropOfSomethingElseDoesNothing_data();
    void dropOfSomethingElseDoesNothing();
    void dropInSaveModeTakesTheSuffix();
    void droppedFileIsNeverMoved();

    void showDEShowsAndHidesTheShiftField();
    void leavingTheShiftFieldTellsNewDE();

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

void tst_AFileSelect::formHasTheWidgetsOfItsRow()
{
    const AFileSelect row;
    const QList<tests::FormWidget> agreed{
        {"ExInfo", 4, "QWidget"},
        {"label_4", 5, "QLabel", "File"},
        {"SelectB", 6, "QPushButton", "Sel."},
        {"FileName", 7, "QLineEdit"},
        {"ClearB", 8, "QPushButton", "Clear"},
        {"dEBase", 9, "QWidget"},
    };
    QCOMPARE(tests::differencesOfForm(&row, agreed), QStringList());
}

void tst_AFileSelect::formHasItsLimitsAndSpacings()
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

void tst_AFileSelect::shiftFieldIsPartOfItsHolder()
{
    const AFileSelect row;
    const auto* grid = qobject_cast<QGridLayout*>(row.dEBase->layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->objectName(), QStringLiteral("gridLayout_3"));
    QCOMPARE(grid->horizontalSpacing(), 3);
    QCOMPARE(grid->verticalSpacing(), 0);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(tests::ownChild(row.dEBase, QStringLiteral("label")), row.label);
    QCOMPARE(row.label->text(), QStringLiteral("dE[eV]"));
    QCOMPARE(tests::ownChild(row.dEBase, QStringLiteral("dE")), row.dE);
    QCOMPARE(row.dE->text(), QStringLiteral("0"));
    QCOMPARE(row.dE->maximumWidth(), 40);
    QVERIFY(tests::isRightAligned(row.dE));
}

void tst_AFileSelect::fieldsStartEmpty()
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

void tst_AFileSelect::dialogIsAWindowThatBelongsToTheRow()
{
    const AFileSelect row;
    QVERIFY(row.dialog != nullptr);
    QCOMPARE(row.dialog->parentWidget(), &row);
    QVERIFY(row.dialog->isWindow());
    QCOMPARE(row.dialog->windowType(), Qt::Window);
    QVERIFY(!row.dialog->isModal());
    QCOMPARE(row.dialog->objectName(), QStringLiteral("dialog"));
}

void tst_AFileSelect::dialogOffersItsFiltersInOrder()
{
    const AFileSelect row;
    const QStringList filters{QStringLiteral("Data Files (*.dat)"),
                              QStringLiteral("2dProc files (*.2dp)"),
                              QStringLiteral("All (* *.*)")};
    QCOMPARE(row.dialog->nameFilters(), filters);
}

void tst_AFileSelect::firstDialogOpensInTheWorkingDirectory()
{
    // An earlier dialog leaves its directory to the next one of the toolkit.
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

void tst_AFileSelect::selectButtonBringsAnOpenDialogToTheFront()
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

void tst_AFileSelect::modeDecidesTheDialogAndTheField_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<bool>("saves");
    QTest::addColumn<QFileDialog::FileMode>("files");
    QTest::newRow("opens a file") << Make([] { return new AFileSelect; }) << false
                                  << QFileDialog::ExistingFile;
    QTest::newRow("opens several files") << Make([] {
        auto* row = new AFileSelect;
        row->multi = true;
        row->setMode(AFileSelect::OpenMode);
        return row;
    }) << false << QFileDialog::ExistingFiles;
    QTest::newRow("saves") << Make([] {
        auto* row = new AFileSelect;
        row->setMode(1);
        return row;
    }) << true << QFileDialog::AnyFile;
    QTest::newRow("saves from the start")
        << Make([] { return new AFileSelect(nullptr, AFileSelect::SaveMode); }) << true
        << QFileDialog::AnyFile;
    QTest::newRow("opens again") << Make([] {
        auto* row = new AFileSelect(nullptr, AFileSelect::SaveMode);
        row->setMode(0);
        return row;
    }) << false << QFileDialog::ExistingFile;
}

void tst_AFileSelect::modeDecidesTheDialogAndTheField()
{
    QFETCH(Make, make);
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

void tst_AFileSelect::multiCountsOnlyOnceTheModeIsSet()
{
    AFileSelect row;
    row.multi = true;
    QCOMPARE(row.dialog->fileMode(), QFileDialog::ExistingFile);
}

void tst_AFileSelect::newFileShowsThePathAndTellsItInOrder()
{
    AFileSelect row;
    const Journal journal(&row);
    const QString path = file(QStringLiteral("map.2dp")); // which keeps its suffix
    row.newFile(path);
    QCOMPARE(row.fileText(), path);
    QCOMPARE(row.fileName, QStringLiteral("map.2dp"));
    const QStringList expected{QStringLiteral("newDir ") + canonicalFolder,
                               QStringLiteral("newFilePath ") + path,
                               QStringLiteral("selectedFile")};
    QCOMPARE(journal.entries, expected);
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

void tst_AFileSelect::linkToAFileIsInTheFolderOfTheLink()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("measured")));
    QVERIFY(QFile::link(file(QStringLiteral("measured/map.dat")),
                        folder->filePath(QStringLiteral("link.dat"))));
    AFileSelect row;
    row.newFile(folder->filePath(QStringLiteral("link.dat")));
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(row.fileName, QStringLiteral("link.dat"));
}

void tst_AFileSelect::newFileShowsAPathThatCannotBeRead()
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

void tst_AFileSelect::directoryOfAFileYetToBeSavedIsKnown()
{
    AFileSelect row(nullptr, AFileSelect::SaveMode);
    row.newFile(folder->filePath(QStringLiteral("result.dat")));
    QCOMPARE(row.dir, canonicalFolder);
}

void tst_AFileSelect::savePathBearsTheSuffix_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("saved");
    tests::addTexts("no suffix", {"dat", "result", "result.dat"});
    tests::addTexts("another suffix", {"dat", "result.txt", "result.txt.dat"});
    tests::addTexts("the suffix itself", {"dat", "result.dat", "result.dat"});
    tests::addTexts("letters of another case", {"dat", "result.DAT", "result.DAT.dat"});
    tests::addTexts("only the last suffix counts", {"dat", "a.dat.gz", "a.dat.gz.dat"});
    tests::addTexts("a point at the end", {"dat", "result.", "result..dat"});
    tests::addTexts("no suffix is asked for", {"", "result", "result"});
    tests::addTexts("another one is asked for", {"csv", "result.dat", "result.dat.csv"});
}

void tst_AFileSelect::savePathBearsTheSuffix()
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

void tst_AFileSelect::newFilesShowsNamesEachWithABlank()
{
    AFileSelect row;
    const Journal journal(&row);
    const QStringList paths{file(QStringLiteral("a.dat")), file(QStringLiteral("b c.dat"))};
    row.newFiles(paths);
    QCOMPARE(row.fileText(), QStringLiteral("a.dat b c.dat "));
    const QStringList expected{QStringLiteral("newDir ") + canonicalFolder,
                               QStringLiteral("newFilePaths ") + paths.join(u'|'),
                               QStringLiteral("selectedFile")};
    QCOMPARE(journal.entries, expected);
}

void tst_AFileSelect::newFilesKeepsTheDirectoryOfTheLastPath()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("later")));
    AFileSelect row;
    row.newFiles({file(QStringLiteral("a.dat")), file(QStringLiteral("later/b.dat"))});
    QCOMPARE(row.dir, canonicalFolder + QStringLiteral("/later"));
}

void tst_AFileSelect::newFilesOfNothingEmptiesTheField()
{
    AFileSelect row;
    row.newFile(file(QStringLiteral("a.dat")));
    const QSignalSpy paths(&row, &AFileSelect::newFilePaths);
    row.newFiles({});
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(paths.size(), 1);
}

void tst_AFileSelect::clearLeavesTheDirectoryAndTellsAnEmptyPath()
{
    AFileSelect row;
    row.newFile(file(QStringLiteral("map.dat")));
    const Journal journal(&row);
    QTest::mouseClick(row.ClearB, Qt::LeftButton);
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(row.dir, canonicalFolder);
    const QStringList expected{QStringLiteral("newFilePath "), QStringLiteral("selectedFile")};
    QCOMPARE(journal.entries, expected);
}

void tst_AFileSelect::highlightedFileLoadsAtOnceAndAgainOnOpen()
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

void tst_AFileSelect::openByTheDialogEndsWithThePathOfTheFile()
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
    const Journal journal(&row);
    Q_EMIT row.dialog->currentChanged(file(QStringLiteral("map.dat")));
    QCOMPARE(journal.entries, QStringList());
    QCOMPARE(row.fileText(), QString());
}

void tst_AFileSelect::highlightOfNoReadableFilePassesWithoutEffect_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("directory") << ".";
    QTest::newRow("missing file") << "missing.dat";
    QTest::newRow("no name") << QString();
    QTest::newRow("pipe") << "pipe";
}

void tst_AFileSelect::highlightOfNoReadableFilePassesWithoutEffect()
{
    QFETCH(QString, name);
    const QByteArray pipe = QFile::encodeName(folder->filePath("pipe"));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    AFileSelect row;
    const Journal journal(&row);
    row.dialog->show();
    row.selectingFile(name.isEmpty() ? name : folder->filePath(name));
    QCOMPARE(journal.entries, QStringList());
}

void tst_AFileSelect::highlightedUnreadableFilePassesWithoutEffect()
{
    const QString path = file(QStringLiteral("secret.dat"));
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(QFile::setPermissions(folder->path(), QFile::Permissions(0x7755)));
    AFileSelect row;
    const Journal journal(&row);
    row.dialog->show();
    {
        const tests::Unprivileged rights;
        QVERIFY(rights.holds());
        row.selectingFile(path);
    }
    QCOMPARE(journal.entries, QStringList());
}

void tst_AFileSelect::severalPickedFilesArriveTogether()
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

void tst_AFileSelect::openingByTheButtonLoadsNothing()
{
    const QString path = file(QStringLiteral("first.dat"));
    AFileSelect row;
    row.show();
    row.setDir(canonicalFolder);
    const Journal journal(&row);
    QTest::mouseClick(row.SelectB, Qt::LeftButton);
    QTRY_VERIFY(fileCell(row, path).isValid());
    QTest::qWait(50);
    QCOMPARE(journal.entries, QStringList());
}

void tst_AFileSelect::cancelGivesTheSaveRowItsEarlierNameBack_data()
{
    QTest::addColumn<End>("end");
    QTest::newRow("Cancel") << End([](QFileDialog* dialog) {
        const auto* buttons = dialog->findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QTest::newRow("Escape") << End(
        [](QFileDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QTest::newRow("closed by the window manager")
        << End([](QFileDialog* dialog) { dialog->windowHandle()->close(); });
}

void tst_AFileSelect::cancelGivesTheSaveRowItsEarlierNameBack()
{
    QFETCH(End, end);
    const SaveRow row(canonicalFolder);
    const QString measured = file(QStringLiteral("map.dat"));
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(clickFile(*row, measured));
    QCOMPARE(row->fileText(), measured);

    const Journal journal(row.get());
    end(row->dialog);
    QVERIFY(row->dialog->isHidden());
    QCOMPARE(row->fileText(), row.text);
    QCOMPARE(row->dir, row.dir);
    QCOMPARE(row->fileName, row.fileName);
    QCOMPARE(journal.entries, QStringList());
}

// Also after another file was highlighted and the dialog cancelled: "Save" must
// not be one keystroke away from that file.
void tst_AFileSelect::saveDialogOpensWithTheNameOfItsRow()
{
    const SaveRow row(canonicalFolder);
    const QString measured = file(QStringLiteral("map.dat"));
    for (int opening = 0; opening < 2; ++opening) {
        const Journal journal(row.get());
        QTest::mouseClick(row->SelectB, Qt::LeftButton);
        const auto* name = row->dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        QCOMPARE(name->text(), row.fileName);
        QCOMPARE(name->selectedText(), row.fileName);
        QCOMPARE(journal.entries, QStringList());
        QVERIFY(clickFile(*row, measured));
        QTest::keyClick(row->dialog, Qt::Key_Escape);
    }
    row->clearFileName();
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QCOMPARE(row->dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(), QString());
}

void tst_AFileSelect::selectButtonOfAnOpenDialogIsNoOpening()
{
    const SaveRow row(canonicalFolder);
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QVERIFY(clickFile(*row, file(QStringLiteral("map.dat"))));
    QTest::mouseClick(row->SelectB, Qt::LeftButton);
    QTest::keyClick(row->dialog, Qt::Key_Escape);
    QCOMPARE(row->fileText(), row.text);
}

void tst_AFileSelect::eachOpeningOfTheSaveRowCountsAnew()
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

void tst_AFileSelect::savedNameStays()
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

void tst_AFileSelect::cancelOfAHiddenDialogChangesNothing()
{
    const SaveRow row(canonicalFolder);
    row->dialog->show();
    row->dialog->reject();
    row->FileName->setText(QStringLiteral("typed.dat"));
    row->dialog->reject();
    QCOMPARE(row->fileText(), QStringLiteral("typed.dat"));
}

void tst_AFileSelect::cancelInOpenModeKeepsThePreview()
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

void tst_AFileSelect::presentDirectoryDoesNotTouchTheDialog()
{
    AFileSelect row;
    row.setDir(canonicalFolder);
    // The user went elsewhere in the dialog meanwhile.
    row.dialog->setDirectory(QDir::rootPath());
    row.setDir(canonicalFolder);
    QCOMPARE(row.dialog->directory().path(), QDir::rootPath());
}

void tst_AFileSelect::newDirectoryGoesToTheDialogInSilence()
{
    AFileSelect row;
    const Journal journal(&row);
    row.setDir(canonicalFolder);
    QCOMPARE(row.dir, canonicalFolder);
    QCOMPARE(row.dialog->directory().canonicalPath(), canonicalFolder);
    QCOMPARE(journal.entries, QStringList());
}

void tst_AFileSelect::dragOfAnythingIsAccepted()
{
    AFileSelect row;
    QMimeData mime;
    mime.setText(QStringLiteral("no file at all"));
    bool accepted = false;
    enter(&row, mime, &accepted);
    QVERIFY(accepted);
    const Journal journal(&row);
    QCOMPARE(drop(&row, mime), Qt::IgnoreAction);
    QCOMPARE(journal.entries, QStringList());
}

void tst_AFileSelect::dragOverTheSaveFieldFallsToTheRow()
{
    const AFileSelect row(nullptr, AFileSelect::SaveMode);
    QVERIFY(!row.FileName->acceptDrops());
}

void tst_AFileSelect::dropLoadsALocalFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain name") << "map.dat";
    QTest::newRow("blank in the name") << "my map.dat";
    QTest::newRow("other letters") << QString::fromUtf8("ニッケル.dat");
}

void tst_AFileSelect::dropLoadsALocalFile()
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

void tst_AFileSelect::dropShowsThePathOfTheUrl_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("text");
    tests::addTexts("blanks are folded", {"file:///maps/a%20%20b.dat%20", "/maps/a b.dat"});
    tests::addTexts("share keeps its host",
                    {"file://server/share/map.dat", "//server/share/map.dat"});
}

void tst_AFileSelect::dropShowsThePathOfTheUrl()
{
    QFETCH(QString, url);
    AFileSelect row;
    dropUrls(&row, {QUrl(url)});
    QTEST(row.fileText(), "text");
}

void tst_AFileSelect::dropOfSeveralFilesCountsAsTheFirst()
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

void tst_AFileSelect::dropOfSomethingElseDoesNothing_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    const QUrl local = QUrl::fromLocalFile(QStringLiteral("/tmp/map.dat"));
    QTest::newRow("a page") << QList<QUrl>{QUrl(QStringLiteral("http://example.org/map.dat"))};
    QTest::newRow("a name without a scheme") << QList<QUrl>{QUrl(QStringLiteral("/tmp/map.dat"))};
    QTest::newRow("the second is a file")
        << QList<QUrl>{QUrl(QStringLiteral("http://example.org/map.dat")), local};
    QTest::newRow("no URL") << QList<QUrl>{};
}

void tst_AFileSelect::dropOfSomethingElseDoesNothing()
{
    QFETCH(QList<QUrl>, urls);
    AFileSelect row;
    row.newFile(file(QStringLiteral("before.dat")));
    const QString before = row.fileText();
    const Journal journal(&row);
    dropUrls(&row, urls);
    QCOMPARE(journal.entries, QStringList());
    QCOMPARE(row.fileText(), before);
}

void tst_AFileSelect::dropInSaveModeTakesTheSuffix()
{
    AFileSelect row(nullptr, AFileSelect::SaveMode);
    const QString path = file(QStringLiteral("result"));
    dropUrls(&row, {QUrl::fromLocalFile(path)});
    QCOMPARE(row.fileText(), path + QStringLiteral(".dat"));
}

void tst_AFileSelect::droppedFileIsNeverMoved()
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

void tst_AFileSelect::leavingTheShiftFieldTellsNewDE()
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
