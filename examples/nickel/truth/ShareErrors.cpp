#include "ShareErrors.h"

#include "SpectrumErrors.h"

#include <cmath>

namespace nickel
{
namespace
{

std::vector<std::vector<double>> columnsOf(const ShareForm& form,
                                           const std::vector<SpectrumLines>& spectra)
{
    const std::vector<double>& energies = form.image.energiesEv;
    std::vector<std::vector<double>> columns;
    for (std::size_t j = 0; j < form.references; ++j) {
        std::vector<double>& column = columns.emplace_back();
        for (const double energyEv : energies) {
            column.push_back(spectra.at(j).abovePre(scanIndex(energyEv)));
        }
    }
    // The background terms are 1, (edgeEv / E)^3 and (edgeEv / E)^4, or 1 and E - edgeEv.
    // They describe the same backgrounds as aelk's terms 1, L^3 and L^4, or 1 and E, and
    // their numbers are closer to 1.
    const int powers = form.victoreen ? 3 : 2;
    for (int k = 0; k < powers; ++k) {
        std::vector<double>& column = columns.emplace_back();
        for (const double energyEv : energies) {
            const double ratio = edgeEv / energyEv;
            const double victoreen = k == 0 ? 1.0 : std::pow(ratio, k + 2);
            column.push_back(form.victoreen ? victoreen : std::pow(energyEv - edgeEv, k));
        }
    }
    return columns;
}

/// The shares, the valence and the total for the amounts dMut of the references.
ShareValues composition(const std::vector<double>& amounts)
{
    double total = 0.0;
    for (const double amount : amounts) {
        total += amount;
    }
    ShareValues values;
    double valence = 0.0;
    for (std::size_t j = 0; j < amounts.size(); ++j) {
        values.push_back(amounts[j] / total);
        valence += values.back() * compounds()[j].valence;
    }
    values.push_back(valence);
    values.push_back(total);
    return values;
}

std::vector<double> pixelValues(const Image& image, int x, int y)
{
    std::vector<double> mut;
    for (const double energyEv : image.energiesEv) {
        mut.push_back(image.mutAt(x, y, energyEv));
    }
    return mut;
}

} // namespace

const std::vector<ShareForm>& shareForms()
{
    static const std::vector<ShareForm> forms = {
        {"two references, linear background", "nickel_neq2_linear.dat", 2, false, imageOfTwo(),
         targetOfTwo()},
        {"two references, Victoreen background", "nickel_neq2_vic.dat", 2, true, imageOfTwo(),
         targetOfTwo()},
        {"four references, linear background", "nickel_neq4_linear.dat", 4, false, imageOfFour(),
         targetOfFour()},
        {"four references, Victoreen background", "nickel_neq4_vic.dat", 4, true, imageOfFour(),
         targetOfFour()},
    };
    return forms;
}

ShareFit::ShareFit(const ShareForm& form, const std::vector<SpectrumLines>& spectra)
    : energiesEv(form.image.energiesEv)
    , fit(columnsOf(form, spectra))
{
    for (std::size_t j = 0; j < form.references; ++j) {
        edgeJumps.push_back(spectra.at(j).edgeJump());
    }
}

ShareValues ShareFit::valuesFor(const std::vector<double>& mut) const
{
    std::vector<double> amounts = fit.coefficients(mut);
    amounts.resize(edgeJumps.size());
    for (std::size_t j = 0; j < amounts.size(); ++j) {
        amounts[j] *= edgeJumps[j];
    }
    return composition(amounts);
}

ShareValues ShareFit::expected(const Fractions& fractions, double jump) const
{
    std::vector<double> amounts;
    for (std::size_t j = 0; j < edgeJumps.size(); ++j) {
        amounts.push_back(jump * fractions.at(j) * edgeJumps[j] / compounds()[j].jump);
    }
    return composition(amounts);
}

ShareValues ShareFit::valuesForTarget(const SpectrumLines& target) const
{
    std::vector<double> mut;
    mut.reserve(energiesEv.size());
    for (const double energyEv : energiesEv) {
        mut.push_back(target.abovePre(scanIndex(energyEv)));
    }
    return valuesFor(mut);
}

std::vector<ExpectedError> pixelErrors(const ShareForm& form, const ShareFit& fit, int x, int y)
{
    const std::vector<double> mut = pixelValues(form.image, x, y);
    std::vector<double> sigmas;
    sigmas.reserve(mut.size());
    for (const double value : mut) {
        sigmas.push_back(countingSigma(value, pixelPhotons));
    }
    return propagate([&fit](const std::vector<double>& moved) { return fit.valuesFor(moved); }, mut,
                     sigmas);
}

std::vector<double> referenceErrors(const ShareForm& form)
{
    // Every eighth pixel in x and y is a sufficient sample for the mean over all pixels.
    constexpr int step = 8;
    std::vector<std::vector<double>> pixels;
    std::vector<double> jumps;
    for (int y = step / 2; y < form.image.height; y += step) {
        for (int x = step / 2; x < form.image.width; x += step) {
            pixels.push_back(pixelValues(form.image, x, y));
            jumps.push_back(form.image.amountAt(x, y));
        }
    }
    const auto mean = [&](const std::vector<SpectrumLines>& references) {
        const ShareFit fit(form, references);
        ShareValues sum(form.references + 2, 0.0);
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            ShareValues values = fit.valuesFor(pixels[i]);
            values.back() /= jumps[i];
            for (std::size_t k = 0; k < sum.size(); ++k) {
                sum[k] += values[k] / static_cast<double>(pixels.size());
            }
        }
        return sum;
    };
    return spectrumErrors(mean, noiseFreeSpectra(form.references, nullptr));
}

std::vector<double> targetErrors(const ShareForm& form)
{
    const auto calculation = [&form](const std::vector<SpectrumLines>& spectra) {
        return ShareFit(form, spectra).valuesForTarget(spectra.back());
    };
    return spectrumErrors(calculation, noiseFreeSpectra(form.references, &form.target));
}

} // namespace nickel
