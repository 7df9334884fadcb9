// A surface with the margins of a plot.
#pragma once

#include "display/ChCoord.h"
#include "support/PictureTools.h"

namespace tests
{

/// 400 by 300 pixels, of which the plot area takes those from 40 to 380 and from
/// 270 up to 15. For x from 10 to 27 and y from -1 to 4 that makes 20 and 51
/// pixels a unit.
struct PlotSurface : ChCoord {
    explicit PlotSurface(double x0 = 10, double y0 = -1, double x1 = 27, double y1 = 4)
    {
        setScreen(0, 300, 400, 0);
        computeArea();
        setReal(x0, y0, x1, y1);
    }
};

/// A picture of its size.
inline QImage whiteSurface()
{
    return whitePicture({400, 300});
}

} // namespace tests
