// Writing a result to a file. tst_FileAccess tests more files that cannot be opened.
#include "analysis/ResultFile.h"

#include "data/A2DData.h"
#include "support/AbsorbanceMap.h"
#include "support/TestFiles.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

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
    void extendedFileHasSelectedColumnsAndSimpleFileFixedOnes();
    void fileThatCannotBeOpenedIsReported_data();
    void fileThatCannotBeOpenedIsReported();
    void fullDiskIsReported();
};

void tst_ResultFile::extendedFileHasSelectedColumnsAndSimpleFileFixedOnes()
{
    const QTemporaryDir dir;
    const QString path = writeFile(dir, "result", QByteArray(1000, 'x')); // replaced by the result
    A2DData map;
    map.headerLines = {"# sample  A"};
    map.xNum = 1;
    map.yNum = 1;
    map.rows = {{7, 8, 0.5, 1, {0.25, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 2.5, 1.5}}};
    QVERIFY(write(path, map));
    // The columns are x, y, a, valence and thickness. Each number is right-aligned to 10
    // characters after one blank; before a there are four blanks.
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

void tst_ResultFile::fileThatCannotBeOpenedIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << "/.";
    QTest::newRow("missing folder") << "/missing/result.dat";
    QTest::newRow("file as folder") << "/plain/result.dat";
    QTest::newRow("name too long") << '/' + QString(300, 'n') + ".dat";
    QTest::newRow("empty path") << QString();
}

void tst_ResultFile::fileThatCannotBeOpenedIsReported()
{
    QFETCH(QString, name);
    const QTemporaryDir dir;
    writeFile(dir, "plain", "x");
    QVERIFY(!write(name.isEmpty() ? name : dir.path() + name));
    QCOMPARE(readFile(dir.filePath("plain")), "x");
}

void tst_ResultFile::fullDiskIsReported()
{
    if (!QFileInfo::exists("/dev/full")) {
        QSKIP("needs /dev/full, the device that is always full");
    }
    QVERIFY(!write("/dev/full"));
    QVERIFY(!write("/dev/full", absorbanceMap(100, 100, QList<double>(10000, 1.0))));
}

QTEST_APPLESS_MAIN(tst_ResultFile)
#include "tst_ResultFile.moc"
