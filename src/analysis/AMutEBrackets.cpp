// The search for the pair of points around an energy.
#include "data/AMutE.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace
{

/// Energies that wait for the first pair of points that brackets them, in a
/// disjoint-set forest (union-find with path halving) over the sorted energies:
/// the ones that were served are skipped in almost constant time.
class WaitingEnergies
{
public:
    void add(double energy, qsizetype place) { m_waiting.push_back({energy, place}); }

    void sort()
    {
        std::sort(m_waiting.begin(), m_waiting.end(),
                  [](const Waiting& a, const Waiting& b) { return a.energy < b.energy; });
        m_next.resize(m_waiting.size() + 1);
        std::iota(m_next.begin(), m_next.end(), std::size_t{0});
    }

    /// Gives @p index to all energies in [low, high] that still wait.
    void serve(double low, double high, int index, QList<int>& indices)
    {
        if (!(low <= high)) {
            return; // a falling pair brackets nothing, nor does one with a NaN
        }
        const auto first = std::lower_bound(
            m_waiting.begin(), m_waiting.end(), low,
            [](const Waiting& waiting, double energy) { return waiting.energy < energy; });
        std::size_t k = stillWaiting(static_cast<std::size_t>(first - m_waiting.begin()));
        while (k < m_waiting.size() && m_waiting[k].energy <= high) {
            indices[m_waiting[k].place] = index;
            m_next[k] = k + 1;
            k = stillWaiting(k);
        }
    }

private:
    struct Waiting {
        double energy = 0.0;
        qsizetype place = 0;
    };

    // The first one from k on: the find operation, with path halving.
    std::size_t stillWaiting(std::size_t k)
    {
        while (m_next[k] != k) {
            m_next[k] = m_next[m_next[k]];
            k = m_next[k];
        }
        return k;
    }

    std::vector<Waiting> m_waiting;
    std::vector<std::size_t> m_next; ///< itself, or somewhere behind what was served
};

} // namespace

int AMutE::indexBelow(double E) const
{
    const qsizetype n = points.size();
    if (n == 0 || E < workingEnergy(0)) {
        return 0;
    }
    if (E > workingEnergy(n - 1)) {
        return static_cast<int>(n - 2);
    }
    for (qsizetype i = 0; i < n - 1; ++i) {
        if (E >= workingEnergy(i) && workingEnergy(i + 1) >= E) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

QList<int> AMutE::indicesBelow(const QList<double>& energies) const
{
    const qsizetype n = points.size();
    QList<int> indices(energies.size(), 0);
    WaitingEnergies inside;
    for (qsizetype k = 0; k < energies.size(); ++k) {
        const double E = energies.at(k);
        if (n == 0 || E < workingEnergy(0)) {
            indices[k] = 0;
        } else if (E > workingEnergy(n - 1)) {
            indices[k] = static_cast<int>(n - 2);
        } else if (!std::isnan(E)) { // no pair brackets a NaN
            inside.add(E, k);
        }
    }
    inside.sort();
    for (qsizetype i = 0; i < n - 1; ++i) {
        // In the order of the pairs: the first that fits an energy gets it.
        inside.serve(workingEnergy(i), workingEnergy(i + 1), static_cast<int>(i), indices);
    }
    return indices;
}
