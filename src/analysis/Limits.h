// The range of a scale.
#pragma once

namespace analysis
{

/// Two ends of a scale.
struct Limits {
    double low = 0.0;
    double high = 0.0;
};

} // namespace analysis
