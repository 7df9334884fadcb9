#include "NickelTruth.h"

#include <algorithm>
#include <cmath>

namespace nickel
{
namespace
{

constexpr double hcEvAngstrom = 12398.424360387684;
constexpr double stepWidthEv = 3.0;
constexpr double whiteLineShiftEv = 6.0;
constexpr double whiteLineWidthEv = 4.0;
constexpr double wiggleOnsetEv = 8333.0;
constexpr double wiggleDecayEv = 180.0;
constexpr double wavenumberSquaredPerEv = 0.2624682; // 2 m_e / hbar^2, 1/(angstrom^2 eV)

// Ni(II) and Ni(III) differ in nothing but edge, jump and background: their
// shapes agree wherever both steps are over.
constexpr std::array<Compound, 4> compoundTable = {{
    {"Ni(II)", "ref_ni2.dat", 2.0, 8343.6, 1.0, 0.60, 2.05, 0.10, 0.05, 0.36, -0.14},
    {"Ni(III)", "ref_ni3.dat", 3.0, 8345.4, 1.1, 0.60, 2.05, 0.10, 0.03, 0.30, -0.10},
    {"Ni(IV)", "ref_ni4.dat", 4.0, 8347.2, 0.9, 0.75, 1.88, 0.12, 0.08, 0.33, -0.12},
    {"Ni metal", "ref_ni0.dat", 0.0, 8333.0, 1.2, 0.00, 2.48, 0.07, 0.02, 0.40, -0.15},
}};

constexpr std::array<const char*, 7> letters = {
    "#...#..#.", //
    "##..#....", //
    "##..#.##.", //
    "#.#.#..#.", //
    "#..##..#.", //
    "#..##..#.", //
    "#...#.###",
};
constexpr int letterScale = 6; // pixels of the map for one mark of a letter
constexpr int letterLeft = 5;
constexpr int letterTop = 3;

double wiggle(const Compound& compound, double energyEv)
{
    const double aboveEv = std::max(energyEv - wiggleOnsetEv, 0.0);
    const double wavenumber = std::sqrt(wavenumberSquaredPerEv * aboveEv);
    return compound.wiggle * std::exp(-aboveEv / wiggleDecayEv) *
           std::sin(2.0 * wavenumber * compound.shellDistance + 0.6);
}

double background(const Compound& compound, double energyEv)
{
    const double wavelength = hcEvAngstrom / energyEv;
    const double cube = wavelength * wavelength * wavelength;
    return compound.c + compound.a * cube + compound.b * cube * wavelength;
}

double mixture(double fraction, double energyEv)
{
    return fraction * shape(compoundTable[niII], energyEv) +
           (1.0 - fraction) * shape(compoundTable[niIII], energyEv);
}

} // namespace

std::span<const Compound> compounds()
{
    return compoundTable;
}

double shape(const Compound& compound, double energyEv)
{
    const double step = 0.5 * (1.0 + std::erf((energyEv - compound.edgeEv) / stepWidthEv));
    const double fromPeak = (energyEv - compound.edgeEv - whiteLineShiftEv) / whiteLineWidthEv;
    return step * (1.0 + wiggle(compound, energyEv)) +
           compound.whiteLine * std::exp(-0.5 * fromPeak * fromPeak);
}

double referenceMut(const Compound& compound, double energyEv)
{
    return background(compound, energyEv) + compound.jump * shape(compound, energyEv);
}

double targetMut(double energyEv)
{
    return background(compoundTable[niII], energyEv) +
           targetJump * mixture(targetFraction, energyEv);
}

double valenceAt(int x, int y)
{
    const double radius = std::hypot(x - 31.5, y - 23.5);
    if (radius >= 14.0 && radius <= 20.0) {
        return 2.9;
    }
    return 2.1 + 0.5 * x / (mapWidth - 1);
}

double fractionAt(int x, int y)
{
    return 3.0 - valenceAt(x, y);
}

double amountAt(int x, int y)
{
    constexpr double thin = 0.6;
    constexpr double thick = 1.4;
    if (x < letterLeft || y < letterTop) {
        return thin;
    }
    const std::size_t column = static_cast<std::size_t>((x - letterLeft) / letterScale);
    const std::size_t line = static_cast<std::size_t>((y - letterTop) / letterScale);
    const bool marked = line < letters.size() && column < 9 && letters.at(line)[column] == '#';
    return marked ? thick : thin;
}

double pixelMut(int x, int y, double energyEv)
{
    return mapBackground + amountAt(x, y) * mixture(fractionAt(x, y), energyEv);
}

std::string mapFileName(double energyEv)
{
    return "map_" + std::to_string(std::lround(energyEv)) + "ev.dat";
}

} // namespace nickel
