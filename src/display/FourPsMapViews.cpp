// Members of the panel for the windows of the result map and the measured map.

#include "panel/FourPs.h"

#include "display/DispMBase.h"

void FourPs::drawMap(QStylePainter* p)
{
    m_resultMap.draw(p);
}

void FourPs::drawDMap(QStylePainter* p)
{
    m_dataMap.draw(p);
}

bool FourPs::SetMapScale()
{
    return m_resultMap.setPresetLimits();
}

void FourPs::updateMaps(bool)
{
    MapDisp->update();
    DMapDisp->update();
}

void FourPs::updateDMap()
{
    m_dataMap.showOtherMap();
}

void FourPs::selectedNewMap()
{
    m_resultMap.showOtherQuantity();
}

void FourPs::receiveNowPosInMap(double x, double y)
{
    m_resultMap.showValueAt(x, y);
}

void FourPs::receiveNowPosInDMap(double x, double y)
{
    m_dataMap.showValueAt(x, y);
}

void FourPs::dClickedInMap(MouseC* m)
{
    if (m_resultMap.handleDoubleClick(*m)) {
        update(); // repaints the panel; the painting surface repaints itself
    }
}
