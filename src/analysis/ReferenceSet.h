// What the four reference rows mean to a calculation.
#pragma once

#include "analysis/Limits.h"
#include "analysis/ValenceMix.h"

#include <QList>

#include <optional>

namespace analysis
{

/// One reference row as the user left it.
struct ReferenceState {
    bool used = false;     ///< the row's "Use" is on
    bool valid = false;    ///< a spectrum was read
    double valence = 0.0;  ///< number in the row's valence field
    double edgeJump = 0.0; ///< post-edge less pre-edge line at the spectrum's edge energy
};

/// The two ends of a graph's scale of valences. The lower one may be the larger.
struct ValenceScale {
    double lower = 0.0;
    double upper = 0.0;
};

/// The reference rows in list order. "Used" and "valid" are different notions,
/// and each operation says which it goes by.
class ReferenceSet
{
public:
    explicit ReferenceSet(QList<ReferenceState> rows);

    /// Number of rows that are used and valid.
    int validCount() const;

    /// Row of the @p k-th used reference, counted from 0; -1 when there is none.
    int usedRow(int k) const;

    /// The reference of usedRow(), or nullptr.
    const ReferenceState* used(int k) const;

    /// The first used row i for which the i-th used reference is missing or not
    /// valid; -1 when there is none. Row and position are the same thing only
    /// while the used rows form an unbroken run from the top.
    int rowWithoutValidCounterpart() const;

    /// Edge jump of the first used reference over that of the second one, valid
    /// or not; NaN when one of them is missing.
    double edgeJumpRatio() const;

    /// How a fraction of the first used reference reads as a valence: 0.0
    /// throughout with fewer than two valid used references.
    ValenceMix valenceMix() const;

    /// Lowest and highest valence among the used references. The lowest starts
    /// at 10 and the highest at 0, on purpose: scales stay where users know
    /// them, so valences above 10 do not raise it and negative ones do not
    /// lower it.
    Limits valenceRange() const;

    /// Sum of the edge jumps of the first n used references, n being the number
    /// of used and valid ones. A used row without a spectrum ahead of a valid
    /// one therefore takes its place in the sum.
    double totalJump() const;

    /// Valences of the first two used references, valid or not, in this order. A
    /// missing one counts as 0.
    ValenceScale firstTwoValences() const;

    /// Valences of the first n used references, n as in totalJump().
    QList<double> usedValences() const;

private:
    QList<ReferenceState> m_rows;
};

/// Value range of the result map that shows column @p kind (a place of neq, as in
/// the result file): shares -0.1 to 1.1; amounts and the background constant from
/// minus a tenth of the total jump to 1.1 times it; the valence half a unit
/// around the references. None for the two background slopes, which keep the
/// range they have, and for any other number.
std::optional<Limits> mapLimits(int kind, const ReferenceSet& references);

/// Limits of the valence, on maps and as automatic ones of its histogram: half a unit around the
/// references.
Limits valenceLimits(const ReferenceSet& references);

/// Automatic limits of the thickness histogram: -0.5 to the total jump + 0.5.
Limits jumpHistogramLimits(const ReferenceSet& references);

} // namespace analysis
