// Numbers that no plot expects.
#pragma once

#include <QTest>

#include <limits>

namespace tests
{

/// A column "number" with a row for each of them.
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
