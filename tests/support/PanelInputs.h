// What a user gives to the calculations, without a panel.
#pragma once

#include "analysis/CalculationState.h"
#include "data/A2DData.h"
#include "support/MadeSpectrum.h"

#include <array>

namespace tests
{

/// The rows, spectra, maps and choices of a panel. The default has nothing in use,
/// the edge at 8350 eV, and the least-square form and the linear background chosen.
struct PanelInputs {
    PanelInputs()
    {
        for (AMutE& spectrum : spectra) {
            spectrum.edgeEnergy = 8350;
        }
    }

    QList<analysis::PointState> points = QList<analysis::PointState>(8);
    std::array<A2DData, 8> maps;
    std::array<AMutE, 4> spectra;
    std::array<bool, 4> used{};
    std::array<double, 4> valences{};
    AMutE target;
    analysis::MethodRadios radios{false, false, true, true};
    bool subPostForRef = false;
    bool subPostForTarget = false;

    /// Refers to the spectra and maps, so these inputs must outlive it.
    analysis::CalculationState state() const
    {
        analysis::CalculationState state;
        state.points = points;
        QList<analysis::ReferenceState> references;
        for (std::size_t i = 0; i < spectra.size(); ++i) {
            references.append({used[i], spectra[i].valid, valences[i], spectra[i].edgeJump()});
            state.spectra.append(&spectra[i]);
        }
        state.references = analysis::ReferenceSet(references);
        for (const A2DData& map : maps) {
            state.maps.append(&map);
        }
        state.target = &target;
        state.radios = radios;
        state.subPostForRef = subPostForRef;
        state.subPostForTarget = subPostForTarget;
        return state;
    }
};

/// Takes exactly these energy rows into use.
inline void useRows(PanelInputs& inputs, const QList<int>& rows)
{
    for (int i = 0; i < inputs.points.size(); ++i) {
        inputs.points[i].used = rows.contains(i);
    }
}

/// Takes exactly these references into use.
inline void useReferences(PanelInputs& inputs, const QList<int>& rows)
{
    for (int i = 0; i < 4; ++i) {
        inputs.used.at(static_cast<std::size_t>(i)) = rows.contains(i);
    }
}

/// Marks exactly these energy rows as V points.
inline void markVRows(PanelInputs& inputs, const QList<int>& rows)
{
    for (int i = 0; i < inputs.points.size(); ++i) {
        inputs.points[i].vPoint = rows.contains(i);
    }
}

/// The numbers of an energy row: eV, the first two references, the target.
inline void setPoint(PanelInputs& inputs, int row, double energy, double r1, double r2,
                     double target)
{
    analysis::PointState& point = inputs.points[row];
    point.energy = energy;
    point.mut = {r1, r2, 0.0, 0.0};
    point.mutT = target;
}

/// Gives an energy row a map of ready mut values, one line of pixels.
inline void setMap(PanelInputs& inputs, int row, const QList<double>& muts)
{
    A2DData& map = inputs.maps.at(static_cast<std::size_t>(row));
    map.clear();
    for (const double mut : muts) {
        map.rows.append({static_cast<double>(map.rows.size()), 0.5, mut, 0.0, {}});
    }
    map.xNum = static_cast<int>(muts.size());
    map.yNum = 1;
    inputs.points[row].hasMap = true;
}

/// Three points that give a = 1/2 and, on one-pixel maps, thickness 1: the
/// references have valence 2 and 3, rows 1 and 2 and the V row 3 are in use.
inline PanelInputs threePointInputs()
{
    PanelInputs inputs;
    for (std::size_t i = 0; i < 2; ++i) {
        setJump(inputs.spectra[i], 1.0);
    }
    inputs.valences = {2, 3, 0, 0};
    inputs.target.valid = true;
    useReferences(inputs, {0, 1});
    useRows(inputs, {0, 1, 2});
    markVRows(inputs, {2});
    setPoint(inputs, 0, 8313, 0, 0, 1);
    setPoint(inputs, 1, 8381, 4, 4, 5);
    setPoint(inputs, 2, 8390, 3, 1, 3);
    return inputs;
}

/// Four rows, V row 3, of the half sum of two references: exact four points and
/// least square give a = 1/2 and t/ts = 1.
inline PanelInputs fourPointInputs()
{
    PanelInputs inputs = threePointInputs();
    useRows(inputs, {0, 1, 2, 3});
    setPoint(inputs, 0, 0, 1, 3, 2);
    setPoint(inputs, 1, 1, 2, 3, 2.5);
    setPoint(inputs, 2, 2, 8, 2, 5);
    setPoint(inputs, 3, 5, 4, 9, 6.5);
    return inputs;
}

/// Gives each of the first @p rows a one-pixel map of its target number.
inline void addMaps(PanelInputs& inputs, int rows)
{
    for (int row = 0; row < rows; ++row) {
        setMap(inputs, row, {inputs.points.at(row).mutT});
    }
}

} // namespace tests
