// Draws the marks of many points in several colours, newer marks over older ones.
#pragma once

#include "display/MarkStamp.h"
#include "display/PixelSet.h"

#include <QColor>
#include <QList>

#include <optional>
#include <vector>

class QPainter;

namespace display
{

class MarkPlaces;

/// Fast path for drawing overlapping marks: each covered pixel is drawn only once.
///
/// It draws exactly the same picture as display::drawMark() for each point from the
/// oldest to the newest. Only the newest mark on a pixel is visible. The points are
/// therefore added in reverse order, newest first, and pixels that are already
/// covered are skipped (the reverse painter's algorithm).
class LayeredMarks
{
public:
    /// @param stamp   the pixels of a mark, see stampOf()
    /// @param places  converts the points to pixels; only its area is read
    /// @param colors  one colour for each layer
    LayeredMarks(const MarkStamp& stamp, const MarkPlaces& places, const QList<QColor>& colors);

    /// Returns the stamp of marks in the colours @p colors. Returns nothing if @p colors
    /// is empty, or if the fast path could draw a different picture; the caller must then
    /// draw the marks one by one.
    static std::optional<MarkStamp> stampOf(const QPainter& p, const QList<QColor>& colors);

    /// Adds a mark below all marks added so far.
    ///
    /// @param place  a pixel returned by MarkPlaces::at()
    /// @param layer  index in the list of colours
    void addBelow(const QPoint& place, qsizetype layer)
    {
        if (m_places.insert(place)) {
            cover(place, layer);
        }
    }

    /// Draws the visible pixels of all marks.
    void draw(QPainter* p) const;

private:
    void cover(const QPoint& place, qsizetype layer);

    MarkStamp m_stamp;
    QList<QColor> m_colors;
    PixelSet m_places;
    PixelSet m_covered;
    std::vector<std::optional<PixelSet>> m_layers; ///< a layer is created at its first use
};

} // namespace display
