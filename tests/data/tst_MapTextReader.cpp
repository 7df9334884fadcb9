// Tests of the reader of text maps.
#include "data/A2DData.h"
#include "data/MapTextReader.h"
#include "support/SameDouble.h"

#include <QBuffer>
#include <QStringEncoder>
#include <QTest>

#include <algorithm>
#include <limits>
#include <random>

namespace
{

struct Reading {
    bool good = false;
    A2DData map;
    QStringList energies;
};

Reading read(const QByteArray& text)
{
    Reading reading;
    QBuffer device;
    device.setData(text);
    device.open(QIODevice::ReadOnly);
    reading.good = data::readMapText(device, reading.map, [&reading](const QString& energy) {
        reading.energies.append(energy);
    });
    return reading;
}

using Fields = QList<QList<double>>;

Fields fields(const A2DData& map)
{
    Fields all;
    for (const A2DRow& row : map.rows) {
        all.append({row.x, row.y, row.intensity, row.i0});
    }
    return all;
}

/// A device that delivers its text and then fails.
class FailingDevice : public QIODevice
{
public:
    explicit FailingDevice(const QByteArray& text)
        : m_text(text)
    {
        open(ReadOnly);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* out, qint64 maxSize) override
    {
        const qint64 size = std::min<qint64>(maxSize, m_text.size());
        std::copy_n(m_text.constData(), size, out);
        m_text.remove(0, size);
        return size > 0 ? size : -1;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_text;
};

/// A device that replaces its text when the text has been read to its end.
class ChangingDevice : public QIODevice
{
public:
    ChangingDevice(const QByteArray& before, const QByteArray& after)
        : m_text(before)
        , m_after(after)
    {
        open(ReadOnly | Unbuffered);
    }
    qint64 size() const override { return m_text.size(); }

protected:
    qint64 readData(char* out, qint64 maxSize) override
    {
        const qint64 at = std::min<qint64>(pos(), m_text.size());
        const qint64 size = std::min<qint64>(maxSize, m_text.size() - at);
        std::copy_n(m_text.constData() + at, size, out);
        if (at == m_text.size()) {
            m_text = m_after;
        }
        return size;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_text;
    QByteArray m_after;
};

const QByteArray twoByOne = "# X-NUM 2\n# Y-NUM 1\n";

/// More than 12 MiB of rows (200,000 lines of 64 characters), so that the file is scanned
/// before it is read.
QByteArray largeRows()
{
    return (QByteArray("1 2 3").leftJustified(63, ' ') + '\n').repeated(200000);
}

} // namespace

class tst_MapTextReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fourColumnsAreXYIntensityAndI0();
    void thirdOfThreeColumnsIsTheRatioAndI0IsOne();
    void wordsAfterTheFourthAreIgnored();
    void lineOfFewerThanThreeWordsIsSkipped();
    void unparsableWordReadsAsZero();
    void blankLineIsSkippedInEachFileFormat();
    void unicodeWhiteSpaceSeparatesWords();

    void firstLine1306DoesNotChangeTheFileFormat();
    void firstLine2003901SelectsTheChannelFormat_data();
    void firstLine2003901SelectsTheChannelFormat();

    void channelNumbersStartAfterTheCoordinates();
    void channelFileWithoutColumnHeaderReadsIAndI0FromOneWord();
    void tooShortChannelLineIsSkipped();
    void columnHeaderLineAffectsOnlyLaterDataLines();
    void columnNumberIsReadAfterTheFirstColon_data();
    void columnNumberIsReadAfterTheFirstColon();
    void columnMinusOneOrMinusTwoReadsACoordinate();
    void columnBelowMinusTwoSkipsDataLines();
    void columnAtTheIntMaximumSkipsDataLines();
    void mapSizeOfAChannelFileIsCountedFromTheDataRows();
    void channelFileOfOneDataLineHasOnePixel();
    void channelFileWithoutRepeatedXGivesAOneLineMap();

    void commentLineSetsTheMapSize_data();
    void commentLineSetsTheMapSize();
    void columnHeaderLinesAffectOnlyChannelFiles();
    void energyHandlerIsCalledForEachLineWithAnEnergy();
    void energyHandlerIsCalledDuringTheRead();
    void mapIsReadWithoutAnEnergyHandler();
    void headerLinesAreStoredUnchangedInFileOrder();
    void hashAfterBlanksStartsAComment();

    void intensityIsTheMutIfI0IsZero();
    void mutIsOneIfTheIntensityIsZero();

    void earlierMapIsReplacedExceptForTheExtendedFlag();
    void failedReadKeepsTheDataRowsAlreadyRead_data();
    void failedReadKeepsTheDataRowsAlreadyRead();
    void numberOfDataRowsCanDifferFromTheMapSize();
    void readFailsIfTheStatedMapSizeIsAboveTheBound_data();
    void readFailsIfTheStatedMapSizeIsAboveTheBound();
    void readFailsIfTheCountedMapSizeIsAboveTheBound();
    void readFailsIfALargeMapHasTooFewDataRows();
    void lineOf16MiBIsRead_data();
    void lineOf16MiBIsRead();
    void lineLengthIsCountedInUtf16CodeUnits();
    void lineOver16MiBIsRefused_data() { lineOf16MiBIsRead_data(); }
    void lineOver16MiBIsRefused();
    void commentsUpTo64MiBInTotalAreKept();
    void commentsOver64MiBInTotalAreRefused();
    void commentLimitIncludesTheMemoryOverheadPerLine();
    void memoryOfARefusedMapIsReleased();
    void mapAboveTheMaximumNumberOfDataRowsIsRefused_data();
    void mapAboveTheMaximumNumberOfDataRowsIsRefused();
    void energiesBeforeARefusalAreReported();
    void invalidLargeFileIsRefusedBeforeItIsRead_data();
    void invalidLargeFileIsRefusedBeforeItIsRead();
    void validLargeFileIsReadAlthoughTheQuickScanFails();
    void fileChangedAfterTheScanIsReadWithItsNewContents();
    void reasonForARefusalIsLogged();
    void mapSizeIsLogged();

    void carriageReturnsAreDropped_data();
    void carriageReturnsAreDropped();
    void lastLineNeedsNoLineFeed();
    void byteOrderMarkSelectsTheEncoding_data();
    void byteOrderMarkSelectsTheEncoding();
    void textModeOfTheDeviceIsRestored();
    void wordsInfAndNanAreReadAsNumbers();
    void readingAnEmptyDeviceFails();
    void readErrorIsTreatedAsTheEndOfTheText();
    void readingAClosedDeviceFails();
    void lineOfTwoMegabytesGivesAtMostOneDataRow_data();
    void lineOfTwoMegabytesGivesAtMostOneDataRow();
    void randomBytesAfterAMapDoNotChangeItsDataRow();
};

void tst_MapTextReader::fourColumnsAreXYIntensityAndI0()
{
    const Reading got = read(twoByOne + "1.5 -2 300.25 4e2\n2.5 -2 301 402\n");
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{1.5, -2.0, 300.25, 400.0}, {2.5, -2.0, 301.0, 402.0}}));
    QVERIFY(got.map.rows.first().values.isEmpty());
    QCOMPARE(got.map.xNum, 2);
    QCOMPARE(got.map.yNum, 1);
}

void tst_MapTextReader::thirdOfThreeColumnsIsTheRatioAndI0IsOne()
{
    const Reading got = read(twoByOne + "1 2 0.5\n");
    QCOMPARE(fields(got.map), (Fields{{1.0, 2.0, 0.5, 1.0}}));
    QCOMPARE(data::pixelMut(got.map, 0, 0), 0.69314718055994531); // ln 2
}

void tst_MapTextReader::wordsAfterTheFourthAreIgnored()
{
    const Reading got = read(twoByOne + "1 2 3 4 5 word # 7\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 4}}));
}

void tst_MapTextReader::lineOfFewerThanThreeWordsIsSkipped()
{
    const Reading got = read(twoByOne + "1\n1 2\n1 2 3\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 1}}));
}

void tst_MapTextReader::unparsableWordReadsAsZero()
{
    const Reading got = read(twoByOne + "1 x 1,000 4\n5 6 1e 0x10\n");
    QCOMPARE(fields(got.map), (Fields{{1, 0, 0, 4}, {5, 6, 0, 0}}));
}

void tst_MapTextReader::blankLineIsSkippedInEachFileFormat()
{
    for (const QByteArray firstLine : {"# 1306\n", "# 2003901\n", "# any\n", ""}) {
        const Reading got =
            read(firstLine + "\n# I0 : 1\n  \t\n# X-NUM 1\n# Y-NUM 1\n\n1 2 3 4\n\n \n");
        QVERIFY2(got.good, firstLine);
        QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 4}}));
    }
}

void tst_MapTextReader::unicodeWhiteSpaceSeparatesWords()
{
    // Tab, vertical tab, form feed, no-break space, ideographic space, next line.
    const Reading got = read(twoByOne + "\t1 \v 2\f3\t\t4 \n1\u00a02\u30003\u00854\u00a0\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 4}, {1, 2, 3, 4}}));
}

void tst_MapTextReader::firstLine1306DoesNotChangeTheFileFormat()
{
    const QByteArray rest = "\n# AXIS 0 a b c d 1\n# Y-NUM 1\n1 2 3\n1 2 3 4 5\n";
    const Reading known = read("# 1306" + rest);
    const Reading other = read("# 1307" + rest);
    QVERIFY(known.good && other.good);
    QCOMPARE(fields(known.map), (Fields{{1, 2, 3, 1}, {1, 2, 3, 4}}));
    QCOMPARE(fields(known.map), fields(other.map));
    QCOMPARE(known.map.xNum, 2);
    QCOMPARE(other.map.xNum, 2);
}

void tst_MapTextReader::firstLine2003901SelectsTheChannelFormat_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<bool>("isChannels");
    QTest::newRow("exact") << QByteArray("# 2003901\n") << true;
    QTest::newRow("with more text after it") << QByteArray("# 20039012 x\n") << true;
    QTest::newRow("carriage return before it") << QByteArray("\r# 2003901\n") << true;
    QTest::newRow("no blank") << QByteArray("#2003901\n") << false;
    QTest::newRow("two blanks") << QByteArray("#  2003901\n") << false;
    QTest::newRow("blank before it") << QByteArray(" # 2003901\n") << false;
    QTest::newRow("second line") << QByteArray("\n# 2003901\n") << false;
    QTest::newRow("cut short") << QByteArray("# 200390\n") << false;
}

void tst_MapTextReader::firstLine2003901SelectsTheChannelFormat()
{
    QFETCH(QByteArray, start);
    QFETCH(bool, isChannels);
    const Reading got = read(start + "# X-NUM 9\n# Y-NUM 9\n1 2 3 4\n");
    QVERIFY(got.good);
    // In a channel file without column lines, I and I0 are both read from word 2 (value 3),
    // and the size is counted from the rows (1 by 1).
    QCOMPARE(got.map.rows.first().i0, isChannels ? 3.0 : 4.0);
    QCOMPARE(got.map.xNum, isChannels ? 1 : 9);
}

void tst_MapTextReader::channelNumbersStartAfterTheCoordinates()
{
    const Reading got = read("# 2003901\n# I0 : 2\n# I : 0\n1 2 10 11 12\n");
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{1, 2, 10, 12}}));
}

void tst_MapTextReader::channelFileWithoutColumnHeaderReadsIAndI0FromOneWord()
{
    const Reading got = read("# 2003901\n1 2 10 11\n2 2 -0.5 3\n");
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{1, 2, 10, 10}, {2, 2, -0.5, -0.5}}));
    QCOMPARE(data::pixelMut(got.map, 0, 0), 0.0);
    QCOMPARE(data::pixelMut(got.map, 1, 0), 0.0);
}

void tst_MapTextReader::tooShortChannelLineIsSkipped()
{
    const Reading got = read("# 2003901\n# I0 : 1\n# I : 2\n1 2 3 4\n1 2 3 4 5\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 5, 4}}));
    // In a channel file, a line of three words is not read as a ratio with the I0 1.
    QVERIFY(read("# 2003901\n# I0 : 1\n1 2 3\n").map.rows.isEmpty());
}

void tst_MapTextReader::columnHeaderLineAffectsOnlyLaterDataLines()
{
    const Reading got = read("# 2003901\n1 2 3 4\n# i0 : 1\n1 2 3 4\n# I : 1\n1 2 3 4\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 3}, {1, 2, 3, 4}, {1, 2, 4, 4}}));
}

void tst_MapTextReader::columnNumberIsReadAfterTheFirstColon_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("word"); // the word of the data line that is read as i0
    QTest::newRow("plain") << QByteArray("# I0 : 1") << 3;
    QTest::newRow("no blank after the colon") << QByteArray("# I0 :1") << 3;
    QTest::newRow("blanks after the colon") << QByteArray("# I0 :\t 1  ") << 3;
    QTest::newRow("plus sign") << QByteArray("# I0 : +1") << 3;
    QTest::newRow("words before the colon") << QByteArray("# I0 channel no.: 1") << 3;
    QTest::newRow("second colon: not a number") << QByteArray("# I0 : 1 : 2") << 2;
    QTest::newRow("unit: not a number") << QByteArray("# I0 : 1 counts") << 2;
    QTest::newRow("fraction: not an integer") << QByteArray("# I0 : 1.0") << 2;
    QTest::newRow("above 32 bits") << QByteArray("# I0 : 4294967297") << 2;
    QTest::newRow("no colon") << QByteArray("# I0 1 1") << 2;
    QTest::newRow("only two words") << QByteArray("# I0: 1") << 2;
    QTest::newRow("colon joined to keyword and number") << QByteArray("# I0:1 x") << 2;
    QTest::newRow("keyword is not the second word") << QByteArray("# x I0 : 1") << 2;
}

void tst_MapTextReader::columnNumberIsReadAfterTheFirstColon()
{
    QFETCH(QByteArray, line);
    const Reading got = read("# 2003901\n" + line + "\n0 1 2 3 4\n");
    QCOMPARE(got.map.rows.size(), 1);
    QTEST(static_cast<int>(got.map.rows.first().i0), "word");
}

void tst_MapTextReader::columnMinusOneOrMinusTwoReadsACoordinate()
{
    const Reading got = read("# 2003901\n# I0 : -1\n# I : -2\n7 8 9\n\n7\n7 8\n");
    QCOMPARE(fields(got.map), (Fields{{7, 8, 7, 8}, {7, 8, 7, 8}}));
}

void tst_MapTextReader::columnBelowMinusTwoSkipsDataLines()
{
    QVERIFY(read("# 2003901\n# I0 : -3\n7 8 9\n").map.rows.isEmpty());
    QVERIFY(read("# 2003901\n# I : -3\n7 8 9\n").map.rows.isEmpty());
    QVERIFY(read("# 2003901\n# I : -2147483648\n7 8 9\n").map.rows.isEmpty());
    // Comment lines are still read while data lines are skipped, even comment lines that start
    // with a no-break space.
    const Reading got = read("# 2003901\n# I : -3\n7 8 9\n\u00a0# I : 0\n1 2 3\n");
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 3}}));
}

void tst_MapTextReader::columnAtTheIntMaximumSkipsDataLines()
{
    QVERIFY(read("# 2003901\n# I0 : 2147483647\n7 8 9\n").map.rows.isEmpty());
    QVERIFY(read("# 2003901\n# I : 2147483647\n7 8 9\n").map.rows.isEmpty());
}

void tst_MapTextReader::mapSizeOfAChannelFileIsCountedFromTheDataRows()
{
    const Reading got = read("# 2003901\n# X-NUM 9\n# Y-NUM 8\n# AXIS 0 a b c d 6\n"
                             "0 0 1\n1 0 1\n2 0 1\n0 1 1\n1 1 1\n2 1 1\n");
    QVERIFY(got.good);
    QCOMPARE(got.map.xNum, 3);
    QCOMPARE(got.map.yNum, 2);
}

void tst_MapTextReader::channelFileOfOneDataLineHasOnePixel()
{
    const Reading got = read("# 2003901\n5 6 1\n");
    QVERIFY(got.good);
    QCOMPARE(got.map.xNum, 1);
    QCOMPARE(got.map.yNum, 1);
}

void tst_MapTextReader::channelFileWithoutRepeatedXGivesAOneLineMap()
{
    const Reading got = read("# 2003901\n0 0 1\n1 0 1\n2 0 1\n");
    QCOMPARE(got.map.xNum, 3);
    QCOMPARE(got.map.yNum, 1);
}

void tst_MapTextReader::commentLineSetsTheMapSize_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("xNum"); // 5 if the line has no effect
    QTest::addColumn<int>("yNum"); // 6 if the line has no effect
    QTest::newRow("X-NUM") << QByteArray("# X-NUM 12") << 12 << 6;
    QTest::newRow("Y-NUM") << QByteArray("# Y-NUM 12 13") << 5 << 12;
    QTest::newRow("lower case") << QByteArray("# x-num 12") << 12 << 6;
    QTest::newRow("mixed case") << QByteArray("# y-Num 12") << 5 << 12;
    QTest::newRow("joined to the hash") << QByteArray("#X-NUM 12") << 5 << 6;
    QTest::newRow("joined, more words") << QByteArray("#X-NUM X-NUMB 12") << 5 << 6;
    QTest::newRow("longer first word") << QByteArray("## X-NUM 12") << 12 << 6;
    QTest::newRow("keyword alone") << QByteArray("# X-NUM") << 5 << 6;
    QTest::newRow("hash alone") << QByteArray("#") << 5 << 6;
    QTest::newRow("word instead of a number") << QByteArray("# X-NUM twelve") << 0 << 6;
    QTest::newRow("fraction") << QByteArray("# X-NUM 12.0") << 0 << 6;
    QTest::newRow("colon instead of a number") << QByteArray("# X-NUM : 12") << 0 << 6;
    QTest::newRow("above 32 bits") << QByteArray("# X-NUM 2147483648") << 0 << 6;
    QTest::newRow("hexadecimal") << QByteArray("# X-NUM 0x10") << 0 << 6;
    QTest::newRow("negative") << QByteArray("# X-NUM -3") << -3 << 6;
    QTest::newRow("plus sign") << QByteArray("# X-NUM +3") << 3 << 6;
    QTest::newRow("leading zero, still decimal") << QByteArray("# X-NUM 010") << 10 << 6;
    QTest::newRow("AXIS 0") << QByteArray("# AXIS 0 a b c d 11") << 12 << 6;
    QTest::newRow("AXIS 1") << QByteArray("# AXIS 1 a b c d 11 e f") << 5 << 12;
    QTest::newRow("axis in lower case") << QByteArray("# axis 1 a b c d 11") << 5 << 12;
    QTest::newRow("AXIS 2 is ignored") << QByteArray("# AXIS 2 a b c d 11") << 5 << 6;
    QTest::newRow("AXIS -1 is ignored") << QByteArray("# AXIS -1 a b c d 11") << 5 << 6;
    QTest::newRow("AXIS with a word is axis 0") << QByteArray("# AXIS x a b c d 11") << 12 << 6;
    QTest::newRow("AXIS above 32 bits is axis 0")
        << QByteArray("# AXIS 4294967297 a b c d 11") << 12 << 6;
    QTest::newRow("AXIS of seven words") << QByteArray("# AXIS 0 a b c 11") << 5 << 6;
    QTest::newRow("AXIS with a word as its end") << QByteArray("# AXIS 0 a b c d x") << 1 << 6;
    QTest::newRow("AXIS with the end -1") << QByteArray("# AXIS 0 a b c d -1") << 0 << 6;
    QTest::newRow("AXIS with the end -5") << QByteArray("# AXIS 1 a b c d -5") << 5 << -4;
}

void tst_MapTextReader::commentLineSetsTheMapSize()
{
    QFETCH(QByteArray, line);
    QFETCH(int, xNum);
    QFETCH(int, yNum);
    const Reading got = read("# X-NUM 5\n# Y-NUM 6\n" + line + "\n1 2 3\n");
    QCOMPARE(got.map.xNum, xNum);
    QCOMPARE(got.map.yNum, yNum);
    QCOMPARE(got.good, xNum > 0 && yNum > 0);
}

void tst_MapTextReader::columnHeaderLinesAffectOnlyChannelFiles()
{
    const Reading got = read("# 1306\n# I0 : 9\n# I : 9\n" + twoByOne + "1 2 3 4\n");
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 4}}));
}

void tst_MapTextReader::energyHandlerIsCalledForEachLineWithAnEnergy()
{
    const Reading got = read("# ENERGY : 8350.50 eV\n# energy = word\n# ENERGY : \n# ENERGY 8300\n"
                             "#ENERGY : 1\n");
    QCOMPARE(got.energies, (QStringList{QStringLiteral("8350.50"), QStringLiteral("word")}));
}

void tst_MapTextReader::energyHandlerIsCalledDuringTheRead()
{
    QBuffer device;
    device.setData("1 2 3\n# ENERGY : 1\n1 2 3\n# ENERGY : 2\n1 2 3\n");
    device.open(QIODevice::ReadOnly);
    A2DData map;
    QList<qsizetype> rowsAtEnergy;
    data::readMapText(device, map, [&](const QString&) { rowsAtEnergy.append(map.rows.size()); });
    QCOMPARE(rowsAtEnergy, (QList<qsizetype>{1, 2}));
}

void tst_MapTextReader::mapIsReadWithoutAnEnergyHandler()
{
    QBuffer device;
    device.setData("# ENERGY : 1\n" + twoByOne + "1 2 3\n");
    device.open(QIODevice::ReadOnly);
    A2DData map;
    QVERIFY(data::readMapText(device, map, {}));
}

void tst_MapTextReader::headerLinesAreStoredUnchangedInFileOrder()
{
    const Reading got =
        read("# 1306  a\t b \n1 2 3\n  # \xc3\xa9\xff \r\n#\n2 2 3 # no comment\n#z");
    QCOMPARE(got.map.headerLines,
             (QStringList{QStringLiteral("# 1306  a\t b "), QStringLiteral("  # \u00e9\ufffd "),
                          QStringLiteral("#"), QStringLiteral("#z")}));
    QCOMPARE(got.map.rows.size(), 2);
}

void tst_MapTextReader::hashAfterBlanksStartsAComment()
{
    const Reading got = read(" \t# X-NUM 4\n\u00a0# Y-NUM 3\n1 2 3\n");
    QCOMPARE(got.map.xNum, 4);
    QCOMPARE(got.map.yNum, 3);
    QCOMPARE(got.map.rows.size(), 1);
}

void tst_MapTextReader::intensityIsTheMutIfI0IsZero()
{
    const Reading got = read(twoByOne + "0 0 0.75 0\n1 0 0.25 word\n");
    QCOMPARE(data::pixelMut(got.map, 0, 0), 0.75);
    QCOMPARE(data::pixelMut(got.map, 1, 0), 0.25);
}

void tst_MapTextReader::mutIsOneIfTheIntensityIsZero()
{
    const Reading got = read(twoByOne + "0 0 0 100\n1 0 word 100\n");
    QCOMPARE(data::pixelMut(got.map, 0, 0), 1.0);
    QCOMPARE(data::pixelMut(got.map, 1, 0), 1.0);
}

void tst_MapTextReader::earlierMapIsReplacedExceptForTheExtendedFlag()
{
    Reading got = read(twoByOne + "1 2 3\n");
    got.map.extended = true;
    QBuffer device;
    device.setData("#new\n4 5 6 7\n");
    device.open(QIODevice::ReadOnly);
    QVERIFY(!data::readMapText(device, got.map, {}));
    QCOMPARE(fields(got.map), (Fields{{4, 5, 6, 7}}));
    QCOMPARE(got.map.headerLines, QStringList{QStringLiteral("#new")});
    QCOMPARE(got.map.xNum, 0);
    QVERIFY(got.map.extended);
}

void tst_MapTextReader::failedReadKeepsTheDataRowsAlreadyRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("rows");
    QTest::newRow("no size") << QByteArray("1 2 3\n4 5 6\n") << 2;
    QTest::newRow("no height") << QByteArray("# X-NUM 2\n1 2 3\n") << 1;
    QTest::newRow("no width") << QByteArray("# Y-NUM 2\n1 2 3\n") << 1;
    QTest::newRow("negative width") << QByteArray("# X-NUM -2\n# Y-NUM 2\n1 2 3\n") << 1;
    QTest::newRow("width and height negative")
        << QByteArray("# X-NUM -2\n# Y-NUM -2\n1 2 3\n") << 1;
    QTest::newRow("no rows") << twoByOne << 0;
    QTest::newRow("channels without rows") << QByteArray("# 2003901\n# X-NUM 2\n# Y-NUM 1\n") << 0;
    QTest::newRow("size above the bound")
        << QByteArray("# X-NUM 65536\n# Y-NUM 65536\n1 2 3\n") << 1;
}

void tst_MapTextReader::failedReadKeepsTheDataRowsAlreadyRead()
{
    QFETCH(QByteArray, text);
    const Reading got = read(text);
    QVERIFY(!got.good);
    QTEST(static_cast<int>(got.map.rows.size()), "rows");
}

void tst_MapTextReader::numberOfDataRowsCanDifferFromTheMapSize()
{
    const Reading fewer = read("# X-NUM 20\n# Y-NUM 30\n0 0 5 0\n");
    QVERIFY(fewer.good);
    QCOMPARE(data::pixelMut(fewer.map, 0, 0), 5.0);
    QCOMPARE(data::pixelMut(fewer.map, 19, 29), -1.0);
    const Reading more = read("# X-NUM 1\n# Y-NUM 1\n0 0 5 0\n1 0 6 0\n");
    QVERIFY(more.good);
    QCOMPARE(more.map.rows.size(), 2);
}

void tst_MapTextReader::readFailsIfTheStatedMapSizeIsAboveTheBound_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<bool>("good");
    QTest::newRow("2^25 by 1") << QByteArray("# X-NUM 33554432\n# Y-NUM 1\n") << true;
    QTest::newRow("2^25 + 1 by 1") << QByteArray("# X-NUM 33554433\n# Y-NUM 1\n") << false;
    QTest::newRow("5792 by 5792") << QByteArray("# X-NUM 5792\n# Y-NUM 5792\n") << true;
    QTest::newRow("5793 by 5793") << QByteArray("# X-NUM 5793\n# Y-NUM 5793\n") << false;
    QTest::newRow("product 0 in 32 bits") << QByteArray("# X-NUM 65536\n# Y-NUM 65536\n") << false;
    QTest::newRow("one huge side") << QByteArray("# X-NUM 2147483647\n") << false;
    QTest::newRow("axis clamped to the int limit")
        << QByteArray("# AXIS 0 a b c d 2147483647\n# Y-NUM 1\n") << false;
}

void tst_MapTextReader::readFailsIfTheStatedMapSizeIsAboveTheBound()
{
    QFETCH(QByteArray, size);
    QFETCH(bool, good);
    const int rows = 524288; // enough for 2^25 pixels
    const Reading got = read(size + QByteArray("1 2 3\n").repeated(rows));
    QCOMPARE(got.good, good);
    QCOMPARE(got.map.xNum > 0, good);
    QCOMPARE(got.map.yNum > 0, good);
    QCOMPARE(got.map.rows.size(), rows);
}

void tst_MapTextReader::readFailsIfTheCountedMapSizeIsAboveTheBound()
{
    // All rows have the same coordinates, so the number of rows becomes both the width and the
    // height. Up to 1024 * 1024 pixels are always allowed. 1025 * 1025 pixels exceed this
    // limit, and also the limit of 64 pixels per data line of the file.
    const QByteArray row = "1 1 2\n";
    QVERIFY(read("# 2003901\n" + row.repeated(1024)).good);
    const Reading got = read("# 2003901\n" + row.repeated(1025));
    QVERIFY(!got.good);
    QCOMPARE(got.map.xNum, 0);
    QCOMPARE(got.map.yNum, 0);
    QCOMPARE(got.map.rows.size(), 1025);
}

void tst_MapTextReader::readFailsIfALargeMapHasTooFewDataRows()
{
    // 1,048,640 pixels need 1,048,640 / 64 = 16,385 rows.
    const QByteArray size = "# X-NUM 1048640\n# Y-NUM 1\n";
    const QByteArray row = "1 2 3\n";
    QVERIFY(read(size + row.repeated(16385)).good);
    const Reading got = read(size + row.repeated(16384));
    QVERIFY(!got.good);
    QCOMPARE(got.map.xNum, 0);
    QCOMPARE(got.map.yNum, 0);
    QCOMPARE(got.map.rows.size(), 16384);
}

void tst_MapTextReader::lineOf16MiBIsRead_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("data") << QByteArray("1 2 3 ");
    QTest::newRow("comment") << QByteArray("# ");
#ifndef __SANITIZE_ADDRESS__ // AddressSanitizer needs minutes to enlarge the text buffer
    QTest::newRow("with a byte order mark") << QByteArray("\xEF\xBB\xBF# ");
#endif
}

void tst_MapTextReader::lineOf16MiBIsRead()
{
    QFETCH(QByteArray, start);
    const qsizetype mark = start.startsWith('\xEF') ? 3 : 0;
    const QByteArray line = start.leftJustified(16777216 + mark, 'x');
    QVERIFY(read(twoByOne + "1 2 3\n" + line.mid(mark) + "\n4 5 6\n").good);
    QVERIFY(read(line + '\n' + twoByOne + "1 2 3\n").good);
}

// Lengths are counted in UTF-16 code units. A character outside the Basic Multilingual Plane
// counts as two units, and the byte 0xFF, which is never valid in UTF-8, as one.
void tst_MapTextReader::lineLengthIsCountedInUtf16CodeUnits()
{
    const auto reads = [](const QByteArray& part, int count) {
        return read(twoByOne + "1 2 3\n#" + part.repeated(count) + '\n').good;
    };
    QVERIFY(reads("\xE3\x81\x82", 16777215)); // あ
    QVERIFY(!reads("\xE3\x81\x82", 16777216));
    QVERIFY(reads("\xF0\x9F\x98\x80", 8388607));
    QVERIFY(!reads("\xF0\x9F\x98\x80", 8388608));
    QVERIFY(reads("\r", 16777215 * 2)); // carriage returns are dropped
    QVERIFY(reads("\xFF", 16777215));
    QVERIFY(!reads("\xFF", 16777216));
}

void tst_MapTextReader::lineOver16MiBIsRefused()
{
    QFETCH(QByteArray, start);
    const qsizetype mark = start.startsWith('\xEF') ? 3 : 0;
    const QByteArray line = start.leftJustified(16777217 + mark, 'x');
    for (const QByteArray& text :
         {line + '\n' + twoByOne + "1 2 3\n", // the long line is first, in the middle or last
          twoByOne + "1 2 3\n" + line.mid(mark) + "\n4 5 6\n",
          twoByOne + "1 2 3\n" + line.mid(mark)}) {
        const Reading got = read(text);
        QVERIFY(!got.good);
        QVERIFY(got.map.rows.isEmpty());
        QVERIFY(got.map.headerLines.isEmpty());
    }
}

// Each of the 63 long comment lines counts as 1 MiB, including 64 bytes of overhead. Together
// with the two short size lines they are below 64 MiB.
void tst_MapTextReader::commentsUpTo64MiBInTotalAreKept()
{
    const QByteArray line = QByteArray("#").leftJustified(1048576 - 64, ' ') + '\n';
    const Reading got = read("# X-NUM 1\n# Y-NUM 1\n1 2 3\n" + line.repeated(63));
    QVERIFY(got.good);
    QCOMPARE(got.map.headerLines.size(), 65);
}

void tst_MapTextReader::commentsOver64MiBInTotalAreRefused()
{
    const QByteArray line = QByteArray("#").leftJustified(1048576 - 64, ' ') + '\n';
    QVERIFY(read("1 2 3\n" + line.repeated(64)).map.headerLines.size() == 64);
    const Reading got = read("# X-NUM 1\n# Y-NUM 1\n1 2 3\n" + line.repeated(64));
    QVERIFY(!got.good);
    QVERIFY(got.map.headerLines.isEmpty());
}

// Each line counts as 65 bytes (one character and 64 bytes of overhead), so 64 MiB / 65 bytes
// = 1,032,444 lines are accepted.
void tst_MapTextReader::commentLimitIncludesTheMemoryOverheadPerLine()
{
    QCOMPARE(read(QByteArray("#\n").repeated(1032444)).map.headerLines.size(), 1032444);
    QVERIFY(read(QByteArray("#\n").repeated(1032445)).map.headerLines.isEmpty());
}

void tst_MapTextReader::memoryOfARefusedMapIsReleased()
{
    const Reading got =
        read(twoByOne + QByteArray("1 2 3\n").repeated(1000) + QByteArray(16777217, ' ') + '\n');
    QVERIFY(!got.good);
    QCOMPARE(got.map.rows.capacity(), 0);
    QCOMPARE(got.map.headerLines.capacity(), 0);
    QCOMPARE(got.map.xNum, 0);
    QCOMPARE(got.map.yNum, 0);
}

void tst_MapTextReader::mapAboveTheMaximumNumberOfDataRowsIsRefused_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::newRow("plain") << QByteArray("1 2 3\n");
    QTest::newRow("not ASCII") << QByteArray("1 2 3 \xC3\xA9\n");
}

void tst_MapTextReader::mapAboveTheMaximumNumberOfDataRowsIsRefused()
{
    QFETCH(QByteArray, row);
    const auto rowsOf = [&row](int count) {
        QByteArray text = twoByOne + row.repeated(count);
        QBuffer device(&text);
        device.open(QIODevice::ReadOnly);
        A2DData map;
        const bool good = data::readMapText(device, map, {}, 130);
        return good ? map.rows.size() : -map.rows.size() - 1;
    };
    QCOMPARE(rowsOf(130), 130);
    QCOMPARE(rowsOf(131), -1);
    QCOMPARE(rowsOf(1000), -1);
}

void tst_MapTextReader::energiesBeforeARefusalAreReported()
{
    const Reading got =
        read("# ENERGY : 8345\n" + QByteArray("#\n").repeated(1032445) + "# ENERGY : 1\n");
    QVERIFY(!got.good);
    QCOMPARE(got.energies, QStringList{"8345"});
}

void tst_MapTextReader::invalidLargeFileIsRefusedBeforeItIsRead_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("long line") << QByteArray(16777217, ' ') + '\n';
    QTest::newRow("long last line") << QByteArray(16777217, '1');
    QTest::newRow("long comment") << '#' + QByteArray(16777217, 'c');
    QTest::newRow("many comments") << QByteArray(" #\n").repeated(1032445);
}

void tst_MapTextReader::invalidLargeFileIsRefusedBeforeItIsRead()
{
    QFETCH(QByteArray, end);
    const Reading got = read(twoByOne + "# ENERGY : 8345\n" + largeRows() + end);
    QVERIFY(!got.good);
    QCOMPARE(got.energies, QStringList());
    QCOMPARE(got.map.rows.capacity(), 0);
}

// The quick scan does not decode UTF-16. It counts the lines as comments, because they contain
// zero bytes.
void tst_MapTextReader::validLargeFileIsReadAlthoughTheQuickScanFails()
{
    QStringEncoder encode(QStringEncoder::Utf16, QStringEncoder::Flag::WriteBom);
    const QByteArray text = encode(QString::fromLatin1(twoByOne + largeRows()));
    const Reading got = read(text);
    QVERIFY(got.good);
    QCOMPARE(got.map.rows.size(), 200000);
    QCOMPARE(got.map.headerLines.size(), 2);
}

void tst_MapTextReader::fileChangedAfterTheScanIsReadWithItsNewContents()
{
    const QByteArray many = twoByOne + largeRows();
    const QByteArray few = twoByOne + "1 2 3\n";
    const QByteArray longer = many + QByteArray(16777217, ' ');
    A2DData map;
    ChangingDevice shrinks(many, few);
    QVERIFY(data::readMapText(shrinks, map, {}));
    QCOMPARE(map.rows.size(), 1);
    ChangingDevice grows(many, longer);
    QVERIFY(!data::readMapText(grows, map, {}));
    QVERIFY(map.rows.isEmpty());
}

void tst_MapTextReader::reasonForARefusalIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, "the file is refused: a line is longer than a line may be");
    read(QByteArray(16777217, ' '));
    QTest::ignoreMessage(QtDebugMsg, "the file is refused: more comment lines than a map may have");
    read(QByteArray("#\n").repeated(1032445));
    QTest::ignoreMessage(
        QtDebugMsg, "the file is refused: the size is past the bound, or past what its rows allow");
    read("# X-NUM 2097152\n# Y-NUM 1\n1 2 3\n");
}

void tst_MapTextReader::mapSizeIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, "size 2 1");
    read(twoByOne + "1 2 3\n");
    QTest::ignoreMessage(QtDebugMsg, "size 0 0");
    read("");
}

void tst_MapTextReader::carriageReturnsAreDropped_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("CRLF") << QByteArray("# X-NUM 2\r\n# Y-NUM 1\r\n12 3 4 5\r\n6 7 8\r\n");
    QTest::newRow("CRCRLF") << QByteArray("# X-NUM 2\n# Y-NUM 1\n12 3 4 5\r\r\n6 7 8\r\r\n");
    QTest::newRow("inside a word") << QByteArray("# X-NUM \r2\n# Y-NUM 1\n1\r2 3 4 5\n6 7 8\n");
    QTest::newRow("at the very end") << QByteArray("# X-NUM 2\n# Y-NUM 1\n12 3 4 5\n6 7 8\r");
    QTest::newRow("before the line") << QByteArray("\r# X-NUM 2\n# Y-NUM 1\n\r12 3 4 5\n6 7 8");
}

void tst_MapTextReader::carriageReturnsAreDropped()
{
    QFETCH(QByteArray, text);
    const Reading got = read(text);
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{12, 3, 4, 5}, {6, 7, 8, 1}}));
    QCOMPARE(got.map.headerLines,
             (QStringList{QStringLiteral("# X-NUM 2"), QStringLiteral("# Y-NUM 1")}));
    // A carriage return alone does not end a line.
    QCOMPARE(read("1 2 3\r4 5 6\r7 8 9\r").map.rows.size(), 1);
}

void tst_MapTextReader::lastLineNeedsNoLineFeed()
{
    QCOMPARE(fields(read("1 2 3\n4 5 6 7").map), (Fields{{1, 2, 3, 1}, {4, 5, 6, 7}}));
}

void tst_MapTextReader::byteOrderMarkSelectsTheEncoding_data()
{
    QTest::addColumn<int>("encoding");
    QTest::newRow("UTF-8") << static_cast<int>(QStringConverter::Utf8);
    QTest::newRow("UTF-16 little-endian") << static_cast<int>(QStringConverter::Utf16LE);
    QTest::newRow("UTF-16 big-endian") << static_cast<int>(QStringConverter::Utf16BE);
    QTest::newRow("UTF-32 little-endian") << static_cast<int>(QStringConverter::Utf32LE);
    QTest::newRow("UTF-32 big-endian") << static_cast<int>(QStringConverter::Utf32BE);
}

void tst_MapTextReader::byteOrderMarkSelectsTheEncoding()
{
    QFETCH(int, encoding);
    QStringEncoder encode(static_cast<QStringConverter::Encoding>(encoding),
                          QStringConverter::Flag::WriteBom);
    const QByteArray text = encode(QStringLiteral("# 2003901\r\n# I0 : 1\r\n1 2 3 4\r\n"));
    const Reading got = read(text);
    QVERIFY(got.good);
    QCOMPARE(fields(got.map), (Fields{{1, 2, 3, 4}}));
    QCOMPARE(got.map.headerLines.first(), QStringLiteral("# 2003901"));
}

void tst_MapTextReader::textModeOfTheDeviceIsRestored()
{
    QBuffer device;
    device.setData("\xef\xbb\xbf" + twoByOne + "1 2 3\n");
    device.open(QIODevice::ReadOnly);
    A2DData map;
    QVERIFY(data::readMapText(device, map, {}));
    QVERIFY(!device.isTextModeEnabled());
}

void tst_MapTextReader::wordsInfAndNanAreReadAsNumbers()
{
    const Reading got = read(twoByOne + "inf -inf nan 1e400\n+inf -1e400 1e-400 -0\n");
    const double inf = std::numeric_limits<double>::infinity();
    const A2DRow& words = got.map.rows.at(0);
    QVERIFY(words.x == inf && words.y == -inf && words.intensity != words.intensity);
    QCOMPARE(words.i0, inf);
    const A2DRow& limits = got.map.rows.at(1);
    QVERIFY(limits.x == inf && limits.y == -inf);
    QVERIFY(tests::sameDouble(limits.intensity, 0.0));
    QVERIFY(tests::sameDouble(limits.i0, -0.0));
}

void tst_MapTextReader::readingAnEmptyDeviceFails()
{
    const Reading got = read("");
    QVERIFY(!got.good);
    QVERIFY(got.map.rows.isEmpty());
    QVERIFY(got.map.headerLines.isEmpty());
}

void tst_MapTextReader::readErrorIsTreatedAsTheEndOfTheText()
{
    FailingDevice device(twoByOne + "1 2 3\n4 5 6");
    A2DData map;
    QVERIFY(data::readMapText(device, map, {}));
    QCOMPARE(fields(map), (Fields{{1, 2, 3, 1}, {4, 5, 6, 1}}));
    FailingDevice nothing("");
    QVERIFY(!data::readMapText(nothing, map, {}));
    QVERIFY(map.rows.isEmpty());
}

void tst_MapTextReader::readingAClosedDeviceFails()
{
    QBuffer device;
    A2DData map;
    QVERIFY(!data::readMapText(device, map, {}));
}

void tst_MapTextReader::lineOfTwoMegabytesGivesAtMostOneDataRow_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<int>("rows");
    QTest::newRow("many words") << QByteArray("7 ") << 1;
    QTest::newRow("one word") << QByteArray("7") << 0;
    QTest::newRow("blanks") << QByteArray(" ") << 0;
    QTest::newRow("NUL") << QByteArray(1, '\0') << 0;
    QTest::newRow("words outside ASCII") << QByteArray("\xc3\xa9 ") << 1;
    QTest::newRow("broken UTF-8") << QByteArray("\xff") << 0;
    QTest::newRow("carriage returns") << QByteArray("\r") << 0;
    QTest::newRow("comment") << QByteArray("# ") << 0;
}

void tst_MapTextReader::lineOfTwoMegabytesGivesAtMostOneDataRow()
{
    QFETCH(QByteArray, part);
    const QByteArray line = part.repeated(2'000'000 / part.size());
    for (const char* const firstLine : {"# 1306\n", "# 2003901\n"}) {
        const Reading got = read(firstLine + line);
        QTEST(static_cast<int>(got.map.rows.size()), "rows");
    }
}

void tst_MapTextReader::randomBytesAfterAMapDoNotChangeItsDataRow()
{
    std::mt19937 random(20230901);
    QByteArray noise(1 << 20, Qt::Uninitialized);
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random() % 256u); });
    QVERIFY(!read(noise).good);
    // After a valid map, these random bytes add only rows and comment lines, because they
    // contain no line that changes the size.
    const Reading got = read(twoByOne + "1 2 3\n" + noise);
    QVERIFY(got.good);
    QCOMPARE(fields(got.map).first(), (QList<double>{1, 2, 3, 1}));
}

QTEST_APPLESS_MAIN(tst_MapTextReader)
#include "tst_MapTextReader.moc"
