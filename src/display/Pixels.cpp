#include "display/Pixels.h"

#include <cmath>
#include <limits>
#include <utility>

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

/// A span of the way from one end of a segment (0) to the other (1).
struct Part {
    double begin = 0.0;
    double end = 1.0;

    /// Leaves what lies within reach on an axis; false when nothing does.
    bool narrow(double from, double to)
    {
        // Halves, since the distance of two finite numbers may be infinite.
        const double half = 0.5 * to - 0.5 * from;
        if (half == 0.0) {
            return std::fabs(from) <= reach;
        }
        double enters = (-0.5 * reach - 0.5 * from) / half;
        double leaves = (0.5 * reach - 0.5 * from) / half;
        if (enters > leaves) {
            std::swap(enters, leaves);
        }
        begin = std::fmax(begin, enters);
        end = std::fmin(end, leaves);
        return begin <= end;
    }
};

double onTheWay(double from, double to, double part)
{
    // From the nearer end, so that both ends stay what they are.
    const double half = 0.5 * to - 0.5 * from;
    const double at = part <= 0.5 ? from + 2.0 * (half * part) : to - 2.0 * (half * (1.0 - part));
    return std::fmin(std::fmax(at, -reach), reach);
}

QPoint truncatedPoint(double x, double y)
{
    return {display::truncated(x), display::truncated(y)};
}

} // namespace

int display::truncated(double v)
{
    using Int = std::numeric_limits<int>;
    const bool fits = v > Int::min() - 1.0 && v < Int::max() + 1.0;
    return fits ? static_cast<int>(v) : Int::min();
}

QPoint display::nearestPixel(const QPointF& p)
{
    return truncatedPoint(p.x() + std::copysign(0.5, p.x()), p.y() + std::copysign(0.5, p.y()));
}

std::optional<QLine> display::pixelLine(const QPointF& from, const QPointF& to)
{
    if (isWithinReach(from) && isWithinReach(to)) {
        return QLine(truncatedPoint(from.x(), from.y()), truncatedPoint(to.x(), to.y()));
    }
    Part part;
    if (!isFinite(from) || !isFinite(to) || !part.narrow(from.x(), to.x()) ||
        !part.narrow(from.y(), to.y())) {
        return std::nullopt;
    }
    const auto at = [&](double t) {
        return truncatedPoint(onTheWay(from.x(), to.x(), t), onTheWay(from.y(), to.y(), t));
    };
    return QLine(at(part.begin), at(part.end));
}
