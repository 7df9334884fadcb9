// The pixels of one mark.
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

/// Which pixels display::drawMark() draws about the pixel of a point.
///
/// A mark may be drawn by its stamp because the toolkit's circles of whole
/// coordinates are the same pixels about each place. Where that is not so, there
/// is no stamp.
class MarkStamp
{
public:
    /// Pixels to each side of the middle.
    static constexpr int reach = outerRadius + 2;

    /// The stamp for marks that @p p draws in @p pen, asked of the toolkit by
    /// drawing one; nothing where marks are not the same pixels at each place, or
    /// a pixel drawn twice is not the same as drawn once: a scaled or turned
    /// view, smooth edges, transparent or broad pens, a brush, and devices that
    /// have no pixels.
    static std::optional<MarkStamp> of(const QPainter& p, const QPen& pen);

    /// Its rows from the top, the lowest bit being the leftmost pixel.
    const std::vector<std::uint64_t>& rows() const { return m_rows; }

private:
    MarkStamp() = default;

    std::vector<std::uint64_t> m_rows;
};

/// Whether a mark in @p pen that is drawn again on its place changes nothing.
bool isSameDrawnTwice(const QPainter& p, const QPen& pen);

} // namespace display
