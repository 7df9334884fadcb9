#include "display/PixelSet.h"

#include "data/VectorRegisters.h"

#include <QPainter>

display::PixelSet::PixelSet(const QRect& area)
    : m_area(area)
    , m_wordsPerLine((static_cast<std::size_t>(area.width()) + 63) >> 6)
    , m_words(m_wordsPerLine * static_cast<std::size_t>(area.height()))
{
}

std::uint64_t display::PixelSet::insertRow(const QPoint& at, std::uint64_t bits)
{
    const int x = at.x() - m_area.left();
    const int shift = x & 63;
    std::uint64_t* word = &m_words[wordOf(x, at.y())];
    const std::uint64_t low = bits << shift & ~word[0];
    word[0] |= low;
    // The rest is in the next word; in two steps, since a shift by 64 is not defined.
    const std::uint64_t rest = bits >> 1 >> (63 - shift);
    if (rest == 0) {
        return low >> shift;
    }
    const std::uint64_t high = rest & ~word[1];
    word[1] |= high;
    return low >> shift | high << 1 << (63 - shift);
}

display::PixelSet display::PixelSet::dilated(const std::vector<std::uint64_t>& stamp) const
{
    const int size = static_cast<int>(stamp.size());
    const int reach = size / 2;
    PixelSet result(m_area.adjusted(-reach, -reach, reach, reach));
    for (int y = m_area.top(); y <= m_area.bottom(); ++y) {
        const std::uint64_t* from = &m_words[wordOf(0, y)];
        for (int row = 0; row < size; ++row) {
            std::uint64_t* to = &result.m_words[result.wordOf(0, y + row - reach)];
            // The result begins further left, so that all shifts go to the right.
            for (std::uint64_t left = stamp[static_cast<std::size_t>(row)]; left != 0;
                 left &= left - 1) {
                const int shift = std::countr_zero(left);
                std::uint64_t carry = 0;
                for (std::size_t w = 0; w < m_wordsPerLine; ++w) {
                    to[w] |= from[w] << shift | carry;
                    carry = from[w] >> 1 >> (63 - shift);
                }
                if (carry != 0) {
                    to[m_wordsPerLine] |= carry;
                }
            }
        }
    }
    return result;
}

void display::PixelSet::fill(QPainter* p, const QColor& color) const
{
    forEachRun([&](int x, int y, int length) {
        p->fillRect(x, y, length, 1, color);
        data::cleanVectorRegisters();
    });
}
