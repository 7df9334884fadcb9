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
/// Each input is increased and then decreased by its standard deviation, while the other
/// inputs keep their values. The results are r+ and r-; let r be the result
/// for unchanged inputs. The contribution of the input to sigma is (r+ - r-) / 2; the
/// contributions of all inputs are added in quadrature. The contribution of the input to
/// the bias is (r+ + r-) / 2 - r; the contributions of all inputs are summed.
std::vector<ExpectedError> propagate(const Calculation& calculation, std::vector<double> inputs,
                                     const std::vector<double>& sigmas);

/// The standard deviation of an absorbance @p mut that was measured with @p photons
/// incident photons. The variance of ln(I0 / I) is 1/I0 + 1/I.
double countingSigma(double mut, double photons);

} // namespace nickel
