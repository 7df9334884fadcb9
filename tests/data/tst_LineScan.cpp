// The first look at the lines of a text map.
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

constexpr qsizetype longest = 16777216;    // a line
constexpr qsizetype mostOfAByte = 1032444; // comment lines of one character, 65 each

} // namespace

class tst_LineScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void smallMapIsNotSuspected();
    void lineOf16MiBIsNotSuspected();
    void longerLineIs_data();
    void longerLineIs();
    void manyCommentsAreSuspected_data();
    void manyCommentsAreSuspected();
    void manyDataLinesAreNotTakenForComments();
};

void tst_LineScan::smallMapIsNotSuspected()
{
    QVERIFY(!mayBeRefused({}));
    QVERIFY(!mayBeRefused("# X-NUM 1\n# Y-NUM 1\n1 2 3\n"));
}

void tst_LineScan::lineOf16MiBIsNotSuspected()
{
    QVERIFY(!mayBeRefused(QByteArray(longest, '1')));
    QVERIFY(!mayBeRefused("1 2 3\n" + QByteArray(longest, ' ') + "\n1 2 3\n"));
}

void tst_LineScan::longerLineIs_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("alone") << QByteArray(longest + 1, '1');
    QTest::newRow("blanks between others") << "1 2\n" + QByteArray(longest + 1, ' ') + "\n1 2\n";
    QTest::newRow("blanks, then words") << QByteArray(longest, ' ') + "1\n";
    QTest::newRow("comment at the end") << "1 2\n#" + QByteArray(longest, 'c');
}

void tst_LineScan::longerLineIs()
{
    QFETCH(QByteArray, text);
    QVERIFY(mayBeRefused(text));
}

void tst_LineScan::manyCommentsAreSuspected_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("number sign") << QByteArray("#");
    QTest::newRow("not ASCII") << QByteArray("\xC3");
    QTest::newRow("zero byte") << QByteArray(1, '\0');
    QTest::newRow("carriage return") << QByteArray("\r");
}

void tst_LineScan::manyCommentsAreSuspected()
{
    QFETCH(QByteArray, start);
    QVERIFY(!mayBeRefused((start + '\n').repeated(mostOfAByte)));
    QVERIFY(mayBeRefused((start + '\n').repeated(mostOfAByte + 1)));
    QVERIFY(mayBeRefused((" \t" + start + '\n').repeated(mostOfAByte))); // blanks count too
}

void tst_LineScan::manyDataLinesAreNotTakenForComments()
{
    QVERIFY(!mayBeRefused(QByteArray(" 1 2 #\n").repeated(2 * mostOfAByte)));
}

QTEST_GUILESS_MAIN(tst_LineScan)
#include "tst_LineScan.moc"
