// The windows of the result map and of the measured maps.

#include "panel/FourPs.h"

#include "analysis/MapQuantity.h"
#include "analysis/MapScan.h"
#include "analysis/ReferenceSet.h"
#include "display/DispMBase.h"
#include "display/LineEditText.h"
#include "display/MapCells.h"
#include "rows/AEPoint.h"

#include <QSignalBlocker>

#include <algorithm>

using analysis::MapQuantity;

MapQuantity FourPs::shownQuantity() const
{
    return {BaseData, references().valenceMix(), kindOfMap()};
}

bool FourPs::hasResult() const
{
    return !BaseData.rows.isEmpty();
}

void FourPs::drawMap(QStylePainter* p)
{
    p->fillRect(MapDisp->DispA->rect(), Qt::white);
    if (!hasResult() || BaseData.xNum <= 0 || BaseData.yNum <= 0) {
        return;
    }
    if (!MapDisp->DispA->hasScale) {
        const QSignalBlocker quiet(MapDisp->CBar); // this paint shows the new limits
        if (!SetMapScale()) {
            scanMapLimits(false);
        }
        MapDisp->setRealCoord(0.0, 0.0, BaseData.xNum, BaseData.yNum);
    }
    const MapQuantity quantity = shownQuantity();
    drawCells(MapDisp, p, BaseData, [&](int x, int y) { return quantity.at(x, y); });
}

void FourPs::drawDMap(QStylePainter* p)
{
    p->fillRect(DMapDisp->DispA->rect(), Qt::white);
    const AEPoint* row = EPoints.at(CheckedMapRow());
    const A2DData& map = *row;
    if (!row->loaded || map.xNum <= 0 || map.yNum <= 0) {
        return;
    }
    const auto valueAt = [&map](int x, int y) { return data::pixelMut(map, x, y); };
    if (!DMapDisp->DispA->hasScale) {
        const QSignalBlocker quiet(DMapDisp->CBar); // this paint shows the new limits
        DMapDisp->setRealCoord(0.0, 0.0, map.xNum, map.yNum);
        if (const auto limits = analysis::scanMap(map, valueAt)) {
            DMapDisp->setZRange(limits->low, limits->high);
        }
    }
    drawCells(DMapDisp, p, map, valueAt);
}

template <class ValueAt>
void FourPs::drawCells(const DispMBase* view, QStylePainter* p, const A2DData& map,
                       ValueAt valueAt) const
{
    const display::MapCells cells(view->DispA->cc, map.xNum, map.yNum);
    const cBar* bar = view->CBar;
    cells.fill(p, [&](int x, int y) -> const QColor& { return bar->color(valueAt(x, y)); });
    if (ui.MapWGrid->isChecked()) {
        p->setPen(QColor(200, 200, 200));
        cells.outline(p);
    }
}

bool FourPs::SetMapScale()
{
    const auto limits = analysis::mapLimits(kindOfMap(), references());
    if (!limits) {
        return false;
    }
    MapDisp->setZRange(limits->low, limits->high);
    return true;
}

void FourPs::scanMapLimits(bool keep)
{
    const MapQuantity quantity = shownQuantity();
    auto limits = analysis::scanMap(BaseData, [&](int x, int y) { return quantity.at(x, y); });
    if (!limits) {
        return; // no pixel has a number, and the limits stay what they are
    }
    if (keep) {
        // The larger of both on purpose: a repeated scan only raises limits.
        limits->low = std::max(limits->low, MapDisp->CBar->zmin);
        limits->high = std::max(limits->high, MapDisp->CBar->zmax);
    }
    MapDisp->setZRange(limits->low, limits->high);
}

void FourPs::updateMaps(bool)
{
    MapDisp->update();
    DMapDisp->update();
}

void FourPs::updateDMap()
{
    DMapDisp->clearScale();
    DMapDisp->Val->clear(); // it was a value of the map before
    DMapDisp->update();
}

void FourPs::selectedNewMap()
{
    MapDisp->Val->clear(); // it was a value of the quantity before
    MapDisp->update();
    SetMapScale();
}

void FourPs::receiveNowPosInMap(double x, double y)
{
    if (!hasResult()) {
        return;
    }
    const auto pixel = analysis::pixelAt(BaseData, x, y);
    display::showNumber(MapDisp->Val, pixel ? shownQuantity().at(pixel->x, pixel->y) : 0.0);
}

void FourPs::receiveNowPosInDMap(double x, double y)
{
    const AEPoint* row = EPoints.at(CheckedMapRow());
    if (!row->loaded) {
        return;
    }
    const auto pixel = analysis::pixelAt(*row, x, y);
    display::showNumber(DMapDisp->Val, pixel ? data::pixelMut(*row, pixel->x, pixel->y) : -1.0);
}

void FourPs::dClickedInMap(MouseC* m)
{
    if (!hasResult()) {
        return;
    }
    const auto keys = m->dClickMods & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    if (m->dClickButton == Qt::LeftButton) {
        if (!keys) {
            scanMapLimits(false);
        } else if (keys == Qt::ShiftModifier) {
            scanMapLimits(true);
        } else if (keys == Qt::ControlModifier && !SetMapScale()) {
            scanMapLimits(false);
        }
    }
    // The surface goes back to the whole map, and its next paint sets limits of
    // its own over these.
    update();
}
