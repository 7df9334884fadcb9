// Checks that copies of a result do not change in a later calculation.
#pragma once

#include "data/A2DData.h"
#include "support/OddMaps.h"

namespace tests
{

/// Keeps implicitly shared copies of a result across the next calculation. A calculation
/// that reuses the result's memory must detach from these copies first. Most of the time
/// no copy exists, as in the program.
class ResultCopies
{
public:
    /// Keeps a copy of @p result, of its pixels' values, or (in half of the rounds)
    /// nothing.
    ///
    /// @param round  decides which of them
    void keep(const A2DData& result, int round)
    {
        *this = {};
        if (round % 4 == 0) {
            m_map = result;
            m_mapThen = ownCopy(result);
        } else if (round % 4 == 2) {
            for (const A2DRow& row : result.rows) {
                m_lists.append(row.values);
                m_listsThen.append(ownCopy(row.values));
            }
        }
    }

    /// Whether the copies are unchanged.
    bool areTheSame() const
    {
        return differenceOf(m_map, m_mapThen).isEmpty() &&
               std::equal(m_lists.cbegin(), m_lists.cend(), m_listsThen.cbegin(), sameNumbers);
    }

private:
    A2DData m_map;
    A2DData m_mapThen;
    QList<QList<double>> m_lists;
    QList<QList<double>> m_listsThen;
};

} // namespace tests
