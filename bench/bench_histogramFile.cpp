// Measures the formatting of a histogram file with a million bins.
#include "analysis/HistogramCounts.h"

#include <benchmark/benchmark.h>

namespace
{

void makeText(benchmark::State& state, double from, double to)
{
    analysis::HistogramCounts histogram;
    histogram.start(from, to, 1'000'000);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(histogram.fileText());
    }
    state.SetItemsProcessed(state.iterations() * histogram.boxes);
}

} // namespace

BENCHMARK_CAPTURE(makeText, valences, -0.5, 3.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeText, hugeLimits, -1e300, 1e300)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
