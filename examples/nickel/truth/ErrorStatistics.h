// How errors of many pixels compare with what noise makes expect.
#pragma once

namespace nickel
{

/// Collects errors together with their expected standard deviation and bias.
class ErrorStatistics
{
public:
    /// @param error  result less truth
    /// @param sigma  its expected standard deviation, above 0
    /// @param bias   the mean error to be expected
    void add(double error, double sigma, double bias);

    /// Root of the mean square of (error - bias) / sigma: 1 when noise alone is
    /// at work. NaN when any error is.
    double rms() const;

    /// Largest |error - bias| / sigma; infinite when any error is NaN.
    double worst() const { return largest; }

    /// Mean of error - bias, and its expected standard deviation.
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
