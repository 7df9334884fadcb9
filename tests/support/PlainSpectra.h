// Reference implementation of the plot of all spectra.
#pragma once

#include "support/PlainPlot.h"

#include <QList>
#include <QPointF>

namespace tests
{

/// A displayed spectrum.
struct PlainCurve {
    QList<QPointF> points; ///< energy (eV) and displayed value
    QColor color;
    int width = 1;
    QString name;
    bool on = true;
};

/// The vertical line of an energy row.
struct PlainEnergy {
    double energyEv = 0.0;
    QColor color;
    int width = 1;
};

class PlainSpectra : public PlainPlot
{
public:
    using PlainPlot::PlainPlot;

    /// The rectangle of the name in line @p row of the legend. It is twice as wide as the
    /// left margin and starts 2.1 left margins to the left of the right edge of the plot
    /// area.
    QRectF legendBox(int row) const
    {
        return {place.right - 2.1 * place.left,
                static_cast<double>(place.top + place.gap() + row * place.rowHeight()),
                2.0 * place.left, static_cast<double>(place.textHeight())};
    }

    double edge = 0.0; ///< eV
    double from = 0.0;
    double to = 0.0;
    QList<PlainEnergy> energies;
    QList<PlainCurve> curves; ///< in drawing order; each curve has a line in the legend
    QList<QPointF> fitted;

protected:
    void drawData(QStylePainter* p) const override
    {
        p->setPen(QColor(200, 200, 200));
        for (const double value : {0.0, 0.5, 1.0}) {
            const int row = place.row(value);
            p->drawLine(0, row, width(), row);
        }
        p->setPen(QColor(80, 255, 80));
        for (const double energyEv : {edge, from, to}) {
            drawVertical(p, energyEv);
        }
        for (const PlainEnergy& each : energies) {
            p->setPen(QPen(each.color, each.width));
            drawVertical(p, each.energyEv);
        }
        for (const PlainCurve& curve : curves) {
            if (curve.on) {
                drawCurve(p, QPen(curve.color, curve.width), curve.points);
            }
        }
        drawCurve(p, QPen(QColor(255, 200, 255), 3), fitted);
    }

    void drawOnTop(QStylePainter* p) const override
    {
        for (int row = 0; row < curves.size(); ++row) {
            const PlainCurve& curve = curves.at(row);
            if (!curve.on) {
                p->fillRect(legendBox(row), QColor(220, 220, 220));
            }
            p->setPen(curve.color);
            DrawText().drawText(p, legendBox(row), QFont(),
                                (Qt::AlignLeft | Qt::AlignVCenter).toInt(), 1, curve.name, -1.0);
        }
    }

private:
    /// The line ends at the pixel row whose index is the width of the widget, not its
    /// height. This is on purpose: the program has this oddity.
    void drawVertical(QStylePainter* p, double energyEv) const
    {
        const int column = place.column(energyEv);
        p->drawLine(column, 0, column, width());
    }

    void drawCurve(QStylePainter* p, const QPen& pen, const QList<QPointF>& points) const
    {
        p->setPen(pen);
        for (qsizetype i = 1; i < points.size(); ++i) {
            p->drawLine(place.pixel(points.at(i - 1).x(), points.at(i - 1).y()),
                        place.pixel(points.at(i).x(), points.at(i).y()));
        }
    }
};

} // namespace tests
