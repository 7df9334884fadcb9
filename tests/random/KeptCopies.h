// Copies of a result, which a later calculation must not change.
#pragma once

#include "data/A2DData.h"
#include "support/OddMaps.h"

namespace tests
{

/// Copies share their memory with the result up to the next calculation. A
/// calculation that writes into memory of its own as long as nobody else has it has
/// to see them. Most of the time there are none, as in the program.
class KeptCopies
{
public:
    /// Keeps @p result whole, the values of its pixels, or, mostly, nothing.
    /// @param round  decides which
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

    /// Whether the copies are what they were.
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
