// Limits: the running minimum and maximum of a sequence of values.

#include "data/Limits.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

Q_DECLARE_METATYPE(data::Limits)

class tst_Limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialLimitsAreReversed();
    void valuesOutsideTheLimitsWidenTheLimits_data();
    void valuesOutsideTheLimitsWidenTheLimits();
    void nanLimitsAreKept();
    void zeroLimitKeepsItsSign();
    void separateLowAndHighVariablesAreWidened();
};

void tst_Limits::initialLimitsAreReversed()
{
    QCOMPARE(data::emptyLimits.low, 1e300);
    QCOMPARE(data::emptyLimits.high, -1e300);
}

void tst_Limits::valuesOutsideTheLimitsWidenTheLimits_data()
{
    QTest::addColumn<data::Limits>("limits");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    const data::Limits some{1.0, 2.0};
    QTest::newRow("first value sets both ends") << data::emptyLimits << 3.0 << 3.0 << 3.0;
    QTest::newRow("below") << some << -1.0 << -1.0 << 2.0;
    QTest::newRow("above") << some << 5.0 << 1.0 << 5.0;
    QTest::newRow("inside") << some << 1.5 << 1.0 << 2.0;
    QTest::newRow("NaN") << some << notANumber << 1.0 << 2.0;
    QTest::newRow("infinity is an extreme") << data::emptyLimits << infinity << 1e300 << infinity;
}

void tst_Limits::valuesOutsideTheLimitsWidenTheLimits()
{
    QFETCH(data::Limits, limits);
    QFETCH(double, value);
    limits.widen(value);
    QTEST(limits.low, "low");
    QTEST(limits.high, "high");
}

// No value is less or greater than NaN, so no value replaces a NaN limit.
void tst_Limits::nanLimitsAreKept()
{
    data::Limits nanLimits{notANumber, notANumber};
    nanLimits.widen(1.0);
    QVERIFY(std::isnan(nanLimits.low) && std::isnan(nanLimits.high));
}

void tst_Limits::zeroLimitKeepsItsSign()
{
    data::Limits limits{-0.0, -0.0};
    limits.widen(0.0);
    QVERIFY(std::signbit(limits.low) && std::signbit(limits.high));
}

void tst_Limits::separateLowAndHighVariablesAreWidened()
{
    double low = 1.0;
    double high = 2.0;
    data::widen(3.0, low, high);
    data::widen(notANumber, low, high);
    QCOMPARE(low, 1.0);
    QCOMPARE(high, 3.0);
}

QTEST_GUILESS_MAIN(tst_Limits)

#include "tst_Limits.moc"
