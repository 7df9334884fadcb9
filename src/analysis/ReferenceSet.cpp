#include "analysis/ReferenceSet.h"

#include "analysis/NeqColumns.h"

#include <limits>
#include <utility>

namespace analysis
{

ReferenceSet::ReferenceSet(QList<ReferenceState> rows)
    : m_rows(std::move(rows))
{
}

int ReferenceSet::validCount() const
{
    int count = 0;
    for (const ReferenceState& row : m_rows) {
        count += row.used && row.valid ? 1 : 0;
    }
    return count;
}

int ReferenceSet::usedRow(int k) const
{
    int seen = 0;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).used && seen++ == k) {
            return i;
        }
    }
    return -1;
}

const ReferenceState* ReferenceSet::used(int k) const
{
    const int row = usedRow(k);
    return row < 0 ? nullptr : &m_rows.at(row);
}

int ReferenceSet::rowWithoutValidCounterpart() const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (!m_rows.at(i).used) {
            continue;
        }
        const ReferenceState* counterpart = used(i);
        if (!counterpart || !counterpart->valid) {
            return i;
        }
    }
    return -1;
}

double ReferenceSet::edgeJumpRatio() const
{
    const ReferenceState* first = used(0);
    const ReferenceState* second = used(1);
    return first && second ? first->edgeJump / second->edgeJump
                           : std::numeric_limits<double>::quiet_NaN();
}

ValenceMix ReferenceSet::valenceMix() const
{
    const ReferenceState* first = used(0);
    const ReferenceState* second = used(1);
    if (validCount() < 2 || !first || !second) {
        return {};
    }
    return {true, first->valence, second->valence};
}

Limits ReferenceSet::valenceRange() const
{
    Limits range{10.0, 0.0};
    for (const ReferenceState& row : m_rows) {
        if (row.used) {
            range.widen(row.valence);
        }
    }
    return range;
}

double ReferenceSet::totalJump() const
{
    const int terms = validCount();
    double total = 0.0;
    for (int k = 0; k < terms; ++k) {
        total += used(k)->edgeJump;
    }
    return total;
}

ValenceScale ReferenceSet::firstTwoValences() const
{
    const ReferenceState* first = used(0);
    const ReferenceState* second = used(1);
    return {first ? first->valence : 0.0, second ? second->valence : 0.0};
}

QList<double> ReferenceSet::usedValences() const
{
    QList<double> valences;
    for (int k = 0; k < validCount(); ++k) {
        valences.append(used(k)->valence);
    }
    return valences;
}

std::optional<Limits> mapLimits(int kind, const ReferenceSet& references)
{
    if (kind >= neq::share && kind < neq::share + neq::references) {
        return Limits{-0.1, 1.1};
    }
    if ((kind >= neq::dMut && kind <= neq::mut0) || kind == neq::totalDMut) {
        const double total = references.totalJump();
        return Limits{-total / 10, total * 1.1};
    }
    if (kind == neq::valence) {
        return valenceLimits(references);
    }
    return std::nullopt;
}

Limits valenceLimits(const ReferenceSet& references)
{
    const Limits valences = references.valenceRange();
    return {valences.low - 0.5, valences.high + 0.5};
}

Limits jumpHistogramLimits(const ReferenceSet& references)
{
    return {-0.5, references.totalJump() + 0.5};
}

} // namespace analysis
