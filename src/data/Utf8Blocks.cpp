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

/// Whether all bytes are ASCII. The loop has no early exit, so the compiler can
/// vectorise it.
bool isAscii(std::string_view bytes)
{
    unsigned char seen = 0;
    for (const char byte : bytes) {
        seen = static_cast<unsigned char>(seen | static_cast<unsigned char>(byte));
    }
    return seen < 0x80;
}

/// Number of UTF-16 code units of a UTF-8 text without its carriage returns.
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

/// Reads @p size bytes, or fewer if the device ends or fails; returns their number.
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

/// @p blockSize, or less if the device has fewer bytes, because typical files are much
/// smaller than a block. The result is a multiple of Utf8Blocks::pieceSize.
std::size_t usefulBlockSize(const QIODevice& device, std::size_t blockSize)
{
    if (device.isSequential()) {
        return blockSize;
    }
    constexpr qint64 piece = Utf8Blocks::pieceSize;
    const qint64 pieces = std::max(device.size() - device.pos(), qint64{0}) / piece + 1;
    return static_cast<std::size_t>(std::min(pieces * piece, static_cast<qint64>(blockSize)));
}

} // namespace

Utf8Blocks::Utf8Blocks(QIODevice& device, std::size_t blockSize, qint64 maxBytes)
    : m_device(device)
    , m_blockSize(usefulBlockSize(device, blockSize))
    , m_bytesLeft(maxBytes)
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
            m_bytesLeft = 0;
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

/// Whether the first line in m_block is longer than data::longestLine. Its first @p searched
/// bytes are known to contain no line feed. The other lines in m_block need no check: each of
/// them is in the block that was read last, and a block is smaller than the bound.
bool Utf8Blocks::isFirstLineTooLong(std::size_t searched)
{
    constexpr auto maxBytes = static_cast<std::size_t>(longestLine);
    if (m_filled <= maxBytes) {
        return false;
    }
    const std::string_view text(m_block.get(), m_filled);
    const std::size_t end = std::min(text.find('\n', searched), text.size());
    m_characters += characterCount(text.substr(m_counted, end - m_counted));
    m_counted = end;
    return m_characters > maxBytes;
}

/// Reads the next block of the device and appends it to the unfinished line; false at the
/// end of the device.
bool Utf8Blocks::fill()
{
    const auto size =
        static_cast<std::size_t>(std::min(static_cast<qint64>(m_blockSize), m_bytesLeft));
    ensureFree(m_blockSize);
    char* const out = m_block.get() + m_filled;
    const std::size_t got = readFully(m_device, out, size);
    m_bytesLeft -= static_cast<qint64>(got);
    if (m_isInSequence || !isAscii({out, got})) {
        const QByteArray text = repaired({out, got});
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

/// Removes the lines of the previous next(), so that the unfinished line is at the front.
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

QByteArray Utf8Blocks::repaired(std::string_view bytes)
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
