// Maps whose header claims far more pixels than the file holds.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr qint64 believed = qint64{1} << 20; ///< pixels that need no proof
constexpr qint64 mostPixels = qint64{1} << 25;
constexpr qint64 rowsForMore = believed / 64 + 1; ///< 64 times this is above what is believed

/// A text map of @p rows rows that claims to be @p width by 1.
QByteArray textMap(qint64 width, qint64 rows, bool isByAxes = false)
{
    const QByteArray head =
        isByAxes ? "# AXIS 0 a b c d " + QByteArray::number(width - 1) + "\n# AXIS 1 a b c d 0\n"
                 : "# X-NUM " + QByteArray::number(width) + "\n# Y-NUM 1\n";
    return head + QByteArray("1 2 3\n").repeated(rows);
}

/// A binary map that claims @p width pixels and holds @p pixels, without flags.
QByteArray binaryMap(qint64 width, qint64 pixels)
{
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 256").leftJustified(64, ' ') + '\n';
    head += "WIDTH: " + QByteArray::number(width) + "\nHEIGHT: 1\nEND_OF_HEADER:\n";
    return head.leftJustified(256, '\0') + QByteArray(pixels * qint64{sizeof(double)}, '\0');
}

} // namespace

class tst_LyingHeaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fourLyingMapsTakeNoMemory_data();
    void fourLyingMapsTakeNoMemory();
    void claimsAreHeldAgainstTheFile_data();
    void claimsAreHeldAgainstTheFile();
};

void tst_LyingHeaders::fourLyingMapsTakeNoMemory_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isLoaded"); // a binary map that is none is 0 by 0
    QTest::newRow("sizes") << textMap(mostPixels, 1) << false;
    QTest::newRow("axes") << textMap(mostPixels, 1, true) << false;
    QTest::newRow("binary") << binaryMap(mostPixels, 1) << true;
}

void tst_LyingHeaders::fourLyingMapsTakeNoMemory()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isLoaded);
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "lying.dat", content));
    const QByteArray result = QFile::encodeName(folder.filePath("result.dat"));
    ChildProcess child = systemChild();
    if (!isUnderAddressSanitizer()) {
        child.limitAddressSpace(2500 * mebibyte);
    }
    QList<QByteArray> steps{"calculate", "2", "2"};
    for (const char* row : {"0", "1", "2", "3"}) {
        steps += {"panelMap", row, path};
    }
    const ChildRun run = child.runSteps(steps + QList<QByteArray>{"write", result});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.steps().size(), 6);
    for (int row = 1; row <= 4; ++row) {
        const QJsonObject step = run.steps().at(row);
        QCOMPARE(step["loaded"].toBool(), isLoaded);
        QCOMPARE(step["xNum"].toInt(), 0);
        QCOMPARE(step["yNum"].toInt(), 0);
        QVERIFY(!logOf(step).isEmpty());
        QCOMPARE(memoryTrouble(step), QString());
    }
    QCOMPARE(memoryTrouble(run.lastStep()), QString());
}

void tst_LyingHeaders::claimsAreHeldAgainstTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("width"); // 0 where the claim is refused

    const qint64 proved = 64 * rowsForMore;
    const auto size = [](qint64 pixels) { return static_cast<int>(pixels); };
    QTest::newRow("small claim") << textMap(believed, 1) << size(believed);
    QTest::newRow("small claim of axes") << textMap(believed, 1, true) << size(believed);
    QTest::newRow("one more than is believed") << textMap(believed + 1, 1) << 0;
    QTest::newRow("one more by axes") << textMap(believed + 1, 1, true) << 0;
    QTest::newRow("64 times the rows") << textMap(proved, rowsForMore) << size(proved);
    QTest::newRow("one more than 64 times") << textMap(proved + 1, rowsForMore) << 0;
    QTest::newRow("binary, small claim") << binaryMap(believed, 0) << size(believed);
    QTest::newRow("binary, one more than is believed") << binaryMap(believed + 1, 0) << 0;
    QTest::newRow("binary, 64 times the pixels") << binaryMap(proved, rowsForMore) << size(proved);
    QTest::newRow("binary, one more than 64 times") << binaryMap(proved + 1, rowsForMore) << 0;
}

void tst_LyingHeaders::claimsAreHeldAgainstTheFile()
{
    QFETCH(QByteArray, content);
    QFETCH(int, width);
    const QTemporaryDir folder;
    const QString path = writeFile(folder, "map.dat", content);
    const ChildRun run = systemChild().runSteps({"map", QFile::encodeName(path)});
    QCOMPARE(run.trouble, QString());
    const QJsonObject step = run.lastStep();
    const bool isBinary = content.startsWith("2dData");
    QCOMPARE(step["xNum"].toInt(), width);
    QCOMPARE(step["yNum"].toInt(), width > 0 ? 1 : 0);
    QCOMPARE(step["loaded"].toBool(), isBinary || width > 0);
    if (width == 0) {
        QVERIFY(!logOf(step).isEmpty());
    }
    if (isBinary) {
        QCOMPARE(step["rows"].toInt(), width);
    }
    QCOMPARE(memoryTrouble(step), QString());
}

QTEST_GUILESS_MAIN(tst_LyingHeaders)
#include "tst_LyingHeaders.moc"
