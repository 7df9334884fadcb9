// Measures the non-equivalent method for maps of 1000 x 1000 pixels. For every pixel the
// reference implementation parses the valences, allocates a matrix, fills it and solves
// the linear system. The program is measured without and with cached absorbances.

#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/NonEquivalentMap.h"
#include "data/A2DData.h"
#include "support/NeqStacks.h"
#include "support/PlainFits.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QList>

#include <map>

namespace
{

const int side = bench::amount(1000, 50);

/// Maps at the energies neqEnergiesEv[i] for each i in @p rows. The first call with these
/// indices creates the maps; later calls return the same maps.
const QList<A2DData>& mapsOf(const QList<int>& rows)
{
    static std::map<QList<int>, QList<A2DData>> made;
    QList<A2DData>& maps = made[rows];
    if (maps.isEmpty()) {
        maps = bench::neqMaps(side, rows);
    }
    return maps;
}

tests::PlainNeqStack plainStack(bool victoreen, int references, const QList<int>& rows)
{
    return bench::neqStack(mapsOf(rows), victoreen, references, rows);
}

void runPlain(benchmark::State& state, bool victoreen, int references, const QList<int>& rows)
{
    const tests::PlainNeqStack stack = plainStack(victoreen, references, rows);
    A2DData result;
    for ([[maybe_unused]] auto _ : state) {
        const tests::PlainHistogram shares{-0.5, 0.04, QList<int>(51, 0), 0, 0, 0};
        tests::PlainNeqHistograms histograms{shares, shares, {}, {}};
        histograms.ratio = QList<tests::PlainHistogram>(4, shares);
        histograms.dMut = histograms.ratio;
        tests::plainNonEquivalent(stack, result, histograms);
        benchmark::DoNotOptimize(result.rows.constData());
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

void calculate(const analysis::NeqStack& stack, A2DData& result)
{
    std::array<analysis::HistogramCounts, 10> counts;
    for (analysis::HistogramCounts& histogram : counts) {
        histogram.start(-0.48, 1.52, 51);
    }
    analysis::mapNonEquivalent(stack, result,
                               {&counts[0],
                                &counts[1],
                                {&counts[2], &counts[3], &counts[4], &counts[5]},
                                {&counts[6], &counts[7], &counts[8], &counts[9]}});
    benchmark::DoNotOptimize(result.rows.constData());
}

void runProduct(benchmark::State& state, bool victoreen, int references, const QList<int>& rows,
                bool isNew)
{
    analysis::NeqStack stack = tests::neqStackOf(plainStack(victoreen, references, rows));
    analysis::CalculationMemory memory;
    stack.memory = &memory;
    A2DData result;
    calculate(stack, result);
    for ([[maybe_unused]] auto _ : state) {
        if (isNew) {
            memory.absorbances.prepare({});
        }
        calculate(stack, result);
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

bool registerBoth(const std::string& name, bool victoreen, int references, const QList<int>& rows)
{
    benchmark::RegisterBenchmark((name + "/plain").c_str(), runPlain, victoreen, references, rows)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/product").c_str(), runProduct, victoreen, references,
                                 rows, true)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/again/product").c_str(), runProduct, victoreen,
                                 references, rows, false)
        ->Unit(benchmark::kMillisecond);
    return true;
}

const bool registered = registerBoth("twoReferencesLinear", false, 2, {1, 3, 5, 7}) &&
                        registerBoth("fourReferencesVictoreen", true, 4, {0, 1, 2, 3, 4, 5, 6, 7});

} // namespace

AELK_BENCHMARK_MAIN()
