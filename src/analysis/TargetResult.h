// What a target calculation gives.
#pragma once

#include "analysis/CalculationChoice.h"

#include <QList>

namespace analysis
{

struct CalculationState;
struct CollectedRows;

/// The part of a reference in a target, by the non-equivalent method.
struct ReferencePart {
    int row = 0;        ///< of the reference
    double share = 0.0; ///< all of them add up to 1
    double dMut = 0.0;  ///< its edge jump in the target
};

/// The numbers of one target spectrum. None is clamped, and numeric trouble shows
/// as infinity or NaN.
struct TargetResult {
    Variant variant = Variant::ThreePoints;
    double a = 0.0;             ///< fraction, or share, of the first used reference
    double valence = 0.0;       ///< of the mixture
    double thickness = 0.0;     ///< t/ts, or the total dMut; 0 for three points
    QList<ReferencePart> parts; ///< of each valid reference; non-equivalent method only

    /// Whether the result goes to the message box too. The exact form alone keeps
    /// silent.
    bool isAnnounced() const { return variant != Variant::ExactFourPoints; }
};

/// The forms of the four-points family, from the numbers of the rows.
///
/// @param rows  as in a plan of planTarget() that runs the form
TargetResult threePointsResult(const CalculationState& state, const CollectedRows& rows);
TargetResult exactFourPointsResult(const CalculationState& state, const CollectedRows& rows);
TargetResult leastSquareResult(const CalculationState& state, const CollectedRows& rows);

/// The non-equivalent method, from the spectra.
///
/// @param victoreen  background by two terms of the wavelength instead of a line
TargetResult nonEquivalentResult(const CalculationState& state, bool victoreen);

} // namespace analysis
