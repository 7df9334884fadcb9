#include "analysis/NumberText.h"

#include <QString>
#include <QtEndian>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
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

/// Writes number * 10^-decimals, the number of six digits, without trailing
/// zeros. Writes eight bytes at a time, which is faster than the exact count;
/// what is too much lies within generalTextRoom.
std::size_t layOut(std::uint32_t number, std::size_t decimals, char* out)
{
    constexpr std::uint64_t zeros = 0x303030303030; // the text "000000"
    const std::uint64_t low = threeDigits[number % 1000];
    const std::uint64_t text = threeDigits[number / 1000] | (low << 24);
    const auto bits = static_cast<std::size_t>(std::bit_width(text ^ zeros));
    const std::size_t count = (bits + 7) / 8; // without trailing zeros
    if (decimals > 5) {
        const std::size_t lead = decimals - 4; // "0." and zeros
        std::memset(out, '0', 5);
        out[1] = '.';
        qToLittleEndian(text, out + lead);
        return lead + count;
    }
    const std::size_t whole = 6 - decimals;
    qToLittleEndian(text, out);
    if (count <= whole) {
        return whole;
    }
    out[whole] = '.';
    qToLittleEndian(text >> (8 * whole), out + whole + 1);
    return count + 1;
}

/// Writes a magnitude from 1e-4 to less than 1e6, rounded to six digits and
/// without trailing zeros. 0, with nothing decided, where it is too close to the
/// middle of two such numbers, and where the rounding carries through all digits.
///
/// The power of ten is exact and the product correctly rounded, so the product
/// is off by no more than 10^6 * 2^-53, a ninth of the distance kept here.
std::size_t writeWithoutExponent(double magnitude, char* out)
{
    static_assert(std::numeric_limits<double>::is_iec559);
    static constexpr std::array<double, 11> powersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5,
                                                           1e6, 1e7, 1e8, 1e9, 1e10};
    constexpr double keptDistance = 1e-9;

    // The decimal exponent of 2^binary, binary * log10(2), is that of the
    // magnitude or one less.
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    auto decimals = static_cast<std::size_t>(5 - ((binary * 78913) >> 18));
    double scaled = magnitude * powersOfTen[decimals];
    if (scaled >= 1e6) {
        --decimals;
        scaled = magnitude * powersOfTen[decimals];
    }
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): halves are refused below
    const auto number = static_cast<std::uint32_t>(scaled + 0.5);
    const double distance = 0.5 - std::abs(scaled - number);
    if (distance < keptDistance || number == 1'000'000) {
        return 0;
    }
    return layOut(number, decimals, out);
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
    if (magnitude >= 1e-4 && magnitude < 1e6) {
        const std::size_t sign = value < 0.0 ? 1 : 0;
        *out = '-'; // overwritten where there is no sign
        const std::size_t length = writeWithoutExponent(magnitude, out + sign);
        if (length > 0) {
            return sign + length;
        }
    }
    return writeByToolkit(value, out);
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
