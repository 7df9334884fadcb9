#include "display/ThicknessGraph.h"

#include "display/GatheredMarks.h"
#include "display/GridLines.h"
#include "display/MarkPlaces.h"

#include <QStylePainter>

namespace display
{

ThicknessGraph::ThicknessGraph(const A2DData& map, const analysis::ValenceMix& mix)
    : m_valence(map, mix, analysis::neq::valence)
    , m_thickness(map, mix, analysis::neq::totalDMut)
    , m_count(map.rows.size())
{
}

void ThicknessGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    p->setPen(gridColor);
    drawVerticalGrid(p, cc, valenceGrid(lower, upper));
    p->setPen(color);
    const MarkPlaces places(cc);
    GatheredMarks marks(p, places);
    for (qsizetype i = 0; i < m_count; ++i) {
        if (const auto place = places.at(m_valence.at(i), m_thickness.at(i))) {
            marks.add(*place);
        }
    }
    marks.draw();
}

} // namespace display
