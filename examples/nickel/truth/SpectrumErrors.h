// Error propagation: from the noise of spectra to the errors of a result.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <functional>
#include <vector>

namespace nickel
{

/// The noise-free spectra of the first @p references compounds, followed by @p target
/// unless it is null.
std::vector<SpectrumLines> noiseFreeSpectra(std::size_t references, const Target* target);

using SpectraCalculation = std::function<std::vector<double>(const std::vector<SpectrumLines>&)>;

/// The standard deviation of each result of a calculation.
///
/// Each point of each spectrum is increased by its standard deviation while the others
/// keep their values; the changes of a result add in quadrature. With the photons of a
/// spectrum every result is linear enough for this.
std::vector<double> spectrumErrors(const SpectraCalculation& calculation,
                                   std::vector<SpectrumLines> spectra);

} // namespace nickel
