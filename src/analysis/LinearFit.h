// Linear combination fit (LCF) of the target spectrum by the reference spectra.
#pragma once

#include "analysis/LCFPoint.h"
#include "analysis/Limits.h"
#include "data/AMutE.h"

#include <QList>

namespace analysis
{

struct CalculationState;
struct PointState;

/// The energy range of a fit: from the lowest to the highest energy of the energy-point
/// rows that are marked for the fit.
struct FitRange {
    Limits energies = emptyLimits; ///< eV; emptyLimits without marked rows
    int rows = 0;                  ///< number of marked rows

    /// Whether two or more rows are marked and their energies are not all NaN. Two rows at
    /// the same energy are a valid range of zero width.
    bool isSelected() const { return !(energies.low > energies.high) && rows >= 2; }
};

/// The energy range of all rows that are marked for the fit, used or not.
FitRange fitRange(const QList<PointState>& points);

/// The result of a linear combination fit.
struct LinearFit {
    QList<double> fractions; ///< coefficients of the references divided by their sum
    double valence = 0.0;    ///< sum of coefficient times valence, not normalised
    double base = 0.0;       ///< the fitted constant
    QList<MutPoint> curve; ///< one point for each target point in the range: angle, working energy,
                           ///< fitted value
};

/// Fits @p target by a linear combination of @p references and a constant: least
/// squares by the normal equations.
///
/// All spectra are normalised by their pre-edge and post-edge lines. The fit uses the
/// points of the target whose working energy is in @p range, ends included; references
/// are interpolated linearly at these energies.
///
/// The fractions are divided by the sum of the coefficients, but the valence is not.
/// Fractions and valence therefore disagree if the sum is not 1. This is on purpose, so
/// that results stay comparable with earlier data.
///
/// @param references  one to four spectra; further ones are ignored. A spectrum with
///                    fewer than two points counts as 0.0 at all energies.
/// @param valences    valences of the references; a missing valence counts as 0
/// @return the fit; NaN values and an empty curve if no point is in the range
LinearFit fitLinearCombination(const AMutE& target, const QList<const AMutE*>& references,
                               const QList<double>& valences, const FitRange& range);

/// Fits the target of @p state by the first n used references, where n is the number
/// of references that are both used and valid.
/// @pre planFit() returned @p range, so n is at least two
LinearFit fitTarget(const CalculationState& state, const FitRange& range);

/// The point of the plot "LCF vs 4PS" for a fit and the result of the target calculation.
///
/// @param targetA        fraction of the first reference by the target calculation
/// @param targetValence  valence by the target calculation
/// @param fit            a fit with at least one reference
/// @param color          index in the list of colours
LCFPoint comparisonPoint(double targetA, double targetValence, const LinearFit& fit, int color);

} // namespace analysis
