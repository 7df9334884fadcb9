// Reads the text of a device in blocks of whole lines, as valid UTF-8.
//
// The caller can split this text at line feeds before it decodes the lines, because in valid
// UTF-8 the byte of a line feed occurs only as a line feed. Blocks that are not plain ASCII
// can be invalid, so they are decoded with QStringDecoder and encoded again.
#pragma once

#include <QByteArray>
#include <QStringDecoder>

#include <cstddef>
#include <limits>
#include <memory>
#include <string_view>

class QIODevice;

namespace data
{

/// Returns the lines of a device, many at a time, with the same text that QTextStream
/// would read from it as UTF-8.
///
/// Invalid byte sequences are replaced by replacement characters. Their number depends on
/// where the input of the decoder is split, and at a split the decoder can even drop the
/// next line feed. The input is therefore split at the same positions as in QTextStream.
/// An incomplete sequence at the end of the file is dropped.
///
/// Memory: a few blocks, or twice the longest line.
class Utf8Blocks
{
public:
    /// @param blockSize  bytes to request at a time, a multiple of pieceSize
    /// @param maxBytes   largest number of bytes to read in total
    Utf8Blocks(QIODevice& device, std::size_t blockSize,
               qint64 maxBytes = std::numeric_limits<qint64>::max());

    /// Moves to the next lines; false at the end of the text. A line of more than
    /// data::longestLine UTF-16 code units ends the text.
    bool next();

    /// Whether the text ended because a line was too long.
    bool isLineTooLong() const { return m_isLineTooLong; }

    /// The current lines, at least one after a successful next(). Each ends with a line
    /// feed, which is added to the last line of the text if it is missing. Valid until
    /// the following next().
    std::string_view lines() const { return {m_block.get(), m_linesSize}; }

    static constexpr std::size_t pieceSize = 16384; ///< bytes that QTextStream reads at a time

private:
    bool fill();
    bool isFirstLineTooLong(std::size_t searched);
    void append(std::string_view text);
    void dropLines();
    void ensureFree(std::size_t size);
    QByteArray repaired(std::string_view bytes);

    QIODevice& m_device;
    std::size_t m_blockSize;
    qint64 m_bytesLeft; ///< number of bytes that can still be read
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    bool m_isLineTooLong = false;
    bool m_isInSequence = false;     ///< whether the bytes read so far can end within a character
    std::unique_ptr<char[]> m_block; ///< whole lines, then an unfinished one, then free bytes
    std::size_t m_capacity = 0;
    std::size_t m_linesSize = 0;
    std::size_t m_filled = 0;
    std::size_t m_counted = 0;    ///< bytes of the first line in m_block counted so far
    std::size_t m_characters = 0; ///< UTF-16 code units of the counted bytes
};

} // namespace data
