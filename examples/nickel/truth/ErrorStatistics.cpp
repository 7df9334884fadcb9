#include "ErrorStatistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace nickel
{

void ErrorStatistics::add(double error, double sigma, double bias)
{
    const double difference = error - bias;
    const double scaled = difference / sigma;
    n += 1.0;
    squares += scaled * scaled;
    largest = std::max(largest, std::isnan(scaled) ? std::numeric_limits<double>::infinity()
                                                   : std::abs(scaled));
    errors += difference;
    variances += sigma * sigma;
}

double ErrorStatistics::rms() const
{
    return std::sqrt(squares / n);
}

double ErrorStatistics::meanError() const
{
    return errors / n;
}

double ErrorStatistics::meanSigma() const
{
    return std::sqrt(variances) / n;
}

} // namespace nickel
