// The numbers that a calculation takes from the energy-point rows.
#pragma once

#include "analysis/NeqPlaces.h"

#include <QList>

#include <array>

namespace analysis
{

class ReferenceSet;

/// One energy-point row as it stands on the panel; numbers are those of the
/// texts, to the digits that they show.
struct PointState {
    bool used = false;                         ///< the row's use box is on
    bool vPoint = false;                       ///< the row is marked as V point
    bool hasMap = false;                       ///< a map is loaded
    double energy = 0.0;                       ///< eV
    std::array<double, neq::references> mut{}; ///< of the references
    double mutT = 0.0;
    bool inFit = false; ///< its energy bounds the range of the linear combination fit
};

/// How many rows count as selected, and which of them is the V row.
struct Selection {
    int count = 0;
    int vRow = -1; ///< the last marked one; -1 without one
};

/// The used rows.
Selection selectedRows(const QList<PointState>& points);

/// The used rows that hold a map.
Selection selectedMapRows(const QList<PointState>& points);

/// A selected row's numbers for the four-points family.
struct PointNumbers {
    int row = -1; ///< index among the energy-point rows
    double energy = 0.0;
    double r1 = 0.0; ///< mut of the first used reference
    double r2 = 0.0; ///< mut of the second used reference
};

/// What the four-points family works on.
struct CollectedRows {
    QList<PointNumbers> others; ///< the used rows that are not marked as V point, in row order
    PointNumbers v;             ///< the last used row that is; row -1 without one
    double r = 0.0;             ///< edge jump of the first over the second used reference

    /// Rows that a form can work with: the others and the V row.
    int usable() const { return static_cast<int>(others.size()) + (v.row < 0 ? 0 : 1); }
};

/// Collects the used rows, with a map or without. Rows marked as V point beside
/// the last one belong to neither side.
///
/// @pre two used references exist (ReferenceSet::usedRow(1) is not -1);
///      otherwise the collection is empty
CollectedRows collectRowsLS(const QList<PointState>& points, const ReferenceSet& references);

/// The same with the first three of the other rows alone, or fewer where there
/// are no more: the exact form determines its plane by three.
CollectedRows collectRowsExact(const QList<PointState>& points, const ReferenceSet& references);

} // namespace analysis
