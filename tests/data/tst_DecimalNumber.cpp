// The fast path for decimal numbers, compared bit for bit with Qt's conversion.
#include "data/DecimalNumber.h"
#include "data/LineWords.h"
#include "support/SameDouble.h"

#include <QTest>

#include <cmath>
#include <cstdint>
#include <random>

namespace
{

#ifdef __SANITIZE_ADDRESS__
constexpr int randomTexts = 50'000;
#else
constexpr int randomTexts = 300'000;
#endif

using Random = std::mt19937;

int integer(Random& random, int low, int high)
{
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
}

QByteArray digits(int count, Random& random)
{
    QByteArray text(count, '0');
    for (char& digit : text) {
        digit = static_cast<char>(integer(random, '0', '9'));
    }
    return text;
}

/// A random text that resembles a number. Each part (sign, digits, point, exponent) can be
/// missing, there can be two signs, and the point can be before the sign.
QByteArray randomText(Random& random)
{
    static const QByteArrayList signs = {"", "", "", "-", "-", "+", "--", "-+"};
    QByteArray text = signs.at(integer(random, 0, 7));
    text += QByteArray(integer(random, 0, 3) == 0 ? integer(random, 1, 8) : 0, '0');
    text += digits(integer(random, 0, 25), random);
    if (random() % 4 != 0) {
        text.insert(integer(random, 0, static_cast<int>(text.size())), '.');
    }
    if (random() % 8 == 0) {
        text += random() % 2 == 0 ? 'e' : 'E';
        text += signs.at(integer(random, 0, 7));
        text += QByteArray::number(integer(random, 0, 330));
    }
    return text;
}

/// The value of @p word as the only word of a line in a file.
double lineValue(const QByteArray& word)
{
    const QByteArray line = word + '\n';
    data::ByteWords words(line.constData());
    return words.next() ? words.toDouble() : 0.0;
}

/// Whether the fast path accepts all of @p word as a number. Stores the number in @p value.
bool isFast(const QByteArray& word, double& value)
{
    const QByteArray line = word + '\n';
    const char* end = line.constData();
    return data::readDecimal(end, value) && *end == '\n';
}

double qtValue(const QByteArray& word)
{
    return QString::fromLatin1(word).toDouble();
}

/// Whether reading @p word from a line of a file gives the same number as QString::toDouble().
/// If the fast path accepts @p word, its number must also be the same.
bool sameAsQt(const QByteArray& word)
{
    const double expected = qtValue(word);
    double value = 0.0;
    return (!isFast(word, value) || tests::sameDouble(value, expected)) &&
           tests::sameDouble(lineValue(word), expected);
}

} // namespace

class tst_DecimalNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainDecimalsAreReadByTheFastPath_data();
    void plainDecimalsAreReadByTheFastPath();
    void fastPathRejectsNonDecimalsAndLongNumbers_data();
    void fastPathRejectsNonDecimalsAndLongNumbers();
    void readingStopsAfterTheNumber();
    void edgeCaseTextsMatchQtConversion_data();
    void edgeCaseTextsMatchQtConversion();
    void everyDecimalPointPositionMatchesQtConversion();
    void randomTextsMatchQtConversion();
    void randomMantissasMatchQtConversion();
};

void tst_DecimalNumber::plainDecimalsAreReadByTheFastPath_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("zero") << QByteArray("0") << 0.0;
    QTest::newRow("minus zero") << QByteArray("-0") << -0.0;
    QTest::newRow("minus zero with decimals") << QByteArray("-0.00") << -0.0;
    QTest::newRow("whole") << QByteArray("1306") << 1306.0;
    QTest::newRow("decimals") << QByteArray("649.35") << 649.35;
    QTest::newRow("negative") << QByteArray("-12.75") << -12.75;
    QTest::newRow("no digit before the point") << QByteArray(".5") << 0.5;
    QTest::newRow("no digit after the point") << QByteArray("5.") << 5.0;
    QTest::newRow("leading zeros") << QByteArray("00012.50") << 12.5;
    QTest::newRow("2^53") << QByteArray("9007199254740992") << 0x1p53;
    QTest::newRow("nineteen digits") << QByteArray("0.009007199254740992") << 0.009007199254740992;
}

void tst_DecimalNumber::plainDecimalsAreReadByTheFastPath()
{
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    double got = 99.0;
    QVERIFY(isFast(text, got));
    QVERIFY(tests::sameDouble(got, value));
}

void tst_DecimalNumber::fastPathRejectsNonDecimalsAndLongNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char* const text :
         {"", "-", ".", "-.", "+1", "e5", "nan", "inf", "--1", ",5", "9007199254740993",
          "900719925474.0993", "00000000000000000001", "0.0000000000000000001",
          "18446744073709551617", "99999999999999999999999999"}) {
        QTest::newRow(text) << QByteArray(text);
    }
}

void tst_DecimalNumber::fastPathRejectsNonDecimalsAndLongNumbers()
{
    QFETCH(QByteArray, text);
    const QByteArray line = text + '\n';
    const char* end = line.constData();
    double value = 99.0;
    QVERIFY(!data::readDecimal(end, value));
    QVERIFY(end == line.constData());
    QCOMPARE(value, 99.0);
}

void tst_DecimalNumber::readingStopsAfterTheNumber()
{
    for (const char* const rest : {" 1", "e5", ",5", ".5", "x10", "-1", "\r", "\xff"}) {
        const QByteArray line = QByteArray("10.25") + rest + '\n';
        const char* end = line.constData();
        double value = 0.0;
        QVERIFY(data::readDecimal(end, value));
        QCOMPARE(end - line.constData(), 5);
        QCOMPARE(value, 10.25);
    }
}

void tst_DecimalNumber::edgeCaseTextsMatchQtConversion_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char* const text :
         {// Not numbers, but similar to numbers.
          "-", "+", ".", "-.", "+.", "1e", "1e+", "1e-", "-1e", "e1", ".e1", "0x10", "0X1", "1,5",
          "1_0", "1.2.3", "1..2", "1-", "1+1", "--1", "+-1", "1x", "1.5x", "inf", "-inf", "+inf",
          "nan", "-nan", "NaN", "infinity", "1f",
          // Numbers in unusual notation.
          "+1", "+.5", ".5", "5.", "-.5", "-5.", "1.e5", ".5e1", "-0", "-0.0", "-.0", "00012.50",
          "1E5", "1e+5", "1e-5", "-1.5e-5", "1e0005", "0e400", "-0e400",
          // The digits of numbers around 2^53, with and without a decimal point. All integers
          // up to 2^53 are exact as doubles.
          "9007199254740991", "9007199254740992", "9007199254740993", "9007199254740994",
          "9007199254740995", "-9007199254740993", "900719925474099.1", "900719925474099.3",
          "0.9007199254740993", "0.009007199254740993", "9.007199254740993", "9007199254740993.0",
          // Exponents around 22 and -22. The largest power of ten that is exact as a double is
          // 1e22.
          "1e21", "1e22", "1e23", "1e24", "10000000000000000000000", "100000000000000000000000",
          "9007199254740992e22", "9007199254740993e22", "123e22", "123e23", "1e-22", "1e-23",
          "7e-22", "7e-23", "0.0000000000000000000001", "0.00000000000000000000001",
          // Near 2^64 and 2^65, and with about 19 digits, the most that the fast path accepts.
          "999999999999999999", "9999999999999999999", "18446744073709551615",
          "18446744073709551616", "18446744073709551621", "36893488147419103237",
          "0.000000000000000001", "0.0000000000000000001", "0.00000000000000000001",
          // Exactly or nearly halfway between two doubles; 2^53 + 0.5 is a quarter of the way.
          "1.00000000000000011102230246251565404236316680908203125",
          "1.00000000000000011102230246251565404236316680908203126", "9007199254740992.5",
          "4503599627370496.5", "4503599627370497.5",
          // Subnormal numbers, and numbers at the limits of underflow and overflow.
          "4.9406564584124654e-324", "2.4703282292062327e-324", "2.4703282292062328e-324",
          "2.2250738585072011e-308", "2.2250738585072014e-308", "1e-400", "-1e-400",
          "1.7976931348623157e308", "1.7976931348623159e308", "1e309", "-1e309", "1e400"}) {
        QTest::newRow(text) << QByteArray(text);
    }
}

void tst_DecimalNumber::edgeCaseTextsMatchQtConversion()
{
    QFETCH(QByteArray, text);
    QVERIFY(sameAsQt(text));
}

void tst_DecimalNumber::everyDecimalPointPositionMatchesQtConversion()
{
    Random random(13);
    for (int count = 1; count <= 25; ++count) {
        for (int position = 0; position <= count; ++position) {
            const QByteArray text = digits(count, random).insert(position, '.');
            QVERIFY2(sameAsQt(text), text.constData());
            QVERIFY2(sameAsQt("-" + text), text.constData());
        }
    }
}

void tst_DecimalNumber::randomTextsMatchQtConversion()
{
    Random random(20240607);
    int fast = 0;
    for (int i = 0; i < randomTexts; ++i) {
        const QByteArray text = randomText(random);
        double value = 0.0;
        fast += isFast(text, value) ? 1 : 0;
        if (!sameAsQt(text)) {
            QFAIL(text.constData());
        }
    }
    QVERIFY(fast > randomTexts / 4); // otherwise the fast path is hardly tested
}

void tst_DecimalNumber::randomMantissasMatchQtConversion()
{
    // Without their decimal points, the numbers are integers below or slightly above 2^53. Above
    // 2^53 the conversion to double would round the integer before the division, so the result
    // could differ from the result of Qt. The fast path must not accept such a number.
    std::mt19937_64 random(53);
    for (int i = 0; i < randomTexts / 2; ++i) {
        QByteArray text = QByteArray::number(quint64{random() % ((quint64{1} << 53) + 1000)});
        text.insert(static_cast<qsizetype>(random() % static_cast<quint64>(text.size())), '.');
        if (!sameAsQt(text)) {
            QFAIL(text.constData());
        }
    }
}

QTEST_APPLESS_MAIN(tst_DecimalNumber)
#include "tst_DecimalNumber.moc"
