// The reader of text maps, compared bit for bit with the reference implementation.
#include "data/A2DData.h"
#include "data/MapTextReader.h"
#include "support/PlainMapReader.h"
#include "support/ShortReadDevice.h"
#include "support/TestFiles.h"

#include <QBuffer>
#include <QLoggingCategory>
#include <QStringEncoder>
#include <QTest>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <random>

namespace
{

struct Reading {
    bool good = false;
    A2DData map;
    QStringList energies;
};

data::EnergyHandler collectInto(QStringList& energies)
{
    return [&energies](const QString& text) { energies.append(text); };
}

Reading readFrom(QIODevice& device)
{
    Reading reading;
    reading.good = data::readMapText(device, reading.map, collectInto(reading.energies));
    return reading;
}

bool sameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameRow(const A2DRow& a, const A2DRow& b)
{
    return sameBits(a.x, b.x) && sameBits(a.y, b.y) && sameBits(a.intensity, b.intensity) &&
           sameBits(a.i0, b.i0) && a.values == b.values;
}

/// Describes the first difference between two readings; empty if they are equal.
QString difference(const Reading& reference, const Reading& product)
{
    if (reference.good != product.good) {
        return QStringLiteral("result");
    }
    if (reference.map.xNum != product.map.xNum || reference.map.yNum != product.map.yNum) {
        return QStringLiteral("size");
    }
    if (reference.energies != product.energies) {
        return QStringLiteral("energies");
    }
    if (reference.map.headerLines != product.map.headerLines) {
        return QStringLiteral("header lines");
    }
    const auto [a, b] = std::mismatch(reference.map.rows.cbegin(), reference.map.rows.cend(),
                                      product.map.rows.cbegin(), product.map.rows.cend(), sameRow);
    const bool same = a == reference.map.rows.cend() && b == product.map.rows.cend();
    return same ? QString() : QStringLiteral("row %1").arg(a - reference.map.rows.cbegin());
}

const QList<QByteArray> hostileNumbers =
    QByteArray("+1 1e400 -1e400 1e-400 -1e-400 -nan nan NaN NAN nan(1) inf -inf +inf INF Inf "
               "infinity -infinity Infinity 1,000 1,0 ,1 1e 1e+ 1e- 1E e e5 .e5 1.e5 .5 5. -.5 +.5 "
               "-5. . - + -. .. 1..2 1.2.3 0x1p3 0x10 0X1 0b1 0b11 1_0 1'0 1e5x 1d5 1f 1.0f "
               "\xd9\xa1 \xef\xbc\x91 1E5 -0 -0.0 +0 --1 +-1 -+1 1- 1+1 1e+5 1e-5 1e5.0 1ee5 1e--5 "
               "00012 -00012 1e0005 1e-0005 1e00000000000000000000000000000001 "
               "0e99999999999999999999 1e99999999999999999999 1e-99999999999999999999 0.000e999 "
               "4.9406564584124654e-324 2.4703282292062327e-324 2.4703282292062328e-324 "
               "2.2250738585072014e-308 2.2250738585072011e-308 2.225073858507201e-308 "
               "1.7976931348623157e308 1.7976931348623158e308 1.7976931348623159e308 "
               "9007199254740993 9007199254740992.5 9007199254740993.0 "
               "1.00000000000000011102230246251565404236316680908203125 "
               "1.00000000000000011102230246251565404236316680908203124 "
               "1.00000000000000011102230246251565404236316680908203126 0.1 0.3 1e22 1e23 8.5e-323 "
               "123456789012345678901234567890 18446744073709551616 \"1\" #1 1# $1 1% True null 1: "
               "1;2 (1) \xe2\x88\x92"
               "1 1\xc2\xa0 \xff"
               "1 1\xff 1\xe2\x82 \xc2\xb2 1\x01 \x7f "
               "1\x1c"
               "2 \x1f")
        .split(' ');

QList<QByteArray> allNumbers()
{
    QList<QByteArray> all = hostileNumbers;
    all += QByteArray(400, '7');
    all += "0." + QByteArray(400, '7');
    all += "0." + QByteArray(400, '0') + "1";
    all += QByteArray(400, '0') + "1.5";
    all += "1" + QByteArray(400, '0') + "e-400";
    all += "0." + QByteArray(400, '0') + "1e401";
    // The first number is exactly halfway between two doubles. In the second number, the digit
    // after 800 zeros must still decide the rounding.
    all += "9007199254740993." + QByteArray(800, '0');
    all += "9007199254740993." + QByteArray(800, '0') + "1";
    all += QByteArray("1\0", 2);
    all += QByteArray("\0001", 2);
    return all;
}

const QList<QByteArray> blanks = {
    " ",        "  ",   "\t",           "\v",           "\f",
    " \t ",     "\r",   "\r ",          "\xc2\xa0",     "\xe3\x80\x80",
    "\xc2\x85", " \r ", "\xe2\x80\xa8", "\xe2\x80\x8b", "\xef\xbb\xbf"};

const QList<QByteArray> lineEnds = {"\n",   "\n", "\n",   "\r\n", "\r\n",   "\r\r\n",
                                    "\n\n", "\r", "\n\r", " \n",  "\t\r\n", ""};

const QList<QByteArray> firstLines = {"# 1306",     "# 2003901", "# 2003901",   "# 2003901 x",
                                      " # 2003901", "#2003901",  "\r# 2003901", "",
                                      "1 2 3 4",    "# \xff"};

const QList<QByteArray> comments =
    QByteArray(
        "# AXIS 0 a b c d 3|# axis 1 a b c d 2|# AXIS 1 a b c d 2147483647|# AXIS 0 a b c 3|"
        "# AXIS x 1 2 3 4 5 6|# AXIS 0 a b c d -2147483648|# X-NUM 2|# y-num 3|"
        "# X-NUM 99999999999|# X-NUM 65536|# Y-NUM 65536|# ENERGY : 8333.5|"
        "# energy = \xc3\xa9|# ENERGY :|# I0 : 1|# I : 1|# i0 : 0|# I : 0|# I0 : -1|# I : -2|"
        "# I0 : -3|# I : 2147483647|# I0 1 2|# I0 : 1 : 2|# I0 :\t1 |# \xc4\xb1 : 1|#|# |##|"
        "#I0 : 1| # I : 1|\xc2\xa0# X-NUM 4|#\xff\xfe|\r# Y-NUM 5|#\rX-NUM 6|"
        "# X-NUM\xe3\x80\x80"
        "7")
        .split('|');

using Random = std::mt19937;

const QByteArray& anyOf(const QList<QByteArray>& list, Random& random)
{
    return list.at(static_cast<qsizetype>(random() % static_cast<unsigned>(list.size())));
}

QByteArray fuzzDataLine(const QList<QByteArray>& numbers, Random& random)
{
    QByteArray line = random() % 6 == 0 ? anyOf(blanks, random) : QByteArray();
    const auto count = random() % 7;
    for (auto i = count; i > 0; --i) {
        line += random() % 2 == 0 ? anyOf(numbers, random)
                                  : QByteArray::number(static_cast<int>(random() % 100u));
        line += random() % 2 == 0 ? QByteArray(" ") : anyOf(blanks, random);
    }
    return line;
}

QByteArray fuzzFile(const QList<QByteArray>& numbers, Random& random)
{
    QByteArray text = anyOf(firstLines, random) + anyOf(lineEnds, random);
    const auto lines = random() % 12;
    for (auto i = lines; i > 0; --i) {
        text += random() % 3 == 0 ? anyOf(comments, random) : fuzzDataLine(numbers, random);
        text += anyOf(lineEnds, random);
    }
    return text;
}

QByteArray noise(qsizetype size, Random& random)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random() % 256u); });
    return bytes;
}

/// Random bytes in which blanks, digits and line ends are common.
QByteArray textLikeNoise(qsizetype size, Random& random)
{
    static const QByteArray alphabet(
        "0123456789.-+eE#,:IxXn \t\v\f\r\n\n\n\0\xc2\x85\xa0\xe3\x80\xff", 38);
    QByteArray bytes(size, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] {
        return alphabet.at(
            static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size())));
    });
    return bytes;
}

const QByteArray sampleFourColumns =
    "# 1306\n# AXIS 0 x um 0.5 0 1\n# AXIS 1 y um 0.5 0 1\n"
    "# ENERGY : 8333.50 eV\n0 0 1.5e3 2000\n1 0 1.25 -3\n0 1 +1 2 3\n"
    "1 1 0.5\n";
const QByteArray sampleChannels = "# 2003901\r\n# ENERGY : 8350\r\n# I0 : 1\r\n# I : 2\r\n"
                                  "0 0 5 6.25 7\r\n1 0 8 9 1e1\r\n0 1 2 3\r\n0 1 2 3 4\r\n";
const QByteArray sampleNotAscii = "# \xe3\x83\x9e\xe3\x83\x83\xe3\x83\x97\n# X-NUM 2\n# y-num 1\n\n"
                                  "1\xc2\xa0"
                                  "2\xe3\x80\x80"
                                  "3 4\n1 2 \xef\xbc\x93\n nan inf -0 .5 \n";

QByteArray encoded(const QString& text, QStringConverter::Encoding encoding)
{
    QStringEncoder encode(encoding, QStringConverter::Flag::WriteBom);
    return encode(text);
}

} // namespace

class tst_MapTextReaderReference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void hostileNumberInEveryFieldMatchesTheReferenceImplementation_data();
    void hostileNumberInEveryFieldMatchesTheReferenceImplementation();
    void randomNumbersMatchTheReferenceImplementation();
    void whiteSpaceMatchesTheReferenceImplementation();
    void lineEndingsMatchTheReferenceImplementation();
    void linesOfZeroToEightWordsMatchTheReferenceImplementation();
    void byteOrderMarksMatchTheReferenceImplementation_data();
    void byteOrderMarksMatchTheReferenceImplementation();
    void unpairedSurrogatesInWordsMatchTheReferenceImplementation();
    void textTruncatedAtEveryByteMatchesTheReferenceImplementation_data();
    void textTruncatedAtEveryByteMatchesTheReferenceImplementation();
    void randomBytesMatchTheReferenceImplementation();
    void randomTextMatchesTheReferenceImplementation();
    void generatedMapsMatchTheReferenceImplementation();
    void generatedMapsInUtf16MatchTheReferenceImplementation();
    void brokenUtf8AtDecoderBoundariesMatchesTheReferenceImplementation();
    void lineEndAtABlockBoundaryMatchesTheReferenceImplementation();
    void textOfManyBlocksMatchesTheReferenceImplementation();
    void lineOfTwoMegabytesMatchesTheReferenceImplementation_data();
    void lineOfTwoMegabytesMatchesTheReferenceImplementation();
    void longLinesOfOneRepeatedPartMatchTheReferenceImplementation();
    void referenceReaderKeepsTheMapIfTheFileIsMissing();

private:
    /// Describes the difference between the reader and the reference implementation for @p
    /// text; empty if they agree. If @p step is positive, @p text is also read from a device
    /// that delivers at most @p step bytes at a time.
    QString check(const QByteArray& text, qint64 step = 0);

    QTemporaryDir m_dir;
};

void tst_MapTextReaderReference::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
}

QString tst_MapTextReaderReference::check(const QByteArray& text, qint64 step)
{
    const QString path = tests::writeFile(m_dir, QStringLiteral("map.dat"), text);
    Reading reference;
    reference.good = tests::readPlainMap(path, reference.map, collectInto(reference.energies));

    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("no file");
    }
    QString found = difference(reference, readFrom(file));
    if (found.isEmpty() && step > 0) {
        tests::ShortReadDevice device(text, step, true);
        found = difference(reference, readFrom(device));
    }
    return found.isEmpty() ? found
                           : found + QStringLiteral(" differs on ") +
                                 QString::fromLatin1(text.left(400).toPercentEncoding(" #\n:"));
}

#define VERIFY_SAME(...)                                                                           \
    do {                                                                                           \
        const QString found = check(__VA_ARGS__);                                                  \
        QVERIFY2(found.isEmpty(), qPrintable(found));                                              \
    } while (false)

void tst_MapTextReaderReference::hostileNumberInEveryFieldMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("number");
    int i = 0;
    for (const QByteArray& number : allNumbers()) {
        QTest::addRow("%d %s", i++, number.left(30).toPercentEncoding("+,:()").constData())
            << number;
    }
}

void tst_MapTextReaderReference::hostileNumberInEveryFieldMatchesTheReferenceImplementation()
{
    QFETCH(QByteArray, number);
    const QByteArray head = "# X-NUM 1\n# Y-NUM 1\n";
    VERIFY_SAME(head + number + " 1 2 3\n1 " + number + " 2 3\n1 2 " + number + " 3\n1 2 3 " +
                number + "\n1 2 " + number + "\n1 2 3 4 " + number + "\n1 2 " + number);
    VERIFY_SAME("# 2003901\n# I0 : 1\n" + number + " 1 2 3\n1 2 " + number + " " + number + "\r\n");
    VERIFY_SAME("# X-NUM " + number + "\n# Y-NUM 1\n# ENERGY : " + number + "\n1 2 3\n# AXIS " +
                number + " 1 2 3 4 1\n# AXIS 0 1 2 3 4 " + number + "\n");
    VERIFY_SAME("# 2003901\n# I0 : " + number + "\n# I :" + number + "\n1 2 3 4\n");
}

void tst_MapTextReaderReference::randomNumbersMatchTheReferenceImplementation()
{
    // Doubles with random bit patterns, written with a precision of 0 to 19 digits.
    Random random(13061306);
    QByteArray text = "# X-NUM 1\n# Y-NUM 1\n";
    for (int i = 0; i < 20000; ++i) {
        for (int column = 0; column < 4; ++column) {
            const std::uint64_t bits = (std::uint64_t{random()} << 32) | random();
            text += QByteArray::number(std::bit_cast<double>(bits), random() % 2 == 0 ? 'e' : 'g',
                                       static_cast<int>(random() % 20u));
            text += column < 3 ? ' ' : '\n';
        }
    }
    VERIFY_SAME(text);
}

void tst_MapTextReaderReference::whiteSpaceMatchesTheReferenceImplementation()
{
    for (const QByteArray& blank : blanks) {
        VERIFY_SAME("# X-NUM" + blank + "2\n#" + blank + "Y-NUM 1\n" + blank + "# z\n1 2" + blank +
                    "3\n" + blank + "1 2 3" + blank + "\n1 2 3 " + blank + "4\n1 2 3 4" + blank +
                    "5\n1 2 3 4 " + blank + "5\n" + blank + "\n" + blank);
    }
}

void tst_MapTextReaderReference::lineEndingsMatchTheReferenceImplementation()
{
    for (const QByteArray& end : lineEnds) {
        for (const QByteArray& sample : {sampleFourColumns, sampleChannels, sampleNotAscii}) {
            QByteArray text = sample;
            text.replace("\r\n", "\n").replace("\n", end);
            VERIFY_SAME(text);
        }
    }
}

void tst_MapTextReaderReference::linesOfZeroToEightWordsMatchTheReferenceImplementation()
{
    for (int columns = -4; columns < 6; ++columns) {
        QByteArray text = "# 2003901\n# I0 : " + QByteArray::number(columns) + "\n";
        for (int count = 0; count < 9; ++count) {
            text += QByteArray("5 ").repeated(count) + "\n";
        }
        VERIFY_SAME(text);
        VERIFY_SAME(text.replace("I0", "I"));
        VERIFY_SAME(text.replace("2003901", "1306"));
    }
}

void tst_MapTextReaderReference::byteOrderMarksMatchTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("UTF-8") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("UTF-16LE") << QByteArray("\xff\xfe");
    QTest::newRow("UTF-16BE") << QByteArray("\xfe\xff");
    QTest::newRow("UTF-32LE") << QByteArray("\xff\xfe\0\0", 4);
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xfe\xff", 4);
    QTest::newRow("first two bytes of UTF-8") << QByteArray("\xef\xbb");
    QTest::newRow("one byte") << QByteArray("\xff");
    QTest::newRow("UTF-8 twice") << QByteArray("\xef\xbb\xbf\xef\xbb\xbf");
}

void tst_MapTextReaderReference::byteOrderMarksMatchTheReferenceImplementation()
{
    QFETCH(QByteArray, mark);
    VERIFY_SAME(mark);
    VERIFY_SAME(mark + sampleFourColumns);
    VERIFY_SAME(mark + sampleChannels);
    VERIFY_SAME("1 2 3\n" + mark + sampleNotAscii);
    VERIFY_SAME("#\n" + mark + "# X-NUM 2\n" + mark);
}

void tst_MapTextReaderReference::unpairedSurrogatesInWordsMatchTheReferenceImplementation()
{
    const auto sample = [](char16_t unit) {
        return QStringLiteral(
                   "1 2 3 4\n1 2 3 %1\n# X-NUM 2 %1\n#%1 Y-NUM 2\n# Y-NUM 1\n# ENERGY : 5\n")
            .arg(QChar(unit));
    };
    for (const char16_t unit : {u'\xd800', u'\xdc00', u'a'}) {
        VERIFY_SAME(encoded(sample(unit), QStringConverter::Utf16LE));
        VERIFY_SAME(encoded(sample(unit), QStringConverter::Utf16BE));
    }
}

void tst_MapTextReaderReference::textTruncatedAtEveryByteMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("four columns") << sampleFourColumns;
    QTest::newRow("channels, CRLF") << sampleChannels;
    QTest::newRow("not ASCII") << sampleNotAscii;
    QTest::newRow("UTF-16") << encoded(QString::fromUtf8(sampleChannels),
                                       QStringConverter::Utf16LE);
    QTest::newRow("UTF-32") << encoded(QString::fromUtf8(sampleNotAscii),
                                       QStringConverter::Utf32BE);
}

void tst_MapTextReaderReference::textTruncatedAtEveryByteMatchesTheReferenceImplementation()
{
    QFETCH(QByteArray, text);
    for (qsizetype size = 0; size <= text.size(); ++size) {
        VERIFY_SAME(text.left(size));
    }
}

void tst_MapTextReaderReference::randomBytesMatchTheReferenceImplementation()
{
    Random random(390120);
    for (int i = 0; i < 1000; ++i) {
        VERIFY_SAME(noise(1 + static_cast<qsizetype>(random() % 400u), random));
    }
    VERIFY_SAME("# X-NUM 1\n# Y-NUM 1\n1 2 3\n" + noise(1 << 19, random), 1000);
}

void tst_MapTextReaderReference::randomTextMatchesTheReferenceImplementation()
{
    Random random(1306);
    for (int i = 0; i < 2000; ++i) {
        VERIFY_SAME(anyOf(firstLines, random) + "\n" +
                    textLikeNoise(static_cast<qsizetype>(random() % 300u), random));
    }
    VERIFY_SAME(textLikeNoise(1 << 19, random), 1000);
}

void tst_MapTextReaderReference::generatedMapsMatchTheReferenceImplementation()
{
    Random random(20230901);
    const QList<QByteArray> numbers = allNumbers();
    for (int i = 0; i < 4000; ++i) {
        VERIFY_SAME(fuzzFile(numbers, random), 1 + static_cast<qint64>(random() % 7u));
    }
}

void tst_MapTextReaderReference::generatedMapsInUtf16MatchTheReferenceImplementation()
{
    Random random(16);
    const QList<QByteArray> numbers = allNumbers();
    for (int i = 0; i < 500; ++i) {
        QString text = QString::fromUtf8(fuzzFile(numbers, random));
        if (random() % 4 == 0) {
            text.insert(static_cast<qsizetype>(random()) % (text.size() + 1), QChar(u'\xd801'));
        }
        VERIFY_SAME(encoded(text, random() % 2 == 0 ? QStringConverter::Utf16LE
                                                    : QStringConverter::Utf16BE));
    }
}

void tst_MapTextReaderReference::brokenUtf8AtDecoderBoundariesMatchesTheReferenceImplementation()
{
    // A text stream decodes 16384 bytes at a time. An invalid UTF-8 sequence that is split at
    // such a boundary is decoded to other replacement characters than elsewhere in the text.
    const QByteArray broken =
        "\xe2\x82\xac\xf0\x9f\xc3\xe2\xef\xbb\xf0\x9f\x98\x80\xc2\n# \xf0\x9f\n";
    for (const qsizetype pieces : {1, 16}) {
        for (qsizetype shift = 0; shift <= broken.size(); ++shift) {
            const QByteArray pad(pieces * 16384 - shift - 5, 'x');
            VERIFY_SAME("#1 2\n" + pad.chopped(1) + "\n" + broken + "1 2 3\n");
            VERIFY_SAME("#1 2\n#" + pad.chopped(1) + broken + "1 2 3\n");
            VERIFY_SAME("#1 2\n#" + pad.chopped(1) + broken.left(shift));
        }
    }
}

void tst_MapTextReaderReference::lineEndAtABlockBoundaryMatchesTheReferenceImplementation()
{
    const QByteArray line = "# X-NUM 1\r\n1.25 2.5 3.75\r\n\r\n1 \xc3\xa9 4\n";
    for (qsizetype shift = 0; shift <= line.size(); ++shift) {
        const qsizetype size = data::mapTextBlockSize - shift;
        const QByteArray comment = '#' + QByteArray(size - 2, 'x') + '\n';
        VERIFY_SAME(comment + line + line.chopped(1));
        VERIFY_SAME(QByteArray(size, ' ') + line);
    }
    // Line ends around the end of the second block. The second block starts in the middle of a
    // line.
    const QByteArray head = "# Y-NUM 1\n#" + QByteArray(data::mapTextBlockSize, 'x') + '\n';
    for (qsizetype shift = 0; shift <= line.size(); shift += 3) {
        const qsizetype size = 2 * data::mapTextBlockSize - head.size() - shift;
        VERIFY_SAME(head + QByteArray(size, ' ') + line + line);
    }
}

void tst_MapTextReaderReference::textOfManyBlocksMatchesTheReferenceImplementation()
{
    // Lines of different lengths cross the block boundaries at different offsets.
    Random random(8192);
    QByteArray text = "# X-NUM 1\n# Y-NUM 1\n";
    while (text.size() < 6 * data::mapTextBlockSize) {
        const QByteArray number = QByteArray::number(static_cast<int>(random() % 1000u));
        text += "1 2 " + number + ' ' + number + (random() % 2 == 0 ? "\r\n" : "\n");
    }
    VERIFY_SAME(text, 4096);
    VERIFY_SAME(text.insert(3 * data::mapTextBlockSize, "\n# \xc3\xa9\xff\n"));
}

void tst_MapTextReaderReference::lineOfTwoMegabytesMatchesTheReferenceImplementation_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("digits") << QByteArray("1 2 3 ") << QByteArray("7");
    QTest::newRow("blanks") << QByteArray("1 2 3 4") << QByteArray(" ");
    QTest::newRow("broken UTF-8") << QByteArray("1 2 3 ") << QByteArray("\xe2\x82");
    QTest::newRow("comment") << QByteArray("# X-NUM 2 ") << QByteArray("\xc3\xa9");
    QTest::newRow("long words") << QByteArray("# ENERGY : ") << QByteArray("abcdefghijklmno ");
}

void tst_MapTextReaderReference::lineOfTwoMegabytesMatchesTheReferenceImplementation()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, part);
    const QByteArray line = start + part.repeated(2'000'000 / part.size());
    VERIFY_SAME("# X-NUM 1\n# Y-NUM 1\n" + line + "\n1 2 3 4\n");
}

void tst_MapTextReaderReference::longLinesOfOneRepeatedPartMatchTheReferenceImplementation()
{
    for (const QByteArray& part :
         blanks + QList<QByteArray>{"0", ".0", "7 ", "#", QByteArray(1, '\0')}) {
        VERIFY_SAME("1 2 3 0." + part.repeated(100'000) + "4\n# X-NUM 1\n# Y-NUM 1\n");
    }
}

void tst_MapTextReaderReference::referenceReaderKeepsTheMapIfTheFileIsMissing()
{
    Reading reference;
    reference.map.xNum = 7;
    QVERIFY(!tests::readPlainMap(m_dir.filePath(QStringLiteral("none")), reference.map,
                                 collectInto(reference.energies)));
    QCOMPARE(reference.map.xNum, 7);
}

QTEST_APPLESS_MAIN(tst_MapTextReaderReference)
#include "tst_MapTextReaderReference.moc"
