// Error propagation for spectra: calculates the errors of a result from the noise of
// spectra.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <functional>
#include <vector>

namespace nickel
{

/// The noise-free spectra of the first @p references compounds. If @p target is not null,
/// its noise-free spectrum is the last one.
std::vector<SpectrumLines> noiseFreeSpectra(std::size_t references, const Target* target);

using SpectraCalculation = std::function<std::vector<double>(const std::vector<SpectrumLines>&)>;

/// The standard deviation of each result of a calculation, by numerical differentiation.
///
/// One point at a time is increased by its standard deviation, for all points of all spectra.
/// The resulting changes of a result are added in quadrature. A one-sided
/// difference is sufficient, because the results are nearly linear within the small noise
/// of the spectra.
std::vector<double> spectrumErrors(const SpectraCalculation& calculation,
                                   std::vector<SpectrumLines> spectra);

} // namespace nickel
