// The numbers that calculations read from the energy-point rows.
#pragma once

#include "analysis/NeqColumns.h"

#include <QList>

#include <array>

namespace analysis
{

class ReferenceSet;

/// The inputs of one energy-point row. Numbers are parsed from the texts of the fields, so
/// they have the precision that the fields show.
struct PointState {
    bool used = false;                         ///< the row's "Use" check box is on
    bool vPoint = false;                       ///< the row is marked as V point
    bool hasMap = false;                       ///< the row has a loaded map
    double energy = 0.0;                       ///< eV
    std::array<double, neq::references> mut{}; ///< mut of the reference in each reference row
    double mutT = 0.0;                         ///< mut of the target
    bool inFit = false; ///< the row is marked for the range of the linear combination fit
};

/// The number of selected rows, and which of them is the V row.
struct Selection {
    int count = 0;
    int vRow = -1; ///< index of the last selected row marked as V point, or -1
};

/// Selects the used rows.
Selection selectedRows(const QList<PointState>& points);

/// Selects the used rows that have a map.
Selection selectedMapRows(const QList<PointState>& points);

/// The numbers of one row for the four-point family.
struct PointNumbers {
    int row = -1;        ///< index of the energy-point row; -1 if there is none
    double energy = 0.0; ///< eV
    double r1 = 0.0;     ///< mut of the first used reference
    double r2 = 0.0;     ///< mut of the second used reference
};

/// The input of the four-point family.
struct CollectedRows {
    QList<PointNumbers> others; ///< used rows not marked as V point, in row order
    PointNumbers v;             ///< the last used row marked as V point, if any
    double r = 0.0;             ///< edge jump ratio of the first to the second used reference

    /// Number of collected rows: @c others and the V row, if there is one.
    int usable() const { return static_cast<int>(others.size()) + (v.row < 0 ? 0 : 1); }
};

/// Collects the used rows, with or without a map. If several rows are marked as V point, only
/// the last becomes the V row, and the others are dropped.
///
/// @return an empty collection if fewer than two references are used
CollectedRows collectRowsLS(const QList<PointState>& points, const ReferenceSet& references);

/// Like collectRowsLS(), but returns at most the first three rows in @c others, because three
/// rows determine the plane of the exact form.
CollectedRows collectRowsExact(const QList<PointState>& points, const ReferenceSet& references);

} // namespace analysis
