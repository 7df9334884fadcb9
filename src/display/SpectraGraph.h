// The graph of all spectra.
#pragma once

#include "data/AMutE.h"
#include "display/Graph.h"

#include <QColor>
#include <QList>
#include <QString>

namespace display
{

/// The graph of all spectra in the same normalisation, over an energy range around the
/// edge. It also shows the energies of the measurement, and a legend in which a
/// press on a name switches its spectrum on or off.
class SpectraGraph : public Graph
{
public:
    /// One spectrum with its pen and its name. The legend shows the name while the
    /// spectrum is valid, even if it is switched off.
    struct Curve {
        const AMutE* spectrum; ///< not owned
        QColor color;
        int width;
        QString name;
    };

    /// One energy of the measurement.
    struct EnergyMark {
        double energy; ///< eV
        bool inFit;    ///< whether it is marked for the range of the linear combination fit
        bool used;     ///< whether the calculations use it
    };

    /// True if no spectrum has any points.
    bool isEmpty() const override;

    /// Returns the range from @c from to @c to on x. On y it is the range of all values of
    /// @c curves in this interval, including curves that are not drawn, extended by a
    /// twentieth of its width on both sides. If the interval contains no values, y is from
    /// 0 to 1 and Range::isFitted is false.
    Range range() const override;

    int kind = AMutE::raw; ///< normalisation, see AMutE::value()
    double edge = 0.0;     ///< edge energy, eV
    double from = 0.0;     ///< lower end of the energy range, eV
    double to = 0.0;       ///< upper end of the energy range, eV
    QList<EnergyMark> marks;
    QList<Curve> curves;
    const AMutE* fitted = nullptr; ///< fitted spectrum, already normalised; can be null

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;
    void drawOnTop(QStylePainter* p, const ChCoord& cc) const override;

private:
    void drawGuides(QStylePainter* p, const ChCoord& cc) const;
    void drawCurve(QStylePainter* p, const ChCoord& cc, const Curve& curve) const;
};

} // namespace display
