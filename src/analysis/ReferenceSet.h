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
    bool used = false;     ///< the row's "Use" check box is on
    bool valid = false;    ///< the row has a readable spectrum
    double valence = 0.0;  ///< number in the row's valence field
    double edgeJump = 0.0; ///< post-edge line minus pre-edge line at the edge energy
};

/// The ends of a graph's valence scale. The scale can be reversed (lower > upper).
struct ValenceScale {
    double lower = 0.0;
    double upper = 0.0;
};

/// The reference rows in list order.
///
/// "Used" (selected by the user) and "valid" (has a spectrum) are independent, and each
/// operation states which of the two it requires. Several operations use the first n used
/// references, where n is validCount(). On purpose, these n references can include an
/// invalid one. Example: references 0, 1 and 2 are used; 0 and 2 are valid. Then n is 2,
/// and the operations use references 0 and 1.
class ReferenceSet
{
public:
    /// @param rows  all reference rows of the panel, in list order
    explicit ReferenceSet(QList<ReferenceState> rows);

    /// Number of references that are both used and valid.
    int validCount() const;

    /// Row index of the used reference with number @p k; -1 if it does not exist. The number
    /// counts the used references from 0.
    int usedRow(int k) const;

    /// The reference at usedRow(@p k); null if it does not exist.
    const ReferenceState* used(int k) const;

    /// The first used row i for which used reference number i does not exist or is not valid;
    /// -1 if there is no such row.
    ///
    /// On purpose, the row index is used as the number of a reference. Row index and
    /// number are equal only if the used rows are 0, 1, 2, ...; if a row before a used
    /// row is not used, a row is always reported. Example: rows 0 and 2 are used and
    /// valid. There is no used reference number 2, so the result is 2.
    int rowWithoutValidCounterpart() const;

    /// Edge jump of the first used reference divided by the edge jump of the second used
    /// reference, valid or not; NaN with fewer than two used references.
    double edgeJumpRatio() const;

    /// Returns the function that converts a fraction of the first used reference to a valence.
    /// The function uses the valences of the first two used references, valid or not. With
    /// fewer than two references that are used and valid, it always returns 0.0.
    ValenceMix valenceMix() const;

    /// Lowest and highest valence of the used references, valid or not.
    ///
    /// On purpose, the search starts with a lowest valence of 10 and a highest valence of
    /// 0, because users expect the resulting scales: the low limit is never above 10 and
    /// the high limit never below 0. Without used references, the limits are 10 and 0.
    Limits valenceRange() const;

    /// Sum of the edge jumps of the first n used references, where n is validCount().
    double totalJump() const;

    /// Valence scale of a graph: its lower end is the valence of the first used reference, its
    /// upper end the valence of the second used reference, valid or not. The valence of a
    /// missing reference counts as 0.
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
/// @return the limits; no value for the background coefficients c1 and c2, whose scale is
///         not changed, and for a number that is not a column
std::optional<Limits> mapLimits(int kind, const ReferenceSet& references);

/// Limits of the valence for the colour scale of result maps and for the automatic histogram
/// limits: ReferenceSet::valenceRange(), extended by 0.5 at both ends.
Limits valenceLimits(const ReferenceSet& references);

/// Automatic limits of the thickness histogram: -0.5 to ReferenceSet::totalJump() + 0.5.
Limits jumpHistogramLimits(const ReferenceSet& references);

} // namespace analysis
