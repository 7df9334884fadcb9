// The shared memory blocks for the value lists of a result's rows.
#include "data/ValueBlocks.h"

#include "support/RandomMaps.h"

#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <span>
#include <utility>

using data::ValueBlocks;
using tests::deepCopy;

namespace
{

using Rows = QList<A2DRow>;
using Values = QList<double>;
using Write = std::function<void(Values&)>;

constexpr int length = 13;
constexpr int blockRows = 64;

/// The values of the row with the index @p row in fill number @p fill.
Values valuesOf(qsizetype row, double fill, int count = length)
{
    Values values;
    for (int k = 0; k < count; ++k) {
        values.append(fill * 1e6 + static_cast<double>(row) * 100.0 + k);
    }
    return values;
}

/// Fills all of @p rows block by block, and releases the blocks that are no longer needed.
/// @return the start address of each block
QList<const double*> refill(ValueBlocks& blocks, Rows& rows, double fill, int count = length)
{
    QList<const double*> addresses;
    const auto number = (rows.size() + blockRows - 1) / blockRows;
    blocks.keepFirst(static_cast<std::size_t>(number));
    for (qsizetype first = 0; first < rows.size(); first += blockRows) {
        const qsizetype blockSize = std::min<qsizetype>(blockRows, rows.size() - first);
        const auto rowsOfBlock = std::span<A2DRow>(rows).subspan(
            static_cast<std::size_t>(first), static_cast<std::size_t>(blockSize));
        const std::span<double> shared =
            blocks.share(static_cast<std::size_t>(first / blockRows), rowsOfBlock, count);
        double* position = shared.data();
        addresses.append(position);
        for (qsizetype i = 0; i < blockSize; ++i) {
            const Values values = valuesOf(first + i, fill, count);
            position = std::copy(values.cbegin(), values.cend(), position);
        }
    }
    return addresses;
}

bool areFilled(const Rows& rows, double fill, int count = length)
{
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (rows.at(i).values != valuesOf(i, fill, count)) {
            return false;
        }
    }
    return true;
}

void addWrites()
{
    QTest::addColumn<Write>("write");
    const auto row = [](const char* name, const Write& write) { QTest::newRow(name) << write; };
    row("one value", [](Values& list) { list[3] = -1.0; });
    row("the last value", [](Values& list) { list.last() = -1.0; });
    row("through a pointer", [](Values& list) { list.data()[0] = -1.0; });
    row("through iterators", [](Values& list) { std::reverse(list.begin(), list.end()); });
    row("fill", [](Values& list) { list.fill(-1.0); });
    row("fill longer", [](Values& list) { list.fill(-1.0, 900); });
    row("append", [](Values& list) { list.append(-1.0); });
    row("append many", [](Values& list) {
        for (int i = 0; i < 2000; ++i) {
            list.append(-i);
        }
    });
    row("append itself", [](Values& list) { list.append(list); });
    row("prepend", [](Values& list) { list.prepend(-1.0); });
    row("prepend many", [](Values& list) {
        for (int i = 0; i < 2000; ++i) {
            list.prepend(-i);
        }
    });
    row("insert", [](Values& list) { list.insert(5, 20, -1.0); });
    row("erase", [](Values& list) { list.erase(list.begin() + 2, list.begin() + 6); });
    row("remove the first", [](Values& list) { list.removeFirst(); });
    row("remove the last", [](Values& list) { list.removeLast(); });
    row("take, then append", [](Values& list) { list.append(list.takeFirst()); });
    row("clear", [](Values& list) { list.clear(); });
    row("clear, then append", [](Values& list) {
        list.clear();
        list.append(-1.0);
    });
    row("shorter", [](Values& list) { list.resize(4); });
    row("longer", [](Values& list) { list.resize(40); });
    row("longer than the block", [](Values& list) { list.resize(5000); });
    row("reserve", [](Values& list) { list.reserve(2000); });
    row("squeeze", [](Values& list) { list.squeeze(); });
    row("reserve, append, squeeze", [](Values& list) {
        list.reserve(100);
        list.append(-1.0);
        list.squeeze();
    });
    row("swap", [](Values& list) {
        Values other{-1.0, -2.0};
        list.swap(other);
    });
    row("move from the list", [](Values& list) {
        const Values elsewhere = std::move(list);
        list = {-1.0};
    });
    row("detach", [](Values& list) { list.detach(); });
}

} // namespace

Q_DECLARE_METATYPE(Write)

class tst_ValueBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filledListsHaveTheRequestedLengthAndValues_data();
    void filledListsHaveTheRequestedLengthAndValues();
    void listsOfABlockAreContiguous();
    void earlierListsOfTheRowsAreReplaced();

    void refillReusesTheMemory();
    void refillAfterACopyIsDestroyedReusesTheMemory();
    void refillWhileACopyExistsUsesNewMemory_data();
    void refillWhileACopyExistsUsesNewMemory();
    void copiedListForcesNewMemoryForItsBlockOnly();

    void copyOfAListKeepsItsValues_data();
    void copyOfAListKeepsItsValues();
    void refillDoesNotChangeACopyOfTheRows();
    void listsOutliveTheBlocks();

    void writingToAListDoesNotChangeNeighbouringLists_data() { addWrites(); }
    void writingToAListDoesNotChangeNeighbouringLists();
    void lastListOfABlockCanBeChanged_data() { addWrites(); }
    void lastListOfABlockCanBeChanged();
    void changedListIsReplacedByTheNextFill_data() { addWrites(); }
    void changedListIsReplacedByTheNextFill();

    void refillWritesReorderedRows();
    void refillWritesARowSwappedWithAnEarlierCopy();
    void refillWritesRowsThatShareAList();
    void refillWritesAChangedNumberOfRows();
    void refillCanChangeTheLengthOfTheLists();
    void twoListsOfRowsAreFilledIndependently();
    void forgettingBlocksDoesNotChangeTheLists();
    void forgettingABlockReleasesItsMemory();
    void blocksCanBeFilledInAnyOrder();

    void rowsAndCopiesHaveTheirValuesAfterRandomChanges_data();
    void rowsAndCopiesHaveTheirValuesAfterRandomChanges();
};

void tst_ValueBlocks::filledListsHaveTheRequestedLengthAndValues_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("count");
    for (const int number : {0, 1, 2, 63, 64, 65, 127, 128, 129, 1000}) {
        for (const int count : {1, 13}) {
            QTest::addRow("%d rows of %d values", number, count) << number << count;
        }
    }
}

void tst_ValueBlocks::filledListsHaveTheRequestedLengthAndValues()
{
    QFETCH(int, number);
    QFETCH(int, count);
    ValueBlocks blocks;
    Rows rows(number);
    for (int fill = 1; fill <= 3; ++fill) {
        refill(blocks, rows, fill, count);
        QVERIFY(areFilled(rows, fill, count));
    }
}

void tst_ValueBlocks::listsOfABlockAreContiguous()
{
    ValueBlocks blocks;
    Rows rows(5);
    const double* const position = blocks.share(0, rows, length).data();
    for (int i = 0; i < 5; ++i) {
        QVERIFY(rows.at(i).values.constData() == position + i * length);
        QCOMPARE(rows.at(i).values.size(), length);
    }
}

void tst_ValueBlocks::earlierListsOfTheRowsAreReplaced()
{
    ValueBlocks blocks;
    Rows rows(70);
    const Values shared(20, -1.0);
    for (A2DRow& row : rows) {
        row.values = shared;
    }
    refill(blocks, rows, 1);
    QVERIFY(areFilled(rows, 1));
    QCOMPARE(shared, Values(20, -1.0));
    QVERIFY(shared.isDetached());
}

void tst_ValueBlocks::refillReusesTheMemory()
{
    ValueBlocks blocks;
    Rows rows(150);
    const QList<const double*> addresses = refill(blocks, rows, 1);
    for (int fill = 2; fill < 5; ++fill) {
        QCOMPARE(refill(blocks, rows, fill), addresses);
        QVERIFY(areFilled(rows, fill));
    }
}

void tst_ValueBlocks::refillAfterACopyIsDestroyedReusesTheMemory()
{
    ValueBlocks blocks;
    Rows rows(64);
    const QList<const double*> addresses = refill(blocks, rows, 1);
    {
        const Values copy = rows.at(7).values;
        const Rows all = rows;
        QCOMPARE(copy, valuesOf(7, 1));
    }
    QCOMPARE(refill(blocks, rows, 2), addresses);
    QVERIFY(areFilled(rows, 2));
}

void tst_ValueBlocks::refillWhileACopyExistsUsesNewMemory_data()
{
    QTest::addColumn<int>("row");
    for (const int row : {0, 1, 30, 62, 63}) {
        QTest::addRow("row %d", row) << row;
    }
}

void tst_ValueBlocks::refillWhileACopyExistsUsesNewMemory()
{
    QFETCH(int, row);
    ValueBlocks blocks;
    Rows rows(64);
    const QList<const double*> addresses = refill(blocks, rows, 1);
    const Values copy = rows.at(row).values;
    const QList<const double*> other = refill(blocks, rows, 2);
    QVERIFY(other != addresses);
    QVERIFY(areFilled(rows, 2));
    QCOMPARE(copy, valuesOf(row, 1));
    QCOMPARE(refill(blocks, rows, 3), other); // reused, because no copy uses this memory
    QVERIFY(areFilled(rows, 3));
    QCOMPARE(copy, valuesOf(row, 1));
}

void tst_ValueBlocks::copiedListForcesNewMemoryForItsBlockOnly()
{
    ValueBlocks blocks;
    Rows rows(192);
    const QList<const double*> addresses = refill(blocks, rows, 1);
    const Values copy = rows.at(64).values;
    const QList<const double*> other = refill(blocks, rows, 2);
    QVERIFY(other.at(0) == addresses.at(0));
    QVERIFY(other.at(1) != addresses.at(1));
    QVERIFY(other.at(2) == addresses.at(2));
    QCOMPARE(copy, valuesOf(64, 1));
}

void tst_ValueBlocks::copyOfAListKeepsItsValues_data()
{
    QTest::addColumn<QString>("event");
    for (const char* event :
         {"refilled", "rows cleared", "rows destroyed", "rows fewer", "blocks destroyed",
          "blocks forgotten", "all destroyed", "list written", "calculated again"}) {
        QTest::newRow(event) << QString(event);
    }
}

void tst_ValueBlocks::copyOfAListKeepsItsValues()
{
    QFETCH(QString, event);
    auto blocks = std::make_unique<ValueBlocks>();
    Rows rows(100);
    refill(*blocks, rows, 1);
    const QList<Values> copies{rows.at(0).values, rows.at(50).values, rows.at(63).values,
                               rows.at(64).values, rows.at(99).values};
    if (event == "rows cleared" || event == "calculated again") {
        rows.clear();
    } else if (event == "rows destroyed") {
        rows = {};
    } else if (event == "rows fewer") {
        rows.resize(30);
    } else if (event == "blocks destroyed") {
        blocks = std::make_unique<ValueBlocks>();
    } else if (event == "blocks forgotten") {
        blocks->keepFirst(0);
    } else if (event == "list written") {
        for (A2DRow& row : rows) {
            row.values[0] = -1.0;
        }
    } else if (event == "all destroyed") {
        rows = {};
        blocks.reset();
    }
    if (event == "calculated again") {
        rows.resize(100);
    }
    if (blocks != nullptr) {
        refill(*blocks, rows, 2);
        QVERIFY(areFilled(rows, 2));
        refill(*blocks, rows, 3);
        QVERIFY(areFilled(rows, 3));
    }
    QCOMPARE(copies, (QList<Values>{valuesOf(0, 1), valuesOf(50, 1), valuesOf(63, 1),
                                    valuesOf(64, 1), valuesOf(99, 1)}));
}

void tst_ValueBlocks::refillDoesNotChangeACopyOfTheRows()
{
    auto blocks = std::make_unique<ValueBlocks>();
    Rows rows(100);
    refill(*blocks, rows, 1);
    const Rows first = rows;
    refill(*blocks, rows, 2);
    Rows second = rows;
    QVERIFY(areFilled(first, 1));
    rows = {};
    blocks.reset();
    QVERIFY(areFilled(first, 1));
    QVERIFY(areFilled(second, 2));
    second[3].values[0] = -1.0;
    QCOMPARE(second.at(4).values, valuesOf(4, 2));
    QVERIFY(areFilled(first, 1));
}

void tst_ValueBlocks::listsOutliveTheBlocks()
{
    Rows rows(70);
    {
        ValueBlocks blocks;
        refill(blocks, rows, 1);
    }
    QVERIFY(areFilled(rows, 1));
    ValueBlocks others;
    refill(others, rows, 2);
    QVERIFY(areFilled(rows, 2));
}

void tst_ValueBlocks::writingToAListDoesNotChangeNeighbouringLists()
{
    QFETCH(Write, write);
    for (const int position : {0, 1, 30, 63, 64, 69}) {
        ValueBlocks blocks;
        Rows rows(70);
        refill(blocks, rows, 1);
        Values expected = valuesOf(position, 1);
        write(expected);
        write(rows[position].values);
        QCOMPARE(rows.at(position).values, expected);
        rows[position].values = valuesOf(position, 1);
        QVERIFY(areFilled(rows, 1));
    }
}

// Only one list of the block still exists. The memory before and after it belonged to lists
// that have been destroyed.
void tst_ValueBlocks::lastListOfABlockCanBeChanged()
{
    QFETCH(Write, write);
    for (const int position : {0, 1, 30, 63}) {
        Values last;
        {
            ValueBlocks blocks;
            Rows rows(64);
            refill(blocks, rows, 1);
            last = rows.at(position).values;
        }
        QVERIFY(last.isDetached());
        Values expected = valuesOf(position, 1);
        for (int round = 0; round < 3; ++round) {
            write(expected);
            write(last);
            QCOMPARE(last, expected);
            if (expected.size() < length) {
                expected.resize(length);
                last.resize(length);
                QCOMPARE(last, expected);
            }
        }
    }
}

void tst_ValueBlocks::changedListIsReplacedByTheNextFill()
{
    QFETCH(Write, write);
    ValueBlocks blocks;
    Rows rows(70);
    refill(blocks, rows, 1);
    for (const int position : {5, 69}) {
        write(rows[position].values);
        const Values written = rows.at(position).values;
        const Values expected = deepCopy(written);
        refill(blocks, rows, 2);
        QVERIFY(areFilled(rows, 2));
        QCOMPARE(written, expected);
    }
}

void tst_ValueBlocks::refillWritesReorderedRows()
{
    ValueBlocks blocks;
    Rows rows(64);
    refill(blocks, rows, 1);
    rows.swapItemsAt(3, 40);
    QCOMPARE(rows.at(3).values, valuesOf(40, 1));
    refill(blocks, rows, 2);
    QVERIFY(areFilled(rows, 2));
    rows.move(0, 63);
    QCOMPARE(rows.at(63).values, valuesOf(0, 2));
    refill(blocks, rows, 3);
    QVERIFY(areFilled(rows, 3));
    std::reverse(rows.begin(), rows.end());
    refill(blocks, rows, 4);
    QVERIFY(areFilled(rows, 4));
}

// If a row is swapped with a row outside the list, the block's memory keeps its number of
// owners, but one of them is no longer in the list.
void tst_ValueBlocks::refillWritesARowSwappedWithAnEarlierCopy()
{
    ValueBlocks blocks;
    Rows rows(64);
    refill(blocks, rows, 1);
    A2DRow elsewhere = rows.at(3);
    rows[3].values = {};
    refill(blocks, rows, 2);
    QVERIFY(areFilled(rows, 2));
    QCOMPARE(elsewhere.values, valuesOf(3, 1));
    std::swap(elsewhere, rows[5]);
    QCOMPARE(rows.at(5).values, valuesOf(3, 1));
    refill(blocks, rows, 3);
    QVERIFY(areFilled(rows, 3));
    QCOMPARE(elsewhere.values, valuesOf(5, 2));
}

void tst_ValueBlocks::refillWritesRowsThatShareAList()
{
    ValueBlocks blocks;
    Rows rows(64);
    refill(blocks, rows, 1);
    rows[10].values = rows.at(11).values;
    refill(blocks, rows, 2);
    QVERIFY(areFilled(rows, 2));
    rows.removeAt(0);
    rows.append(rows.last());
    refill(blocks, rows, 3);
    QVERIFY(areFilled(rows, 3));
    rows[0].values.resize(length - 1); // the list keeps its address, but has another length
    refill(blocks, rows, 4);
    QVERIFY(areFilled(rows, 4));
}

void tst_ValueBlocks::refillWritesAChangedNumberOfRows()
{
    ValueBlocks blocks;
    Rows rows;
    int fill = 0;
    for (const int number : {100, 70, 64, 65, 128, 129, 1, 63, 64, 0, 100, 90, 100}) {
        const Rows before = rows;
        const int fillBefore = fill++;
        rows.resize(number);
        refill(blocks, rows, fill);
        QVERIFY(areFilled(rows, fill));
        QVERIFY(before.isEmpty() || areFilled(before, fillBefore));
    }
    // The same test without the copy `before`, so that no other list shares the blocks.
    for (const int number : {70, 64, 65, 128, 129, 1, 63, 64, 0, 100, 90, 100}) {
        rows.resize(number);
        refill(blocks, rows, ++fill);
        QVERIFY(areFilled(rows, fill));
    }
}

void tst_ValueBlocks::refillCanChangeTheLengthOfTheLists()
{
    // With 1 and 65 rows, the last block has a single list. It starts at the same address for
    // every length, so only its length shows that the block cannot be reused.
    for (const int number : {70, 1, 65}) {
        ValueBlocks blocks;
        Rows rows(number);
        int fill = 0;
        for (const int count : {13, 1, 13, 12, 14, 13}) {
            refill(blocks, rows, ++fill, count);
            QVERIFY(areFilled(rows, fill, count));
        }
    }
}

void tst_ValueBlocks::twoListsOfRowsAreFilledIndependently()
{
    ValueBlocks blocks;
    Rows rows(70);
    Rows others(70);
    refill(blocks, rows, 1);
    refill(blocks, others, 2);
    QVERIFY(areFilled(rows, 1));
    QVERIFY(areFilled(others, 2));
    refill(blocks, rows, 3);
    QVERIFY(areFilled(rows, 3));
    QVERIFY(areFilled(others, 2));
}

void tst_ValueBlocks::forgettingBlocksDoesNotChangeTheLists()
{
    ValueBlocks blocks;
    Rows rows(130);
    const QList<const double*> addresses = refill(blocks, rows, 1);
    blocks.keepFirst(5); // only three blocks exist
    blocks.keepFirst(1);
    QVERIFY(areFilled(rows, 1));
    const QList<const double*> other = refill(blocks, rows, 2);
    QVERIFY(other.at(0) == addresses.at(0));
    QVERIFY(other.at(1) != addresses.at(1));
    QVERIFY(other.at(2) != addresses.at(2));
    QVERIFY(areFilled(rows, 2));
}

void tst_ValueBlocks::forgettingABlockReleasesItsMemory()
{
    ValueBlocks blocks;
    Rows rows(blockRows);
    refill(blocks, rows, 1.0);
    Values last = rows.last().values;
    rows.clear();
    QVERIFY(!last.isDetached()); // the block is the second owner of the memory
    blocks.forget(7);            // no block has this index
    QVERIFY(!last.isDetached());
    blocks.forget(0);
    QVERIFY(last.isDetached());
    QCOMPARE(last, valuesOf(blockRows - 1, 1.0));
}

void tst_ValueBlocks::blocksCanBeFilledInAnyOrder()
{
    ValueBlocks blocks;
    Rows late(2);
    const std::span<double> values = blocks.share(7, late, 3);
    QCOMPARE(values.size(), std::size_t{6});
    std::fill(values.begin(), values.end(), 5.0);
    Rows early(2);
    const std::span<double> others = blocks.share(0, early, 3);
    std::fill(others.begin(), others.end(), 4.0);
    QCOMPARE(late.at(1).values, Values(3, 5.0));
    QCOMPARE(early.at(1).values, Values(3, 4.0));
    QVERIFY(blocks.share(7, late, 3).data() == values.data());
}

void tst_ValueBlocks::rowsAndCopiesHaveTheirValuesAfterRandomChanges_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 8; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void tst_ValueBlocks::rowsAndCopiesHaveTheirValuesAfterRandomChanges()
{
    QFETCH(int, seed);
    std::mt19937_64 random(static_cast<unsigned>(seed));
    ValueBlocks blocks;
    Rows rows;
    QList<std::pair<Values, Values>> copies; // a list that shares memory, and its deep copy
    QList<std::pair<Rows, double>> allCopies;
    for (int fill = 1; fill <= 80; ++fill) {
        rows.resize(tests::wholeNumber(random, 0, 3) * 64 + tests::wholeNumber(random, 0, 2));
        refill(blocks, rows, fill);
        QVERIFY(areFilled(rows, fill));
        if (tests::onceIn(random, 4)) {
            allCopies.append({rows, fill});
        }
        for (int i = 0; i < 3 && !rows.isEmpty(); ++i) {
            const int row = tests::wholeNumber(random, 0, static_cast<int>(rows.size()) - 1);
            copies.append({rows.at(row).values, deepCopy(rows.at(row).values)});
            if (tests::onceIn(random, 3)) {
                rows[row].values.append(-1.0);
            } else if (tests::onceIn(random, 3)) {
                rows.removeAt(row);
            }
        }
        while (copies.size() > 20 || (!copies.isEmpty() && tests::onceIn(random, 2))) {
            copies.removeAt(tests::wholeNumber(random, 0, static_cast<int>(copies.size()) - 1));
        }
        while (allCopies.size() > 2) {
            allCopies.removeFirst();
        }
        for (const auto& [copy, expected] : std::as_const(copies)) {
            QCOMPARE(copy, expected);
        }
        for (const auto& [copy, fillAtCopy] : std::as_const(allCopies)) {
            QVERIFY(areFilled(copy, fillAtCopy));
        }
    }
}

QTEST_APPLESS_MAIN(tst_ValueBlocks)
#include "tst_ValueBlocks.moc"
