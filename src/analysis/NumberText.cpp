#include "analysis/NumberText.h"

#include <QString>
#include <QtEndian>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace analysis
{

namespace
{

/// "000" to "999", the first character in the lowest byte.
constexpr auto threeDigits = [] {
    std::array<std::uint32_t, 1000> texts{};
    for (std::uint32_t n = 0; n < 1000; ++n) {
        texts[n] = 0x303030 + n / 100 + (n / 10 % 10 << 8) + (n % 10 << 16);
    }
    return texts;
}();

/// Six digits without trailing zeros, the first one in the lowest byte, and the
/// decimal exponent of the first one.
struct Digits {
    std::uint64_t text;
    std::size_t count;
    int exponent;
};

/// number * 10^(exponent - 5), the number of six digits.
Digits digitsOf(std::uint32_t number, int exponent)
{
    constexpr std::uint64_t zeros = 0x303030303030; // the text "000000"
    const std::uint64_t low = threeDigits[number % 1000];
    const std::uint64_t text = threeDigits[number / 1000] | (low << 24);
    const auto bits = static_cast<std::size_t>(std::bit_width(text ^ zeros));
    return {text, (bits + 7) / 8, exponent};
}

// Both writers below write eight bytes at a time, which is faster than the exact
// count; what is too much lies within generalTextCapacity.

std::size_t writeWithExponent(const Digits& digits, char* out)
{
    out[0] = static_cast<char>(digits.text & 0xff);
    out[1] = '.';
    qToLittleEndian(digits.text >> 8, out + 2);
    char* end = out + (digits.count > 1 ? digits.count + 1 : 1);
    *end++ = 'e';
    *end++ = digits.exponent < 0 ? '-' : '+';
    const auto size = static_cast<std::size_t>(std::abs(digits.exponent));
    qToLittleEndian(threeDigits[size] >> 8, end); // of at most two digits
    return static_cast<std::size_t>(end + 2 - out);
}

std::size_t writeWithoutExponent(const Digits& digits, char* out)
{
    if (digits.exponent < 0) {
        const auto lead = static_cast<std::size_t>(1 - digits.exponent); // "0." and zeros
        std::memcpy(out, "0.000", 5);
        qToLittleEndian(digits.text, out + lead);
        return lead + digits.count;
    }
    const auto whole = static_cast<std::size_t>(digits.exponent + 1);
    qToLittleEndian(digits.text, out);
    if (digits.count <= whole) {
        return whole;
    }
    out[whole] = '.';
    qToLittleEndian(digits.text >> (8 * whole), out + whole + 1);
    return digits.count + 1;
}

/// Magnitudes that writeMagnitude() can scale by one exact power of ten.
constexpr double lowestScaled = 1e-16;
constexpr double highestScaled = 1e27;

/// magnitude * 10^power, correctly rounded; for |power| up to 22, the last power of
/// ten that is a double.
double scaledBy(double magnitude, int power)
{
    static constexpr std::array<double, 23> powersOfTen = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    return power < 0 ? magnitude / powersOfTen[static_cast<std::size_t>(-power)]
                     : magnitude * powersOfTen[static_cast<std::size_t>(power)];
}

/// Writes a magnitude from lowestScaled to less than highestScaled, rounded to six
/// digits and without trailing zeros. 0, with nothing decided, where it is too close
/// to the middle of two such numbers, and where the rounding carries through all
/// digits.
///
/// The power of ten is exact and the scaled magnitude correctly rounded, so it is
/// off by no more than 10^6 * 2^-53, a ninth of the distance kept here.
std::size_t writeMagnitude(double magnitude, char* out)
{
    static_assert(std::numeric_limits<double>::is_iec559);
    constexpr double keptDistance = 1e-9;

    // The decimal exponent of 2^binary, binary * log10(2), is that of the
    // magnitude or one less.
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    int exponent = (binary * 78913) >> 18;
    double scaled = scaledBy(magnitude, 5 - exponent);
    if (scaled >= 1e6) {
        ++exponent;
        scaled = scaledBy(magnitude, 5 - exponent);
    }
    const auto number = static_cast<std::uint32_t>(scaled + 0.5);
    const double distance = 0.5 - std::abs(scaled - number);
    if (distance < keptDistance || number == 1'000'000) {
        return 0;
    }
    const Digits digits = digitsOf(number, exponent);
    const bool hasExponent = exponent < -4 || exponent > 5;
    return hasExponent ? writeWithExponent(digits, out) : writeWithoutExponent(digits, out);
}

std::size_t writeByToolkit(double value, char* out)
{
    const QByteArray text = QStringLiteral("%1").arg(value).toLatin1();
    const auto length = static_cast<std::size_t>(text.size());
    Q_ASSERT(length <= generalTextLength);
    std::memcpy(out, text.constData(), length);
    return length;
}

} // namespace

std::size_t generalText(double value, char* out)
{
    if (value == 0.0) {
        *out = '0'; // of either sign
        return 1;
    }
    const double magnitude = std::abs(value);
    if (magnitude >= lowestScaled && magnitude < highestScaled) {
        const std::size_t sign = value < 0.0 ? 1 : 0;
        *out = '-'; // overwritten where there is no sign
        const std::size_t length = writeMagnitude(magnitude, out + sign);
        if (length > 0) {
            return sign + length;
        }
    }
    return writeByToolkit(value, out);
}

void appendGeneral(QByteArray& text, double value, int width)
{
    std::array<char, generalTextCapacity> number; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const auto length = static_cast<qsizetype>(generalText(value, number.data()));
    if (length < width) {
        text.append(width - length, ' ');
    }
    text.append(number.data(), length);
}

QString signedText(double value)
{
    return QString::asprintf("% 6.3f", value);
}

QString signedTexts(const QList<double>& values)
{
    QStringList texts;
    for (const double value : values) {
        texts.append(signedText(value));
    }
    return texts.join(QStringLiteral(" : "));
}

} // namespace analysis
