// Tests of the error statistics, on numbers calculated by hand.
#include "ErrorStatistics.h"

#include <QTest>

#include <cmath>
#include <limits>

using nickel::ErrorStatistics;

class TestErrorStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorsAreInUnitsOfTheExpectedSigma()
    {
        ErrorStatistics statistics;
        statistics.add(3.0, 1.0, 0.0);
        statistics.add(-2.0, 0.5, 0.0);
        // The errors are 3 / 1 = 3 and -2 / 0.5 = -4 sigma, so rms^2 is (3^2 + 4^2) / 2 = 12.5.
        QCOMPARE(statistics.rms(), std::sqrt(12.5));
        QCOMPARE(statistics.worst(), 4.0);
        QCOMPARE(statistics.meanError(), 0.5);
        QCOMPARE(statistics.meanSigma(), std::sqrt(1.25) / 2.0);
    }

    void expectedBiasIsSubtracted()
    {
        ErrorStatistics statistics;
        statistics.add(2.5, 1.0, 0.5);
        QCOMPARE(statistics.worst(), 2.0);
        QCOMPARE(statistics.meanError(), 2.0);
    }

    void nanIsNeverWithinBounds()
    {
        ErrorStatistics statistics;
        statistics.add(std::numeric_limits<double>::quiet_NaN(), 1.0, 0.0);
        statistics.add(0.0, 1.0, 0.0);
        QVERIFY(std::isinf(statistics.worst()));
        QVERIFY(!(statistics.rms() <= 1.15));
        QVERIFY(!(std::abs(statistics.meanError()) <= 1.0));
    }
};

QTEST_APPLESS_MAIN(TestErrorStatistics)
#include "tst_ErrorStatistics.moc"
