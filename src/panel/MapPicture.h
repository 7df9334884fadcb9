// The picture of a map in its window.
#pragma once

#include "data/A2DData.h"
#include "display/DispMBase.h"
#include "display/MapCells.h"

#include <QStylePainter>

namespace panel
{

/// Draws all cells of @p map in the colours that the bar of @p window has for their
/// values.
///
/// @param hasGrid  outline the cells
/// @param valueAt  called as valueAt(x, y) for each pixel that shows
template <class ValueAt>
void drawCells(const DispMBase& window, QStylePainter* p, const A2DData& map, bool hasGrid,
               ValueAt valueAt)
{
    const display::MapCells cells(window.DispA->cc, map.xNum, map.yNum);
    const cBar* bar = window.CBar;
    cells.fill(p, [&](int x, int y) -> const QColor& { return bar->color(valueAt(x, y)); });
    if (hasGrid) {
        p->setPen(QColor(200, 200, 200));
        cells.outline(p);
    }
}

} // namespace panel
