#include "support/ByteReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace fuzz
{

std::uint8_t ByteReader::byte()
{
    return atEnd() ? std::uint8_t{0} : static_cast<std::uint8_t>(m_bytes.at(m_next++));
}

int ByteReader::number(int low, int high)
{
    const auto span = static_cast<std::uint64_t>(qint64{high} - low);
    std::uint64_t value = 0;
    for (std::uint64_t limit = span; limit > 0; limit >>= 8) {
        value = value << 8 | byte();
    }
    return static_cast<int>(low + static_cast<qint64>(value % (span + 1)));
}

double ByteReader::anyDouble()
{
    using Limits = std::numeric_limits<double>;
    static constexpr std::array special{0.0,
                                        -0.0,
                                        1.0,
                                        -1.0,
                                        Limits::quiet_NaN(),
                                        Limits::infinity(),
                                        -Limits::infinity(),
                                        1e308,
                                        -1e308,
                                        Limits::max(),
                                        Limits::min(),
                                        Limits::denorm_min(),
                                        1e-300,
                                        1e300};
    switch (number(0, 3)) {
    case 0:
        return special.at(
            static_cast<std::size_t>(number(0, static_cast<int>(special.size()) - 1)));
    case 1:
        return number(-128, 127);
    case 2:
        return number(-32768, 32767) / 1000.0;
    default:
        break;
    }
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) {
        bits = bits << 8 | byte();
    }
    return std::bit_cast<double>(bits);
}

double ByteReader::doubleIn(double low, double high)
{
    return low + (high - low) * (number(0, 65535) / 65535.0);
}

QByteArray ByteReader::byteArray(int most)
{
    const qsizetype count = std::min<qsizetype>(number(0, most), m_bytes.size() - m_next);
    const QByteArray taken = m_bytes.sliced(m_next, count);
    m_next += count;
    return taken;
}

QString ByteReader::text(int most)
{
    const int count = number(0, most);
    QString text;
    for (int i = 0; i < count && !atEnd(); ++i) {
        const std::uint8_t low = byte();
        // A byte below 192 means an ASCII character (modulo 128); any other byte is the lower
        // half of a UTF-16 code unit.
        text += low < 192 ? QChar(low % 128) : QChar(static_cast<char16_t>(byte() << 8 | low));
    }
    return text;
}

QByteArray ByteReader::rest()
{
    const QByteArray taken = m_bytes.sliced(std::min(m_next, m_bytes.size()));
    m_next = m_bytes.size();
    return taken;
}

} // namespace fuzz
