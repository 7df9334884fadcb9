// The cells of a map on the pixels of its surface.
#pragma once

#include <QColor>
#include <QList>
#include <QVarLengthArray>

class ChCoord;
class QPainter;

namespace display
{

/// Paints a map as filled rectangles, one for each pixel of the measurement: the
/// cell of (x, y) spans (x, y) to (x + 1, y + 1) in data values, its edges
/// truncated to whole pixels. Neighbours share an edge, so that no seam and no
/// overlap shows.
///
/// The picture is the one of a single fillRect() for each cell, pixel for pixel;
/// cells out of view or without a pixel are left out, and neighbours of one
/// colour in a line are filled in one call. Values of x grow to the right in it.
class MapCells
{
public:
    /// Places the cells of a map of @p width by @p height on the surface that
    /// @p cc describes. A view without any extent has no cells.
    MapCells(const ChCoord& cc, int width, int height);

    /// Fills all cells that show.
    ///
    /// @param colorAt  called as colorAt(x, y) for these cells alone; returns a
    ///                 reference to a colour that lives through the paint, the
    ///                 same object for the same colour
    template <class ColorAt>
    void fill(QPainter* p, ColorAt colorAt) const
    {
        QVarLengthArray<const QColor*, 2048> colors(m_x.bands.size());
        for (const Band& line : m_y.bands) {
            // Asked for in a row: the pixels of a large map come from far away in
            // memory, and several of them are under way at once.
            for (qsizetype i = 0; i < colors.size(); ++i) {
                colors[i] = &colorAt(m_x.bands.at(i).cell, line.cell);
            }
            fillLine(p, line, colors.constData());
        }
    }

    /// Outlines all cells in the painter's pen, those without a pixel as well.
    void outline(QPainter* p) const;

private:
    /// The pixels of a column or a line of cells.
    struct Band {
        int cell;
        int start;
        int length;
    };

    void fillLine(QPainter* p, const Band& line, const QColor* const* colors) const;

    struct Axis {
        QList<Band> bands; ///< those that show, in the order of cells, without a gap
        QList<int> edges;  ///< pixels of all edges that show, each once
        int low = 0;       ///< first and last pixel of the outline
        int high = 0;
    };

    template <class ToPixel>
    static Axis layOut(int cells, double size, ToPixel toPixel);

    Axis m_x;
    Axis m_y;
};

} // namespace display
