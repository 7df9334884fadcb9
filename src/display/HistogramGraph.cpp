#include "display/HistogramGraph.h"

#include "display/ChCoord.h"
#include "display/GridLines.h"
#include "display/Pixels.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>

namespace display
{

namespace
{

// Pixels between the bars of two references, and so their width.
constexpr double barPitch = 3.0;

/// Draws one histogram bar by bar. Bars that stand on the same pixels are drawn
/// as the highest of them, so that many bins take no longer than the widget is
/// wide.
class BarPainter
{
public:
    BarPainter(QPainter* painter, const ChCoord& coord, const QColor& color)
        : m_painter(painter)
        , m_coord(coord)
        , m_color(color)
        , m_ground(row(0.0))
    {
    }

    ~BarPainter() { flush(); }
    BarPainter(const BarPainter&) = delete;
    BarPainter& operator=(const BarPainter&) = delete;

    /// A bar over the pixels from @p left to before @p right, one at least.
    void add(double left, double right, int count)
    {
        const double end = m_coord.scrX1;
        // A view without any height has no place for a count.
        if (count <= 0 || !(left < end && right > -1.0) || std::isnan(m_coord.r2sY(count))) {
            return;
        }
        const int x = truncated(std::max(left, -1.0));
        const int width = std::max(truncated(std::min(right, end)) - x, 1);
        if (x != m_x || width != m_width) {
            flush();
        }
        m_x = x;
        m_width = width;
        m_top = std::min(m_top, row(count));
    }

private:
    int row(double count) const
    {
        // Held to the widget, whose margins cover the rest.
        return truncated(std::clamp(m_coord.r2sY(count), -1.0, m_coord.scrY0 + 1.0));
    }

    void flush()
    {
        if (m_top < m_ground) {
            m_painter->fillRect(m_x, m_top, m_width, m_ground - m_top, m_color);
        }
        m_top = m_ground;
    }

    QPainter* m_painter;
    const ChCoord& m_coord;
    QColor m_color;
    int m_ground;
    int m_top = m_ground;
    int m_x = 0;
    int m_width = 0;
};

/// Calls @p bar(i, count) for the bin below the range (i = -1), all bins, and
/// the one above.
template <class Bar>
void forEachBin(const analysis::HistogramCounts& counts, Bar bar)
{
    bar(-1, counts.under);
    for (int i = 0; i < counts.bins.size(); ++i) {
        bar(i, counts.bins.at(i));
    }
    bar(counts.boxes, counts.over);
}

} // namespace

bool HistogramGraph::isEmpty() const
{
    return main.bins.isEmpty() || (!mainShown && references.isEmpty());
}

Graph::Range HistogramGraph::range() const
{
    double low = 1e300;
    double high = -1e300;
    const auto widen = [&](const analysis::HistogramCounts& counts) {
        low = std::min(low, -0.1 * counts.total);
        high = std::max(high, 1.1 * counts.total);
    };
    if (mainShown) {
        widen(main);
    }
    for (const Series& series : references) {
        widen(series.counts);
    }
    if (high <= 0.0) {
        return {from, 0.0, to, 1.0, false}; // nothing counted inside the limits
    }
    return {from, low, to, high};
}

void HistogramGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    drawGrid(p, cc);
    const auto edge = [&cc](const analysis::HistogramCounts& counts, int i) {
        return cc.r2sX(counts.step * i + counts.minV);
    };
    if (mainShown) {
        BarPainter bars(p, cc, mainColor);
        forEachBin(main,
                   [&](int i, int count) { bars.add(edge(main, i), edge(main, i + 1), count); });
    }
    for (qsizetype s = 0; s < references.size(); ++s) {
        const Series& series = references.at(s);
        const double shift = (static_cast<double>(s) - 1.5) * barPitch + 1.0;
        BarPainter bars(p, cc, series.color);
        forEachBin(series.counts, [&](int i, int count) {
            const double left = std::trunc(edge(series.counts, i) + shift);
            bars.add(left, left + barPitch, count);
        });
    }
}

void HistogramGraph::drawGrid(QPainter* p, const ChCoord& cc) const
{
    constexpr double minPixels = 10.0;
    p->setPen(gridColor);
    const double step = cc.tickStep(1.0, minPixels);
    // Below the upper end: a line there is left out.
    const double first = std::ceil(from);
    const double last = first + step * (std::ceil((std::floor(to) - first) / step) - 1.0);
    drawVerticalGrid(p, cc, {first, step, last});
    drawHorizontalGrid(p, cc, {0.0, cc.tickStepY(1.0, minPixels), 1.0 * main.total});
}

} // namespace display
