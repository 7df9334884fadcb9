// Saving and loading binary map files, including damaged files and failed writes.
#include "data/MaskItem.h"
#include "data/TDData0.h"
#include "support/DebugLog.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using tests::DebugLog;

namespace
{

/// Line 1 of a header: 64 characters and a line feed.
QByteArray firstLine(const QByteArray& size)
{
    return ("2dData-V0.0 HeaderSize: " + size).leftJustified(64, ' ') + '\n';
}

/// Lines 5 to 7 of a header: 158 bytes for the description of the data, 34 bytes for the two
/// element sizes.
const QByteArray fixedLines = "DATA_STRUCTURE: Header of Size ( HeaderSize: ), "
                              "Row Double Data Block of pixels ( WIDTH: * HEIGHT ), "
                              "Row Bool Valid Flag Block of pixels ( WIDTH: * HEIGHT ) \n"
                              "SIZE_OF_DOUBLE: 8\n"
                              "SIZE_OF_BOOL: 1\n";

/// A header of 512 bytes with the given lines after line 1, padded with zeros.
QByteArray headerOf512(const QByteArray& lines)
{
    return (firstLine("512") + lines).leftJustified(512, '\0');
}

/// 1.0, -2.0, 0.5 and 0.1 as IEEE 754 doubles, then the flags true, false, true, true.
const QByteArray fourPixels = QByteArray::fromHex("000000000000f03f"
                                                  "00000000000000c0"
                                                  "000000000000e03f"
                                                  "9a9999999999b93f"
                                                  "01000101");

/// The file of a 2 by 2 map named "Ni map" with the extremes 0 and 1.2345678. Its text has 65
/// + 9 + 10 + 16 + 158 + 34 + 11 + 17 + 15 = 335 bytes, so its header has (335 / 256 + 1) *
/// 256 = 512 bytes (integer division).
QByteArray nickelFile()
{
    return headerOf512("WIDTH: 2\n"
                       "HEIGHT: 2\n"
                       "DATA_ID: Ni map\n" +
                       fixedLines +
                       "MIN_VAL: 0\n"
                       "MAX_VAL: 1.23457\n"
                       "END_OF_HEADER:\n") +
           fourPixels;
}

void fillNickel(TDData0& map)
{
    map.setSize(2, 2);
    map.dataId = "Ni map";
    map.data = {1.0, -2.0, 0.5, 0.1};
    map.validFlags = {true, false, true, true};
    map.minVal = 0.0;
    map.maxVal = 1.2345678;
}

/// Makes @p map a map of 3 by 1 pixels with every field set. After a load, isOld() shows
/// whether the load changed anything.
void fillOld(TDData0& map)
{
    map.setSize(3, 1);
    map.dataId = "old";
    map.data = {7.0, 8.0, 9.0};
    map.validFlags = {false, true, true};
    map.minVal = -7.0;
    map.maxVal = 9.0;
    map.setRegion(QRect(1, 0, 1, 1));
    map.maskItems.append(new MaskItem(QRectF(5, 6, 7, 8), "c"));
}

bool isOld(const TDData0& map)
{
    return map.width == 3 && map.height == 1 && map.dataId == "old" &&
           map.data == QList<double>({7.0, 8.0, 9.0}) &&
           map.validFlags == QList<bool>({false, true, true}) && map.minVal == -7.0 &&
           map.maxVal == 9.0 && map.region == QRect(1, 0, 1, 1) && map.regionSet &&
           map.maskItems.size() == 1;
}

/// A lower resource limit for this process, for the lifetime of the object.
class ResourceLimit
{
public:
    ResourceLimit(__rlimit_resource resource, rlim_t limit)
        : m_resource(resource)
    {
        getrlimit(m_resource, &m_old);
        const rlimit lower{limit, m_old.rlim_max};
        setrlimit(m_resource, &lower);
    }
    ~ResourceLimit() { setrlimit(m_resource, &m_old); }
    ResourceLimit(const ResourceLimit&) = delete;
    ResourceLimit& operator=(const ResourceLimit&) = delete;

private:
    __rlimit_resource m_resource;
    rlimit m_old{};
};

/// The address space that this process uses now, in bytes.
rlim_t addressSpace()
{
    const QByteArray pages = tests::readFile("/proc/self/statm").split(' ').first();
    return pages.toULongLong() * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

class TestTDData0File : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void savedFileHasTheExpectedBytes();
    void savedHeaderHasAtLeastOnePaddingByte_data();
    void savedHeaderHasAtLeastOnePaddingByte();
    void saveLogsTheHeaderAndItsLength();
    void identifierIsWrittenAsLatin1AndReadAsUtf8();
    void savedMapWithoutPixelsContainsOnlyHeaderText();
    void loadedMapWithoutPixelsHasReversedExtremes();
    void identifierIsRestored_data();
    void identifierIsRestored();
    void extremesAreRestoredWithSixDigits();
    void loadKeepsRegionAndMaskItems();

    void mapFileIsRecognisedByItsFirstSixBytes_data();
    void mapFileIsRecognisedByItsFirstSixBytes();
    void unopenableFileIsReported_data();
    void unopenableFileIsReported();
    void fileWithoutReadPermissionIsReported();

    void headerFieldsOfAValidFileAreRead();
    void fileOfAnotherFormatLeavesTheHeaderUnchanged();
    void headerLinesSetTheHeaderFields_data();
    void headerLinesSetTheHeaderFields();
    void headerLinesBeyondTheHeaderSizeAreIgnored_data();
    void headerLinesBeyondTheHeaderSizeAreIgnored();
    void memoryForALargeHeaderSizeIsNotAllocated();
    void fileWithoutHeaderSizeIsAccepted();

    void validFileIsLoadedWithoutALogMessage();
    void nonZeroFlagByteReadsAsTrue();
    void versionAndElementSizesAreIgnored();
    void invalidMapSizeIsRefused_data();
    void invalidMapSizeIsRefused();
    void largestMapSizeIsAccepted();
    void fileOfAnotherFormatLeavesTheMapUnchanged_data();
    void fileOfAnotherFormatLeavesTheMapUnchanged();
    void pixelsMissingFromTheFileKeepTheirOldValues();
    void truncatedFileIsReadUpToItsEnd();
    void damagedFilesAreRefusedOrReadConsistently();
    void lineOfTenMegabytesIsRead_data();
    void lineOfTenMegabytesIsRead();

    void saveRefusesUnusablePaths_data();
    void saveRefusesUnusablePaths();
    void saveRefusesAFileWithoutWritePermission();
    void saveReportsAFullDisk_data();
    void saveReportsAFullDisk();

private:
    QString write(const QByteArray& content)
    {
        return tests::writeFile(*m_dir, "map.2dp", content);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestTDData0File::initTestCase()
{
    QCOMPARE(fixedLines.size(), 158 + 34);
    QCOMPARE(fourPixels.size(), 4 * 8 + 4);
}

void TestTDData0File::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestTDData0File::savedFileHasTheExpectedBytes()
{
    const DebugLog log;
    TDData0 map(0, 0);
    fillNickel(map);
    const QString path = write(QByteArray(5000, 'x')); // a longer file is replaced
    QVERIFY(map.save(path));
    QCOMPARE(tests::readFile(path), nickelFile());
}

void TestTDData0File::savedHeaderHasAtLeastOnePaddingByte_data()
{
    QTest::addColumn<int>("idLength");
    QTest::addColumn<QByteArray>("headerSize");
    // With an empty identifier, the text of a 1 by 1 map with the extremes 0 and 0 has 65 + 9
    // + 10 + 10 + 158 + 34 + 11 + 11 + 15 = 323 characters.
    QTest::newRow("511 characters") << 511 - 323 << QByteArray("512");
    QTest::newRow("512 characters take 768 bytes") << 512 - 323 << QByteArray("768");
    QTest::newRow("1023 characters") << 1023 - 323 << QByteArray("1024");
    QTest::newRow("1024 characters take 1280 bytes") << 1024 - 323 << QByteArray("1280");
}

void TestTDData0File::savedHeaderHasAtLeastOnePaddingByte()
{
    QFETCH(int, idLength);
    QFETCH(QByteArray, headerSize);
    const DebugLog log;
    TDData0 map(1, 1);
    map.dataId = QString(idLength, 'a');
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(map.save(path));
    const QByteArray bytes = tests::readFile(path);
    QCOMPARE(bytes.left(65), firstLine(headerSize));
    QCOMPARE(bytes.size(), headerSize.toInt() + 8 + 1);
    QVERIFY(bytes.left(idLength + 323).endsWith("END_OF_HEADER:\n"));
}

void TestTDData0File::saveLogsTheHeaderAndItsLength()
{
    const DebugLog log;
    TDData0 map(0, 0);
    fillNickel(map);
    QVERIFY(map.save(m_dir->filePath("map.2dp")));
    QCOMPARE(log.lines(), QStringList("2dData save: " + QString(nickelFile().left(335)) + " 335"));
}

void TestTDData0File::identifierIsWrittenAsLatin1AndReadAsUtf8()
{
    const DebugLog log;
    TDData0 map(1, 1);
    map.dataId = u"\u00b5t \u03bc"_qs; // the micro sign is in Latin-1, the Greek letter is not
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(map.save(path));
    QVERIFY(tests::readFile(path).contains("\nDATA_ID: \xb5t ?\n"));
    TDData0 loaded(0, 0);
    QVERIFY(loaded.load(path));
    QCOMPARE(loaded.dataId, u"\ufffdt ?"_qs);
}

void TestTDData0File::savedMapWithoutPixelsContainsOnlyHeaderText()
{
    const DebugLog log;
    const TDData0 map(0, 0);
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(map.save(path));
    QCOMPARE(tests::readFile(path), firstLine("512") +
                                        "WIDTH: 0\n"
                                        "HEIGHT: 0\n"
                                        "DATA_ID: \n" +
                                        fixedLines +
                                        "MIN_VAL: 1e+300\n"
                                        "MAX_VAL: -1e+300\n"
                                        "END_OF_HEADER:\n");
}

void TestTDData0File::loadedMapWithoutPixelsHasReversedExtremes()
{
    const DebugLog log;
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(TDData0(0, 0).save(path));
    TDData0 map(2, 2);
    QVERIFY(map.load(path));
    QCOMPARE(map.width, 0);
    QCOMPARE(map.height, 0);
    QVERIFY(map.data.isEmpty());
    QVERIFY(map.validFlags.isEmpty());
    QCOMPARE(map.minVal, 1e300);
    QCOMPARE(map.maxVal, -1e300);
}

void TestTDData0File::identifierIsRestored_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("blanks within") << "mu*t  at 8333 eV";
    QTest::newRow("blank first") << " Ni";
    QTest::newRow("blanks first") << "   Ni";
    QTest::newRow("blank last") << "Ni ";
    QTest::newRow("quotes") << "\"Ni\" \"";
    QTest::newRow("key of another line") << "WIDTH: 9";
    QTest::newRow("empty") << "";
}

void TestTDData0File::identifierIsRestored()
{
    QFETCH(QString, id);
    const DebugLog log;
    TDData0 map(1, 1);
    map.dataId = id;
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(map.save(path));
    TDData0 loaded(0, 0);
    QVERIFY(loaded.load(path));
    QCOMPARE(loaded.dataId, id);
    QCOMPARE(loaded.width, 1);
}

void TestTDData0File::extremesAreRestoredWithSixDigits()
{
    const DebugLog log;
    TDData0 map(1, 1);
    map.data = {5.0};
    map.minVal = -123456.789;
    map.maxVal = 1.00000049;
    const QString path = m_dir->filePath("map.2dp");
    QVERIFY(map.save(path));
    TDData0 loaded(0, 0);
    QVERIFY(loaded.load(path));
    QCOMPARE(loaded.minVal, -123457.0); // the value in the header, not the value of the pixel
    QCOMPARE(loaded.maxVal, 1.0);
}

void TestTDData0File::loadKeepsRegionAndMaskItems()
{
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(map.load(write(nickelFile())));
    QCOMPARE(map.region, QRect(1, 0, 1, 1));
    QVERIFY(map.regionSet);
    QCOMPARE(map.maskItems.size(), 1);
}

void TestTDData0File::mapFileIsRecognisedByItsFirstSixBytes_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a map") << nickelFile() << true;
    QTest::newRow("the word alone") << QByteArray("2dData") << true;
    QTest::newRow("another version") << QByteArray("2dData-V7.5") << true;
    QTest::newRow("a text table with the same start") << QByteArray("2dData 1 2\n3 4\n") << true;
    QTest::newRow("a longer word with the same start") << QByteArray("2dDatabase") << true;
    QTest::newRow("invalid text after it") << QByteArray("2dData\xff\xfe") << true;
    QTest::newRow("zeros after it") << QByteArray("2dData\0\0", 8) << true;
    QTest::newRow("five bytes") << QByteArray("2dDat") << false;
    QTest::newRow("other case") << QByteArray("2ddata") << false;
    QTest::newRow("blank first") << QByteArray(" 2dData") << false;
    QTest::newRow("on the second line") << QByteArray("\n2dData") << false;
    QTest::newRow("zero first") << QByteArray("\0"
                                              "2dData",
                                              7)
                                << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void TestTDData0File::mapFileIsRecognisedByItsFirstSixBytes()
{
    QFETCH(QByteArray, content);
    const DebugLog log;
    const bool result = TDData0::isTDData0File(write(content));
    QTEST(result, "expected");
    QCOMPARE(log.lines(), QStringList());
}

void TestTDData0File::unopenableFileIsReported_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << "/nowhere/map.2dp";
    QTest::newRow("folder") << "/";
    QTest::newRow("endless device") << "/dev/zero";
    QTest::newRow("pipe without a writer") << "pipe";
    QTest::newRow("no name") << "";
}

void TestTDData0File::unopenableFileIsReported()
{
    QFETCH(QString, path);
    if (path == "pipe") {
        path = m_dir->filePath("pipe");
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    }
    const DebugLog log;
    QVERIFY(!TDData0::isTDData0File(path));
    QVERIFY(log.lines().contains("can't open " + path));
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(!map.load(path));
    QVERIFY(isOld(map));
    QCOMPARE(log.lines().last(), path + " is not a TDData0 file.");
}

void TestTDData0File::fileWithoutReadPermissionIsReported()
{
    const QString path = write(nickelFile());
    QVERIFY(QFile::setPermissions(m_dir->path(), QFile::Permissions(0x7055)));
    QVERIFY(QFile::setPermissions(path, QFile::Permissions()));
    const DebugLog log;
    const tests::Unprivileged user;
    if (!user.holds()) {
        QSKIP("needs a user without root privileges");
    }
    QVERIFY(!TDData0::isTDData0File(path));
    QCOMPARE(log.lines(), QStringList("can't open " + path));
}

void TestTDData0File::headerFieldsOfAValidFileAreRead()
{
    TDData0Header header;
    QVERIFY(TDData0::readHeader(header, write(nickelFile())));
    QVERIFY(header.valid);
    QCOMPARE(header.headerSize, 512);
    QCOMPARE(header.width, 2);
    QCOMPARE(header.height, 2);
    QCOMPARE(header.dataId, "Ni map");
    QCOMPARE(header.minVal, 0.0);
    QCOMPARE(header.maxVal, 1.23457);
}

void TestTDData0File::fileOfAnotherFormatLeavesTheHeaderUnchanged()
{
    TDData0Header header;
    QVERIFY(!TDData0::readHeader(header, write("# 1306\nWIDTH: 2\n")));
    QVERIFY(!header.valid);
    QCOMPARE(header.headerSize, 0);
    QCOMPARE(header.width, 0);
    QCOMPARE(header.minVal, 1e300);
    QCOMPARE(header.maxVal, -1e300);
}

void TestTDData0File::headerLinesSetTheHeaderFields_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("id");
    QTest::addColumn<double>("max");
    const double inf = std::numeric_limits<double>::infinity();
    const double none = -1e300;
    const auto row = [](const char* name, const QByteArray& lines, int width, const QString& id,
                        double max) { QTest::newRow(name) << lines << width << id << max; };
    row("later line wins", "WIDTH: 2\nWIDTH: 3\n", 3, "", none);
    row("lines after the end are read", "END_OF_HEADER:\nWIDTH: 3\nDATA_ID: a\n", 3, "a", none);
    row("keys are case-sensitive", "Width: 2\nwidth: 3\n", 0, "", none);
    row("unknown keys are ignored", "WIDTH 2\nHEIGHTS: 3\n# WIDTH: 4\n", 0, "", none);
    row("blanks before a key", "  WIDTH: 2\n", 2, "", none);
    row("key in quotes", "\"WIDTH:\" 2\n", 2, "", none);
    row("one character after the key is dropped", "WIDTH:\t2\nDATA_ID:  a\n", 2, " a", none);
    row("key without a value", "WIDTH:\nDATA_ID:\n", 0, "", none);
    row("CRLF", "WIDTH: 2\r\nDATA_ID: a\r\nMAX_VAL: 3\r\n", 2, "a", 3.0);
    row("a lone CR does not end a line", "DATA_ID: a\rWIDTH: 2\n", 0, "a\rWIDTH: 2", none);
    row("a word as size", "WIDTH: two\n", 0, "", none);
    row("a fraction as size", "WIDTH: 2.5\n", 0, "", none);
    row("a size with trailing text", "WIDTH: 2 3\n", 0, "", none);
    row("a size above int", "WIDTH: 4294967298\n", 0, "", none);
    row("blanks around a size", "WIDTH:   2  \n", 2, "", none);
    row("infinity", "MAX_VAL: inf\n", 0, "", inf);
    row("a word as extreme", "MAX_VAL: high\n", 0, "", 0.0);
    row("invalid UTF-8", "DATA_ID: \xff\n", 0, u"\ufffd"_qs, none);
    row("zeros in a line", QByteArray("DATA_ID: a\0b\n", 13), 0, QString(u"a\0b"_qs), none);
}

void TestTDData0File::headerLinesSetTheHeaderFields()
{
    QFETCH(QByteArray, lines);
    TDData0Header header;
    QVERIFY(TDData0::readHeader(header, write(headerOf512(lines))));
    QTEST(header.width, "width");
    QTEST(header.dataId, "id");
    QTEST(header.maxVal, "max");
}

void TestTDData0File::headerLinesBeyondTheHeaderSizeAreIgnored_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("width"); // 0 if the header ends before the WIDTH line
    const auto row = [](const char* name, const QByteArray& start, qint64 size, int width) {
        QTest::newRow(name) << start << size << width;
    };
    row("correct", "2dData-V0.0 HeaderSize: 512", 512, 2);
    row("first two words unchecked", "2dDataX Y 512", 512, 2);
    row("quoted second word", "2dData \"Header Size\" 512", 512, 2);
    row("ends before the width", "2dData-V0.0 HeaderSize: 65", 65, 0);
    row("ends within the WIDTH line", "2dData-V0.0 HeaderSize: 73", 73, 2);
    row("beyond the end of the file", "2dData-V0.0 HeaderSize: 100000", 100000, 2);
    row("largest int", "2dData-V0.0 HeaderSize: 2147483647", 2147483647, 2);
    row("above int", "2dData-V0.0 HeaderSize: 2147483648", 0, 0);
    row("above 64 bits", "2dData-V0.0 HeaderSize: 99999999999999999999", 0, 0);
    row("negative", "2dData-V0.0 HeaderSize: -256", -256, 0);
    row("a word", "2dData-V0.0 HeaderSize: big", 0, 0);
    row("a fraction", "2dData-V0.0 HeaderSize: 512.0", 0, 0);
    row("no size", "2dData-V0.0 HeaderSize:", 0, 0);
}

void TestTDData0File::headerLinesBeyondTheHeaderSizeAreIgnored()
{
    QFETCH(QByteArray, start);
    const QByteArray first = start.leftJustified(64, ' ') + '\n';
    const QString path = write((first + "WIDTH: 2\nHEIGHT: 2\n").leftJustified(600, '\0'));
    TDData0Header header;
    QVERIFY(TDData0::readHeader(header, path));
    QTEST(header.headerSize, "size");
    QTEST(header.width, "width");

    TDData0 map(0, 0);
    QVERIFY(map.load(path));
    QTEST(map.width, "width");
    QCOMPARE(map.data.size(), qsizetype{map.width} * map.height);
    QCOMPARE(map.validFlags.size(), map.data.size());
}

void TestTDData0File::memoryForALargeHeaderSizeIsNotAllocated()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("AddressSanitizer needs all of the address space");
#endif
    const QString path = write(firstLine("2147483647") + "WIDTH: 2\n");
    const rlim_t now = addressSpace();
    QVERIFY(now > 0);
    const ResourceLimit limit(RLIMIT_AS, now + (rlim_t{256} << 20));
    TDData0Header header;
    QVERIFY(TDData0::readHeader(header, path));
    QCOMPARE(header.headerSize, 2147483647);
    QCOMPARE(header.width, 2);
}

void TestTDData0File::fileWithoutHeaderSizeIsAccepted()
{
    const QString path = write("2dData-V0.0 HeaderSize:");
    QVERIFY(TDData0::isTDData0File(path));
    TDData0Header header;
    QVERIFY(TDData0::readHeader(header, path));
    QVERIFY(header.valid);
    QCOMPARE(header.headerSize, 0);
    TDData0 map(2, 2);
    QVERIFY(map.load(path));
    QCOMPARE(map.width, 0);
    QCOMPARE(map.height, 0);
    QVERIFY(map.data.isEmpty());
}

void TestTDData0File::validFileIsLoadedWithoutALogMessage()
{
    const DebugLog log;
    TDData0 map(0, 0);
    QVERIFY(map.load(write(nickelFile())));
    QCOMPARE(map.width, 2);
    QCOMPARE(map.height, 2);
    QCOMPARE(map.dataId, "Ni map");
    QCOMPARE(map.data, QList<double>({1.0, -2.0, 0.5, 0.1}));
    QCOMPARE(map.validFlags, QList<bool>({true, false, true, true}));
    QCOMPARE(map.minVal, 0.0);
    QCOMPARE(map.maxVal, 1.23457);
    QCOMPARE(log.lines(), QStringList());
}

void TestTDData0File::nonZeroFlagByteReadsAsTrue()
{
    QByteArray content = nickelFile();
    content.replace(content.size() - 4, 4, QByteArray::fromHex("00028000"));
    TDData0 map(0, 0);
    QVERIFY(map.load(write(content)));
    QCOMPARE(map.validFlags, QList<bool>({false, true, true, false}));
    // Compared as bytes, because a bool with the byte value 2 can compare as true or as false.
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(map.validFlags.constData()), 4),
             QByteArray::fromHex("00010100"));
}

void TestTDData0File::versionAndElementSizesAreIgnored()
{
    TDData0 map(0, 0);
    QVERIFY(map.load(write(nickelFile()
                               .replace("-V0.0", "-V9.9")
                               .replace("DOUBLE: 8", "DOUBLE: 4")
                               .replace("BOOL: 1", "BOOL: 4"))));
    QCOMPARE(map.data, QList<double>({1.0, -2.0, 0.5, 0.1}));
    QCOMPARE(map.validFlags, QList<bool>({true, false, true, true}));
}

void TestTDData0File::invalidMapSizeIsRefused_data()
{
    QTest::addColumn<QByteArray>("width");
    QTest::addColumn<QByteArray>("height");
    const auto row = [](const char* name, const QByteArray& width, const QByteArray& height) {
        QTest::newRow(name) << width << height;
    };
    row("negative width", "-1", "2");
    row("negative height", "2", "-1");
    row("both negative, with a positive product", "-2", "-2");
    row("smallest ints", "-2147483648", "-2147483648");
    row("one pixel above the bound", "33554433", "1");
    row("one line above the bound", "8192", "4097");
    row("product above 32 bits", "65536", "65537");
    row("largest ints", "2147483647", "2147483647");
    row("no pixel, but one side above the bound", "0", "33554433");
}

void TestTDData0File::invalidMapSizeIsRefused()
{
    QFETCH(QByteArray, width);
    QFETCH(QByteArray, height);
    const DebugLog log;
    const QString path =
        write(headerOf512("WIDTH: " + width + "\nHEIGHT: " + height + "\nDATA_ID: new\n"));
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(!map.load(path));
    QVERIFY(isOld(map));
    QCOMPARE(log.lines(), QStringList(path + " is not a TDData0 file."));
}

void TestTDData0File::largestMapSizeIsAccepted()
{
    TDData0 map(0, 0);
    // The header states 2^25 pixels. 2^19 pixels in the file, one per 64 stated pixels, are
    // just enough.
    const QByteArray pixels(8 * 524288, '\0');
    QVERIFY(map.load(write(headerOf512("WIDTH: 8192\nHEIGHT: 4096\n") + pixels)));
    QCOMPARE(map.data.size(), 33554432);
    QCOMPARE(map.validFlags.size(), 33554432);
    QCOMPARE(map.data.last(), 0.0);
}

void TestTDData0File::fileOfAnotherFormatLeavesTheMapUnchanged_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text map") << QByteArray("# 1306\n# 2 2\n1 2 3 4\n");
    QTest::newRow("other case") << QByteArray(nickelFile().replace("2dData", "2DData"));
}

void TestTDData0File::fileOfAnotherFormatLeavesTheMapUnchanged()
{
    QFETCH(QByteArray, content);
    const DebugLog log;
    const QString path = write(content);
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(!map.load(path));
    QVERIFY(isOld(map));
    QCOMPARE(log.lines(), QStringList(path + " is not a TDData0 file."));
}

void TestTDData0File::pixelsMissingFromTheFileKeepTheirOldValues()
{
    // Only the first of four pixels is in the file; the old map had three pixels.
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(map.load(write(nickelFile().left(512 + 8))));
    QCOMPARE(map.data, QList<double>({1.0, 8.0, 9.0, 0.0}));
    QCOMPARE(map.validFlags, QList<bool>({false, true, true, false}));
    QCOMPARE(map.dataId, "Ni map");
}

void TestTDData0File::truncatedFileIsReadUpToItsEnd()
{
    const QByteArray whole = nickelFile();
    for (int size = 0; size <= whole.size(); ++size) {
        const DebugLog log;
        const QByteArray content = whole.left(size);
        TDData0 map(0, 0);
        fillOld(map);
        const bool loaded = map.load(write(content));
        QCOMPARE(loaded, size >= 6);
        if (!loaded) {
            QVERIFY(isOld(map));
            continue;
        }
        // Line 1 has 65 bytes, "WIDTH: 2\n" has 9 and "HEIGHT: 2\n" has 10, so lines 2, 3 and
        // 4 start at the bytes 65, 74 and 84. The header size in line 1 is complete from 27
        // bytes on.
        QCOMPARE(map.width, size >= 65 + 8 ? 2 : 0);
        QCOMPARE(map.height, size >= 74 + 9 ? 2 : 0);
        QCOMPARE(map.dataId, QString("Ni map").left(std::clamp(size - (84 + 9), 0, 6)));
        if (size < 83) {
            QVERIFY(map.data.isEmpty() && map.validFlags.isEmpty());
            continue;
        }
        double pixels[4] = {7.0, 8.0, 9.0, 0.0};
        std::memcpy(pixels, whole.constData() + 512,
                    static_cast<size_t>(std::clamp(size - 512, 0, 32)));
        const bool flags[4] = {size > 544, size <= 545, true, size > 547};
        for (int i = 0; i < 4; ++i) {
            QVERIFY2(tests::sameDouble(map.data[i], pixels[i]), qPrintable(QString::number(size)));
            QCOMPARE(map.validFlags[i], flags[i]);
        }
    }
}

void TestTDData0File::damagedFilesAreRefusedOrReadConsistently()
{
    std::mt19937 random(20240917);
    const DebugLog log;
    for (int round = 0; round < 400; ++round) {
        QByteArray content = nickelFile();
        if (round % 2 == 0) {
            // Random bytes after the first lines of a header.
            content = firstLine("4096") + "WIDTH: 7\nHEIGHT: 3\n";
            for (int i = static_cast<int>(random() % 6000); i > 0; --i) {
                content.append(static_cast<char>(random()));
            }
        } else {
            for (int i = 0; i < 5; ++i) {
                content[static_cast<qsizetype>(random() % 548)] = static_cast<char>(random());
            }
        }
        TDData0 map(0, 0);
        fillOld(map);
        if (!map.load(write(content))) {
            QVERIFY(isOld(map));
            continue;
        }
        QCOMPARE(map.data.size(), qsizetype{map.width} * map.height);
        QCOMPARE(map.validFlags.size(), map.data.size());
    }
}

void TestTDData0File::lineOfTenMegabytesIsRead_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<qsizetype>("idLength");
    const auto row = [](const char* name, const QByteArray& line, qsizetype idLength) {
        QTest::newRow(name) << line << idLength;
    };
    row("one word", QByteArray(10'000'000, 'x'), 0);
    row("identifier", "DATA_ID: " + QByteArray(10'000'000, 'x'), 10'000'000);
    row("blanks", QByteArray(10'000'000, ' '), 0);
    row("quotes", QByteArray(10'000'000, '"'), 0);
    row("zeros", QByteArray(10'000'000, '\0'), 0);
}

void TestTDData0File::lineOfTenMegabytesIsRead()
{
    QFETCH(QByteArray, line);
    const DebugLog log;
    QElapsedTimer timer;
    timer.start();
    TDData0 map(0, 0);
    QVERIFY(map.load(write(firstLine("20000000") + "WIDTH: 2\nHEIGHT: 1\n" + line)));
    QCOMPARE(map.width, 2);
    QCOMPARE(map.data, QList<double>({0.0, 0.0}));
    const qsizetype idLength = map.dataId.size();
    QTEST(idLength, "idLength");
    QVERIFY(timer.elapsed() < 30'000);
}

void TestTDData0File::saveRefusesUnusablePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing folder") << "/nowhere/map.2dp";
    QTest::newRow("folder") << "/";
    QTest::newRow("pipe without a reader") << "pipe";
    QTest::newRow("full disk") << "/dev/full";
    QTest::newRow("no name") << "";
}

void TestTDData0File::saveRefusesUnusablePaths()
{
    QFETCH(QString, path);
    if (path == "pipe") {
        path = m_dir->filePath("pipe");
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    }
    const DebugLog log;
    TDData0 map(0, 0);
    fillOld(map);
    QVERIFY(!map.save(path));
    QVERIFY(isOld(map));
    QCOMPARE(log.lines().last(), "can't open " + path + " to save 2dData");
}

void TestTDData0File::saveRefusesAFileWithoutWritePermission()
{
    const QString path = write("kept");
    QVERIFY(QFile::setPermissions(m_dir->path(), QFile::Permissions(0x7055)));
    QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x4044)));
    const DebugLog log;
    const tests::Unprivileged user;
    if (!user.holds()) {
        QSKIP("needs a user without root privileges");
    }
    QVERIFY(!TDData0(2, 2).save(path));
    QCOMPARE(log.lines().last(), "can't open " + path + " to save 2dData");
    QCOMPARE(tests::readFile(path), QByteArray("kept"));
}

void TestTDData0File::saveReportsAFullDisk_data()
{
    QTest::addColumn<int>("capacity");
    QTest::addColumn<bool>("fits");
    // The file has 512 + 100 * 100 * 9 = 90512 bytes.
    QTest::newRow("in the text") << 100 << false;
    QTest::newRow("in the pixels") << 4096 << false;
    QTest::newRow("in the flags") << 85000 << false;
    QTest::newRow("at the last byte") << 90511 << false;
    QTest::newRow("large enough") << 90512 << true;
}

void TestTDData0File::saveReportsAFullDisk()
{
    QFETCH(int, capacity);
    const DebugLog log;
    const TDData0 map(100, 100);
    const QString path = m_dir->filePath("map.2dp");
    bool saved = false;
    {
        std::signal(SIGXFSZ, SIG_IGN); // so that the write fails instead of ending the process
        const ResourceLimit limit(RLIMIT_FSIZE, static_cast<rlim_t>(capacity));
        saved = map.save(path);
    }
    QTEST(saved, "fits");
    QCOMPARE(log.lines().last() == "can't open " + path + " to save 2dData", !saved);
}

QTEST_GUILESS_MAIN(TestTDData0File)
#include "tst_TDData0File.moc"
