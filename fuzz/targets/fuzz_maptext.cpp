// Tests text maps with all three kinds of header against the reference implementation.
//
// An input is used as the file.
#include "data/A2DData.h"
#include "data/MapTextReader.h"
#include "support/FuzzTarget.h"
#include "support/Memory.h"
#include "support/OneIn.h"
#include "support/PlainMapReader.h"
#include "support/SameDouble.h"
#include "support/ShortReadDevice.h"

#include <QBuffer>
#include <QStringConverter>
#include <QStringList>

#include <algorithm>

namespace
{

struct Reading {
    bool good = false;
    A2DData map;
    QStringList energies;
};

bool isSame(const A2DRow& a, const A2DRow& b)
{
    return tests::sameDouble(a.x, b.x) && tests::sameDouble(a.y, b.y) &&
           tests::sameDouble(a.intensity, b.intensity) && tests::sameDouble(a.i0, b.i0) &&
           a.values.isEmpty() && b.values.isEmpty();
}

void checkSame(const Reading& found, const Reading& expected)
{
    FUZZ_REQUIRE(found.good == expected.good);
    FUZZ_REQUIRE(found.map.xNum == expected.map.xNum);
    FUZZ_REQUIRE(found.map.yNum == expected.map.yNum);
    FUZZ_REQUIRE(found.map.headerLines == expected.map.headerLines);
    FUZZ_REQUIRE(found.energies == expected.energies);
    FUZZ_REQUIRE(std::equal(found.map.rows.begin(), found.map.rows.end(), expected.map.rows.begin(),
                            expected.map.rows.end(),
                            [](const A2DRow& a, const A2DRow& b) { return isSame(a, b); }));
}

/// Reads a map into @p reading, which can already contain another map.
void readInto(Reading& reading, QIODevice& device)
{
    reading.energies.clear();
    reading.good = data::readMapText(device, reading.map,
                                     [&](const QString& text) { reading.energies.append(text); });
}

void readBuffer(Reading& reading, const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    FUZZ_REQUIRE(buffer.open(QIODevice::ReadOnly));
    readInto(reading, buffer);
}

Reading plainReading(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    FUZZ_REQUIRE(buffer.open(QIODevice::ReadOnly | QIODevice::Text));
    Reading reading;
    reading.good = tests::readPlainMap(buffer, reading.map,
                                       [&](const QString& text) { reading.energies.append(text); });
    return reading;
}

/// The size of the map must be within the limits of the reader for every header, because
/// the calculations loop over width * height pixels.
void checkBounds(const Reading& reading)
{
    const A2DData& map = reading.map;
    const qint64 pixels = std::max<qint64>(map.xNum, 1) * std::max<qint64>(map.yNum, 1);
    FUZZ_REQUIRE(pixels <= 33554432);
    FUZZ_REQUIRE(pixels <= 1048576 || pixels <= 64 * map.rows.size());
    FUZZ_REQUIRE(reading.good == (map.xNum > 0 && map.yNum > 0 && !map.rows.isEmpty()));
    FUZZ_REQUIRE(!map.extended);
}

/// Reads pixels inside the map, outside the map, and at indices after the last stored
/// pixel. The pixels of a text map must have no value lists.
void checkPixels(const A2DData& map)
{
    // After a failed read the size can be any number in the header, even the smallest int.
    const int lastX = std::max(map.xNum, 0) - 1;
    const int lastY = std::max(map.yNum, 0) - 1;
    for (const int x : {-1, 0, 1, lastX, map.xNum, 1 << 30}) {
        for (const int y : {-1, 0, lastY, map.yNum, 1 << 30}) {
            const qint64 i = qint64{y} * map.xNum + x;
            const bool isInside = i >= 0 && i < map.rows.size();
            const double expected =
                isInside ? data::absorbance(map.rows.at(i)) : data::absorbanceOutside;
            FUZZ_REQUIRE(tests::sameDouble(data::pixelMut(map, x, y), expected));
        }
    }
    QList<double> values{1.0, 2.0};
    map.rowValues(-1, values);
    FUZZ_REQUIRE((values == QList<double>{0.0, 0.0}));
    map.rowValues(0, values);
    FUZZ_REQUIRE(values.size() == (map.rows.isEmpty() ? 2 : 0));
}

/// With exactly the memory that the reader requests, the result must be @p expected. With
/// less memory the file must be rejected, and the map must be empty.
void checkLimitedMemory(const Reading& expected, const QByteArray& bytes)
{
    Reading found;
    const qint64 most = fuzz::peakRequestOf([&] { readBuffer(found, bytes); });
    {
        const fuzz::LimitedMemory memory(most);
        found = {};
        readBuffer(found, bytes);
        checkSame(found, expected);
    }
    const fuzz::LimitedMemory memory(fuzz::tooLittle(most, bytes.size() % 2 == 0));
    found = {};
    readBuffer(found, bytes);
    FUZZ_REQUIRE(!found.good && found.map.rows.isEmpty() && found.map.headerLines.isEmpty());
    FUZZ_REQUIRE(found.map.xNum == 0 && found.map.yNum == 0);
}

/// A read error must have the same effect as the end of the file.
void checkFailingDevice(const QByteArray& bytes)
{
    const qint64 end = qChecksum(QByteArrayView(bytes)) % (bytes.size() + 1);
    tests::ShortReadDevice device(bytes, 1 + bytes.size() % 300, bytes.size() % 2 == 0);
    device.failAt(end);
    Reading found;
    readInto(found, device);
    checkSame(found, plainReading(bytes.left(end)));
}

void checkFile(const QByteArray& bytes)
{
    const Reading expected = plainReading(bytes);
    Reading found;
    // Files with a byte order mark are not read with short reads, because the decoding of
    // invalid text in them depends on the sizes of the reads.
    const bool hasMark = QStringConverter::encodingForData(bytes.left(4)).has_value();
    if (!hasMark && fuzz::oneIn(4, bytes)) {
        tests::ShortReadDevice device(bytes, 1 + bytes.size() % 9, bytes.size() % 2 == 0);
        readInto(found, device);
    } else {
        readBuffer(found, bytes);
    }
    checkSame(found, expected);
    checkBounds(found);
    checkPixels(found.map);
    if (fuzz::oneIn(8, bytes)) {
        // Reads the second half of the input first, so that the second read has to replace the
        // content of a map.
        Reading again;
        readBuffer(again, bytes.sliced(bytes.size() / 2));
        readBuffer(again, bytes);
        checkSame(again, expected);
    }
    if (!hasMark && fuzz::oneIn(13, bytes)) {
        checkFailingDevice(bytes);
    }
    if (fuzz::oneIn(11, bytes)) {
        checkLimitedMemory(expected, bytes);
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    checkFile(bytes);
    if (oneIn(64, bytes)) {
        // The decoder reads 16384 bytes at a time. The length of the comment line before the
        // input is chosen so that the first read usually ends inside the input.
        constexpr qsizetype piece = 16384;
        const qsizetype before = piece - 2 - bytes.size() / 2 % 1000;
        checkFile("#" + QByteArray(before, ' ') + "\n" + bytes);
    }
}
