// Measures one paint on a surface of 800 x 800 pixels: a result map of 1000 x 1000
// pixels, the histograms of this result, and a plot of thickness against valence whose
// million points are spread over the plot. The reference implementations fill one
// rectangle per map pixel and draw two circles per point. Before the measurement, this
// benchmark checks that both implementations paint the same picture of the plot.

#include "display/ChCoord.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Graph.h"
#include "display/GridLines.h"
#include "display/Histgram.h"
#include "panel/FourPs.h"
#include "support/RatioReporter.h"
#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QStylePainter>

#include <cmath>
#include <cstdio>
#include <random>

namespace
{

const int side = bench::amount(1000, 50);
constexpr QSize surfaceSize(800, 800);
constexpr int valence = 11;
constexpr int totalDMut = 12;

/// A result map whose valence is a ramp and whose amount is a wave. Normally distributed
/// errors with the standard deviation @p noise are added to both.
A2DData resultMap(double noise)
{
    std::mt19937_64 random(5);
    std::normal_distribution<double> error; // its standard deviation must be above 0
    A2DData map;
    map.extended = true;
    map.xNum = side;
    map.yNum = side;
    map.rows.reserve(qsizetype{side} * side);
    for (int i = 0; i < side * side; ++i) {
        QList<double> values(13, 0.0);
        values[valence] = 2.0 + (i % side) / static_cast<double>(side) + noise * error(random);
        values[totalDMut] = 1.0 + 0.5 * std::sin(0.02 * (i / side)) + noise * error(random);
        map.rows.append({0.0, 0.0, 0.0, values[totalDMut], values});
    }
    return map;
}

/// A panel that displays a result map.
struct ResultPanel {
    explicit ResultPanel(double noise)
    {
        panel.BaseData = resultMap(noise);
        panel.MapDisp->setZRange(1.5, 3.5);
        const auto set = [](QLineEdit* edit, const char* text) {
            edit->setText(QLatin1String(text));
        };
        set(panel.ui.HgAFrom, "1.5");
        set(panel.ui.HgATo, "3.5");
        set(panel.ui.HgTFrom, "0");
        set(panel.ui.HgTTo, "2");
        panel.HistV->init();
        panel.HistT->init();
        for (const A2DRow& row : std::as_const(panel.BaseData.rows)) {
            panel.HistV->add(row.values.at(valence));
            panel.HistT->add(row.values.at(totalDMut));
        }
        for (DispArea* surface : {panel.MapDisp->DispA, plot(Displays::DHistA),
                                  plot(Displays::DHistDMut), plot(Displays::DDMutVsA)}) {
            surface->setFixedSize(surfaceSize);
        }
    }

    DispArea* plot(Displays::DispId id) const { return panel.Disps->frame(id)->DispA; }

    FourPs panel;
};

void paint(benchmark::State& state, const QList<DispArea*>& surfaces)
{
    QImage picture(surfaceSize, QImage::Format_RGB32);
    for ([[maybe_unused]] auto run : state) {
        for (DispArea* surface : surfaces) {
            surface->render(&picture);
        }
        benchmark::DoNotOptimize(picture.constBits());
    }
}

/// Reference implementation of a map: four coordinate conversions and one fillRect() per
/// map pixel, even if the pixel is outside the view.
template <class ColorAt>
void plainCells(QPainter* p, const ChCoord& cc, ColorAt colorAt)
{
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int left = static_cast<int>(cc.r2sX(x));
            const int right = static_cast<int>(cc.r2sX(x + 1));
            const int top = static_cast<int>(cc.r2sY(y + 1));
            const int bottom = static_cast<int>(cc.r2sY(y));
            p->fillRect(left, top, right - left, bottom - top, colorAt(x, y));
        }
    }
}

void plainMap(benchmark::State& state, double noise)
{
    const ResultPanel setup(noise);
    const A2DData& map = setup.panel.BaseData;
    const cBar* bar = setup.panel.MapDisp->CBar;
    DispArea surface;
    surface.setFixedSize(surfaceSize);
    QObject::connect(&surface, &DispArea::draw, &surface, [&](QStylePainter* p) {
        p->fillRect(surface.rect(), Qt::white);
        surface.fitTo(0.0, 0.0, side, side);
        plainCells(p, surface.cc, [&](int x, int y) {
            return bar->color(map.rows.at(y * side + x).values.at(valence));
        });
    });
    paint(state, {&surface});
}

void productMap(benchmark::State& state, double noise)
{
    const ResultPanel setup(noise);
    setup.panel.MapDisp->DispA->fitTo(0.0, 0.0, side, side);
    paint(state, {setup.panel.MapDisp->DispA});
}

void histogramPair(benchmark::State& state)
{
    const ResultPanel setup(0.02);
    paint(state, {setup.plot(Displays::DHistA), setup.plot(Displays::DHistDMut)});
}

/// A panel with a result whose points are spread over the plot of thickness against
/// valence.
struct SpreadPanel : ResultPanel {
    SpreadPanel()
        : ResultPanel(0.02)
    {
        std::mt19937_64 random(7);
        std::uniform_real_distribution<double> valences(1.5, 3.5);
        std::uniform_real_distribution<double> amounts(0.0, 2.0);
        for (A2DRow& row : panel.BaseData.rows) {
            row.values[valence] = valences(random);
            row.values[totalDMut] = amounts(random);
            row.i0 = row.values.at(totalDMut);
        }
    }
};

/// Reference implementation of the plot of thickness against valence: draws two circles for
/// every point, even if the point is outside the view or covered by other points.
class PlainThickness : public display::Graph
{
public:
    explicit PlainThickness(const FourPs& panel)
        : m_panel(panel)
    {
    }

    bool isEmpty() const override { return false; }
    Range range() const override { return {1.5, 0.0, 3.5, 2.0}; }

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override
    {
        p->setPen(display::gridColor);
        display::drawVerticalGrid(p, cc, display::valenceGrid(0.0, 1.0));
        p->setPen(m_panel.Colors.colors.first());
        for (const A2DRow& row : m_panel.BaseData.rows) {
            const int x = static_cast<int>(cc.r2sX(row.values.at(valence)));
            const int y = static_cast<int>(cc.r2sY(row.values.at(totalDMut)));
            for (const int radius : {1, 2}) {
                p->drawEllipse(QRect(x - radius, y - radius, 2 * radius, 2 * radius));
            }
        }
    }

private:
    const FourPs& m_panel;
};

/// A panel that paints the plot of thickness against valence with the reference
/// implementation.
struct PlainSpreadPanel : SpreadPanel {
    PlainSpreadPanel()
    {
        QObject::disconnect(panel.Disps, &Displays::draw, &panel, &FourPs::draw);
        QObject::connect(panel.Disps, &Displays::draw, &panel,
                         [this](Displays::DispId, DispABase* frame, QStylePainter* p) {
                             display::Graph::Range range;
                             PlainThickness(panel).paint(frame, p, "Valence", "Thick.", &range);
                         });
    }
};

template <class SomePanel>
void thicknessPlot(benchmark::State& state)
{
    const SomePanel setup;
    paint(state, {setup.plot(Displays::DDMutVsA)});
}

/// Whether the program and the reference implementation paint the same picture of the plot.
bool isSameThicknessPlot()
{
    const SpreadPanel product;
    const PlainSpreadPanel plain;
    return product.plot(Displays::DDMutVsA)->grab().toImage() ==
           plain.plot(Displays::DDMutVsA)->grab().toImage();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    for (const auto& [name, noise] :
         {std::pair("resultMap/smooth", 0.0), {"resultMap/noisy", 0.02}}) {
        benchmark::RegisterBenchmark((std::string(name) + "/plain").c_str(), plainMap, noise)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((std::string(name) + "/product").c_str(), productMap, noise)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("histogramPair", histogramPair)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("thicknessPlot/plain", thicknessPlot<PlainSpreadPanel>)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("thicknessPlot/product", thicknessPlot<SpreadPanel>)
        ->Unit(benchmark::kMillisecond);
    if (!isSameThicknessPlot()) {
        std::fputs("The pictures of thicknessPlot differ.\n", stderr);
        return 1;
    }
    return bench::runWithRatios(argc, argv);
}
