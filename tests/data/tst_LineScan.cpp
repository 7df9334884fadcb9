// The quick scan of a text map for a line that is too long or for too many comment lines.
#include "data/LineScan.h"

#include <QBuffer>
#include <QTest>

namespace
{

bool mayBeRefused(QByteArray text)
{
    QBuffer device(&text);
    device.open(QIODevice::ReadOnly);
    return data::mayBeRefused(device);
}

constexpr qsizetype maxLineLength = 16777216; // longest accepted line, characters
constexpr qsizetype maxOneByteComments =
    1032444; // 64 MiB / 65 bytes: each line counts as one byte plus 64 bytes of overhead

} // namespace

class tst_LineScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void smallMapPassesTheQuickScan();
    void lineOf16MiBPassesTheQuickScan();
    void lineOver16MiBFailsTheQuickScan_data();
    void lineOver16MiBFailsTheQuickScan();
    void tooManyCommentLinesFailTheQuickScan_data();
    void tooManyCommentLinesFailTheQuickScan();
    void manyDataLinesPassTheQuickScan();
};

void tst_LineScan::smallMapPassesTheQuickScan()
{
    QVERIFY(!mayBeRefused({}));
    QVERIFY(!mayBeRefused("# X-NUM 1\n# Y-NUM 1\n1 2 3\n"));
}

void tst_LineScan::lineOf16MiBPassesTheQuickScan()
{
    QVERIFY(!mayBeRefused(QByteArray(maxLineLength, '1')));
    QVERIFY(!mayBeRefused("1 2 3\n" + QByteArray(maxLineLength, ' ') + "\n1 2 3\n"));
}

void tst_LineScan::lineOver16MiBFailsTheQuickScan_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("only line") << QByteArray(maxLineLength + 1, '1');
    QTest::newRow("blank line between data lines")
        << "1 2\n" + QByteArray(maxLineLength + 1, ' ') + "\n1 2\n";
    QTest::newRow("blanks, then a word") << QByteArray(maxLineLength, ' ') + "1\n";
    QTest::newRow("comment at the end") << "1 2\n#" + QByteArray(maxLineLength, 'c');
}

void tst_LineScan::lineOver16MiBFailsTheQuickScan()
{
    QFETCH(QByteArray, text);
    QVERIFY(mayBeRefused(text));
}

void tst_LineScan::tooManyCommentLinesFailTheQuickScan_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("number sign") << QByteArray("#");
    QTest::newRow("not ASCII") << QByteArray("\xC3");
    QTest::newRow("zero byte") << QByteArray(1, '\0');
    QTest::newRow("carriage return") << QByteArray("\r");
}

void tst_LineScan::tooManyCommentLinesFailTheQuickScan()
{
    QFETCH(QByteArray, start);
    QVERIFY(!mayBeRefused((start + '\n').repeated(maxOneByteComments)));
    QVERIFY(mayBeRefused((start + '\n').repeated(maxOneByteComments + 1)));
    QVERIFY(mayBeRefused(
        (" \t" + start + '\n').repeated(maxOneByteComments))); // leading blanks count too
}

void tst_LineScan::manyDataLinesPassTheQuickScan()
{
    QVERIFY(!mayBeRefused(QByteArray(" 1 2 #\n").repeated(2 * maxOneByteComments)));
}

QTEST_GUILESS_MAIN(tst_LineScan)
#include "tst_LineScan.moc"
