// Measures the loading of a four-column text map of 1000 x 1000 pixels.
#include "data/A2DData.h"
#include "data/MapTextReader.h"
#include "support/BigMap.h"
#include "support/PlainMapReader.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <QFile>

namespace
{

const int side = bench::amount(1000, 50);

const QString& mapPath()
{
    static const QTemporaryDir dir;
    static const QString path = bench::writeBigMap(dir, QStringLiteral("map.dat"), side, side);
    return path;
}

/// Measures @p read(path, map), which reads the file into an empty map and returns whether
/// the file is valid.
template <typename Read>
void measure(benchmark::State& state, Read read)
{
    const QString& path = mapPath();
    for (auto _ : state) {
        A2DData map;
        if (!read(path, map) || map.rows.size() != qsizetype{side} * side) {
            state.SkipWithError("the map was not read");
            break;
        }
        benchmark::DoNotOptimize(map.rows.constData());
    }
    state.SetBytesProcessed(state.iterations() * QFile(path).size());
    state.SetItemsProcessed(state.iterations() * qint64{side} * side);
}

void ignoreEnergy(const QString&) {}

void mapTextReference(benchmark::State& state)
{
    measure(state, [](const QString& path, A2DData& map) {
        return tests::readPlainMap(path, map, ignoreEnergy);
    });
}
BENCHMARK(mapTextReference)->Name("loadTextMap/plain")->Unit(benchmark::kMillisecond);

void mapText(benchmark::State& state)
{
    measure(state, [](const QString& path, A2DData& map) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) && data::readMapText(file, map, ignoreEnergy);
    });
}
BENCHMARK(mapText)->Name("loadTextMap/product")->Unit(benchmark::kMillisecond);

} // namespace

AELK_BENCHMARK_MAIN()
