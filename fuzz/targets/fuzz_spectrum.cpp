// Tests spectrum files of both formats and the values calculated from spectra, at ordinary
// and extreme energies.
//
// An input is used as the file.
#include "data/AMutE.h"
#include "support/FuzzTarget.h"
#include "support/Memory.h"
#include "support/MemoryFile.h"
#include "support/OneIn.h"
#include "support/PlainSpectrumReader.h"
#include "support/SameDouble.h"
#include "support/ShortReadDevice.h"

#include <QBuffer>
#include <QStringConverter>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace
{

using tests::sameDouble;
using Limits = std::numeric_limits<double>;

constexpr auto nan = Limits::quiet_NaN();
constexpr auto infinity = Limits::infinity();

bool isSame(const MutPoint& a, const MutPoint& b)
{
    return sameDouble(a.angle, b.angle) && sameDouble(a.energy, b.energy) &&
           sameDouble(a.mut, b.mut);
}

bool isSame(const data::VictoreenLine& a, const data::VictoreenLine& b)
{
    return sameDouble(a.c, b.c) && sameDouble(a.a, b.a) && sameDouble(a.b, b.b);
}

bool areSame(const QList<MutPoint>& a, const QList<MutPoint>& b)
{
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](const MutPoint& one, const MutPoint& other) { return isSame(one, other); });
}

bool isSame(const AMutE& a, const AMutE& b)
{
    return a.valid == b.valid && areSame(a.points, b.points) && a.minAngle == b.minAngle &&
           a.maxAngle == b.maxAngle && a.minEnergy == b.minEnergy && a.maxEnergy == b.maxEnergy &&
           a.minMut == b.minMut && a.maxMut == b.maxMut && isSame(a.preLine, b.preLine) &&
           isSame(a.postLine, b.postLine);
}

bool readDevice(AMutE& record, const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    FUZZ_REQUIRE(buffer.open(QIODevice::ReadOnly));
    return record.readDevice(buffer);
}

const fuzz::MemoryFile& fileOf(const QByteArray& bytes)
{
    static fuzz::MemoryFile file;
    file.setContents(bytes);
    return file;
}

/// An empty spectrum. Its energy shift depends on the size of the input.
AMutE recordFor(const QByteArray& bytes)
{
    static constexpr std::array shifts{0.0, 0.0, 0.0, 1.5, -20.0, 1e300, nan, infinity};
    AMutE record;
    record.dE = shifts.at(static_cast<std::size_t>(bytes.size()) % shifts.size());
    return record;
}

void checkExtremes(const AMutE& record)
{
    std::array low{1e300, 1e300, 1e300};
    std::array high{-1e300, -1e300, -1e300};
    for (const MutPoint& point : record.points) {
        const std::array values{point.angle, point.energy, point.mut};
        for (std::size_t i = 0; i < values.size(); ++i) {
            low[i] = values[i] < low[i] ? values[i] : low[i];
            high[i] = values[i] > high[i] ? values[i] : high[i];
        }
    }
    FUZZ_REQUIRE(low == (std::array{record.minAngle, record.minEnergy, record.minMut}));
    FUZZ_REQUIRE(high == (std::array{record.maxAngle, record.maxEnergy, record.maxMut}));
}

void checkPoints(const AMutE& record, bool isRead, const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    FUZZ_REQUIRE(buffer.open(QIODevice::ReadOnly | QIODevice::Text));
    const QList<MutPoint> expected = tests::readPlainSpectrum(buffer);
    FUZZ_REQUIRE(areSame(record.points, expected));
    FUZZ_REQUIRE(isRead == !expected.isEmpty());
    FUZZ_REQUIRE(record.valid == isRead);
    checkExtremes(record);
}

/// Reads the second half of the input into a spectrum, and then the whole input into the same
/// spectrum. The result must be equal to @p first, the result of reading the input into an
/// empty spectrum.
void checkSecondRead(const AMutE& first, const QByteArray& bytes)
{
    AMutE record = recordFor(bytes);
    readDevice(record, bytes.sliced(bytes.size() / 2));
    FUZZ_REQUIRE(readDevice(record, bytes) == first.valid);
    // After a failed read the pre-edge and post-edge lines of the previous spectrum remain,
    // so they are not compared.
    if (!first.valid) {
        record.preLine = first.preLine;
        record.postLine = first.postLine;
    }
    FUZZ_REQUIRE(isSame(record, first));
}

void checkPath(const AMutE& expected, const QByteArray& bytes)
{
    AMutE record = recordFor(bytes);
    const QString path = fileOf(bytes).path();
    FUZZ_REQUIRE(record.readFile(path) == expected.valid);
    FUZZ_REQUIRE(isSame(record, expected));
    FUZZ_REQUIRE(record.filePath == path && !record.fileName.isEmpty());
    const AMutE before = record;
    for (const QString& noFile : {QString(), QStringLiteral("/proc/self/fd"),
                                  QStringLiteral("/dev/null"), QStringLiteral("no such file")}) {
        FUZZ_REQUIRE(!record.readFile(noFile));
        FUZZ_REQUIRE(isSame(record, before));
        FUZZ_REQUIRE(record.filePath == path && record.fileName == before.fileName);
    }
}

/// With exactly the memory that the reader requests, the result must be @p expected. With
/// less memory the read must fail, and the spectrum must have no points.
void checkLimitedMemory(const AMutE& expected, const QByteArray& bytes)
{
    AMutE record = recordFor(bytes);
    const qint64 most = fuzz::peakRequestOf([&] { readDevice(record, bytes); });
    {
        const fuzz::LimitedMemory memory(most);
        record = recordFor(bytes);
        FUZZ_REQUIRE(readDevice(record, bytes) == expected.valid);
        FUZZ_REQUIRE(isSame(record, expected));
    }
    const fuzz::LimitedMemory memory(fuzz::tooLittle(most, bytes.size() % 2 == 0));
    record = recordFor(bytes);
    FUZZ_REQUIRE(!readDevice(record, bytes));
    FUZZ_REQUIRE(!record.valid && record.points.isEmpty());
    FUZZ_REQUIRE(record.minEnergy == 1e300 && record.maxEnergy == -1e300);
}

/// Whether the input is valid UTF-8 without a byte order mark. The decoded text then does
/// not depend on the sizes of the reads.
bool isPlainUtf8(const QByteArray& bytes)
{
    return !QStringConverter::encodingForData(bytes.left(4)) &&
           QString::fromUtf8(bytes).toUtf8() == bytes;
}

/// Reads from a device with short reads and from a failing device. A read error must have
/// the same effect as the end of the file.
void checkOtherDevices(const AMutE& expected, const QByteArray& bytes)
{
    const qint64 largest = 1 + bytes.size() % 300;
    tests::ShortReadDevice device(bytes, largest, false);
    AMutE record = recordFor(bytes);
    FUZZ_REQUIRE(record.readDevice(device) == expected.valid);
    FUZZ_REQUIRE(isSame(record, expected));

    const qint64 end = qChecksum(QByteArrayView(bytes)) % (bytes.size() + 1);
    tests::ShortReadDevice failing(bytes, largest, false);
    failing.failAt(end);
    record = recordFor(bytes);
    const bool isRead = record.readDevice(failing);
    checkPoints(record, isRead, bytes.left(end));
}

/// Energies at and 0.5 eV above some of the points, a few fixed energies, and non-finite
/// energies.
QList<double> energiesAround(const AMutE& record)
{
    QList<double> energies{nan, infinity, -infinity, 0.0, 8333.0, 1e308};
    const qsizetype n = record.points.size();
    const qsizetype step = std::max<qsizetype>(n / 8, 1);
    for (qsizetype i = 0; i < n; i += step) {
        const double energy = record.points.at(i).energy - record.dE;
        energies.append(energy);
        energies.append(energy + 0.5);
        energies.append(record.points.at(n - 1 - i).energy - record.dE);
    }
    return energies;
}

void checkIndices(const AMutE& record, const QList<double>& energies)
{
    const qsizetype n = record.points.size();
    const QList<int> indices = record.indicesBelow(energies);
    const QList<double> normalised = record.normalisedAt(energies);
    FUZZ_REQUIRE(indices.size() == energies.size() && normalised.size() == energies.size());
    for (qsizetype k = 0; k < energies.size(); ++k) {
        const double energy = energies.at(k);
        const int index = record.indexBelow(energy);
        FUZZ_REQUIRE(indices.at(k) == index);
        FUZZ_REQUIRE(index >= (n == 1 ? -1 : 0) && index <= std::max<qsizetype>(n - 2, 0));
        FUZZ_REQUIRE(sameDouble(normalised.at(k), record.normalisedAt(energy)));
        FUZZ_REQUIRE(n >= 2 || record.mutAt(energy) == 0.0);
        record.preValue(energy);
        record.postValue(energy);
    }
}

void checkValuesOfPoints(const AMutE& record, int kind)
{
    const auto n = static_cast<int>(record.points.size());
    for (const int outside :
         {std::numeric_limits<int>::min(), -1, n, n + 1, std::numeric_limits<int>::max()}) {
        FUZZ_REQUIRE(record.value(kind, outside) == 0.0);
        FUZZ_REQUIRE(record.checkedValue(kind, outside) == 0.0);
    }
    const bool isKind = kind >= AMutE::raw && kind <= AMutE::normalisedByLines;
    for (int i = 0; i < n; i += std::max(n / 4, 1)) {
        const double value = record.value(kind, i);
        FUZZ_REQUIRE(sameDouble(value, record.checkedValue(kind, i)));
        FUZZ_REQUIRE(isKind || value == 0.0);
        FUZZ_REQUIRE(kind != AMutE::raw || sameDouble(value, record.points.at(i).mut));
    }
}

void checkRange(const AMutE& record, int kind, double from, double to)
{
    double low = 1e300;
    double high = -1e300;
    record.valueRange(kind, from, to, &low, &high);
    double plainLow = 1e300;
    double plainHigh = -1e300;
    for (qsizetype i = 0; i < record.points.size(); ++i) {
        const double energy = record.points.at(i).energy - record.dE;
        if (energy >= from && energy <= to) {
            const double value = record.value(kind, static_cast<int>(i));
            plainLow = value < plainLow ? value : plainLow;
            plainHigh = value > plainHigh ? value : plainHigh;
        }
    }
    FUZZ_REQUIRE(low == plainLow && high == plainHigh);
}

void checkBackground(const AMutE& record, double energy)
{
    const bool isReached =
        std::any_of(record.points.begin(), record.points.end(),
                    [&](const MutPoint& point) { return point.energy - record.dE >= energy; });
    for (const bool subPost : {false, true}) {
        double out = -7.25;
        FUZZ_REQUIRE(record.backgroundSubtractedAt(energy, subPost, &out) == isReached);
        FUZZ_REQUIRE(isReached || out == -7.25);
    }
}

void checkValues(AMutE record)
{
    const QList<double> energies = energiesAround(record);
    checkIndices(record, energies);
    record.edgeEnergy = record.findEdge();
    record.edgeJump();
    for (int kind = -1; kind <= AMutE::normalisedByLines + 1; ++kind) {
        checkValuesOfPoints(record, kind);
        record.valueAt(kind, energies.at(energies.size() - 1));
        record.valueAt(kind, nan);
    }
    checkRange(record, AMutE::raw, -infinity, infinity);
    checkRange(record, AMutE::normalisedByLines, 8000.0, 9000.0);
    checkRange(record, AMutE::minusPreEdge, energies.last(), energies.first());
    for (const double energy : {energies.last(), nan, infinity, -infinity}) {
        checkBackground(record, energy);
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    AMutE record = recordFor(bytes);
    const bool isRead = readDevice(record, bytes);
    FUZZ_REQUIRE(record.filePath.isEmpty() && record.fileName.isEmpty());
    checkPoints(record, isRead, bytes);
    if (oneIn(4, bytes)) {
        checkValues(record);
    }
    if (oneIn(5, bytes)) {
        checkSecondRead(record, bytes);
    }
    if (oneIn(6, bytes) && isPlainUtf8(bytes)) {
        checkOtherDevices(record, bytes);
    }
    if (oneIn(7, bytes)) {
        checkLimitedMemory(record, bytes);
    }
    if (oneIn(16, bytes)) {
        checkPath(record, bytes);
    }
}
