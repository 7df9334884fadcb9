// The text of result maps: column names, both layouts, the comparison with the reference
// implementation, and failing devices.
#include "analysis/ResultText.h"

#include "data/A2DData.h"
#include "support/PlainResultWriter.h"
#include "support/TestFiles.h"

#include <QBuffer>
#include <QTest>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

using analysis::ValenceMix;

namespace
{

using SelectedColumns = std::array<bool, analysis::columnCount>;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int maxInt = std::numeric_limits<int>::max();

const QByteArray title = "# qelk result map V1.0\n";

SelectedColumns columns(std::initializer_list<std::size_t> indices)
{
    SelectedColumns selected{};
    for (const std::size_t i : indices) {
        selected.at(i) = true;
    }
    return selected;
}

SelectedColumns allColumns()
{
    SelectedColumns selected;
    selected.fill(true);
    return selected;
}

A2DData mapOf(int width, int height, const QList<A2DRow>& rows)
{
    A2DData map;
    map.xNum = width;
    map.yNum = height;
    map.rows = rows;
    return map;
}

/// The text that the writer produces; empty if the writer reports failure.
QByteArray textOf(const A2DData& map, const ValenceMix& mix, const SelectedColumns& selected = {})
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return analysis::writeResultMap(buffer, map, mix, selected) ? buffer.data() : QByteArray();
}

QByteArray plainTextOf(const A2DData& map, const tests::PlainValences& valences,
                       const SelectedColumns& selected)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return tests::writePlainResultMap(buffer, map, valences, selected) ? buffer.data()
                                                                       : QByteArray();
}

/// The first position where two texts differ, with the text around it.
QByteArray difference(const QByteArray& a, const QByteArray& b)
{
    const auto place = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    const qsizetype from = std::max<qsizetype>(0, place - 40);
    return "at byte " + QByteArray::number(place) + ": [" + a.mid(from, 80) + "] against [" +
           b.mid(from, 80) + "]";
}

/// A device that fails at the write that exceeds `limit` bytes, with a short write or an error.
class LimitedDevice : public QIODevice
{
public:
    LimitedDevice(qint64 limit, bool shortWrites)
        : m_left(limit)
        , m_shortWrites(shortWrites)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    int refusals = 0;

protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char*, qint64 size) override
    {
        if (size <= m_left) {
            m_left -= size;
            return size;
        }
        ++refusals;
        return m_shortWrites ? std::exchange(m_left, 0) : -1;
    }

private:
    qint64 m_left;
    bool m_shortWrites;
};

QList<double> hostileNumbers()
{
    return {0.0,           -0.0,
            1.0,           notANumber,
            -notANumber,   inf,
            -inf,          123456.5,
            -123456.5,     1234565.0,
            999999.5,      999999.4999,
            1e6,           1e5,
            0.0001,        0.00001,
            9.999995e-5,   5e-324,
            -5e-324,       2.2e-308,
            1.7976931e308, -1.2345678e-300,
            -1.23456e-5,   0.1234565,
            1.015625,      -1.0000005,
            100000.5,      1e21,
            4294967296.0,  3.14159265358979};
}

double anyBits(std::mt19937_64& random)
{
    return std::bit_cast<double>(random());
}

/// A map with hostile and random numbers. In the first 900 pixels, intensity and i0 are all pairs
/// of hostileNumbers().
A2DData hostileMap(int width, int height, bool extended)
{
    std::mt19937_64 random(7);
    const QList<double> numbers = hostileNumbers();
    const auto number = [&](qsizetype i) { return numbers.at(i % numbers.size()); };
    A2DData map = mapOf(width, height, {});
    map.extended = extended;
    for (qsizetype i = 0; i < qsizetype{width} * height; ++i) {
        A2DRow row;
        row.x = i % 3 == 0 ? number(i / 3) : static_cast<double>(i % width);
        row.y = i % 5 == 0 ? anyBits(random) : static_cast<double>(i / width) * 0.001;
        row.intensity = i < 900 ? number(i) : anyBits(random);
        row.i0 = i < 900 ? number(i / 30) : std::ldexp(static_cast<double>(random() >> 11), -53);
        for (int value = 0; extended && value < static_cast<int>(i % 16); ++value) {
            row.values << (value % 2 == 0 ? number(i + value) : anyBits(random));
        }
        map.rows << row;
    }
    return map;
}

} // namespace

class tst_ResultText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnIndexGivesItsNameOrUnKnown_data();
    void columnIndexGivesItsNameOrUnKnown();

    void simpleMapIsWrittenAsXYFractionValenceAndThickness();
    void simpleLayoutHasNoLineOfColumnNames();
    void valenceIsZeroWithFewerThanTwoReferences();
    void valenceIsMixedFromTheFractionOfTheFirstReference();
    void extendedMapIsWrittenWithHeadingAndSelectedColumns();
    void extendedHeadingHasYFirstButLinesHaveXFirst();
    void extendedHeadingNamesAllColumnsInOrder();
    void withoutSelectedColumnsOnlyXAndYAreWritten();
    void missingValuesAreWrittenAsZero();
    void surplusValuesAreNotWritten();
    void longNumberKeepsItsDigits();
    void commentLinesAreWrittenUnchanged();
    void commentLinesAreEncodedLikeQTextStream_data();
    void commentLinesAreEncodedLikeQTextStream();

    void emptyMapHasNoTable();
    void emptyExtendedMapHasOnlyItsHeading();
    void fractionOfAPixelWithoutDataIsWrittenAsZero();
    void pixelsBeyondTheSizeOfTheMapAreNotWritten();
    void pixelsAreWrittenInListOrderNotByCoordinate();
    void mapsWithoutPixelsHaveEmptyTables_data();
    void mapsWithoutPixelsHaveEmptyTables();

    void textMatchesTheReferenceImplementation_data();
    void textMatchesTheReferenceImplementation();
    void textLongerThanABlockIsComplete();

    void failingDeviceIsReported_data();
    void failingDeviceIsReported();
    void writingAHugeMapStopsAtTheFirstFailure();
    void closedDeviceIsReported();
    void fileIsCompleteWhenTheWriterReturns();
};

void tst_ResultText::columnIndexGivesItsNameOrUnKnown_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    const QStringList names{"alpha1", "alpha2", "alpha3", "alpha4", "dMut1",   "dMut2",     "dMut3",
                            "dMut4",  "Mut0",   "C1",     "C2",     "Valence", "Total-dMut"};
    for (int i = 0; i < names.size(); ++i) {
        QTest::addRow("column %d", i) << i << names.at(i);
    }
    QTest::newRow("index past the last") << 13 << "UnKnown";
    QTest::newRow("negative index") << -1 << "UnKnown";
    QTest::newRow("largest int") << maxInt << "UnKnown";
}

void tst_ResultText::columnIndexGivesItsNameOrUnKnown()
{
    QFETCH(int, index);
    QTEST(analysis::columnName(index), "name");
}

// The valences are 2 and 4, so a fraction a has the valence 2 a + 4 (1 - a): 0.5 + 3 = 3.5 for
// a = 0.25, and -1 + 6 = 5 for a = -0.5.
void tst_ResultText::simpleMapIsWrittenAsXYFractionValenceAndThickness()
{
    A2DData map = mapOf(2, 2,
                        {{10, 20, 0.25, 1.125, {}},
                         {11, 20, -0.5, 0.1234567, {}},
                         {10, 21, 0, 1e-7, {}},
                         {11, 21, 1, -2, {}}});
    map.headerLines = {"# 1306", "# x y I I0"};
    QCOMPARE(textOf(map, {true, 2.0, 4.0}),
             title + "# 1306\n"
                     "# x y I I0\n"
                     "\n"
                     "         10         20          0.25        3.5      1.125\n"
                     "         11         20          -0.5          5   0.123457\n"
                     "\n"
                     "         10         21             0          4      1e-07\n"
                     "         11         21             1          2         -2\n"
                     "\n");
}

void tst_ResultText::simpleLayoutHasNoLineOfColumnNames()
{
    const A2DData map = mapOf(1, 1, {{0, 0, 1, 1, {}}});
    const QByteArray text = textOf(map, {true, 2.0, 3.0}, allColumns());
    QVERIFY(text.startsWith(title + "\n          0"));
    QVERIFY(!text.contains("alpha1"));
}

void tst_ResultText::valenceIsZeroWithFewerThanTwoReferences()
{
    const A2DData map = mapOf(1, 1, {{0, 0, 0.5, 1, {}}});
    const QByteArray line = "          0          0           0.5          0          1\n";
    QCOMPARE(textOf(map, {false, 2.0, 3.0}), title + "\n" + line + "\n");
}

void tst_ResultText::valenceIsMixedFromTheFractionOfTheFirstReference()
{
    const ValenceMix mix{true, 2.0, 3.0};
    QCOMPARE(mix(1.0), 2.0);
    QCOMPARE(mix(0.0), 3.0);
    QCOMPARE(mix(0.25), 2.75);
    QVERIFY(std::isnan(mix(notANumber)));
    QCOMPARE((ValenceMix{false, 2.0, 3.0}(notANumber)), 0.0);
}

void tst_ResultText::extendedMapIsWrittenWithHeadingAndSelectedColumns()
{
    A2DData map = mapOf(1, 2,
                        {{10, 20, 0, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
                         {10, 21, 0, 0, {0.5, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 2.75, -1e-9}}});
    map.extended = true;
    map.headerLines = {"#"};
    QCOMPARE(textOf(map, {}, columns({0, 11, 12})),
             title + "#\n"
                     "\n"
                     "# y x alpha1 Valence Total-dMut\n"
                     "         10         20          0         11         12\n"
                     "\n"
                     "         10         21        0.5       2.75     -1e-09\n"
                     "\n");
}

void tst_ResultText::extendedHeadingHasYFirstButLinesHaveXFirst()
{
    A2DData map = mapOf(1, 1, {{111, 222, 0, 0, {}}});
    map.extended = true;
    const QByteArray table = textOf(map, {}).mid(title.size());
    QCOMPARE(table, QByteArray("\n# y x\n        111        222\n\n"));
}

void tst_ResultText::extendedHeadingNamesAllColumnsInOrder()
{
    A2DData map;
    map.extended = true;
    QCOMPARE(textOf(map, {}, allColumns()),
             title + "\n# y x alpha1 alpha2 alpha3 alpha4 dMut1 dMut2 dMut3 dMut4"
                     " Mut0 C1 C2 Valence Total-dMut\n");
}

void tst_ResultText::withoutSelectedColumnsOnlyXAndYAreWritten()
{
    A2DData map = mapOf(2, 1, {{1, 2, 3, 4, {5, 6}}, {7, 8, 9, 10, {11, 12}}});
    map.extended = true;
    QCOMPARE(textOf(map, {}), title + "\n"
                                      "# y x\n"
                                      "          1          2\n"
                                      "          7          8\n"
                                      "\n");
}

void tst_ResultText::missingValuesAreWrittenAsZero()
{
    A2DData map = mapOf(3, 1, {{0, 0, 9, 9, {5, 6}}, {1, 0, 9, 9, {}}});
    map.extended = true;
    QCOMPARE(textOf(map, {}, columns({1, 2})), title +
                                                   "\n"
                                                   "# y x alpha2 alpha3\n"
                                                   "          0          0          6          0\n"
                                                   "          1          0          0          0\n"
                                                   "          0          0          0          0\n"
                                                   "\n");
}

void tst_ResultText::surplusValuesAreNotWritten()
{
    A2DRow row;
    row.values = QList<double>(20, 7.0);
    A2DData map = mapOf(1, 1, {row});
    map.extended = true;
    QCOMPARE(textOf(map, {}, allColumns()).count(" 7"), 13);
}

void tst_ResultText::longNumberKeepsItsDigits()
{
    const A2DData map = mapOf(1, 1, {{-1.23456e-5, -1.23456e+100, -9.87654e-300, 1, {}}});
    QCOMPARE(textOf(map, {}), title + "\n"
                                      " -1.23456e-05 -1.23456e+100    -9.87654e-300          0"
                                      "          1\n"
                                      "\n");
}

void tst_ResultText::commentLinesAreWrittenUnchanged()
{
    A2DData map;
    map.headerLines = {"#  two  blanks ", "", "no mark", "#\ttab"};
    QCOMPARE(textOf(map, {}), title + "#  two  blanks \n\nno mark\n#\ttab\n\n");
}

void tst_ResultText::commentLinesAreEncodedLikeQTextStream_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("accents") << QStringList{QString::fromUtf8("# Größe µm")};
    QTest::newRow("Japanese") << QStringList{QString::fromUtf8("# 価数と厚さ")};
    QTest::newRow("outside the basic plane") << QStringList{QString::fromUtf8("# 𝜇t")};
    QTest::newRow("unpaired high surrogate inside a line")
        << QStringList{"a" + QString(QChar(0xd835)) + "b"};
    QTest::newRow("unpaired high surrogate at the end of a line")
        << QStringList{"a" + QString(QChar(0xd835)), "b"};
    QTest::newRow("unpaired low surrogate") << QStringList{QString(QChar(0xdc00)), "b"};
    QTest::newRow("null character") << QStringList{"a" + QString(QChar(0)) + "b"};
    QTest::newRow("byte order mark") << QStringList{QString(QChar(0xfeff)) + "b"};
}

void tst_ResultText::commentLinesAreEncodedLikeQTextStream()
{
    QFETCH(QStringList, lines);
    A2DData map;
    map.headerLines = lines;
    const QByteArray text = textOf(map, {});
    QVERIFY(!text.isEmpty());
    QCOMPARE(text, plainTextOf(map, {}, {}));
}

void tst_ResultText::emptyMapHasNoTable()
{
    A2DData map;
    map.headerLines = {"# one"};
    QCOMPARE(textOf(map, {true, 2.0, 3.0}, allColumns()), title + "# one\n\n");
}

void tst_ResultText::emptyExtendedMapHasOnlyItsHeading()
{
    A2DData map;
    map.extended = true;
    map.headerLines = {"# one"};
    QCOMPARE(textOf(map, {true, 2.0, 3.0}, columns({8})), title + "# one\n\n# y x Mut0\n");
}

// The fraction of a pixel without a row is 0, so its valence is the valence of the second
// reference.
void tst_ResultText::fractionOfAPixelWithoutDataIsWrittenAsZero()
{
    const A2DData map = mapOf(2, 1, {{5, 6, 1, 2, {}}});
    QCOMPARE(textOf(map, {true, 2.0, 3.0}),
             title + "\n"
                     "          5          6             1          2          2\n"
                     "          0          0             0          3          0\n"
                     "\n");
}

void tst_ResultText::pixelsBeyondTheSizeOfTheMapAreNotWritten()
{
    const A2DData map = mapOf(1, 1, {{5, 6, 1, 2, {}}, {7, 8, 1, 2, {}}});
    QVERIFY(!textOf(map, {}).contains('8'));
}

void tst_ResultText::pixelsAreWrittenInListOrderNotByCoordinate()
{
    A2DData map = mapOf(1, 2, {{9, 9, 0, 0, {}}, {3, 3, 0, 0, {}}});
    map.extended = true;
    QCOMPARE(textOf(map, {}), title + "\n"
                                      "# y x\n"
                                      "          9          9\n"
                                      "\n"
                                      "          3          3\n"
                                      "\n");
}

void tst_ResultText::mapsWithoutPixelsHaveEmptyTables_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QByteArray>("table");
    QTest::newRow("no columns") << 0 << 3 << QByteArray("\n\n\n");
    QTest::newRow("negative width") << -4 << 2 << QByteArray("\n\n");
    QTest::newRow("no lines") << 3 << 0 << QByteArray();
    QTest::newRow("negative height") << 3 << -1 << QByteArray();
    QTest::newRow("both negative") << -3 << -3 << QByteArray();
    QTest::newRow("largest width without lines") << maxInt << 0 << QByteArray();
}

void tst_ResultText::mapsWithoutPixelsHaveEmptyTables()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QByteArray, table);
    A2DData map = mapOf(width, height, {{1, 2, 3, 4, {5}}});
    QCOMPARE(textOf(map, {}), title + "\n" + table);
    map.extended = true;
    QCOMPARE(textOf(map, {}), title + "\n# y x\n" + table);
}

void tst_ResultText::textMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<bool>("extended");
    QTest::addColumn<int>("validReferences");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("simple") << false << 2 << "2"
                            << "3.5";
    QTest::newRow("simple, one reference") << false << 1 << "2"
                                           << "3.5";
    QTest::newRow("simple, three references") << false << 3 << "2.333333333"
                                              << "-4e-3";
    QTest::newRow("simple, unparsable valences") << false << 2 << "abc"
                                                 << "";
    QTest::newRow("simple, infinite valence") << false << 2 << "inf"
                                              << "1e400";
    QTest::newRow("simple, NaN valence") << false << 2 << "nan"
                                         << " 3 ";
    QTest::newRow("extended") << true << 2 << "2"
                              << "3";
}

void tst_ResultText::textMatchesTheReferenceImplementation()
{
    QFETCH(bool, extended);
    QFETCH(int, validReferences);
    QFETCH(QString, first);
    QFETCH(QString, second);
    A2DData map = hostileMap(90, 40, extended);
    map.headerLines = {"# a", "", QString::fromUtf8("# µ")};
    map.yNum += 2; // two more lines of pixels, without data
    const ValenceMix mix{validReferences >= 2, first.toDouble(), second.toDouble()};
    const tests::PlainValences valences{validReferences, first, second};
    for (const SelectedColumns& selected :
         {allColumns(), columns({}), columns({0, 5, 12}), columns({11})}) {
        const QByteArray text = textOf(map, mix, selected);
        const QByteArray plain = plainTextOf(map, valences, selected);
        QVERIFY(!text.isEmpty());
        QVERIFY2(text == plain, difference(text, plain).constData());
    }
}

// The text is several blocks of 256 KiB long. Each pixel has a different number, and three
// comment lines are about as long as a block.
void tst_ResultText::textLongerThanABlockIsComplete()
{
    A2DData map = mapOf(150, 130, {});
    for (int i = 0; i < 150 * 130; ++i) {
        map.rows << A2DRow{i * 1.0, i * 0.5, i * 1e-5, std::sqrt(i), {}};
    }
    for (const qsizetype length : {262143, 262144, 262145, 1000000, 1}) {
        map.headerLines << QString(length, 'h');
    }
    const QByteArray text = textOf(map, {true, 2.0, 3.0});
    const QByteArray plain = plainTextOf(map, {2, "2", "3"}, {});
    QVERIFY(text.size() > 2'500'000);
    QVERIFY2(text == plain, difference(text, plain).constData());
}

void tst_ResultText::failingDeviceIsReported_data()
{
    QTest::addColumn<qint64>("missing"); // bytes that the device does not accept; -1: all
    QTest::addColumn<bool>("shortWrites");
    for (const bool shortWrites : {false, true}) {
        const char* const how = shortWrites ? "short write" : "write error";
        QTest::addRow("all bytes missing, %s", how) << qint64{-1} << shortWrites;
        QTest::addRow("about half missing, %s", how) << qint64{600'000} << shortWrites;
        QTest::addRow("last byte missing, %s", how) << qint64{1} << shortWrites;
    }
}

void tst_ResultText::failingDeviceIsReported()
{
    QFETCH(qint64, missing);
    QFETCH(bool, shortWrites);
    const A2DData map = hostileMap(150, 150, false);
    const qint64 size = textOf(map, {}).size();
    QVERIFY(size > 1'200'000);

    LimitedDevice enough(size, shortWrites);
    QVERIFY(analysis::writeResultMap(enough, map, {}, {}));
    QCOMPARE(enough.refusals, 0);

    LimitedDevice device(missing < 0 ? 0 : size - missing, shortWrites);
    QVERIFY(!analysis::writeResultMap(device, map, {}, {}));
    QCOMPARE(device.refusals, 1); // nothing is written after a failure
}

// A writer that does not stop after a failed write would need years for 2^62 pixels.
void tst_ResultText::writingAHugeMapStopsAtTheFirstFailure()
{
    A2DData map = mapOf(maxInt, maxInt, {});
    for (const int width : {maxInt, 0}) {
        map.xNum = width;
        for (const bool extended : {false, true}) {
            map.extended = extended;
            LimitedDevice device(1'000'000, false);
            QVERIFY(!analysis::writeResultMap(device, map, {}, allColumns()));
            QCOMPARE(device.refusals, 1);
        }
    }
}

void tst_ResultText::closedDeviceIsReported()
{
    QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (QFile, \"\"): device not open");
    QFile closed;
    QVERIFY(!analysis::writeResultMap(closed, A2DData(), {}, {}));
}

// Reads the file through a second handle before the written file is closed.
void tst_ResultText::fileIsCompleteWhenTheWriterReturns()
{
    const QTemporaryDir dir;
    const A2DData map = hostileMap(20, 20, false);
    QFile file(dir.filePath("map.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
    QVERIFY(analysis::writeResultMap(file, map, {}, {}));
    QCOMPARE(tests::readFile(file.fileName()), textOf(map, {}));
}

QTEST_GUILESS_MAIN(tst_ResultText)
#include "tst_ResultText.moc"
