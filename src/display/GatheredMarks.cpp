#include "display/GatheredMarks.h"

#include "display/MarkPlaces.h"

#include <QPainter>

namespace display
{

GatheredMarks::GatheredMarks(QPainter* p, const MarkPlaces& places)
    : m_painter(p)
    , m_gathers(isRedrawNoOp(*p, p->pen()))
    , m_stamp(MarkStamp::of(*p, p->pen()))
    , m_places(places.area())
{
}

void GatheredMarks::draw() const
{
    if (m_stamp) {
        m_places.dilated(m_stamp->rows()).fill(m_painter, m_painter->pen().color());
        return;
    }
    m_places.forEachRun([this](int x, int y, int length) {
        for (int i = 0; i < length; ++i) {
            drawMark(m_painter, {x + i, y});
        }
    });
}

} // namespace display
