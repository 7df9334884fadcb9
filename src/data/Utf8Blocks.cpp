#include "data/Utf8Blocks.h"

#include "data/ReadBounds.h"

#include <QByteArrayView>
#include <QIODevice>
#include <QString>

#include <algorithm>

namespace data
{
namespace
{

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

/// The characters of UTF-16 that hold a text of UTF-8 without its carriage returns.
std::size_t characterCount(std::string_view text)
{
    std::size_t count = 0;
    for (const char byte : text) {
        const auto bits = static_cast<unsigned char>(byte);
        const bool isContinuation = (bits & 0xC0u) == 0x80u;
        const bool opensFourBytes = bits >= 0xF0u;
        const bool isDropped = byte == '\r';
        count += (isContinuation || isDropped ? 0u : 1u) + (opensFourBytes ? 1u : 0u);
    }
    return count;
}

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

/// @p blockSize, or less where the device is known to have less: most files are much
/// smaller than a block.
std::size_t sizeWorthWhile(const QIODevice& device, std::size_t blockSize)
{
    if (device.isSequential()) {
        return blockSize;
    }
    constexpr qint64 piece = Utf8Blocks::pieceSize;
    const qint64 pieces = std::max(device.size() - device.pos(), qint64{0}) / piece + 1;
    return static_cast<std::size_t>(std::min(pieces * piece, static_cast<qint64>(blockSize)));
}

} // namespace

Utf8Blocks::Utf8Blocks(QIODevice& device, std::size_t blockSize, qint64 most)
    : m_device(device)
    , m_blockSize(sizeWorthWhile(device, blockSize))
    , m_left(most)
{
    Q_ASSERT(blockSize > 0 && blockSize % pieceSize == 0);
}

bool Utf8Blocks::next()
{
    dropLines();
    std::size_t searched = m_filled;
    while (fill()) {
        if (isFirstLineTooLong(searched)) {
            m_isLineTooLong = true;
            m_filled = 0;
            m_left = 0;
            return false;
        }
        const std::string_view added(m_block.get() + searched, m_filled - searched);
        const std::size_t last = added.rfind('\n');
        if (last != std::string_view::npos) {
            m_linesSize = searched + last + 1;
            return true;
        }
        searched = m_filled;
    }
    if (m_filled > 0) {
        append("\n");
    }
    m_linesSize = m_filled;
    return m_filled > 0;
}

/// Whether the line at the front, of which the first @p searched bytes have no
/// line feed, is past the bound. Blocks are smaller than that, and so is any other
/// line.
bool Utf8Blocks::isFirstLineTooLong(std::size_t searched)
{
    constexpr auto most = static_cast<std::size_t>(longestLine);
    if (m_filled <= most) {
        return false;
    }
    const std::string_view text(m_block.get(), m_filled);
    const std::size_t end = std::min(text.find('\n', searched), text.size());
    m_characters += characterCount(text.substr(m_counted, end - m_counted));
    m_counted = end;
    return m_characters > most;
}

/// Reads on behind the unfinished line; false when nothing came.
bool Utf8Blocks::fill()
{
    const auto size = static_cast<std::size_t>(std::min(static_cast<qint64>(m_blockSize), m_left));
    ensureFree(m_blockSize);
    char* const out = m_block.get() + m_filled;
    const std::size_t got = readFully(m_device, out, size);
    m_left -= static_cast<qint64>(got);
    if (m_isInSequence || !isAscii({out, got})) {
        const QByteArray text = mended({out, got});
        append({text.data(), static_cast<std::size_t>(text.size())});
    } else {
        m_filled += got;
    }
    return got > 0;
}

void Utf8Blocks::append(std::string_view text)
{
    ensureFree(text.size());
    std::copy(text.begin(), text.end(), m_block.get() + m_filled);
    m_filled += text.size();
}

/// Moves the unfinished line to the front.
void Utf8Blocks::dropLines()
{
    std::copy(m_block.get() + m_linesSize, m_block.get() + m_filled, m_block.get());
    m_filled -= m_linesSize;
    m_linesSize = 0;
    m_counted = 0;
    m_characters = 0;
}

void Utf8Blocks::ensureFree(std::size_t size)
{
    if (m_capacity - m_filled >= size) {
        return;
    }
    m_capacity = std::max(m_filled + size, 2 * m_filled);
    auto larger = std::make_unique_for_overwrite<char[]>(m_capacity);
    std::copy_n(m_block.get(), m_filled, larger.get());
    m_block = std::move(larger);
}

QByteArray Utf8Blocks::mended(std::string_view bytes)
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

} // namespace data
