// The texts and states of the panel's widgets as plain numbers.
#pragma once

#include "analysis/ResultText.h"
#include "analysis/RowCollection.h"

#include <QList>

#include <array>

namespace analysis
{
struct CalculationState;
class ReferenceSet;
} // namespace analysis

namespace panel
{

struct Widgets;

/// Reads the input widgets of the panel into plain structs, for calculations, graphs and
/// maps. The widgets are the state, so that nothing is kept between two calls. A text that
/// is no number reads as 0.
class InputReader
{
public:
    /// The edge and the two ends of the background lines, eV.
    struct Edge {
        double energy = 0.0;
        double preEdgeEnd = 0.0;
        double postEdgeStart = 0.0;
    };

    /// @param widgets  must outlive the reader; complete at the first call
    explicit InputReader(const Widgets& widgets);

    /// The energy rows, in order.
    QList<analysis::PointState> points() const;

    /// The reference rows, in order.
    analysis::ReferenceSet references() const;

    /// All that a calculation reads. Spectra and maps stay in their rows.
    analysis::CalculationState calculationState() const;

    /// The edge fields; the two ends are entered as distances from the edge.
    Edge edge() const;

    /// The normalisation of all spectra: 0 none, 1 less pre-edge line, 3 by edge
    /// jump, 4 by two lines; 5 when nothing is checked.
    int normMode() const;

    /// Index of the first energy row whose "Show Map" is checked, 0 without one.
    int checkedMapRow() const;

    /// Index of the quantity that the result map shows; 0 when none is chosen.
    int kindOfMap() const;

    /// Which quantities the result file shall have.
    std::array<bool, analysis::columnCount> wantedColumns() const;

    /// Whether the histogram of the @p n-th used reference, from 0, shall be shown: that
    /// of its share, or of its edge jump. False when there is no such reference.
    bool isRatioShown(const analysis::ReferenceSet& references, int n) const;
    bool isDMutShown(const analysis::ReferenceSet& references, int n) const;

    /// Reference row whose share histogram is shown, the last one of several; -1
    /// when none is.
    int shownRatioRow() const;

    /// Whether maps shall have a grid.
    bool isGridShown() const;

private:
    const Widgets& m_widgets;
};

} // namespace panel
