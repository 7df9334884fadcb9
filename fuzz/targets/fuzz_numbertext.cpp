// Tests the conversion of numbers to text against Qt's conversion.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"

#include "analysis/NumberText.h"

#include <QString>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace
{

constexpr int maxNumbers = 3;

/// (Integer + @p offset) times a power of ten. With @p offset = 0.5 the result can be the
/// midpoint between two numbers with six significant digits.
double decimal(fuzz::ByteReader& in, double offset)
{
    const double digits = in.number(-1'000'000, 1'000'000) + offset;
    const int power = in.number(-40, 40);
    return power < 0 ? digits / std::pow(10.0, -power) : digits * std::pow(10.0, power);
}

double nextNumber(fuzz::ByteReader& in)
{
    double value = 0.0;
    switch (in.number(0, 4)) {
    case 0:
        value = in.anyDouble();
        break;
    case 1:
        value = decimal(in, 0.0);
        break;
    case 2:
        value = decimal(in, 0.5);
        break;
    case 3:
        value = std::pow(10.0, in.number(-330, 308));
        break;
    default:
        // With the factor 2^0 = 1 the value is exactly midway between two six-digit numbers.
        value = (in.number(100'000, 999'999) + 0.5) * std::ldexp(1.0, in.number(0, 4));
        break;
    }
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const int steps = in.number(-3, 3);
    for (int i = 0; i < std::abs(steps); ++i) {
        value = std::nextafter(value, steps < 0 ? -infinity : infinity);
    }
    return value;
}

void checkGeneralText(double value)
{
    // A buffer of exactly the required size, so that a sanitizer detects writes past its
    // end.
    const auto out = std::make_unique<char[]>(analysis::generalTextCapacity);
    const std::size_t length = analysis::generalText(
        value,
        std::span<char, analysis::generalTextCapacity>(out.get(), analysis::generalTextCapacity));
    FUZZ_REQUIRE(length > 0 && length <= analysis::generalTextLength);
    const QByteArray wanted = QStringLiteral("%1").arg(value).toLatin1();
    FUZZ_REQUIRE(QByteArrayView(out.get(), static_cast<qsizetype>(length)) == wanted);
}

void checkAppendGeneral(double value, int width)
{
    QByteArray text("before ");
    analysis::appendGeneral(text, value, width);
    FUZZ_REQUIRE(text ==
                 "before " +
                     QStringLiteral("%1").arg(value, width, 'g', -1, QLatin1Char(' ')).toLatin1());
}

void checkSignedText(double value)
{
    const QString text = analysis::signedText(value);
    FUZZ_REQUIRE(text == QString::asprintf("% 6.3f", value));
    FUZZ_REQUIRE(text.size() >= 6 || !std::isfinite(value));
    if (std::isfinite(value)) {
        FUZZ_REQUIRE(text.size() == analysis::signedText(-value).size());
        FUZZ_REQUIRE(std::abs(text.toDouble() - value) <= 0.0005000001 || std::abs(value) > 1e9);
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    QList<double> values;
    while (!in.atEnd() && values.size() < maxNumbers) {
        const double value = nextNumber(in);
        checkGeneralText(value);
        checkGeneralText(-value);
        checkAppendGeneral(value, in.number(0, 24));
        checkSignedText(value);
        values.append(value);
    }
    const QStringList parts = analysis::signedTexts(values).split(QStringLiteral(" : "));
    for (qsizetype i = 0; i < values.size(); ++i) {
        FUZZ_REQUIRE(parts.at(i) == analysis::signedText(values.at(i)));
    }
}
