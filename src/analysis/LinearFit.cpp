#include "analysis/LinearFit.h"

#include "analysis/CalculationState.h"
#include "analysis/LinearCombination.h"
#include "analysis/NeqColumns.h"
#include "analysis/RowCollection.h"

#include <algorithm>
#include <array>
#include <vector>

namespace analysis
{

namespace
{

constexpr qsizetype maxReferences = neq::references;

// The points of the target in an energy range.
struct KeptPoints {
    QList<double> angles;
    QList<double> energies; // working energies, eV
    std::vector<double> y;  // normalised absorbance
};

KeptPoints pointsInside(const AMutE& target, const FitRange& range)
{
    KeptPoints kept;
    for (int i = 0; i < target.points.size(); ++i) {
        const MutPoint& point = target.points.at(i);
        const double e = point.energy - target.dE;
        if (e >= range.energies.low && e <= range.energies.high) {
            kept.angles.append(point.angle);
            kept.energies.append(e);
            kept.y.push_back(target.value(AMutE::normalisedByLines, i));
        }
    }
    return kept;
}

QList<MutPoint> fittedCurve(const KeptPoints& kept, const QList<QList<double>>& refValues,
                            const std::array<double, LinearCombination::maxUnknowns>& solution)
{
    QList<MutPoint> curve;
    const auto count = static_cast<std::size_t>(refValues.size());
    for (qsizetype point = 0; point < kept.energies.size(); ++point) {
        double fit = solution[count];
        for (std::size_t i = 0; i < count; ++i) {
            fit += solution[i] * refValues.at(static_cast<qsizetype>(i)).at(point);
        }
        curve.append({kept.angles.at(point), kept.energies.at(point), fit});
    }
    return curve;
}

} // namespace

FitRange fitRange(const QList<PointState>& points)
{
    FitRange range;
    for (const PointState& point : points) {
        if (!point.inFit) {
            continue;
        }
        ++range.rows;
        range.energies.widen(point.energy);
    }
    return range;
}

LinearFit fitLinearCombination(const AMutE& target, const QList<const AMutE*>& references,
                               const QList<double>& valences, const FitRange& range)
{
    const KeptPoints kept = pointsInside(target, range);
    QList<QList<double>> refValues;
    for (const AMutE* reference : references.first(std::min(references.size(), maxReferences))) {
        refValues.append(reference->normalisedAt(kept.energies));
    }
    std::vector<double> basis;
    for (qsizetype point = 0; point < kept.energies.size(); ++point) {
        for (const QList<double>& values : std::as_const(refValues)) {
            basis.push_back(values.at(point));
        }
        basis.push_back(1.0);
    }
    const auto count = static_cast<int>(refValues.size());
    const LinearCombination combination(count + 1, basis);
    const auto solution = combination.coefficients(kept.y);

    LinearFit fit;
    double sum = 0.0;
    for (int i = 0; i < count; ++i) {
        const double coefficient = solution[static_cast<std::size_t>(i)];
        sum += coefficient;
        fit.valence += coefficient * valences.value(i);
    }
    for (int i = 0; i < count; ++i) {
        fit.fractions.append(solution[static_cast<std::size_t>(i)] / sum);
    }
    fit.base = solution[static_cast<std::size_t>(count)];
    fit.curve = fittedCurve(kept, refValues, solution);
    return fit;
}

LinearFit fitTarget(const CalculationState& state, const FitRange& range)
{
    return fitLinearCombination(*state.target, state.usedSpectra(), state.references.usedValences(),
                                range);
}

LCFPoint comparisonPoint(double targetA, double targetValence, const LinearFit& fit, int color)
{
    return {targetA, targetValence, fit.fractions.first(), fit.valence, color};
}

} // namespace analysis
