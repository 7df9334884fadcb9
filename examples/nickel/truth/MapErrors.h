// The expected errors of the sample's maps by the four-points family, from counting
// noise.
#pragma once

#include "NickelTruth.h"
#include "Propagation.h"

#include <vector>

namespace nickel
{

/// A form of the four-points family with the rows that the sample uses.
struct MapForm {
    const char* name;
    const char* fileName;          ///< name of the result map
    std::vector<std::size_t> rows; ///< rows in use other than the V row
    bool fitsSlope;                ///< whether the form fits a background slope
    double thicknessUnit;          ///< edge jump that gives thickness 1
};

/// Three points, exact four points and least squares.
const std::vector<MapForm>& mapForms();

/// The result of one pixel: fraction of Ni(II) and edge jump.
struct MixtureEstimate {
    double fraction = 0.0;
    double jump = 0.0;
};

/// The mixture that gives the values of a pixel, with noise-free references.
///
/// Above and below the edge a pixel absorbs mut = jump * s(E) + mu0 + k E, where s is the
/// shape that both references have there. This line of s over (E, mut) is fitted by least
/// squares, or goes through two points without k. The V point then determines the
/// fractions of the two references.
///
/// @param mut  one value for each of mapEnergiesEv
MixtureEstimate estimateMixture(const MapForm& form,
                                const std::array<double, mapEnergiesEv.size()>& mut);

struct ExpectedErrors {
    ExpectedError fraction;
    ExpectedError jump;
};

/// The standard deviations and biases of a pixel's results from the noise of its values.
ExpectedErrors expectedErrors(const MapForm& form, int x, int y);

} // namespace nickel
