// Files that are much too large are refused, within little memory.
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr qint64 longestLine = 16 * mebibyte;
constexpr qint64 mostComments = 64 * mebibyte; ///< characters, and 64 for each line
constexpr qint64 mostRows = qint64{1} << 25;
constexpr qint64 mostPoints = qint64{1} << 22;

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

/// The size of the files that the disk really holds.
qint64 realSize()
{
    return isFullSize() ? 1500 * mebibyte : 100 * mebibyte;
}

QString mapTrouble(const ChildRun& run, qint64 mostMemory = mostWhileReading)
{
    const QJsonObject step = run.lastStep();
    if (!run.trouble.isEmpty()) {
        return run.trouble + ": " + QString::fromUtf8(run.errors.right(300));
    }
    if (step["loaded"].toBool() || step["newData"].toInt() != 0) {
        return QStringLiteral("the map was taken");
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
        return QStringLiteral("the spectrum was taken");
    }
    return hasReason(step) ? memoryTrouble(step) : QStringLiteral("no reason in the debug log");
}

/// A map of one pixel with comment lines that count @p characters in all, those
/// of its size included.
QByteArray mapOfComments(qint64 characters)
{
    constexpr qint64 perLine = 64;
    QByteArray text = "# X-NUM 1\n# Y-NUM 1\n";
    qint64 left = characters - text.size() + 2 - 2 * perLine;
    while (left > 0) {
        const qint64 line = std::min(left, longestLine) - perLine;
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
    void bigMapsAreRefused_data();
    void bigMapsAreRefused();
    void mapBeforeABigOneIsNotInUseAnyMore();
    void mapLineMayHave16Mebibytes_data();
    void mapLineMayHave16Mebibytes();
    void commentLinesMayHave64Mebibytes_data();
    void commentLinesMayHave64Mebibytes();
    void mapMayHaveManyRows();
    void mapOfMoreRowsIsRefusedBeforeTheyAreStored();
    void bigSpectraAreRefused_data();
    void bigSpectraAreRefused();
    void spectrumLineMayHave16Mebibytes_data();
    void spectrumLineMayHave16Mebibytes();
    void spectrumOfTooManyPointsIsRefused();
    void spectrumMayHaveManyPoints();
    void headerOfABinaryMapTakesLittleMemory_data();
    void headerOfABinaryMapTakesLittleMemory();

private:
    ChildRun read(const char* step, const QString& path);
};

void tst_BigFiles::initTestCase()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("takes minutes, and what memory is used is not to be seen");
    }
}

ChildRun tst_BigFiles::read(const char* step, const QString& path)
{
    ChildProcess child = systemChild();
    if (isFullSize()) {
        child.setPatience(600000);
    }
    return child.runSteps({step, QFile::encodeName(path)});
}

void tst_BigFiles::bigMapsAreRefused_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<qint64>("size");

    const qint64 someLines = 20 * mebibyte;
    QTest::newRow("short comment lines") << QByteArray() << QByteArray("#\n") << 20 * mebibyte;
    QTest::newRow("long comment lines") << onePixel << '#' + QByteArray(100000, 'c') + '\n'
                                        << 100 * mebibyte;
    QTest::newRow("one line of zeros") << QByteArray() << QByteArray("0") << realSize();
    QTest::newRow("one line of zero bytes") << QByteArray() << zeroByte << 1500 * mebibyte;
    QTest::newRow("long line behind a good map") << onePixel << QByteArray("0") << someLines;
    QTest::newRow("long line behind many rows")
        << onePixel + QByteArray("1 2 3\n").repeated(4000000) << QByteArray("0") << 48 * mebibyte;
    QTest::newRow("zero bytes behind a good map") << onePixel << zeroByte << 100 * mebibyte;
    QTest::newRow("long comment line") << onePixel + "# " << QByteArray("c") << someLines;
    QTest::newRow("blanks behind a pixel") << onePixel + "1 2 3" << QByteArray(" ") << someLines;
    QTest::newRow("one line of letters with marks")
        << QByteArray() << QByteArray("\xc3\xa9") << 40 * mebibyte;
    QTest::newRow("one line of bytes that are no text")
        << QByteArray() << QByteArray("\xff") << someLines;
    QTest::newRow("one line of 16-bit zeros") << utf16Mark << utf16("0") << realSize();
    QTest::newRow("16-bit zero bytes") << utf16Mark << zeroByte << 100 * mebibyte;
    QTest::newRow("short comment lines of 16 bits") << utf16Mark << utf16("#\n") << 20 * mebibyte;
}

void tst_BigFiles::bigMapsAreRefused()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, block);
    QFETCH(qint64, size);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, head, block, size);
    QVERIFY(!path.isEmpty());
    QCOMPARE(mapTrouble(read("map", path)), QString());
}

void tst_BigFiles::mapBeforeABigOneIsNotInUseAnyMore()
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

void tst_BigFiles::mapLineMayHave16Mebibytes_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<char>("filling");
    QTest::newRow("pixel and blanks") << QByteArray("1 2 4") << ' ';
    QTest::newRow("comment") << QByteArray("# long") << 'g';
}

void tst_BigFiles::mapLineMayHave16Mebibytes()
{
    QFETCH(QByteArray, begin);
    QFETCH(char, filling);
    const QTemporaryDir folder;
    const QByteArray line = begin + QByteArray(longestLine - begin.size(), filling);
    const QString longest = makeFile(folder, onePixel + line + '\n', "1 2 3\n", 0);
    const QJsonObject step = read("map", longest).lastStep();
    QVERIFY(step["loaded"].toBool());
    QCOMPARE(step["rows"].toInt() + step["headerLines"].toInt(), 4);
    QCOMPARE(memoryTrouble(step), QString());
    const QString tooLong = makeFile(folder, onePixel + line + filling + '\n', "1 2 3\n", 0);
    QCOMPARE(mapTrouble(read("map", tooLong)), QString());
}

void tst_BigFiles::commentLinesMayHave64Mebibytes_data()
{
    QTest::addColumn<qint64>("characters");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("at the bound") << mostComments << true;
    QTest::newRow("one more") << mostComments + 1 << false;
}

void tst_BigFiles::commentLinesMayHave64Mebibytes()
{
    QFETCH(qint64, characters);
    QFETCH(bool, isTaken);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, mapOfComments(characters), "\n", 0);
    const ChildRun run = read("map", path);
    if (isTaken) {
        QCOMPARE(run.trouble, QString());
        QVERIFY(run.lastStep()["loaded"].toBool());
        QCOMPARE(run.lastStep()["headerLines"].toInt(), 6);
        QCOMPARE(memoryTrouble(run.lastStep()), QString());
    } else {
        QCOMPARE(mapTrouble(run), QString());
    }
}

void tst_BigFiles::mapMayHaveManyRows()
{
    if (!isFullSize()) {
        QSKIP("takes a minute without optimisation; AELK_FULL_SIZES asks for it");
    }
    const QTemporaryDir folder;
    const QByteArray head = "# X-NUM 8192\n# Y-NUM 4096\n";
    const QString most = makeFile(folder, head, "1 2 3\n", head.size() + 6 * mostRows);
    const QJsonObject step = read("map", most).lastStep();
    QVERIFY(step["loaded"].toBool());
    QCOMPARE(static_cast<qint64>(step["rows"].toDouble()), mostRows);
    QCOMPARE(memoryTrouble(step), QString());
}

void tst_BigFiles::mapOfMoreRowsIsRefusedBeforeTheyAreStored()
{
    const QTemporaryDir folder;
    const QByteArray head = "# X-NUM 8192\n# Y-NUM 4096\n";
    const QString more = makeFile(folder, head, "1 2 3\n", head.size() + 6 * mostRows + 6);
    QCOMPARE(mapTrouble(read("map", more)), QString());
}

void tst_BigFiles::bigSpectraAreRefused_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<qint64>("size");

    const qint64 someLines = 20 * mebibyte;
    const QByteArray points("8000 1\n8100 2\n");
    QTest::newRow("one line of zeros") << QByteArray() << QByteArray("0") << realSize();
    QTest::newRow("one line of zero bytes") << QByteArray() << zeroByte << 1500 * mebibyte;
    QTest::newRow("one line of the beamline form")
        << QByteArray("9809 ") << QByteArray("0") << realSize();
    QTest::newRow("long line behind good points") << points << QByteArray("0") << someLines;
    QTest::newRow("zero bytes behind good points") << points << zeroByte << 1500 * mebibyte;
    QTest::newRow("long comment line") << points + '#' << QByteArray("c") << someLines;
    QTest::newRow("long line in a header")
        << QByteArray("9809\n") << QByteArray("Mode ") << someLines;
    QTest::newRow("long line of counts") << QByteArray("9809\n Mode 0 0 1 2\n Offset\n 1 2 3 4 5\n")
                                         << QByteArray("1 ") << someLines;
    QTest::newRow("one line of 16-bit zeros") << utf16Mark << utf16("0") << realSize();
    QTest::newRow("16-bit zero bytes") << utf16Mark << zeroByte << 1500 * mebibyte;
}

void tst_BigFiles::bigSpectraAreRefused()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, block);
    QFETCH(qint64, size);
    const QTemporaryDir folder;
    const QString path = makeFile(folder, head, block, size);
    QVERIFY(!path.isEmpty());
    QCOMPARE(spectrumTrouble(read("spectrum", path)), QString());
}

void tst_BigFiles::spectrumLineMayHave16Mebibytes_data()
{
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<char>("filling");
    QTest::newRow("point and blanks") << QByteArray("8200 3") << ' ';
    QTest::newRow("comment") << QByteArray("# long") << 'g';
}

void tst_BigFiles::spectrumLineMayHave16Mebibytes()
{
    QFETCH(QByteArray, begin);
    QFETCH(char, filling);
    const QTemporaryDir folder;
    const QByteArray points("8000 1\n8100 2\n");
    const QByteArray line = begin + QByteArray(longestLine - begin.size(), filling);
    const QString longest = makeFile(folder, points + line + '\n', "\n", 0);
    const QJsonObject step = read("spectrum", longest).lastStep();
    QVERIFY(step["valid"].toBool());
    QCOMPARE(step["points"].toInt(), begin.startsWith('#') ? 2 : 3);
    QCOMPARE(memoryTrouble(step), QString());
    const QString tooLong = makeFile(folder, points + line + filling + '\n', "\n", 0);
    QCOMPARE(spectrumTrouble(read("spectrum", tooLong)), QString());
}

void tst_BigFiles::spectrumOfTooManyPointsIsRefused()
{
    if (isUnderAddressSanitizer()) {
        QSKIP("takes long; the bound is no matter of memory errors");
    }
    const QTemporaryDir folder;
    const QString path = makeFile(folder, {}, "1 2\n", 4 * (mostPoints + 1));
    const ChildRun run = read("spectrum", path);
    QCOMPARE(spectrumTrouble(run), QString());
}

void tst_BigFiles::spectrumMayHaveManyPoints()
{
    const QTemporaryDir folder;
    const QString path = makeFile(folder, {}, "1 2\n", 4 * mostPoints);
    const QJsonObject step = read("spectrum", path).lastStep();
    QVERIFY(step["valid"].toBool());
    QCOMPARE(static_cast<qint64>(step["points"].toDouble()), mostPoints);
    QCOMPARE(memoryTrouble(step), QString());
}

void tst_BigFiles::headerOfABinaryMapTakesLittleMemory_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::newRow("as long as the file") << QByteArray("1572864000");
    QTest::newRow("longer than the file") << QByteArray("2147483647");
}

void tst_BigFiles::headerOfABinaryMapTakesLittleMemory()
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
