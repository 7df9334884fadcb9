// Test rows of NaN, infinite and extreme numbers.
#pragma once

#include <QTest>

#include <limits>

namespace tests
{

/// Adds the data column "number" and one row for each NaN, infinite or extreme number.
inline void addExtremeNumbers()
{
    using Limits = std::numeric_limits<double>;
    QTest::addColumn<double>("number");
    QTest::newRow("NaN") << Limits::quiet_NaN();
    QTest::newRow("infinity") << Limits::infinity();
    QTest::newRow("minus infinity") << -Limits::infinity();
    QTest::newRow("1e300") << 1e300;
    QTest::newRow("-1e300") << -1e300;
    QTest::newRow("largest double") << Limits::max();
    QTest::newRow("smallest positive double") << Limits::denorm_min();
}

} // namespace tests
