#include "data/LineScan.h"

#include "data/A2DData.h"
#include "data/LineWords.h"
#include "data/ReadBounds.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <string_view>

namespace data
{
namespace
{

/// Counts and measures the lines of a text that arrives in blocks. A block can end
/// within a line.
class LineScan
{
public:
    void addBlock(const char* at, const char* end)
    {
        while (at != end) {
            if (m_isBeforeText) {
                at = skipBlanks(at, end);
            }
            const std::string_view rest(at, end);
            const std::size_t length = std::min(rest.find('\n'), rest.size());
            m_length += static_cast<qint64>(length);
            if (length == rest.size()) {
                return;
            }
            endLine();
            at += length + 1;
        }
    }

    void endLine()
    {
        ++m_lines;
        m_longest = std::max(m_longest, m_length);
        m_comments += m_isComment ? m_length + commentLineCost : 0;
        m_length = 0;
        m_isComment = false;
        m_isBeforeText = true;
    }

    bool exceedsBound() const
    {
        return m_lines > maxMapPixels || m_longest > longestLine || m_comments > maxCommentText;
    }

private:
    const char* skipBlanks(const char* at, const char* end)
    {
        const char* const text =
            std::find_if_not(at, end, [](char byte) { return byteKind(byte) == ByteKind::Blank; });
        m_length += text - at;
        if (text != end) {
            m_isBeforeText = false;
            m_isComment = *text == '#' || byteKind(*text) == ByteKind::NeedsDecoder;
        }
        return text;
    }

    qint64 m_lines = 0;
    qint64 m_longest = 0;  ///< bytes of the longest line
    qint64 m_comments = 0; ///< bytes of lines that can be comments, plus commentLineCost per line
    qint64 m_length = 0;   ///< bytes of the current line so far
    bool m_isBeforeText = true;
    bool m_isComment = false;
};

} // namespace

bool mayBeRefused(QIODevice& device)
{
    std::array<char, 65536> block;
    LineScan lines;
    for (qint64 got = 1; got > 0;) {
        got = device.read(block.data(), qint64{block.size()});
        lines.addBlock(block.data(), block.data() + std::max(got, qint64{0}));
    }
    lines.endLine();
    return lines.exceedsBound();
}

} // namespace data
