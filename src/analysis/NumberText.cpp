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

/// The texts "000" to "999", the first character in the lowest byte.
constexpr auto threeDigits = [] {
    std::array<std::uint32_t, 1000> texts{};
    for (std::uint32_t n = 0; n < 1000; ++n) {
        texts[n] = 0x303030 + n / 100 + (n / 10 % 10 << 8) + (n % 10 << 16);
    }
    return texts;
}();

/// The significant digits of a number, at most six.
struct Digits {
    std::uint64_t text; ///< six characters, the first digit in the lowest byte
    std::size_t count;  ///< number of digits without trailing zeros
    int exponent;       ///< decimal exponent of the first digit
};

/// The digits of number * 10^(exponent - 5), where @p number has six digits.
Digits digitsOf(std::uint32_t number, int exponent)
{
    constexpr std::uint64_t zeros = 0x303030303030; // the text "000000"
    const std::uint64_t low = threeDigits[number % 1000];
    const std::uint64_t text = threeDigits[number / 1000] | (low << 24);
    const auto bits = static_cast<std::size_t>(std::bit_width(text ^ zeros));
    return {text, (bits + 7) / 8, exponent};
}

// The two functions below write blocks of a fixed size, which is faster than writing the
// exact number of bytes. The surplus bytes are within generalTextCapacity.

std::size_t writeWithExponent(const Digits& digits, char* out)
{
    out[0] = static_cast<char>(digits.text & 0xff);
    out[1] = '.';
    qToLittleEndian(digits.text >> 8, out + 2);
    char* end = out + (digits.count > 1 ? digits.count + 1 : 1);
    *end++ = 'e';
    *end++ = digits.exponent < 0 ? '-' : '+';
    const auto size = static_cast<std::size_t>(std::abs(digits.exponent));
    qToLittleEndian(threeDigits[size] >> 8, end); // the last two digits
    return static_cast<std::size_t>(end + 2 - out);
}

std::size_t writeWithoutExponent(const Digits& digits, char* out)
{
    if (digits.exponent < 0) {
        const auto lead =
            static_cast<std::size_t>(1 - digits.exponent); // length of "0." and the zeros
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

/// writeMagnitude() can scale the magnitudes in [minScalable, maxScalable) by one exact power
/// of ten.
constexpr double minScalable = 1e-16;
constexpr double maxScalable = 1e27;

/// magnitude * 10^power, correctly rounded. |power| must be at most 22: 10^22 is the
/// largest power of ten that is exact as a double.
double scaledBy(double magnitude, int power)
{
    static constexpr std::array<double, 23> powersOfTen = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    return power < 0 ? magnitude / powersOfTen[static_cast<std::size_t>(-power)]
                     : magnitude * powersOfTen[static_cast<std::size_t>(power)];
}

/// Fast path: writes a magnitude in [minScalable, maxScalable), rounded to six digits and
/// without trailing zeros.
///
/// The power of ten is exact and the scaled magnitude is correctly rounded, so its error
/// is at most 10^6 * 2^-53, a ninth of safeDistance.
///
/// @return number of characters; 0 if the fallback must be used, because the scaled
///         magnitude is too close to halfway between two six-digit numbers, or rounds up
///         to seven digits
std::size_t writeMagnitude(double magnitude, char* out)
{
    static_assert(std::numeric_limits<double>::is_iec559);
    constexpr double safeDistance = 1e-9;

    // floor(binary * log10(2)) in fixed point, since log10(2) is about 78913 / 2^18. The
    // result is the decimal exponent of the magnitude, or one less.
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    int exponent = (binary * 78913) >> 18;
    double scaled = scaledBy(magnitude, 5 - exponent);
    if (scaled >= 1e6) {
        ++exponent;
        scaled = scaledBy(magnitude, 5 - exponent);
    }
    const auto number = static_cast<std::uint32_t>(scaled + 0.5);
    const double distance = 0.5 - std::abs(scaled - number);
    if (distance < safeDistance || number == 1'000'000) {
        return 0;
    }
    const Digits digits = digitsOf(number, exponent);
    const bool hasExponent = exponent < -4 || exponent > 5;
    return hasExponent ? writeWithExponent(digits, out) : writeWithoutExponent(digits, out);
}

/// Fallback: formats the number with QString::arg(double).
std::size_t writeWithQString(double value, char* out)
{
    const QByteArray text = QStringLiteral("%1").arg(value).toLatin1();
    const auto length = static_cast<std::size_t>(text.size());
    Q_ASSERT(length <= generalTextLength);
    std::memcpy(out, text.constData(), length);
    return length;
}

} // namespace

std::size_t generalText(double value, std::span<char, generalTextCapacity> out)
{
    if (value == 0.0) {
        out.front() = '0'; // also for -0.0
        return 1;
    }
    const double magnitude = std::abs(value);
    if (magnitude >= minScalable && magnitude < maxScalable) {
        const std::size_t sign = value < 0.0 ? 1 : 0;
        out.front() = '-'; // overwritten if the value is positive
        const std::size_t length = writeMagnitude(magnitude, out.data() + sign);
        if (length > 0) {
            return sign + length;
        }
    }
    return writeWithQString(value, out.data());
}

void appendGeneral(QByteArray& text, double value, int width)
{
    std::array<char, generalTextCapacity> number; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const auto length = static_cast<qsizetype>(generalText(value, number));
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
