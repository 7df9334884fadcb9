#include "data/Utf8Blocks.h"

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

} // namespace

Utf8Blocks::Utf8Blocks(QIODevice& device, std::size_t blockSize)
    : m_device(device)
    , m_blockSize(blockSize)
{
    Q_ASSERT(blockSize > 0 && blockSize % pieceSize == 0);
}

bool Utf8Blocks::next()
{
    dropLines();
    std::size_t searched = m_filled;
    while (fill()) {
        const std::string_view added(m_block.data() + searched, m_filled - searched);
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

/// Reads on behind the unfinished line; false when nothing came.
bool Utf8Blocks::fill()
{
    makeRoom(m_blockSize);
    char* const out = m_block.data() + m_filled;
    const std::size_t got = readFully(m_device, out, m_blockSize);
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
    makeRoom(text.size());
    std::copy(text.begin(), text.end(), m_block.data() + m_filled);
    m_filled += text.size();
}

/// Moves the unfinished line to the front.
void Utf8Blocks::dropLines()
{
    std::copy(m_block.data() + m_linesSize, m_block.data() + m_filled, m_block.data());
    m_filled -= m_linesSize;
    m_linesSize = 0;
}

void Utf8Blocks::makeRoom(std::size_t size)
{
    if (m_block.size() - m_filled < size) {
        m_block.resize(std::max(m_filled + size, 2 * m_filled));
    }
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
