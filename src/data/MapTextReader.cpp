#include "data/MapTextReader.h"

#include "data/A2DData.h"

#include <QByteArrayView>
#include <QDebug>
#include <QIODevice>
#include <QString>
#include <QStringConverter>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

namespace data
{
namespace
{

// The result of reading is that of a QTextStream in text mode whose lines are
// simplified, split at white space and converted by QString::toDouble. Data
// lines of plain ASCII, nearly all lines of a real map, take a shorter road to
// the same values: their words are found and converted as bytes, in place.

/// The lines of a device, read in blocks. Memory: the block, or a small
/// multiple of the longest line.
class Lines
{
public:
    explicit Lines(QIODevice& device)
        : m_device(device)
        , m_block(mapTextBlockSize)
    {
    }

    /// Moves on to the next line; false when there is none.
    bool next()
    {
        m_lineBegin = m_lineEnd;
        std::size_t searched = m_lineBegin;
        do {
            const char* const from = m_block.data() + searched;
            if (const void* end = std::memchr(from, '\n', m_filled - searched)) {
                m_lineEnd =
                    searched + static_cast<std::size_t>(static_cast<const char*>(end) - from) + 1;
                return true;
            }
            searched = m_filled - m_lineBegin;
        } while (fill());
        m_lineEnd = m_filled;
        return m_lineEnd > m_lineBegin;
    }

    /// The bytes of the line with its line feed, if it has one.
    std::string_view line() const
    {
        return {m_block.data() + m_lineBegin, m_lineEnd - m_lineBegin};
    }

    /// Where the line begins, counted from the first byte read.
    std::size_t offset() const { return m_blockOffset + m_lineBegin; }

private:
    /// Moves the unfinished line to the front and reads on behind it.
    bool fill()
    {
        if (m_lineBegin > 0) {
            std::copy(m_block.begin() + static_cast<std::ptrdiff_t>(m_lineBegin),
                      m_block.begin() + static_cast<std::ptrdiff_t>(m_filled), m_block.begin());
            m_blockOffset += m_lineBegin;
            m_filled -= m_lineBegin;
            m_lineBegin = 0;
        }
        if (m_filled == m_block.size()) {
            m_block.resize(2 * m_block.size());
        }
        const qint64 got = m_device.read(m_block.data() + m_filled,
                                         static_cast<qint64>(m_block.size() - m_filled));
        m_filled += static_cast<std::size_t>(std::max<qint64>(got, 0));
        return got > 0;
    }

    QIODevice& m_device;
    std::vector<char> m_block;
    std::size_t m_blockOffset = 0;
    std::size_t m_filled = 0;
    std::size_t m_lineBegin = 0;
    std::size_t m_lineEnd = 0;
};

/// The text of a line that begins @p offset bytes after the start of its file,
/// without its line end and any other carriage return.
///
/// How many replacement characters a broken sequence gives depends on where a
/// decoder's input is cut, so it is cut where QTextStream cuts it. The line
/// feed takes part: it tells the decoder that a sequence stays unfinished. At
/// the end of a file nothing does, and the sequence is dropped.
QString decoded(std::string_view line, std::size_t offset)
{
    constexpr std::size_t streamPiece = 16384;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text;
    while (!line.empty()) {
        const std::size_t size = std::min(line.size(), streamPiece - offset % streamPiece);
        const QString piece = decoder(QByteArrayView(line.data(), static_cast<qsizetype>(size)));
        text += piece;
        line.remove_prefix(size);
        offset += size;
    }
    if (text.endsWith(u'\n')) {
        text.chop(1);
    }
    text.remove(u'\r');
    return text;
}

enum class ByteKind : unsigned char {
    Word,
    Blank,
    Odd, ///< means something only to a decoder, or is dropped by it
};

constexpr std::array<ByteKind, 256> byteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    for (const char blank : {' ', '\t', '\n', '\v', '\f'}) {
        kinds[static_cast<unsigned char>(blank)] = ByteKind::Blank;
    }
    for (std::size_t byte = 0x80; byte < kinds.size(); ++byte) {
        kinds[byte] = ByteKind::Odd;
    }
    kinds['\0'] = ByteKind::Odd;
    kinds['\r'] = ByteKind::Odd;
    return kinds;
}();

ByteKind byteKind(char byte)
{
    return byteKinds[static_cast<unsigned char>(byte)];
}

/// QString::toDouble for a word of plain bytes.
///
/// On digits, sign, point and exponent std::from_chars gives the same bits. It
/// differs on overflow, on words for infinity and NaN, on a leading "+" and on
/// a number with a tail, which all go to Qt.
double number(std::string_view word)
{
    double value = 0.0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error == std::errc() && stop == end && std::isfinite(value)) {
        return value;
    }
    return QString::fromLatin1(word.data(), static_cast<qsizetype>(word.size())).toDouble();
}

/// The words of a line of bytes, one after the other.
class ByteWords
{
public:
    explicit ByteWords(std::string_view line)
    {
        if (line.ends_with('\n')) {
            line.remove_suffix(1);
        }
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        m_next = line.data();
        m_end = line.data() + line.size();
    }

    /// Whether the next word begins with @p byte.
    bool startsWith(char byte)
    {
        skip(ByteKind::Blank);
        return m_next != m_end && *m_next == byte;
    }

    /// Moves on to the next word; false at the end of the line, and at a byte
    /// that is not plain, which leaves isPlain() false.
    bool next()
    {
        skip(ByteKind::Blank);
        const char* const begin = m_next;
        skip(ByteKind::Word);
        m_word = {begin, static_cast<std::size_t>(m_next - begin)};
        m_plain = m_next == m_end || byteKind(*m_next) != ByteKind::Odd;
        return m_plain && !m_word.empty();
    }

    bool isPlain() const { return m_plain; }
    double toDouble() const { return number(m_word); }

private:
    void skip(ByteKind kind)
    {
        while (m_next != m_end && byteKind(*m_next) == kind) {
            ++m_next;
        }
    }

    const char* m_next = nullptr;
    const char* m_end = nullptr;
    std::string_view m_word;
    bool m_plain = true;
};

/// The words of a simplified line of text, one after the other.
class TextWords
{
public:
    /// A regular expression matches nowhere in text with half a surrogate
    /// pair, so such a line is a single word.
    explicit TextWords(QStringView line)
        : m_rest(line)
        , m_isSplit(line.isValidUtf16())
    {
    }

    /// Moves on to the next word; false at the end of the line.
    bool next()
    {
        const qsizetype blank = m_isSplit ? m_rest.indexOf(u' ') : -1;
        const qsizetype size = blank < 0 ? m_rest.size() : blank;
        m_word = m_rest.first(size);
        m_rest = m_rest.sliced(std::min(size + 1, m_rest.size()));
        return !m_word.isEmpty();
    }

    QStringView word() const { return m_word; }
    double toDouble() const { return m_word.toDouble(); }

private:
    QStringView m_rest;
    QStringView m_word;
    bool m_isSplit;
};

/// Which words of a data line make a pixel, besides x and y in words 0 and 1.
struct PixelColumns {
    qint64 intensity = 2;
    qint64 i0 = 3;
    bool isI0Optional = true; ///< a line that ends before i0 has i0 1.0

    qint64 last() const { return std::max({qint64{1}, intensity, i0}); }
};

/// Reads the next words as a pixel; false when words are missing.
template <typename Words>
bool readPixel(Words& words, const PixelColumns& columns, A2DRow& pixel)
{
    pixel.i0 = 1.0;
    const qint64 last = columns.last();
    qint64 found = 0;
    for (; found <= last && words.next(); ++found) {
        if (found == 0) {
            pixel.x = words.toDouble();
        }
        if (found == 1) {
            pixel.y = words.toDouble();
        }
        if (found == columns.intensity) {
            pixel.intensity = words.toDouble();
        }
        if (found == columns.i0) {
            pixel.i0 = words.toDouble();
        }
    }
    return found > (columns.isI0Optional ? columns.intensity : last);
}

enum class MapKind {
    FourColumns = 0, ///< "# 1306"
    Channels = 1,    ///< "# 2003901": channels of which "I0" and "I" lines choose
    Other = 2,       ///< read like FourColumns
};

/// Takes the lines of a map file in order and builds the map from them.
class MapBuilder
{
public:
    MapBuilder(A2DData& map, const EnergyHandler& energyFound)
        : m_map(map)
        , m_energyFound(energyFound)
    {
    }

    /// Takes a line as bytes if it is a plain data line; false, with nothing
    /// changed, if it has to be taken as text.
    bool takeBytes(std::string_view line)
    {
        ByteWords words(line);
        if (m_isFirstLine || words.startsWith('#')) {
            return false;
        }
        A2DRow pixel;
        const bool isPixel = readDataLine(words, pixel);
        if (isPixel && words.isPlain()) {
            m_map.rows.append(std::move(pixel));
        }
        return words.isPlain();
    }

    /// Takes any line, without its line end.
    void takeText(const QString& line)
    {
        if (m_isFirstLine) {
            m_isFirstLine = false;
            m_kind = kindOf(line);
        }
        const QString simplified = line.simplified();
        TextWords words(simplified);
        if (simplified.startsWith(u'#')) {
            m_map.headerLines.append(line);
            takeKeyword(line, words);
            return;
        }
        A2DRow pixel;
        if (readDataLine(words, pixel)) {
            m_map.rows.append(std::move(pixel));
        }
    }

    /// Settles the size; whether the map has one, and a row.
    bool finish()
    {
        if (m_kind == MapKind::Channels) {
            m_map.deriveSize();
        }
        if (isSizeTooLarge(m_map.xNum, m_map.yNum)) {
            m_map.xNum = 0;
            m_map.yNum = 0;
        }
        qDebug() << "size" << m_map.xNum << m_map.yNum;
        return m_map.xNum > 0 && m_map.yNum > 0 && !m_map.rows.isEmpty();
    }

private:
    static MapKind kindOf(const QString& firstLine)
    {
        if (firstLine.startsWith(QLatin1String("# 1306"))) {
            return MapKind::FourColumns;
        }
        return firstLine.startsWith(QLatin1String("# 2003901")) ? MapKind::Channels
                                                                : MapKind::Other;
    }

    template <typename Words>
    bool readDataLine(Words& words, A2DRow& pixel) const
    {
        if (m_kind != MapKind::Channels) {
            return readPixel(words, PixelColumns(), pixel);
        }
        // The channels follow the two coordinates. A column of -1 or -2 falls
        // on these; one below has no word to fall on.
        const PixelColumns columns{qint64{m_iColumn} + 2, qint64{m_i0Column} + 2, false};
        return columns.intensity >= 0 && columns.i0 >= 0 && readPixel(words, columns, pixel);
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
            m_i0Column = valueAfterColon(line);
        } else if (keyword == QLatin1String("I") && count > 2) {
            m_iColumn = valueAfterColon(line);
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

    /// 0 for what is no int, which a line without a colon never is.
    static int valueAfterColon(const QString& line)
    {
        return QStringView(line).sliced(line.indexOf(u':') + 1).toInt();
    }

    A2DData& m_map;
    const EnergyHandler& m_energyFound;
    MapKind m_kind = MapKind::Other;
    int m_i0Column = 0;
    int m_iColumn = 0;
    bool m_isFirstLine = true;
};

/// Hands all lines of a UTF-8 device to @p builder.
void readBlocks(QIODevice& device, MapBuilder& builder)
{
    Lines lines(device);
    while (lines.next()) {
        if (!builder.takeBytes(lines.line())) {
            builder.takeText(decoded(lines.line(), lines.offset()));
        }
    }
}

/// Hands all lines of a device with a byte order mark to @p builder.
void readStream(QIODevice& device, MapBuilder& builder)
{
    const bool wasTextMode = device.isTextModeEnabled();
    device.setTextModeEnabled(true);
    QTextStream stream(&device);
    QString line;
    while (stream.readLineInto(&line)) {
        builder.takeText(line);
    }
    device.setTextModeEnabled(wasTextMode);
}

} // namespace

bool readMapText(QIODevice& device, A2DData& map, const EnergyHandler& energyFound)
{
    map.clear();
    MapBuilder builder(map, energyFound);
    if (QStringConverter::encodingForData(device.peek(4))) {
        readStream(device, builder);
    } else {
        readBlocks(device, builder);
    }
    return builder.finish();
}

} // namespace data
