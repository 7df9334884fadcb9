#include "analysis/ResultFile.h"

#include "data/A2DData.h"
#include "support/ReadyMap.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace tests;

namespace
{

bool write(const QString& path, const A2DData& map = {})
{
    return analysis::writeResultFile(path, map, {true, 2.0, 3.0}, {true});
}

} // namespace

class tst_ResultFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsTheResultInTheWantedColumns();
    void nameIsTakenAsItIs();
    void existingFileIsReplaced();
    void unopenableFileIsRefused_data();
    void unopenableFileIsRefused();
    void fileWithoutPermissionIsRefusedAndKept();
    void fullDiskIsRefused();
    void pipeIsRefusedAndDoesNotHang();
};

void tst_ResultFile::holdsTheResultInTheWantedColumns()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    A2DData map;
    map.headerLines = {"# sample  A"};
    map.xNum = 1;
    map.yNum = 1;
    map.rows = {{7, 8, 0.5, 1, {0.25, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 2.5, 1.5}}};
    QVERIFY(write(path, map));
    // x, y, a, valence and thickness, each ten wide.
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "# sample  A\n"
                             "\n"
                             "          7          8           0.5        2.5          1\n"
                             "\n");
    map.extended = true;
    QVERIFY(write(path, map));
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "# sample  A\n"
                             "\n"
                             "# y x alpha1\n"
                             "          7          8       0.25\n"
                             "\n");
}

void tst_ResultFile::nameIsTakenAsItIs()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("no suffix");
    QVERIFY(write(path));
    QVERIFY(QFileInfo::exists(path));
    QVERIFY(!QFileInfo::exists(path + ".dat"));
}

void tst_ResultFile::existingFileIsReplaced()
{
    const QTemporaryDir dir;
    const QString path = writeFile(dir, "result.dat", QByteArray(100000, 'x'));
    QVERIFY(write(path));
    QCOMPARE(readFile(path), "# qelk result map V1.0\n\n");
}

void tst_ResultFile::unopenableFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << "/.";
    QTest::newRow("missing folder") << "/missing/result.dat";
    QTest::newRow("file as folder") << "/plain/result.dat";
    QTest::newRow("name too long") << '/' + QString(300, 'n') + ".dat";
    QTest::newRow("no name") << QString();
}

void tst_ResultFile::unopenableFileIsRefused()
{
    QFETCH(QString, name);
    const QTemporaryDir dir;
    writeFile(dir, "plain", "x");
    QVERIFY(!write(name.isEmpty() ? name : dir.path() + name));
    QCOMPARE(readFile(dir.filePath("plain")), "x");
}

void tst_ResultFile::fileWithoutPermissionIsRefusedAndKept()
{
    const QTemporaryDir dir;
    const QString path = writeFile(dir, "result.dat", "earlier");
    QCOMPARE(chmod(qPrintable(dir.path()), 0755), 0);
    QCOMPARE(chmod(qPrintable(path), 0444), 0);
    {
        const Unprivileged nobody;
        if (!nobody.holds()) {
            QSKIP("needs a user without the rights of root");
        }
        QVERIFY(!write(path));
    }
    QCOMPARE(readFile(path), "earlier");
}

void tst_ResultFile::fullDiskIsRefused()
{
    if (!QFileInfo::exists("/dev/full")) {
        QSKIP("needs the device that is always full");
    }
    QVERIFY(!write("/dev/full"));
    QVERIFY(!write("/dev/full", readyMap(100, 100, QList<double>(10000, 1.0))));
}

void tst_ResultFile::pipeIsRefusedAndDoesNotHang()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("pipe.dat");
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    QVERIFY(!write(path));
}

QTEST_APPLESS_MAIN(tst_ResultFile)
#include "tst_ResultFile.moc"
