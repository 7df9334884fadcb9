// Prints, beside the absolute times, how many times faster each "x/product" is
// than its "x/plain" of the same call.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench
{

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                m_times[run.benchmark_name()].push_back(run.GetAdjustedRealTime());
            }
        }
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        for (const auto& [name, times] : m_times) {
            const std::size_t end = name.rfind("/plain");
            if (end == std::string::npos) {
                continue;
            }
            const auto product = m_times.find(name.substr(0, end) + "/product");
            if (product != m_times.end()) {
                std::printf("ratio %-28s plain / product = %.1f\n", name.substr(0, end).c_str(),
                            median(times) / median(product->second));
            }
        }
    }

private:
    static double median(std::vector<double> times)
    {
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

    std::map<std::string, std::vector<double>> m_times;
};

/// Runs the benchmarks of the program and prints the ratios.
inline int runWithRatios(int argc, char** argv)
{
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
