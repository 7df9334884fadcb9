// Running extremes.

#include "data/Limits.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

class tst_Limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startReversed();
    void firstValueIsBothEnds();
    void laterValuesWidenOnly();
    void valueInsideChangesNothing();
    void notANumberChangesNothing();
    void infinityIsAnExtreme();
    void firstOfEqualZerosStays();
    void separateExtremesWidenAlike();
};

void tst_Limits::startReversed()
{
    QCOMPARE(data::noLimits.low, 1e300);
    QCOMPARE(data::noLimits.high, -1e300);
}

void tst_Limits::firstValueIsBothEnds()
{
    data::Limits limits = data::noLimits;
    limits.widen(3.0);
    QCOMPARE(limits.low, 3.0);
    QCOMPARE(limits.high, 3.0);
}

void tst_Limits::laterValuesWidenOnly()
{
    data::Limits limits{1.0, 2.0};
    limits.widen(-1.0);
    limits.widen(5.0);
    QCOMPARE(limits.low, -1.0);
    QCOMPARE(limits.high, 5.0);
}

void tst_Limits::valueInsideChangesNothing()
{
    data::Limits limits{1.0, 2.0};
    limits.widen(1.5);
    QCOMPARE(limits.low, 1.0);
    QCOMPARE(limits.high, 2.0);
}

void tst_Limits::notANumberChangesNothing()
{
    data::Limits limits{1.0, 2.0};
    limits.widen(notANumber);
    QCOMPARE(limits.low, 1.0);
    QCOMPARE(limits.high, 2.0);
    // An extreme that is NaN stays: no value is below or above it.
    data::Limits broken{notANumber, notANumber};
    broken.widen(1.0);
    QVERIFY(std::isnan(broken.low) && std::isnan(broken.high));
}

void tst_Limits::infinityIsAnExtreme()
{
    data::Limits limits = data::noLimits;
    limits.widen(infinity);
    QCOMPARE(limits.low, 1e300);
    QCOMPARE(limits.high, infinity);
}

void tst_Limits::firstOfEqualZerosStays()
{
    data::Limits limits{-0.0, -0.0};
    limits.widen(0.0);
    QVERIFY(std::signbit(limits.low) && std::signbit(limits.high));
}

void tst_Limits::separateExtremesWidenAlike()
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
