// Prints how many times faster the product's road is than its plain twin.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace bench
{

/// The console report, which also remembers the best processor time of each
/// benchmark: the roads run in one thread, and a busy machine spoils wall times.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                double& best = m_best.try_emplace(run.run_name.function_name, noTime).first->second;
                best = std::min(best, run.GetAdjustedCPUTime());
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// Prints "ratio <product>: <time of twin / time of product>", or that one
    /// of the two did not run.
    void printRatio(const std::string& twin, const std::string& product) const
    {
        const auto slow = m_best.find(twin);
        const auto fast = m_best.find(product);
        if (slow == m_best.end() || fast == m_best.end()) {
            std::printf("ratio %s: not measured\n", product.c_str());
            return;
        }
        std::printf("ratio %s: %.1f\n", product.c_str(), slow->second / fast->second);
    }

private:
    static constexpr double noTime = std::numeric_limits<double>::infinity();
    std::map<std::string, double> m_best;
};

} // namespace bench
