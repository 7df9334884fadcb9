// Reference implementation of the plot of thickness against valence.
#pragma once

#include "support/PictureTools.h"
#include "support/PlainStrokes.h"

#include <QList>
#include <QPointF>

namespace tests
{

struct PlainThickness {
    /// Paints the content of the plot area on a white surface and returns the picture.
    QImage picture(const PlotPlace& place) const
    {
        QImage image = whitePicture(place.size);
        QPainter p(&image);
        p.setPen(plainGrid);
        plainTenths(&p, place, lower, upper);
        p.setPen(color);
        for (const QPointF& point : points) {
            plainMark(&p, place, point.x(), point.y());
        }
        return image;
    }

    QList<QPointF> points; ///< valence and thickness
    QColor color{0, 0, 0};
    double lower = 2.0; ///< valences of the two references
    double upper = 3.0;
};

} // namespace tests
