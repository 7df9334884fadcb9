// Random numbers and maps, including NaN, infinite, huge and denormal values, and functions
// that compare and copy maps.
#pragma once

#include "data/A2DData.h"
#include "support/SameDouble.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <limits>
#include <random>

namespace tests
{

inline constexpr std::array<double, 16> specialNumbers{0.0,
                                                       -0.0,
                                                       1.0,
                                                       -1.0,
                                                       0.1,
                                                       -2.5,
                                                       std::numeric_limits<double>::quiet_NaN(),
                                                       -std::numeric_limits<double>::quiet_NaN(),
                                                       std::numeric_limits<double>::infinity(),
                                                       -std::numeric_limits<double>::infinity(),
                                                       std::numeric_limits<double>::max(),
                                                       std::numeric_limits<double>::lowest(),
                                                       std::numeric_limits<double>::min(),
                                                       std::numeric_limits<double>::denorm_min(),
                                                       1e300,
                                                       -1e-300};

/// The special values that numberOf() mixes with ordinary random numbers: no special
/// values (Random), 1 (Singular, so that linear systems can be singular), +-0 (Zero),
/// +-infinity (Infinite), NaN, or any of specialNumbers (Odd).
enum class Kind { Random, Singular, Zero, Infinite, NaN, Odd };

inline constexpr std::array<Kind, 6> allKinds{Kind::Random,   Kind::Singular, Kind::Zero,
                                              Kind::Infinite, Kind::NaN,      Kind::Odd};

inline const char* nameOf(Kind kind)
{
    constexpr std::array<const char*, 6> names{"random",   "singular", "zero",
                                               "infinite", "NaN",      "odd"};
    return names[static_cast<std::size_t>(kind)];
}

/// A random integer from @p low to @p high, both included.
inline int wholeNumber(std::mt19937_64& random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

/// True with probability 1 / @p rounds.
inline bool onceIn(std::mt19937_64& random, int rounds)
{
    return wholeNumber(random, 1, rounds) == 1;
}

/// An ordinary number or, with probability 1/5, a special value of @p kind.
inline double numberOf(Kind kind, std::mt19937_64& random)
{
    const double ordinary = std::uniform_real_distribution<double>(-0.5, 2.5)(random);
    if (!onceIn(random, 5)) {
        return ordinary;
    }
    switch (kind) {
    case Kind::Random:
        break;
    case Kind::Singular:
        return 1.0;
    case Kind::Zero:
        return onceIn(random, 2) ? 0.0 : -0.0;
    case Kind::Infinite:
        return onceIn(random, 2) ? specialNumbers[8] : specialNumbers[9];
    case Kind::NaN:
        return specialNumbers[6];
    case Kind::Odd:
        return specialNumbers[random() % specialNumbers.size()];
    }
    return ordinary;
}

/// A random map pixel. In one of three cases I0 is 0, so the intensity field stores the
/// absorbance; otherwise intensity and I0 are both random.
inline A2DRow rowOf(Kind kind, std::mt19937_64& random)
{
    const bool isReady = onceIn(random, 3);
    return {numberOf(kind, random),
            numberOf(kind, random),
            numberOf(kind, random),
            isReady ? 0.0 : numberOf(kind, random),
            {}};
}

/// A random map whose size fields are @p width and @p height and which has @p rows pixels.
/// The number of pixels can differ from @p width * @p height.
inline A2DData mapOf(Kind kind, int width, int height, int rows, std::mt19937_64& random)
{
    A2DData map;
    map.xNum = width;
    map.yNum = height;
    for (int i = 0; i < rows; ++i) {
        map.rows.append(rowOf(kind, random));
    }
    map.headerLines = QStringList{QStringLiteral("# %1").arg(random())};
    return map;
}

inline bool sameNumbers(const QList<double>& a, const QList<double>& b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), sameDouble);
}

/// Describes the first difference between @p a and @p b; empty if there is none. Compares
/// numbers by sameDouble().
inline QString differenceOf(const A2DData& a, const A2DData& b)
{
    if (a.xNum != b.xNum || a.yNum != b.yNum || a.extended != b.extended ||
        a.headerLines != b.headerLines || a.rows.size() != b.rows.size()) {
        return QStringLiteral("size, comment lines or extended");
    }
    for (qsizetype i = 0; i < a.rows.size(); ++i) {
        const A2DRow& p = a.rows.at(i);
        const A2DRow& q = b.rows.at(i);
        if (!sameDouble(p.x, q.x) || !sameDouble(p.y, q.y)) {
            return QStringLiteral("coordinates of pixel %1").arg(i);
        }
        if (!sameDouble(p.intensity, q.intensity) || !sameDouble(p.i0, q.i0)) {
            return QStringLiteral("intensity or I0 of pixel %1").arg(i);
        }
        if (!sameNumbers(p.values, q.values)) {
            return QStringLiteral("values of pixel %1").arg(i);
        }
    }
    return {};
}

/// A deep copy: a list with the same numbers in separate memory.
inline QList<double> deepCopy(const QList<double>& list)
{
    return {list.cbegin(), list.cend()};
}

/// A deep copy of a map. It shares no list of numbers with @p map.
inline A2DData deepCopy(const A2DData& map)
{
    A2DData copy;
    copy.extended = map.extended;
    copy.headerLines = map.headerLines;
    copy.xNum = map.xNum;
    copy.yNum = map.yNum;
    for (const A2DRow& row : map.rows) {
        copy.rows.append({row.x, row.y, row.intensity, row.i0, deepCopy(row.values)});
    }
    return copy;
}

} // namespace tests
