// Error propagation: calculates the errors of a result from the noise of measured values.
#pragma once

#include <functional>
#include <vector>

namespace nickel
{

/// The expected error of a result due to counting noise.
struct ExpectedError {
    double sigma = 0.0; ///< standard deviation
    double bias = 0.0;  ///< shift of the mean, because the calculation is not linear
};

using Calculation = std::function<std::vector<double>(const std::vector<double>& inputs)>;

/// The expected error of each result of a calculation, by numerical differentiation.
///
/// Each input is changed up and down by its standard deviation while the other inputs
/// keep their values. Half the difference of the two results is the contribution of the
/// input to sigma; the contributions are added in quadrature. Half the second difference
/// is its contribution to the bias; these contributions are summed.
std::vector<ExpectedError> propagate(const Calculation& calculation, std::vector<double> inputs,
                                     const std::vector<double>& sigmas);

/// The standard deviation of an absorbance @p mut that was measured with @p photons
/// incident photons. The variance of ln(I0 / I) is 1/I0 + 1/I.
double countingSigma(double mut, double photons);

} // namespace nickel
