// Test rows of NaN, infinite and extreme numbers.
#pragma once

#include <QTest>

#include <limits>

namespace tests
{

/// Adds the data column "number" and one row for each NaN, infinite or extreme number.
inline void addHostileNumbers()
{
    using Limits = std::numeric_limits<double>;
    QTest::addColumn<double>("number");
    QTest::newRow("NaN") << Limits::quiet_NaN();
    QTest::newRow("infinity") << Limits::infinity();
    QTest::newRow("minus infinity") << -Limits::infinity();
    QTest::newRow("huge") << 1e300;
    QTest::newRow("hugely negative") << -1e300;
    QTest::newRow("the largest") << Limits::max();
    QTest::newRow("the smallest") << Limits::denorm_min();
}

} // namespace tests
