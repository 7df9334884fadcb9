// Generates the inputs of the non-equivalent method for the benchmarks.
#pragma once

#include "support/MeasuredMaps.h"
#include "support/PlainFits.h"

#include <QList>
#include <QString>

#include <cmath>

namespace bench
{

inline constexpr double neqEnergiesEv[] = {8250, 8320, 8338, 8345, 8352, 8385, 8430, 8475};

/// Absorbance of a reference above its background: an edge with a white line, whose height
/// is 0 for the last reference. @p reference is 0 to 3.
inline double absorbedBy(int reference, double energyEv)
{
    constexpr double edgesEv[] = {8343.6, 8345.4, 8347.2, 8333.0};
    const double d = energyEv - edgesEv[reference];
    return 0.5 * (1 + std::erf(d / 3)) + 0.15 * (3 - reference) * std::exp(-0.03 * d * d);
}

/// Square maps with @p side pixels per axis at the energies neqEnergiesEv[i] for each i in
/// @p rows. With increasing x the composition changes from the second reference to the first
/// reference.
inline QList<A2DData> neqMaps(int side, const QList<int>& rows)
{
    return measuredMaps(static_cast<int>(rows.size()), side, [&](int k, double f) {
        const double energyEv = neqEnergiesEv[rows.at(k)];
        return 0.05 + f * absorbedBy(0, energyEv) + (1 - f) * absorbedBy(1, energyEv);
    });
}

/// The inputs of the non-equivalent method at the energies neqEnergiesEv[i] for each i in
/// @p rows. @p maps has one map for each energy and must outlive the inputs.
/// @p references is the number of references, 1 to 4.
inline tests::PlainNeqStack neqStack(const QList<A2DData>& maps, bool victoreen, int references,
                                     const QList<int>& rows)
{
    tests::PlainNeqStack stack;
    stack.victoreen = victoreen;
    stack.jumpSum = references;
    for (int j = 0; j < references; ++j) {
        QList<double> values;
        for (const int k : rows) {
            values.append(absorbedBy(j, neqEnergiesEv[k]));
        }
        stack.refValues.append(values);
        stack.weights.append(1.0 / references);
        stack.valences.append(QString::number((j + 2) % 5));
    }
    for (const int k : rows) {
        stack.energies.append(neqEnergiesEv[k]);
    }
    for (const A2DData& map : maps) {
        stack.maps.append(&map);
    }
    return stack;
}

} // namespace bench
