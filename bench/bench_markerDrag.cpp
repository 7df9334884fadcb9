// What one move and one release of a dragged edge marker cost, from the mouse
// event to the repainted graph window: with nothing loaded, and with four
// references, a target and eight maps of 1000 x 1000 pixels. Each valid
// reference runs the whole reflex within a move.

#include "display/Displays.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/MeasuredMaps.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>
#include <QMouseEvent>

#include <cmath>
#include <memory>

namespace
{

constexpr int side = 1000;
constexpr int mapCount = 8;
constexpr int spectrumPoints = 900;
constexpr double energiesEv[mapCount] = {8250, 8320, 8338, 8345, 8352, 8385, 8430, 8475};
constexpr double edgesEv[5] = {8343.6, 8345.4, 8347.2, 8333.0, 8344.5};
constexpr double edgeEv = 8340.0;

double absorbed(int spectrum, double energyEv)
{
    const double d = energyEv - edgesEv[spectrum];
    return 0.1 + 0.5 * (1 + std::erf(d / 3)) + 0.15 * std::exp(-0.03 * d * d);
}

void fill(AMutE& spectrum, int number)
{
    spectrum.valid = true;
    spectrum.minEnergy = 8100.0;
    spectrum.maxEnergy = 8100.0 + spectrumPoints - 1;
    spectrum.minMut = 0.1;
    spectrum.maxMut = 1.3;
    for (int i = 0; i < spectrumPoints; ++i) {
        const double energyEv = 8100.0 + i;
        spectrum.points.append({0.0, energyEv, absorbed(number, energyEv)});
    }
}

void loadMaps(FourPs& panel)
{
    const QList<A2DData> maps = bench::measuredMaps(mapCount, side, [](int k, double f) {
        return f * absorbed(0, energiesEv[k]) + (1 - f) * absorbed(1, energiesEv[k]);
    });
    for (int k = 0; k < mapCount; ++k) {
        AEPoint* row = panel.EPoints.at(k);
        static_cast<A2DData&>(*row) = maps.at(k);
        row->loaded = true;
        row->UseCB->setChecked(true);
        row->LCFCB->setChecked(k == 1 || k == 6);
        row->Energy->setText(QString::number(energiesEv[k]));
    }
}

/// The panel with its graph window open, ready to be dragged in the first plot.
struct Desk {
    explicit Desk(bool loaded)
    {
        panel.ui.EdgeE->setText(QString::number(edgeEv));
        if (loaded) {
            loadMaps(panel);
            for (int i = 0; i < panel.XafsFiles.size(); ++i) {
                fill(*panel.XafsFiles.at(i), i);
            }
            for (ARefFile* row : std::as_const(panel.Refs.RefRows)) {
                row->UseCB->setChecked(true);
            }
        }
        panel.Disps->show();
        plot = panel.Disps->frame(Displays::DRef1);
        QCoreApplication::processEvents();
        plot->DispA->cc.setReal(8100.0, 0.0, 8999.0, 1.4);
        plot->DispA->hasScale = true;
        // The first calculations take fresh memory from the system.
        for (int i = 0; i < 3; ++i) {
            panel.ui.EdgeE->setText(QString::number(edgeEv + i));
            panel.setEdge();
        }
        QCoreApplication::processEvents();
    }

    void send(QEvent::Type type, int x) const
    {
        const QPointF at(x, plot->DispA->height() / 2);
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, plot->DispA->mapToGlobal(at), button, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(plot->DispA, &event);
        QCoreApplication::processEvents();
    }

    int edgePixel() const
    {
        return static_cast<int>(plot->DispA->cc.r2sX(panel.ui.EdgeE->text().toDouble()));
    }

    FourPs panel;
    DispABase* plot = nullptr;
};

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
