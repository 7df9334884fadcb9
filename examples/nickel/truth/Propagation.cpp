#include "Propagation.h"

#include <cmath>
#include <cstddef>

namespace nickel
{

std::vector<ExpectedError> propagate(const Calculation& calculation, std::vector<double> inputs,
                                     const std::vector<double>& sigmas)
{
    const std::vector<double> middle = calculation(inputs);
    std::vector<ExpectedError> errors(middle.size());
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const double input = inputs[i];
        inputs[i] = input + sigmas[i];
        const std::vector<double> up = calculation(inputs);
        inputs[i] = input - sigmas[i];
        const std::vector<double> down = calculation(inputs);
        inputs[i] = input;
        for (std::size_t k = 0; k < errors.size(); ++k) {
            const double share = 0.5 * (up[k] - down[k]);
            errors[k].sigma += share * share;
            errors[k].bias += 0.5 * (up[k] - 2.0 * middle[k] + down[k]);
        }
    }
    for (ExpectedError& error : errors) {
        error.sigma = std::sqrt(error.sigma);
    }
    return errors;
}

double countingSigma(double mut, double photons)
{
    return std::sqrt((1.0 + std::exp(mut)) / photons);
}

} // namespace nickel
