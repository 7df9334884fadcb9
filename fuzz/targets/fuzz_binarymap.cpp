// Tests binary maps: reading and writing files, smoothing, copying, appending, the change of
// the size, and data IDs in file names.
//
// An input that begins with "2dData" is used as a file. Any other input is a sequence of
// numbers from which maps and operations on them are generated. About one in eight of these
// inputs is also used as a file that is not a binary map.
#include "data/A2DData.h"
#include "data/PixelFile.h"
#include "data/TDData0.h"
#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/Memory.h"
#include "support/MemoryFile.h"
#include "support/OneIn.h"
#include "support/PlainPixelHeader.h"
#include "support/SameDouble.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>

namespace
{

using fuzz::ByteReader;
using tests::sameDouble;

fuzz::MemoryFile& inputFile()
{
    static fuzz::MemoryFile file;
    return file;
}

fuzz::MemoryFile& savedFile()
{
    static fuzz::MemoryFile file;
    return file;
}

bool areSame(const QList<double>& a, const QList<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameDouble);
}

/// Whether both lists have the same flags. Does not use QList's operator==: if both lists are
/// empty and only one of them has allocated memory, it passes a null pointer to memcmp(),
/// which UBSan reports.
bool areSame(const QList<bool>& a, const QList<bool>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

bool isSame(const TDData0& a, const TDData0& b)
{
    return a.width == b.width && a.height == b.height && a.dataId == b.dataId &&
           areSame(a.data, b.data) && areSame(a.validFlags, b.validFlags) &&
           sameDouble(a.minVal, b.minVal) && sameDouble(a.maxVal, b.maxVal) &&
           a.region == b.region && a.regionSet == b.regionSet;
}

void copyFields(TDData0& to, const TDData0& from)
{
    to.width = from.width;
    to.height = from.height;
    to.dataId = from.dataId;
    to.data = from.data;
    to.validFlags = from.validFlags;
    to.minVal = from.minVal;
    to.maxVal = from.maxVal;
    to.region = from.region;
    to.regionSet = from.regionSet;
}

/// @p extreme after a round trip through a text with 6 significant digits, because the
/// header stores the smallest and largest value as such texts.
double roundedToSixDigits(double extreme)
{
    return QString::number(extreme, 'g', 6).toDouble();
}

/// Saves the map and loads it again. Size, values and flags must be unchanged. The smallest
/// and largest value must be rounded to six digits. If the data ID, converted to Latin-1, is
/// printable ASCII, the loaded ID must be equal to it, and saving the loaded map must write
/// the same bytes again.
void checkRoundTrip(const TDData0& map)
{
    const QString path = savedFile().path();
    FUZZ_REQUIRE(map.save(path));
    FUZZ_REQUIRE(TDData0::isTDData0File(path));
    TDData0Header header;
    FUZZ_REQUIRE(TDData0::readHeader(header, path));
    FUZZ_REQUIRE(header.valid && header.headerSize > 0 && header.headerSize % 256 == 0);
    TDData0 again(1, 2);
    FUZZ_REQUIRE(again.load(path));
    FUZZ_REQUIRE(again.width == map.width && again.height == map.height);
    FUZZ_REQUIRE(areSame(again.data, map.data) && areSame(again.validFlags, map.validFlags));
    FUZZ_REQUIRE(sameDouble(again.minVal, roundedToSixDigits(map.minVal)));
    FUZZ_REQUIRE(sameDouble(again.maxVal, roundedToSixDigits(map.maxVal)));
    const QByteArray id = map.dataId.toLatin1();
    const bool isAscii =
        std::all_of(id.begin(), id.end(), [](char c) { return c >= ' ' && c < 127; });
    if (isAscii) {
        FUZZ_REQUIRE(again.dataId == QString::fromLatin1(id));
        const QByteArray first = savedFile().contents();
        FUZZ_REQUIRE(again.save(path) && savedFile().contents() == first);
    }
}

/// The value of pixel @p i in the file, whose values start at byte @p begin; nullopt if
/// @p begin is negative or the file ends before the last byte of this value.
std::optional<double> valueInFile(const QByteArray& bytes, qint64 begin, qint64 i)
{
    const qint64 at = begin + 8 * i;
    double value = 0.0;
    if (begin < 0 || at + 8 > bytes.size()) {
        return {};
    }
    std::memcpy(&value, bytes.constData() + at, sizeof value);
    return value;
}

void checkPixels(const TDData0& map, const QByteArray& bytes, qint64 begin)
{
    const qint64 pixels = qint64{map.width} * map.height;
    FUZZ_REQUIRE(map.data.size() == pixels && map.validFlags.size() == pixels);
    FUZZ_REQUIRE(map.width <= 33554432 && map.height <= 33554432 && pixels <= 33554432);
    FUZZ_REQUIRE(pixels <= 1048576 || pixels <= 64 * (bytes.size() / 8));
    for (qint64 i = 0; i < std::min<qint64>(pixels, 1000); ++i) {
        const auto value = valueInFile(bytes, begin, i);
        FUZZ_REQUIRE(!value || sameDouble(map.data.at(i), *value));
        FUZZ_REQUIRE(value || begin + 8 * i < bytes.size() || map.data.at(i) == 0.0);
        const qint64 flag = begin + 8 * pixels + i;
        const bool isSet = begin >= 0 && flag < bytes.size() && bytes.at(flag) != 0;
        FUZZ_REQUIRE(map.validFlags.at(i) == isSet);
    }
}

/// Appends the file to a map that already has three pixels. These pixels must not change.
/// The pixels of the file must follow, stored as absorbances (I0 = 0), up to a total of
/// @p most pixels.
void checkAppended(const TDData0& map, bool isLoaded, int most)
{
    A2DData rows;
    rows.rows = QList<A2DRow>(3, {9, 9, 9, 9, {}});
    rows.headerLines = QStringList{QStringLiteral("kept")};
    rows.xNum = 7;
    FUZZ_REQUIRE(data::appendPixelFile(inputFile().path(), rows, most) == isLoaded);
    FUZZ_REQUIRE(rows.headerLines.size() == 1);
    FUZZ_REQUIRE(rows.xNum == (isLoaded ? map.width : 0));
    FUZZ_REQUIRE(rows.yNum == (isLoaded ? map.height : 0));
    const qsizetype expected = isLoaded ? std::clamp<qsizetype>(most - 3, 0, map.data.size()) : 0;
    FUZZ_REQUIRE(rows.rows.size() == 3 + expected);
    FUZZ_REQUIRE(rows.rows.at(2).i0 == 9.0);
    for (qsizetype i = 0; i < std::min<qsizetype>(expected, 100); ++i) {
        const A2DRow& row = rows.rows.at(3 + i);
        FUZZ_REQUIRE(row.x == static_cast<double>(i % map.width));
        FUZZ_REQUIRE(row.y == static_cast<double>(i / map.width));
        FUZZ_REQUIRE(sameDouble(row.intensity, map.data.at(i)) && row.i0 == 0.0);
        FUZZ_REQUIRE(row.values.isEmpty());
    }
}

/// With exactly the memory that the load requests, its result must be the same as with
/// enough memory. With less memory the load must fail and change nothing.
void checkLimitedMemory(const QByteArray& bytes, bool isLoaded)
{
    const QString path = inputFile().path();
    TDData0 loaded(2, 1);
    const qint64 most = fuzz::peakRequestOf([&] { FUZZ_REQUIRE(loaded.load(path) == isLoaded); });
    FUZZ_REQUIRE(!isLoaded || most >= loaded.data.size() * 9);
    {
        const fuzz::LimitedMemory memory(most);
        TDData0 map(2, 1);
        FUZZ_REQUIRE(map.load(path) == isLoaded);
        FUZZ_REQUIRE(isSame(map, loaded));
    }
    const fuzz::LimitedMemory memory(fuzz::tooLittle(most, bytes.size() % 2 == 0));
    TDData0 map(2, 1);
    FUZZ_REQUIRE(!map.load(path));
    FUZZ_REQUIRE(isSame(map, TDData0(2, 1)));
}

/// Compares the whole header with the reference implementation.
void checkHeader(const TDData0Header& header, const QByteArray& bytes)
{
    const tests::PlainPixelHeader expected = tests::readPlainPixelHeader(bytes);
    FUZZ_REQUIRE(header.valid && header.headerSize == expected.headerSize);
    FUZZ_REQUIRE(header.width == expected.width && header.height == expected.height);
    FUZZ_REQUIRE(header.dataId == expected.dataId);
    FUZZ_REQUIRE(sameDouble(header.minVal, expected.minVal));
    FUZZ_REQUIRE(sameDouble(header.maxVal, expected.maxVal));
}

/// Loads the file into a map that already has content. A failed load must not change the
/// map. A successful load must replace its content, but not its region.
void checkLoadOver(const TDData0& fresh, bool isLoaded, const QString& path)
{
    TDData0 map(2, 3);
    map.data[1] = 4.5;
    map.dataId = QStringLiteral("before");
    map.setRegion(QRect(1, 1, 1, 1));
    TDData0 before(0, 0);
    copyFields(before, map);
    FUZZ_REQUIRE(map.load(path) == isLoaded);
    if (isLoaded) {
        FUZZ_REQUIRE(map.width == fresh.width && map.height == fresh.height);
        FUZZ_REQUIRE(map.data.size() == fresh.data.size() && map.dataId == fresh.dataId);
        FUZZ_REQUIRE(map.regionSet && map.region == before.region);
    } else {
        FUZZ_REQUIRE(isSame(map, before));
    }
}

void checkFile(const QByteArray& bytes)
{
    inputFile().setContents(bytes);
    const QString path = inputFile().path();
    TDData0Header header;
    FUZZ_REQUIRE(TDData0::isTDData0File(path));
    FUZZ_REQUIRE(TDData0::readHeader(header, path));
    checkHeader(header, bytes);
    const bool isLarge = qint64{header.width} * header.height > (1 << 14);
    if (isLarge && !fuzz::oneIn(64, bytes)) {
        return; // comparing a large map, mostly zeros, takes too long
    }
    TDData0 map(0, 0);
    const bool isLoaded = map.load(path);
    FUZZ_REQUIRE(isLoaded || (map.width == 0 && map.height == 0 && map.minVal == 1e300));
    if (isLoaded) {
        FUZZ_REQUIRE(map.width == header.width && map.height == header.height);
        FUZZ_REQUIRE(map.dataId == header.dataId && sameDouble(map.minVal, header.minVal));
        checkPixels(map, bytes, header.headerSize);
        if (fuzz::oneIn(3, bytes)) {
            checkRoundTrip(map);
        }
    }
    // The following checks run only for some inputs, because each of them opens the file
    // again.
    if (fuzz::oneIn(4, bytes)) {
        checkLoadOver(map, isLoaded, path);
    }
    if (fuzz::oneIn(2, bytes)) {
        checkAppended(map, isLoaded, static_cast<int>(bytes.size() % 200));
    }
    if (fuzz::oneIn(7, bytes)) {
        checkLimitedMemory(bytes, isLoaded);
    }
}

/// For a file that is not a binary map, every function that reads it must return false and
/// change no pixels.
void checkOtherFile(const QByteArray& bytes)
{
    inputFile().setContents(bytes);
    const QString path = inputFile().path();
    TDData0Header header;
    FUZZ_REQUIRE(!TDData0::isTDData0File(path));
    FUZZ_REQUIRE(!TDData0::readHeader(header, path) && !header.valid && header.width == 0);
    checkLoadOver(TDData0(0, 0), false, path);
    checkAppended(TDData0(0, 0), false, 100);
}

/// Fills a map with values and flags. With @p isExact all values are small integers. For
/// some inputs the list of values or flags is then made shorter than the number of pixels.
void fill(TDData0& map, ByteReader& reader, bool isExact)
{
    for (qsizetype i = 0; i < map.data.size(); ++i) {
        map.data[i] = isExact ? reader.number(-8, 8) : reader.anyDouble();
        map.validFlags[i] = reader.byte() % 3 != 0;
    }
    if (reader.byte() % 8 == 0) {
        map.data.resize(reader.number(0, static_cast<int>(map.data.size())));
    }
    if (reader.byte() % 8 == 0) {
        map.validFlags.resize(reader.number(0, static_cast<int>(map.validFlags.size())));
    }
}

bool hasPixel(const TDData0& map, qint64 i)
{
    return i < map.data.size() && i < map.validFlags.size();
}

bool hasValue(const TDData0& map, int x, int y)
{
    const qint64 i = qint64{y} * map.width + x;
    return hasPixel(map, i) && map.validFlags.at(i);
}

/// Reference implementation of smoothing by a moving average: adds all values of each
/// window. The program updates a running sum. With small integers both sums are exact, so
/// the results must be equal.
void setPlainMeans(const TDData0& map, TDData0& dest, bool alongX, qint64 n)
{
    for (int y = 0; y < std::min(map.height, dest.height); ++y) {
        for (int x = 0; x < std::min(map.width, dest.width); ++x) {
            double sum = 0.0;
            int count = 0;
            for (int other = 0; other < (alongX ? map.width : map.height); ++other) {
                const int sx = alongX ? other : x;
                const int sy = alongX ? y : other;
                if (std::abs(qint64{other} - (alongX ? x : y)) <= n && hasValue(map, sx, sy)) {
                    sum += map.data.at(qint64{sy} * map.width + sx);
                    ++count;
                }
            }
            const qint64 to = qint64{y} * dest.width + x;
            if (count > 0 && hasValue(map, x, y) && hasPixel(dest, to)) {
                dest.data[to] = sum / count;
                dest.validFlags[to] = true;
                dest.minVal = std::min(dest.minVal, sum / count);
                dest.maxVal = std::max(dest.maxVal, sum / count);
            }
        }
    }
}

void checkSmoothing(const TDData0& map, const TDData0& dest, ByteReader& reader, bool isExact)
{
    const std::array windows{-1, 0, 1, 2, 3, 7, std::numeric_limits<int>::max()};
    const int n = reader.oneOf(windows);
    for (const bool alongX : {false, true}) {
        TDData0 found(0, 0);
        copyFields(found, dest);
        alongX ? map.smoothAlongX(&found, n) : map.smoothAlongY(&found, n);
        TDData0 expected(0, 0);
        copyFields(expected, dest);
        setPlainMeans(map, expected, alongX, n);
        FUZZ_REQUIRE(!isExact || isSame(found, expected));
        FUZZ_REQUIRE(areSame(found.validFlags, expected.validFlags));
    }
    const std::unique_ptr<TDData0> both(map.smoothed(n, reader.number(-1, 2)));
    FUZZ_REQUIRE(both->width == map.width && both->height == map.height);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void copyPlainly(const TDData0& map, TDData0& dest, const QRect& r, bool toOrigin)
{
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            const bool isInside =
                x >= r.left() && x <= r.right() && y >= r.top() && y <= r.bottom();
            const qint64 toX = qint64{x} - (toOrigin ? r.left() : 0);
            const qint64 toY = qint64{y} - (toOrigin ? r.top() : 0);
            const qint64 from = qint64{y} * map.width + x;
            if (!isInside || toX >= dest.width || toY >= dest.height || !hasPixel(map, from) ||
                !hasPixel(dest, toY * dest.width + toX)) {
                continue;
            }
            dest.data[toY * dest.width + toX] = map.data.at(from);
            dest.validFlags[toY * dest.width + toX] = map.validFlags.at(from);
            dest.minVal = std::min(dest.minVal, map.data.at(from));
            dest.maxVal = std::max(dest.maxVal, map.data.at(from));
        }
    }
    dest.dataId = map.dataId;
    dest.region =
        map.regionSet ? map.region : QRect(QPoint(0, 0), QPoint(map.width - 1, map.height - 1));
    dest.regionSet = true;
}

int coordinate(ByteReader& reader)
{
    switch (reader.byte() % 16) {
    case 0:
        return std::numeric_limits<int>::min();
    case 1:
        return std::numeric_limits<int>::max();
    default:
        return reader.number(-2, 8);
    }
}

void checkCopy(const TDData0& map, const TDData0& dest, ByteReader& reader)
{
    const QPoint topLeft(coordinate(reader), coordinate(reader));
    const QRect block(topLeft, QPoint(coordinate(reader), coordinate(reader)));
    const bool toOrigin = reader.byte() % 2 == 0;
    TDData0 found(0, 0);
    copyFields(found, dest);
    map.copyBlockTo(&found, block, toOrigin);
    TDData0 expected(0, 0);
    copyFields(expected, dest);
    copyPlainly(map, expected, block, toOrigin);
    FUZZ_REQUIRE(isSame(found, expected));
}

void checkFileSafeId(const TDData0& map)
{
    QString expected = map.dataId;
    expected = expected.split(u'/').join(QLatin1String("div"));
    expected = expected.split(QLatin1String("__")).join(u'_');
    FUZZ_REQUIRE(map.fileSafeId() == expected);
}

void checkSetSize(TDData0& map, int width, int height)
{
    map.setSize(width, height);
    const qsizetype pixels = qsizetype{std::max(width, 0)} * std::max(height, 0);
    FUZZ_REQUIRE(areSame(map.data, QList<double>(pixels, 0.0)));
    FUZZ_REQUIRE(areSame(map.validFlags, QList<bool>(pixels, false)));
    FUZZ_REQUIRE(pixels == 0 || (!(map.minVal > 0.0) && !(map.maxVal < 0.0)));
}

void checkOperations(const QByteArray& bytes)
{
    ByteReader reader(bytes);
    const bool isExact = reader.byte() % 2 == 0;
    TDData0 map(reader.number(0, 6), reader.number(0, 6));
    TDData0 dest(reader.number(0, 6), reader.number(0, 6));
    map.dataId = reader.text(12);
    if (reader.byte() % 4 == 0) {
        map.setRegion(QRect(1, 2, 3, 4));
    }
    fill(map, reader, isExact);
    fill(dest, reader, isExact);
    checkSmoothing(map, dest, reader, isExact);
    checkCopy(map, dest, reader);
    checkFileSafeId(map);
    if (map.data.size() == qsizetype{map.width} * map.height &&
        map.validFlags.size() == map.data.size() && !map.dataId.contains(u'\n') &&
        fuzz::oneIn(4, bytes)) {
        checkRoundTrip(map);
    }
    checkSetSize(dest, reader.number(-3, 5), reader.number(-3, 5));
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    static int count = 1;
    static char name[] = "fuzz_binarymap";
    static char* names[] = {name, nullptr};
    // Smoothing can call deleteLater() on a map; an application object is needed to delete it.
    static const QCoreApplication application(count, names);
    if (QString::fromUtf8(bytes.left(64)).startsWith(QLatin1String("2dData"))) {
        checkFile(bytes);
        return;
    }
    checkOperations(bytes);
    if (oneIn(8, bytes)) {
        checkOtherFile(bytes);
    }
}
