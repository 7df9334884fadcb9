// A plot by plain means: one call of the painter for each thing, every place
// worked out anew from the size of the surface.
#pragma once

#include "display/DrawText.h"

#include <QImage>
#include <QStylePainter>
#include <QWidget>

#include <cmath>

namespace tests
{

/// Data values at the edges of a plot area.
struct PlotRange {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 1.0;
    double y1 = 1.0;
};

/// The margins of a plot are a tenth at the left and at the bottom and a
/// twentieth at the right and at the top, each cut to whole pixels; a row of text
/// is a twentieth of the plot area high, and its text fills 0.85 of it.
struct PlotPlace {
    PlotPlace(const QSize& surface, const PlotRange& values)
        : size(surface)
        , range(values)
        , left(size.width() / 10)
        , right(size.width() - size.width() / 20)
        , top(size.height() / 20)
        , bottom(size.height() - size.height() / 10)
    {
    }

    /// Where a value falls, in pixels.
    double columnOf(double x) const
    {
        return (right - left) / (range.x1 - range.x0) * (x - range.x0) + left;
    }
    double rowOf(double y) const
    {
        return (top - bottom) / (range.y1 - range.y0) * (y - range.y0) + bottom;
    }

    /// The value that a column shows.
    double valueAt(int column) const
    {
        return (range.x1 - range.x0) / (right - left) * (column - left) + range.x0;
    }

    /// The pixel of a point; for finite ones near the plot.
    QPoint pixel(double x, double y) const
    {
        return {static_cast<int>(columnOf(x)), static_cast<int>(rowOf(y))};
    }

    QRect area() const { return {left, top, right - left, bottom - top}; }

    /// The pixels that the outline of the plot area leaves to the data.
    QRect inside() const { return area().adjusted(1, 1, 0, 0); }

    int rowHeight() const { return (bottom - top) / 20; }
    int textHeight() const { return static_cast<int>(rowHeight() * 0.85); }
    int gap() const { return static_cast<int>(rowHeight() * (1.0 - 0.85)); }

    QSize size;
    PlotRange range;
    int left;
    int right;
    int top;
    int bottom;
};

/// White ground, what the derived class draws, the margins wiped over it, the
/// outline with its labels, what stands on top, and the titles in the plot.
class PlainPlot
{
public:
    PlainPlot(const QSize& size, const PlotRange& range)
        : place(size, range)
    {
    }
    virtual ~PlainPlot() = default;

    /// The finished picture.
    QImage picture() const
    {
        Canvas canvas(*this);
        return canvas.grab().toImage();
    }

    PlotPlace place;
    QString xTitle;
    QString yTitle;

protected:
    virtual void drawData(QStylePainter* p) const = 0;
    virtual void drawOnTop(QStylePainter*) const {}

    int width() const { return place.size.width(); }
    int height() const { return place.size.height(); }

private:
    /// What a surface is to Qt.
    class Canvas : public QWidget
    {
    public:
        explicit Canvas(const PlainPlot& plot)
            : m_plot(plot)
        {
            setFixedSize(plot.place.size);
        }

    protected:
        void paintEvent(QPaintEvent*) override
        {
            QStylePainter p(this);
            p.fillRect(rect(), Qt::white);
            m_plot.drawData(&p);
            m_plot.drawFrame(&p);
            m_plot.drawOnTop(&p);
            m_plot.drawTitles(&p);
        }

    private:
        const PlainPlot& m_plot;
    };

    void drawFrame(QStylePainter* p) const
    {
        const PlotPlace& at = place;
        p->fillRect(QRect(0, 0, at.left, height()), Qt::white);
        p->fillRect(QRect(0, at.bottom, width(), height() - at.bottom), Qt::white);
        p->fillRect(QRect(0, 0, width(), at.top), Qt::white);
        p->fillRect(QRect(at.right, 0, width() - at.right, height()), Qt::white);
        p->setPen(QColor(150, 150, 150));
        p->setBrush(Qt::NoBrush);
        p->drawRect(at.area());
        drawLabels(p);
    }

    void drawLabels(QStylePainter* p) const
    {
        const PlotPlace& at = place;
        const int text = at.textHeight();
        const int below = at.bottom + at.gap();
        const auto label = [&](const QRectF& box, Qt::Alignment side, double value, int length) {
            DrawText().drawText(p, box, QFont(), (Qt::AlignVCenter | side).toInt(), 1,
                                QString::number(value, 'g', 6).left(length), 12.0);
        };
        p->setPen(Qt::black);
        label(QRectF(0, at.top, 0.95 * at.left, text), Qt::AlignRight, at.range.y1, 5);
        label(QRectF(0, at.bottom - text, 0.95 * at.left, text), Qt::AlignRight, at.range.y0, 5);
        label(QRectF(at.left, below, 2 * at.left, text), Qt::AlignLeft, at.range.x0, 6);
        label(QRectF(at.right - 2 * at.left, below, 2 * at.left, text), Qt::AlignRight, at.range.x1,
              6);
    }

    void drawTitles(QStylePainter* p) const
    {
        const PlotPlace& at = place;
        const int text = at.textHeight();
        p->setPen(Qt::black);
        DrawText().drawText(p, QRectF(at.left, at.bottom + at.gap(), at.right - at.left, text),
                            QFont(), Qt::AlignCenter, 1, xTitle, 12.0);
        p->rotate(270.0);
        DrawText().drawText(p, QRectF(-height(), text, height(), text), QFont(), Qt::AlignCenter, 1,
                            yTitle, 12.0);
        p->rotate(-270.0);
    }
};

/// Whether both pictures are the same; the first pixel that differs goes to the
/// log.
inline bool isSamePicture(const QImage& image, const QImage& wanted)
{
    if (image.size() != wanted.size()) {
        qWarning("sizes %dx%d and %dx%d", image.width(), image.height(), wanted.width(),
                 wanted.height());
        return false;
    }
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != wanted.pixelColor(x, y)) {
                qWarning("pixel %d, %d is %s instead of %s", x, y,
                         qPrintable(image.pixelColor(x, y).name()),
                         qPrintable(wanted.pixelColor(x, y).name()));
                return false;
            }
        }
    }
    return true;
}

/// The pixels of @p part that have this colour.
inline int countOf(const QImage& image, const QRect& part, const QColor& color)
{
    int pixels = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            pixels += image.pixelColor(x, y) == color ? 1 : 0;
        }
    }
    return pixels;
}

/// Whether all of @p part has this colour.
inline bool isAllOf(const QImage& image, const QRect& part, const QColor& color)
{
    return countOf(image, part, color) == part.width() * part.height();
}

inline bool isBlank(const QImage& image)
{
    return isAllOf(image, image.rect(), Qt::white);
}

} // namespace tests
