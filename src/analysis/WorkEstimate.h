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

/// Seconds that a calculation with all its consequences may take on a slow
/// machine; deliberately a high estimate. 0 without input.
double secondsOnASlowMachine(const Work& work);

} // namespace analysis
