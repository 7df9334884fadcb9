#include "analysis/MapStacks.h"

#include "analysis/CalculationState.h"

namespace analysis
{

MapStack mapStack(const CalculationState& state, const CollectedRows& rows)
{
    const auto point = [&state](const PointNumbers& row) {
        return MapPoint{state.maps.at(row.row), row.energy, row.r1, row.r2};
    };
    MapStack stack;
    for (const PointNumbers& row : rows.others) {
        stack.others.append(point(row));
    }
    stack.v = point(rows.v);
    stack.r = rows.r;
    stack.mix = state.references.valenceMix();
    return stack;
}

NeqStack neqStack(const CalculationState& state, bool victoreen)
{
    NeqStack stack;
    stack.victoreen = victoreen;
    stack.inputs =
        neqPrepare(state.points, state.references, state.usedSpectra(), state.subPostForRef);
    for (const int row : std::as_const(stack.inputs.rowIndices)) {
        stack.maps.append(state.maps.at(row));
    }
    stack.base = state.maps.at(stack.inputs.baseRow);
    return stack;
}

} // namespace analysis
