// How far counting noise lets a result of the sample's maps be off.
#pragma once

#include "NickelTruth.h"

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

/// Error of a result to be expected from counting noise.
struct ExpectedError {
    double sigma = 0.0; ///< standard deviation
    double bias = 0.0;  ///< shift of the mean, from the form's curvature
};

struct ExpectedErrors {
    ExpectedError fraction;
    ExpectedError jump;
};

/// Standard deviation and bias of the pixel's results.
///
/// A value mut = ln(I0 / I) has the variance 1/I0 + 1/I. Each value is moved up
/// and down by its standard deviation: half the difference of the two results
/// is its share of the error (added in squares), half their second difference
/// its share of the bias.
ExpectedErrors expectedErrors(const MapForm& form, int x, int y);

} // namespace nickel
