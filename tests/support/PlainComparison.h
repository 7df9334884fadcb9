// The plot of the fit against the target calculation by plain means.
#pragma once

#include "support/PlainPlot.h"

#include <QList>

namespace tests
{

struct PlainPoint {
    double fit = 0.0;
    double target = 0.0;
    QColor color;
};

class PlainComparison : public PlainPlot
{
public:
    /// From the one valence to the other with 0.2 around, on both axes.
    PlainComparison(const QSize& size, double first, double second)
        : PlainComparison(size, first, second,
                          {first - 0.2, first - 0.2, second + 0.2, second + 0.2})
    {
    }

    PlainComparison(const QSize& size, double first, double second, const PlotRange& range)
        : PlainPlot(size, range)
        , lower(first)
        , upper(second)
    {
        xTitle = QStringLiteral("LCF");
        yTitle = QStringLiteral("MPs");
    }

    double lower;
    double upper;
    QList<PlainPoint> points;

protected:
    void drawData(QStylePainter* p) const override
    {
        p->setPen(QColor(200, 200, 255));
        for (int i = 0; lower + 0.1 * i <= upper + 0.05; ++i) {
            const int column = static_cast<int>(place.columnOf(lower + 0.1 * i));
            p->drawLine(column, 0, column, height());
        }
        for (int i = 0; lower + 0.1 * i <= upper + 0.05; ++i) {
            const int row = static_cast<int>(place.rowOf(lower + 0.1 * i));
            p->drawLine(0, row, width(), row);
        }
        p->setPen(QColor(0, 200, 0));
        p->drawLine(place.pixel(lower, lower), place.pixel(upper, upper));
        for (const PlainPoint& point : points) {
            p->setPen(point.color);
            drawCircle(p, point, 1);
            drawCircle(p, point, 2);
        }
        p->setPen(QColor(255, 0, 0));
        drawCircle(p, points.last(), 2);
    }

private:
    void drawCircle(QStylePainter* p, const PlainPoint& point, int radius) const
    {
        const QPoint centre = place.pixel(point.fit, point.target);
        p->drawEllipse(QRect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
    }
};

} // namespace tests
