// Spectra made by hand.
#pragma once

#include "data/AMutE.h"

namespace tests
{

/// Gives a spectrum one point at each energy (eV) of @p energies, in this order
/// and at angles of 10, 11, ... degrees, and two lines; its mut is
/// @p muts above the pre-edge line.
inline void setSpectrum(AMutE& spectrum, const QList<double>& energies, const QList<double>& muts,
                        const data::VictoreenLine& pre, const data::VictoreenLine& post)
{
    spectrum.valid = true;
    spectrum.preLine = pre;
    spectrum.postLine = post;
    spectrum.points.clear();
    for (int i = 0; i < energies.size(); ++i) {
        const double energy = energies.at(i);
        spectrum.points.append({10.0 + i, energy, muts.at(i) + spectrum.preValue(energy)});
    }
}

/// No points, and lines that are constants: the edge jump is @p jump whatever the
/// edge energy.
inline void setJump(AMutE& spectrum, double jump)
{
    setSpectrum(spectrum, {}, {}, {}, {jump, 0.0, 0.0});
}

} // namespace tests
