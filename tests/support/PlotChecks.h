// Checks for the pictures of all plots.
#pragma once

#include "support/PictureTools.h"
#include "support/PlotPlace.h"

namespace tests
{

/// The number of pixels of the colour @p color outside the plot area.
inline int countInMargins(const QImage& image, const PlotPlace& place, const QColor& color)
{
    return countOf(image, image.rect(), color) - countOf(image, place.area(), color);
}

/// Whether the top and left sides of the plot area's outline are complete.
inline bool hasOutline(const QImage& image, const PlotPlace& place)
{
    const QColor grey(150, 150, 150);
    const QRect area = place.area();
    return isFilledWith(image, {area.topLeft(), QSize(area.width(), 1)}, grey) &&
           isFilledWith(image, {area.topLeft(), QSize(1, area.height())}, grey);
}

} // namespace tests
