// Estimating whether a calculation will take long.
#include "analysis/WorkEstimate.h"

#include <QTest>

using analysis::mayTakeLong;

class tst_WorkEstimate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void estimateWithoutWorkIsShort();
    void estimateIsLongForManyPixelsOrPoints_data();
    void estimateIsLongForManyPixelsOrPoints();
};

void tst_WorkEstimate::estimateWithoutWorkIsShort()
{
    QVERIFY(!mayTakeLong({}));
    QVERIFY(!mayTakeLong({1e9, 0, 0.0}));
    QVERIFY(!mayTakeLong({0.0, 8, 0.0}));
}

void tst_WorkEstimate::estimateIsLongForManyPixelsOrPoints_data()
{
    QTest::addColumn<double>("pixels");
    QTest::addColumn<int>("rows");
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("isLong");
    QTest::newRow("six maps of a million pixels") << 1e6 << 6 << 0.0 << true;
    QTest::newRow("eight maps of 256 by 256") << 65536.0 << 8 << 0.0 << true;
    QTest::newRow("one map of 256 by 256") << 65536.0 << 1 << 0.0 << false;
    QTest::newRow("six maps of 64 by 48") << 3072.0 << 6 << 0.0 << false;
    QTest::newRow("five spectra of 900 points") << 0.0 << 0 << 4500.0 << false;
    QTest::newRow("five spectra of 10000 points") << 0.0 << 0 << 50000.0 << true;
    QTest::newRow("long only in total") << 65536.0 << 4 << 12000.0 << true;
    QTest::newRow("short in total") << 3072.0 << 6 << 4500.0 << false;
}

void tst_WorkEstimate::estimateIsLongForManyPixelsOrPoints()
{
    QFETCH(double, pixels);
    QFETCH(int, rows);
    QFETCH(double, points);
    QTEST(mayTakeLong({pixels, rows, points}), "isLong");
}

QTEST_APPLESS_MAIN(tst_WorkEstimate)
#include "tst_WorkEstimate.moc"
