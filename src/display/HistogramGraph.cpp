#include "display/HistogramGraph.h"

#include "analysis/Limits.h"
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

// Width of a bar of a single reference, pixels. The bars of neighbouring references touch, so
// this is also the distance from one bar to the next.
constexpr double barPitch = 3.0;

/// Draws the bars of one histogram. Consecutive bars on the same pixel columns are merged into
/// one bar, which is as high as the highest of them. The number of fills is therefore limited by
/// the width of the widget, not by the number of bins.
class BarPainter
{
public:
    BarPainter(QPainter* painter, const ChCoord& coord, const QColor& color)
        : m_painter(painter)
        , m_coord(coord)
        , m_color(color)
        , m_baseRow(row(0.0))
    {
    }

    ~BarPainter() { flush(); }
    BarPainter(const BarPainter&) = delete;
    BarPainter& operator=(const BarPainter&) = delete;

    /// Adds a bar over the pixels in the half-open interval [@p left, @p right). The bar is
    /// at least one pixel wide.
    void add(double left, double right, int count)
    {
        const double end = m_coord.scrX1;
        // The pixel position of the count can be NaN if the range of y is empty.
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
        // Clamped to one pixel outside the widget, so that the position fits into an int.
        return truncated(std::clamp(m_coord.r2sY(count), -1.0, m_coord.scrY0 + 1.0));
    }

    void flush()
    {
        if (m_top < m_baseRow) {
            m_painter->fillRect(m_x, m_top, m_width, m_baseRow - m_top, m_color);
        }
        m_top = m_baseRow;
    }

    QPainter* m_painter;
    const ChCoord& m_coord;
    QColor m_color;
    int m_baseRow;
    int m_top = m_baseRow;
    int m_x = 0;
    int m_width = 0;
};

/// Calls @p bar(i, count) for the count below the range (i = -1), then for each bin, then
/// for the count above the range (i = number of bins).
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
    analysis::Limits span = analysis::emptyLimits;
    const auto widen = [&](const analysis::HistogramCounts& counts) {
        span.widen(-0.1 * counts.total);
        span.widen(1.1 * counts.total);
    };
    if (mainShown) {
        widen(main);
    }
    for (const Series& series : references) {
        widen(series.counts);
    }
    if (span.high <= 0.0) {
        return {from, 0.0, to, 1.0, false}; // all bins are empty
    }
    return {from, span.low, to, span.high};
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
    // The last grid line is strictly below floor(to): on purpose there is no line at the upper
    // end of the range.
    const double first = std::ceil(from);
    const double last = first + step * (std::ceil((std::floor(to) - first) / step) - 1.0);
    drawVerticalGrid(p, cc, {first, step, last});
    drawHorizontalGrid(p, cc, {0.0, cc.tickStepY(1.0, minPixels), 1.0 * main.total});
}

} // namespace display
