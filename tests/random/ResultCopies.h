// Checks that a later calculation does not change copies of a result.
#pragma once

#include "data/A2DData.h"
#include "support/RandomMaps.h"

namespace tests
{

/// Keeps implicitly shared copies of a result during the next action. A calculation that
/// reuses the memory of the result must detach from the copies first. In every second
/// action no copy is kept, because the program itself keeps none and its calculations can
/// then reuse the memory.
class ResultCopies
{
public:
    /// Drops the earlier copies. If @p round is even, keeps copies, alternately of the whole
    /// @p result and of the value lists of its pixels.
    void keep(const A2DData& result, int round)
    {
        *this = {};
        if (round % 4 == 0) {
            m_map = result;
            m_mapCopy = deepCopy(result);
        } else if (round % 4 == 2) {
            for (const A2DRow& row : result.rows) {
                m_lists.append(row.values);
                m_listCopies.append(deepCopy(row.values));
            }
        }
    }

    /// Whether the kept copies are unchanged.
    bool areUnchanged() const
    {
        return differenceOf(m_map, m_mapCopy).isEmpty() &&
               std::equal(m_lists.cbegin(), m_lists.cend(), m_listCopies.cbegin(), sameNumbers);
    }

private:
    A2DData m_map;
    A2DData m_mapCopy;
    QList<QList<double>> m_lists;
    QList<QList<double>> m_listCopies;
};

} // namespace tests
