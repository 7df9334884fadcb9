#include "analysis/TargetResult.h"

#include "analysis/CalculationState.h"
#include "analysis/FourPointForms.h"
#include "analysis/NonEquivalent.h"

namespace analysis
{

namespace
{

TargetResult resultOf(Variant variant, double a, double thickness, const ReferenceSet& references)
{
    return {variant, a, references.valenceMix()(a), thickness, {}};
}

} // namespace

TargetResult threePointsResult(const CalculationState& state, const CollectedRows& rows)
{
    const QList<PointState>& points = state.points;
    const PointNumbers& row0 = rows.others.at(0);
    const PointNumbers& row1 = rows.others.at(1);
    const double a = threePointFraction(
        {points.at(row0.row).mutT, points.at(row1.row).mutT, points.at(rows.v.row).mutT},
        {row0.r1, row1.r1, rows.v.r1}, {row0.r2, row1.r2, rows.v.r2});
    return resultOf(Variant::ThreePoints, a, 0.0, state.references);
}

TargetResult exactFourPointsResult(const CalculationState& state, const CollectedRows& rows)
{
    const QList<PointState>& points = state.points;
    const PointNumbers& row0 = rows.others.at(0);
    const PointNumbers& row1 = rows.others.at(1);
    const PointNumbers& row2 = rows.others.at(2);
    double tts = 0.0;
    const double a = exactFourPoints(
        points.at(row0.row).mutT, points.at(row1.row).mutT, points.at(row2.row).mutT,
        points.at(rows.v.row).mutT, row0.r1, row1.r1, row2.r1, rows.v.r1, row0.r2, row1.r2, row2.r2,
        rows.v.r2, row0.energy, row1.energy, row2.energy, rows.v.energy, rows.r, &tts);
    return resultOf(Variant::ExactFourPoints, a, tts, state.references);
}

TargetResult leastSquareResult(const CalculationState& state, const CollectedRows& rows)
{
    QList<double> t;
    QList<double> r1;
    QList<double> r2;
    QList<double> energies;
    for (const PointNumbers& row : rows.others) {
        t.append(state.points.at(row.row).mutT);
        r1.append(row.r1);
        r2.append(row.r2);
        energies.append(row.energy);
    }
    double tts = 0.0;
    const double a = leastSquareFourPoints(state.points.at(rows.v.row).mutT, rows.v.r1, rows.v.r2,
                                           rows.v.energy, t, r1, r2, energies, rows.r, &tts);
    return resultOf(Variant::LeastSquare, a, tts, state.references);
}

TargetResult nonEquivalentResult(const CalculationState& state, bool victoreen)
{
    const NeqInputs inputs =
        neqPrepare(state.points, state.references, state.usedSpectra(), state.subPostForRef);
    const QList<double> t = neqTargetValues(*state.target, inputs.energies, state.subPostForTarget);
    const QList<double> values = neqTargetResult(victoreen, t, inputs);
    TargetResult result;
    result.variant = victoreen ? Variant::NonEquivalentVictoreen : Variant::NonEquivalentLinear;
    result.a = values.at(neq::share);
    result.valence = values.at(neq::valence);
    result.thickness = values.at(neq::totalDMut);
    for (int k = 0; k < state.references.validCount(); ++k) {
        result.parts.append(
            {state.references.usedRow(k), values.at(neq::share + k), values.at(neq::dMut + k)});
    }
    return result;
}

} // namespace analysis
