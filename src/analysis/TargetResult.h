// The result of a target calculation.
#pragma once

#include "analysis/CalculationChoice.h"

#include <QList>

namespace analysis
{

struct CalculationState;
struct CollectedRows;

/// The contribution of one reference to a target, by the non-equivalent method.
struct ReferencePart {
    int row = 0;        ///< index of the reference row
    double share = 0.0; ///< the shares of all references add up to 1
    double dMut = 0.0;  ///< edge jump that the reference contributes
};

/// The result for one target spectrum. Values are not clamped; after a division by zero
/// they are infinite or NaN.
struct TargetResult {
    Variant variant = Variant::ThreePoints;
    double a = 0.0;       ///< fraction (four-point family) or share of the first used reference
    double valence = 0.0; ///< valence of the mixture
    double thickness =
        0.0; ///< relative thickness, total dMut (non-equivalent), or 0 (three points)
    QList<ReferencePart> parts; ///< one per reference of the fit; non-equivalent method only

    /// Whether the result is also written to the message box; false only for the exact form.
    bool isAnnounced() const { return variant != Variant::ExactFourPoints; }
};

/// Calculates the target's result by the three-point form.
///
/// @param rows  the rows that planTarget() collected for this form
TargetResult threePointsResult(const CalculationState& state, const CollectedRows& rows);

/// Calculates the target's result by the exact form.
///
/// @param rows  the rows that planTarget() collected for this form
TargetResult exactFourPointsResult(const CalculationState& state, const CollectedRows& rows);

/// Calculates the target's result by the least-squares form.
///
/// @param rows  the rows that planTarget() collected for this form
TargetResult leastSquareResult(const CalculationState& state, const CollectedRows& rows);

/// Calculates the target's result by the non-equivalent method, from the spectra.
///
/// @param victoreen  selects the Victoreen background instead of the linear one; see NeqFit
/// @pre planTarget() returned this variant
TargetResult nonEquivalentResult(const CalculationState& state, bool victoreen);

} // namespace analysis
