// A panel with a visible graph window, for benchmarks that drag the edge marker. The panel
// has either no data, or four references, a target and eight maps.
#pragma once

#include "display/Displays.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/MeasuredMaps.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <array>
#include <cmath>

namespace bench
{

/// The constant inputs of a DragPanel.
namespace dragData
{

constexpr int spectrumPoints = 900;
constexpr double edgeEv = 8340.0;
constexpr std::array<double, 8> energiesEv{8250, 8320, 8338, 8345, 8352, 8385, 8430, 8475};
constexpr std::array<double, 5> edgesEv{8343.6, 8345.4, 8347.2, 8333.0, 8344.5};

inline double absorbed(int spectrum, double energyEv)
{
    const double d = energyEv - edgesEv.at(static_cast<std::size_t>(spectrum));
    return 0.1 + 0.5 * (1 + std::erf(d / 3)) + 0.15 * std::exp(-0.03 * d * d);
}

inline void fill(AMutE& spectrum, int number)
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

/// Loads square maps with @p side pixels per axis into all energy rows of @p panel.
inline void loadMaps(FourPs& panel, int side)
{
    const QList<A2DData> maps =
        measuredMaps(static_cast<int>(energiesEv.size()), side, [](int k, double f) {
            const double energyEv = energiesEv.at(static_cast<std::size_t>(k));
            return f * absorbed(0, energyEv) + (1 - f) * absorbed(1, energyEv);
        });
    for (int k = 0; k < maps.size(); ++k) {
        AEPoint* row = panel.EPoints.at(k);
        static_cast<A2DData&>(*row) = maps.at(k);
        row->loaded = true;
        row->UseCB->setChecked(true);
        row->LCFCB->setChecked(k == 1 || k == 6);
        row->Energy->setText(QString::number(energiesEv.at(static_cast<std::size_t>(k))));
    }
}

} // namespace dragData

/// A panel with a visible graph window. Its first plot is ready for dragging the edge
/// marker.
struct DragPanel {
    /// @param loaded  whether to load references, a target and maps
    /// @param side    width and height of each map in pixels
    DragPanel(bool loaded, int side)
    {
        panel.ui.EdgeE->setText(QString::number(dragData::edgeEv));
        if (loaded) {
            dragData::loadMaps(panel, side);
            for (int i = 0; i < panel.XafsFiles.size(); ++i) {
                dragData::fill(*panel.XafsFiles.at(i), i);
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
        // The first calculations are slower, because they request memory from the system, so
        // they run before the measurement.
        for (int i = 0; i < 3; ++i) {
            panel.ui.EdgeE->setText(QString::number(dragData::edgeEv + i));
            panel.setEdge();
        }
        QCoreApplication::processEvents();
    }

    /// Sends a mouse event at pixel column @p x of the plot and repaints the windows.
    void send(QEvent::Type type, int x) const
    {
        const QPointF at(x, plot->DispA->height() / 2);
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, plot->DispA->mapToGlobal(at), button, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(plot->DispA, &event);
        QCoreApplication::processEvents();
    }

    /// The pixel column of the edge marker in the plot.
    int edgePixel() const
    {
        return static_cast<int>(plot->DispA->cc.r2sX(panel.ui.EdgeE->text().toDouble()));
    }

    FourPs panel;
    DispABase* plot = nullptr;
};

} // namespace bench
