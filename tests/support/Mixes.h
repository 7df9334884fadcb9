// Mixtures of references with known shares, amounts and valence.
#pragma once

#include "support/PanelInputs.h"

#include <algorithm>
#include <cmath>

namespace tests::mixes
{

inline constexpr double hc = AMutE::hcEvAngstrom;

/// Wavelengths (angstrom) of the eight energy rows. They are powers of two, so L^3, L^4
/// and the division hc / L do not round.
inline const QList<double> wavelengths{4, 2, 1, 0.5, 0.25, 0.125, 0.0625, 0.03125};

/// Absorbance of the references above their pre-edge lines at the energies of the eight
/// rows. The references and the terms of the background (linear or Victoreen) are linearly
/// independent, even if only the first n rows are used, where n is the number of unknowns.
inline const QList<QList<double>> shapes{{1, 0, 3, 2, 1, 0, 2, 1},
                                         {0, 1, 1, 3, 5, 1, 0, 2},
                                         {2, 0, 1, 0, 1, 3, 1, 0},
                                         {0, 2, 0, 1, 0, 1, 4, 1}};
inline const QList<double> jumps{2, 6, 4, 8};
inline const QList<double> preLevels{0.25, 0.5, 0.75, 1};
inline const QList<double> valences{2, 5, 4, 7};

/// Energies of the eight rows, eV.
inline QList<double> rowEnergies()
{
    QList<double> energies;
    for (const double length : wavelengths) {
        energies.append(hc / length);
    }
    return energies;
}

/// A weighted sum of the references plus the background constant + linear * E / hc +
/// cubic * L^3 + quartic * L^4, where L = hc / E is the wavelength in angstrom.
struct Mix {
    QList<double> parts;
    double constant = 0.0;
    double linear = 0.0;
    double cubic = 0.0;
    double quartic = 0.0;

    double at(int row) const
    {
        const double length = wavelengths.at(row);
        double value = constant + linear / length + cubic * std::pow(length, 3) +
                       quartic * std::pow(length, 4);
        for (int i = 0; i < parts.size(); ++i) {
            value += parts.at(i) * shapes.at(i).at(row);
        }
        return value;
    }

    QList<double> atAllRows() const
    {
        QList<double> values;
        for (int row = 0; row < wavelengths.size(); ++row) {
            values.append(at(row));
        }
        return values;
    }
};

/// A mix with linear background. dMut is part times edge jump: 0.5 * 2 = 1 and
/// 0.5 * 6 = 3. So the total is 4, the shares are 1/4 and 3/4, and with the valences 2 and
/// 5 of the references the valence is 1/4 * 2 + 3/4 * 5 = 4.25.
inline const Mix quarter{{0.5, 0.5}, 1.25, 0.5};
/// The references of `quarter` with the same parts, plus a Victoreen background: a
/// constant, L^3 and L^4.
inline const Mix curvedQuarter{{0.5, 0.5}, 1.25, 0, 2, -0.5};
/// A mix with a negative part. dMut is -0.5 * 2 = -1 and 1 * 6 = 6. So the total is 5, the
/// shares are -0.2 and 1.2, and the valence is -0.2 * 2 + 1.2 * 5 = 5.6.
inline const Mix negative{{-0.5, 1}, -2, -1};

/// The thirteen values of a result pixel whose mix is `quarter` or `negative`: four shares,
/// four dMut, the background coefficients mu0, C1 and C2, the valence and the total. C1 is
/// in units of 1 / hc.
inline const QList<double> quarterValues{0.25, 0.75, 0, 0, 1, 3, 0, 0, 1.25, 0.5, 0, 4.25, 4};
inline const QList<double> negativeValues{-0.2, 1.2, 0, 0, -1, 6, 0, 0, -2, -1, 0, 5.6, 5};

/// Turns @p spectrum into the reference with index @p shape: sets its points, its constant
/// pre-edge and post-edge lines and, by these lines, its edge jump.
inline void setReference(AMutE& spectrum, int shape)
{
    const double pre = preLevels.at(shape);
    setSpectrum(spectrum, rowEnergies(), shapes.at(shape), {pre, 0, 0},
                {pre + jumps.at(shape), 0, 0});
}

inline void setTarget(AMutE& target, const Mix& mix)
{
    setSpectrum(target, rowEnergies(), mix.atAllRows(), {0.125, 0, 0}, {3.125, 0, 0});
}

/// Inputs of the non-equivalent method with linear background. The first @p references
/// references and the first @p rows energy rows are in use. The target is @p mix. The
/// third row is the V row.
inline PanelInputs mixedInputs(const Mix& mix, int references = 2, int rows = 5)
{
    PanelInputs inputs;
    inputs.radios.nonEquivalent = true;
    for (int i = 0; i < references; ++i) {
        setReference(inputs.spectra.at(static_cast<std::size_t>(i)), i);
        inputs.valences.at(static_cast<std::size_t>(i)) = valences.at(i);
    }
    inputs.useReferences(firstRows(references));
    for (int row = 0; row < inputs.points.size(); ++row) {
        inputs.points[row].energy = rowEnergies().at(row);
    }
    inputs.useRows(firstRows(rows));
    inputs.markVRows({2});
    setTarget(inputs.target, mix);
    return inputs;
}

/// Inputs whose result depends on the line (pre-edge or post-edge) that is subtracted from
/// the target and from the references. If the pre-edge lines are subtracted from both, dMut
/// is 1 and 3, so the shares are 1/4 and 3/4 and the total is 4.
///
/// The second reference is L^3. The post-edge lines of the target and of the first
/// reference also contain L^3, so the subtraction of these lines changes the coefficient of
/// the second reference. If the post-edge line is subtracted only from the target, dMut is
/// 1 and -3. If the post-edge lines are subtracted only from the references, dMut is 1 and
/// 6.
inline PanelInputs inputsWithDifferentLines()
{
    QList<double> cubes;
    QList<double> muts;
    for (int row = 0; row < wavelengths.size(); ++row) {
        cubes.append(std::pow(wavelengths.at(row), 3));
        muts.append(0.5 * shapes.at(0).at(row) + 0.5 * cubes.last() + 1.25);
    }
    PanelInputs inputs = mixedInputs(quarter);
    setSpectrum(inputs.spectra[0], rowEnergies(), shapes.at(0), {}, {1, 1, 0});
    inputs.spectra[0].edgeEnergy = hc; // L = 1, so the edge jump 1 + L^3 is 2
    setSpectrum(inputs.spectra[1], rowEnergies(), cubes, {0.5, 0, 0}, {6.5, 0, 0});
    setSpectrum(inputs.target, rowEnergies(), muts, {}, {3, 1, 0});
    return inputs;
}

/// Sets the map of each of the first @p rows energy rows. A map has the height 1 and one
/// pixel for each mix in @p pixels.
inline void setPixels(PanelInputs& inputs, const QList<Mix>& pixels, int rows = 5)
{
    for (int row = 0; row < rows; ++row) {
        QList<double> muts;
        for (const Mix& mix : pixels) {
            muts.append(mix.at(row));
        }
        inputs.setMap(row, muts);
    }
}

inline bool near(double value, double expected)
{
    return std::abs(value - expected) < 1e-9;
}

inline bool near(const QList<double>& values, const QList<double>& expected)
{
    return std::equal(values.begin(), values.end(), expected.begin(), expected.end(),
                      [](double a, double b) { return near(a, b); });
}

/// The thirteen values of a pixel, with C1 converted to units of 1 / hc.
inline QList<double> scaledValues(const A2DData& map, int pixel)
{
    QList<double> values = map.rows.at(pixel).values;
    values[9] *= hc;
    return values;
}

} // namespace tests::mixes
