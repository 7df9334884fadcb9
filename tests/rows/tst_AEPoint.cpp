// Tests of AEPoint, the energy-point row: its form, its signals, and loading map files.

#include "rows/AEPoint.h"
#include "rows/DialogSettings.h"
#include "rows/FormChecks.h"
#include "support/DebugLog.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QCheckBox>
#include <QDir>
#include <QFocusEvent>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <memory>
#include <random>
#include <sys/stat.h>

namespace
{

using Values = QList<double>;

// A map file of 2 by 2 pixels with the columns x, y, intensity and i0.
const QByteArray textMap = "# 1306 map\n"
                           "# X-NUM 2\n"
                           "# Y-NUM 2\n"
                           "# ENERGY : 8381.5\n"
                           "0 0 10 20\n"
                           "1 0 11 21\n"
                           "0 1 12 22\n"
                           "1 1 13 23\n";

// A map file of 2 by 1 pixels without an energy in its header.
const QByteArray mapWithoutEnergy = "# X-NUM 2\n# Y-NUM 1\n0 0 5 6\n1 0 7 8\n";

// The bytes of a binary map of @p pixels. The flags after the pixel values are all 1,
// which means that all pixels are valid.
QByteArray binaryMap(int width, int height, const Values& pixels)
{
    QByteArray bytes = QByteArrayLiteral("2dData-V0.0 HeaderSize: 512").leftJustified(64, ' ');
    bytes += "\nWIDTH: " + QByteArray::number(width) + "\nHEIGHT: " + QByteArray::number(height) +
             "\nDATA_ID: mut\nEND_OF_HEADER:\n";
    bytes = bytes.leftJustified(512, '\0');
    for (const double pixel : pixels) {
        bytes.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
    }
    return bytes + QByteArray(pixels.size(), '\1');
}

// The pixels of a map as one list: x, y, intensity and i0 of each pixel.
Values numbersOf(const A2DData& map)
{
    Values numbers;
    for (const A2DRow& row : map.rows) {
        numbers << row.x << row.y << row.intensity << row.i0;
    }
    return numbers;
}

// The energy of the row, followed by the values of mut for the references @p i and
// @p j.
Values energyAndMuts(const AEPoint& row, int i, int j)
{
    Values read(3, -1.0);
    row.energyAndMuts(i, j, &read[0], &read[1], &read[2]);
    return read;
}

// Clicks near the left edge, because a check box without text reacts only to clicks on
// its indicator.
void click(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

void leaveField(QLineEdit* edit)
{
    QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(edit, &leave);
}

// Records the signals of a row in the order of emission.
class SignalRecorder : public QObject
{
    Q_OBJECT

public:
    explicit SignalRecorder(AEPoint* row)
    {
        connect(row, &AEPoint::newDir, this, [this] { entries << QStringLiteral("dir"); });
        connect(row, &AEPoint::newEnergy, this, [this, row](double e) {
            entries << QStringLiteral("energy %1, %2, loaded %3")
                           .arg(e)
                           .arg(row->Energy->text())
                           .arg(row->loaded);
        });
        connect(row, &AEPoint::newData, this,
                [this, row] { entries << QStringLiteral("data, loaded %1").arg(row->loaded); });
        connect(row, &AEPoint::changedCB, this, [this] { entries << QStringLiteral("box"); });
    }

    QStringList entries;
};

} // namespace

class tst_AEPoint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void formContainsTheExpectedWidgets();
    void formHasTheExpectedFrameAndSpacings();
    void fieldsHaveTheExpectedWidthsAndSizePolicies();
    void separatorsAreVerticalAndSunken();
    void fileRowExpandsHorizontally();
    void rowStartsEmpty();
    void slotsAreCallableByName();

    void checkBoxEmitsChangedCBOnlyIfClicked_data();
    void checkBoxEmitsChangedCBOnlyIfClicked();
    void clickOnShowMapButtonEmitsNoSignalOfTheRow();
    void typedMutEmitsNoSignalAndIsReadOnDemand();
    void leavingTheEnergyFieldEmitsTheEnergy();
    void unparsableEnergyIsReadAsZero();
    void energyAndMutsAreReadFromTheFields();
    void mutOfAnInvalidReferenceIndexIsZero();

    void newDirectoryIsForwarded();
    void newFileInTheFileRowLoadsTheMap();
    void loadedTextMapSetsSizeHeaderAndPixels();
    void energyIsEmittedBeforeTheData();
    void everyEnergyLineIsEmittedAndTheLastEnergyIsKept();
    void energyIsKeptIfTheFileHasNoEnergy();
    void mapWithoutAValidSizeOrRowsIsNotLoaded_data();
    void mapWithoutAValidSizeOrRowsIsNotLoaded();
    void failedReloadKeepsThePixelsOfTheNewFile();
    void fileThatCannotBeOpenedUnloadsMapButKeepsPixels_data();
    void fileThatCannotBeOpenedUnloadsMapButKeepsPixels();
    void unreadableFileUnloadsTheMapButKeepsItsPixels();
    void clearingTheFileRowUnloadsTheMapButKeepsItsPixels();
    void mapSizeIsWrittenToTheDebugLog();

    void loadedBinaryMapSetsSizeAndMutOfThePixels();
    void formatIsDetectedByFirstBytesNotSuffix();
    void textWithBinarySignatureIsReadAsBinaryMap();
    void secondBinaryMapIsAppendedToTheOldPixels();
    void binaryMapKeepsPixelsAndHeaderOfAnEarlierTextMap();
    void textMapReplacesAnEarlierBinaryMap();
    void unreadableBinaryMapIsLoadedWithSizeZero_data();
    void unreadableBinaryMapIsLoadedWithSizeZero();
    void binaryMapOfTooLargeOrNegativeSizeHasSizeZero();
    void truncatedBinaryMapIsPaddedWithZeros();

    void truncatedTextMapIsLoadedOnlyIfItHasSizeAndRows();
    void truncatedBinaryMapIsAlwaysLoaded();
    void randomBytesAreLoadedOnlyIfTheyHaveSizeAndRows();
    void veryLongLineIsReadLikeAShortLine();
    void energyLineWithoutNumberIsReadAsZeroAndInfAsInfinity();

private:
    QString file(const QString& name, const QByteArray& content) const
    {
        return tests::writeFile(*folder, name, content);
    }

    const tests::DialogSettings m_settings;
    std::unique_ptr<QTemporaryDir> folder;
};

void tst_AEPoint::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
}

void tst_AEPoint::formContainsTheExpectedWidgets()
{
    const AEPoint row;
    const QList<tests::FormWidget> expectedForm{
        {"NumDisp", 0, "QLabel", "No. "},
        {"line_2", 1, "QFrame"},
        {"UseCB", 2, "QCheckBox"},
        {"VPointCB", 5, "QCheckBox"},
        {"LCFCB", 6, "QCheckBox"},
        {"line", 7, "QFrame"},
        {"label", 8, "QLabel", "  Energy(eV)"},
        {"Energy", 9, "QLineEdit"},
        {"label_2", 10, "QLabel", "  mut(Ref 1)"},
        {"Mut1", 11, "QLineEdit"},
        {"label_3", 12, "QLabel", "  mut(Ref 2)"},
        {"Mut2", 13, "QLineEdit"},
        {"label_5", 14, "QLabel", "mut(Ref 3)"},
        {"Mut3", 15, "QLineEdit"},
        {"label_6", 16, "QLabel", "mut(Ref 4)"},
        {"Mut4", 17, "QLineEdit"},
        {"label_7", 18, "QLabel", "  mut(Target)"},
        {"MutT", 19, "QLineEdit"},
        {"label_4", 20, "QLabel", "   2D "},
        {"FileSelect", 21, "AFileSelect"},
        {"ShowMapB", 22, "QRadioButton"},
    };
    QCOMPARE(tests::formDifferences(&row, expectedForm), QStringList());
}

void tst_AEPoint::formHasTheExpectedFrameAndSpacings()
{
    const AEPoint row;
    QCOMPARE(row.objectName(), QStringLiteral("AEPoint"));
    QCOMPARE(row.windowTitle(), QStringLiteral("Frame"));
    QCOMPARE(row.size(), QSize(1196, 37));
    QCOMPARE(row.frameShape(), QFrame::NoFrame);
    QCOMPARE(row.frameShadow(), QFrame::Raised);
    const auto* grid = qobject_cast<QGridLayout*>(row.layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(grid->horizontalSpacing(), 1);
    QCOMPARE(grid->verticalSpacing(), 1);
    QCOMPARE(grid->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(grid->rowCount(), 1);
}

void tst_AEPoint::fieldsHaveTheExpectedWidthsAndSizePolicies()
{
    const AEPoint row;
    QCOMPARE(row.NumDisp->sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(row.NumDisp->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    for (const QCheckBox* box : {row.UseCB, row.VPointCB, row.LCFCB}) {
        QCOMPARE(box->sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
        QCOMPARE(box->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }
    QCOMPARE(row.Energy->maximumWidth(), 70);
    QVERIFY(tests::isRightAligned(row.Energy));
    for (const QLineEdit* mut : {row.Mut1, row.Mut2, row.Mut3, row.Mut4, row.MutT}) {
        QCOMPARE(mut->maximumWidth(), 60);
    }
    for (const QLineEdit* edit : {row.Energy, row.Mut1, row.Mut2, row.Mut3, row.Mut4, row.MutT}) {
        QCOMPARE(edit->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
        QCOMPARE(edit->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QVERIFY(!edit->isReadOnly());
    }
}

void tst_AEPoint::separatorsAreVerticalAndSunken()
{
    const AEPoint row;
    for (const char* name : {"line", "line_2"}) {
        const auto* line = row.findChild<QFrame*>(QLatin1String(name));
        QVERIFY(line != nullptr);
        QCOMPARE(line->frameShape(), QFrame::VLine);
        QCOMPARE(line->frameShadow(), QFrame::Sunken);
    }
}

void tst_AEPoint::fileRowExpandsHorizontally()
{
    const AEPoint row;
    QCOMPARE(row.FileSelect->frameShape(), QFrame::NoFrame);
    QCOMPARE(row.FileSelect->frameShadow(), QFrame::Raised);
    QCOMPARE(row.FileSelect->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(row.FileSelect->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(row.FileSelect->mode, 0);
    QVERIFY(row.FileSelect->dEBase->isHidden());
}

void tst_AEPoint::rowStartsEmpty()
{
    const AEPoint row;
    QCOMPARE(row.loaded, false);
    QCOMPARE(row.subBGForRef, false);
    QCOMPARE(row.subBGForTarget, false);
    const QList<QLineEdit*> muts{row.Mut1, row.Mut2, row.Mut3, row.Mut4};
    QCOMPARE(row.mutEdits, muts);
    QVERIFY(!row.UseCB->isChecked() && !row.VPointCB->isChecked() && !row.LCFCB->isChecked());
    QVERIFY(!row.ShowMapB->isChecked());
    QVERIFY(row.rows.isEmpty());
    QCOMPARE(row.xNum, 0);
    QCOMPARE(row.yNum, 0);
    QCOMPARE(row.extended, false);
}

void tst_AEPoint::slotsAreCallableByName()
{
    for (const char* signature :
         {"loadData(QString)", "load2dProcData(QString)", "inNewEnergy()"}) {
        QVERIFY2(AEPoint::staticMetaObject.indexOfSlot(signature) >= 0, signature);
    }
}

void tst_AEPoint::checkBoxEmitsChangedCBOnlyIfClicked_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"UseCB", "VPointCB", "LCFCB"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_AEPoint::checkBoxEmitsChangedCBOnlyIfClicked()
{
    QFETCH(QString, name);
    AEPoint row;
    row.show();
    const SignalRecorder recorder(&row);
    auto* box = row.findChild<QCheckBox*>(name);
    click(box);
    QVERIFY(box->isChecked());
    QCOMPARE(recorder.entries, QStringList(QStringLiteral("box")));
    click(box);
    QVERIFY(!box->isChecked());
    QCOMPARE(recorder.entries.size(), 2);
    box->setChecked(true); // set by the program, not by a click
    box->setChecked(false);
    QCOMPARE(recorder.entries.size(), 2);
}

void tst_AEPoint::clickOnShowMapButtonEmitsNoSignalOfTheRow()
{
    AEPoint row;
    row.show();
    const SignalRecorder recorder(&row);
    click(row.ShowMapB);
    QVERIFY(row.ShowMapB->isChecked());
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AEPoint::typedMutEmitsNoSignalAndIsReadOnDemand()
{
    AEPoint row;
    const SignalRecorder recorder(&row);
    for (QLineEdit* mut : std::as_const(row.mutEdits)) {
        QTest::keyClicks(mut, QStringLiteral("0.25"));
        QTest::keyClick(mut, Qt::Key_Return);
        leaveField(mut);
    }
    QTest::keyClicks(row.MutT, QStringLiteral("0.5"));
    QTest::keyClick(row.MutT, Qt::Key_Return);
    QCOMPARE(recorder.entries, QStringList());
    QCOMPARE(energyAndMuts(row, 0, 3), (Values{0.0, 0.25, 0.25}));
}

void tst_AEPoint::leavingTheEnergyFieldEmitsTheEnergy()
{
    AEPoint row;
    const QSignalSpy energies(&row, &AEPoint::newEnergy);
    QTest::keyClicks(row.Energy, QStringLiteral("8404.5"));
    QCOMPARE(energies.size(), 0);
    leaveField(row.Energy);
    QCOMPARE(energies.size(), 1);
    QCOMPARE(energies.at(0).at(0).toDouble(), 8404.5);
    row.inNewEnergy(); // the unchanged energy is emitted again
    QCOMPARE(energies.size(), 2);
    QCOMPARE(energies.at(1).at(0).toDouble(), 8404.5);
}

void tst_AEPoint::unparsableEnergyIsReadAsZero()
{
    AEPoint row;
    const QSignalSpy energies(&row, &AEPoint::newEnergy);
    row.Energy->setText(QStringLiteral("white line"));
    row.inNewEnergy();
    QCOMPARE(energies.size(), 1);
    QCOMPARE(energies.at(0).at(0).toDouble(), 0.0);
    QCOMPARE(energyAndMuts(row, 0, 1).at(0), 0.0);
}

void tst_AEPoint::energyAndMutsAreReadFromTheFields()
{
    AEPoint row;
    row.Energy->setText(QStringLiteral("8381.25"));
    row.Mut1->setText(QStringLiteral("0.1"));
    row.Mut2->setText(QStringLiteral("0.2"));
    row.Mut3->setText(QStringLiteral("half"));
    row.Mut4->setText(QStringLiteral("0.4"));
    QCOMPARE(energyAndMuts(row, 1, 0), (Values{8381.25, 0.2, 0.1}));
    QCOMPARE(energyAndMuts(row, 2, 3), (Values{8381.25, 0.0, 0.4}));
}

void tst_AEPoint::mutOfAnInvalidReferenceIndexIsZero()
{
    AEPoint row;
    for (QLineEdit* field : {row.Mut1, row.Mut2, row.Mut3, row.Mut4, row.MutT}) {
        field->setText(QStringLiteral("1"));
    }
    QCOMPARE(energyAndMuts(row, -1, 4), (Values{0.0, 0.0, 0.0}));
}

void tst_AEPoint::newDirectoryIsForwarded()
{
    AEPoint row;
    const QSignalSpy dirs(&row, &AEPoint::newDir);
    row.FileSelect->newFile(file(QStringLiteral("map.dat"), textMap));
    QCOMPARE(dirs.size(), 1);
    QCOMPARE(dirs.at(0).at(0).toString(), QDir(folder->path()).canonicalPath());
}

void tst_AEPoint::newFileInTheFileRowLoadsTheMap()
{
    AEPoint row;
    const SignalRecorder recorder(&row);
    row.FileSelect->newFile(file(QStringLiteral("map.dat"), mapWithoutEnergy));
    QVERIFY(row.loaded);
    const QStringList expected{QStringLiteral("dir"), QStringLiteral("data, loaded 1")};
    QCOMPARE(recorder.entries, expected);
}

void tst_AEPoint::loadedTextMapSetsSizeHeaderAndPixels()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), textMap));
    QVERIFY(row.loaded);
    QCOMPARE(row.xNum, 2);
    QCOMPARE(row.yNum, 2);
    QCOMPARE(row.headerLines.size(), 4);
    QCOMPARE(row.headerLines.at(0), QStringLiteral("# 1306 map"));
    const Values expected{0, 0, 10, 20, 1, 0, 11, 21, 0, 1, 12, 22, 1, 1, 13, 23};
    QCOMPARE(numbersOf(row), expected);
    QCOMPARE(data::pixelMut(row, 1, 1), std::log(23.0 / 13.0));
}

void tst_AEPoint::energyIsEmittedBeforeTheData()
{
    AEPoint row;
    row.Energy->setText(QStringLiteral("1"));
    row.loaded = true;
    const SignalRecorder recorder(&row);
    row.loadData(file(QStringLiteral("map.dat"), textMap));
    const QStringList expected{QStringLiteral("energy 8381.5, 8381.5, loaded 0"),
                               QStringLiteral("data, loaded 1")};
    QCOMPARE(recorder.entries, expected);
    QCOMPARE(row.Energy->text(), QStringLiteral("8381.5"));
    QCOMPARE(row.Energy->cursorPosition(), 0);
}

void tst_AEPoint::everyEnergyLineIsEmittedAndTheLastEnergyIsKept()
{
    AEPoint row;
    const QSignalSpy energies(&row, &AEPoint::newEnergy);
    row.loadData(file(QStringLiteral("map.dat"),
                      "# ENERGY : 8313\n# X-NUM 1\n# Y-NUM 1\n1 1 1 1\n# energy : 8460.50\n"));
    QCOMPARE(energies.size(), 2);
    QCOMPARE(energies.at(0).at(0).toDouble(), 8313.0);
    QCOMPARE(energies.at(1).at(0).toDouble(), 8460.5);
    QCOMPARE(row.Energy->text(), QStringLiteral("8460.50"));
}

void tst_AEPoint::energyIsKeptIfTheFileHasNoEnergy()
{
    AEPoint row;
    row.Energy->setText(QStringLiteral("8404.5"));
    const QSignalSpy energies(&row, &AEPoint::newEnergy);
    row.loadData(file(QStringLiteral("map.dat"), mapWithoutEnergy));
    QVERIFY(row.loaded);
    QCOMPARE(row.Energy->text(), QStringLiteral("8404.5"));
    QCOMPARE(energies.size(), 0);
}

void tst_AEPoint::mapWithoutAValidSizeOrRowsIsNotLoaded_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qsizetype>("rowCount");
    QTest::newRow("empty file") << QByteArray() << qsizetype(0);
    QTest::newRow("no size") << QByteArray("0 0 1 2\n1 0 1 2\n") << qsizetype(2);
    QTest::newRow("no rows") << QByteArray("# X-NUM 2\n# Y-NUM 2\n") << qsizetype(0);
    QTest::newRow("size over the limit")
        << QByteArray("# X-NUM 100000\n# Y-NUM 100000\n0 0 1 2\n") << qsizetype(1);
}

void tst_AEPoint::mapWithoutAValidSizeOrRowsIsNotLoaded()
{
    QFETCH(QByteArray, content);
    AEPoint row;
    const QSignalSpy maps(&row, &AEPoint::newData);
    row.loadData(file(QStringLiteral("map.dat"), content));
    QVERIFY(!row.loaded);
    QCOMPARE(maps.size(), 0);
    QTEST(row.rows.size(), "rowCount");
}

void tst_AEPoint::failedReloadKeepsThePixelsOfTheNewFile()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), textMap));
    row.loadData(file(QStringLiteral("bad.dat"), "# no size\n7 8 9 10\n"));
    QVERIFY(!row.loaded);
    const Values expected{7, 8, 9, 10};
    QCOMPARE(numbersOf(row), expected);
    QCOMPARE(row.headerLines, QStringList(QStringLiteral("# no size")));
}

void tst_AEPoint::fileThatCannotBeOpenedUnloadsMapButKeepsPixels_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << "missing.dat";
    QTest::newRow("a folder") << ".";
    QTest::newRow("a pipe") << "pipe";
}

void tst_AEPoint::fileThatCannotBeOpenedUnloadsMapButKeepsPixels()
{
    QFETCH(QString, name);
    QCOMPARE(::mkfifo(QFile::encodeName(folder->filePath(QStringLiteral("pipe"))), 0600), 0);
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), textMap));
    const QSignalSpy maps(&row, &AEPoint::newData);
    row.loadData(folder->filePath(name));
    QVERIFY(!row.loaded);
    QCOMPARE(row.rows.size(), 4);
    QCOMPARE(row.xNum, 2);
    QCOMPARE(row.headerLines.size(), 4);
    QCOMPARE(maps.size(), 0);
}

void tst_AEPoint::unreadableFileUnloadsTheMapButKeepsItsPixels()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), textMap));
    const QString path = file(QStringLiteral("secret.dat"), mapWithoutEnergy);
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(QFile::setPermissions(folder->path(), QFile::Permissions(0x7755)));
    const QSignalSpy maps(&row, &AEPoint::newData);
    {
        const tests::Unprivileged rights;
        QVERIFY(rights.holds());
        row.loadData(path);
    }
    QVERIFY(!row.loaded);
    QCOMPARE(row.rows.size(), 4);
    QCOMPARE(maps.size(), 0);
}

void tst_AEPoint::clearingTheFileRowUnloadsTheMapButKeepsItsPixels()
{
    AEPoint row;
    row.FileSelect->newFile(file(QStringLiteral("map.dat"), textMap));
    const SignalRecorder recorder(&row);
    row.FileSelect->clearFileName();
    QVERIFY(!row.loaded);
    QCOMPARE(row.rows.size(), 4);
    QCOMPARE(recorder.entries, QStringList());
}

void tst_AEPoint::mapSizeIsWrittenToTheDebugLog()
{
    AEPoint row;
    const QString good = file(QStringLiteral("map.dat"), textMap);
    const QString bad = file(QStringLiteral("bad.dat"), "# X-NUM 3\n");
    const tests::DebugLog log;
    row.loadData(good);
    row.loadData(bad);
    const QStringList expected{QStringLiteral("size 2 2"), QStringLiteral("size 3 0")};
    QCOMPARE(log.lines(), expected);
}

void tst_AEPoint::loadedBinaryMapSetsSizeAndMutOfThePixels()
{
    AEPoint row;
    const SignalRecorder recorder(&row);
    row.Energy->setText(QStringLiteral("8313"));
    row.loadData(file(QStringLiteral("map.2dp"), binaryMap(3, 2, {0.1, 0.2, 0.3, 0.4, 0.5, 0.6})));
    QVERIFY(row.loaded);
    QCOMPARE(row.xNum, 3);
    QCOMPARE(row.yNum, 2);
    const Values expected{0, 0, 0.1, 0, 1, 0, 0.2, 0, 2, 0, 0.3, 0,
                          0, 1, 0.4, 0, 1, 1, 0.5, 0, 2, 1, 0.6, 0};
    QCOMPARE(numbersOf(row), expected);
    QVERIFY(row.rows.at(0).values.isEmpty());
    QCOMPARE(data::pixelMut(row, 1, 1), 0.5);
    QCOMPARE(recorder.entries, QStringList(QStringLiteral("data, loaded 1")));
    QCOMPARE(row.Energy->text(), QStringLiteral("8313"));
}

void tst_AEPoint::formatIsDetectedByFirstBytesNotSuffix()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), binaryMap(1, 1, {0.75})));
    QCOMPARE(data::pixelMut(row, 0, 0), 0.75);
    row.loadData(file(QStringLiteral("map.2dp"), mapWithoutEnergy));
    QCOMPARE(data::pixelMut(row, 0, 0), std::log(6.0 / 5.0));
}

void tst_AEPoint::textWithBinarySignatureIsReadAsBinaryMap()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.dat"), "2dData\n# X-NUM 1\n# Y-NUM 1\n0 0 1 2\n"));
    QVERIFY(row.loaded);
    QVERIFY(row.rows.isEmpty());
    QCOMPARE(row.xNum, 0);
    QVERIFY(row.headerLines.isEmpty());
}

void tst_AEPoint::secondBinaryMapIsAppendedToTheOldPixels()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("a.2dp"), binaryMap(2, 1, {0.1, 0.2})));
    row.loadData(file(QStringLiteral("b.2dp"), binaryMap(3, 1, {0.7, 0.8, 0.9})));
    QCOMPARE(row.rows.size(), 5);
    QCOMPARE(row.xNum, 3);
    QCOMPARE(row.yNum, 1);
    QCOMPARE(data::pixelMut(row, 0, 0), 0.1);
    QCOMPARE(data::pixelMut(row, 1, 0), 0.2);
    QCOMPARE(data::pixelMut(row, 2, 0), 0.7);
}

void tst_AEPoint::binaryMapKeepsPixelsAndHeaderOfAnEarlierTextMap()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("a.dat"), textMap));
    row.loadData(file(QStringLiteral("b.2dp"), binaryMap(1, 1, {0.5})));
    QCOMPARE(row.rows.size(), 5);
    QCOMPARE(row.headerLines.size(), 4);
    QCOMPARE(row.xNum, 1);
    QCOMPARE(row.yNum, 1);
    QCOMPARE(data::pixelMut(row, 0, 0), std::log(20.0 / 10.0));
}

void tst_AEPoint::textMapReplacesAnEarlierBinaryMap()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("a.2dp"), binaryMap(2, 1, {0.1, 0.2})));
    row.loadData(file(QStringLiteral("b.dat"), mapWithoutEnergy));
    QCOMPARE(row.rows.size(), 2);
    QCOMPARE(data::pixelMut(row, 0, 0), std::log(6.0 / 5.0));
}

void tst_AEPoint::unreadableBinaryMapIsLoadedWithSizeZero_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << "missing.2dp";
    QTest::newRow("a text map") << "map.dat";
    QTest::newRow("a folder") << ".";
}

void tst_AEPoint::unreadableBinaryMapIsLoadedWithSizeZero()
{
    QFETCH(QString, name);
    const QString text = file(QStringLiteral("map.dat"), textMap);
    AEPoint row;
    row.loadData(text);
    const QSignalSpy maps(&row, &AEPoint::newData);
    row.load2dProcData(folder->filePath(name));
    QVERIFY(row.loaded);
    QCOMPARE(row.xNum, 0);
    QCOMPARE(row.yNum, 0);
    QCOMPARE(row.rows.size(), 4);
    QCOMPARE(maps.size(), 1);
}

void tst_AEPoint::binaryMapOfTooLargeOrNegativeSizeHasSizeZero()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("map.2dp"), binaryMap(100000, 100000, {0.5})));
    QVERIFY(row.loaded);
    QCOMPARE(row.xNum, 0);
    QCOMPARE(row.yNum, 0);
    QVERIFY(row.rows.isEmpty());
    AEPoint negative;
    negative.loadData(file(QStringLiteral("negative.2dp"), binaryMap(-3, 2, {0.5})));
    QVERIFY(negative.loaded);
    QCOMPARE(negative.xNum, 0);
    QCOMPARE(negative.yNum, 0);
    QVERIFY(negative.rows.isEmpty());
}

void tst_AEPoint::truncatedBinaryMapIsPaddedWithZeros()
{
    AEPoint row;
    QByteArray bytes = binaryMap(2, 2, {0.1, 0.2, 0.3, 0.4});
    bytes.truncate(512 + 2 * 8);
    row.loadData(file(QStringLiteral("map.2dp"), bytes));
    QVERIFY(row.loaded);
    QCOMPARE(row.rows.size(), 4);
    QCOMPARE(data::pixelMut(row, 1, 0), 0.2);
    QCOMPARE(data::pixelMut(row, 0, 1), 0.0);
    QCOMPARE(data::pixelMut(row, 1, 1), 0.0);
}

void tst_AEPoint::truncatedTextMapIsLoadedOnlyIfItHasSizeAndRows()
{
    AEPoint row;
    int loads = 0;
    connect(&row, &AEPoint::newData, this, [&] { ++loads; });
    for (qsizetype length = 0; length <= textMap.size(); ++length) {
        const int before = loads;
        row.loadData(file(QStringLiteral("map.dat"), textMap.left(length)));
        QCOMPARE(row.loaded, row.xNum > 0 && row.yNum > 0 && !row.rows.isEmpty());
        QCOMPARE(loads - before, row.loaded ? 1 : 0);
    }
    QVERIFY(row.loaded);
}

void tst_AEPoint::truncatedBinaryMapIsAlwaysLoaded()
{
    const QByteArray whole = binaryMap(2, 2, {0.1, 0.2, 0.3, 0.4});
    AEPoint row;
    for (qsizetype length = 6; length <= whole.size(); ++length) {
        row.rows.clear();
        row.loadData(file(QStringLiteral("map.2dp"), whole.left(length)));
        QVERIFY(row.loaded);
        QCOMPARE(row.rows.size(), qsizetype(row.xNum) * row.yNum);
    }
    QCOMPARE(data::pixelMut(row, 1, 1), 0.4);
}

void tst_AEPoint::randomBytesAreLoadedOnlyIfTheyHaveSizeAndRows()
{
    std::mt19937 generator(20240607);
    std::uniform_int_distribution<int> anyByte(0, 255);
    int loadedFiles = 0;
    for (int round = 0; round < 20; ++round) {
        QByteArray noise = round % 2 == 0 ? QByteArray("# X-NUM 2\n# Y-NUM 2\n") : QByteArray();
        for (int i = 0; i < 5000; ++i) {
            noise += static_cast<char>(anyByte(generator));
        }
        AEPoint row;
        row.loadData(file(QStringLiteral("noise.dat"), noise));
        QCOMPARE(row.loaded, row.xNum > 0 && row.yNum > 0 && !row.rows.isEmpty());
        loadedFiles += row.loaded ? 1 : 0;
    }
    QVERIFY(loadedFiles > 0 && loadedFiles < 20);
}

void tst_AEPoint::veryLongLineIsReadLikeAShortLine()
{
    AEPoint row;
    row.loadData(file(QStringLiteral("long.dat"), QByteArray(10'000'000, '7')));
    QVERIFY(!row.loaded);
    row.loadData(file(QStringLiteral("long.dat"),
                      "# X-NUM 1\n# Y-NUM 1\n1 1 1 2 " + QByteArray(10'000'000, '7')));
    QVERIFY(row.loaded);
    QCOMPARE(row.rows.size(), 1);
}

void tst_AEPoint::energyLineWithoutNumberIsReadAsZeroAndInfAsInfinity()
{
    AEPoint row;
    const QSignalSpy energies(&row, &AEPoint::newEnergy);
    row.loadData(file(QStringLiteral("map.dat"),
                      "# ENERGY : " + QByteArray(1'000'000, 'e') + "\n# ENERGY : inf\n"));
    QCOMPARE(energies.size(), 2);
    QCOMPARE(energies.at(0).at(0).toDouble(), 0.0);
    QVERIFY(std::isinf(energies.at(1).at(0).toDouble()));
    QCOMPARE(row.Energy->text(), QStringLiteral("inf"));
}

QTEST_MAIN(tst_AEPoint)
#include "tst_AEPoint.moc"
