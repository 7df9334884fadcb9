#include "analysis/ResultText.h"

#include "analysis/NumberText.h"
#include "data/A2DData.h"

#include <QFileDevice>
#include <QStringEncoder>

#include <cstring>
#include <string_view>
#include <vector>

namespace analysis
{

namespace
{

constexpr std::array<const char*, columnCount> columnNames = {
    "alpha1", "alpha2", "alpha3", "alpha4", "dMut1",   "dMut2",     "dMut3",
    "dMut4",  "Mut0",   "C1",     "C2",     "Valence", "Total-dMut"};

/// Collects text and writes it to a device in large blocks. After the first failed write,
/// nothing more is written.
class BlockWriter
{
public:
    explicit BlockWriter(QIODevice& device)
        : m_device(device)
        , m_block(blockSize)
    {
    }

    /// Returns a buffer for @p size bytes; @p size must be at most blockSize. The caller writes
    /// to it and passes the end of the text to advance().
    char* reserve(std::size_t size)
    {
        if (blockSize - m_used < size) {
            flush();
        }
        return m_block.data() + m_used;
    }

    void advance(const char* end) { m_used = static_cast<std::size_t>(end - m_block.data()); }

    void put(QByteArrayView text)
    {
        const auto size = static_cast<std::size_t>(text.size());
        if (size > blockSize) {
            flush();
            write(text.data(), text.size());
            return;
        }
        if (size > 0) {
            char* out = reserve(size);
            std::memcpy(out, text.data(), size);
            advance(out + size);
        }
    }

    bool failed() const { return m_failed; }

    /// Writes the remaining text. If the device is a file, also flushes its buffer to the
    /// operating system.
    /// @return whether all writes and the flush succeeded
    bool finish()
    {
        flush();
        auto* file = qobject_cast<QFileDevice*>(&m_device);
        return !m_failed && (!file || file->flush());
    }

private:
    static constexpr std::size_t blockSize = std::size_t{256} * 1024;

    void flush()
    {
        write(m_block.data(), static_cast<qint64>(m_used));
        m_used = 0;
    }

    void write(const char* text, qint64 size)
    {
        m_failed = m_failed || (size > 0 && m_device.write(text, size) != size);
    }

    QIODevice& m_device;
    std::vector<char> m_block;
    std::size_t m_used = 0;
    bool m_failed = false;
};

/// Minimum width of a number, in characters.
constexpr std::size_t numberWidth = 10;

/// Buffer size reserved per number, enough for the bytes that putNumber() can write and the
/// blank before the number.
constexpr std::size_t numberCapacity = 32;

/// Writes a number, right-aligned in its field, and returns the end of the text.
/// Copying a fixed number of bytes is faster than copying the exact number; the text
/// that follows overwrites the surplus bytes.
char* putNumber(char* out, double value)
{
    constexpr std::size_t copiedBytes = 16;
    static_assert(generalTextLength <= copiedBytes && numberWidth + copiedBytes < numberCapacity);
    std::array<char, generalTextCapacity> text{};
    const std::size_t length = generalText(value, text);
    const std::size_t pad = length < numberWidth ? numberWidth - length : 0;
    std::memset(out, ' ', numberWidth);
    std::memcpy(out + pad, text.data(), copiedBytes);
    return out + pad + length;
}

char* putText(char* out, std::string_view text)
{
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// Calls linePerPixel(row) for each pixel, row-major, with null if the map has no row for the
/// pixel. Writes a blank line after each image line. Stops after a failed write.
template <typename LinePerPixel>
void writePixelLines(BlockWriter& writer, const A2DData& map, LinePerPixel linePerPixel)
{
    const A2DRow* const rows = map.rows.constData();
    const qint64 rowCount = map.rows.size();
    for (qint64 y = 0; y < map.yNum && !writer.failed(); ++y) {
        const qint64 first = y * map.xNum;
        for (qint64 i = first; i < first + map.xNum && !writer.failed(); ++i) {
            linePerPixel(i < rowCount ? rows + i : nullptr);
        }
        writer.put("\n");
    }
}

void writeSimpleTable(BlockWriter& writer, const A2DData& map, const ValenceMix& mix)
{
    const A2DRow missing;
    const auto line = [&](const A2DRow* found) {
        const A2DRow& row = found ? *found : missing;
        char* out = writer.reserve(6 * numberCapacity);
        *out++ = ' ';
        out = putNumber(out, row.x);
        *out++ = ' ';
        out = putNumber(out, row.y);
        out = putText(out, "    ");
        out = putNumber(out, row.intensity);
        *out++ = ' ';
        out = putNumber(out, mix(row.intensity));
        *out++ = ' ';
        out = putNumber(out, row.i0);
        *out++ = '\n';
        writer.advance(out);
    };
    writePixelLines(writer, map, line);
}

std::vector<qsizetype> wantedColumns(const std::array<bool, columnCount>& wanted)
{
    std::vector<qsizetype> columns;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i]) {
            columns.push_back(static_cast<qsizetype>(i));
        }
    }
    return columns;
}

void writeExtendedTable(BlockWriter& writer, const A2DData& map,
                        const std::array<bool, columnCount>& wanted)
{
    const std::vector<qsizetype> columns = wantedColumns(wanted);
    writer.put("# y x");
    for (const qsizetype column : columns) {
        writer.put(" ");
        writer.put(columnNames[static_cast<std::size_t>(column)]);
    }
    writer.put("\n");

    const A2DRow missing;
    const auto line = [&](const A2DRow* found) {
        const A2DRow& row = found ? *found : missing;
        char* out = writer.reserve((columns.size() + 3) * numberCapacity);
        *out++ = ' ';
        out = putNumber(out, row.x);
        *out++ = ' ';
        out = putNumber(out, row.y);
        for (const qsizetype column : columns) {
            *out++ = ' ';
            out = putNumber(out, column < row.values.size() ? row.values.at(column) : 0.0);
        }
        *out++ = '\n';
        writer.advance(out);
    };
    writePixelLines(writer, map, line);
}

/// Writes the title line, the comment lines and a blank line. One encoder converts all
/// lines, so that it writes unpaired surrogates with the same bytes as QTextStream does.
void writeHeader(BlockWriter& writer, const QStringList& headerLines)
{
    QStringEncoder encoder(QStringEncoder::Utf8);
    const auto put = [&](QStringView text) { writer.put(QByteArray(encoder.encode(text))); };
    put(u"# qelk result map V1.0\n");
    for (const QString& line : headerLines) {
        put(line);
        put(u"\n");
    }
    put(u"\n");
}

} // namespace

QString columnName(int i)
{
    const bool known = i >= 0 && i < columnCount;
    return QLatin1String(known ? columnNames[static_cast<std::size_t>(i)] : "UnKnown");
}

bool writeResultMap(QIODevice& device, const A2DData& map, const ValenceMix& mix,
                    const std::array<bool, columnCount>& wanted)
{
    BlockWriter writer(device);
    writeHeader(writer, map.headerLines);
    if (map.extended) {
        writeExtendedTable(writer, map, wanted);
    } else {
        writeSimpleTable(writer, map, mix);
    }
    return writer.finish();
}

} // namespace analysis
