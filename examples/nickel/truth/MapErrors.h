// Calculates the expected errors of the sample's maps for the four-point family. The
// errors are due to counting noise.
#pragma once

#include "NickelTruth.h"
#include "Propagation.h"

#include <vector>

namespace nickel
{

/// A form of the four-point family and the rows that the sample uses for it.
struct MapForm {
    const char* name;
    const char* fileName;          ///< file name of the result map
    std::vector<std::size_t> rows; ///< indices of the rows in use, without the V row
    bool fitsSlope;                ///< whether the form fits a background slope
    double thicknessUnit;          ///< the edge jump of a pixel with thickness 1
};

/// The forms in the order three points, exact four points, least squares.
const std::vector<MapForm>& mapForms();

/// The result of the four-point family for one pixel: the fraction of Ni(II) and the edge
/// jump.
struct MixtureEstimate {
    double fraction = 0.0;
    double jump = 0.0;
};

/// Solves the model of the four-point family for one pixel, with noise-free references.
///
/// Below and above the edge the absorbance of a pixel is mut = jump * s(E) + mu0 + k E,
/// where s is the common shape of both references at these energies. A form with slope fits
/// s as a linear function of E and mut by least squares. A form without slope has k = 0 and
/// uses two points, which determine jump and mu0. The V point then determines the fractions
/// of the two references.
///
/// @param mut  the absorbance at each of mapEnergiesEv
/// @return the fraction and the edge jump of the pixel
MixtureEstimate estimateMixture(const MapForm& form,
                                const std::array<double, mapEnergiesEv.size()>& mut);

struct ExpectedErrors {
    ExpectedError fraction;
    ExpectedError jump;
};

/// The standard deviations and biases of the results of pixel (@p x, @p y) due to the noise
/// of this pixel.
ExpectedErrors expectedErrors(const MapForm& form, int x, int y);

} // namespace nickel
