// The walk over the pixels of a map that every map calculation makes.
#pragma once

#include "data/A2DData.h"

namespace analysis
{

/// Empties @p result and gives it the size and the comment lines of @p base.
void startResult(A2DData& result, const A2DData& base);

/// Replaces @p result by one row per pixel of @p base, in scan order, with the
/// size and comment lines of @p base. No pixel is skipped.
///
/// @param fill  called as fill(x, y, row); the row has x and y of the row of
///              @p base at this place, or 0.0 where it has none, and gets the
///              rest of its fields here
template <class Fill>
void walkPixels(const A2DData& base, A2DData& result, Fill fill)
{
    startResult(result, base);
    const A2DRow* const baseRows = base.rows.constData();
    const qsizetype baseCount = base.rows.size();
    qsizetype i = 0;
    for (int y = 0; y < base.yNum; ++y) {
        for (int x = 0; x < base.xNum; ++x, ++i) {
            const bool inside = i < baseCount;
            A2DRow& row = result.rows.emplaceBack(
                A2DRow{inside ? baseRows[i].x : 0.0, inside ? baseRows[i].y : 0.0, 0.0, 0.0, {}});
            fill(x, y, row);
        }
        if (base.xNum <= 0) {
            break; // no pixel in any line
        }
    }
}

} // namespace analysis
