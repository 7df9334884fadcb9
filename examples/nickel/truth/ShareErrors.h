// The expected results of the non-equivalent method for the sample, and their errors from
// counting noise.
#pragma once

#include "LeastSquares.h"
#include "NickelTruth.h"
#include "Propagation.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// A configuration of the non-equivalent method for the sample.
struct ShareForm {
    const char* name;
    const char* fileName;   ///< name of the result map
    std::size_t references; ///< number of compounds, from the first
    bool victoreen;         ///< background c + a L^3 + b L^4 instead of c + k E
    const Image& image;
    const Target& target;
};

/// Two references and all four, each with both backgrounds.
const std::vector<ShareForm>& shareForms();

/// The results of the method in this order: the share of each reference, the valence, the
/// total dMut.
using ShareValues = std::vector<double>;

/// The non-equivalent method with given references.
class ShareFit
{
public:
    /// @param spectra  the form's references in order; further spectra are ignored
    ShareFit(const ShareForm& form, const std::vector<SpectrumLines>& spectra);

    /// @param mut  one value for each energy of the form's image
    ShareValues valuesFor(const std::vector<double>& mut) const;

    ShareValues valuesForTarget(const SpectrumLines& target) const;

    /// The result without noise for a mixture of edge jump @p jump.
    ///
    /// The model is mut = sum_j x_j R_j + background. R_j = J_j s_j is the absorbance of
    /// reference j above its background, so x_j = jump f_j / J_j. The method multiplies
    /// x_j by K_j, the edge jump that the two lines of reference j give: dMut_j = jump
    /// f_j K_j / J_j. K_j differs slightly from J_j, because the fit of the post-edge
    /// line does not average out the EXAFS oscillations.
    ShareValues expected(const Fractions& fractions, double jump) const;

private:
    std::vector<double> energiesEv;
    std::vector<double> edgeJumps;
    LeastSquares fit;
};

/// The errors of a pixel's results from the noise of its values.
/// @param fit  with noise-free references
std::vector<ExpectedError> pixelErrors(const ShareForm& form, const ShareFit& fit, int x, int y);

/// The standard deviations of the mean over all pixels from the noise of the references.
/// For the total dMut it is relative to the true value.
std::vector<double> referenceErrors(const ShareForm& form);

/// The standard deviations of the target's results from the noise of all spectra.
std::vector<double> targetErrors(const ShareForm& form);

} // namespace nickel
