// Builds spectra from given numbers.
#pragma once

#include "data/AMutE.h"

namespace tests
{

/// Sets the points and both lines of a spectrum and marks it valid. Point i has the
/// energy @p energies[i] (eV), the angle 10 + i degrees, and an absorbance that is
/// @p muts[i] higher than the pre-edge line.
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

/// Sets a valid spectrum without points. The pre-edge and post-edge lines are constant, so the
/// edge jump is @p jump at every edge energy.
inline void setJump(AMutE& spectrum, double jump)
{
    setSpectrum(spectrum, {}, {}, {}, {jump, 0.0, 0.0});
}

} // namespace tests
