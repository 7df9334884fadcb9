// A spectrum with its pre-edge and post-edge lines.
#pragma once

#include <vector>

namespace nickel
{

/// Limits of the ranges of the pre-edge and post-edge lines, eV relative to edgeEv. They
/// are aelk's default values.
inline constexpr double preEdgeEnd = -50.0;
inline constexpr double postEdgeStart = 100.0;

/// A spectrum with its fitted Victoreen lines c + a L^3 + b L^4 below and above the edge.
class SpectrumLines
{
public:
    /// @param mut  the absorbance at each of scanEnergies()
    explicit SpectrumLines(std::vector<double> mut);

    const std::vector<double>& mut() const { return mutValues; }
    double pre(double energyEv) const;
    double post(double energyEv) const;

    /// The difference between the post-edge and the pre-edge line at edgeEv.
    double edgeJump() const;

    /// The absorbance minus the pre-edge line at the point @p index of the scan.
    double abovePre(std::size_t index) const;

    /// abovePre() divided by the difference between the post-edge line and the pre-edge line
    /// at the same point.
    double normalised(std::size_t index) const;

private:
    std::vector<double> mutValues;
    std::vector<double> preLine;
    std::vector<double> postLine;
};

/// The index of @p energyEv in scanEnergies().
/// @throws std::out_of_range  if @p energyEv is not a point of the scan
std::size_t scanIndex(double energyEv);

} // namespace nickel
