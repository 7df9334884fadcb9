// Compares the errors of many pixels with the errors expected from noise.
#pragma once

namespace nickel
{

/// Collects errors with their expected standard deviation and bias.
class ErrorStatistics
{
public:
    /// @param error  result minus truth
    /// @param sigma  its expected standard deviation, above 0
    /// @param bias   its expected mean
    void add(double error, double sigma, double bias);

    /// Root mean square of (error - bias) / sigma. It is about 1 if noise is the only
    /// cause of errors. NaN if any error is NaN.
    double rms() const;

    /// Largest |error - bias| / sigma; infinite if any error is NaN.
    double worst() const { return largest; }

    /// Mean of error - bias, and the expected standard deviation of this mean.
    double meanError() const;
    double meanSigma() const;

private:
    double n = 0.0;
    double squares = 0.0;
    double largest = 0.0;
    double errors = 0.0;
    double variances = 0.0;
};

} // namespace nickel
