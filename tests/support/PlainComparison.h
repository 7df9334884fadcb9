// Reference implementation of the plot that compares the fit with the target calculation.
#pragma once

#include "support/PlainPlot.h"
#include "support/PlainStrokes.h"

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
    /// @p first and @p second are the lower and the upper valence of the references. Both
    /// axes show the range from @p first - 0.2 to @p second + 0.2.
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
        p->setPen(plainGrid);
        plainTenths(p, place, lower, upper);
        for (int i = 0; lower + 0.1 * i <= upper + 0.05; ++i) {
            plainHorizontal(p, place, lower + 0.1 * i);
        }
        p->setPen(QColor(0, 200, 0));
        p->drawLine(place.pixel(lower, lower), place.pixel(upper, upper));
        for (const PlainPoint& point : points) {
            p->setPen(point.color);
            plainMark(p, place, point.fit, point.target);
        }
        p->setPen(QColor(255, 0, 0));
        plainCircle(p, place.pixel(points.last().fit, points.last().target), 2);
    }
};

} // namespace tests
