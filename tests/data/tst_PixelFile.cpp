// Appending the pixels of a binary map file to a map.
#include "data/PixelFile.h"
#include "data/TDData0.h"
#include "support/DebugLog.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"

#include <QTest>

#include <limits>

using tests::sameDouble;

namespace
{

/// A header of 256 bytes that states this width and height.
QByteArray header(const QByteArray& width, const QByteArray& height)
{
    return ("2dData-V0.0 HeaderSize: 256\nWIDTH: " + width + "\nHEIGHT: " + height + '\n')
        .leftJustified(256, '\0');
}

/// The eight bytes of 1.0, little-endian.
const QByteArray one = QByteArray::fromHex("000000000000f03f");

} // namespace

class tst_PixelFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pixelsAreAppendedToTheExistingMapRows();
    void appendedRowsHaveThePixelValuesThatTDData0Loads_data();
    void appendedRowsHaveThePixelValuesThatTDData0Loads();
    void appendingStopsAtTheMaximumNumberOfMapRows();
    void invalidPixelFileResetsTheMapSize_data();
    void invalidPixelFileResetsTheMapSize();
    void negativeHeaderSizeGivesNoPixels();
    void largeMapNeedsOneStoredPixelPer64Pixels_data();
    void largeMapNeedsOneStoredPixelPer64Pixels();

private:
    QString path(const QByteArray& content) { return tests::writeFile(m_dir, "map.2dp", content); }

    QTemporaryDir m_dir;
};

void tst_PixelFile::pixelsAreAppendedToTheExistingMapRows()
{
    TDData0 source(2, 2);
    source.data = {0.5, 1.5, 2.5, 3.5};
    QVERIFY(source.save(m_dir.filePath("map.2dp")));
    A2DData map;
    map.rows = {{9, 9, 9, 9, {}}};
    map.headerLines = {"# earlier"};
    QVERIFY(data::appendPixelFile(m_dir.filePath("map.2dp"), map));
    QCOMPARE(map.xNum, 2);
    QCOMPARE(map.yNum, 2);
    QCOMPARE(map.rows.size(), 5);
    QCOMPARE(map.headerLines, QStringList{"# earlier"});
    QCOMPARE(map.rows.at(0).i0, 9.0);
    const A2DRow& third = map.rows.at(3); // pixel (0, 1): x varies fastest
    QCOMPARE(third.x, 0.0);
    QCOMPARE(third.y, 1.0);
    QCOMPARE(third.intensity, 2.5);
    QCOMPARE(third.i0, 0.0);
    QCOMPARE(map.rows.at(2).x, 1.0);
}

void tst_PixelFile::appendedRowsHaveThePixelValuesThatTDData0Loads_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("bytes"); // bytes of pixels in the file
    QTest::newRow("map without pixels") << 0 << 3 << 0;
    QTest::newRow("one pixel") << 1 << 1 << 9;
    QTest::newRow("one block of pixels") << 64 << 64 << 36864;
    QTest::newRow("one block and one pixel") << 17 << 241 << 36873;
    QTest::newRow("several blocks") << 100 << 123 << 110700;
    QTest::newRow("truncated inside a value") << 100 << 123 << 40003;
    QTest::newRow("valid flags missing from the file") << 100 << 123 << 98400;
    QTest::newRow("all pixels missing from the file") << 100 << 123 << 0;
}

void tst_PixelFile::appendedRowsHaveThePixelValuesThatTDData0Loads()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, bytes);
    QByteArray pixels(bytes, '\0');
    for (int i = 0; i < bytes; ++i) {
        // The pattern repeats only after 251 bytes, so neighbouring pixels differ.
        pixels[i] = static_cast<char>(i * 37 % 251);
    }
    const QString file =
        path(header(QByteArray::number(width), QByteArray::number(height)) + pixels);
    TDData0 loaded(0, 0);
    QVERIFY(loaded.load(file));
    A2DData map;
    QVERIFY(data::appendPixelFile(file, map));
    QCOMPARE(map.rows.size(), qsizetype{width} * height);
    for (qsizetype i = 0; i < map.rows.size(); ++i) {
        QVERIFY(sameDouble(map.rows.at(i).intensity, loaded.data.at(i)));
        QCOMPARE(map.rows.at(i).x, static_cast<double>(i % width));
        QCOMPARE(map.rows.at(i).y, static_cast<double>(i / width));
    }
}

void tst_PixelFile::appendingStopsAtTheMaximumNumberOfMapRows()
{
    TDData0 source(2, 2);
    source.data = {0.5, 1.5, 2.5, 3.5};
    QVERIFY(source.save(m_dir.filePath("map.2dp")));
    A2DData map;
    for (int load = 0; load < 3; ++load) {
        QVERIFY(data::appendPixelFile(m_dir.filePath("map.2dp"), map, 6));
    }
    QCOMPARE(map.rows.size(), 6);
    QCOMPARE(map.rows.at(5).intensity, 1.5); // the second load stops after its second pixel
}

void tst_PixelFile::invalidPixelFileResetsTheMapSize_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("# X-NUM 2\n1 2 3\n");
    QTest::newRow("negative width") << header("-1", "1");
    QTest::newRow("negative height") << header("1", "-1");
    QTest::newRow("size above the bound") << header("33554433", "1");
    QTest::newRow("header line above the bound")
        << "2dData-V0.0 HeaderSize: 20000000\n" + QByteArray(16777217, 'x');
}

void tst_PixelFile::invalidPixelFileResetsTheMapSize()
{
    QFETCH(QByteArray, content);
    const QString file = path(content);
    A2DData map;
    map.rows = {{9, 9, 9, 9, {}}};
    map.xNum = map.yNum = 1;
    const tests::DebugLog log;
    QVERIFY(!data::appendPixelFile(file, map));
    QCOMPARE(log.lines().last(), file + " is not a TDData0 file.");
    QCOMPARE(map.xNum, 0);
    QCOMPARE(map.yNum, 0);
    QCOMPARE(map.rows.size(), 1);
}

void tst_PixelFile::negativeHeaderSizeGivesNoPixels()
{
    A2DData map;
    QVERIFY(
        data::appendPixelFile(path("2dData-V0.0 HeaderSize: -8\n" + QByteArray(100, 'x')), map));
    QCOMPARE(map.rows.size(), 0); // the header is empty, so the size is unknown
}

void tst_PixelFile::largeMapNeedsOneStoredPixelPer64Pixels_data()
{
    QTest::addColumn<int>("held");
    QTest::addColumn<bool>("good");
    QTest::newRow("enough") << 16385 << true;
    QTest::newRow("one pixel too few") << 16384 << false;
}

void tst_PixelFile::largeMapNeedsOneStoredPixelPer64Pixels()
{
    QFETCH(int, held);
    QFETCH(bool, good);
    // 1,048,640 pixels need 1,048,640 / 64 = 16,385 pixels in the file.
    const QString file = path(header("1048640", "1") + one.repeated(held) + "1234567");
    A2DData map;
    QCOMPARE(data::appendPixelFile(file, map), good);
    QCOMPARE(map.rows.size(), good ? 1048640 : 0);
    TDData0 loaded(0, 0);
    QCOMPARE(loaded.load(file), good);
}

QTEST_GUILESS_MAIN(tst_PixelFile)
#include "tst_PixelFile.moc"
