// The words of a line of a text file, taken one at a time.
//
// Words of plain ASCII may be found and converted as bytes because the toolkit's
// simplified and split text has the same words. A line with any other byte goes
// through that text.
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

/// What a byte of UTF-8 is to the words of its line.
enum class ByteKind : unsigned char {
    Word,
    Blank,
    LineFeed,
    Odd, ///< means something only to a decoder, or is dropped by it
};

inline constexpr std::array<ByteKind, 256> byteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    for (const char blank : {' ', '\t', '\v', '\f'}) {
        kinds[static_cast<unsigned char>(blank)] = ByteKind::Blank;
    }
    for (std::size_t byte = 0x80; byte < kinds.size(); ++byte) {
        kinds[byte] = ByteKind::Odd;
    }
    kinds['\0'] = ByteKind::Odd;
    kinds['\r'] = ByteKind::Odd;
    kinds['\n'] = ByteKind::LineFeed;
    return kinds;
}();

inline ByteKind byteKind(char byte)
{
    return byteKinds[static_cast<unsigned char>(byte)];
}

/// The words of a line of bytes, one after the other.
class ByteWords
{
public:
    /// @param line  begins a line, which ends in a line feed
    explicit ByteWords(const char* line)
        : m_next(line)
    {
    }

    /// Whether the first word begins with @p byte. To be asked before next().
    /// A first byte that is not plain leaves isPlain() false: it may stand for
    /// a blank, or for nothing.
    bool startsWith(char byte)
    {
        skip(ByteKind::Blank);
        noteOddByte();
        return *m_next == byte;
    }

    /// Moves on to the next word; false at the end of the line, and at a byte
    /// that is not plain, which leaves isPlain() false.
    bool next()
    {
        if (m_word != nullptr) {
            skip(ByteKind::Word);
        }
        skip(ByteKind::Blank);
        noteOddByte();
        m_word = m_next;
        return byteKind(*m_word) == ByteKind::Word;
    }

    /// QString::toDouble of the word. A byte in it or right behind it that is
    /// not plain leaves isPlain() false.
    double toDouble()
    {
        m_next = m_word;
        double value = 0.0;
        if (!readDecimal(m_next, value) || byteKind(*m_next) == ByteKind::Word) {
            skip(ByteKind::Word);
            value = toDouble({m_word, m_next});
        }
        noteOddByte();
        return value;
    }

    bool isPlain() const { return m_isPlain; }

    /// A byte of the line that is not beyond the line feed.
    const char* position() const { return m_next; }

private:
    /// On digits, minus sign, point and exponent std::from_chars gives the same
    /// bits as QString::toDouble. It differs on overflow, on words for infinity
    /// and NaN, on a leading "+" and on a number with a tail.
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

    /// A carriage return at the end of the line is no odd byte.
    void noteOddByte()
    {
        m_isPlain = byteKind(*m_next) != ByteKind::Odd || (*m_next == '\r' && m_next[1] == '\n');
    }

    const char* m_word = nullptr; ///< where the current word begins
    const char* m_next;           ///< in or behind the current word
    bool m_isPlain = true;
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

} // namespace data
