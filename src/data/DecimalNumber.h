// Fast, correctly rounded conversion of short decimal numbers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace data
{

/// Value of a decimal digit; 10 or more for any other character.
inline unsigned digitValue(char c)
{
    return static_cast<unsigned char>(c) - unsigned{'0'};
}

/// Reads a number such as "-12.75" by the fast path of Clinger (1990) and moves
/// @p text to the character after it.
///
/// The number can have a minus sign and a decimal point, but no exponent. It can have at
/// most 19 digits, and its digits without the point, read as an integer, must not exceed
/// 2^53. This integer and the power of ten are then exact as doubles, so one correctly
/// rounded division yields the nearest double, which QString::toDouble also returns.
///
/// @param text  must contain, after the number, a character that cannot be part of a
///              number, such as a line feed
/// @return whether @p text starts with such a number. The caller must check the
///         character after it, which can be the start of an exponent. On false,
///         @p text and @p value are unchanged
inline bool readDecimal(const char*& text, double& value)
{
    static_assert(std::numeric_limits<double>::is_iec559);
    constexpr std::uint64_t largestExact = std::uint64_t{1} << 53;
    constexpr std::size_t maxDigits = 19; // more can overflow 64 bits
    static constexpr std::array<double, maxDigits + 1> powersOfTen = {
        1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
        1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

    const bool isNegative = *text == '-';
    std::uint64_t number = 0; // can wrap around after maxDigits; such numbers are refused below
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
    if (digits == 0 || digits > maxDigits || number > largestExact) {
        return false;
    }
    const double magnitude =
        static_cast<double>(static_cast<std::int64_t>(number)) / powersOfTen[decimals];
    value = isNegative ? -magnitude : magnitude;
    text = end;
    return true;
}

} // namespace data
