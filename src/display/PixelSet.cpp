#include "display/PixelSet.h"

#include "data/VectorRegisters.h"

#include <QPainter>
#include <QVarLengthArray>

#include <algorithm>

namespace display
{

namespace
{

/// Returns the bits of @p word that a left shift by @p shift (0 to 63) moves into the next
/// word. The right shift is done in two steps, because a shift by 64 is undefined behaviour.
std::uint64_t carryOf(std::uint64_t word, int shift)
{
    return word >> 1 >> (63 - shift);
}

/// Adds the pixels of pixel row @p from, moved @p shift (0 to 63) pixels to the right, to
/// pixel row @p to. The result can need one word more than @p words.
void addShifted(const std::uint64_t* from, std::size_t words, int shift, std::uint64_t* to)
{
    std::uint64_t carry = 0;
    for (std::size_t w = 0; w < words; ++w) {
        to[w] |= from[w] << shift | carry;
        carry = carryOf(from[w], shift);
    }
    if (carry != 0) {
        to[words] |= carry;
    }
}

} // namespace

PixelSet::PixelSet(const QRect& area)
    : m_area(area)
    , m_wordsPerLine((static_cast<std::size_t>(area.width()) + 63) >> 6)
    , m_words(m_wordsPerLine * static_cast<std::size_t>(area.height()))
{
}

std::uint64_t PixelSet::insertRow(const QPoint& at, std::uint64_t bits)
{
    const int x = at.x() - m_area.left();
    const int shift = x & 63;
    std::uint64_t* word = &m_words[wordOf(x, at.y())];
    const std::uint64_t low = bits << shift & ~word[0];
    word[0] |= low;
    const std::uint64_t rest = carryOf(bits, shift);
    if (rest == 0) {
        return low >> shift;
    }
    const std::uint64_t high = rest & ~word[1];
    word[1] |= high;
    return low >> shift | high << 1 << (63 - shift);
}

PixelSet PixelSet::dilated(const std::vector<std::uint64_t>& stamp) const
{
    const int size = static_cast<int>(stamp.size());
    const int reach = size / 2;
    PixelSet result(m_area.adjusted(-reach, -reach, reach, reach));
    for (int y = m_area.top(); y <= m_area.bottom(); ++y) {
        const std::uint64_t* from = &m_words[wordOf(0, y)];
        if (std::all_of(from, from + m_wordsPerLine, [](std::uint64_t w) { return w == 0; })) {
            continue;
        }
        for (int row = 0; row < size; ++row) {
            std::uint64_t* to = &result.m_words[result.wordOf(0, y + row - reach)];
            // The left edge of the result is `reach` pixels to the left of this set's left edge,
            // so all shifts are to the right.
            for (std::uint64_t left = stamp[static_cast<std::size_t>(row)]; left != 0;
                 left &= left - 1) {
                addShifted(from, m_wordsPerLine, std::countr_zero(left), to);
            }
        }
    }
    return result;
}

void PixelSet::fill(QPainter* p, const QColor& color) const
{
    const QPen pen = p->pen();
    const QBrush brush = p->brush();
    p->setPen(Qt::NoPen);
    p->setBrush(color);
    // Draws the runs in batches: with one drawRects() call for each run, the overhead of the
    // calls would cost twice as much time as the fills.
    QVarLengthArray<QRect, 512> runs;
    const auto fillThem = [&] {
        p->drawRects(runs.constData(), static_cast<int>(runs.size()));
        data::clearUpperVectorHalves();
        runs.clear();
    };
    forEachRun([&](int x, int y, int length) {
        runs.append(QRect(x, y, length, 1));
        if (runs.size() == runs.capacity()) {
            fillThem();
        }
    });
    fillThem();
    p->setPen(pen);
    p->setBrush(brush);
}

} // namespace display
