// Reads numbers and texts from a fuzz input.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>

namespace fuzz
{

/// Reads an input from front to back. Past the end every byte reads as 0, so every input,
/// even an empty one, gives all the values that a target needs.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_next >= m_bytes.size(); }

    std::uint8_t byte();

    /// A number in [low, high], read from as few bytes as possible.
    int number(int low, int high);

    /// One of @p choices, which must not be empty.
    template <class List>
    auto oneOf(const List& choices)
    {
        return choices.at(number(0, static_cast<int>(choices.size()) - 1));
    }

    /// Any double. The first byte chooses the kind: a special value (NaN, infinity, zero,
    /// 1e308, denormal minimum), a small integer, a decimal as in files, or eight bytes
    /// taken as a bit pattern.
    double anyDouble();

    /// A double from @p low to @p high.
    double doubleIn(double low, double high);

    /// At most @p most bytes.
    QByteArray some(int most);

    /// At most @p most UTF-16 characters, which can include lone surrogates.
    QString text(int most);

    /// All remaining bytes.
    QByteArray rest();

private:
    QByteArray m_bytes;
    qsizetype m_next = 0;
};

} // namespace fuzz
