#include "display/MarkPlaces.h"

#include "display/ChCoord.h"
#include "display/Pixels.h"
#include "display/PointMarks.h"

namespace display
{

namespace
{

// The centre of a visible mark is less than this number of pixels outside the widget:
// at most outerRadius, plus less than 1 pixel because the position is truncated.
constexpr int reach = outerRadius + 1;

} // namespace

MarkPlaces::MarkPlaces(const ChCoord& cc)
    : m_x{(cc.areaX1 - cc.areaX0) / (cc.realX1 - cc.realX0), cc.realX0, cc.areaX0, -1.0 * reach,
          cc.scrX1 + reach}
    , m_y{(cc.areaY1 - cc.areaY0) / (cc.realY1 - cc.realY0), cc.realY0, cc.areaY0, -1.0 * reach,
          cc.scrY0 + reach}
    , m_area(QPoint(-reach, -reach), QPoint(truncated(m_x.high), truncated(m_y.high)))
{
}

} // namespace display
