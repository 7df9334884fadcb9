// Reference implementation of the histogram plot: one painter call per line and bar.
#pragma once

#include "analysis/HistogramCounts.h"
#include "support/PictureTools.h"
#include "support/PlainStrokes.h"

#include <QList>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tests
{

/// The spacing of the grid lines in data units: the smallest number in the series 1, 2, 5,
/// 10, 20, ..., 5e7 that is more than ten pixels wide on the x axis; 1e8 if no number of the
/// series is.
inline double plainTick(const PlotPlace& place)
{
    double decade = 1.0;
    for (int round = 0; round < 8; ++round) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            if (factor * decade * (place.right - place.left) / (place.range.x1 - place.range.x0) >
                10.0) {
                return factor * decade;
            }
        }
        decade *= 10.0;
    }
    return decade;
}

/// A histogram with the limits @p from and @p to and the counts @p bins. @p under values are
/// below the limits, @p over values above. Its highest count is the maximum of @p bins, which must
/// not be empty.
inline analysis::HistogramCounts readyCounts(double from, double to, const QList<int>& bins,
                                             int under = 0, int over = 0)
{
    analysis::HistogramCounts counts;
    counts.start(from, to, static_cast<int>(bins.size()));
    counts.bins = bins;
    counts.total = *std::max_element(bins.begin(), bins.end());
    counts.under = under;
    counts.over = over;
    return counts;
}

struct PlainHistograms {
    struct Bars {
        analysis::HistogramCounts counts;
        QColor color;
    };

    /// Paints the content of the plot area on a white surface and returns the picture.
    QImage picture(const PlotPlace& place) const
    {
        QImage image = whitePicture(place.size);
        QPainter p(&image);
        drawGrid(&p, place);
        if (mainColor) {
            drawMain(&p, place);
        }
        for (int s = 0; s < references.size(); ++s) {
            drawReference(&p, place, s);
        }
        return image;
    }

    double from = 0.0;
    double to = 0.0;
    analysis::HistogramCounts main;
    std::optional<QColor> mainColor; ///< empty if the main histogram is hidden
    QList<Bars> references;

private:
    void drawGrid(QPainter* p, const PlotPlace& place) const
    {
        p->setPen(plainGrid);
        const double step = plainTick(place);
        for (double value = std::ceil(from); value < std::floor(to); value += step) {
            plainVertical(p, place, value);
        }
        for (double value = 0.0; value <= main.total; value += step) {
            plainHorizontal(p, place, value);
        }
    }

    void drawMain(QPainter* p, const PlotPlace& place) const
    {
        for (int i = -1; i <= main.boxes; ++i) {
            const int left = place.column(main.step * i + main.minV);
            const int right = place.column(main.step * (i + 1) + main.minV);
            fill(p, place, left, std::max(right - left, 1), countOf(main, i), *mainColor);
        }
    }

    void drawReference(QPainter* p, const PlotPlace& place, int s) const
    {
        const analysis::HistogramCounts& counts = references.at(s).counts;
        for (int i = -1; i <= counts.boxes; ++i) {
            const double shift = (s - 1.5) * 3.0 + 1.0;
            const int left = plainPixel(place.columnOf(counts.step * i + counts.minV) + shift);
            fill(p, place, left, 3, countOf(counts, i), references.at(s).color);
        }
    }

    static int countOf(const analysis::HistogramCounts& counts, int i)
    {
        if (i < 0) {
            return counts.under;
        }
        return i < counts.boxes ? counts.bins.at(i) : counts.over;
    }

    static void fill(QPainter* p, const PlotPlace& place, int left, int width, int count,
                     const QColor& color)
    {
        const int top = place.row(count);
        p->fillRect(left, top, width, place.row(0.0) - top, color);
    }
};

} // namespace tests
