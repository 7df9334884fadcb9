// The pixel pattern of a mark.
#pragma once

#include "display/PointMarks.h"

#include <QPoint>

#include <cstdint>
#include <optional>
#include <vector>

class QPainter;
class QPen;

namespace display
{

/// The pixels that display::drawMark() draws around the pixel of a point.
///
/// The fast paths copy this pattern instead of drawing circles. This is possible
/// because Qt draws a circle with integer coordinates as the same pattern at each
/// position. For a painter whose pattern depends on the position, of() returns no stamp.
class MarkStamp
{
public:
    /// Number of pixels on each side of the centre pixel.
    static constexpr int reach = outerRadius + 2;

    /// Returns the stamp of the marks that @p p draws with @p pen. The pattern is
    /// found by drawing one mark into an image.
    ///
    /// Returns nothing if the pattern could depend on the position or if drawing a pixel
    /// twice could change it, for example with a scaled painter, antialiasing, a
    /// transparent or wide pen, a brush, or any paint engine except the raster engine.
    static std::optional<MarkStamp> of(const QPainter& p, const QPen& pen);

    /// Returns the rows of the pattern from the top. The lowest bit of a row is its
    /// leftmost pixel.
    const std::vector<std::uint64_t>& rows() const { return m_rows; }

private:
    MarkStamp() = default;

    std::vector<std::uint64_t> m_rows;
};

/// Whether drawing a mark a second time at the same position is certain to be a no-op, if
/// @p p draws it with @p pen.
bool isRedrawNoOp(const QPainter& p, const QPen& pen);

} // namespace display
