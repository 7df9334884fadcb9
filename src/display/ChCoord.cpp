#include "display/ChCoord.h"

#include "display/Pixels.h"

#include <algorithm>
#include <cmath>

namespace
{

bool isNearEdge(double p, double end0, double end1, double fraction)
{
    const auto [lo, hi] = std::minmax(end0, end1);
    const double band = std::fabs(hi - lo) * fraction;
    return p < lo + band || p > hi - band;
}

double clamped(double v, double end0, double end1)
{
    const auto [lo, hi] = std::minmax(end0, end1);
    if (v < lo) {
        return lo;
    }
    return v > hi ? hi : v;
}

} // namespace

void ChCoord::setScreen(double x0, double y0, double x1, double y1)
{
    scrX0 = x0;
    scrX1 = x1;
    scrY0 = y0;
    scrY1 = y1;
    setArea(x0, y0, x1, y1);
}

void ChCoord::setArea(double x0, double y0, double x1, double y1)
{
    areaX0 = x0;
    areaX1 = x1;
    areaY0 = y0;
    areaY1 = y1;
}

void ChCoord::computeArea()
{
    const double w = scrX1 - scrX0;
    const double h = scrY1 - scrY0; // negative on a painting surface, where scrY1 is 0
    areaX0 = std::trunc(marginLeft * w) + scrX0;
    areaX1 = scrX1 - std::trunc(w * marginRight);
    areaY0 = std::trunc(marginBottom * h) + scrY0;
    areaY1 = scrY1 - std::trunc(h * marginTop);
}

void ChCoord::setReal(double x0, double y0, double x1, double y1)
{
    setRealX(x0, x1);
    setRealY(y0, y1);
}

void ChCoord::setRealX(double x0, double x1)
{
    realX0 = x0;
    realX1 = x1;
}

void ChCoord::setRealY(double y0, double y1)
{
    realY0 = y0;
    realY1 = y1;
}

double ChCoord::r2sX(double v) const
{
    return r2sdX(v - realX0) + areaX0;
}

double ChCoord::r2sY(double v) const
{
    return r2sdY(v - realY0) + areaY0;
}

double ChCoord::r2sdX(double d) const
{
    return (areaX1 - areaX0) / (realX1 - realX0) * d;
}

double ChCoord::r2sdY(double d) const
{
    return (areaY1 - areaY0) / (realY1 - realY0) * d;
}

double ChCoord::s2rX(double p) const
{
    return s2rOffX(p) + realX0;
}

double ChCoord::s2rY(double p) const
{
    return s2rOffY(p) + realY0;
}

double ChCoord::s2rOffX(double p) const
{
    return s2rdX(p - areaX0);
}

double ChCoord::s2rOffY(double p) const
{
    return s2rdY(p - areaY0);
}

double ChCoord::s2rdX(double d) const
{
    return (realX1 - realX0) / (areaX1 - areaX0) * d;
}

double ChCoord::s2rdY(double d) const
{
    return (realY1 - realY0) / (areaY1 - areaY0) * d;
}

double ChCoord::s2rClampX(double p) const
{
    return clamped(s2rX(p), realX0, realX1);
}

double ChCoord::s2rClampY(double p) const
{
    return clamped(s2rY(p), realY0, realY1);
}

bool ChCoord::nearAreaEdgeX(double p) const
{
    return isNearEdge(p, areaX0, areaX1, areaEdge);
}

bool ChCoord::nearAreaEdgeY(double p) const
{
    return isNearEdge(p, areaY0, areaY1, areaEdge);
}

bool ChCoord::nearScrEdgeX(double p) const
{
    return isNearEdge(p, scrX0, scrX1, scrEdge);
}

bool ChCoord::nearScrEdgeY(double p) const
{
    return isNearEdge(p, scrY0, scrY1, scrEdge);
}

double ChCoord::tickStep(double base, double minPixels) const
{
    constexpr int rounds = 8;
    const double pixelsPerUnit = (areaX1 - areaX0) / (realX1 - realX0);
    double m = 1.0;
    for (int round = 0; round < rounds; ++round) {
        const double v = base * m;
        for (const double step : {v, 2.0 * v, 5.0 * v}) {
            if (step * pixelsPerUnit > minPixels) {
                return step;
            }
        }
        m *= 10.0;
    }
    return base * m;
}

double ChCoord::tickStepY(double base, double minPixels) const
{
    return tickStep(base, minPixels);
}

int ChCoord::textRow() const
{
    return display::truncated((areaY1 - areaY0) / titleDiv);
}

int ChCoord::labelWidth() const
{
    return display::truncated((scrX1 - scrX0) * marginLeft);
}
