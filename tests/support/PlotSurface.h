// A coordinate transform for a surface with the margins of a plot.
#pragma once

#include "display/ChCoord.h"
#include "support/PictureTools.h"

namespace tests
{

/// The transform of a surface of 400 by 300 pixels. The margins are a tenth of the surface
/// at the left and bottom and a twentieth at the right and top, so the plot area spans
/// pixel columns 40 to 380 and pixel rows 15 to 270. By default x is from 10 to 27 and y
/// from -1 to 4, so one data unit is 340 / 17 = 20 pixels wide and 255 / 5 = 51 pixels
/// high.
struct PlotSurface : ChCoord {
    explicit PlotSurface(double x0 = 10, double y0 = -1, double x1 = 27, double y1 = 4)
    {
        setScreen(0, 300, 400, 0);
        computeArea();
        setReal(x0, y0, x1, y1);
    }
};

/// A white picture of the size of PlotSurface.
inline QImage whiteSurface()
{
    return whitePicture({400, 300});
}

} // namespace tests
