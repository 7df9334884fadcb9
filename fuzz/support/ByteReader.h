// Takes numbers and texts off the front of a fuzz input.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>

namespace fuzz
{

/// Reads an input from its first byte to its last. Past the end every byte is 0,
/// so that any input, an empty one too, gives all that a target asks for.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_next >= m_bytes.size(); }

    std::uint8_t byte();

    /// A number in [low, high], made of as few bytes as that takes.
    int number(int low, int high);

    /// One of @p choices, which has at least one.
    template <class List>
    auto oneOf(const List& choices)
    {
        return choices.at(number(0, static_cast<int>(choices.size()) - 1));
    }

    /// Any double: a first byte chooses between hostile ones (NaN, infinities,
    /// zeros, 1e308, the smallest), small whole numbers, decimals as in files,
    /// and eight bytes taken as they are.
    double anyDouble();

    /// A double from @p low to @p high.
    double doubleIn(double low, double high);

    /// At most @p most bytes.
    QByteArray some(int most);

    /// At most @p most characters of UTF-16, lone surrogates among them.
    QString text(int most);

    /// All bytes that are left.
    QByteArray rest();

private:
    QByteArray m_bytes;
    qsizetype m_next = 0;
};

} // namespace fuzz
