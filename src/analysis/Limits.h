// The range of a scale.
#pragma once

namespace analysis
{

/// Two ends of a scale.
struct Limits {
    double low = 0.0;
    double high = 0.0;

    /// Takes @p value in; NaN changes nothing.
    void widen(double value)
    {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
};

/// Where running extremes start: reversed until a value comes.
inline constexpr Limits noLimits{1e300, -1e300};

} // namespace analysis
