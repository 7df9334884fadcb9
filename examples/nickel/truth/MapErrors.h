// How far counting noise lets a result of the sample's maps be off.
#pragma once

#include "NickelTruth.h"
#include "Propagation.h"

#include <vector>

namespace nickel
{

/// One of the forms of the four-points family, as the sample uses it.
struct MapForm {
    const char* name;
    const char* fileName;          ///< of the result map
    std::vector<std::size_t> rows; ///< rows in use beside the V row
    bool fitsSlope;                ///< the form knows a background slope
    double thicknessUnit;          ///< edge jump that reads as thickness 1
};

/// Three points, exact four points, least square.
const std::vector<MapForm>& mapForms();

/// A result of one pixel: fraction of Ni(II), and edge jump.
struct MixtureEstimate {
    double fraction = 0.0;
    double jump = 0.0;
};

/// The mixture that the values of a pixel stand for, with noise-free
/// references.
///
/// Above and below the edge a pixel absorbs mut = jump * s(E) + mu0 + k E, with
/// s the shape that both references share there. The line of s over (E, mut) is
/// fitted by least squares, or taken through two points without k; the V point
/// then shares the rest between the two references.
///
/// @param mut  one value for each of mapEnergiesEv
MixtureEstimate estimateMixture(const MapForm& form,
                                const std::array<double, mapEnergiesEv.size()>& mut);

struct ExpectedErrors {
    ExpectedError fraction;
    ExpectedError jump;
};

/// Standard deviation and bias of the pixel's results, from the noise of its
/// own values.
ExpectedErrors expectedErrors(const MapForm& form, int x, int y);

} // namespace nickel
