// How long a calculation may take, estimated from the amount of its input.
#pragma once

namespace analysis
{

/// The input of a calculation.
struct Work {
    double pixels = 0.0; ///< of the largest map in use
    int rows = 0;        ///< energy rows in use: a pixel has one value in each
    double points = 0.0; ///< of all spectra together
};

/// Whether a calculation with all its consequences may take a tenth of a second
/// on a slow machine, from where on a user begins to wonder whether anything
/// happens. Says yes rather too early than too late; no without input.
bool mayTakeLong(const Work& work);

} // namespace analysis
