// Draws the marks of many points in one colour.
#pragma once

#include "display/MarkStamp.h"
#include "display/PixelSet.h"

#include <optional>

class QPainter;

namespace display
{

class MarkPlaces;

/// Fast path for drawing the marks of all points, with the painter's pen.
///
/// It paints exactly the same pixels as display::drawMark() for each point. In one
/// opaque colour, neither the order of the marks nor the number of marks on a pixel is
/// visible. It is therefore enough to collect the positions of the marks and to fill each
/// pixel that is covered by any mark once. Without a MarkStamp, one mark is drawn at each
/// collected position. If drawing a mark twice changes the picture (see isRedrawNoOp()),
/// add() draws each mark immediately.
class GatheredMarks
{
public:
    /// @param p       must outlive this object; its pen and state must not change
    ///                until draw() returns
    /// @param places  converts the points to pixels; only its area is read
    GatheredMarks(QPainter* p, const MarkPlaces& places);

    /// Adds a mark at @p place, a pixel returned by MarkPlaces::at().
    void add(const QPoint& place)
    {
        if (m_gathers) {
            m_places.insert(place);
        } else {
            drawMark(m_painter, place);
        }
    }

    /// Draws the collected marks.
    void draw() const;

private:
    QPainter* m_painter;
    bool m_gathers;
    std::optional<MarkStamp> m_stamp;
    PixelSet m_places;
};

} // namespace display
