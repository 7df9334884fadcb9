// Search for the pair of spectrum points that brackets an energy.
#include "data/AMutE.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace
{

/// Energies that are not yet assigned to a pair of points.
///
/// The energies are sorted once. A union-find forest with path halving over the sorted
/// energies skips the assigned ones in amortised logarithmic time.
class UnassignedEnergies
{
public:
    void add(double energy, qsizetype position) { m_entries.push_back({energy, position}); }

    /// Call once, after the last add() and before assign().
    void sort()
    {
        std::sort(m_entries.begin(), m_entries.end(),
                  [](const Entry& a, const Entry& b) { return a.energy < b.energy; });
        m_parent.resize(m_entries.size() + 1);
        std::iota(m_parent.begin(), m_parent.end(), std::size_t{0});
    }

    /// Assigns the pair of points with number @p index to all unassigned energies in
    /// [low, high]: writes @p index to their elements of @p indices.
    void assign(double low, double high, int index, QList<int>& indices)
    {
        if (!(low <= high)) {
            return; // a pair with descending energies, or with a NaN, brackets no energy
        }
        const auto first = std::lower_bound(
            m_entries.begin(), m_entries.end(), low,
            [](const Entry& entry, double energy) { return entry.energy < energy; });
        std::size_t k = findUnassigned(static_cast<std::size_t>(first - m_entries.begin()));
        while (k < m_entries.size() && m_entries[k].energy <= high) {
            indices[m_entries[k].position] = index;
            m_parent[k] = k + 1;
            k = findUnassigned(k);
        }
    }

private:
    struct Entry {
        double energy = 0.0;
        qsizetype position = 0;
    };

    // Index of the first unassigned energy from index k on: union-find lookup with path
    // halving.
    std::size_t findUnassigned(std::size_t k)
    {
        while (m_parent[k] != k) {
            m_parent[k] = m_parent[m_parent[k]];
            k = m_parent[k];
        }
        return k;
    }

    std::vector<Entry> m_entries;
    /// Parent link of each sorted energy; its own index if it is unassigned. The last element
    /// marks the end.
    std::vector<std::size_t> m_parent;
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
    UnassignedEnergies inside;
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
        // The pairs are in file order, so the first pair that brackets an energy is used, as
        // in indexBelow().
        inside.assign(workingEnergy(i), workingEnergy(i + 1), static_cast<int>(i), indices);
    }
    return indices;
}
