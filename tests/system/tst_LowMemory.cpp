// Tests that read files under different memory limits. A file must be either read
// completely or refused with a reason; a lack of memory must never end the program.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr int manyRows = 100000; ///< data lines of a text file, pixels of a binary map

QByteArray textMap()
{
    return "# X-NUM 500\n# Y-NUM 200\n" + QByteArray("1 2 3\n").repeated(manyRows);
}

QByteArray channelMap()
{
    QByteArray text("# 2003901\n# I0 = :0\n# I = :1\n");
    for (int row = 0; row < manyRows; ++row) {
        text += QByteArray::number(row % 500) + ' ' + QByteArray::number(row / 500) + " 3 4\n";
    }
    return text;
}

QByteArray commentedMap()
{
    return textMap() + QByteArray("# a comment of some length\n").repeated(60000);
}

QByteArray utf16Map()
{
    QByteArray wide("\xff\xfe");
    for (const char byte : textMap()) {
        wide += byte;
        wide += '\0';
    }
    return wide;
}

QByteArray longLineMap()
{
    return textMap() + "# " + QByteArray(4 * mebibyte, 'c') + '\n';
}

QByteArray binaryMap()
{
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 256").leftJustified(64, ' ') + '\n';
    head += "WIDTH: 500\nHEIGHT: 200\nEND_OF_HEADER:\n";
    return head.leftJustified(256, '\0') + QByteArray(manyRows * 9, '\1');
}

QByteArray binaryMapWithLongHeader()
{
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 4194304").leftJustified(64, ' ') + '\n';
    head += "WIDTH: 500\nHEIGHT: 200\nEND_OF_HEADER:\n";
    return head.leftJustified(4 * mebibyte, 'h') + QByteArray(manyRows * 9, '\1');
}

/// A map with long comment lines of kana, which need three bytes per character in UTF-8.
QByteArray longKanaMap()
{
    const QByteArray line = '#' + QByteArray("\xE3\x81\x82").repeated(16777215) + '\n';
    return textMap() + line.repeated(3);
}

QByteArray longKanaHeader()
{
    const QByteArray id = "DATA_ID: \"" + QByteArray("\xE3\x81\x82").repeated(5500000) + '\n';
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 16777216").leftJustified(64, ' ') + '\n';
    head += "WIDTH: 500\nHEIGHT: 200\n" + id;
    return head.leftJustified(16777216, '\0') + QByteArray(manyRows * 9, '\1');
}

/// A beamline file whose header lines have millions of words.
QByteArray manyModes()
{
    const QByteArray words = QByteArray("0 ").repeated(3000000);
    return "9809\nMode 0 0 1 2 " + words + "\nx " + words + "\nOffset\n" +
           QByteArray("1 13.5 1 800 100\n").repeated(manyRows);
}

QByteArray plainSpectrum()
{
    return QByteArray("8000 1\n").repeated(manyRows);
}

QByteArray beamlineSpectrum()
{
    return "9809\n Mode 0 0 1 2\n Offset\n" + QByteArray("1 13.5 1 800 100\n").repeated(manyRows);
}

QByteArray longLineSpectrum()
{
    return plainSpectrum() + "# " + QByteArray(4 * mebibyte, 'c') + '\n';
}

} // namespace

class tst_LowMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileUnderAMemoryLimitIsReadCompletelyOrRefused_data();
    void fileUnderAMemoryLimitIsReadCompletelyOrRefused();
    void refusedFileCanBeReadWithMoreMemory_data();
    void refusedFileCanBeReadWithMoreMemory();
};

void tst_LowMemory::fileUnderAMemoryLimitIsReadCompletelyOrRefused_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QByteArray>("content");
    const QByteArray map("map");
    const QByteArray spectrum("spectrum");
    QTest::newRow("text map") << map << textMap();
    QTest::newRow("map of channels") << map << channelMap();
    QTest::newRow("map with many comments") << map << commentedMap();
    QTest::newRow("map of 16-bit text") << map << utf16Map();
    QTest::newRow("map with a long line") << map << longLineMap();
    QTest::newRow("binary map") << map << binaryMap();
    QTest::newRow("binary map with a long header") << map << binaryMapWithLongHeader();
    QTest::newRow("map with three long lines of kana") << map << longKanaMap();
    QTest::newRow("binary map with a long header of kana") << map << longKanaHeader();
    QTest::newRow("spectrum with many modes") << spectrum << manyModes();
    QTest::newRow("plain spectrum") << spectrum << plainSpectrum();
    QTest::newRow("beamline spectrum") << spectrum << beamlineSpectrum();
    QTest::newRow("spectrum with a long line") << spectrum << longLineSpectrum();
}

void tst_LowMemory::fileUnderAMemoryLimitIsReadCompletelyOrRefused()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("AddressSanitizer needs all of the address space");
    }
    QFETCH(QByteArray, step);
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "file.dat", content));
    QStringList complaints;
    int whole = 0;
    const QList<const char*> limits{"1", "30", "70", "127", "129", "150", "240", "1000"};
    for (const char* mebibytes : limits) {
        const ChildRun run = systemChild().runSteps({"limitMemory", mebibytes, step, path});
        const QJsonObject state = run.lastStep();
        const bool isMap = step == "map";
        const bool isWhole = state[isMap ? "rows" : "points"].toInt() == manyRows &&
                             (isMap ? state["loaded"] : state["valid"]).toBool();
        const bool isRefused = hasReason(state) && state[isMap ? "rows" : "points"].toInt() == 0 &&
                               state[isMap ? "xNum" : "newEdges"].toInt() == 0;
        if (!run.trouble.isEmpty()) {
            complaints += QStringLiteral("%1 MiB: %2").arg(mebibytes, run.trouble);
        } else if (!isWhole && !isRefused) {
            complaints += QStringLiteral("%1 MiB: neither whole nor refused").arg(mebibytes);
        }
        whole += isWhole ? 1 : 0;
    }
    QCOMPARE(complaints.join("; "), QString());
    QVERIFY(whole >= 1);
    QVERIFY(whole < limits.size());
}

void tst_LowMemory::refusedFileCanBeReadWithMoreMemory_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text map") << QByteArray("map") << textMap();
    QTest::newRow("binary map") << QByteArray("map") << binaryMap();
    QTest::newRow("spectrum") << QByteArray("spectrum") << plainSpectrum();
}

void tst_LowMemory::refusedFileCanBeReadWithMoreMemory()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("AddressSanitizer needs all of the address space");
    }
    QFETCH(QByteArray, step);
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "file.dat", content));
    const ChildRun run =
        systemChild().runSteps({"limitMemory", "20", step, path, "limitMemory", "400", step, path});
    QCOMPARE(run.trouble, QString());
    const QJsonObject state = run.lastStep();
    QCOMPARE(state[step == "map" ? "rows" : "points"].toInt(), manyRows);
    QVERIFY((step == "map" ? state["loaded"] : state["valid"]).toBool());
}

QTEST_GUILESS_MAIN(tst_LowMemory)
#include "tst_LowMemory.moc"
