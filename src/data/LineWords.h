// The words of a line of a text file, taken one at a time.
#pragma once

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
    Odd, ///< means something only to a decoder, or is dropped by it
};

inline constexpr std::array<ByteKind, 256> byteKinds = [] {
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

inline ByteKind byteKind(char byte)
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

} // namespace data
