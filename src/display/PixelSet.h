// A set of pixels, one bit each.
//
// A fill of the set may take the place of single drawings in one colour because
// drawing a pixel again does not change it. Neighbours in a line are filled together.
#pragma once

#include <QRect>

#include <bit>
#include <cstdint>
#include <vector>

class QColor;
class QPainter;

namespace display
{

/// Pixels of a rectangle, stored as a bitmap, line by line: to insert one of
/// them, or a row of up to 64, costs a few operations, however many there are.
class PixelSet
{
public:
    explicit PixelSet(const QRect& area);

    /// Inserts a pixel of the area; false when it was there already.
    bool insert(const QPoint& at)
    {
        std::uint64_t& word = m_words[wordOf(at.x() - m_area.left(), at.y())];
        const std::uint64_t bit = std::uint64_t{1} << ((at.x() - m_area.left()) & 63);
        const bool isNew = (word & bit) == 0;
        word |= bit;
        return isNew;
    }

    /// Inserts the pixels to the right of @p at, and itself, whose bits are set:
    /// the lowest bit is @p at. All of them must be in the area.
    ///
    /// @return the bits of those that were not there
    std::uint64_t insertRow(const QPoint& at, std::uint64_t bits);

    /// The pixels of the @p stamp about each pixel of the set: the dilation of
    /// the bitmap, 64 pixels at a time.
    ///
    /// @param stamp  an odd number of rows of that many pixels, at most 63; the
    ///               lowest bit is the leftmost pixel
    PixelSet dilated(const std::vector<std::uint64_t>& stamp) const;

    /// Calls each(x, y, length) for all runs of pixels, line by line.
    template <class Each>
    void forEachRun(Each each) const
    {
        const int width = m_area.width();
        for (int y = m_area.top(); y <= m_area.bottom(); ++y) {
            const std::uint64_t* line = &m_words[wordOf(0, y)];
            for (int x = next(line, 0, 0); x < width;) {
                const int end = next(line, x, ~std::uint64_t{0});
                each(m_area.left() + x, y, end - x);
                x = next(line, end, 0);
            }
        }
    }

    /// Fills the pixels, one rectangle for each run; the painter keeps its pen and
    /// its brush.
    void fill(QPainter* p, const QColor& color) const;

    QRect area() const { return m_area; }

private:
    /// @param x  from the left edge of the area
    std::size_t wordOf(int x, int y) const
    {
        return static_cast<std::size_t>(y - m_area.top()) * m_wordsPerLine +
               (static_cast<std::size_t>(x) >> 6);
    }

    /// The first place from @p x on whose bit differs from those of @p skipped,
    /// which are all alike; the width of the area when there is none.
    int next(const std::uint64_t* line, int x, std::uint64_t skipped) const
    {
        const int width = m_area.width();
        if (x >= width) {
            return width;
        }
        std::size_t w = static_cast<std::size_t>(x) >> 6;
        std::uint64_t found = (line[w] ^ skipped) >> (x & 63) << (x & 63);
        while (found == 0) {
            if (++w == m_wordsPerLine) {
                return width;
            }
            found = line[w] ^ skipped;
        }
        const int at = static_cast<int>(w << 6) + std::countr_zero(found);
        return at < width ? at : width;
    }

    QRect m_area;
    std::size_t m_wordsPerLine;
    std::vector<std::uint64_t> m_words;
};

} // namespace display
