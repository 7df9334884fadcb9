// Measures the three forms of the four-point family for maps of 1000 x 1000 pixels. The
// reference implementation parses texts and looks up references for every pixel. The
// program is measured without and with cached absorbances.

#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/MapCalculation.h"
#include "data/A2DData.h"
#include "support/MeasuredMaps.h"
#include "support/PlainMapForms.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QList>

namespace
{

const int side = bench::amount(1000, 50);
constexpr int mapCount = 6;
constexpr int vRow = 2;

struct PointTexts {
    const char* energy;
    const char* r1;
    const char* r2;
};

constexpr PointTexts pointTexts[mapCount] = {
    {"8250", "0.00123", "0.00118"}, {"8320", "0.00345", "0.00351"}, {"8345", "0.612", "0.334"},
    {"8385", "1.0123", "1.0098"},   {"8430", "1.0034", "1.0011"},   {"8475", "0.9987", "0.9992"}};

// Without noise the absorbance is 0.05 plus the product of the r1 value of pointTexts and a
// factor that increases with x from 0.5 to 1.5.
const QList<A2DData>& maps()
{
    static const QList<A2DData> made = bench::measuredMaps(mapCount, side, [](int k, double f) {
        return 0.05 + QString(QLatin1String(pointTexts[k].r1)).toDouble() * (0.5 + f);
    });
    return made;
}

tests::PlainStack plainStack(const QList<int>& rows)
{
    tests::PlainStack stack;
    stack.references = {{true, true, QStringLiteral("2")},
                        {true, true, QStringLiteral("3")},
                        {false, true, QStringLiteral("4")},
                        {false, true, QStringLiteral("0")}};
    stack.r = 1.02;
    for (const int k : rows) {
        stack.points.append({&maps().at(k), k == vRow, QLatin1String(pointTexts[k].energy),
                             QLatin1String(pointTexts[k].r1), QLatin1String(pointTexts[k].r2)});
    }
    return stack;
}

using PlainForm = decltype(&tests::plainThreePoints);
using ProductForm = decltype(&analysis::mapThreePoints);

void plainForm(benchmark::State& state, PlainForm form, const QList<int>& rows)
{
    const tests::PlainStack stack = plainStack(rows);
    A2DData result;
    for ([[maybe_unused]] auto _ : state) {
        tests::PlainHistogram valence{1.5, 0.04, QList<int>(51, 0), 0, 0, 0};
        tests::PlainHistogram thickness{-0.5, 0.06, QList<int>(51, 0), 0, 0, 0};
        form(stack, result, valence, thickness);
        benchmark::DoNotOptimize(result.rows.constData());
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

void productForm(benchmark::State& state, ProductForm form, const QList<int>& rows, bool isNew)
{
    analysis::MapStack stack = tests::mapStackOf(plainStack(rows));
    analysis::CalculationMemory memory;
    stack.memory = &memory;
    A2DData result;
    const auto calculate = [&] {
        analysis::HistogramCounts valence;
        analysis::HistogramCounts thickness;
        valence.start(1.52, 3.52, 51);
        thickness.start(-0.47, 2.53, 51);
        form(stack, result, valence, thickness);
        benchmark::DoNotOptimize(result.rows.constData());
    };
    calculate();
    for ([[maybe_unused]] auto _ : state) {
        if (isNew) {
            memory.absorbances.prepare({});
        }
        calculate();
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

bool registerForm(const std::string& name, PlainForm plain, ProductForm product,
                  const QList<int>& rows)
{
    benchmark::RegisterBenchmark((name + "/plain").c_str(), plainForm, plain, rows)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/product").c_str(), productForm, product, rows, true)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/again/product").c_str(), productForm, product, rows,
                                 false)
        ->Unit(benchmark::kMillisecond);
    return true;
}

const bool registered =
    registerForm("threePoints", tests::plainThreePoints, analysis::mapThreePoints, {1, 2, 3}) &&
    registerForm("exactFourPoints", tests::plainExactFourPoints, analysis::mapExactFourPoints,
                 {0, 1, 2, 3}) &&
    registerForm("leastSquare", tests::plainLeastSquare, analysis::mapLeastSquare,
                 {0, 1, 2, 3, 4, 5});

} // namespace

AELK_BENCHMARK_MAIN()
