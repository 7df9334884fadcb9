// Prints, beside the absolute times, how many times faster each "x/product" is
// than its "x/plain" of the same call, by the best processor time of each: the
// roads run in one thread, and a busy machine spoils wall times.
#pragma once

#include <benchmark/benchmark.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace bench
{

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter()
        : ConsoleReporter(OO_None) // no colours: the table goes into files
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                double& best = m_best.try_emplace(run.benchmark_name(), noTime).first->second;
                best = std::min(best, run.GetAdjustedCPUTime());
            }
        }
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        for (const auto& [name, time] : m_best) {
            const std::size_t end = name.rfind("/plain");
            if (end == std::string::npos) {
                continue;
            }
            const auto product = m_best.find(name.substr(0, end) + "/product");
            if (product != m_best.end()) {
                std::printf("ratio %-28s plain / product = %.1f\n", name.substr(0, end).c_str(),
                            time / product->second);
            }
        }
    }

private:
    static constexpr double noTime = std::numeric_limits<double>::infinity();
    std::map<std::string, double> m_best;
};

/// Runs the benchmarks of the program and prints the ratios.
inline int runWithRatios(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

} // namespace bench

#define AELK_BENCHMARK_MAIN()                                                                      \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return bench::runWithRatios(argc, argv);                                                   \
    }
