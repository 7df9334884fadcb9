// Calculates the expected results of the non-equivalent method for the sample, and the
// errors of these results due to counting noise.
#pragma once

#include "LeastSquares.h"
#include "NickelTruth.h"
#include "Propagation.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// A configuration of the non-equivalent method.
struct ShareForm {
    const char* name;
    const char* fileName;   ///< file name of the result map
    std::size_t references; ///< number of references: the first ones of compounds()
    bool victoreen;         ///< background c + a L^3 + b L^4 instead of c + k E
    const Image& image;
    const Target& target;
};

/// The configurations for the sample: two references and four references, each with both
/// backgrounds.
const std::vector<ShareForm>& shareForms();

/// The results of the method: the shares of the references, the valence, and the total
/// dMut, in this order.
using ShareValues = std::vector<double>;

/// Solves the model of the non-equivalent method for fixed references.
class ShareFit
{
public:
    /// @param spectra  the references of the form in order; further spectra are ignored
    ShareFit(const ShareForm& form, const std::vector<SpectrumLines>& spectra);

    /// The results for a pixel.
    /// @param mut  the absorbance at each energy of the form's image
    ShareValues valuesFor(const std::vector<double>& mut) const;

    ShareValues valuesForTarget(const SpectrumLines& target) const;

    /// The results without noise for a mixture with edge jump @p jump.
    ///
    /// The model is mut = sum_j x_j R_j + background. R_j = J_j s_j is the absorbance of
    /// reference j above its background, where J_j is its true edge jump and s_j its
    /// shape(). With the fractions f_j, x_j = jump f_j / J_j. The method multiplies
    /// x_j by K_j, the edge jump between the two fitted lines of reference j: dMut_j =
    /// jump f_j K_j / J_j. K_j differs slightly from J_j, because the fit of the
    /// post-edge line does not average out the EXAFS oscillations.
    ShareValues expected(const Fractions& fractions, double jump) const;

private:
    std::vector<double> energiesEv;
    std::vector<double> edgeJumps;
    LeastSquares fit;
};

/// The errors of the results of pixel (@p x, @p y) due to the noise of this pixel.
/// @param fit  the solution with noise-free references
std::vector<ExpectedError> pixelErrors(const ShareForm& form, const ShareFit& fit, int x, int y);

/// The standard deviations of the results averaged over the image, due to the noise of the
/// references. The total dMut of each pixel is divided by the true edge jump of this pixel
/// before averaging.
std::vector<double> referenceErrors(const ShareForm& form);

/// The standard deviations of the target's results due to the noise of all spectra.
std::vector<double> targetErrors(const ShareForm& form);

} // namespace nickel
