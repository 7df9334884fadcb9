// Tests of maps whose header claims far more pixels than the file contains.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

/// A header that claims at most this number of pixels is not compared with the file's size.
constexpr qint64 uncheckedPixels = qint64{1} << 20;
constexpr qint64 maxPixels = qint64{1} << 25;
/// If a header claims more than uncheckedPixels, the file must contain at least one pixel for
/// every 64 claimed pixels. rowsForLargerClaim is the smallest number of pixels in the file that
/// allows such a claim. In a text map, each data line is one pixel.
constexpr qint64 rowsForLargerClaim = uncheckedPixels / 64 + 1;

/// A text map with @p rows data lines, whose header claims a size of @p width by 1, in axis
/// lines if @p isByAxes, otherwise in size lines.
QByteArray textMap(qint64 width, qint64 rows, bool isByAxes = false)
{
    const QByteArray head =
        isByAxes ? "# AXIS 0 a b c d " + QByteArray::number(width - 1) + "\n# AXIS 1 a b c d 0\n"
                 : "# X-NUM " + QByteArray::number(width) + "\n# Y-NUM 1\n";
    return head + QByteArray("1 2 3\n").repeated(rows);
}

/// A binary map whose header claims @p width pixels. The file contains @p pixels values but
/// no flags.
QByteArray binaryMap(qint64 width, qint64 pixels)
{
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 256").leftJustified(64, ' ') + '\n';
    head += "WIDTH: " + QByteArray::number(width) + "\nHEIGHT: 1\nEND_OF_HEADER:\n";
    return head.leftJustified(256, '\0') + QByteArray(pixels * qint64{sizeof(double)}, '\0');
}

} // namespace

class tst_FalseSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapsWithFalseSizesAreRefusedWithLittleMemory_data();
    void mapsWithFalseSizesAreRefusedWithLittleMemory();
    void sizeClaimIsRefusedOnlyFarAboveTheFileContent_data();
    void sizeClaimIsRefusedOnlyFarAboveTheFileContent();
};

void tst_FalseSizes::mapsWithFalseSizesAreRefusedWithLittleMemory_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isLoaded"); // a refused binary map is still loaded, as 0 by 0
    QTest::newRow("text map with size lines") << textMap(maxPixels, 1) << false;
    QTest::newRow("text map with axis lines") << textMap(maxPixels, 1, true) << false;
    QTest::newRow("binary map") << binaryMap(maxPixels, 1) << true;
}

void tst_FalseSizes::mapsWithFalseSizesAreRefusedWithLittleMemory()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isLoaded);
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "lying.dat", content));
    const QByteArray result = QFile::encodeName(folder.filePath("result.dat"));
    ChildProcess child = systemChild();
    if (!isUnderAddressSanitizer()) {
        child.limitAddressSpace(2500 * mebibyte);
    }
    QList<QByteArray> steps{"calculate", "2", "2"};
    for (const char* row : {"0", "1", "2", "3"}) {
        steps += {"panelMap", row, path};
    }
    const ChildRun run = child.runSteps(steps + QList<QByteArray>{"write", result});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.steps().size(), 6);
    for (int row = 1; row <= 4; ++row) {
        const QJsonObject step = run.steps().at(row);
        QCOMPARE(step["loaded"].toBool(), isLoaded);
        QCOMPARE(step["xNum"].toInt(), 0);
        QCOMPARE(step["yNum"].toInt(), 0);
        QVERIFY(!logOf(step).isEmpty());
        QCOMPARE(memoryTrouble(step), QString());
    }
    QCOMPARE(memoryTrouble(run.lastStep()), QString());
}

void tst_FalseSizes::sizeClaimIsRefusedOnlyFarAboveTheFileContent_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("width"); // 0 if the claim is refused

    const qint64 largestClaim = 64 * rowsForLargerClaim;
    const auto size = [](qint64 pixels) { return static_cast<int>(pixels); };
    QTest::newRow("largest unchecked claim")
        << textMap(uncheckedPixels, 1) << size(uncheckedPixels);
    QTest::newRow("largest unchecked claim, axes")
        << textMap(uncheckedPixels, 1, true) << size(uncheckedPixels);
    QTest::newRow("one pixel above the unchecked claim") << textMap(uncheckedPixels + 1, 1) << 0;
    QTest::newRow("one pixel above the unchecked claim, axes")
        << textMap(uncheckedPixels + 1, 1, true) << 0;
    QTest::newRow("64 times the rows")
        << textMap(largestClaim, rowsForLargerClaim) << size(largestClaim);
    QTest::newRow("one pixel above 64 times the rows")
        << textMap(largestClaim + 1, rowsForLargerClaim) << 0;
    QTest::newRow("binary, largest unchecked claim")
        << binaryMap(uncheckedPixels, 0) << size(uncheckedPixels);
    QTest::newRow("binary, one pixel above the unchecked claim")
        << binaryMap(uncheckedPixels + 1, 0) << 0;
    QTest::newRow("binary, 64 times the pixels")
        << binaryMap(largestClaim, rowsForLargerClaim) << size(largestClaim);
    QTest::newRow("binary, one pixel above 64 times the pixels")
        << binaryMap(largestClaim + 1, rowsForLargerClaim) << 0;
}

void tst_FalseSizes::sizeClaimIsRefusedOnlyFarAboveTheFileContent()
{
    QFETCH(QByteArray, content);
    QFETCH(int, width);
    const QTemporaryDir folder;
    const QString path = writeFile(folder, "map.dat", content);
    const ChildRun run = systemChild().runSteps({"map", QFile::encodeName(path)});
    QCOMPARE(run.trouble, QString());
    const QJsonObject step = run.lastStep();
    const bool isBinary = content.startsWith("2dData");
    QCOMPARE(step["xNum"].toInt(), width);
    QCOMPARE(step["yNum"].toInt(), width > 0 ? 1 : 0);
    QCOMPARE(step["loaded"].toBool(), isBinary || width > 0);
    if (width == 0) {
        QVERIFY(!logOf(step).isEmpty());
    }
    if (isBinary) {
        QCOMPARE(step["rows"].toInt(), width);
    }
    QCOMPARE(memoryTrouble(step), QString());
}

QTEST_GUILESS_MAIN(tst_FalseSizes)
#include "tst_FalseSizes.moc"
