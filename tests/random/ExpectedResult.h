// Calculates the expected result of a map calculation by the reference implementations.
#pragma once

#include "analysis/HistogramCounts.h"
#include "data/A2DData.h"

#include <QList>
#include <QString>

class FourPs;

namespace tests
{

/// A result map and its histograms: valence, thickness, then the shares and the dMut of
/// the references.
struct MapResult {
    A2DData map;
    QList<analysis::HistogramCounts> counts;
};

/// A deep copy of the result in @p panel.
MapResult resultOf(const FourPs& panel);

/// Describes the first difference between two results; empty if they are equal bit by
/// bit.
QString differenceOf(const MapResult& a, const MapResult& b);

/// Calculates the expected result for the current state of a panel's widgets and maps by
/// the reference implementations.
class ExpectedResult
{
public:
    explicit ExpectedResult(const FourPs& panel)
        : m_panel(panel)
    {
    }

    /// Whether the panel must refuse the calculation.
    bool isRefused() const;

    /// The result of a calculation that is not refused; @p before is the previous result.
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
