// Measures the writing of a result map of 1000 x 1000 pixels.
#include "analysis/ResultText.h"

#include "data/A2DData.h"
#include "support/PlainResultWriter.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <QTemporaryFile>

#include <benchmark/benchmark.h>

#include <random>
#include <string>

namespace
{

const int side = bench::amount(1000, 50);
constexpr analysis::ValenceMix mix{true, 2.0, 3.0};
const tests::PlainValences valences{2, QStringLiteral("2"), QStringLiteral("3")};

/// The columns of a result with two references and a linear background.
constexpr std::array<bool, analysis::columnCount> wanted = {
    true, true, false, false, true, true, false, false, true, true, false, true, true};

/// A result map whose fractions are 0.5 and thicknesses are 1, plus noise. The other values
/// are only noise. With the noise, most numbers have six significant digits.
A2DData makeResult(bool extended)
{
    std::mt19937_64 random(1);
    std::normal_distribution<double> noise(0.0, 0.3);
    A2DData map;
    map.extended = extended;
    map.headerLines = {"# 1306", "# generated"};
    map.xNum = side;
    map.yNum = side;
    map.rows.reserve(qsizetype{side} * side);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            A2DRow row{double(x), double(y), 0.5 + noise(random), 1.0 + noise(random), {}};
            for (int i = 0; extended && i < analysis::columnCount; ++i) {
                row.values << noise(random);
            }
            map.rows << row;
        }
    }
    return map;
}

const A2DData& result(bool extended)
{
    static const A2DData simple = makeResult(false);
    static const A2DData full = makeResult(true);
    return extended ? full : simple;
}

/// A device that discards its input, so that only the formatting is measured.
class NullDevice : public QIODevice
{
public:
    NullDevice() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override { return size; }
};

bool writePlain(QIODevice& device, bool extended)
{
    return tests::writePlainResultMap(device, result(extended), valences, wanted);
}

bool writeProduct(QIODevice& device, bool extended)
{
    return analysis::writeResultMap(device, result(extended), mix, wanted);
}

using Write = bool (*)(QIODevice&, bool extended);

void makeText(benchmark::State& state, Write write, bool extended)
{
    result(extended);
    for ([[maybe_unused]] auto _ : state) {
        NullDevice device;
        if (!write(device, extended)) {
            state.SkipWithError("not written");
        }
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

void writeFile(benchmark::State& state, Write write, bool extended)
{
    result(extended);
    QTemporaryFile file;
    if (!file.open()) {
        state.SkipWithError("no temporary file");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        if (!file.resize(0) || !file.seek(0) || !write(file, extended)) {
            state.SkipWithError("not written");
        }
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

using Measure = void (*)(benchmark::State&, Write, bool);

bool registerPair(const std::string& name, Measure measure, bool extended)
{
    const auto add = [&](const char* ending, Write write) {
        benchmark::RegisterBenchmark((name + ending).c_str(), measure, write, extended)
            ->Unit(benchmark::kMillisecond);
    };
    add("/plain", writePlain);
    add("/product", writeProduct);
    return true;
}

const bool registered = registerPair("resultText/simple", makeText, false) &&
                        registerPair("resultText/extended", makeText, true) &&
                        registerPair("resultFile/simple", writeFile, false) &&
                        registerPair("resultFile/extended", writeFile, true);

} // namespace

AELK_BENCHMARK_MAIN()
