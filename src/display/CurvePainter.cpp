#include "display/CurvePainter.h"

#include "display/ChCoord.h"
#include "display/Pixels.h"

#include <QPainter>

namespace display
{

CurvePainter::CurvePainter(QPainter* painter, const ChCoord& coord)
    : m_painter(painter)
    , m_coord(coord)
{
}

CurvePainter::~CurvePainter()
{
    flush();
}

void CurvePainter::add(double x, double y)
{
    const QPointF place(m_coord.r2sX(x), m_coord.r2sY(y));
    if (m_hasLast) {
        if (const auto line = pixelLine(m_last, place)) {
            m_lines.at(static_cast<std::size_t>(m_count)) = *line;
            ++m_count;
        }
    }
    m_last = place;
    m_hasLast = true;
    if (m_count == static_cast<int>(m_lines.size())) {
        flush();
    }
}

void CurvePainter::flush()
{
    m_painter->drawLines(m_lines.data(), m_count);
    m_count = 0;
}

} // namespace display
