#include "display/MapCells.h"

#include "data/VectorRegisters.h"
#include "display/ChCoord.h"
#include "display/Pixels.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace display
{

/// Calculates the pixels of all cells on one axis.
///
/// @param size     size of the widget on this axis, pixels
/// @param toPixel  converts the index of a cell edge to its pixel position
template <class ToPixel>
MapCells::Axis MapCells::layOut(int cells, double size, ToPixel toPixel)
{
    Axis axis;
    if (!std::isfinite(toPixel(0.0)) || !std::isfinite(toPixel(cells))) {
        return axis;
    }
    const int end = truncated(size);
    // Clamped to one pixel outside the widget: such an edge is not visible, and its position
    // fits into an int.
    const auto edge = [&](int i) { return truncated(std::clamp(toPixel(i), -1.0, size + 1.0)); };
    int before = edge(0);
    axis.edges.append(before);
    for (int cell = 0; cell < cells; ++cell) {
        const int after = edge(cell + 1);
        if (after == before) {
            continue;
        }
        const int start = std::max(std::min(before, after), 0);
        const int length = std::min(std::max(before, after), end) - start;
        if (length > 0) {
            axis.bands.append({cell, start, length});
        }
        axis.edges.append(after);
        before = after;
    }
    const auto [low, high] = std::minmax(axis.edges.first(), axis.edges.last());
    axis.low = low;
    axis.high = high;
    return axis;
}

MapCells::MapCells(const ChCoord& cc, int width, int height)
    : m_x(layOut(width, cc.scrX1, [&cc](double v) { return cc.r2sX(v); }))
    , m_y(layOut(height, cc.scrY0, [&cc](double v) { return cc.r2sY(v); }))
{
}

void MapCells::fillLine(QPainter* p, const Band& line, const QColor* const* colors) const
{
    for (qsizetype i = 0; i < m_x.bands.size();) {
        const QColor* color = colors[i];
        const int start = m_x.bands.at(i).start;
        int length = 0;
        for (; i < m_x.bands.size() && colors[i] == color; ++i) {
            length += m_x.bands.at(i).length;
        }
        p->fillRect(start, line.start, length, line.length, *color);
        data::clearUpperVectorHalves();
    }
}

void MapCells::outline(QPainter* p) const
{
    if (m_x.edges.isEmpty() || m_y.edges.isEmpty()) {
        return;
    }
    for (const int x : m_x.edges) {
        p->drawLine(x, m_y.low, x, m_y.high);
    }
    for (const int y : m_y.edges) {
        p->drawLine(m_x.low, y, m_x.high, y);
    }
}

} // namespace display
