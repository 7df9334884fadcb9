// Formatting of numbers as text. The general format is compared with QString::arg().
#include "analysis/NumberText.h"

#include <QTest>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace
{

/// The slow builds with AddressSanitizer test only a tenth of the random numbers: they are
/// meant to check memory accesses, and the other builds check the digits.
#ifdef __SANITIZE_ADDRESS__
constexpr int reduction = 10;
#else
constexpr int reduction = 1;
#endif

using Random = std::mt19937_64;
using Draw = double (*)(Random&);

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QByteArray textOf(double value)
{
    std::array<char, analysis::generalTextCapacity> buffer;
    const std::size_t length = analysis::generalText(value, buffer);
    return QByteArray(buffer.data(), static_cast<qsizetype>(length));
}

/// Whether the text in a field of 10 characters equals Qt's text.
bool sameAsQt(double value)
{
    static const QString format = QStringLiteral("%1");
    static QByteArray text; // keeps its allocation between calls
    text.resize(0);
    analysis::appendGeneral(text, value, 10);
    return format.arg(value, 10, 'g', -1, QLatin1Char(' ')) == QLatin1String(text);
}

QByteArray failureText(double value)
{
    return QByteArray::number(value, 'g', 17) + " reads " + textOf(value);
}

double uniform(Random& random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

int integer(Random& random, int low, int high)
{
    return low + static_cast<int>(random() % static_cast<std::uint64_t>(high - low + 1));
}

double anyBits(Random& random)
{
    return std::bit_cast<double>(random());
}

double zeroToTen(Random& random)
{
    return uniform(random, 0.0, 10.0);
}

double moderateMagnitude(Random& random)
{
    return std::ldexp(uniform(random, -2.0, 2.0), integer(random, -80, 110));
}

/// An integer divided by a power of two. Some of these numbers are exactly halfway between two
/// numbers of six significant digits.
double dyadic(Random& random)
{
    return std::ldexp(integer(random, -20'000'000, 20'000'000), -integer(random, 0, 24));
}

/// A double that equals or almost equals a number with seven significant digits, the last of
/// which is 5.
double sevenDigitsEndingInFive(Random& random)
{
    const double digits = 10.0 * integer(random, 100'000, 999'999) + 5.0;
    const int power = integer(random, -28, 28);
    const double value =
        power < 0 ? digits / std::pow(10.0, -power) : digits * std::pow(10.0, power);
    const int step = integer(random, -1, 1);
    return step == 0 ? value : std::nextafter(value, step * inf);
}

/// A number (n + 1/2 + d) / 10^k, where n has six digits, so it is nearly halfway between two
/// numbers of six significant digits. The bound of |d| is chosen at random from 2^-36 to 2^-24.
/// This range includes the safety margin of the fast path, 1e-9 (about 2^-30).
double closeToHalfway(Random& random)
{
    const double half = integer(random, 100'000, 999'999) + 0.5;
    const double distance = std::ldexp(uniform(random, -1.0, 1.0), -integer(random, 24, 36));
    return (half + distance) / std::pow(10.0, integer(random, 0, 9));
}

double wholeNumber(Random& random)
{
    return std::floor(std::ldexp(uniform(random, -1.0, 1.0), integer(random, 1, 64)));
}

double subnormal(Random& random)
{
    return std::bit_cast<double>(random() >> integer(random, 12, 63));
}

double powerOfTenOrNeighbour(Random& random)
{
    const QByteArray text = "1e" + QByteArray::number(integer(random, -323, 308));
    const double value = text.toDouble();
    const int step = integer(random, -1, 1);
    return step == 0 ? value : std::nextafter(value, step * inf);
}

} // namespace

Q_DECLARE_METATYPE(Draw)

class tst_NumberText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textFollowsTheGeneralFormat_data();
    void textFollowsTheGeneralFormat();
    void numbersAtFormatAndRoundingLimitsMatchQt_data();
    void numbersAtFormatAndRoundingLimitsMatchQt();
    void powersOfTenAndTheirNeighboursMatchQt();
    void powersOfTwoMatchQt();
    void randomNumbersMatchQt_data();
    void randomNumbersMatchQt();
    void shortTextIsRightAligned();
    void textLongerThanTheWidthKeepsItsDigits();
    void appendingKeepsEarlierText();
    void signedTextStartsWithABlankOrAMinusSign_data();
    void signedTextStartsWithABlankOrAMinusSign();
    void severalNumbersAreSeparatedByColons();
};

// The expected texts are derived by hand from the rules of the general format ("%g").
void tst_NumberText::textFollowsTheGeneralFormat_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zero") << 0.0 << QByteArray("0");
    QTest::newRow("minus zero has no sign") << -0.0 << QByteArray("0");
    QTest::newRow("NaN") << notANumber << QByteArray("nan");
    QTest::newRow("NaN of negative sign") << std::copysign(notANumber, -1.0) << QByteArray("nan");
    QTest::newRow("infinity") << inf << QByteArray("inf");
    QTest::newRow("minus infinity") << -inf << QByteArray("-inf");
    QTest::newRow("one") << 1.0 << QByteArray("1");
    QTest::newRow("no decimals") << 8300.0 << QByteArray("8300");
    QTest::newRow("rounded to six digits") << 3.14159265 << QByteArray("3.14159");
    QTest::newRow("negative") << -0.25 << QByteArray("-0.25");
    QTest::newRow("largest integer without exponent") << 999999.0 << QByteArray("999999");
    QTest::newRow("smallest integer with exponent") << 1e6 << QByteArray("1e+06");
    QTest::newRow("exponent and digits") << 1234567.0 << QByteArray("1.23457e+06");
    QTest::newRow("smallest without exponent") << 0.0001 << QByteArray("0.0001");
    QTest::newRow("six digits without exponent") << 0.000123456 << QByteArray("0.000123456");
    QTest::newRow("small number with exponent") << 0.00001 << QByteArray("1e-05");
    QTest::newRow("exact half is rounded up") << 123456.5 << QByteArray("123457");
    QTest::newRow("exact half is rounded away from zero") << -123456.5 << QByteArray("-123457");
    QTest::newRow("exact half after an even digit") << 1.015625 << QByteArray("1.01563");
    QTest::newRow("exact half of a large number") << 1234565.0 << QByteArray("1.23457e+06");
    QTest::newRow("carry through all digits") << 999999.5 << QByteArray("1e+06");
    QTest::newRow("just below the carry") << 999999.49 << QByteArray("999999");
    QTest::newRow("carry to one") << 0.99999951 << QByteArray("1");
    QTest::newRow("carry removes the exponent") << 9.999996e-5 << QByteArray("0.0001");
    QTest::newRow("three-digit exponent") << -1.2345678e-100 << QByteArray("-1.23457e-100");
    QTest::newRow("largest") << 1.7976931348623157e308 << QByteArray("1.79769e+308");
    QTest::newRow("smallest subnormal") << 5e-324 << QByteArray("4.94066e-324");
}

void tst_NumberText::textFollowsTheGeneralFormat()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    QCOMPARE(textOf(value), text);
    QCOMPARE(QStringLiteral("%1").arg(value).toLatin1(), text);
    QVERIFY(sameAsQt(value));
}

void tst_NumberText::numbersAtFormatAndRoundingLimitsMatchQt_data()
{
    QTest::addColumn<double>("value");
    // Numbers near 1e-4 and 1e6, the limits of the notation without exponent, and very large
    // and very small doubles.
    QTest::newRow("1e-4") << 1e-4;
    QTest::newRow("rounds to 1e-4") << 9.9999995e-5;
    QTest::newRow("2^-14") << 0x1p-14;
    QTest::newRow("2^-13") << 0x1p-13;
    QTest::newRow("999998.5") << 999998.5;
    QTest::newRow("999999") << 999999.0;
    QTest::newRow("999999.5") << 999999.5;
    QTest::newRow("1e6") << 1e6;
    QTest::newRow("2^106") << 0x1p106;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("smallest normal") << std::numeric_limits<double>::min();
    QTest::newRow("largest subnormal") << std::nextafter(std::numeric_limits<double>::min(), 0.0);
    // Decimal numbers that are not exactly representable: the nearest double is above some of
    // them and below others. All except 2.5e-5 are halfway between two six-digit numbers.
    QTest::newRow("0.1234565") << 0.1234565;
    QTest::newRow("0.1234575") << 0.1234575;
    QTest::newRow("1.000005") << 1.000005;
    QTest::newRow("2.000015") << 2.000015;
    QTest::newRow("99999.95") << 99999.95;
    QTest::newRow("0.9999995") << 0.9999995;
    QTest::newRow("9.999995") << 9.999995;
    QTest::newRow("2.5e-5") << 2.5e-5;
    QTest::newRow("0.0002000005") << 0.0002000005;
    QTest::newRow("0.001234565") << 0.001234565;
    // Exactly representable numbers. All except 0.5 and 10000005 are halfway between two
    // six-digit numbers.
    QTest::newRow("0.5") << 0.5;
    QTest::newRow("1000005") << 1000005.0;
    QTest::newRow("100000.5") << 100000.5;
    QTest::newRow("10000.25") << 10000.25;
    QTest::newRow("12345.75") << 12345.75;
    QTest::newRow("10000005") << 10000005.0;
    QTest::newRow("12345650") << 12345650.0;
    // Large numbers halfway between two six-digit numbers. They are not exactly representable:
    // the nearest double is below the first number and above the second.
    QTest::newRow("1000005e15") << 1000005e15;
    QTest::newRow("9999995e15") << 9999995e15;
}

void tst_NumberText::numbersAtFormatAndRoundingLimitsMatchQt()
{
    QFETCH(double, value);
    for (const double each : {value, std::nextafter(value, inf), std::nextafter(value, -inf)}) {
        QVERIFY2(sameAsQt(each), failureText(each).constData());
        QVERIFY2(sameAsQt(-each), failureText(-each).constData());
    }
}

void tst_NumberText::powersOfTenAndTheirNeighboursMatchQt()
{
    for (int power = -324; power <= 308; ++power) {
        const double value = QByteArray("1e" + QByteArray::number(power)).toDouble();
        for (const double each : {value, std::nextafter(value, inf), std::nextafter(value, -inf)}) {
            QVERIFY2(sameAsQt(each), failureText(each).constData());
        }
    }
}

void tst_NumberText::powersOfTwoMatchQt()
{
    for (int power = -1074; power <= 1023; ++power) {
        const double value = std::ldexp(1.0, power);
        QVERIFY2(sameAsQt(value), failureText(value).constData());
    }
}

void tst_NumberText::randomNumbersMatchQt_data()
{
    QTest::addColumn<Draw>("draw");
    QTest::addColumn<int>("count");
    QTest::newRow("any bits") << Draw{anyBits} << 100'000;
    QTest::newRow("0 to 10") << Draw{zeroToTen} << 600'000;
    QTest::newRow("about 2^-80 to 2^111") << Draw{moderateMagnitude} << 400'000;
    QTest::newRow("few binary digits") << Draw{dyadic} << 300'000;
    QTest::newRow("seven digits ending in 5") << Draw{sevenDigitsEndingInFive} << 400'000;
    QTest::newRow("close to halfway") << Draw{closeToHalfway} << 400'000;
    QTest::newRow("whole numbers") << Draw{wholeNumber} << 100'000;
    QTest::newRow("subnormal") << Draw{subnormal} << 50'000;
    QTest::newRow("powers of ten") << Draw{powerOfTenOrNeighbour} << 50'000;
}

void tst_NumberText::randomNumbersMatchQt()
{
    QFETCH(Draw, draw);
    QFETCH(int, count);
    Random random(20240607);
    for (int i = 0; i < count / reduction; ++i) {
        const double value = draw(random);
        if (!sameAsQt(value)) {
            QFAIL(failureText(value).constData());
        }
    }
}

void tst_NumberText::shortTextIsRightAligned()
{
    QByteArray text;
    analysis::appendGeneral(text, 8.5, 10);
    QCOMPARE(text, QByteArray("       8.5"));
}

void tst_NumberText::textLongerThanTheWidthKeepsItsDigits()
{
    QByteArray text;
    analysis::appendGeneral(text, -1.23456e-5, 10);
    QCOMPARE(text, QByteArray("-1.23456e-05"));
    text.clear();
    analysis::appendGeneral(text, 2.5, 0);
    QCOMPARE(text, QByteArray("2.5"));
}

void tst_NumberText::appendingKeepsEarlierText()
{
    QByteArray text("x=");
    analysis::appendGeneral(text, 1.5, 4);
    QCOMPARE(text, QByteArray("x= 1.5"));
}

void tst_NumberText::signedTextStartsWithABlankOrAMinusSign_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("positive") << 0.25 << " 0.250";
    QTest::newRow("negative") << -0.25 << "-0.250";
    QTest::newRow("third decimal rounded") << 2.64951 << " 2.650";
    QTest::newRow("five digits before the point") << 12345.5 << " 12345.500";
    QTest::newRow("negative, five digits before the point") << -12345.5 << "-12345.500";
}

void tst_NumberText::signedTextStartsWithABlankOrAMinusSign()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(analysis::signedText(value), text);
}

void tst_NumberText::severalNumbersAreSeparatedByColons()
{
    QCOMPARE(analysis::signedTexts({}), QString());
    QCOMPARE(analysis::signedTexts({1}), " 1.000");
    QCOMPARE(analysis::signedTexts({0.5, -0.5, 1}), " 0.500 : -0.500 :  1.000");
}

QTEST_GUILESS_MAIN(tst_NumberText)
#include "tst_NumberText.moc"
