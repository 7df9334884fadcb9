// Compares the errors of many pixels with the errors that noise should cause.
#pragma once

namespace nickel
{

/// Collects errors together with their expected standard deviations and biases.
class ErrorStatistics
{
public:
    /// @param error  result minus expected value
    /// @param sigma  expected standard deviation of the error, above 0
    /// @param bias   expected mean of the error
    void add(double error, double sigma, double bias);

    /// Root mean square of (error - bias) / sigma. It is about 1 if noise is the only
    /// cause of the errors. NaN if any error is NaN.
    double rms() const;

    /// Largest |error - bias| / sigma; infinite if any error is NaN.
    double worst() const { return largest; }

    /// Mean of error - bias.
    double meanError() const;

    /// Expected standard deviation of meanError(), for independent errors.
    double meanSigma() const;

private:
    double n = 0.0;
    double squares = 0.0;
    double largest = 0.0;
    double errors = 0.0;
    double variances = 0.0;
};

} // namespace nickel
