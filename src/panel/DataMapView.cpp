#include "panel/DataMapView.h"

#include "analysis/MapScan.h"
#include "display/DispMBase.h"
#include "display/LineEditText.h"
#include "panel/InputReader.h"
#include "panel/MapPicture.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"

#include <QSignalBlocker>

namespace panel
{

DataMapView::DataMapView(const Widgets& widgets, const InputReader& inputs)
    : m_widgets(widgets)
    , m_inputs(inputs)
{
}

const AEPoint& DataMapView::row() const
{
    return *m_widgets.points.at(m_inputs.checkedMapRow());
}

void DataMapView::draw(QStylePainter* p) const
{
    DispMBase* window = m_widgets.dataMap;
    p->fillRect(window->DispA->rect(), Qt::white);
    const AEPoint& map = row();
    if (!map.loaded || map.xNum <= 0 || map.yNum <= 0) {
        return;
    }
    const auto valueAt = [&map](int x, int y) { return data::pixelMut(map, x, y); };
    if (!window->DispA->hasScale) {
        const QSignalBlocker blocker(window->CBar); // no repaint: this paint shows the new limits
        window->setRealCoord(0.0, 0.0, map.xNum, map.yNum);
        if (const auto limits = analysis::scanMap(map, valueAt)) {
            window->setZRange(limits->low, limits->high);
        }
    }
    drawCells(*window, p, map, m_inputs.isGridShown(), valueAt);
}

void DataMapView::showValueAt(double x, double y) const
{
    const AEPoint& map = row();
    if (!map.loaded) {
        return;
    }
    const auto pixel = analysis::pixelAt(map, x, y);
    display::showNumber(m_widgets.dataMap->Val,
                        pixel ? data::pixelMut(map, pixel->x, pixel->y) : -1.0);
}

void DataMapView::showOtherMap() const
{
    DispMBase* window = m_widgets.dataMap;
    window->clearScale();
    window->Val->clear(); // the value is from the previous map
    window->update();
}

} // namespace panel
