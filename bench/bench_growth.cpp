// Compares the time per pixel of the non-equivalent method in a large and in a small map.
// The absorbances of the maps are not cached. Also prints the peak memory of the process
// after the first calculations with large maps.

#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/MapCalculation.h"
#include "analysis/NonEquivalentMap.h"
#include "support/NeqStacks.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <array>
#include <fstream>
#include <string>

using analysis::HistogramCounts;

namespace
{

const int smallSide = bench::amount(1000, 50);
const int largeSide = bench::amount(3000, 150);
constexpr int runs = 3;

std::string nameOf(int side)
{
    return "twoReferencesLinear/" + std::to_string(side);
}

void calculate(const analysis::NeqStack& stack, A2DData& result)
{
    std::array<HistogramCounts, 6> counts;
    for (HistogramCounts& histogram : counts) {
        histogram.start(-0.48, 1.52, 51);
    }
    analysis::mapNonEquivalent(
        stack, result,
        {&counts[0], &counts[1], {&counts[2], &counts[3]}, {&counts[4], &counts[5]}});
    benchmark::DoNotOptimize(result.rows.constData());
}

/// Peak memory of the process in MB; 0 if the system does not report it.
long peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    return 0;
}

long peakOfFourPoints = 0;
long peakOfNonEquivalent = 0;

void calculateFourPoints(const QList<A2DData>& maps, analysis::CalculationMemory& memory,
                         A2DData& result)
{
    analysis::MapStack stack;
    stack.others = {{&maps.at(0), 8320, 0.1, 0.2},
                    {&maps.at(1), 8345, 0.6, 0.3},
                    {&maps.at(2), 8385, 1.1, 1.0}};
    stack.v = {&maps.at(3), 8475, 1.0, 0.9};
    stack.r = 1.0;
    stack.memory = &memory;
    std::array<HistogramCounts, 2> counts;
    for (HistogramCounts& histogram : counts) {
        histogram.start(-0.48, 1.52, 51);
    }
    analysis::mapExactFourPoints(stack, result, counts[0], counts[1]);
}

/// Copies of the maps with separate lists of rows. The cache compares the addresses of the
/// lists, so it contains no absorbances for the copies.
QList<A2DData> copiesOf(const QList<A2DData>& maps)
{
    QList<A2DData> copies = maps;
    for (A2DData& map : copies) {
        map.rows.detach();
    }
    return copies;
}

void measure(benchmark::State& state, int side)
{
    const QList<int> rows{1, 3, 5, 7};
    const QList<A2DData> first = bench::neqMaps(side, rows);
    analysis::CalculationMemory memory;
    A2DData result;
    const auto calculateFrom = [&](const QList<A2DData>& maps) {
        analysis::NeqStack stack = tests::neqStackOf(bench::neqStack(maps, false, 2, rows));
        stack.memory = &memory;
        calculate(stack, result);
    };
    const bool isFirstOfAll = side == largeSide && peakOfNonEquivalent == 0;
    if (isFirstOfAll) {
        calculateFourPoints(first, memory, result);
        peakOfFourPoints = peakMemory();
    }
    calculateFrom(first); // not measured: it also requests memory from the system
    if (isFirstOfAll) {
        peakOfNonEquivalent = peakMemory();
    }
    const QList<A2DData> second = copiesOf(first);
    bool isSecondNext = true;
    for ([[maybe_unused]] auto _ : state) {
        calculateFrom(isSecondNext ? second : first);
        isSecondNext = !isSecondNext;
    }
    state.SetItemsProcessed(state.iterations() * qint64{side} * side);
}

} // namespace

int main(int argc, char** argv)
{
    for (const int side : {largeSide, smallSide}) {
        benchmark::RegisterBenchmark(nameOf(side).c_str(), measure, side)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(runs);
    }
    return bench::runWithRatios(argc, argv, [](const bench::RatioReporter& reporter) {
        const auto perPixel = [&](int side) {
            return reporter.medianOf(nameOf(side) + "/iterations:" + std::to_string(runs)) /
                   (static_cast<double>(side) * side);
        };
        std::printf("growth twoReferencesLinear %d / %d = %.2f\n", largeSide, smallSide,
                    perPixel(largeSide) / perPixel(smallSide));
        std::printf("peak memory, four maps of %d x %d = %ld MB, by exact four points %ld MB\n",
                    largeSide, largeSide, peakOfNonEquivalent, peakOfFourPoints);
    });
}
