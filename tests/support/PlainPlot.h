// Reference implementation of a plot: one painter call per element. Every position is
// calculated from the size of the surface.
#pragma once

#include "display/DrawText.h"
#include "support/PictureTools.h"
#include "support/PlotPlace.h"

#include <QStylePainter>
#include <QWidget>

namespace tests
{

/// Draws in this order: the white background, the data (by the derived class), the white
/// margins, the outline with its labels, the elements above the data (by the derived
/// class), and the axis titles in the margins.
class PlainPlot
{
public:
    PlainPlot(const QSize& size, const PlotRange& range)
        : place(size, range)
    {
    }
    virtual ~PlainPlot() = default;

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
    /// A widget to paint on, because QStylePainter needs one.
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
        p->drawRect(at.area().adjusted(0, 0, -1, -1));
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

} // namespace tests
