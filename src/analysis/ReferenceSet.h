// The reference rows and the quantities that calculations derive from them.
#pragma once

#include "analysis/Limits.h"
#include "analysis/ValenceMix.h"

#include <QList>

#include <optional>

namespace analysis
{

/// The inputs of one reference row.
struct ReferenceState {
    bool used = false;     ///< the row's "Use" box is on
    bool valid = false;    ///< the row has a readable spectrum
    double valence = 0.0;  ///< number in the row's valence field
    double edgeJump = 0.0; ///< post-edge minus pre-edge line at the spectrum's edge energy
};

/// The ends of a graph's valence scale. The scale can be reversed (lower > upper).
struct ValenceScale {
    double lower = 0.0;
    double upper = 0.0;
};

/// The reference rows in list order.
///
/// "Used" (selected by the user) and "valid" (has a spectrum) are independent, and each
/// operation states which of them it requires. Several operations use the first n used
/// references, where n is validCount(). A used reference that is not valid and precedes a
/// valid one is then included in place of the last valid one; this is on purpose.
class ReferenceSet
{
public:
    /// @param rows  all reference rows of the panel, in list order
    explicit ReferenceSet(QList<ReferenceState> rows);

    /// Number of references that are both used and valid.
    int validCount() const;

    /// Row index of used reference number @p k, counted from 0; -1 if it does not exist.
    int usedRow(int k) const;

    /// The reference at usedRow(@p k); null if it does not exist.
    const ReferenceState* used(int k) const;

    /// The first used row i for which used reference number i does not exist or is not valid;
    /// -1 if there is no such row.
    ///
    /// Row index and number agree only if the used rows are consecutive from the first row.
    /// With a gap between them, some row is always reported. This is on purpose.
    int rowWithoutValidCounterpart() const;

    /// Edge jump of the first used reference divided by the edge jump of the second, valid or
    /// not; NaN if one does not exist.
    double edgeJumpRatio() const;

    /// Converts a fraction of the first used reference to a valence, by the valences of the
    /// first two used references, valid or not. With fewer than two references that are used
    /// and valid, every valence is 0.0.
    ValenceMix valenceMix() const;

    /// Lowest and highest valence of the used references, valid or not.
    ///
    /// The search starts with a lowest valence of 10 and a highest of 0. The low limit
    /// is therefore never above 10 and the high limit never below 0; without used
    /// references the limits are 10 and 0. This is on purpose: users expect these
    /// scales.
    Limits valenceRange() const;

    /// Sum of the edge jumps of the first n used references, where n is validCount().
    double totalJump() const;

    /// Valences of the first and the second used reference, valid or not, as lower and upper
    /// end of the scale. A missing reference counts as 0.
    ValenceScale firstTwoValences() const;

    /// Valences of the first n used references, where n is validCount().
    QList<double> usedValences() const;

private:
    QList<ReferenceState> m_rows;
};

/// The colour scale of a result map.
///
/// Shares: -0.1 to 1.1. Edge jumps (dMut), their total and the background constant: -0.1 to
/// 1.1 times ReferenceSet::totalJump(). Valence: valenceLimits().
///
/// @param kind  the shown column, an index of analysis::neq
/// @return no value for the two other background terms, whose scale is left unchanged, and
///         for a number that is not a column
std::optional<Limits> mapLimits(int kind, const ReferenceSet& references);

/// Limits of the valence for the colour scale of maps and for the automatic histogram limits:
/// ReferenceSet::valenceRange(), extended by 0.5 at both ends.
Limits valenceLimits(const ReferenceSet& references);

/// Automatic limits of the thickness histogram: -0.5 to ReferenceSet::totalJump() + 0.5.
Limits jumpHistogramLimits(const ReferenceSet& references);

} // namespace analysis
