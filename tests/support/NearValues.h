// Lists of numbers that may differ by a stated amount.
#pragma once

#include <QtGlobal>

#include <cmath>
#include <cstddef>
#include <vector>

namespace tests
{

/// Whether both lists are equally long and no value is off by more than
/// @p tolerance; the first one that is goes to the log.
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
