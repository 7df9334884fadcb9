// Mixtures of normalised references for which the result of the linear combination fit is known.
#pragma once

#include "support/PanelInputs.h"

namespace tests::fits
{

/// Normalised references at 1 to 7 eV. The references and a constant are linearly
/// independent. At 2 to 6 eV alone, the first two references and a constant are still
/// linearly independent.
inline const QList<double> energies{1, 2, 3, 4, 5, 6, 7};
inline const QList<QList<double>> shapes{{9, 1, 0, 0.5, 2, 0.25, 3},
                                         {-9, 0, 1, 0.5, 0.75, 2, 8},
                                         {0, 0, 2, 1, 0, 0.5, 1},
                                         {1, 1, 1, 0, 0, -1, 4}};
inline const QList<double> preLevels{0.5, 0.25, 0.75, 1};
inline const QList<double> jumps{2, 4, 1, 8};
inline const QList<double> valences{2, 4, 3, 5};

/// Sets a spectrum whose normalised values at the energies @p at (eV) are @p values. Its
/// pre-edge line is the constant @p pre and its post-edge line is the constant @p pre +
/// @p jump.
inline void setNormalised(AMutE& spectrum, const QList<double>& at, QList<double> values,
                          double pre, double jump)
{
    for (double& value : values) {
        value *= jump;
    }
    setSpectrum(spectrum, at, values, {pre, 0, 0}, {pre + jump, 0, 0});
}

inline void setReference(PanelInputs& inputs, std::size_t row, int shape)
{
    setNormalised(inputs.spectra.at(row), energies, shapes.at(shape), preLevels.at(shape),
                  jumps.at(shape));
    inputs.valences.at(row) = valences.at(shape);
}

/// The weighted sum of the normalised references plus the constant @p base, at all seven
/// energies. @p parts are the weights of the references.
inline QList<double> mixed(const QList<double>& parts, double base)
{
    QList<double> values(energies.size(), base);
    for (int i = 0; i < parts.size(); ++i) {
        for (int k = 0; k < values.size(); ++k) {
            values[k] += parts.at(i) * shapes.at(i).at(k);
        }
    }
    return values;
}

inline void setTarget(PanelInputs& inputs, const QList<double>& parts, double base)
{
    setNormalised(inputs.target, energies, mixed(parts, base), 1, 8);
}

/// Sets the fit range: marks energy rows 7 and 8 and sets their energies to @p to and
/// @p from. The upper limit is first, because the fit must accept both orders.
inline void setRange(PanelInputs& inputs, double from, double to)
{
    inputs.points[6].energy = to;
    inputs.points[7].energy = from;
    inputs.points[6].inFit = true;
    inputs.points[7].inFit = true;
}

/// Inputs of a linear combination fit. One reference is in use for each weight in
/// @p parts. The target is the weighted sum of these references plus the constant @p base.
/// All seven points are in the fit range.
///
/// The default weights 0.5 and 0.75 sum to 1.25, so the fractions are 0.5 / 1.25 = 0.4 and
/// 0.75 / 1.25 = 0.6. The valence is calculated from the weights before this division. With
/// the valences 2 and 4 of the references it is 0.5 * 2 + 0.75 * 4 = 4.
inline PanelInputs fitInputs(const QList<double>& parts = {0.5, 0.75}, double base = 0.125)
{
    PanelInputs inputs;
    QList<int> used;
    for (int i = 0; i < parts.size(); ++i) {
        setReference(inputs, static_cast<std::size_t>(i), i);
        used.append(i);
    }
    inputs.useReferences(used);
    setTarget(inputs, parts, base);
    setRange(inputs, 1, 7);
    return inputs;
}

} // namespace tests::fits
