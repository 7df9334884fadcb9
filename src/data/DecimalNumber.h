// Short decimal numbers read from text, exactly.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace data
{

/// The value of a decimal digit; 10 or more for any other character.
inline unsigned digitValue(char c)
{
    return static_cast<unsigned char>(c) - unsigned{'0'};
}

/// Reads a number such as "-12.75" by Clinger's fast path and moves @p text
/// behind it. The number may have a minus sign and a point, at most 19 digits,
/// and no exponent; its digits without the point may be at most 2^53.
///
/// Differs from the general conversion in that it looks at each digit once and
/// rounds once. That is allowed because the digits as a whole number and the
/// power of ten are both exact doubles, so that one division, correctly rounded,
/// gives the nearest double, as QString::toDouble does.
///
/// @param text  text whose last character, such as a line feed, ends any number
/// @return whether @p text begins with such a number; what follows it, an
///         exponent for one, is left to the caller. On false @p text and
///         @p value are as before.
inline bool readDecimal(const char*& text, double& value)
{
    static_assert(std::numeric_limits<double>::is_iec559);
    constexpr std::uint64_t largestExact = std::uint64_t{1} << 53;
    constexpr std::size_t mostDigits = 19; // more may not fit 64 bits
    static constexpr std::array<double, mostDigits + 1> powersOfTen = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
        1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

    const bool isNegative = *text == '-';
    std::uint64_t number = 0; // wraps around beyond mostDigits
    const auto skipDigits = [&number](const char* next) {
#pragma GCC unroll 4
        for (; digitValue(*next) < 10; ++next) {
            number = 10 * number + digitValue(*next);
        }
        return next;
    };
    const char* const begin = text + (isNegative ? 1 : 0);
    const char* end = skipDigits(begin);
    auto digits = static_cast<std::size_t>(end - begin);
    std::size_t decimals = 0;
    if (*end == '.') {
        const char* const firstDecimal = end + 1;
        end = skipDigits(firstDecimal);
        decimals = static_cast<std::size_t>(end - firstDecimal);
        digits += decimals;
    }
    if (digits == 0 || digits > mostDigits || number > largestExact) {
        return false;
    }
    const double magnitude =
        static_cast<double>(static_cast<std::int64_t>(number)) / powersOfTen[decimals];
    value = isNegative ? -magnitude : magnitude;
    text = end;
    return true;
}

} // namespace data
