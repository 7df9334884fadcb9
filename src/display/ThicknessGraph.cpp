#include "display/ThicknessGraph.h"

#include "display/ChCoord.h"
#include "display/GridLines.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

#include <QStylePainter>

#include <vector>

namespace
{

/// Remembers places on a widget and a little around it.
class PlacesTaken
{
public:
    explicit PlacesTaken(const ChCoord& cc)
        : m_width(display::truncated(cc.scrX1) + 2 * margin)
        , m_taken(static_cast<std::size_t>(m_width) *
                  static_cast<std::size_t>(display::truncated(cc.scrY0) + 2 * margin))
    {
    }

    /// Takes a place of display::markPlace(); false when it was taken already.
    bool take(const QPoint& place)
    {
        const auto i =
            static_cast<std::size_t>(place.y() + margin) * static_cast<std::size_t>(m_width) +
            static_cast<std::size_t>(place.x() + margin);
        const bool isNew = !m_taken[i];
        m_taken[i] = true;
        return isNew;
    }

private:
    static constexpr int margin = display::outerRadius + 2;

    int m_width;
    std::vector<bool> m_taken;
};

} // namespace

ThicknessGraph::ThicknessGraph(const A2DData& map, const analysis::ValenceMix& mix)
    : m_valence(map, mix, analysis::neq::valence)
    , m_thickness(map, mix, analysis::neq::totalDMut)
    , m_count(map.rows.size())
{
}

void ThicknessGraph::drawData(QStylePainter* p, const ChCoord& cc) const
{
    p->setPen(display::gridColor);
    display::drawVerticalGrid(p, cc, display::valenceGrid(lower, upper));
    p->setPen(color);
    // Many pixels of a map share a place; one mark shows them all.
    PlacesTaken taken(cc);
    for (qsizetype i = 0; i < m_count; ++i) {
        const auto place = display::markPlace(cc, m_valence.at(i), m_thickness.at(i));
        if (place && taken.take(*place)) {
            display::drawMark(p, *place);
        }
    }
}
