// The target spectrum as a linear combination of the references.
#pragma once

#include "analysis/LCFPoint.h"
#include "analysis/Limits.h"
#include "data/AMutE.h"

#include <QList>

namespace analysis
{

struct CalculationState;
struct PointState;

/// The energies (eV) that the marked energy-point rows span, and their number;
/// noLimits without any.
struct FitRange {
    Limits energies = noLimits;
    int rows = 0;

    /// Two rows at one energy are a range of zero width; a single row is none.
    bool isSelected() const { return !(energies.low > energies.high) && rows >= 2; }
};

/// Range of the rows whose fit box is on, in use or not.
FitRange fitRange(const QList<PointState>& points);

/// What a fit gives.
struct LinearFit {
    QList<double> fractions; ///< the references' coefficients over their sum
    double valence = 0.0;    ///< sum of coefficient times valence
    double base = 0.0;       ///< the constant
    QList<MutPoint> curve;   ///< the fitted target points: angle, working energy, fit
};

/// Fits the points of @p target whose working energy lies in @p range (both
/// ends included) as a linear combination of @p references and a constant, all
/// spectra normalised by their two lines: least squares by the normal
/// equations.
///
/// @param references  one to four spectra; more are left out. One with fewer
///                    than two points counts as 0.0 throughout.
/// @param valences    of the references; a missing one counts as 0
///
/// The valence is that of the coefficients as they are and not divided by
/// their sum, unlike the fractions: both stay comparable with earlier data, and
/// do not agree where the sum differs from 1. A range without a point gives
/// NaN and an empty curve.
LinearFit fitLinearCombination(const AMutE& target, const QList<const AMutE*>& references,
                               const QList<double>& valences, const FitRange& range);

/// The fit of the target by the first n used references, n being the number of
/// used and valid ones: two or more.
LinearFit fitTarget(const CalculationState& state, const FitRange& range);

/// A fit beside the target's fraction of the first reference and its valence, in
/// the colour at place @p color of the list.
LCFPoint comparisonPoint(double targetA, double targetValence, const LinearFit& fit, int color);

} // namespace analysis
