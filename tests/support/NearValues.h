// Compares lists of numbers within a tolerance.
#pragma once

#include <QtGlobal>

#include <cmath>
#include <cstddef>
#include <vector>

namespace tests
{

/// Whether both lists have the same length and each value differs from the wanted value
/// at the same index by at most @p tolerance. NaN never matches. Logs the first value that
/// does not match.
inline bool near(const std::vector<double>& values, const std::vector<double>& wanted,
                 double tolerance)
{
    if (values.size() != wanted.size()) {
        return false;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!(std::abs(values[i] - wanted[i]) <= tolerance)) {
            qWarning("value %zu is %.9f instead of %.9f", i, values[i], wanted[i]);
            return false;
        }
    }
    return true;
}

} // namespace tests
