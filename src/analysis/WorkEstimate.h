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

/// Whether a calculation, with the repetitions that one change of input causes,
/// may take a tenth of a second or more on a slow machine. A rough upper estimate:
/// true for some work that is faster. False without input.
bool mayTakeLong(const Work& work);

} // namespace analysis
