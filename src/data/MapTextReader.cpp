#include "data/MapTextReader.h"

#include "data/A2DData.h"
#include "data/LineScan.h"
#include "data/LineWords.h"
#include "data/MemoryCheck.h"
#include "data/ReadBounds.h"
#include "data/Utf8Blocks.h"

#include <QByteArrayView>
#include <QDebug>
#include <QIODevice>
#include <QString>
#include <QStringDecoder>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>

namespace data
{
namespace
{

// The reference implementation (tests/support/PlainMapReader.h) reads a QTextStream in text
// mode, simplifies each line, splits it at white space and converts the words with
// QString::toDouble. Data lines of plain ASCII, which are nearly all lines of a real map,
// take a fast path with the same result: their words are found and converted as bytes, in
// place.

/// Decodes a line of UTF-8 that ends with a line feed. The line feed and all carriage
/// returns are dropped.
QString decoded(std::string_view line)
{
    line.remove_suffix(1);
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decode(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
    text.remove(u'\r');
    return text;
}

/// The numbers of a data line.
struct Pixel {
    double x = 0.0;
    double y = 0.0;
    double intensity = 0.0;
    double i0 = 1.0;
};

/// Reads x, y, intensity and i0 from the next words. If i0 is missing, it keeps its
/// default of 1.0. Returns false if x, y or intensity is missing.
template <typename Words>
bool readFourColumns(Words& words, Pixel& pixel)
{
    int found = 0;
    for (double* const number : {&pixel.x, &pixel.y, &pixel.intensity, &pixel.i0}) {
        if (!words.next()) {
            break;
        }
        *number = words.toDouble();
        ++found;
    }
    return found >= 3;
}

/// Indices of the words that contain the intensity and i0 in a data line.
struct ChannelColumns {
    qint64 intensity = 2;
    qint64 i0 = 2;
};

/// Reads x and y from the first two words, and intensity and i0 from the given columns.
/// Returns false if a word is missing; a column below 0 counts as missing.
template <typename Words>
bool readChannels(Words& words, const ChannelColumns& columns, Pixel& pixel)
{
    if (columns.intensity < 0 || columns.i0 < 0) {
        return false;
    }
    const qint64 last = std::max({qint64{1}, columns.intensity, columns.i0});
    for (qint64 column = 0; column <= last; ++column) {
        if (!words.next()) {
            return false;
        }
        if (column == 0) {
            pixel.x = words.toDouble();
        }
        if (column == 1) {
            pixel.y = words.toDouble();
        }
        if (column == columns.intensity) {
            pixel.intensity = words.toDouble();
        }
        if (column == columns.i0) {
            pixel.i0 = words.toDouble();
        }
    }
    return true;
}

enum class MapKind {
    FourColumns = 0, ///< the first line starts with "# 1306"
    /// The first line starts with "# 2003901"; the comment lines "I0" and "I" select the
    /// channels of i0 and intensity.
    Channels = 1,
    Other = 2, ///< the first line starts with neither number; read like FourColumns
};

/// Builds a map from the lines of its file, in their order, or only counts its pixels.
class MapBuilder
{
public:
    enum class Purpose { Build, Count };

    /// @param maxRows         largest number of pixels
    /// @param bytesToReserve  memory that must remain available after storing the pixels
    MapBuilder(A2DData& map, const EnergyHandler& energyFound, Purpose purpose, qsizetype maxRows,
               qint64 bytesToReserve)
        : m_map(map)
        , m_energyFound(energyFound)
        , m_purpose(purpose)
        , m_maxRows(maxRows)
        , m_bytesToReserve(bytesToReserve)
    {
    }

    /// Reads lines of UTF-8, each with its line feed; false if the map is refused.
    bool addLines(std::string_view lines)
    {
        const char* const end = lines.data() + lines.size();
        for (const char* line = lines.data(); line != end && !m_isRefused;) {
            ByteWords words(line);
            const bool isDone = addPlainLine(words);
            const char* const next = std::find(words.position(), end, '\n') + 1;
            if (!isDone) {
                addTextLine(decoded({line, next}));
            }
            line = next;
        }
        appendPending();
        return !m_isRefused;
    }

    /// Reads a line that is already decoded and has no line end; false if the map is refused.
    bool addTextLine(const QString& line)
    {
        appendPending(); // the energy handler can read the map, so no pixel may be pending
        if (m_isRefused) {
            return false;
        }
        if (m_isFirstLine) {
            m_isFirstLine = false;
            m_kind = kindOf(line);
        }
        const QString simplified = line.simplified();
        TextWords words(simplified);
        Pixel pixel;
        if (simplified.startsWith(u'#')) {
            addComment(line, words);
        } else if (readPixel(words, pixel)) {
            addPixel(pixel);
            appendPending();
        }
        return !m_isRefused;
    }

    /// Discards the map, frees its memory and writes @p reason to the debug log.
    void refuse(const char* reason)
    {
        reportRefusal(reason);
        discardMap();
    }

    void discardMap()
    {
        m_isRefused = true;
        m_pendingCount = 0;
        m_map.clear();
        m_map.rows = {};
        m_map.headerLines = {};
    }

    bool isRefused() const { return m_isRefused; }

    /// Determines the size; returns whether width and height are above 0 and the map has
    /// a pixel.
    bool finish()
    {
        if (m_kind == MapKind::Channels) {
            m_map.deriveSize();
        }
        if (isSizeTooLarge(m_map.xNum, m_map.yNum, m_map.rows.size())) {
            reportRefusal("the size is past the bound, or past what its rows allow");
            m_map.xNum = 0;
            m_map.yNum = 0;
        }
        qDebug() << "size" << m_map.xNum << m_map.yNum;
        return m_map.xNum > 0 && m_map.yNum > 0 && !m_map.rows.isEmpty();
    }

private:
    /// Reads a data line of plain ASCII and adds its pixel, if it has one. Returns
    /// false and changes nothing if the line must be read by addTextLine().
    bool addPlainLine(ByteWords& words)
    {
        if (m_isFirstLine || words.startsWith('#')) {
            return false;
        }
        Pixel pixel;
        const bool isPixel = readPixel(words, pixel);
        if (isPixel && words.isPlain()) {
            addPixel(pixel);
        }
        return words.isPlain();
    }

    void addPixel(const Pixel& pixel)
    {
        m_pending[m_pendingCount] = pixel;
        if (++m_pendingCount == m_pending.size()) {
            appendPending();
        }
    }

    /// Appends the pending pixels to the map. They are appended in groups because the
    /// list checks at each call whether it is shared and has enough capacity.
    void appendPending()
    {
        if (m_pendingCount == 0 || !canAppendPending()) {
            return;
        }
        m_rowCount += static_cast<qsizetype>(m_pendingCount);
        if (m_purpose == Purpose::Build) {
            storePending();
        }
        m_pendingCount = 0;
    }

    bool canAppendPending()
    {
        const auto count = static_cast<qsizetype>(m_pendingCount);
        if (m_rowCount + count > m_maxRows) {
            refuse("more rows than a map may have");
        } else if (m_purpose == Purpose::Build && !canGrow(m_map.rows, count, m_bytesToReserve)) {
            refuse("no memory for its rows");
        }
        return !m_isRefused;
    }

    void storePending()
    {
        m_map.rows.resize(m_rowCount);
        A2DRow* row = m_map.rows.data() + m_rowCount - m_pendingCount;
        for (std::size_t i = 0; i < m_pendingCount; ++i, ++row) {
            row->x = m_pending[i].x;
            row->y = m_pending[i].y;
            row->intensity = m_pending[i].intensity;
            row->i0 = m_pending[i].i0;
        }
    }

    static MapKind kindOf(const QString& firstLine)
    {
        if (firstLine.startsWith(QLatin1String("# 1306"))) {
            return MapKind::FourColumns;
        }
        return firstLine.startsWith(QLatin1String("# 2003901")) ? MapKind::Channels
                                                                : MapKind::Other;
    }

    template <typename Words>
    bool readPixel(Words& words, Pixel& pixel) const
    {
        return m_kind == MapKind::Channels ? readChannels(words, m_columns, pixel)
                                           : readFourColumns(words, pixel);
    }

    void addComment(const QString& line, TextWords& words)
    {
        m_commentText += line.size() + commentLineCost;
        if (m_commentText > maxCommentText) {
            refuse("more comment lines than a map may have");
            return;
        }
        if (m_purpose == Purpose::Build) {
            m_map.headerLines.append(line);
            m_map.headerLines.last().squeeze();
        }
        applyKeyword(line, words);
    }

    /// Handles a comment line whose second word is a known keyword.
    void applyKeyword(const QString& line, TextWords& words)
    {
        QList<QStringView> word;
        while (word.size() < 8 && words.next()) {
            word.append(words.word());
        }
        const QString keyword = word.value(1).toString().toUpper();
        const qsizetype count = word.size();
        if (keyword == QLatin1String("AXIS") && count > 7) {
            applyAxis(word.at(2).toInt(), word.at(7).toInt());
        } else if (keyword == QLatin1String("X-NUM") && count > 2) {
            m_map.xNum = word.at(2).toInt();
        } else if (keyword == QLatin1String("Y-NUM") && count > 2) {
            m_map.yNum = word.at(2).toInt();
        } else if (keyword == QLatin1String("ENERGY") && count > 3) {
            if (m_energyFound) {
                m_energyFound(word.at(3).toString());
            }
        } else if (keyword == QLatin1String("I0") && count > 2) {
            m_columns.i0 = columnAfterColon(line);
        } else if (keyword == QLatin1String("I") && count > 2) {
            m_columns.intensity = columnAfterColon(line);
        }
    }

    /// @param last  the index of the last point on the axis
    void applyAxis(int axis, int last)
    {
        const int count = last == std::numeric_limits<int>::max() ? last : last + 1;
        if (axis == 0) {
            m_map.xNum = count;
        } else if (axis == 1) {
            m_map.yNum = count;
        }
    }

    /// Reads the channel number after the first colon of the comment line @p line. Returns
    /// the index of this channel's word in a data line. The channels follow the two
    /// coordinates, so channel -1 or -2 selects a coordinate. If the channel number is
    /// unparsable or there is no colon, channel 0 is used.
    static qint64 columnAfterColon(const QString& line)
    {
        const int channel = QStringView(line).sliced(line.indexOf(u':') + 1).toInt();
        return qint64{channel} + 2;
    }

    A2DData& m_map;
    const EnergyHandler& m_energyFound;
    Purpose m_purpose;
    qsizetype m_maxRows;
    qint64 m_bytesToReserve;
    qsizetype m_rowCount = 0;
    MapKind m_kind = MapKind::Other;
    ChannelColumns m_columns;
    bool m_isFirstLine = true;
    bool m_isRefused = false;
    qint64 m_commentText = 0; ///< size of the comment lines, counted as for maxCommentText
    std::array<Pixel, 64> m_pending;
    std::size_t m_pendingCount = 0;
};

constexpr auto tooLongLine = "a line is longer than a line may be";

/// Reads UTF-8 text from @p device and passes its lines to @p builder, until the end of the
/// text or until the map is refused.
void readBlocks(QIODevice& device, MapBuilder& builder)
{
    Utf8Blocks blocks(device, static_cast<std::size_t>(mapTextBlockSize));
    while (blocks.next() && builder.addLines(blocks.lines())) {
    }
    if (blocks.isLineTooLong()) {
        builder.refuse(tooLongLine);
    }
}

/// Reads text that starts with a byte order mark from @p device and passes its lines to
/// @p builder, until the end of the text or until the map is refused.
void readStream(QIODevice& device, MapBuilder& builder)
{
    const bool wasTextMode = device.isTextModeEnabled();
    device.setTextModeEnabled(true);
    QTextStream stream(&device);
    QString line;
    while (stream.readLineInto(&line, longestLine + 1)) {
        if (line.size() > longestLine) {
            builder.refuse(tooLongLine);
            break;
        }
        if (!builder.addTextLine(line)) {
            break;
        }
    }
    device.setTextModeEnabled(wasTextMode);
}

void readLines(QIODevice& device, MapBuilder& builder)
{
    if (QStringConverter::encodingForData(device.peek(4))) {
        readStream(device, builder);
    } else {
        readBlocks(device, builder);
    }
}

/// Whether a large file will be refused because it exceeds a bound. The check does not store
/// the pixels, which could fill two gigabytes of memory before the refusal. The result is
/// false for a small file, which needs no check, and for a sequential device, which cannot
/// be read twice.
/// The position of the device is restored.
bool willBeRefused(QIODevice& device, qsizetype maxRows)
{
    constexpr qint64 smallFile = qint64{12} * 1024 * 1024;
    const qint64 start = device.pos();
    if (device.isSequential() || device.size() - start <= smallFile) {
        return false;
    }
    bool isRefused = false;
    if (mayBeRefused(device) && device.seek(start)) {
        A2DData noRows;
        const EnergyHandler noEnergy;
        MapBuilder counter(noRows, noEnergy, MapBuilder::Purpose::Count, maxRows, 0);
        readLines(device, counter);
        isRefused = counter.isRefused();
    }
    device.seek(start);
    return isRefused;
}

} // namespace

bool readMapText(QIODevice& device, A2DData& map, const EnergyHandler& energyFound,
                 qsizetype maxRows)
{
    map.clear();
    const qint64 bytesToReserve = memoryToRead(device);
    MapBuilder builder(map, energyFound, MapBuilder::Purpose::Build, maxRows, bytesToReserve);
    if (!canAllocate(bytesToReserve)) {
        builder.refuse("no memory to read it");
    } else if (willBeRefused(device, maxRows)) {
        builder.discardMap();
    } else {
        readLines(device, builder);
    }
    return builder.finish();
}

} // namespace data
