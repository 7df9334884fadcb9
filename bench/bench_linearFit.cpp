// Measures the linear combination fit of a target by four references, which runs at the
// end of every recalculation. For every point of the target the reference implementation
// searches each reference from its first point.

#include "analysis/LinearFit.h"
#include "data/AMutE.h"
#include "support/PlainFits.h"
#include "support/RatioReporter.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace
{

// A spectrum of `count` points over a range of 1000 eV: an absorption edge at
// `edgeEv` on a falling background.
AMutE spectrum(double edgeEv, int count)
{
    AMutE made;
    for (int i = 0; i < count; ++i) {
        const double e = 8000.0 + 1000.0 * i / count;
        made.points.append({0.0, e, 1.0 / e + 0.5 * (1 + std::erf((e - edgeEv) / 3))});
    }
    made.preEdgeEnd = 8300;
    made.postEdgeStart = 8450;
    made.edgeEnergy = edgeEv;
    made.valid = true;
    made.fitLines();
    return made;
}

struct Spectra {
    explicit Spectra(int count)
        : target(spectrum(8345, count))
        , made{spectrum(8343.6, count), spectrum(8345.4, count), spectrum(8347.2, count),
               spectrum(8333, count)}
    {
        for (const AMutE& reference : made) {
            references.append(&reference);
        }
    }

    AMutE target;
    QList<AMutE> made;
    QList<const AMutE*> references;
    QList<double> valences{2, 3, 4, 0};
};

void referenceFit(benchmark::State& state, int count)
{
    const Spectra spectra(count);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(tests::plainLinearFit(spectra.target, spectra.references,
                                                       spectra.valences, 8000, 9000));
    }
}

void productFit(benchmark::State& state, int count)
{
    const Spectra spectra(count);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(analysis::fitLinearCombination(spectra.target, spectra.references,
                                                                spectra.valences, {8000, 9000, 2}));
    }
}

bool registerPair(int count)
{
    const std::string name = std::to_string(count) + "points";
    benchmark::RegisterBenchmark((name + "/plain").c_str(), referenceFit, count)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/product").c_str(), productFit, count)
        ->Unit(benchmark::kMillisecond);
    return true;
}

const bool registered = registerPair(500) && registerPair(5000);

} // namespace

AELK_BENCHMARK_MAIN()
