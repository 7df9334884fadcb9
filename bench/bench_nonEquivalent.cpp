// The non-equivalent method on a stack of 1000 x 1000 pixels: the reference
// implementation, which allocates, builds, factorises and solves a matrix and
// parses the valences for every pixel, beside the product. The product runs once
// with maps that are new to it and once with maps that it knows.

#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/NonEquivalentMap.h"
#include "data/A2DData.h"
#include "support/MeasuredMaps.h"
#include "support/PlainFits.h"
#include "support/RatioReporter.h"

#include <benchmark/benchmark.h>

#include <QList>

#include <cmath>

namespace
{

constexpr int side = 1000;
constexpr int mapCount = 8;
constexpr double energiesEv[mapCount] = {8250, 8320, 8338, 8345, 8352, 8385, 8430, 8475};
constexpr double edgesEv[4] = {8343.6, 8345.4, 8347.2, 8333.0};

// An edge with a white line, background off.
double absorbed(int reference, double energyEv)
{
    const double d = energyEv - edgesEv[reference];
    return 0.5 * (1 + std::erf(d / 3)) + 0.15 * (3 - reference) * std::exp(-0.03 * d * d);
}

// A ramp from the second reference to the first along each line.
const QList<A2DData>& maps()
{
    static const QList<A2DData> made = bench::measuredMaps(mapCount, side, [](int k, double f) {
        return 0.05 + f * absorbed(0, energiesEv[k]) + (1 - f) * absorbed(1, energiesEv[k]);
    });
    return made;
}

tests::PlainNeqStack plainStack(bool victoreen, int references, const QList<int>& rows)
{
    tests::PlainNeqStack stack;
    stack.victoreen = victoreen;
    stack.jumpSum = references;
    for (int j = 0; j < references; ++j) {
        QList<double> values;
        for (const int k : rows) {
            values.append(absorbed(j, energiesEv[k]));
        }
        stack.refValues.append(values);
        stack.weights.append(1.0 / references);
        stack.valences.append(QString::number((j + 2) % 5));
    }
    for (const int k : rows) {
        stack.energies.append(energiesEv[k]);
        stack.maps.append(&maps().at(k));
    }
    return stack;
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
    std::array<HistogramCounts, 10> counts;
    for (HistogramCounts& histogram : counts) {
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
