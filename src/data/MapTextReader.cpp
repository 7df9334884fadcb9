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

// The result of reading is that of a QTextStream in text mode whose lines are
// simplified, split at white space and converted by QString::toDouble. Data
// lines of plain ASCII, nearly all lines of a real map, take a fast path to the
// same values: their words are found and converted as bytes, in place.

/// The text of a line that has a line feed, without that and any carriage return.
QString decoded(std::string_view line)
{
    line.remove_suffix(1);
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decode(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
    text.remove(u'\r');
    return text;
}

/// The numbers of a row as a map file gives them.
struct Pixel {
    double x = 0.0;
    double y = 0.0;
    double intensity = 0.0;
    double i0 = 1.0;
};

/// Reads the next words as x, y, intensity and i0; without the last, which then
/// is 1.0, they are a pixel too. False when more words are missing.
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

/// Words of a data line of channels.
struct ChannelColumns {
    qint64 intensity = 2;
    qint64 i0 = 2;
};

/// Reads the next words as x, y and channels; false when words are missing, as
/// the one of a column below 0 always is.
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
    FourColumns = 0, ///< "# 1306"
    Channels = 1,    ///< "# 2003901": channels of which "I0" and "I" lines choose
    Other = 2,       ///< read like FourColumns
};

/// Takes the lines of a map file in order and builds the map from them, or only
/// counts its rows.
class MapBuilder
{
public:
    enum class Purpose { Build, Count };

    /// @param most     the most rows
    /// @param besides  bytes of memory that the rows have to leave
    MapBuilder(A2DData& map, const EnergyHandler& energyFound, Purpose purpose, qsizetype most,
               qint64 besides)
        : m_map(map)
        , m_energyFound(energyFound)
        , m_purpose(purpose)
        , m_most(most)
        , m_besides(besides)
    {
    }

    /// Takes lines of UTF-8, each with its line feed; false once the map is refused.
    bool takeLines(std::string_view lines)
    {
        const char* const end = lines.data() + lines.size();
        for (const char* line = lines.data(); line != end && !m_isRefused;) {
            ByteWords words(line);
            const bool isTaken = takeBytes(words);
            const char* const next = std::find(words.position(), end, '\n') + 1;
            if (!isTaken) {
                takeText(decoded({line, next}));
            }
            line = next;
        }
        appendTaken();
        return !m_isRefused;
    }

    /// Takes any line, without its line end; false once the map is refused.
    bool takeText(const QString& line)
    {
        appendTaken(); // whoever hears of an energy may look at the rows
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
            takeComment(line, words);
        } else if (readPixel(words, pixel)) {
            take(pixel);
            appendTaken();
        }
        return !m_isRefused;
    }

    /// Gives the map up, and its memory back, with a line in the debug log.
    void refuse(const char* reason)
    {
        reportRefusal(reason);
        giveUp();
    }

    void giveUp()
    {
        m_isRefused = true;
        m_takenCount = 0;
        m_map.clear();
        m_map.rows = {};
        m_map.headerLines = {};
    }

    bool isRefused() const { return m_isRefused; }

    /// Settles the size; whether the map has one, and a row.
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
    /// Takes a line as bytes if it is a plain data line; false, with nothing
    /// changed, if it has to be taken as text.
    bool takeBytes(ByteWords& words)
    {
        if (m_isFirstLine || words.startsWith('#')) {
            return false;
        }
        Pixel pixel;
        const bool isPixel = readPixel(words, pixel);
        if (isPixel && words.isPlain()) {
            take(pixel);
        }
        return words.isPlain();
    }

    void take(const Pixel& pixel)
    {
        m_taken[m_takenCount] = pixel;
        if (++m_takenCount == m_taken.size()) {
            appendTaken();
        }
    }

    /// Puts the pixels taken behind the rows: many together, since the list looks
    /// each time whether it is shared and has memory for them.
    void appendTaken()
    {
        if (m_takenCount == 0 || !canAppendTaken()) {
            return;
        }
        m_rowCount += static_cast<qsizetype>(m_takenCount);
        if (m_purpose == Purpose::Build) {
            storeTaken();
        }
        m_takenCount = 0;
    }

    bool canAppendTaken()
    {
        const auto count = static_cast<qsizetype>(m_takenCount);
        if (m_rowCount + count > m_most) {
            refuse("more rows than a map may have");
        } else if (m_purpose == Purpose::Build && !canGrow(m_map.rows, count, m_besides)) {
            refuse("no memory for its rows");
        }
        return !m_isRefused;
    }

    void storeTaken()
    {
        m_map.rows.resize(m_rowCount);
        A2DRow* row = m_map.rows.data() + m_rowCount - m_takenCount;
        for (std::size_t i = 0; i < m_takenCount; ++i, ++row) {
            row->x = m_taken[i].x;
            row->y = m_taken[i].y;
            row->intensity = m_taken[i].intensity;
            row->i0 = m_taken[i].i0;
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

    void takeComment(const QString& line, TextWords& words)
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
        takeKeyword(line, words);
    }

    /// Acts on the keyword of a comment line, its second word.
    void takeKeyword(const QString& line, TextWords& words)
    {
        QList<QStringView> word;
        while (word.size() < 8 && words.next()) {
            word.append(words.word());
        }
        const QString keyword = word.value(1).toString().toUpper();
        const qsizetype count = word.size();
        if (keyword == QLatin1String("AXIS") && count > 7) {
            takeAxis(word.at(2).toInt(), word.at(7).toInt());
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
    void takeAxis(int axis, int last)
    {
        const int count = last == std::numeric_limits<int>::max() ? last : last + 1;
        if (axis == 0) {
            m_map.xNum = count;
        } else if (axis == 1) {
            m_map.yNum = count;
        }
    }

    /// The word of the channel that a column line names. The channels follow the
    /// two coordinates; a channel of -1 or -2 falls on these. What is no int, as
    /// is a line without a colon, reads as 0.
    static qint64 columnAfterColon(const QString& line)
    {
        const int channel = QStringView(line).sliced(line.indexOf(u':') + 1).toInt();
        return qint64{channel} + 2;
    }

    A2DData& m_map;
    const EnergyHandler& m_energyFound;
    Purpose m_purpose;
    qsizetype m_most;
    qint64 m_besides;
    qsizetype m_rowCount = 0;
    MapKind m_kind = MapKind::Other;
    ChannelColumns m_columns;
    bool m_isFirstLine = true;
    bool m_isRefused = false;
    qint64 m_commentText = 0; ///< what the comment lines count against maxCommentText
    std::array<Pixel, 64> m_taken;
    std::size_t m_takenCount = 0;
};

constexpr auto tooLongLine = "a line is longer than a line may be";

/// Hands all lines of a UTF-8 device to @p builder.
void readBlocks(QIODevice& device, MapBuilder& builder)
{
    Utf8Blocks blocks(device, static_cast<std::size_t>(mapTextBlockSize));
    while (blocks.next() && builder.takeLines(blocks.lines())) {
    }
    if (blocks.isLineTooLong()) {
        builder.refuse(tooLongLine);
    }
}

/// Hands all lines of a device with a byte order mark to @p builder.
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
        if (!builder.takeText(line)) {
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

/// Whether a file will be refused, found without storing its rows: they might take
/// two gigabytes before. Small files are not looked at, and the device stays where it
/// is. A sequential device cannot be read twice and counts as small.
bool isKnownToBeRefused(QIODevice& device, qsizetype most)
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
        MapBuilder counter(noRows, noEnergy, MapBuilder::Purpose::Count, most, 0);
        readLines(device, counter);
        isRefused = counter.isRefused();
    }
    device.seek(start);
    return isRefused;
}

} // namespace

bool readMapText(QIODevice& device, A2DData& map, const EnergyHandler& energyFound, qsizetype most)
{
    map.clear();
    const qint64 besides = memoryToRead(device);
    MapBuilder builder(map, energyFound, MapBuilder::Purpose::Build, most, besides);
    if (!canAllocate(besides)) {
        builder.refuse("no memory to read it");
    } else if (isKnownToBeRefused(device, most)) {
        builder.giveUp();
    } else {
        readLines(device, builder);
    }
    return builder.finish();
}

} // namespace data
