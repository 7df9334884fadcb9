// A closed range of numbers that grows with the values added to it.
#pragma once

namespace data
{

/// Extends the range from @p low to @p high so that it contains @p value. NaN
/// changes nothing.
inline void widen(double value, double& low, double& high)
{
    low = value < low ? value : low;
    high = value > high ? value : high;
}

/// The lower and the upper end of a range.
struct Limits {
    double low = 0.0;
    double high = 0.0;

    /// Extends the range so that it contains @p value; NaN changes nothing.
    void widen(double value) { data::widen(value, low, high); }
};

/// The empty range, from which widen() starts: its ends are reversed until the first
/// value is added.
inline constexpr Limits emptyLimits{1e300, -1e300};

} // namespace data
