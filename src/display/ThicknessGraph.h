// The graph of thickness against valence.
#pragma once

#include "analysis/MapQuantity.h"
#include "display/Graph.h"

#include <QColor>

namespace display
{

/// The graph of thickness against valence. It has one point for each pixel of the result
/// map: x is the valence; y is the thickness, or the total dMut in a result of the
/// non-equivalent method.
class ThicknessGraph : public Graph
{
public:
    /// @param map  the result map, which must outlive the graph
    /// @param mix  converts a fraction to a valence
    ThicknessGraph(const A2DData& map, const analysis::ValenceMix& mix);

    bool isEmpty() const override { return m_count == 0; }
    Range range() const override { return limits; }

    Range limits; ///< x: limits of the valence histogram; y: limits of the thickness histogram
    double lower = 0.0; ///< valence of the first used reference
    double upper = 0.0; ///< valence of the second used reference
    QColor color;

protected:
    void drawData(QStylePainter* p, const ChCoord& cc) const override;

private:
    analysis::MapQuantity m_valence;
    analysis::MapQuantity m_thickness;
    qsizetype m_count;
};

} // namespace display
