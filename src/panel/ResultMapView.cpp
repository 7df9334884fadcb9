#include "panel/ResultMapView.h"

#include "analysis/MapScan.h"
#include "analysis/ReferenceSet.h"
#include "display/DispMBase.h"
#include "display/LineEditText.h"
#include "panel/InputReader.h"
#include "panel/MapPicture.h"
#include "panel/Widgets.h"

#include <QSignalBlocker>

#include <algorithm>

namespace panel
{

ResultMapView::ResultMapView(const Widgets& widgets, const InputReader& inputs,
                             const A2DData& result)
    : m_widgets(widgets)
    , m_inputs(inputs)
    , m_result(result)
{
}

bool ResultMapView::hasResult() const
{
    return !m_result.rows.isEmpty();
}

bool ResultMapView::hasPixels() const
{
    return m_result.xNum > 0 && m_result.yNum > 0;
}

analysis::MapQuantity ResultMapView::quantity() const
{
    return {m_result, m_inputs.references().valenceMix(), m_inputs.kindOfMap()};
}

void ResultMapView::draw(QStylePainter* p) const
{
    DispMBase* window = m_widgets.resultMap;
    p->fillRect(window->DispA->rect(), Qt::white);
    if (!hasResult() || !hasPixels()) {
        return;
    }
    if (!window->DispA->hasScale) {
        const QSignalBlocker blocker(window->CBar); // no repaint: this paint shows the new limits
        if (!setPresetLimits()) {
            scanLimits(false);
        }
        window->setRealCoord(0.0, 0.0, m_result.xNum, m_result.yNum);
    }
    const analysis::MapQuantity shown = quantity();
    drawCells(*window, p, m_result, m_inputs.isGridShown(),
              [&](int x, int y) { return shown.at(x, y); });
}

bool ResultMapView::setPresetLimits() const
{
    const auto limits = analysis::mapLimits(m_inputs.kindOfMap(), m_inputs.references());
    if (!limits) {
        return false;
    }
    m_widgets.resultMap->setZRange(limits->low, limits->high);
    return true;
}

void ResultMapView::scanLimits(bool onlyRaise) const
{
    const analysis::MapQuantity scanned = quantity();
    auto limits = analysis::scanMap(m_result, [&](int x, int y) { return scanned.at(x, y); });
    if (!limits) {
        return; // no pixel has a numeric value, so the limits do not change
    }
    if (onlyRaise) {
        // On purpose the lower limit, like the upper one, is only raised, never lowered.
        const cBar& bar = *m_widgets.resultMap->CBar;
        limits->low = std::max(limits->low, bar.zmin);
        limits->high = std::max(limits->high, bar.zmax);
    }
    m_widgets.resultMap->setZRange(limits->low, limits->high);
}

void ResultMapView::showValueAt(double x, double y) const
{
    if (!hasResult()) {
        return;
    }
    const auto pixel = analysis::pixelAt(m_result, x, y);
    display::showNumber(m_widgets.resultMap->Val, pixel ? quantity().at(pixel->x, pixel->y) : 0.0);
}

bool ResultMapView::handleDoubleClick(const MouseC& mouse) const
{
    if (!hasResult()) {
        return false;
    }
    const auto keys =
        mouse.dClickMods & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    if (mouse.dClickButton == Qt::LeftButton) {
        if (!keys) {
            scanLimits(false);
        } else if (keys == Qt::ShiftModifier) {
            scanLimits(true);
        } else if (keys == Qt::ControlModifier && !setPresetLimits()) {
            scanLimits(false);
        }
    }
    return true;
}

void ResultMapView::showOtherQuantity() const
{
    m_widgets.resultMap->Val->clear(); // the value is from the previous quantity
    m_widgets.resultMap->update();
    setPresetLimits();
}

// Does not call clearScale(): the next paint would then replace the limits that the user has
// set. If the surface has no range, the next paint fits the view anyway.
void ResultMapView::showNewResult(bool isSizeNew) const
{
    DispMBase* window = m_widgets.resultMap;
    if (isSizeNew && window->DispA->hasScale && hasPixels()) {
        window->DispA->cc.setReal(0.0, 0.0, m_result.xNum, m_result.yNum);
    }
    window->Val->clear(); // the value is from the previous result
    window->update();
}

void ResultMapView::showAndFitNewResult() const
{
    DispMBase* window = m_widgets.resultMap;
    window->Val->clear(); // the value is from the previous result
    window->clearScale();
    window->update();
}

} // namespace panel
