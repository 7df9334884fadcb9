// Calculates the expected results of the linear combination fit for the sample's targets,
// and the errors of these results due to counting noise.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// A linear combination fit of a target.
struct CombinationForm {
    const char* name;
    std::size_t references; ///< number of references: the first ones of compounds()
    const Target& target;
    double lowestEv;  ///< lower limit of the fit range; one of scanEnergies()
    double highestEv; ///< upper limit of the fit range; one of scanEnergies()
};

/// The fits for the sample: with two references and with four.
const std::vector<CombinationForm>& combinationForms();

/// The results of a fit: the fractions of the references, the valence, and the constant,
/// in this order. The fractions are the coefficients of the fit divided by their sum. As in
/// aelk, the valence is calculated from the coefficients before this division.
///
/// @param spectra  the references of the form, followed by the target
std::vector<double> combination(const CombinationForm& form,
                                const std::vector<SpectrumLines>& spectra);

/// The results of the fit for spectra without noise, in the order of combination().
///
/// Let f_j be the fraction of reference j, s_j(E) its shape(), and d_j(E) the difference
/// between the post-edge and pre-edge lines that are fitted to s_j. The normalised
/// mixture is sum_j f_j s_j / sum_j f_j d_j, and a normalised reference is s_j / d_j. If all
/// d_j are equal, as for Ni(II) and Ni(III), the coefficients of the fit are the fractions
/// f_j. With all four compounds they are near f_j d_j / sum_k f_k d_k.
std::vector<double> expectedCombination(const CombinationForm& form);

/// The standard deviations of the results due to the noise of all spectra, in the order of
/// combination().
std::vector<double> combinationErrors(const CombinationForm& form);

} // namespace nickel
