// Prints absolute times and ratios. The ratio of a benchmark "NAME/product" is its speed
// relative to the reference implementation "NAME/plain" in the same run.
#pragma once

#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench
{

/// Prints the ratios of processor times. Each time is the median of all repetitions.
/// The library measures the processor time of the main thread. This time includes all
/// calculations, because the program calculates in the main thread. Wall time would be
/// unreliable on a busy machine.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter()
        : ConsoleReporter(OO_None) // no colour codes, because the output is saved to files
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                m_times[run.benchmark_name()].push_back(run.GetAdjustedCPUTime());
            }
        }
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        for (const auto& [name, times] : m_times) {
            const std::size_t end = name.rfind("/product");
            const double plain = end == std::string::npos ? 0.0 : plainTime(name.substr(0, end));
            if (plain > 0.0) {
                std::printf("ratio %-28s plain / product = %.1f\n", name.substr(0, end).c_str(),
                            plain / median(times));
            }
        }
    }

    /// The median time per iteration of the benchmark @p name, in the time unit of this
    /// benchmark; 0 if the benchmark did not run or all its runs failed.
    double medianOf(const std::string& name) const
    {
        const auto times = m_times.find(name);
        return times == m_times.end() ? 0.0 : median(times->second);
    }

private:
    static double median(std::vector<double> times)
    {
        std::sort(times.begin(), times.end());
        const std::size_t middle = times.size() / 2;
        return times.size() % 2 == 1 ? times[middle] : 0.5 * (times[middle - 1] + times[middle]);
    }

    /// The time of the reference implementation of a benchmark; 0 if there is none. A variant
    /// "NAME/again" has the same reference implementation as "NAME".
    double plainTime(const std::string& name) const
    {
        const double time = medianOf(name + "/plain");
        const std::size_t variant = name.rfind('/');
        return time > 0.0 || variant == std::string::npos
                   ? time
                   : medianOf(name.substr(0, variant) + "/plain");
    }

    std::map<std::string, std::vector<double>> m_times;
};

/// Runs all benchmarks five times in random order (once if AELK_BENCH_SHORTEST is set)
/// and prints the ratios. The command line can override these settings.
///
/// @param more  called with the reporter at the end, for additional lines
/// @return 1, without running a benchmark, if an argument is unknown; otherwise 0, even if a
///         benchmark failed
template <class More>
int runWithRatios(int argc, char** argv, More more)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    std::string repetitions =
        isShortest() ? "--benchmark_repetitions=1" : "--benchmark_repetitions=5";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + std::min(argc, 1),
                     {repetitions.data(), interleaving.data()});
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    more(reporter);
    benchmark::Shutdown();
    return 0;
}

inline int runWithRatios(int argc, char** argv)
{
    return runWithRatios(argc, argv, [](const RatioReporter&) {});
}

} // namespace bench

#define AELK_BENCHMARK_MAIN()                                                                      \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return bench::runWithRatios(argc, argv);                                                   \
    }
