// What one move and one release of a dragged edge marker cost, from the mouse
// event to the repainted graph window: with nothing loaded, and with four
// references, a target and eight maps of 1000 x 1000 pixels. Each valid
// reference runs the whole reflex within a move.

#include "support/PanelDesk.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>

namespace
{

using Desk = bench::PanelDesk<1000>;

void move(benchmark::State& state, bool loaded)
{
    const Desk desk(loaded);
    const int start = desk.edgePixel();
    desk.send(QEvent::MouseButtonPress, start);
    int step = 0;
    for (auto run : state) {
        step = (step + 1) % 5;
        desk.send(QEvent::MouseMove, start + step);
    }
    desk.send(QEvent::MouseButtonRelease, start);
}

void release(benchmark::State& state, bool loaded)
{
    const Desk desk(loaded);
    int direction = 3;
    for (auto run : state) {
        state.PauseTiming();
        const int start = desk.edgePixel();
        direction = -direction;
        desk.send(QEvent::MouseButtonPress, start);
        desk.send(QEvent::MouseMove, start + direction);
        state.ResumeTiming();
        desk.send(QEvent::MouseButtonRelease, start + direction);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    QApplication application(argc, argv);
    for (const bool loaded : {false, true}) {
        const std::string name = loaded ? "/loaded" : "/nothing";
        benchmark::RegisterBenchmark(("move" + name).c_str(), move, loaded)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("release" + name).c_str(), release, loaded)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
