// A spectrum with its two background lines.
#pragma once

#include <vector>

namespace nickel
{

/// Limits of the background lines, eV from edgeEv: aelk's own.
inline constexpr double preEdgeEnd = -50.0;
inline constexpr double postEdgeStart = 100.0;

/// A spectrum and the lines c + a L^3 + b L^4 below and above its edge.
class SpectrumLines
{
public:
    /// @param mut  a value at each of scanEnergies()
    explicit SpectrumLines(std::vector<double> mut);

    const std::vector<double>& mut() const { return mutValues; }
    double pre(double energyEv) const;
    double post(double energyEv) const;

    /// Distance of the lines at edgeEv.
    double edgeJump() const;

    /// mu*t less the line below the edge, at the scan's point @p index.
    double abovePre(std::size_t index) const;

    /// The same in units of the lines' distance at this point.
    double normalised(std::size_t index) const;

private:
    std::vector<double> mutValues;
    std::vector<double> preLine;
    std::vector<double> postLine;
};

/// Place of @p energyEv in scanEnergies(), which has to hold it.
std::size_t scanIndex(double energyEv);

} // namespace nickel
