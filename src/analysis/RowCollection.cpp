#include "analysis/RowCollection.h"

#include "analysis/ReferenceSet.h"

namespace analysis
{

namespace
{

template <class Predicate>
Selection selectRows(const QList<PointState>& points, Predicate isSelected)
{
    Selection selection;
    for (int i = 0; i < points.size(); ++i) {
        if (!isSelected(points.at(i))) {
            continue;
        }
        ++selection.count;
        if (points.at(i).vPoint) {
            selection.vRow = i;
        }
    }
    return selection;
}

} // namespace

Selection selectedRows(const QList<PointState>& points)
{
    return selectRows(points, [](const PointState& point) { return point.used; });
}

Selection selectedMapRows(const QList<PointState>& points)
{
    return selectRows(points, [](const PointState& point) { return point.used && point.hasMap; });
}

CollectedRows collectRowsLS(const QList<PointState>& points, const ReferenceSet& references)
{
    CollectedRows rows;
    const int first = references.usedRow(0);
    const int second = references.usedRow(1);
    if (first < 0 || second < 0) {
        return rows;
    }
    rows.r = references.edgeJumpRatio();
    for (int i = 0; i < points.size(); ++i) {
        const PointState& point = points.at(i);
        if (!point.used) {
            continue;
        }
        const PointNumbers numbers{i, point.energy, point.mut.at(static_cast<std::size_t>(first)),
                                   point.mut.at(static_cast<std::size_t>(second))};
        if (point.vPoint) {
            rows.v = numbers;
        } else {
            rows.others.append(numbers);
        }
    }
    return rows;
}

CollectedRows collectRowsExact(const QList<PointState>& points, const ReferenceSet& references)
{
    constexpr qsizetype planeRows = 3;
    CollectedRows rows = collectRowsLS(points, references);
    rows.others.resize(qMin(rows.others.size(), planeRows));
    return rows;
}

} // namespace analysis
