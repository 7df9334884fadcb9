// What every picture of a plot has to keep.
#pragma once

#include "support/PictureTools.h"
#include "support/PlotPlace.h"

namespace tests
{

/// The pixels of one colour outside the plot area.
inline int countInMargins(const QImage& image, const PlotPlace& place, const QColor& color)
{
    return countOf(image, image.rect(), color) - countOf(image, place.area(), color);
}

/// Whether the upper and the left side of the plot area's outline are whole.
inline bool hasOutline(const QImage& image, const PlotPlace& place)
{
    const QColor grey(150, 150, 150);
    const QRect area = place.area();
    return isAllOf(image, {area.topLeft(), QSize(area.width(), 1)}, grey) &&
           isAllOf(image, {area.topLeft(), QSize(1, area.height())}, grey);
}

} // namespace tests
