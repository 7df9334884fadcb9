#include "data/MapTextReader.h"

#include "data/A2DData.h"

#include <QByteArray>
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

bool hasHighBit(char byte)
{
    return (static_cast<unsigned char>(byte) & 0x80u) != 0;
}

/// Whether all bytes are ASCII. Without an early end, which lets the loop run
/// many bytes at a time.
bool isAscii(std::string_view bytes)
{
    unsigned char seen = 0;
    for (const char byte : bytes) {
        seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(byte));
    }
    return seen < 0x80;
}

/// Makes whole UTF-8 of a file's bytes, as QTextStream would understand them.
///
/// What a broken sequence gives depends on where a decoder's input is cut: at a
/// cut it may even swallow the line feed behind it. So the input is cut where
/// QTextStream cuts it, and one left unfinished at the end of the file is
/// dropped.
class Utf8Mender
{
public:
    /// The next bytes of the file, mended; all but the last call bring a
    /// multiple of pieceSize.
    QByteArray mended(std::string_view bytes)
    {
        m_isInSequence = !bytes.empty() && hasHighBit(bytes.back());
        QByteArray out;
        for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
            const std::string_view piece = bytes.substr(at, pieceSize);
            const QString text =
                m_decoder(QByteArrayView(piece.data(), static_cast<qsizetype>(piece.size())));
            out += text.toUtf8();
        }
        return out;
    }

    /// Whether @p bytes may be taken as they are instead.
    bool isNeeded(std::string_view bytes) const { return m_isInSequence || !isAscii(bytes); }

private:
    static constexpr std::size_t pieceSize = 16384; // what QTextStream reads at a time
    static_assert(mapTextBlockSize % pieceSize == 0);

    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    bool m_isInSequence = false;
};

/// Reads until @p size bytes are there or the device has no more.
std::size_t readFully(QIODevice& device, char* out, std::size_t size)
{
    std::size_t filled = 0;
    while (filled < size) {
        const qint64 got = device.read(out + filled, static_cast<qint64>(size - filled));
        if (got <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

/// The lines of a device, read in blocks. Memory: some blocks, or a small
/// multiple of the longest line.
class Lines
{
public:
    explicit Lines(QIODevice& device)
        : m_device(device)
    {
    }

    /// Moves on to the next line; false when there is none.
    bool next()
    {
        m_lineBegin = m_lineEnd;
        std::size_t searched = 0;
        do {
            const std::string_view rest = unread().substr(searched);
            const std::size_t end = rest.find('\n');
            if (end != std::string_view::npos) {
                m_lineEnd = m_lineBegin + searched + end + 1;
                return true;
            }
            searched += rest.size();
        } while (fill());
        m_lineEnd = m_filled;
        return m_lineEnd > m_lineBegin;
    }

    /// The whole UTF-8 of the line with its line feed, if it has one.
    std::string_view line() const { return unread().substr(0, m_lineEnd - m_lineBegin); }

private:
    std::string_view unread() const
    {
        return {m_block.data() + m_lineBegin, m_filled - m_lineBegin};
    }

    /// Reads on behind the unfinished line; false when nothing came.
    bool fill()
    {
        moveUnreadToFront();
        makeRoom(mapTextBlockSize);
        char* const out = m_block.data() + m_filled;
        const std::size_t got = readFully(m_device, out, mapTextBlockSize);
        if (m_mender.isNeeded({out, got})) {
            const QByteArray mended = m_mender.mended({out, got});
            makeRoom(static_cast<std::size_t>(mended.size()));
            std::copy(mended.cbegin(), mended.cend(), m_block.data() + m_filled);
            m_filled += static_cast<std::size_t>(mended.size());
        } else {
            m_filled += got;
        }
        return got > 0;
    }

    void moveUnreadToFront()
    {
        if (m_lineBegin == 0) {
            return;
        }
        const std::string_view rest = unread();
        std::copy(rest.begin(), rest.end(), m_block.begin());
        m_filled = rest.size();
        m_lineBegin = 0;
    }

    void makeRoom(std::size_t size)
    {
        if (m_block.size() - m_filled < size) {
            m_block.resize(std::max(m_filled + size, 2 * m_filled));
        }
    }

    QIODevice& m_device;
    Utf8Mender m_mender;
    std::vector<char> m_block;
    std::size_t m_filled = 0;
    std::size_t m_lineBegin = 0;
    std::size_t m_lineEnd = 0;
};

/// The text of a line, without its line feed and any carriage return.
QString decoded(std::string_view line)
{
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
    }
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decode(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
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

    /// Whether the first word begins with @p byte. To be asked before next().
    /// A first byte that is not plain leaves isPlain() false: it may stand for
    /// a blank, or for nothing.
    bool startsWith(char byte)
    {
        skip(ByteKind::Blank);
        noteOddByte();
        return m_next != m_end && *m_next == byte;
    }

    /// Moves on to the next word; false at the end of the line, and at a byte
    /// that is not plain, which leaves isPlain() false.
    bool next()
    {
        if (m_word != nullptr) {
            skip(ByteKind::Word);
        }
        skip(ByteKind::Blank);
        m_word = m_next;
        noteOddByte();
        return m_plain && m_next != m_end;
    }

    /// QString::toDouble of the word. A byte in it or right behind it that is
    /// not plain leaves isPlain() false.
    ///
    /// On digits, sign, point and exponent std::from_chars gives the same bits.
    /// It differs on overflow, on words for infinity and NaN, on a leading "+"
    /// and on a number with a tail, which all go to Qt.
    double toDouble()
    {
        double value = 0.0;
        const auto [stop, error] = std::from_chars(m_word, m_end, value);
        const bool isWholeWord = stop == m_end || byteKind(*stop) == ByteKind::Blank;
        if (error == std::errc() && isWholeWord && std::isfinite(value)) {
            m_next = stop;
            return value;
        }
        m_next = m_word;
        skip(ByteKind::Word);
        noteOddByte();
        return QString::fromLatin1(m_word, m_next - m_word).toDouble();
    }

    bool isPlain() const { return m_plain; }

private:
    void skip(ByteKind kind)
    {
        while (m_next != m_end && byteKind(*m_next) == kind) {
            ++m_next;
        }
    }

    void noteOddByte() { m_plain = m_next == m_end || byteKind(*m_next) != ByteKind::Odd; }

    const char* m_word = nullptr; ///< where the current word begins
    const char* m_next = nullptr; ///< in or behind the current word
    const char* m_end = nullptr;
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
            builder.takeText(decoded(lines.line()));
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
