// Plots drawn the plain way: one call for every line, bar and circle, in view or
// not, and the comparison of such pictures with what a surface shows.
#pragma once

#include "analysis/HistogramCounts.h"

#include <QColor>
#include <QDebug>
#include <QImage>
#include <QList>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tests
{

inline const QColor plainGrid(200, 200, 255);

/// A plot's geometry, worked out from the size of its surface and its range: the
/// margins are a tenth at the left and below, a twentieth at the right and above,
/// cut to whole pixels.
struct PlainPlot {
    PlainPlot(const QSize& surface, double fromX, double fromY, double toX, double toY)
        : size(surface)
        , left(surface.width() / 10)
        , right(surface.width() - surface.width() / 20)
        , bottom(surface.height() - surface.height() / 10)
        , top(surface.height() / 20)
        , x0(fromX)
        , y0(fromY)
        , x1(toX)
        , y1(toY)
    {
    }

    double x(double value) const { return (right - left) / (x1 - x0) * (value - x0) + left; }
    double y(double value) const { return (top - bottom) / (y1 - y0) * (value - y0) + bottom; }

    /// Cut towards zero; what is far outside stays far outside.
    static int pixel(double place)
    {
        return static_cast<int>(std::clamp(place, -20000.0, 20000.0));
    }
    int column(double value) const { return pixel(x(value)); }
    int row(double value) const { return pixel(y(value)); }

    /// The plot area with the outline of its frame.
    QRect area() const { return {QPoint(left, top), QPoint(right, bottom)}; }
    /// The plot area without the outline of its frame.
    QRect inside() const { return {left + 1, top + 1, right - left - 1, bottom - top - 1}; }

    QImage white() const
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        return image;
    }

    QSize size;
    int left;
    int right;
    int bottom;
    int top;
    double x0;
    double y0;
    double x1;
    double y1;
};

/// Whether two pictures agree in @p part; the first pixel where they do not goes
/// to the log.
inline bool sameIn(const QRect& part, const QImage& shown, const QImage& wanted)
{
    if (shown.size() != wanted.size()) {
        qWarning() << "size" << shown.size() << "instead of" << wanted.size();
        return false;
    }
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (shown.pixelColor(x, y) != wanted.pixelColor(x, y)) {
                qWarning() << "pixel" << x << y << "is" << shown.pixelColor(x, y) << "instead of"
                           << wanted.pixelColor(x, y);
                return false;
            }
        }
    }
    return true;
}

/// Whether the whole picture is white.
inline bool isWhite(const QImage& shown)
{
    QImage wanted(shown.size(), QImage::Format_ARGB32_Premultiplied);
    wanted.fill(Qt::white);
    return sameIn(shown.rect(), shown, wanted);
}

/// Number of pixels of one colour in a part of the picture.
inline int pixelsOf(const QColor& color, const QImage& shown, const QRect& part)
{
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            count += shown.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

/// Number of pixels of one colour outside the plot area.
inline int pixelsInMargins(const QColor& color, const QImage& shown, const PlainPlot& plot)
{
    return pixelsOf(color, shown, shown.rect()) - pixelsOf(color, shown, plot.area());
}

/// Whether the upper and the left side of the plot area's outline are whole.
inline bool hasOutline(const QImage& shown, const PlainPlot& plot)
{
    const QColor grey(150, 150, 150);
    const QRect area = plot.area();
    const QRect upper(area.topLeft(), QSize(area.width(), 1));
    const QRect side(area.topLeft(), QSize(1, area.height()));
    return pixelsOf(grey, shown, upper) == area.width() &&
           pixelsOf(grey, shown, side) == area.height();
}

/// The distance of grid lines: the first of 1, 2, 5, 10, ... that takes more than
/// ten pixels on x.
inline double plainTick(const PlainPlot& plot)
{
    double decade = 1.0;
    for (int round = 0; round < 8; ++round) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            if (factor * decade * (plot.right - plot.left) / (plot.x1 - plot.x0) > 10.0) {
                return factor * decade;
            }
        }
        decade *= 10.0;
    }
    return decade;
}

inline void plainVertical(QPainter& p, const PlainPlot& plot, double value)
{
    p.drawLine(plot.column(value), 0, plot.column(value), plot.size.height());
}

inline void plainHorizontal(QPainter& p, const PlainPlot& plot, double value)
{
    p.drawLine(0, plot.row(value), plot.size.width(), plot.row(value));
}

/// Two circles about a place.
inline void plainMark(QPainter& p, const PlainPlot& plot, double x, double y)
{
    for (const int radius : {1, 2}) {
        p.drawEllipse(QRect(plot.column(x) - radius, plot.row(y) - radius, 2 * radius, 2 * radius));
    }
}

/// A histogram with ready counts; its highest count is that of its bins.
inline HistogramCounts readyCounts(double from, double to, const QList<int>& bins, int under = 0,
                                   int over = 0)
{
    HistogramCounts counts;
    counts.start(from, to, static_cast<int>(bins.size()));
    counts.bins = bins;
    counts.total = *std::max_element(bins.begin(), bins.end());
    counts.under = under;
    counts.over = over;
    return counts;
}

struct PlainHistograms {
    struct Bars {
        HistogramCounts counts;
        QColor color;
    };

    /// Everything inside the plot area.
    QImage picture(const PlainPlot& plot) const
    {
        QImage image = plot.white();
        QPainter p(&image);
        drawGrid(p, plot);
        if (mainColor) {
            drawMain(p, plot);
        }
        for (int s = 0; s < references.size(); ++s) {
            drawReference(p, plot, s);
        }
        return image;
    }

    double from = 0.0;
    double to = 0.0;
    HistogramCounts main;
    std::optional<QColor> mainColor; ///< none where it is not shown
    QList<Bars> references;

private:
    void drawGrid(QPainter& p, const PlainPlot& plot) const
    {
        p.setPen(plainGrid);
        const double step = plainTick(plot);
        for (double value = std::ceil(from); value < std::floor(to); value += step) {
            plainVertical(p, plot, value);
        }
        for (double value = 0.0; value <= main.total; value += step) {
            plainHorizontal(p, plot, value);
        }
    }

    void drawMain(QPainter& p, const PlainPlot& plot) const
    {
        for (int i = -1; i <= main.boxes; ++i) {
            const int left = plot.column(main.step * i + main.minV);
            const int right = plot.column(main.step * (i + 1) + main.minV);
            fill(p, plot, left, std::max(right - left, 1), countOf(main, i), *mainColor);
        }
    }

    void drawReference(QPainter& p, const PlainPlot& plot, int s) const
    {
        const HistogramCounts& counts = references.at(s).counts;
        for (int i = -1; i <= counts.boxes; ++i) {
            const double shift = (s - 1.5) * 3.0 + 1.0;
            const int left = PlainPlot::pixel(plot.x(counts.step * i + counts.minV) + shift);
            fill(p, plot, left, 3, countOf(counts, i), references.at(s).color);
        }
    }

    static int countOf(const HistogramCounts& counts, int i)
    {
        if (i < 0) {
            return counts.under;
        }
        return i < counts.boxes ? counts.bins.at(i) : counts.over;
    }

    static void fill(QPainter& p, const PlainPlot& plot, int left, int width, int count,
                     const QColor& color)
    {
        const int top = plot.row(count);
        p.fillRect(left, top, width, plot.row(0.0) - top, color);
    }
};

} // namespace tests
