#include "CombinationErrors.h"

#include "LeastSquares.h"
#include "SpectrumErrors.h"

#include <utility>

namespace nickel
{
namespace
{

std::vector<double> normalised(const CombinationForm& form, const SpectrumLines& spectrum)
{
    std::vector<double> values;
    for (std::size_t i = scanIndex(form.lowestEv); i <= scanIndex(form.highestEv); ++i) {
        values.push_back(spectrum.normalised(i));
    }
    return values;
}

} // namespace

const std::vector<CombinationForm>& combinationForms()
{
    static const std::vector<CombinationForm> forms = {
        {"two references", 2, targetOfTwo(), 8320.0, 8475.0},
        {"four references", 4, targetOfFour(), 8320.0, 8356.0},
    };
    return forms;
}

std::vector<double> combination(const CombinationForm& form,
                                const std::vector<SpectrumLines>& spectra)
{
    std::vector<std::vector<double>> columns;
    for (std::size_t j = 0; j < form.references; ++j) {
        columns.push_back(normalised(form, spectra.at(j)));
    }
    const std::vector<double> target = normalised(form, spectra.back());
    columns.emplace_back(target.size(), 1.0);
    std::vector<double> values = LeastSquares(std::move(columns)).coefficients(target);
    const double base = values.back();
    values.pop_back();
    double sum = 0.0;
    double valence = 0.0;
    for (std::size_t j = 0; j < values.size(); ++j) {
        sum += values[j];
        valence += values[j] * compounds()[j].valence;
    }
    for (double& value : values) {
        value /= sum;
    }
    values.push_back(valence);
    values.push_back(base);
    return values;
}

std::vector<double> expectedCombination(const CombinationForm& form)
{
    return combination(form, noiseFreeSpectra(form.references, &form.target));
}

std::vector<double> combinationErrors(const CombinationForm& form)
{
    return spectrumErrors(
        [&form](const std::vector<SpectrumLines>& spectra) { return combination(form, spectra); },
        noiseFreeSpectra(form.references, &form.target));
}

} // namespace nickel
