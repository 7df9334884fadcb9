// Reads the input widgets of the panel into plain structs.
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
/// maps. The widgets are the state: every call reads them again. Unparsable text counts
/// as 0.
class InputReader
{
public:
    /// The edge, the end of the pre-edge region and the start of the post-edge region, as
    /// absolute energies in eV.
    struct Edge {
        double energy = 0.0;
        double preEdgeEnd = 0.0;
        double postEdgeStart = 0.0;
    };

    /// @param widgets  must outlive this object; must be complete at the first call of
    ///                 another function
    explicit InputReader(const Widgets& widgets);

    /// Returns the state of the energy rows, in order.
    QList<analysis::PointState> points() const;

    /// Returns the state of the reference rows, in order.
    analysis::ReferenceSet references() const;

    /// Returns the inputs of the map calculation, the target calculation and the fit. Spectra
    /// and maps are not copied: the result points to the objects in the rows.
    analysis::CalculationState calculationState() const;

    /// Returns the energies of the edge fields. The fields of the two limits contain offsets
    /// from the edge energy; the returned limits are absolute.
    Edge edge() const;

    /// Returns the normalisation selected for the graph of all spectra, a constant of AMutE:
    /// - 0: raw absorbance;
    /// - 1: minus the pre-edge line;
    /// - 3: minus the pre-edge line, divided by the edge jump;
    /// - 4: normalised by both background lines.
    ///
    /// Returns 5 if no button is checked.
    int normMode() const;

    /// Returns the index of the first energy row with "Show Map" checked, or 0 if no row has
    /// it checked.
    int checkedMapRow() const;

    /// Returns the index (0 to 12) of the quantity that the result map shows, or 0 if none
    /// is selected.
    int kindOfMap() const;

    /// Returns for each quantity whether it is selected for the result file.
    std::array<bool, analysis::columnCount> wantedColumns() const;

    /// Whether the check box for the ratio histogram of the @p n-th used reference (from 0)
    /// is checked. False if there is no such reference.
    bool isRatioShown(const analysis::ReferenceSet& references, int n) const;

    /// Whether the check box for the dMut histogram of the @p n-th used reference (from 0)
    /// is checked. False if there is no such reference.
    bool isDMutShown(const analysis::ReferenceSet& references, int n) const;

    /// Returns the index of the last reference row whose check box for the ratio histogram
    /// is checked, or -1 if none of them is checked.
    int shownRatioRow() const;

    /// Whether maps are drawn with a grid.
    bool isGridShown() const;

private:
    const Widgets& m_widgets;
};

} // namespace panel
