#include "analysis/Lanes.h"

namespace analysis
{

const std::vector<Instructions>& availableInstructions()
{
    static const std::vector<Instructions> available = [] {
        std::vector<Instructions> found{Instructions::Baseline};
#if defined(__x86_64__)
        if (__builtin_cpu_supports("avx2") != 0) {
            found.push_back(Instructions::Wide);
        }
#endif
        return found;
    }();
    return available;
}

Instructions fastestInstructions()
{
    static const Instructions fastest = availableInstructions().back();
    return fastest;
}

} // namespace analysis
