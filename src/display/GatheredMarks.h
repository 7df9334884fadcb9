// The marks of very many points in one colour.
#pragma once

#include "display/MarkStamp.h"
#include "display/PixelSet.h"

#include <optional>

class QPainter;

namespace display
{

class MarkPlaces;

/// Draws the marks of all points at once, in the painter's pen.
///
/// The picture is the one of display::drawMark() for each point, pixel for pixel.
/// It may differ from that because in one colour neither the order of the marks
/// nor their number at a place shows: what counts is the set of pixels that any
/// of them covers, and each of these is drawn once.
class GatheredMarks
{
public:
    /// @param p       must outlive the marks, its pen and state as they are
    /// @param places  where the points are found
    GatheredMarks(QPainter* p, const MarkPlaces& places);

    /// Adds the mark of a point on one of the places.
    void add(const QPoint& place)
    {
        if (m_gathers) {
            m_places.insert(place);
        } else {
            drawMark(m_painter, place);
        }
    }

    /// Draws what has been gathered.
    void draw() const;

private:
    QPainter* m_painter;
    bool m_gathers;
    std::optional<MarkStamp> m_stamp;
    PixelSet m_places;
};

} // namespace display
