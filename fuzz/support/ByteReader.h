// Reads numbers and texts from a fuzz input.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>

namespace fuzz
{

/// Reads an input from front to back. Past the end every byte reads as 0, so a target can
/// read any number of values from any input, even from an empty one.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_next >= m_bytes.size(); }

    std::uint8_t byte();

    /// A number in the closed interval [low, high]. Reads as few bytes as the size of the
    /// interval allows.
    int number(int low, int high);

    /// One of @p choices, which must not be empty.
    template <class List>
    auto oneOf(const List& choices)
    {
        return choices.at(number(0, static_cast<int>(choices.size()) - 1));
    }

    /// Any double. The first byte chooses the kind: a special value (such as NaN,
    /// infinity, zero, 1e308 or the smallest denormal), a small integer, a decimal number
    /// with three decimals, or eight bytes used as the bit pattern.
    double anyDouble();

    /// One of 65536 evenly spaced doubles from @p low to @p high, apart from rounding. If
    /// @p high - @p low is not finite, the result can be NaN or infinite.
    double doubleIn(double low, double high);

    /// A byte array. Its length, 0 to @p most, is read from the input first; the array is
    /// shorter if the input ends.
    QByteArray byteArray(int most);

    /// A text. Its length, 0 to @p most UTF-16 code units, is read from the input first; the
    /// text is shorter if the input ends. It can include unpaired surrogates.
    QString text(int most);

    /// All remaining bytes.
    QByteArray rest();

private:
    QByteArray m_bytes;
    qsizetype m_next = 0;
};

} // namespace fuzz
