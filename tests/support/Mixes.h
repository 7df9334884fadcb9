// Mixtures of references whose shares, amounts and valence are known.
#pragma once

#include "support/PanelInputs.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tests::mixes
{

inline constexpr double hc = AMutE::hcEvAngstrom;

/// Wavelengths (angstrom) of the eight energy rows: powers of two, so that E, L^3
/// and L^4 are exact.
inline const QList<double> wavelengths{4, 2, 1, 0.5, 0.25, 0.125, 0.0625, 0.03125};

/// What the references are above their pre-edge line at the eight rows:
/// independent of each other and of both backgrounds, also on the first rows.
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

/// A sum of references over a background; the linear term is in units of E / hc.
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

/// dMut 1 and 3: shares 1/4 and 3/4, total 4, valence 2/4 + 15/4 = 4.25.
inline const Mix quarter{{0.5, 0.5}, 1.25, 0.5};
/// The same over a background of two terms in the wavelength.
inline const Mix curvedQuarter{{0.5, 0.5}, 1.25, 0, 2, -0.5};
/// dMut -1 and 6: shares -0.2 and 1.2, total 5, valence -0.4 + 6 = 5.6.
inline const Mix negative{{-0.5, 1}, -2, -1};

/// The thirteen values of a pixel, C1 in units of 1 / hc.
inline const QList<double> quarterValues{0.25, 0.75, 0, 0, 1, 3, 0, 0, 1.25, 0.5, 0, 4.25, 4};
inline const QList<double> negativeValues{-0.2, 1.2, 0, 0, -1, 6, 0, 0, -2, -1, 0, 5.6, 5};

/// Gives a spectrum the shape, the lines and the jump of reference @p shape.
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

/// 0, 1, ... as many as @p count.
inline QList<int> firstRows(int count)
{
    QList<int> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

/// The non-equivalent method with linear background on the first rows and
/// references, the target of @p mix; the third energy row is the V row.
inline PanelInputs mixedInputs(const Mix& mix, int references = 2, int rows = 5)
{
    PanelInputs inputs;
    inputs.radios.nonEquivalent = true;
    for (int i = 0; i < references; ++i) {
        setReference(inputs.spectra.at(static_cast<std::size_t>(i)), i);
        inputs.valences.at(static_cast<std::size_t>(i)) = valences.at(i);
    }
    useReferences(inputs, firstRows(references));
    for (int row = 0; row < inputs.points.size(); ++row) {
        inputs.points[row].energy = rowEnergies().at(row);
    }
    useRows(inputs, firstRows(rows));
    markVRows(inputs, {2});
    setTarget(inputs.target, mix);
    return inputs;
}

/// Gives the first rows maps of one line of pixels, one for each mix.
inline void setPixels(PanelInputs& inputs, const QList<Mix>& pixels, int rows = 5)
{
    for (int row = 0; row < rows; ++row) {
        QList<double> muts;
        for (const Mix& mix : pixels) {
            muts.append(mix.at(row));
        }
        setMap(inputs, row, muts);
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

/// The values of a pixel with its C1 in units of 1 / hc.
inline QList<double> scaledValues(const A2DData& map, int pixel)
{
    QList<double> values = map.rows.at(pixel).values;
    values[9] *= hc;
    return values;
}

} // namespace tests::mixes
