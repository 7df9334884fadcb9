// What the linear combination fit has to give for the sample's targets, and how
// far counting noise lets it be off.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// One fit of a target.
struct CombinationForm {
    const char* name;
    std::size_t references; ///< the first so many compounds
    const Target& target;
    double lowestEv;  ///< ends of the range,
    double highestEv; ///< points of the scan
};

/// Two references and all four.
const std::vector<CombinationForm>& combinationForms();

/// Results in this order: the fraction of each reference, valence, constant.
/// The valence is that of the coefficients before they are divided by their
/// sum, as aelk has it.
///
/// @param spectra  the form's references, and the target as the last of them
std::vector<double> combination(const CombinationForm& form,
                                const std::vector<SpectrumLines>& spectra);

/// What the fit makes of the spectra without noise.
///
/// Normalised by its two lines a mixture is sum_j f_j s_j over sum_j f_j d_j,
/// and a reference s_j / d_j, with d_j(E) the distance of the lines of s_j. Were
/// all d_j alike, the coefficients would be the fractions f_j. Those of Ni(II)
/// and Ni(III) are; with all four the fit settles near f_j d_j / sum_k f_k d_k.
std::vector<double> expectedCombination(const CombinationForm& form);

/// Standard deviations of the results, from the noise of all spectra.
std::vector<double> combinationErrors(const CombinationForm& form);

} // namespace nickel
