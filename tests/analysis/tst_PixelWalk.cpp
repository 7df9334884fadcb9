// The walk that every map calculation makes.
#include "analysis/PixelWalk.h"

#include <QTest>

class tst_PixelWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixelIsVisitedLineByLine();
    void coordinatesComeFromTheBaseOrAreZero();
    void extendedFlagIsLeftToTheCaller();
    void muchLargerEarlierResultGivesItsMemoryBack();
    void similarEarlierResultKeepsItsMemory();
};

void tst_PixelWalk::everyPixelIsVisitedLineByLine()
{
    A2DData base;
    base.xNum = 2;
    base.yNum = 2;
    base.headerLines = QStringList{"# a"};
    A2DData result;
    QList<int> visited;
    analysis::walkPixels(base, result, [&](int x, int y, A2DRow& row) {
        visited.append(10 * y + x);
        row.intensity = visited.last();
    });
    QCOMPARE(visited, (QList<int>{0, 1, 10, 11}));
    QCOMPARE(result.rows.at(2).intensity, 10.0);
    QCOMPARE(result.headerLines, base.headerLines);
    QCOMPARE(result.xNum, 2);
    QCOMPARE(result.yNum, 2);
}

void tst_PixelWalk::coordinatesComeFromTheBaseOrAreZero()
{
    A2DData base;
    base.xNum = 2;
    base.yNum = 1;
    base.rows.append({7, 8, 9, 10, {11}});
    A2DData result;
    analysis::walkPixels(base, result, [](int, int, A2DRow& row) {
        QCOMPARE(row.intensity, 0.0); // nothing but the coordinates is taken
        QVERIFY(row.values.isEmpty());
    });
    QCOMPARE(result.rows.at(0).x, 7.0);
    QCOMPARE(result.rows.at(0).y, 8.0);
    QCOMPARE(result.rows.at(1).x, 0.0);
    QCOMPARE(result.rows.at(1).y, 0.0);
}

void tst_PixelWalk::extendedFlagIsLeftToTheCaller()
{
    A2DData result;
    result.extended = true;
    analysis::walkPixels(A2DData(), result, [](int, int, A2DRow&) {});
    QVERIFY(result.extended);
}

void tst_PixelWalk::muchLargerEarlierResultGivesItsMemoryBack()
{
    A2DData base;
    base.xNum = 10;
    base.yNum = 1;
    A2DData result;
    result.rows.resize(100000);
    analysis::startResult(result, base);
    QVERIFY(result.rows.isEmpty());
    QVERIFY(result.rows.capacity() >= 10);
    QVERIFY(result.rows.capacity() < 100);
}

void tst_PixelWalk::similarEarlierResultKeepsItsMemory()
{
    A2DData base;
    base.xNum = 900;
    base.yNum = 1;
    A2DData result;
    result.rows.reserve(1000);
    const A2DRow* const before = result.rows.constData();
    analysis::startResult(result, base);
    QVERIFY(result.rows.constData() == before);
}

QTEST_APPLESS_MAIN(tst_PixelWalk)
#include "tst_PixelWalk.moc"
