// Tests of the size limits for files: files at a limit are read, larger files are refused,
// and the reader uses little memory in addition to the data that it stores.
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr qint64 maxLine = 16 * mebibyte;
/// Limit of the size of a map's comments: the sum of their characters plus 64 for each comment
/// line. The 64 accounts for the memory that a stored line needs in addition to its text.
constexpr qint64 maxComments = 64 * mebibyte;
constexpr qint64 maxRows = qint64{1} << 25;
constexpr qint64 maxPoints = qint64{1} << 22;

const QByteArray zeroByte(1, '\0');
const QByteArray utf16Mark("\xff\xfe");
const QByteArray onePixel("# X-NUM 1\n# Y-NUM 1\n1 2 3\n");

QByteArray utf16(const QByteArray& text)
{
    QByteArray wide;
    for (const char byte : text) {
        wide += byte;
        wide += '\0';
    }
    return wide;
}

/// Size (bytes) of the largest test files that are not sparse. They occupy this much disk
/// space.
qint64 sizeOnDisk()
{
    return isFullSize() ? 1500 * mebibyte : 100 * mebibyte;
}

QString mapTrouble(const ChildRun& run, qint64 mostMemory = maxExtraMemory)
{
    const QJsonObject step = run.lastStep();
    if (!run.trouble.isEmpty()) {
        return run.trouble + ": " + QString::fromUtf8(run.errors.right(300));
    }
    if (step["loaded"].toBool() || step["newData"].toInt() != 0) {
        return QStringLiteral("the map was accepted");
    }
    return hasReason(step) ? memoryTrouble(step, mostMemory)
                           : QStringLiteral("no reason in the debug log");
}

QString spectrumTrouble(const ChildRun& run)
{
    const QJsonObject step = run.lastStep();
    if (!run.trouble.isEmpty()) {
        return run.trouble + ": " + QString::fromUtf8(run.errors.right(300));
    }
    if (step["valid"].toBool() || step["newEdges"].toInt() != 0) {
        return QStringLiteral("the spectrum was accepted");
    }
    return hasReason(step) ? memoryTrouble(step) : QStringLiteral("no reason in the debug log");
}

/// A map of one pixel whose comments have the size @p characters, counted as for maxComments.
/// The two lines with the map's size are comments too.
QByteArray mapWithComments(qint64 characters)
{
    constexpr qint64 perLine = 64;
    QByteArray text = "# X-NUM 1\n# Y-NUM 1\n";
    qint64 left = characters - text.size() + 2 - 2 * perLine;
    while (left > 0) {
        const qint64 line = std::min(left, maxLine) - perLine;
        text += '#' + QByteArray(line - 1, 'c') + '\n';
        left -= line + perLine;
    }
    return text + "1 2 3\n";
}

} // namespace

class tst_BigFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void mapsBeyondASizeLimitAreRefusedWithLittleMemory_data();
    void mapsBeyondASizeLimitAreRefusedWithLittleMemory();
    void refusedBigMapUnloadsTheEarlierMap();
    void mapLineLimitIs16Mebibytes_data();
    void mapLineLimitIs16Mebibytes();
    void commentLimitIs64Mebibytes_data();
    void commentLimitIs64Mebibytes();
    void mapWithMaximumRowsIsRead();
    void mapWithTooManyRowsIsRefusedWithLittleMemory();
    void spectraBeyondASizeLimitAreRefusedWithLittleMemory_data();
    void spectraBeyondASizeLimitAreRefusedWithLittleMemory();
    void spectrumLineLimitIs16Mebibytes_data();
    void spectrumLineLimitIs16Mebibytes();
    void spectrumWithTooManyPointsIsRefused();
    void spectrumWithMaximumPointsIsRead();
    void largeBinaryHeaderSizeUsesLittleMemory_data();
    void largeBinaryHeaderSizeUsesLittleMemory();

private:
    ChildRun read(const char* step, const QString& path);
};

void tst_BigFiles::initTestCase()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("takes minutes, and memory use cannot be measured");
    }
}

ChildRun tst_BigFiles::read(const char* step, const QString& path)
{
    ChildProcess child = systemChild();
    if (isFullSize()) {
        child.setTimeout(600000);
    }
    return child.runSteps({step, QFile::encodeName(path)});
}

void tst_BigFiles::mapsBeyondASizeLimitAreRefusedWithLittleMemory_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<qint64>("size");

    const qint64 aboveLineLimit = 20 * mebibyte;
    QTest::newRow("short comment lines") << QByteArray() << QByteArray("#\n") << 20 * mebibyte;
    QTest::newRow("long comment lines") << onePixel << '#' + QByteArray(100000, 'c') + '\n'
                                        << 100 * mebibyte;
    QTest::newRow("one line of zeros") << QByteArray() << QByteArray("0") << sizeOnDisk();
    QTest::newRow("one line of zero bytes") << QByteArray() << zeroByte << 1500 * mebibyte;
    QTest::newRow("long line after a valid map") << onePixel << QByteArray("0") << aboveLineLimit;
    QTest::newRow("long line after many rows")
        << onePixel + QByteArray("1 2 3\n").repeated(4000000) << QByteArray("0") << 48 * mebibyte;
    QTest::newRow("zero bytes after a valid map") << onePixel << zeroByte << 100 * mebibyte;
    QTest::newRow("long comment line") << onePixel + "# " << QByteArray("c") << aboveLineLimit;
    QTest::newRow("blanks after a pixel")
        << onePixel + "1 2 3" << QByteArray(" ") << aboveLineLimit;
    QTest::newRow("one line of accented letters")
        << QByteArray() << QByteArray("\xc3\xa9") << 40 * mebibyte;
    QTest::newRow("one line of invalid UTF-8")
        << QByteArray() << QByteArray("\xff") << aboveLineLimit;
    QTest::newRow("one line of zeros in UTF-16") << utf16Mark << utf16("0") << sizeOnDisk();
    QTest::newRow("zero bytes in a UTF-16 file") << utf16Mark << zeroByte << 100 * mebibyte;
    QTest::newRow("short comment lines in UTF-16") << utf16Mark << utf16("#\n") << 20 * mebibyte;
}

void tst_BigFiles::mapsBeyondASizeLimitAreRefusedWithLittleMemory()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, block);
    QFETCH(qint64, size);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, head, block, size);
    QVERIFY(!path.isEmpty());
    QCOMPARE(mapTrouble(read("map", path)), QString());
}

void tst_BigFiles::refusedBigMapUnloadsTheEarlierMap()
{
    const QTemporaryDir folder;
    const QString good = folder.filePath("good.dat");
    QVERIFY(QFile(makeFile(folder, onePixel, "\n", onePixel.size())).rename(good));
    const QString big = makeFile(folder, {}, zeroByte, 100 * mebibyte);
    const ChildRun run =
        systemChild().runSteps({"map", QFile::encodeName(good), "map", QFile::encodeName(big),
                                "map", QFile::encodeName(good)});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.steps().size(), 3);
    QVERIFY(run.steps().at(0)["loaded"].toBool());
    QVERIFY(!run.steps().at(1)["loaded"].toBool());
    QVERIFY(run.steps().at(2)["loaded"].toBool());
    QCOMPARE(run.steps().at(2)["rows"].toInt(), 1);
}

void tst_BigFiles::mapLineLimitIs16Mebibytes_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<char>("filling");
    QTest::newRow("pixel and blanks") << QByteArray("1 2 4") << ' ';
    QTest::newRow("comment") << QByteArray("# long") << 'g';
}

void tst_BigFiles::mapLineLimitIs16Mebibytes()
{
    QFETCH(QByteArray, begin);
    QFETCH(char, filling);
    const QTemporaryDir folder;
    const QByteArray line = begin + QByteArray(maxLine - begin.size(), filling);
    const QString longest = makeFile(folder, onePixel + line + '\n', "1 2 3\n", 0);
    const QJsonObject step = read("map", longest).lastStep();
    QVERIFY(step["loaded"].toBool());
    QCOMPARE(step["rows"].toInt() + step["headerLines"].toInt(), 4);
    QCOMPARE(memoryTrouble(step), QString());
    const QString tooLong = makeFile(folder, onePixel + line + filling + '\n', "1 2 3\n", 0);
    QCOMPARE(mapTrouble(read("map", tooLong)), QString());
}

void tst_BigFiles::commentLimitIs64Mebibytes_data()
{
    QTest::addColumn<qint64>("characters");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("at the limit") << maxComments << true;
    QTest::newRow("one character above the limit") << maxComments + 1 << false;
}

void tst_BigFiles::commentLimitIs64Mebibytes()
{
    QFETCH(qint64, characters);
    QFETCH(bool, isAccepted);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, mapWithComments(characters), "\n", 0);
    const ChildRun run = read("map", path);
    if (isAccepted) {
        QCOMPARE(run.trouble, QString());
        QVERIFY(run.lastStep()["loaded"].toBool());
        QCOMPARE(run.lastStep()["headerLines"].toInt(), 6);
        QCOMPARE(memoryTrouble(run.lastStep()), QString());
    } else {
        QCOMPARE(mapTrouble(run), QString());
    }
}

void tst_BigFiles::mapWithMaximumRowsIsRead()
{
    if (!isFullSize()) {
        QSKIP("takes a minute without optimisation; set AELK_FULL_SIZES to run it");
    }
    const QTemporaryDir folder;
    const QByteArray head = "# X-NUM 8192\n# Y-NUM 4096\n";
    const QString most = makeFile(folder, head, "1 2 3\n", head.size() + 6 * maxRows);
    const QJsonObject step = read("map", most).lastStep();
    QVERIFY(step["loaded"].toBool());
    QCOMPARE(static_cast<qint64>(step["rows"].toDouble()), maxRows);
    QCOMPARE(memoryTrouble(step), QString());
}

void tst_BigFiles::mapWithTooManyRowsIsRefusedWithLittleMemory()
{
    const QTemporaryDir folder;
    const QByteArray head = "# X-NUM 8192\n# Y-NUM 4096\n";
    const QString more = makeFile(folder, head, "1 2 3\n", head.size() + 6 * maxRows + 6);
    QCOMPARE(mapTrouble(read("map", more)), QString());
}

void tst_BigFiles::spectraBeyondASizeLimitAreRefusedWithLittleMemory_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<qint64>("size");

    const qint64 aboveLineLimit = 20 * mebibyte;
    const QByteArray points("8000 1\n8100 2\n");
    QTest::newRow("one line of zeros") << QByteArray() << QByteArray("0") << sizeOnDisk();
    QTest::newRow("one line of zero bytes") << QByteArray() << zeroByte << 1500 * mebibyte;
    QTest::newRow("one beamline header line")
        << QByteArray("9809 ") << QByteArray("0") << sizeOnDisk();
    QTest::newRow("long line after valid points") << points << QByteArray("0") << aboveLineLimit;
    QTest::newRow("zero bytes after valid points") << points << zeroByte << 1500 * mebibyte;
    QTest::newRow("long comment line") << points + '#' << QByteArray("c") << aboveLineLimit;
    QTest::newRow("long line in a header")
        << QByteArray("9809\n") << QByteArray("Mode ") << aboveLineLimit;
    QTest::newRow("long line of counts") << QByteArray("9809\n Mode 0 0 1 2\n Offset\n 1 2 3 4 5\n")
                                         << QByteArray("1 ") << aboveLineLimit;
    QTest::newRow("one line of zeros in UTF-16") << utf16Mark << utf16("0") << sizeOnDisk();
    QTest::newRow("zero bytes in a UTF-16 file") << utf16Mark << zeroByte << 1500 * mebibyte;
}

void tst_BigFiles::spectraBeyondASizeLimitAreRefusedWithLittleMemory()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, block);
    QFETCH(qint64, size);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, head, block, size);
    QVERIFY(!path.isEmpty());
    QCOMPARE(spectrumTrouble(read("spectrum", path)), QString());
}

void tst_BigFiles::spectrumLineLimitIs16Mebibytes_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<char>("filling");
    QTest::newRow("point and blanks") << QByteArray("8200 3") << ' ';
    QTest::newRow("comment") << QByteArray("# long") << 'g';
}

void tst_BigFiles::spectrumLineLimitIs16Mebibytes()
{
    QFETCH(QByteArray, begin);
    QFETCH(char, filling);
    const QTemporaryDir folder;
    const QByteArray points("8000 1\n8100 2\n");
    const QByteArray line = begin + QByteArray(maxLine - begin.size(), filling);
    const QString longest = makeFile(folder, points + line + '\n', "\n", 0);
    const QJsonObject step = read("spectrum", longest).lastStep();
    QVERIFY(step["valid"].toBool());
    QCOMPARE(step["points"].toInt(), begin.startsWith('#') ? 2 : 3);
    QCOMPARE(memoryTrouble(step), QString());
    const QString tooLong = makeFile(folder, points + line + filling + '\n', "\n", 0);
    QCOMPARE(spectrumTrouble(read("spectrum", tooLong)), QString());
}

void tst_BigFiles::spectrumWithTooManyPointsIsRefused()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("slow, and no memory errors are expected");
    }
    const QTemporaryDir folder;
    const QString path = makeFile(folder, {}, "1 2\n", 4 * (maxPoints + 1));
    const ChildRun run = read("spectrum", path);
    QCOMPARE(spectrumTrouble(run), QString());
}

void tst_BigFiles::spectrumWithMaximumPointsIsRead()
{
    const QTemporaryDir folder;
    const QString path = makeFile(folder, {}, "1 2\n", 4 * maxPoints);
    const QJsonObject step = read("spectrum", path).lastStep();
    QVERIFY(step["valid"].toBool());
    QCOMPARE(static_cast<qint64>(step["points"].toDouble()), maxPoints);
    QCOMPARE(memoryTrouble(step), QString());
}

void tst_BigFiles::largeBinaryHeaderSizeUsesLittleMemory_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::newRow("as long as the file") << QByteArray("1572864000");
    QTest::newRow("longer than the file") << QByteArray("2147483647");
}

void tst_BigFiles::largeBinaryHeaderSizeUsesLittleMemory()
{
    QFETCH(QByteArray, size);
    const QTemporaryDir folder;
    const QByteArray head = "2dData-V0.0 HeaderSize: " + size + "\nWIDTH: 4\nHEIGHT: 3\n";
    const ChildRun run = read("map", makeFile(folder, head, zeroByte, 1500 * mebibyte));
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["rows"].toInt() <= 12);
    QCOMPARE(memoryTrouble(run.lastStep()), QString());
}

QTEST_GUILESS_MAIN(tst_BigFiles)
#include "tst_BigFiles.moc"
