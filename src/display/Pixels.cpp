#include "display/Pixels.h"

#include <QPainter>

#include <cmath>
#include <limits>

namespace display
{

namespace
{

// Pixels. Beyond any window, and small enough for the painter's own numbers.
constexpr double reach = 1 << 20;

bool isFinite(const QPointF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

bool isWithinReach(const QPointF& p)
{
    return std::fabs(p.x()) <= reach && std::fabs(p.y()) <= reach;
}

/// An end of what is left of a segment: how far along the way from one end (0)
/// to the other (1), and where it meets the reach on an axis.
struct Cut {
    double part;
    std::optional<double> x;
    std::optional<double> y;
};

/// One axis of Liang-Barsky clipping: moves both ends to where the segment is within
/// reach on this axis; false when it never is.
bool cutOnAxis(double from, double to, Cut& begin, Cut& end, std::optional<double> Cut::*axis)
{
    // Halves, since the distance of two finite numbers may be infinite.
    const double half = 0.5 * to - 0.5 * from;
    if (half == 0.0) {
        return std::fabs(from) <= reach;
    }
    const double near = half > 0.0 ? -reach : reach;
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

double onTheWay(double from, double to, double part)
{
    // From the nearer end, so that both ends stay what they are.
    const double half = 0.5 * to - 0.5 * from;
    const double at = part <= 0.5 ? from + 2.0 * (half * part) : to - 2.0 * (half * (1.0 - part));
    return std::fmin(std::fmax(at, -reach), reach);
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
    if (isWithinReach(from) && isWithinReach(to)) {
        return QLine(truncatedPoint(from.x(), from.y()), truncatedPoint(to.x(), to.y()));
    }
    Cut begin{0.0, {}, {}};
    Cut end{1.0, {}, {}};
    if (!isFinite(from) || !isFinite(to) || !cutOnAxis(from.x(), to.x(), begin, end, &Cut::x) ||
        !cutOnAxis(from.y(), to.y(), begin, end, &Cut::y)) {
        return std::nullopt;
    }
    const auto at = [&](const Cut& cut) {
        return truncatedPoint(cut.x.value_or(onTheWay(from.x(), to.x(), cut.part)),
                              cut.y.value_or(onTheWay(from.y(), to.y(), cut.part)));
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
