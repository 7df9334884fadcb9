// The text of a device in blocks of whole lines, as whole UTF-8.
//
// Blocks may take the place of single lines because no byte of UTF-8 but the line
// feed itself looks like one. Text that is not plain ASCII goes through the toolkit's
// decoder, cut where QTextStream cuts it.
#pragma once

#include <QByteArray>
#include <QStringDecoder>

#include <cstddef>
#include <string_view>
#include <vector>

class QIODevice;

namespace data
{

/// The lines of a device, many at a time, as QTextStream would understand them
/// if it took the device for UTF-8.
///
/// Broken sequences are mended: replacement characters stand in their place.
/// What one gives depends on where a decoder's input is cut; at a cut it may
/// even swallow the line feed behind it. So the input is cut where QTextStream
/// cuts it, and a sequence left unfinished at the end of the file is dropped.
///
/// Memory: some blocks, or a small multiple of the longest line.
class Utf8Blocks
{
public:
    /// @param blockSize  bytes to ask for at a time, a multiple of pieceSize
    Utf8Blocks(QIODevice& device, std::size_t blockSize);

    /// Moves on to the next lines; false when there are none.
    bool next();

    /// At least one line, each with its line feed; a last line without one gets
    /// it here. Valid until next().
    std::string_view lines() const { return {m_block.data(), m_linesSize}; }

    static constexpr std::size_t pieceSize = 16384; ///< what QTextStream reads at a time

private:
    bool fill();
    void append(std::string_view text);
    void dropLines();
    void makeRoom(std::size_t size);
    QByteArray mended(std::string_view bytes);

    QIODevice& m_device;
    std::size_t m_blockSize;
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    bool m_isInSequence = false; ///< the bytes read so far may end inside a sequence
    std::vector<char> m_block;   ///< whole lines, then an unfinished one, then free bytes
    std::size_t m_linesSize = 0;
    std::size_t m_filled = 0;
};

} // namespace data
