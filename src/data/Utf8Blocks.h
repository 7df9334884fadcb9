// The text of a device in blocks of whole lines, as whole UTF-8.
//
// Blocks may take the place of single lines because no byte of UTF-8 but the line
// feed itself looks like one. Text that is not plain ASCII goes through the toolkit's
// decoder, cut where QTextStream cuts it.
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

/// The lines of a device, many at a time, as QTextStream would understand them
/// if it took the device for UTF-8.
///
/// Broken sequences are mended: replacement characters stand in their place.
/// What one gives depends on where a decoder's input is cut; at a cut it may
/// even swallow the line feed behind it. So the input is cut where QTextStream
/// cuts it, and a sequence left unfinished at the end of the file is dropped.
///
/// Memory: some blocks, or twice a line of the bound.
class Utf8Blocks
{
public:
    /// @param blockSize  bytes to ask for at a time, a multiple of pieceSize
    /// @param most       bytes to read in all
    Utf8Blocks(QIODevice& device, std::size_t blockSize,
               qint64 most = std::numeric_limits<qint64>::max());

    /// Moves on to the next lines; false when there are none, and at a line of more
    /// than data::longestLine characters, where the text ends.
    bool next();

    /// Whether the text ended at a line past that bound.
    bool isLineTooLong() const { return m_isLineTooLong; }

    /// At least one line, each with its line feed; a last line without one gets
    /// it here. Valid until next().
    std::string_view lines() const { return {m_block.get(), m_linesSize}; }

    static constexpr std::size_t pieceSize = 16384; ///< what QTextStream reads at a time

private:
    bool fill();
    bool isFirstLineTooLong(std::size_t searched);
    void append(std::string_view text);
    void dropLines();
    void ensureFree(std::size_t size);
    QByteArray mended(std::string_view bytes);

    QIODevice& m_device;
    std::size_t m_blockSize;
    qint64 m_left; ///< bytes that may still be read
    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    bool m_isLineTooLong = false;
    bool m_isInSequence = false;     ///< the bytes read so far may end inside a sequence
    std::unique_ptr<char[]> m_block; ///< whole lines, then an unfinished one, then free bytes
    std::size_t m_capacity = 0;
    std::size_t m_linesSize = 0;
    std::size_t m_filled = 0;
    std::size_t m_counted = 0;    ///< bytes of a long unfinished line whose characters
    std::size_t m_characters = 0; ///< are counted, and their number
};

} // namespace data
