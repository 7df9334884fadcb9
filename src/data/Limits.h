// Two ends of a range, and running extremes.
#pragma once

namespace data
{

/// Takes @p value into the extremes @p low and @p high; NaN changes neither.
inline void widen(double value, double& low, double& high)
{
    low = value < low ? value : low;
    high = value > high ? value : high;
}

/// Two ends of a range.
struct Limits {
    double low = 0.0;
    double high = 0.0;

    /// Takes @p value in; NaN changes nothing.
    void widen(double value) { data::widen(value, low, high); }
};

/// Where running extremes start: reversed until a value comes.
inline constexpr Limits noLimits{1e300, -1e300};

} // namespace data
