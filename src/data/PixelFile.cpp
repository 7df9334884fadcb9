#include "data/PixelFile.h"

#include "data/FileAccess.h"
#include "data/MemoryCheck.h"
#include "data/ReadBounds.h"

#include <QDebug>

#include <algorithm>
#include <array>
#include <bit>

static_assert(std::endian::native == std::endian::little && sizeof(double) == 8 &&
                  sizeof(bool) == 1,
              "pixels and flags are copied between lists and file without conversion");

namespace data
{
namespace
{

/// Number of pixels whose values are complete in a file of @p size bytes.
qint64 storedPixels(qint64 size, qint64 headerSize)
{
    return headerSize < 0 ? 0 : std::max(size - headerSize, qint64{0}) / qint64{sizeof(double)};
}

bool isSizeAllowed(const TDData0Header& header, qint64 stored)
{
    return header.width >= 0 && header.height >= 0 &&
           !isSizeTooLarge(header.width, header.height, stored);
}

} // namespace

bool PixelFile::open(const QString& path)
{
    m_header = {};
    m_file.close();
    m_file.setFileName(path);
    if (TDData0::readHeader(m_header, path)) {
        if (!openForReading(m_file) || !m_file.seek(m_header.headerSize)) {
            m_file.close(); // an unreadable file counts as a file without pixels
        }
        if (isSizeAllowed(m_header,
                          storedPixels(m_file.isOpen() ? m_file.size() : 0, m_header.headerSize))) {
            return true;
        }
        m_file.close();
    }
    qDebug().noquote() << path << "is not a TDData0 file.";
    return false;
}

void PixelFile::readValues(std::span<double> out)
{
    if (!m_file.isOpen()) {
        return;
    }
    m_file.read(reinterpret_cast<char*>(out.data()), static_cast<qint64>(out.size_bytes()));
}

void PixelFile::readFlags(std::span<bool> out)
{
    if (!m_file.isOpen()) {
        return;
    }
    char* const bytes = reinterpret_cast<char*>(out.data());
    m_file.read(bytes, static_cast<qint64>(out.size_bytes()));
    // Reading a bool whose byte is neither 0 nor 1 would be undefined behaviour.
    std::transform(bytes, bytes + out.size(), bytes,
                   [](char byte) { return static_cast<char>(byte != 0); });
}

bool appendPixelFile(const QString& path, A2DData& map, qsizetype maxRows)
{
    map.xNum = 0;
    map.yNum = 0;
    PixelFile file;
    if (!file.open(path)) {
        return false;
    }
    const qsizetype before = map.rows.size();
    const qsizetype count = std::clamp(maxRows - before, qsizetype{0}, file.pixelCount());
    constexpr qint64 forWindows = 32 * 1024 * 1024;
    if (!canGrow(map.rows, count, forWindows)) {
        reportRefusal("no memory for its pixels");
        return false;
    }
    if (map.rows.isEmpty()) {
        map.rows.reserve(count); // exactly; resize() could allocate up to twice as much
    }
    map.xNum = file.header().width;
    map.yNum = file.header().height;
    map.rows.resize(before + count);
    A2DRow* row = map.rows.data() + before;
    std::array<double, 4096> values;
    for (qsizetype first = 0; first < count; first += qsizetype{values.size()}) {
        const qsizetype blockSize = std::min(count - first, qsizetype{values.size()});
        values.fill(0.0);
        file.readValues(std::span(values).first(static_cast<std::size_t>(blockSize)));
        for (qsizetype i = first; i < first + blockSize; ++i, ++row) {
            const qsizetype line = i / map.xNum;
            row->x = static_cast<double>(i % map.xNum);
            row->y = static_cast<double>(line);
            row->intensity = values[static_cast<std::size_t>(i - first)];
        }
    }
    return true;
}

} // namespace data
