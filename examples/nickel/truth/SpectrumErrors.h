// How the noise of spectra goes into what is calculated from them.
#pragma once

#include "NickelTruth.h"
#include "SpectrumLines.h"

#include <functional>
#include <vector>

namespace nickel
{

/// Noise-free spectra of the first @p references compounds, and of @p target
/// after them if there is one.
std::vector<SpectrumLines> noiseFreeSpectra(std::size_t references, const Target* target);

using SpectraCalculation = std::function<std::vector<double>(const std::vector<SpectrumLines>&)>;

/// Standard deviation of each of the calculation's results.
///
/// Each point of each spectrum is moved up by its standard deviation, all
/// others left as they are; the changes of a result are added in squares. At
/// the photons of a spectrum every result is straight enough for that.
std::vector<double> spectrumErrors(const SpectraCalculation& calculation,
                                   std::vector<SpectrumLines> spectra);

} // namespace nickel
