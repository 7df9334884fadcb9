#include "display/Pixels.h"

#include <QPainter>

#include <cmath>
#include <limits>

namespace display
{

namespace
{

// In pixels. Larger than any window, and small enough for QPainter's integer arithmetic.
constexpr double clipLimit = 1 << 20;

bool isFinite(const QPointF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

bool isInClipWindow(const QPointF& p)
{
    return std::fabs(p.x()) <= clipLimit && std::fabs(p.y()) <= clipLimit;
}

/// One end of the clipped segment: its position along the segment, from 0 (start) to 1
/// (end), and its exact coordinate on the axis on which it was clipped.
struct ClipPoint {
    double part;
    std::optional<double> x;
    std::optional<double> y;
};

/// One axis of Liang-Barsky clipping (Liang and Barsky, 1984): moves each end of the
/// segment that is outside the clip limits of this axis to the limit. Returns false if no
/// part of the segment remains.
bool clipOnAxis(double from, double to, ClipPoint& begin, ClipPoint& end,
                std::optional<double> ClipPoint::*axis)
{
    // Half the difference, because the difference between two finite numbers can overflow.
    const double half = 0.5 * to - 0.5 * from;
    if (half == 0.0) {
        return std::fabs(from) <= clipLimit;
    }
    const double near = half > 0.0 ? -clipLimit : clipLimit;
    const double enters = (0.5 * near - 0.5 * from) / half;
    const double leaves = (-0.5 * near - 0.5 * from) / half;
    if (enters > begin.part) {
        begin = {enters, {}, {}};
        begin.*axis = near;
    }
    if (leaves < end.part) {
        end = {leaves, {}, {}};
        end.*axis = -near;
    }
    return begin.part <= end.part;
}

double interpolated(double from, double to, double part)
{
    // Interpolates from the nearer end, so that part 0 and part 1 return the exact ends.
    const double half = 0.5 * to - 0.5 * from;
    const double at = part <= 0.5 ? from + 2.0 * (half * part) : to - 2.0 * (half * (1.0 - part));
    return std::fmin(std::fmax(at, -clipLimit), clipLimit);
}

QPoint truncatedPoint(double x, double y)
{
    return {truncated(x), truncated(y)};
}

} // namespace

int truncated(double v)
{
    using Int = std::numeric_limits<int>;
    const bool fits = v > Int::min() - 1.0 && v < Int::max() + 1.0;
    return fits ? static_cast<int>(v) : Int::min();
}

QPoint nearestPixel(const QPointF& p)
{
    return truncatedPoint(p.x() + std::copysign(0.5, p.x()), p.y() + std::copysign(0.5, p.y()));
}

std::optional<QLine> pixelLine(const QPointF& from, const QPointF& to)
{
    if (isInClipWindow(from) && isInClipWindow(to)) {
        return QLine(truncatedPoint(from.x(), from.y()), truncatedPoint(to.x(), to.y()));
    }
    ClipPoint begin{0.0, {}, {}};
    ClipPoint end{1.0, {}, {}};
    if (!isFinite(from) || !isFinite(to) ||
        !clipOnAxis(from.x(), to.x(), begin, end, &ClipPoint::x) ||
        !clipOnAxis(from.y(), to.y(), begin, end, &ClipPoint::y)) {
        return std::nullopt;
    }
    const auto at = [&](const ClipPoint& clip) {
        return truncatedPoint(clip.x.value_or(interpolated(from.x(), to.x(), clip.part)),
                              clip.y.value_or(interpolated(from.y(), to.y(), clip.part)));
    };
    return QLine(at(begin), at(end));
}

void drawPixelLine(QPainter* p, const QPen& pen, const QPointF& from, const QPointF& to)
{
    if (const auto line = pixelLine(from, to)) {
        p->setPen(pen);
        p->drawLine(*line);
    }
}

} // namespace display
