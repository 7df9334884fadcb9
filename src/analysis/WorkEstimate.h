// Estimates from the amount of input whether a calculation takes long.
#pragma once

namespace analysis
{

/// The amount of input of a calculation.
struct Work {
    double pixels = 0.0; ///< number of pixels of the largest map in use
    int rows = 0;        ///< number of used energy rows with a map; a pixel has one value per row
    double points = 0.0; ///< number of points of all spectra together
};

/// Whether a calculation might take 0.1 s or longer on a slow machine, including the
/// repetitions that one change of input causes. This is a rough upper estimate, so it is also
/// true for some faster calculations. False without input.
bool mayTakeLong(const Work& work);

} // namespace analysis
