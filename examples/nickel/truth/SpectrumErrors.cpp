#include "SpectrumErrors.h"

#include "Propagation.h"

#include <cmath>
#include <utility>

namespace nickel
{

std::vector<SpectrumLines> noiseFreeSpectra(std::size_t references, const Target* target)
{
    std::vector<SpectrumLines> spectra;
    for (const Compound& compound : compounds().first(references)) {
        std::vector<double> mut;
        for (const double energyEv : scanEnergies()) {
            mut.push_back(referenceMut(compound, energyEv));
        }
        spectra.emplace_back(std::move(mut));
    }
    if (target != nullptr) {
        std::vector<double> mut;
        for (const double energyEv : scanEnergies()) {
            mut.push_back(targetMut(*target, energyEv));
        }
        spectra.emplace_back(std::move(mut));
    }
    return spectra;
}

std::vector<double> spectrumErrors(const SpectraCalculation& calculation,
                                   std::vector<SpectrumLines> spectra)
{
    const std::vector<double> middle = calculation(spectra);
    std::vector<double> sigmas(middle.size(), 0.0);
    for (SpectrumLines& spectrum : spectra) {
        const SpectrumLines unmoved = spectrum;
        for (std::size_t i = 0; i < unmoved.mut().size(); ++i) {
            std::vector<double> mut = unmoved.mut();
            mut[i] += countingSigma(mut[i], spectrumPhotons);
            spectrum = SpectrumLines(std::move(mut));
            const std::vector<double> moved = calculation(spectra);
            for (std::size_t k = 0; k < sigmas.size(); ++k) {
                sigmas[k] += (moved[k] - middle[k]) * (moved[k] - middle[k]);
            }
        }
        spectrum = unmoved;
    }
    for (double& sigma : sigmas) {
        sigma = std::sqrt(sigma);
    }
    return sigmas;
}

} // namespace nickel
