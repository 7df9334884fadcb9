// The inputs of the calculations, as a user sets them, in a plain struct without a panel.
#pragma once

#include "analysis/CalculationState.h"
#include "data/A2DData.h"
#include "support/SpectrumSetup.h"

#include <array>
#include <numeric>

namespace tests
{

/// The rows, spectra, maps and choices of a panel. By default no row and no reference is
/// in use, the edge energy of the references is 8350 eV, and least squares and the linear
/// background are chosen.
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

    /// All setters return *this, so calls can be chained. Row indices start at 0. useRows()
    /// and useReferences() put the given rows in use and all others out of use. markVRows()
    /// makes exactly the given energy rows V points.
    PanelInputs& useRows(const QList<int>& rows);
    PanelInputs& useReferences(const QList<int>& rows);
    PanelInputs& markVRows(const QList<int>& rows);

    /// Puts exactly the first @p count references in use. Sets a spectrum without points and with
    /// the edge jump 1 for each of them.
    PanelInputs& useFirstReferences(int count);

    PanelInputs& makeInvalid(const QList<int>& references);
    PanelInputs& makeTargetInvalid();

    PanelInputs& chooseFourPoints(bool exact, bool leastSquare);
    PanelInputs& chooseNonEquivalent(bool linear);

    /// Sets the numbers of an energy row: the energy (eV) and the absorbance of the first
    /// reference, the second reference and the target.
    PanelInputs& setPoint(int row, double energy, double r1, double r2, double mutT);

    /// Sets the map of an energy row. The map has the height 1 and the absorbances @p muts.
    PanelInputs& setMap(int row, const QList<double>& muts);

    /// Sets a map for each of the first @p rows energy rows. Each map has one pixel, with
    /// the absorbance of the target in that row.
    PanelInputs& addMaps(int rows);

    /// Removes the map of a row, as if no file had been loaded.
    PanelInputs& removeMap(int row);

    /// The input struct of the calculation functions. The struct points to the spectra and maps
    /// of this PanelInputs object, which must outlive the struct.
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

/// The list 0, 1, ..., @p count - 1.
inline QList<int> firstRows(int count)
{
    QList<int> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

inline PanelInputs& PanelInputs::useRows(const QList<int>& rows)
{
    for (int i = 0; i < points.size(); ++i) {
        points[i].used = rows.contains(i);
    }
    return *this;
}

inline PanelInputs& PanelInputs::useReferences(const QList<int>& rows)
{
    for (int i = 0; i < 4; ++i) {
        used.at(static_cast<std::size_t>(i)) = rows.contains(i);
    }
    return *this;
}

inline PanelInputs& PanelInputs::markVRows(const QList<int>& rows)
{
    for (int i = 0; i < points.size(); ++i) {
        points[i].vPoint = rows.contains(i);
    }
    return *this;
}

inline PanelInputs& PanelInputs::useFirstReferences(int count)
{
    for (int i = 0; i < count; ++i) {
        setJump(spectra.at(static_cast<std::size_t>(i)), 1.0);
    }
    return useReferences(firstRows(count));
}

inline PanelInputs& PanelInputs::makeInvalid(const QList<int>& references)
{
    for (const int row : references) {
        spectra.at(static_cast<std::size_t>(row)).valid = false;
    }
    return *this;
}

inline PanelInputs& PanelInputs::makeTargetInvalid()
{
    target.valid = false;
    return *this;
}

inline PanelInputs& PanelInputs::chooseFourPoints(bool exact, bool leastSquare)
{
    radios.nonEquivalent = false;
    radios.exact = exact;
    radios.leastSquare = leastSquare;
    return *this;
}

inline PanelInputs& PanelInputs::chooseNonEquivalent(bool linear)
{
    radios.nonEquivalent = true;
    radios.linearBackground = linear;
    return *this;
}

inline PanelInputs& PanelInputs::setPoint(int row, double energy, double r1, double r2, double mutT)
{
    points[row].energy = energy;
    points[row].mut = {r1, r2, 0.0, 0.0};
    points[row].mutT = mutT;
    return *this;
}

inline PanelInputs& PanelInputs::setMap(int row, const QList<double>& muts)
{
    A2DData& map = maps.at(static_cast<std::size_t>(row));
    map.clear();
    for (const double mut : muts) {
        map.rows.append({static_cast<double>(map.rows.size()), 0.5, mut, 0.0, {}});
    }
    map.xNum = static_cast<int>(muts.size());
    map.yNum = 1;
    points[row].hasMap = true;
    return *this;
}

inline PanelInputs& PanelInputs::addMaps(int rows)
{
    for (int row = 0; row < rows; ++row) {
        setMap(row, {points.at(row).mutT});
    }
    return *this;
}

inline PanelInputs& PanelInputs::removeMap(int row)
{
    maps.at(static_cast<std::size_t>(row)).clear();
    points[row].hasMap = false;
    return *this;
}

/// Inputs of the three-point method with the fraction a = 1/2 and, if addMaps() adds
/// one-pixel maps, the thickness 1. The references have the valences 2 and 3. The first
/// three energy rows are in use; the third row is the V row.
inline PanelInputs threePointInputs()
{
    PanelInputs inputs;
    inputs.useFirstReferences(2);
    inputs.valences = {2, 3, 0, 0};
    inputs.target.valid = true;
    inputs.useRows({0, 1, 2});
    inputs.markVRows({2});
    inputs.setPoint(0, 8313, 0, 0, 1);
    inputs.setPoint(1, 8381, 4, 4, 5);
    inputs.setPoint(2, 8390, 3, 1, 3);
    return inputs;
}

/// Inputs of the four-point methods with four energy rows; the third row is the V row.
/// The target is half the sum of the two references, so the exact method and the
/// least-squares method both calculate a = 1/2 and t/ts = 1.
inline PanelInputs fourPointInputs()
{
    PanelInputs inputs = threePointInputs();
    inputs.useRows({0, 1, 2, 3});
    inputs.setPoint(0, 0, 1, 3, 2);
    inputs.setPoint(1, 1, 2, 3, 2.5);
    inputs.setPoint(2, 2, 8, 2, 5);
    inputs.setPoint(3, 5, 4, 9, 6.5);
    return inputs;
}

} // namespace tests
