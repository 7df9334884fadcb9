#include "display/Histgram.h"
#include "support/PanelTools.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace tests;

namespace
{

const QString cannotOpen = QStringLiteral("Can't open the file [%1]");

// Names the file as a user who types it.
void saveTo(FourPs& panel, const QString& path)
{
    panel.ui.SaveFSelect->FileName->setText(path);
}

} // namespace

class tst_FourPsWrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writeButtonCalculatesAndWrites();
    void valenceColumnIsZeroWithoutTwoValidReferences();
    void valenceIsMixedWhenWriting();
    void emptyResultWritesTitleAndBlankLine();
    void emptyExtendedResultWritesTheHeadingToo();
    void extendedLayoutHasTheCheckedColumns();
    void pathIsTakenAsTyped();
    void saveRowAddsItsSuffix();
    void existingFileIsOverwrittenWithoutAWord();
    void refusedRunWritesTheEarlierResult();
    void unopenableFileIsReported_data();
    void unopenableFileIsReported();
    void emptyPathIsReported();
    void fileWithoutPermissionIsReportedAndKept();
    void fullDiskIsReported();
    void histogramThatIsNotWrittenWholeIsReportedByItsName();
    void pipeIsReportedAndDoesNotHang();
    void histogramsAreStillWrittenWhenTheResultIsNot();
    void firstSaveLeavesNoHistogramFile();
    void repeatedSaveUpdatesHistogramFilesMadeByHand();
};

void tst_FourPsWrite::writeButtonCalculatesAndWrites()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.EPoints.at(2)->headerLines = {"# sample  A", "#\ttab"};
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    QTest::mouseClick(panel.ui.WriteB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    // x 0, y 0.5, a 0.5, valence 2.5, thickness 1, each ten wide.
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "# sample  A\n"
                             "#\ttab\n"
                             "\n"
                             "          0        0.5           0.5        2.5          1\n"
                             "\n");
}

void tst_FourPsWrite::valenceColumnIsZeroWithoutTwoValidReferences()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.calcMap();
    panel.XafsFiles.at(1)->valid = false;
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.write();
    QVERIFY(
        readFile(path).endsWith("          0        0.5           0.5          0          1\n\n"));
}

void tst_FourPsWrite::valenceIsMixedWhenWriting()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.calcMap();
    panel.Refs.RefRows.at(1)->Valence->setText("4"); // after the calculation
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.write();
    QVERIFY(readFile(path).contains("  0.5          3          1\n"));
}

void tst_FourPsWrite::emptyResultWritesTitleAndBlankLine()
{
    QTemporaryDir dir;
    FourPs panel;
    panel.BaseData.headerLines = {"# h"};
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.write();
    QCOMPARE(readFile(path), "# qelk result map V1.0\n# h\n\n");
}

void tst_FourPsWrite::emptyExtendedResultWritesTheHeadingToo()
{
    QTemporaryDir dir;
    FourPs panel;
    panel.BaseData.extended = true;
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.write();
    QCOMPARE(readFile(path), "# qelk result map V1.0\n\n# y x Valence Total-dMut\n");
}

void tst_FourPsWrite::extendedLayoutHasTheCheckedColumns()
{
    QTemporaryDir dir;
    FourPs panel;
    panel.BaseData.extended = true;
    panel.BaseData.xNum = 1;
    panel.BaseData.yNum = 1;
    panel.BaseData.rows = {{7, 8, 0, 0, {0.25, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 2.5, 1.5}}};
    panel.ui.RecAmount->setChecked(false);
    panel.ui.RecRatio1->setChecked(true);
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.write();
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "\n"
                             "# y x alpha1 Valence\n"
                             "          7          8       0.25        2.5\n"
                             "\n");
}

void tst_FourPsWrite::pathIsTakenAsTyped()
{
    QTemporaryDir dir;
    FourPs panel;
    const QString path = dir.filePath("no suffix");
    saveTo(panel, path);
    panel.write();
    QVERIFY(QFileInfo::exists(path));
    QVERIFY(!QFileInfo::exists(path + ".dat"));
}

void tst_FourPsWrite::saveRowAddsItsSuffix()
{
    QTemporaryDir dir;
    FourPs panel;
    panel.ui.SaveFSelect->newFile(dir.filePath("map.txt"));
    panel.write();
    QVERIFY(QFileInfo::exists(dir.filePath("map.txt.dat")));
}

void tst_FourPsWrite::existingFileIsOverwrittenWithoutAWord()
{
    QTemporaryDir dir;
    FourPs panel;
    const QString path = writeFile(dir, "result.dat", QByteArray(100000, 'x'));
    saveTo(panel, path);
    clearMessages(panel);
    panel.write();
    QCOMPARE(readFile(path), "# qelk result map V1.0\n\n");
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_FourPsWrite::refusedRunWritesTheEarlierResult()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.calcMap();
    panel.EPoints.at(2)->VPointCB->setChecked(false);
    const QString path = dir.filePath("result.dat");
    saveTo(panel, path);
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{"V Point is not selected"});
    QVERIFY(readFile(path).contains("  0.5        2.5          1\n"));
}

void tst_FourPsWrite::unopenableFileIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << ".";
    QTest::newRow("missing folder") << "missing/result.dat";
    QTest::newRow("file as folder") << "plain/result.dat";
    QTest::newRow("name too long") << QString(300, 'n') + ".dat";
}

void tst_FourPsWrite::unopenableFileIsReported()
{
    QFETCH(QString, name);
    QTemporaryDir dir;
    writeFile(dir, "plain", "x");
    FourPs panel;
    clearMessages(panel);
    const QString path = dir.path() + '/' + name;
    saveTo(panel, path);
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
}

void tst_FourPsWrite::emptyPathIsReported()
{
    FourPs panel;
    clearMessages(panel);
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(QString())});
}

void tst_FourPsWrite::fileWithoutPermissionIsReportedAndKept()
{
    QTemporaryDir dir;
    const QString path = writeFile(dir, "result.dat", "earlier");
    QCOMPARE(chmod(qPrintable(dir.path()), 0755), 0);
    QCOMPARE(chmod(qPrintable(path), 0444), 0);
    FourPs panel;
    clearMessages(panel);
    saveTo(panel, path);
    {
        const Unprivileged nobody;
        if (!nobody.holds()) {
            QSKIP("needs a user without the rights of root");
        }
        panel.write();
    }
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
    QCOMPARE(readFile(path), "earlier");
}

void tst_FourPsWrite::fullDiskIsReported()
{
    if (!QFileInfo::exists("/dev/full")) {
        QSKIP("needs the device that is always full");
    }
    FourPs panel;
    prepareThreePointMaps(panel);
    saveTo(panel, "/dev/full");
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg("/dev/full")});
}

void tst_FourPsWrite::histogramThatIsNotWrittenWholeIsReportedByItsName()
{
    if (!QFileInfo::exists("/dev/full")) {
        QSKIP("needs the device that is always full");
    }
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    saveTo(panel, dir.filePath("map.dat"));
    QVERIFY(QFile::link("/dev/full", dir.filePath("map_HGThick.dat")));
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg("/dev/full")});
    QVERIFY(readFile(dir.filePath("map.dat")).startsWith("# qelk result map V1.0\n"));
    QVERIFY(!QFileInfo::exists(dir.filePath("map_HGAlpha.dat")));
}

void tst_FourPsWrite::pipeIsReportedAndDoesNotHang()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("pipe.dat");
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    FourPs panel;
    clearMessages(panel);
    saveTo(panel, path);
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
}

void tst_FourPsWrite::histogramsAreStillWrittenWhenTheResultIsNot()
{
    // The result's name is a folder; its histogram file is there already.
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir("result.dat"));
    const QString path = dir.filePath("result.dat");
    const QString histogram = writeFile(dir, "result_HGAlpha.dat", "old");
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.HgABoxes->setText("1");
    panel.calcMap();
    saveTo(panel, path);
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
    QCOMPARE(readFile(histogram).count('\n'), 3); // one box and the two ends
}

void tst_FourPsWrite::firstSaveLeavesNoHistogramFile()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    saveTo(panel, dir.filePath("a.b.dat"));
    panel.calcAndWrite();
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"a.b.dat"});
}

void tst_FourPsWrite::repeatedSaveUpdatesHistogramFilesMadeByHand()
{
    QTemporaryDir dir;
    FourPs panel;
    prepareThreePointMaps(panel);
    panel.ui.HgAFrom->setText("2");
    panel.ui.HgATo->setText("3");
    panel.ui.HgABoxes->setText("3");
    panel.ui.HgTFrom->setText("3");
    panel.ui.HgTTo->setText("4");
    panel.ui.HgTBoxes->setText("2");
    const QString alpha = writeFile(dir, "a.b_HGAlpha.dat", "old");
    const QString thick = writeFile(dir, "a.b_HGThick.dat", "old");
    saveTo(panel, dir.filePath("a.b.dat"));
    panel.calcAndWrite();
    // Valence 2.5 in the middle of three boxes; thickness 1 below both of two.
    QCOMPARE(readFile(alpha), "1.25 1.5 1.75  0\n"
                              "1.75 2 2.25  0\n"
                              "2.25 2.5 2.75  1\n"
                              "2.75 3 3.25  0\n"
                              "3.25 3.5 3.75  0\n");
    QCOMPARE(readFile(thick), "1.5 2 2.5  1\n"
                              "2.5 3 3.5  0\n"
                              "3.5 4 4.5  0\n"
                              "4.5 5 5.5  0\n");
}

QTEST_MAIN(tst_FourPsWrite)
#include "tst_FourPsWrite.moc"
