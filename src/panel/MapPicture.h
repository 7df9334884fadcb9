// Draws the cells of a map in its window.
#pragma once

#include "data/A2DData.h"
#include "display/DispMBase.h"
#include "display/MapCells.h"

#include <QStylePainter>

namespace panel
{

/// Draws the cells of @p map on the painting surface of @p window, in the colours of its
/// colour bar.
///
/// @param hasGrid  whether to draw the outlines of the cells
/// @param valueAt  returns the value of a map pixel; called as valueAt(x, y) for visible
///                 pixels only
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
