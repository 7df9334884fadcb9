// Checks in advance whether memory can be allocated.
#include "data/MemoryCheck.h"

#include <QBuffer>
#include <QTest>

class tst_MemoryCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestAboveTheAvailableMemoryIsDenied();
    void reservedMemoryOfAListIsNotRequestedAgain();
    void memoryForReadingGrowsWithTheFileSizeUpToABound();
};

void tst_MemoryCheck::requestAboveTheAvailableMemoryIsDenied()
{
    QVERIFY(data::canAllocate(0));
    QVERIFY(data::canGrow(QList<double>(), 1000, 0));
#ifdef __SANITIZE_ADDRESS__
    QSKIP("AddressSanitizer aborts at such a size");
#endif
    QVERIFY(!data::canAllocate(qint64{1} << 60));
    QVERIFY(!data::canGrow(QList<double>(), qsizetype{1} << 56, 0));
    QVERIFY(!data::canGrow(QList<double>(), 1000, qint64{1} << 60));
}

void tst_MemoryCheck::reservedMemoryOfAListIsNotRequestedAgain()
{
    QList<double> list;
    list.reserve(1000);
    QVERIFY(data::canGrow(list, 1000, qint64{1} << 60));
}

void tst_MemoryCheck::memoryForReadingGrowsWithTheFileSizeUpToABound()
{
    const auto forFile = [](qsizetype size) {
        QByteArray text(size, ' ');
        const QBuffer device(&text);
        return data::memoryToRead(device) / 1048576;
    };
    QCOMPARE(forFile(0), 32);
    QCOMPARE(forFile(1048576), 48);
    QCOMPARE(forFile(28 * 1048576), 480);
    QCOMPARE(forFile(29 * 1048576), 480);
}

QTEST_GUILESS_MAIN(tst_MemoryCheck)
#include "tst_MemoryCheck.moc"
