// What a map calculation has to leave, by the reference implementations.
#pragma once

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"

#include <QList>
#include <QString>

class FourPs;

namespace tests
{

/// A result and its histograms: those of the valence and of the thickness, then
/// those of the references, shares first.
struct MapResult {
    A2DData map;
    QList<analysis::HistogramCounts> counts;
};

/// A copy of what @p panel has, with memory of its own.
MapResult resultOf(const FourPs& panel);

/// Where two of them differ; empty where they are the same to the last bit.
QString differenceOf(const MapResult& a, const MapResult& b);

/// Calculates what the widgets and maps of a panel ask for, by the plain ways.
class ExpectedResult
{
public:
    explicit ExpectedResult(const FourPs& panel)
        : m_panel(panel)
    {
    }

    /// Whether the panel has to refuse the calculation.
    bool isRefused() const;

    /// The result of a calculation that is not refused, in place of @p before.
    MapResult calculated(const MapResult& before) const;

private:
    enum class Form { None, ThreePoints, Exact, LeastSquare, NonEquivalent };

    Form form() const;
    Form fourPointForm(int selected) const;
    bool hasBrokenReference() const;
    QList<int> usedReferences() const;
    int validReferences() const;
    QList<int> usedRows() const;
    double edgeJump(int reference) const;

    void calculateFourPoints(MapResult& result) const;
    void calculateNonEquivalent(MapResult& result) const;

    const FourPs& m_panel;
};

} // namespace tests
