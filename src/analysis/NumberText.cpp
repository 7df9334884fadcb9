#include "analysis/NumberText.h"

#include <QString>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

namespace analysis
{

namespace
{

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == sizeof(std::uint64_t));

__extension__ typedef unsigned __int128 UInt128; // NOLINT(modernize-use-using)

/// 10^k as mantissa * 2^exponent, the mantissa's top bit set. Exact for k >= 0;
/// for k < 0 the mantissa is cut off, so it is too small by less than 1.
struct PowerOfTen {
    std::uint64_t mantissa = 0;
    int exponent = 0;
};

/// 5^27 is the last power of five that fits the mantissa.
constexpr int lastPower = 27;

constexpr PowerOfTen powerOfTen(int k)
{
    std::uint64_t five = 1;
    for (int i = 0; i < (k < 0 ? -k : k); ++i) {
        five *= 5;
    }
    const int lead = std::countl_zero(five);
    if (k >= 0) {
        return {five << lead, k - lead};
    }
    const int numerator = 127 - lead;
    return {static_cast<std::uint64_t>((UInt128{1} << numerator) / five), k - numerator};
}

/// Where 10^k stands in the table.
constexpr std::size_t powerIndex(int k)
{
    const int index = k + lastPower;
    return static_cast<std::size_t>(index);
}

/// 10^-lastPower to 10^lastPower.
constexpr auto powersOfTen = [] {
    std::array<PowerOfTen, 2 * lastPower + 1> powers;
    for (int k = -lastPower; k <= lastPower; ++k) {
        powers[powerIndex(k)] = powerOfTen(k);
    }
    return powers;
}();

/// "000" to "999", each in four bytes.
constexpr auto threeDigits = [] {
    std::array<char, 4000> text{};
    for (std::size_t n = 0; n < 1000; ++n) {
        text[4 * n] = static_cast<char>('0' + n / 100);
        text[4 * n + 1] = static_cast<char>('0' + n / 10 % 10);
        text[4 * n + 2] = static_cast<char>('0' + n % 10);
    }
    return text;
}();

/// number * 10^(exponent - 5), the number from 100000 to 999999.
struct SixDigits {
    std::uint32_t number = 0;
    int exponent = 0;
};

/// Binary exponents for which every power of ten that may be asked for is in
/// the table: magnitudes from 1.06e-22 up to 8.1e31.
constexpr int lowestBinary = -73;
constexpr int highestBinary = 105;

/// floor(binary * log10(2)), for |binary| up to 1650.
constexpr int decimalExponentBelow(int binary)
{
    return (binary * 78913) >> 18;
}
static_assert(decimalExponentBelow(lowestBinary) >= 5 - lastPower);
static_assert(decimalExponentBelow(highestBinary) + 1 <= 5 + lastPower);

/// A magnitude times a power of ten: the upper half of a 128-bit product, whose
/// lowest @c fractionBits bits are the fraction.
struct Scaled {
    std::uint64_t high = 0;
    int fractionBits = 0;

    std::uint64_t whole() const { return high >> fractionBits; }
};

/// mantissa * 2^(binary - 63) * 10^(5 - exponent). Since 10^exponent is below
/// the magnitude and at most a factor of 20 away from it, the whole part has 17
/// to 21 bits and the fraction 41 to 48.
Scaled scale(std::uint64_t mantissa, int binary, int exponent)
{
    const PowerOfTen& power = powersOfTen[powerIndex(5 - exponent)];
    const UInt128 product = UInt128{mantissa} * power.mantissa;
    return {static_cast<std::uint64_t>(product >> 64), -(binary + power.exponent + 1)};
}

/// Rounds a magnitude, given by its bits, to six digits; exact halves go up.
/// nullopt where this arithmetic cannot tell.
///
/// With an exact power of ten the product is exact, and the bits below `high`
/// cannot make a fraction less than a half into one. With a power that was cut
/// off, the true product is larger by less than one unit of `high`: the only
/// fraction that may or may not reach the half is the one just below it.
std::optional<SixDigits> roundToSixDigits(std::uint64_t bits)
{
    const int binary = static_cast<int>(bits >> 52) - 1023;
    if (binary < lowestBinary || binary > highestBinary) {
        return std::nullopt;
    }
    const std::uint64_t mantissa = (bits << 11) | (std::uint64_t{1} << 63);
    int exponent = decimalExponentBelow(binary);
    Scaled scaled = scale(mantissa, binary, exponent);
    if (scaled.whole() >= 1'000'000) {
        ++exponent;
        scaled = scale(mantissa, binary, exponent);
    }
    const std::uint64_t half = std::uint64_t{1} << (scaled.fractionBits - 1);
    const std::uint64_t fraction = scaled.high & (2 * half - 1);
    if (fraction == half - 1 && exponent > 5) {
        return std::nullopt;
    }
    const auto number = static_cast<std::uint32_t>(scaled.whole() + (fraction >= half ? 1 : 0));
    if (number == 1'000'000) {
        return SixDigits{100'000, exponent + 1};
    }
    return SixDigits{number, exponent};
}

/// Lays @p count digits out as d.ddde+dd; the exponent is of at most two digits.
std::size_t layOutWithExponent(const char* digits, std::size_t count, int exponent, char* out)
{
    std::size_t length = 0;
    out[length++] = digits[0];
    if (count > 1) {
        out[length++] = '.';
        std::memcpy(out + length, digits + 1, 8);
        length += count - 1;
    }
    const auto power = static_cast<std::size_t>(exponent < 0 ? -exponent : exponent);
    out[length++] = 'e';
    out[length++] = exponent < 0 ? '-' : '+';
    std::memcpy(out + length, threeDigits.data() + 4 * power + 1, 2);
    return length + 2;
}

/// Writes the digits without trailing zeros, with an exponent below 1e-4 and
/// from 1e6 on. Copies are of fixed length, which is faster than of the exact
/// one; what is too much lies within generalTextRoom and is not counted.
std::size_t layOut(SixDigits value, char* out)
{
    std::array<char, 16> digits{};
    std::memcpy(digits.data(), threeDigits.data() + std::size_t{4} * (value.number / 1000), 4);
    std::memcpy(digits.data() + 3, threeDigits.data() + std::size_t{4} * (value.number % 1000), 4);
    std::size_t count = 6;
    while (digits[count - 1] == '0') { // the first digit is none
        --count;
    }
    if (value.exponent < -4 || value.exponent > 5) {
        return layOutWithExponent(digits.data(), count, value.exponent, out);
    }
    if (value.exponent < 0) {
        const int zeros = -1 - value.exponent;
        const std::size_t lead = 2 + static_cast<std::size_t>(zeros);
        std::memset(out, '0', 5);
        out[1] = '.';
        std::memcpy(out + lead, digits.data(), 8);
        return lead + count;
    }
    const std::size_t whole = 1 + static_cast<std::size_t>(value.exponent);
    std::memcpy(out, digits.data(), 8);
    if (count <= whole) {
        return whole;
    }
    out[whole] = '.';
    std::memcpy(out + whole + 1, digits.data() + whole, 8);
    return count + 1;
}

/// The road that the other ones must equal. Taken where it is needed: for
/// magnitudes far from 1, NaN, infinity, and a few exact halves.
std::size_t textOfToolkit(double value, char* out)
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
    const auto magnitude = std::bit_cast<std::uint64_t>(value) & ~(std::uint64_t{1} << 63);
    const std::optional<SixDigits> rounded = roundToSixDigits(magnitude);
    if (!rounded) {
        return textOfToolkit(value, out);
    }
    const std::size_t sign = value < 0.0 ? 1 : 0;
    *out = '-'; // overwritten where there is no sign
    return sign + layOut(*rounded, out + sign);
}

void appendGeneral(QByteArray& text, double value, int width)
{
    std::array<char, generalTextRoom> number; // NOLINT(cppcoreguidelines-pro-type-member-init)
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
