// The colour tables of maps, entry by entry where they turn.
#include "display/ColorTables.h"

#include <QTest>

#include <cstdlib>
#include <limits>

namespace
{

struct Fixed {
    int index;
    QColor color;
};

/// Colours that pin a table down: both ends and the middle of each ramp, worked
/// out by hand from t = 0 to 255 and c = 255 - t.
const QList<QList<Fixed>>& fixedColors()
{
    static const QList<QList<Fixed>> all{
        {{0, {0, 0, 0}},
         {128, {128, 0, 0}},
         {255, {255, 0, 0}},
         {256, {255, 0, 0}},
         {384, {255, 128, 0}},
         {511, {255, 255, 0}},
         {512, {255, 255, 0}},
         {640, {255, 255, 128}},
         {767, {255, 255, 255}}},
        {{0, {0, 0, 0}},
         {128, {0, 128, 0}},
         {255, {0, 255, 0}},
         {256, {0, 255, 0}},
         {384, {0, 255, 128}},
         {511, {0, 255, 255}},
         {512, {0, 255, 255}},
         {640, {128, 255, 255}},
         {767, {255, 255, 255}}},
        {{0, {0, 0, 0}},
         {128, {0, 0, 128}},
         {255, {0, 0, 255}},
         {256, {0, 0, 255}},
         {384, {128, 0, 255}},
         {511, {255, 0, 255}},
         {512, {255, 0, 255}},
         {640, {255, 128, 255}},
         {767, {255, 255, 255}}},
        {{0, {255, 0, 0}},
         {128, {127, 128, 0}},
         {255, {0, 255, 0}},
         {256, {0, 255, 0}},
         {384, {0, 127, 128}},
         {511, {0, 0, 255}}},
        {{0, {255, 0, 0}},
         {128, {127, 0, 128}},
         {255, {0, 0, 255}},
         {256, {0, 0, 255}},
         {384, {0, 128, 127}},
         {511, {0, 255, 0}}},
        {{0, {0, 255, 0}},
         {128, {128, 127, 0}},
         {255, {255, 0, 0}},
         {256, {255, 0, 0}},
         {384, {127, 0, 128}},
         {511, {0, 0, 255}}},
        {{0, {0, 255, 0}},
         {128, {0, 127, 128}},
         {255, {0, 0, 255}},
         {256, {0, 0, 255}},
         {384, {128, 0, 127}},
         {511, {255, 0, 0}}},
        {{0, {0, 0, 255}},
         {128, {128, 0, 127}},
         {255, {255, 0, 0}},
         {256, {255, 0, 0}},
         {384, {127, 128, 0}},
         {511, {0, 255, 0}}},
        {{0, {0, 0, 255}},
         {128, {0, 128, 127}},
         {255, {0, 255, 0}},
         {256, {0, 255, 0}},
         {384, {128, 127, 0}},
         {511, {255, 0, 0}}},
        {{0, {255, 0, 0}}, {128, {127, 128, 128}}, {255, {0, 255, 255}}},
        {{0, {0, 255, 0}}, {128, {128, 127, 128}}, {255, {255, 0, 255}}},
        {{0, {0, 0, 255}}, {128, {128, 128, 127}}, {255, {255, 255, 0}}}};
    return all;
}

int largestStep(const QColor& a, const QColor& b)
{
    return qMax(std::abs(a.red() - b.red()),
                qMax(std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())));
}

} // namespace

class tst_ColorTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAreTwelve();
    void rampsStartAndEndWhereTheyShould_data();
    void rampsStartAndEndWhereTheyShould();
    void tableHasWholeRamps_data();
    void tableHasWholeRamps();
    void channelsMoveOneLevelAtATime_data() { tableHasWholeRamps_data(); }
    void channelsMoveOneLevelAtATime();
    void unknownTypeGivesTheFirstTable_data();
    void unknownTypeGivesTheFirstTable();
};

void tst_ColorTables::thereAreTwelve()
{
    QCOMPARE(display::colorTableCount, 12);
    QCOMPARE(fixedColors().size(), 12);
}

void tst_ColorTables::rampsStartAndEndWhereTheyShould_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("color");
    for (int type = 0; type < 12; ++type) {
        for (const Fixed& fixed : fixedColors().at(type)) {
            QTest::addRow("table %d, entry %d", type, fixed.index)
                << type << fixed.index << fixed.color;
        }
    }
}

void tst_ColorTables::rampsStartAndEndWhereTheyShould()
{
    QFETCH(int, type);
    QFETCH(int, index);
    QTEST(display::colorTable(type).at(index), "color");
}

void tst_ColorTables::tableHasWholeRamps_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("entries");
    const QList<int> entries{768, 768, 768, 512, 512, 512, 512, 512, 512, 256, 256, 256};
    for (int type = 0; type < 12; ++type) {
        QTest::addRow("table %d", type) << type << entries.at(type);
    }
}

void tst_ColorTables::tableHasWholeRamps()
{
    QFETCH(int, type);
    QFETCH(int, entries);
    QCOMPARE(display::colorTable(type).size(), entries);
}

// A ramp that goes 255 levels in 255 steps of at most one level is a straight
// one, so this and the ramps' ends leave no entry open.
void tst_ColorTables::channelsMoveOneLevelAtATime()
{
    QFETCH(int, type);
    const QList<QColor> table = display::colorTable(type);
    for (qsizetype i = 1; i < table.size(); ++i) {
        const int wanted = i % 256 == 0 ? 0 : 1; // ramps meet in the same colour
        QCOMPARE(largestStep(table.at(i - 1), table.at(i)), wanted);
    }
}

void tst_ColorTables::unknownTypeGivesTheFirstTable_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("one below") << -1;
    QTest::newRow("one above") << 12;
    QTest::newRow("far below") << std::numeric_limits<int>::min();
    QTest::newRow("far above") << std::numeric_limits<int>::max();
}

void tst_ColorTables::unknownTypeGivesTheFirstTable()
{
    QFETCH(int, type);
    QCOMPARE(display::colorTable(type), display::colorTable(0));
}

QTEST_APPLESS_MAIN(tst_ColorTables)
#include "tst_ColorTables.moc"
