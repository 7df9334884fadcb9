// What the non-equivalent method has to give for the sample, and how far
// counting noise lets it be off.
#pragma once

#include "LeastSquares.h"
#include "NickelTruth.h"
#include "Propagation.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// One way to run the non-equivalent method on the sample.
struct ShareForm {
    const char* name;
    const char* fileName;   ///< of the result map
    std::size_t references; ///< the first so many compounds
    bool victoreen;         ///< background c + a L^3 + b L^4 in place of c + k E
    const Image& image;
    const Target& target;
};

/// Two references and all four, with either background.
const std::vector<ShareForm>& shareForms();

/// Results of the method in this order: the share of each reference, then
/// valence, then total dMut.
using ShareValues = std::vector<double>;

/// The method with given references.
class ShareFit
{
public:
    /// @param spectra  the form's references, in order; further ones are ignored
    ShareFit(const ShareForm& form, const std::vector<SpectrumLines>& spectra);

    /// @param mut  one value for each energy of the form's image
    ShareValues valuesFor(const std::vector<double>& mut) const;

    ShareValues valuesForTarget(const SpectrumLines& target) const;

    /// What a mixture of edge jump @p jump has to give.
    ///
    /// The model is mut = sum_j x_j R_j + background, with R_j = J_j s_j the
    /// absorption of reference j above its background; so x_j = jump f_j / J_j.
    /// The method multiplies x_j with the edge jump that it reads off the lines
    /// of reference j, K_j: dMut_j = jump f_j K_j / J_j. K_j is not quite J_j,
    /// since the wiggle does not average out in the upper line.
    ShareValues expected(const Fractions& fractions, double jump) const;

private:
    std::vector<double> energiesEv;
    std::vector<double> edgeJumps;
    LeastSquares fit;
};

/// Errors of the results in a pixel, from the noise of its own values.
/// @param fit  with noise-free references
std::vector<ExpectedError> pixelErrors(const ShareForm& form, const ShareFit& fit, int x, int y);

/// Standard deviations that the noise of the references gives to the mean over
/// all pixels; that of the total dMut as a part of the true one.
std::vector<double> referenceErrors(const ShareForm& form);

/// Standard deviations of the target's results, from the noise of all spectra.
std::vector<double> targetErrors(const ShareForm& form);

} // namespace nickel
