// Tests of the colour tables of maps.
#include "display/ColorTables.h"

#include <QTest>

#include <cstdlib>
#include <limits>

namespace
{

/// Known colours of each table, as hexadecimal RGB: entries 0, 128 and 255 of every
/// ramp of 256 entries. Calculated by hand: in entry t of a ramp (0 to 255), a rising
/// channel is t and a falling channel is 255 - t.
const QStringList knownColors{
    "000000 800000 ff0000 ff0000 ff8000 ffff00 ffff00 ffff80 ffffff",
    "000000 008000 00ff00 00ff00 00ff80 00ffff 00ffff 80ffff ffffff",
    "000000 000080 0000ff 0000ff 8000ff ff00ff ff00ff ff80ff ffffff",
    "ff0000 7f8000 00ff00 00ff00 007f80 0000ff",
    "ff0000 7f0080 0000ff 0000ff 00807f 00ff00",
    "00ff00 807f00 ff0000 ff0000 7f0080 0000ff",
    "00ff00 007f80 0000ff 0000ff 80007f ff0000",
    "0000ff 80007f ff0000 ff0000 7f8000 00ff00",
    "0000ff 00807f 00ff00 00ff00 807f00 ff0000",
    "ff0000 7f8080 00ffff",
    "00ff00 807f80 ff00ff",
    "0000ff 80807f ffff00",
};

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
    void thereAreTwelveTables();
    void rampsHaveExpectedColorsAtTheirEndsAndMiddle_data();
    void rampsHaveExpectedColorsAtTheirEndsAndMiddle();
    void tableHas256EntriesPerRamp_data();
    void tableHas256EntriesPerRamp();
    void adjacentEntriesDifferByAtMostOneLevel_data() { tableHas256EntriesPerRamp_data(); }
    void adjacentEntriesDifferByAtMostOneLevel();
    void unknownTypeYieldsFirstTable();
};

void tst_ColorTables::thereAreTwelveTables()
{
    QCOMPARE(display::colorTableCount, 12);
    QCOMPARE(knownColors.size(), 12);
}

void tst_ColorTables::rampsHaveExpectedColorsAtTheirEndsAndMiddle_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("color");
    for (int type = 0; type < 12; ++type) {
        const QStringList colors = knownColors.at(type).split(' ');
        for (int i = 0; i < colors.size(); ++i) {
            const int index = 256 * (i / 3) + QList<int>{0, 128, 255}.at(i % 3);
            QTest::addRow("table %d, entry %d", type, index)
                << type << index << QColor('#' + colors.at(i));
        }
    }
}

void tst_ColorTables::rampsHaveExpectedColorsAtTheirEndsAndMiddle()
{
    QFETCH(int, type);
    QFETCH(int, index);
    QTEST(display::colorTable(type).at(index), "color");
}

void tst_ColorTables::tableHas256EntriesPerRamp_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("entries");
    const QList<int> entries{768, 768, 768, 512, 512, 512, 512, 512, 512, 256, 256, 256};
    for (int type = 0; type < 12; ++type) {
        QTest::addRow("table %d", type) << type << entries.at(type);
    }
}

void tst_ColorTables::tableHas256EntriesPerRamp()
{
    QFETCH(int, type);
    QFETCH(int, entries);
    QCOMPARE(display::colorTable(type).size(), entries);
}

// A channel that changes in a ramp changes by 255 levels in 255 steps. If no step is
// larger than one level, the channel is linear, so its known ends determine all of its
// values.
void tst_ColorTables::adjacentEntriesDifferByAtMostOneLevel()
{
    QFETCH(int, type);
    const QList<QColor> table = display::colorTable(type);
    for (qsizetype i = 1; i < table.size(); ++i) {
        const int expected = i % 256 == 0 ? 0 : 1; // adjacent ramps share a colour
        QCOMPARE(largestStep(table.at(i - 1), table.at(i)), expected);
    }
}

void tst_ColorTables::unknownTypeYieldsFirstTable()
{
    using Limits = std::numeric_limits<int>;
    for (const int type : {-1, 12, Limits::min(), Limits::max()}) {
        QCOMPARE(display::colorTable(type), display::colorTable(0));
    }
}

QTEST_APPLESS_MAIN(tst_ColorTables)
#include "tst_ColorTables.moc"
