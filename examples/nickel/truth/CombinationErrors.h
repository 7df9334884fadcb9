// The expected results of the linear combination fit for the sample's targets, and their
// errors from counting noise.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <vector>

namespace nickel
{

/// One fit of a target.
struct CombinationForm {
    const char* name;
    std::size_t references; ///< number of compounds, from the first
    const Target& target;
    double lowestEv;  ///< lower end of the range, a scan point
    double highestEv; ///< upper end of the range, a scan point
};

/// The fits of the sample: with two references and with all four.
const std::vector<CombinationForm>& combinationForms();

/// The results of a fit in this order: the fraction of each reference, the valence, the
/// constant. As in aelk, the valence uses the coefficients before they are divided by
/// their sum.
///
/// @param spectra  the form's references, then the target
std::vector<double> combination(const CombinationForm& form,
                                const std::vector<SpectrumLines>& spectra);

/// The result of the fit without noise.
///
/// The normalised mixture is sum_j f_j s_j / sum_j f_j d_j and a normalised reference is
/// s_j / d_j, where d_j(E) is the difference of the two lines of s_j. If all d_j are
/// equal, as for Ni(II) and Ni(III), the coefficients are the fractions f_j. With all
/// four compounds the fit gives values near f_j d_j / sum_k f_k d_k.
std::vector<double> expectedCombination(const CombinationForm& form);

/// The standard deviations of the results from the noise of all spectra.
std::vector<double> combinationErrors(const CombinationForm& form);

} // namespace nickel
