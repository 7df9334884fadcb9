// Paints the cells of a map on the pixels of its painting surface.
#pragma once

#include <QColor>
#include <QList>
#include <QVarLengthArray>

class ChCoord;
class QPainter;

namespace display
{

/// Paints a map as filled rectangles, one cell for each map pixel. The cell of map pixel
/// (x, y) extends from (x, y) to (x + 1, y + 1) in data values. The edges of cells are
/// truncated to whole pixels. Neighbouring cells have a common edge, so there are no gaps
/// and no overlaps.
///
/// MapCells draws exactly the same picture as one fillRect() for each cell. It is faster
/// because it skips cells that are outside the view or cover no pixel, and fills
/// neighbouring cells of one colour in a map row by one call.
class MapCells
{
public:
    /// Calculates the positions of @p width by @p height cells on the surface with
    /// the coordinates @p cc. If the range of the view is empty, there are no cells.
    /// @pre the x values of the view grow to the right
    MapCells(const ChCoord& cc, int width, int height);

    /// Fills all visible cells.
    ///
    /// @param colorAt  called as colorAt(x, y) for visible cells only. It returns a
    ///                 reference to a colour that must be valid until fill() returns.
    ///                 Cells are merged only if the references are to the same object.
    template <class ColorAt>
    void fill(QPainter* p, ColorAt colorAt) const
    {
        QVarLengthArray<const QColor*, 2048> colors(m_x.bands.size());
        for (const Band& line : m_y.bands) {
            // All colours of a map row are looked up before the row is drawn: the processor
            // can then overlap the cache misses of several map pixels.
            for (qsizetype i = 0; i < colors.size(); ++i) {
                colors[i] = &colorAt(m_x.bands.at(i).cell, line.cell);
            }
            fillLine(p, line, colors.constData());
        }
    }

    /// Draws the outlines of all cells with the painter's pen, including cells that
    /// cover no pixel.
    void outline(QPainter* p) const;

private:
    /// The pixels that a map column covers on the x axis, or a map row on the y axis.
    struct Band {
        int cell; ///< index of the map column or map row
        int start;
        int length;
    };

    void fillLine(QPainter* p, const Band& line, const QColor* const* colors) const;

    struct Axis {
        QList<Band> bands; ///< visible bands in the order of cells, without gaps
        QList<int> edges;  ///< pixel positions of all cell edges, without duplicates
        int low = 0;       ///< first pixel of the outline
        int high = 0;      ///< last pixel of the outline
    };

    template <class ToPixel>
    static Axis layOut(int cells, double size, ToPixel toPixel);

    Axis m_x;
    Axis m_y;
};

} // namespace display
