// Measures one move and one release of a dragged edge marker, from the mouse event to the
// repainted graph window: without data, and with four references, a target and eight maps
// of 1000 x 1000 pixels. A move triggers the recalculation once per valid reference. The
// reference implementation of a move is one map calculation and one paint of most plots.

#include "support/DragPanel.h"
#include "support/PlainFits.h"
#include "support/PlainHistograms.h"
#include "support/PlainSpectra.h"
#include "support/PlainThickness.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

namespace
{

const int side = bench::amount(1000, 50);

tests::PlainNeqStack plainStack(const FourPs& panel)
{
    constexpr int references = 4;
    tests::PlainNeqStack stack;
    stack.jumpSum = references;
    for (int j = 0; j < references; ++j) {
        QList<double> values;
        for (const double energyEv : bench::dragData::energiesEv) {
            values.append(bench::dragData::absorbed(j, energyEv) - 0.1);
        }
        stack.refValues.append(values);
        stack.weights.append(1.0 / references);
        stack.valences.append(QString::number(j));
    }
    stack.energies =
        QList<double>(bench::dragData::energiesEv.cbegin(), bench::dragData::energiesEv.cend());
    for (const AEPoint* row : panel.EPoints) {
        stack.maps.append(row);
    }
    return stack;
}

tests::PlainCurve curveOf(const AMutE& spectrum)
{
    tests::PlainCurve curve;
    for (const MutPoint& point : spectrum.points) {
        curve.points.append(QPointF(point.energy, point.mut));
    }
    return curve;
}

/// Paints each of these plots once: the plots of the single spectra, the plot of all
/// spectra, the histograms, and the plot of thickness against valence.
void paintPlainPlots(const FourPs& panel, const A2DData& result,
                     const tests::PlainNeqHistograms& counts)
{
    const auto sizeOf = [&](Displays::DispId id) { return panel.Disps->frame(id)->DispA->size(); };
    const tests::PlotRange energies{8100.0, 0.0, 8999.0, 1.4};
    tests::PlainSpectra all(sizeOf(Displays::DMuts), energies);
    for (const AXafsFileSelect* row : panel.XafsFiles) {
        all.curves.append(curveOf(*row));
        tests::PlainSpectra single(sizeOf(Displays::DRef1), energies);
        single.curves = {all.curves.last()};
        benchmark::DoNotOptimize(single.picture());
    }
    benchmark::DoNotOptimize(all.picture());
    for (const tests::PlainHistogram& histogram : {counts.valence, counts.total}) {
        tests::PlainHistograms bars;
        bars.main = tests::readyCounts(-0.48, 1.52, histogram.bins);
        bars.mainColor = Qt::blue;
        const double highest = bars.main.total + 1.0;
        benchmark::DoNotOptimize(
            bars.picture({sizeOf(Displays::DHistA), {-0.5, 0.0, 1.5, highest}}));
    }
    tests::PlainThickness thickness;
    for (const A2DRow& row : result.rows) {
        thickness.points.append(QPointF(row.values.at(11), row.values.at(12)));
    }
    benchmark::DoNotOptimize(
        thickness.picture({sizeOf(Displays::DDMutVsA), {-0.5, -0.5, 4.5, 4.5}}));
}

/// Reference implementation of a move: one map calculation and one paint.
void movePlain(benchmark::State& state)
{
    const bench::DragPanel setup(true, side);
    const tests::PlainNeqStack stack = plainStack(setup.panel);
    for ([[maybe_unused]] auto run : state) {
        const tests::PlainHistogram shares{-0.5, 0.04, QList<int>(51, 0), 0, 0, 0};
        const QList<tests::PlainHistogram> ofReferences(4, shares);
        tests::PlainNeqHistograms histograms{shares, shares, ofReferences, ofReferences};
        A2DData result;
        tests::plainNonEquivalent(stack, result, histograms);
        paintPlainPlots(setup.panel, result, histograms);
    }
}

void move(benchmark::State& state, bool loaded)
{
    const bench::DragPanel setup(loaded, side);
    const int start = setup.edgePixel();
    setup.send(QEvent::MouseButtonPress, start);
    int step = 0;
    for (auto run : state) {
        step = (step + 1) % 5;
        setup.send(QEvent::MouseMove, start + step);
    }
    setup.send(QEvent::MouseButtonRelease, start);
}

void release(benchmark::State& state, bool loaded)
{
    const bench::DragPanel setup(loaded, side);
    int direction = 3;
    for (auto run : state) {
        state.PauseTiming();
        const int start = setup.edgePixel();
        direction = -direction;
        setup.send(QEvent::MouseButtonPress, start);
        setup.send(QEvent::MouseMove, start + direction);
        state.ResumeTiming();
        setup.send(QEvent::MouseButtonRelease, start + direction);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const auto add = [](const char* name, auto measure, auto... arguments) {
        benchmark::RegisterBenchmark(name, measure, arguments...)->Unit(benchmark::kMillisecond);
    };
    add("markerMove/plain", movePlain);
    add("markerMove/product", move, true);
    add("move/nothing", move, false);
    add("release/nothing", release, false);
    add("release/loaded", release, true);
    return bench::runWithRatios(argc, argv);
}
