// The graph of all spectra.
#pragma once

#include "display/Graph.h"

#include <QColor>
#include <QList>
#include <QString>

class AMutE;

namespace display
{

/// All spectra in one presentation, over the window around the edge, with the
/// energies of the measurement and a legend whose rows switch spectra on and
/// off.
class SpectraGraph : public Graph
{
public:
    /// One spectrum with its pen. Its name stands in the legend while it is
    /// valid, switched on or off.
    struct Curve {
        const AMutE* spectrum; ///< not owned
        QColor color;
        int width;
        QString name;
    };

    /// One energy of the measurement.
    struct EnergyMark {
        double energy; ///< eV
        bool inFit;    ///< bounds the range of the linear combination fit
        bool used;     ///< takes part in the calculations
    };

    /// Also when no spectrum has a point.
    bool isEmpty() const override;

    /// The window in x, and all values in it with a twentieth of their span
    /// around in y; 0 to 1 and not fitted when the window holds none.
    Range range() const override;

    int kind = 0;      ///< presentation, as of AMutE::value()
    double edge = 0.0; ///< eV
    double from = 0.0; ///< the window, eV
    double to = 0.0;
    QList<EnergyMark> marks;
    QList<Curve> curves;
    const AMutE* fitted = nullptr; ///< the calculated spectrum; normalised already

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
    void drawOnTop(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawGuides(QStylePainter* p, const ChCoord& cc) const;
    void drawCurve(QStylePainter* p, const ChCoord& cc, const Curve& curve) const;
};

} // namespace display
