// Iterators over the words of a line of a text file.
//
// In a line of ASCII without NUL characters and carriage returns, the words can be found
// and converted as bytes. The words are the same as after decoding the line and calling
// QString::simplified() and split(). A carriage return directly before the line feed
// is allowed, too. Other lines must be decoded.
#pragma once

#include "data/DecimalNumber.h"

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace data
{

/// The role of a byte of UTF-8 when its line is split into words.
enum class ByteKind : unsigned char {
    Word,
    Blank,
    LineFeed,
    NeedsDecoder, ///< can be classified only after decoding, which can also drop the byte
};

/// Lookup table: the kind of each of the 256 byte values.
inline constexpr std::array<ByteKind, 256> byteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    for (const char blank : {' ', '\t', '\v', '\f'}) {
        kinds[static_cast<unsigned char>(blank)] = ByteKind::Blank;
    }
    for (std::size_t byte = 0x80; byte < kinds.size(); ++byte) {
        kinds[byte] = ByteKind::NeedsDecoder;
    }
    kinds['\0'] = ByteKind::NeedsDecoder;
    kinds['\r'] = ByteKind::NeedsDecoder;
    kinds['\n'] = ByteKind::LineFeed;
    return kinds;
}();

/// The kind of @p byte.
inline ByteKind byteKind(char byte)
{
    return byteKinds[static_cast<unsigned char>(byte)];
}

/// Iterates over the words of a line of bytes.
class ByteWords
{
public:
    /// @param line  start of a line that ends with a line feed
    explicit ByteWords(const char* line)
        : m_next(line)
    {
    }

    /// Whether the first word starts with @p byte. Call this before next(). If the first
    /// byte that is not a blank needs a decoder, isPlain() is false afterwards, because the
    /// decoder can turn this byte into a blank or drop it.
    bool startsWith(char byte)
    {
        skip(ByteKind::Blank);
        checkNextByte();
        return *m_next == byte;
    }

    /// Moves to the next word; false at the end of the line. Also false at a byte that
    /// needs a decoder; isPlain() is then false, too.
    bool next()
    {
        if (m_word != nullptr) {
            skip(ByteKind::Word);
        }
        skip(ByteKind::Blank);
        checkNextByte();
        m_word = m_next;
        return byteKind(*m_word) == ByteKind::Word;
    }

    /// The word as a number, with the same result as QString::toDouble(). If a byte in the
    /// word or directly after it needs a decoder, isPlain() is false afterwards.
    double toDouble()
    {
        m_next = m_word;
        double value = 0.0;
        if (!readDecimal(m_next, value) || byteKind(*m_next) == ByteKind::Word) {
            skip(ByteKind::Word);
            value = toDouble({m_word, m_next});
        }
        checkNextByte();
        return value;
    }

    /// Whether the bytes read so far need no decoder. If false, the results so far
    /// can be wrong: decode the line and read its words with TextWords.
    bool isPlain() const { return m_isPlain; }

    /// The current position in the line, never after its line feed.
    const char* position() const { return m_next; }

private:
    /// The number in @p word, as QString::toDouble() returns it. If the number consists of
    /// digits and at most a minus sign, a decimal point and an exponent, std::from_chars()
    /// returns the same bits. The two functions can differ for overflow and underflow, for
    /// "inf" and "nan", for a leading "+" and for characters after the number; in these
    /// cases QString::toDouble() is called.
    static double toDouble(std::string_view word)
    {
        const char* const end = word.data() + word.size();
        double value = 0.0;
        const auto [stop, error] = std::from_chars(word.data(), end, value);
        if (error == std::errc() && stop == end && std::isfinite(value)) {
            return value;
        }
        return QString::fromLatin1(word.data(), static_cast<qsizetype>(word.size())).toDouble();
    }

    void skip(ByteKind kind)
    {
        while (byteKind(*m_next) == kind) {
            ++m_next;
        }
    }

    /// Sets m_isPlain for the next byte. A carriage return directly before the line feed
    /// needs no decoder.
    void checkNextByte()
    {
        m_isPlain =
            byteKind(*m_next) != ByteKind::NeedsDecoder || (*m_next == '\r' && m_next[1] == '\n');
    }

    const char* m_word = nullptr; ///< start of the current word
    const char* m_next;           ///< the next byte to be examined
    bool m_isPlain = true;
};

/// Iterates over the words of a line of simplified text.
class TextWords
{
public:
    /// A line with an unpaired surrogate is a single word: the reference
    /// implementation in the tests splits lines with a regular expression, which never
    /// matches in invalid UTF-16.
    explicit TextWords(QStringView line)
        : m_rest(line)
        , m_isSplit(line.isValidUtf16())
    {
    }

    /// Moves to the next word; false at the end of the line.
    bool next()
    {
        const qsizetype blank = m_isSplit ? m_rest.indexOf(u' ') : -1;
        const qsizetype size = blank < 0 ? m_rest.size() : blank;
        m_word = m_rest.first(size);
        m_rest = m_rest.sliced(std::min(size + 1, m_rest.size()));
        return !m_word.isEmpty();
    }

    /// The word found by next(); valid as long as the line.
    QStringView word() const { return m_word; }

    /// The word as a number, by QString::toDouble(): 0 if it is unparsable.
    double toDouble() const { return m_word.toDouble(); }

private:
    QStringView m_rest;
    QStringView m_word;
    bool m_isSplit;
};

} // namespace data
