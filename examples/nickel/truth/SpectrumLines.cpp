#include "SpectrumLines.h"

#include "LeastSquares.h"
#include "NickelTruth.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace nickel
{
namespace
{

// The terms 1, L^3 and L^4, where L is the wavelength divided by the wavelength at the edge.
// The fitted line does not depend on the unit of L.
std::array<double, 3> powers(double energyEv)
{
    const double ratio = edgeEv / energyEv;
    const double cube = ratio * ratio * ratio;
    return {1.0, cube, cube * ratio};
}

/// Least-squares fits to the points with the indices [@p firstPoint, @p lastPoint).
class LineFit
{
public:
    LineFit(std::size_t firstPoint, std::size_t lastPoint)
        : first(firstPoint)
        , last(lastPoint)
        , fit(columns(firstPoint, lastPoint))
    {
    }

    std::vector<double> line(const std::vector<double>& mut) const
    {
        const auto begin = mut.begin();
        return fit.coefficients({begin + static_cast<std::ptrdiff_t>(first),
                                 begin + static_cast<std::ptrdiff_t>(last)});
    }

private:
    static std::vector<std::vector<double>> columns(std::size_t first, std::size_t last)
    {
        std::vector<std::vector<double>> result(3);
        for (std::size_t i = first; i < last; ++i) {
            const std::array<double, 3> point = powers(scanEnergies().at(i));
            for (std::size_t k = 0; k < point.size(); ++k) {
                result[k].push_back(point.at(k));
            }
        }
        return result;
    }

    std::size_t first;
    std::size_t last;
    LeastSquares fit;
};

// Points exactly at a limit of the ranges are excluded, as in aelk.
const LineFit& fitBelow()
{
    const std::vector<double>& scan = scanEnergies();
    const auto end = std::lower_bound(scan.begin(), scan.end(), edgeEv + preEdgeEnd);
    static const LineFit fit(0, static_cast<std::size_t>(end - scan.begin()));
    return fit;
}

const LineFit& fitAbove()
{
    const std::vector<double>& scan = scanEnergies();
    const auto begin = std::upper_bound(scan.begin(), scan.end(), edgeEv + postEdgeStart);
    static const LineFit fit(static_cast<std::size_t>(begin - scan.begin()), scan.size());
    return fit;
}

double valueOf(const std::vector<double>& line, double energyEv)
{
    const std::array<double, 3> point = powers(energyEv);
    return line[0] * point[0] + line[1] * point[1] + line[2] * point[2];
}

} // namespace

SpectrumLines::SpectrumLines(std::vector<double> mut)
    : mutValues(std::move(mut))
    , preLine(fitBelow().line(mutValues))
    , postLine(fitAbove().line(mutValues))
{
}

double SpectrumLines::pre(double energyEv) const
{
    return valueOf(preLine, energyEv);
}

double SpectrumLines::post(double energyEv) const
{
    return valueOf(postLine, energyEv);
}

double SpectrumLines::edgeJump() const
{
    return post(edgeEv) - pre(edgeEv);
}

double SpectrumLines::abovePre(std::size_t index) const
{
    return mutValues.at(index) - pre(scanEnergies().at(index));
}

double SpectrumLines::normalised(std::size_t index) const
{
    const double energyEv = scanEnergies().at(index);
    return abovePre(index) / (post(energyEv) - pre(energyEv));
}

std::size_t scanIndex(double energyEv)
{
    const std::vector<double>& scan = scanEnergies();
    const auto found = std::lower_bound(scan.begin(), scan.end(), energyEv);
    if (found == scan.end() || *found != energyEv) {
        throw std::out_of_range("no point of the scan");
    }
    return static_cast<std::size_t>(found - scan.begin());
}

} // namespace nickel
