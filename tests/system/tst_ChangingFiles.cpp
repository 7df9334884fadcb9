// Tests of files that change or cause a read error while they are read. In every case the
// program must keep running, and the row must be able to read the next file.
#include "support/TestFiles.h"
#include "system/SystemChild.h"

#include <QTest>

using namespace tests;

namespace
{

constexpr int manyRows = 100000;
constexpr int maxCalls = 5; ///< calls of each kind to hook; no reader opens a file this often

QByteArray textMap(int rows)
{
    return "# X-NUM 10\n# Y-NUM 10\n" + QByteArray("1 2 3\n").repeated(rows);
}

/// A binary map of 12 pixels, each 1.0. Its header has the given width and the height 3.
QByteArray binaryMap(const QByteArray& width = "4")
{
    constexpr int pixels = 12;
    QByteArray head = QByteArray("2dData-V0.0 HeaderSize: 256").leftJustified(64, ' ') + '\n';
    head += "WIDTH: " + width + "\nHEIGHT: 3\nEND_OF_HEADER:\n";
    const QByteArray one("\0\0\0\0\0\0\xf0\x3f", 8);
    return head.leftJustified(256, '\0') + one.repeated(pixels) + QByteArray(pixels, '\1');
}

const QByteArray plainSpectrum("8000 1\n8100 2\n8200 3\n");
const QByteArray beamlineSpectrum("9809\n Mode 0 0 1 2\n Offset 0 0 0\n"
                                  " 1 13.5 1 800 100\n 2 13.4 1 800 100\n");

/// A change for the "hook" step of system_child: the name and the argument of the change.
struct Change {
    const char* name;
    QByteArray argument;
};

} // namespace

class tst_ChangingFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mapTruncatedDuringReadKeepsTheRowsRead();
    void mapExtendedDuringReadHasTheNewRows();
    void mapWithReadErrorKeepsTheRowsRead();
    void binaryMapTruncatedDuringReadIsFilledWithZeros();
    void binaryMapWithReadErrorIsRefusedOrFilledWithZeros();
    void binaryMapReplacedByTextDuringReadIsRefused();
    void binaryMapRewrittenWithLargerSizeDuringReadUsesLittleMemory();
    void spectrumTruncatedDuringReadKeepsThePointsRead();
    void spectrumRemovedBetweenReadPassesIsCompleteOrRefused();
    void nextFileIsReadAfterAFileChangesDuringReading_data();
    void nextFileIsReadAfterAFileChangesDuringReading();

private:
    ChildRun runWith(const char* step, const QByteArray& content, const QList<QByteArray>& hook);
};

/// Reads a file with this @p content in the child. The words of @p hook are the call, its
/// number, the change and the argument of the change.
ChildRun tst_ChangingFiles::runWith(const char* step, const QByteArray& content,
                                    const QList<QByteArray>& hook)
{
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "changing.dat", content));
    return systemChild().runSteps(
        {"hook", hook.at(0), hook.at(1), path, hook.at(2), hook.at(3), step, path});
}

void tst_ChangingFiles::mapTruncatedDuringReadKeepsTheRowsRead()
{
    const ChildRun run = runWith("map", textMap(manyRows), {"atRead", "3", "shrink", "30000"});
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["loaded"].toBool());
    QVERIFY(run.lastStep()["rows"].toInt() > 1000);
    QVERIFY(run.lastStep()["rows"].toInt() < manyRows);
}

void tst_ChangingFiles::mapExtendedDuringReadHasTheNewRows()
{
    const ChildRun run = runWith("map", textMap(manyRows), {"atRead", "3", "grow", "4 5 6\n"});
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["loaded"].toBool());
    QCOMPARE(run.lastStep()["rows"].toInt(), manyRows + 1);
}

void tst_ChangingFiles::mapWithReadErrorKeepsTheRowsRead()
{
    const ChildRun run = runWith("map", textMap(manyRows), {"atRead", "4+", "fail", "EIO"});
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["loaded"].toBool());
    QVERIFY(run.lastStep()["rows"].toInt() > 1000);
    QVERIFY(run.lastStep()["rows"].toInt() < manyRows);
}

void tst_ChangingFiles::binaryMapTruncatedDuringReadIsFilledWithZeros()
{
    // The shortened file contains the header of 256 bytes and five pixels (40 bytes).
    const ChildRun run = runWith("map", binaryMap(), {"atOpen", "4", "shrink", "296"});
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["loaded"].toBool());
    QCOMPARE(run.lastStep()["rows"].toInt(), 12);
    QCOMPARE(run.lastStep()["sum"].toDouble(), 5.0);
}

void tst_ChangingFiles::binaryMapWithReadErrorIsRefusedOrFilledWithZeros()
{
    for (int number = 1; number <= maxCalls; ++number) {
        const ChildRun run = runWith("map", binaryMap(),
                                     {"atRead", QByteArray::number(number) + '+', "fail", "EIO"});
        QCOMPARE(run.trouble, QString());
        const int rows = run.lastStep()["rows"].toInt();
        QVERIFY(rows == 0 || rows == 12);
        QVERIFY(run.lastStep()["sum"].toDouble() <= rows);
        // If the first read fails, the map is refused. If the reader calls read() fewer than
        // `number` times, no read fails, and the map is complete.
        QVERIFY(number > 1 || rows == 0);
    }
}

void tst_ChangingFiles::binaryMapReplacedByTextDuringReadIsRefused()
{
    const QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "changing.dat", binaryMap()));
    const QByteArray text = QFile::encodeName(writeFile(folder, "text.dat", textMap(3)));
    const ChildRun run =
        systemChild().runSteps({"hook", "atClose", "1", path, "replace", text, "map", path});
    QCOMPARE(run.trouble, QString());
    QCOMPARE(run.lastStep()["rows"].toInt(), 0);
    QCOMPARE(run.lastStep()["xNum"].toInt(), 0);
    QVERIFY(logOf(run.lastStep()).contains(QString::fromUtf8(path) + " is not a TDData0 file."));
}

void tst_ChangingFiles::binaryMapRewrittenWithLargerSizeDuringReadUsesLittleMemory()
{
    for (int number = 1; number <= maxCalls; ++number) {
        const QTemporaryDir folder;
        const QByteArray path = QFile::encodeName(writeFile(folder, "changing.dat", binaryMap()));
        const QByteArray oversized =
            QFile::encodeName(writeFile(folder, "oversized.dat", binaryMap("11184810")));
        const ChildRun run = systemChild().runSteps({"hook", "atOpen", QByteArray::number(number),
                                                     path, "rewrite", oversized, "map", path});
        QCOMPARE(run.trouble, QString());
        QVERIFY(run.lastStep()["rows"].toInt() <= 12);
        QCOMPARE(memoryTrouble(run.lastStep()), QString());
    }
}

void tst_ChangingFiles::spectrumTruncatedDuringReadKeepsThePointsRead()
{
    QByteArray content;
    for (int point = 0; point < manyRows; ++point) {
        content += QByteArray::number(7000 + point) + " 1\n";
    }
    const ChildRun run = runWith("spectrum", content, {"atRead", "4", "shrink", "40000"});
    QCOMPARE(run.trouble, QString());
    QVERIFY(run.lastStep()["valid"].toBool());
    QVERIFY(run.lastStep()["points"].toInt() > 1000);
    QVERIFY(run.lastStep()["points"].toInt() < manyRows);
}

void tst_ChangingFiles::spectrumRemovedBetweenReadPassesIsCompleteOrRefused()
{
    const QTemporaryDir folder;
    const QByteArray before = QFile::encodeName(writeFile(folder, "before.dat", plainSpectrum));
    const QByteArray path = QFile::encodeName(writeFile(folder, "changing.dat", beamlineSpectrum));
    const ChildRun run = systemChild().runSteps(
        {"spectrum", before, "hook", "atClose", "1", path, "remove", "", "spectrum", path});
    QCOMPARE(run.trouble, QString());
    const QJsonObject step = run.lastStep();
    if (step["newEdges"].toInt() == 1) {
        QCOMPARE(step["points"].toInt(), 2);
    } else {
        // If the file could not be opened, the earlier spectrum is kept.
        QVERIFY(logOf(step).contains("Can't open a XAFS file " + QString::fromUtf8(path)));
        QCOMPARE(step["points"].toInt(), 3);
    }
}

void tst_ChangingFiles::nextFileIsReadAfterAFileChangesDuringReading_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("other");

    QTest::newRow("text map becomes binary") << QByteArray("map") << textMap(9) << binaryMap();
    QTest::newRow("binary map becomes text") << QByteArray("map") << binaryMap() << textMap(9);
    QTest::newRow("plain spectrum becomes a beamline spectrum")
        << QByteArray("spectrum") << plainSpectrum << beamlineSpectrum;
    QTest::newRow("beamline spectrum becomes plain")
        << QByteArray("spectrum") << beamlineSpectrum << plainSpectrum;
}

void tst_ChangingFiles::nextFileIsReadAfterAFileChangesDuringReading()
{
    QFETCH(QByteArray, step);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, other);
    const QTemporaryDir folder;
    QList<QByteArray> steps;
    int files = 0;
    const auto file = [&](const QByteArray& bytes) {
        return QFile::encodeName(writeFile(folder, QString::number(++files), bytes));
    };
    const QByteArray good = file(content);
    const QByteArray otherFile = file(other);
    for (const char* call : {"atOpen", "atRead", "atClose"}) {
        for (int number = 1; number <= maxCalls; ++number) {
            for (const Change& change : {Change{"shrink", "0"}, Change{"shrink", "70"},
                                         Change{"remove", ""}, Change{"replace", file(other)},
                                         Change{"rewrite", otherFile}, Change{"fail", "EIO"}}) {
                const QByteArray path = file(content);
                steps += {"hook", call,        QByteArray::number(number),
                          path,   change.name, change.argument,
                          step,   path,        step,
                          good};
            }
        }
    }
    const ChildRun run = systemChild().runSteps(steps);
    QCOMPARE(run.trouble, QString());
    const QList<QJsonObject> reports = run.steps();
    for (int at = 1; at + 1 < reports.size(); at += 3) {
        const QJsonObject& changed = reports.at(at);
        const QJsonObject& next = reports.at(at + 1);
        if (step == "spectrum") {
            QCOMPARE(next["newEdges"].toInt(), 1);
            QVERIFY(next["points"].toInt() > 0);
            QVERIFY(changed["newEdges"].toInt() == 0 || changed["points"].toInt() > 0);
        } else {
            QVERIFY(next["loaded"].toBool());
            QVERIFY(changed["newData"].toInt() == (changed["loaded"].toBool() ? 1 : 0) ||
                    logOf(changed).contains("can't open"));
        }
    }
}

QTEST_GUILESS_MAIN(tst_ChangingFiles)
#include "tst_ChangingFiles.moc"
