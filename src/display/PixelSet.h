// A set of pixels, stored as a bitmap.
#pragma once

#include <QRect>

#include <bit>
#include <cstdint>
#include <vector>

class QColor;
class QPainter;

namespace display
{

/// A set of pixels of a rectangular area, stored as a bitmap with one bit for each pixel.
/// Inserting a pixel, or up to 64 pixels of a pixel row, takes constant time.
///
/// Fast paths collect many overlapping drawings of one opaque colour in such a set.
/// Then each pixel of the set is filled once, and neighbouring pixels in a pixel row are
/// filled together.
class PixelSet
{
public:
    /// Makes an empty set of pixels of @p area.
    explicit PixelSet(const QRect& area);

    /// Inserts a pixel, which must be inside the area.
    /// @return false if the set already contained the pixel
    bool insert(const QPoint& at)
    {
        std::uint64_t& word = m_words[wordOf(at.x() - m_area.left(), at.y())];
        const std::uint64_t bit = std::uint64_t{1} << ((at.x() - m_area.left()) & 63);
        const bool isNew = (word & bit) == 0;
        word |= bit;
        return isNew;
    }

    /// Inserts pixels of the pixel row of @p at: for each set bit n of @p bits, the pixel
    /// n positions to the right of @p at. The pixel @p at and
    /// all inserted pixels must be inside the area.
    ///
    /// @return the bits of the pixels that the set did not yet contain
    std::uint64_t insertRow(const QPoint& at, std::uint64_t bits);

    /// Returns the morphological dilation of the set: all pixels that are covered
    /// when @p stamp is centred on each pixel of the set. The area of the result
    /// is (n - 1) / 2 pixels larger on each side. The dilation is calculated for 64 pixels
    /// at a time.
    ///
    /// @param stamp  n pixel rows of n pixels, where n is odd and at most 63; the lowest
    ///               bit of a row is its leftmost pixel
    PixelSet dilated(const std::vector<std::uint64_t>& stamp) const;

    /// Calls each(x, y, length) for every run of neighbouring pixels in a pixel row, from
    /// the top pixel row to the bottom one. (x, y) is the leftmost pixel of the run.
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

    /// Fills the pixels with @p color, using one rectangle for each run. The pen and
    /// the brush of the painter are restored.
    void fill(QPainter* p, const QColor& color) const;

    QRect area() const { return m_area; }

private:
    /// Returns the index of the word that contains a pixel.
    /// @param x  distance from the left edge of the area
    /// @param y  pixel row, in the coordinates of the area
    std::size_t wordOf(int x, int y) const
    {
        return static_cast<std::size_t>(y - m_area.top()) * m_wordsPerLine +
               (static_cast<std::size_t>(x) >> 6);
    }

    /// Returns the first position at or after @p x whose bit differs from the bits of
    /// @p skipped (all 0 or all 1), or the width of the area if there is none.
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
