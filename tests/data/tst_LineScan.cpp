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
    void smallMapIsNotRefused();
    void lineOf16MiBIsNotRefused();
    void lineOver16MiBMayBeRefused_data();
    void lineOver16MiBMayBeRefused();
    void manyCommentsMayBeRefused_data();
    void manyCommentsMayBeRefused();
    void manyDataLinesAreNotRefused();
};

void tst_LineScan::smallMapIsNotRefused()
{
    QVERIFY(!mayBeRefused({}));
    QVERIFY(!mayBeRefused("# X-NUM 1\n# Y-NUM 1\n1 2 3\n"));
}

void tst_LineScan::lineOf16MiBIsNotRefused()
{
    QVERIFY(!mayBeRefused(QByteArray(maxLineLength, '1')));
    QVERIFY(!mayBeRefused("1 2 3\n" + QByteArray(maxLineLength, ' ') + "\n1 2 3\n"));
}

void tst_LineScan::lineOver16MiBMayBeRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("only line") << QByteArray(maxLineLength + 1, '1');
    QTest::newRow("blank line between others")
        << "1 2\n" + QByteArray(maxLineLength + 1, ' ') + "\n1 2\n";
    QTest::newRow("blanks, then a word") << QByteArray(maxLineLength, ' ') + "1\n";
    QTest::newRow("comment at the end") << "1 2\n#" + QByteArray(maxLineLength, 'c');
}

void tst_LineScan::lineOver16MiBMayBeRefused()
{
    QFETCH(QByteArray, text);
    QVERIFY(mayBeRefused(text));
}

void tst_LineScan::manyCommentsMayBeRefused_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("number sign") << QByteArray("#");
    QTest::newRow("not ASCII") << QByteArray("\xC3");
    QTest::newRow("zero byte") << QByteArray(1, '\0');
    QTest::newRow("carriage return") << QByteArray("\r");
}

void tst_LineScan::manyCommentsMayBeRefused()
{
    QFETCH(QByteArray, start);
    QVERIFY(!mayBeRefused((start + '\n').repeated(maxOneByteComments)));
    QVERIFY(mayBeRefused((start + '\n').repeated(maxOneByteComments + 1)));
    QVERIFY(mayBeRefused(
        (" \t" + start + '\n').repeated(maxOneByteComments))); // leading blanks count too
}

void tst_LineScan::manyDataLinesAreNotRefused()
{
    QVERIFY(!mayBeRefused(QByteArray(" 1 2 #\n").repeated(2 * maxOneByteComments)));
}

QTEST_GUILESS_MAIN(tst_LineScan)
#include "tst_LineScan.moc"
