#include "analysis/FourPointForms.h"

#include "analysis/LaneSolver.h"

#include <algorithm>

namespace analysis
{

LeastSquarePlane::LeastSquarePlane(const QList<double>& R1, const QList<double>& R2,
                                   const QList<double>& E, const VPointNumbers& v)
    : m_rows(static_cast<std::size_t>(std::min({R1.size(), R2.size(), E.size()})))
    , m_v(v)
{
    qsizetype i = 0;
    for (Row& row : m_rows) {
        row = {E.at(i), R1.at(i) + R2.at(i)};
        m_n += 1.0;
        m_sE += row.E;
        m_sEE += row.E * row.E;
        m_sS += row.S;
        m_sSE += row.S * row.E;
        ++i;
    }
}

/// Calculates the results of four targets: elements @p at to @p at + 3 of the blocks.
void LeastSquarePlane::solveAt(std::span<const BlockView> T, const BlockView& TV, int at, Block& a,
                               Block& thickness) const
{
    Lanes sT{};
    Lanes sET{};
    Lanes sTT{};
    Lanes sST{};
    auto block = T.begin();
    for (const Row& row : m_rows) {
        const Lanes t = loadLanes((block++)->data() + at);
        sT += t;
        sET += row.E * t;
        sTT += t * t;
        sST += row.S * t;
    }
    const Lanes n = allLanes(m_n);
    const Lanes sE = allLanes(m_sE);
    LaneSystem<3> c{{{{n, sE, sT}, {sE, allLanes(m_sEE), sET}, {sT, sET, sTT}}},
                    {allLanes(m_sS), allLanes(m_sSE), sST}};
    solveLanes(c);
    const Lanes K = c.b[2];
    const Lanes p = m_v.r * K / (m_v.r + 1);
    const Lanes q = K / (m_v.r + 1);
    const Lanes B = (-c.b[1] / K) * m_v.EV + (-c.b[0] / K);
    storeLanes(a.data() + at, ((B - loadLanes(TV.data() + at)) * p * q + m_v.R2V * p) /
                                  (m_v.R2V * p - m_v.R1V * q));
    storeLanes(thickness.data() + at, 1.0 / (K * 0.5));
}

void LeastSquarePlane::solve(std::span<const BlockView> T, const BlockView& TV, int count, Block& a,
                             Block& thickness, Instructions instructions) const
{
    runKernel(
        instructions, [&]() __attribute__((always_inline)) {
            for (int at = 0; at < count; at += laneCount) {
                solveAt(T, TV, at, a, thickness);
            }
        });
}

double leastSquareFourPoints(double TV, double R1V, double R2V, double EV, const QList<double>& T,
                             const QList<double>& R1, const QList<double>& R2,
                             const QList<double>& E, double r, double* tts)
{
    const qsizetype count = std::min({T.size(), R1.size(), R2.size(), E.size()});
    const LeastSquarePlane plane(R1.first(count), R2.first(count), E.first(count),
                                 {R1V, R2V, EV, r});
    // The first element of each block belongs to the target; the other elements are 0.
    std::vector<Block> values(static_cast<std::size_t>(count) + 1);
    for (qsizetype i = 0; i < count; ++i) {
        values[static_cast<std::size_t>(i)].front() = T.at(i);
    }
    values.back().front() = TV;
    const std::vector<BlockView> t(values.begin(), values.end());
    Block a;
    Block thickness;
    plane.solve(t, t.back(), 1, a, thickness);
    *tts = thickness.front();
    return a.front();
}

} // namespace analysis
