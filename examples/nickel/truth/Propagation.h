// How the noise of measured values goes into what is calculated from them.
#pragma once

#include <functional>
#include <vector>

namespace nickel
{

/// Error of a result to be expected from counting noise.
struct ExpectedError {
    double sigma = 0.0; ///< standard deviation
    double bias = 0.0;  ///< shift of the mean, from the calculation's curvature
};

using Calculation = std::function<std::vector<double>(const std::vector<double>& inputs)>;

/// The error of each of the calculation's results.
///
/// Each input is moved up and down by its standard deviation, the others left
/// as they are: half the difference of the two results is its share of the
/// error (added in squares), half their second difference its share of the
/// bias.
std::vector<ExpectedError> propagate(const Calculation& calculation, std::vector<double> inputs,
                                     const std::vector<double>& sigmas);

/// Standard deviation of a mu*t of @p mut, measured with @p photons incident
/// ones: ln(I0 / I) has the variance 1/I0 + 1/I.
double countingSigma(double mut, double photons);

} // namespace nickel
