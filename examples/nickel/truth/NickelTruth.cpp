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
constexpr double exafsOnsetEv = 8333.0;
constexpr double exafsDecayEv = 180.0;
constexpr double wavenumberSquaredPerEv = 0.2624682; // 2 m_e / hbar^2, 1/(angstrom^2 eV)

// Ni(II) and Ni(III) differ only in edge energy, edge jump and background, so their shapes
// are equal (within 1e-12) at energies far from both edges.
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
constexpr int letterScale = 6; // map pixels per character of the pattern
constexpr int letterLeft = 5;
constexpr int letterTop = 3;

double exafs(const Compound& compound, double energyEv)
{
    const double aboveEv = std::max(energyEv - exafsOnsetEv, 0.0);
    const double wavenumber = std::sqrt(wavenumberSquaredPerEv * aboveEv);
    return compound.exafsAmplitude * std::exp(-aboveEv / exafsDecayEv) *
           std::sin(2.0 * wavenumber * compound.shellDistance + 0.6);
}

double background(const Compound& compound, double energyEv)
{
    const double wavelength = hcEvAngstrom / energyEv;
    const double cube = wavelength * wavelength * wavelength;
    return compound.c + compound.a * cube + compound.b * cube * wavelength;
}

Fractions letterFractionsAt(int x, int y)
{
    const double fraction = fractionAt(x, y);
    return {fraction, 1.0 - fraction, 0.0, 0.0};
}

constexpr int squareWidth = 32;
constexpr int squareHeight = 24;

Fractions squareFractionsAt(int x, int y)
{
    const double right = static_cast<double>(x) / (squareWidth - 1);
    const double down = static_cast<double>(y) / (squareHeight - 1);
    return {(1.0 - right) * (1.0 - down), right * (1.0 - down), (1.0 - right) * down, right * down};
}

double squareAmountAt(int x, int y)
{
    return std::hypot(x - 15.5, y - 11.5) < 9.0 ? 1.4 : 0.7;
}

std::string squareFileName(double energyEv)
{
    return "mix_" + std::to_string(std::lround(energyEv)) + "ev.dat";
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
    return step * (1.0 + exafs(compound, energyEv)) +
           compound.whiteLine * std::exp(-0.5 * fromPeak * fromPeak);
}

double referenceMut(const Compound& compound, double energyEv)
{
    return background(compound, energyEv) + compound.jump * shape(compound, energyEv);
}

double mixture(const Fractions& fractions, double energyEv)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < compoundTable.size(); ++i) {
        sum += fractions.at(i) * shape(compoundTable.at(i), energyEv);
    }
    return sum;
}

const Target& targetOfTwo()
{
    static constexpr Target target = {
        "Ni(II) and Ni(III)", "target.dat", {targetFraction, 1.0 - targetFraction, 0.0, 0.0}, 1.2};
    return target;
}

const Target& targetOfFour()
{
    static constexpr Target target = {
        "Ni(II), Ni(III), Ni(IV) and Ni metal", "target_mix.dat", {0.4, 0.3, 0.2, 0.1}, 1.2};
    return target;
}

double targetMut(const Target& target, double energyEv)
{
    return background(compoundTable[niII], energyEv) +
           target.jump * mixture(target.fractions, energyEv);
}

const std::vector<double>& scanEnergies()
{
    static const std::vector<double> energies = [] {
        std::vector<double> points;
        for (double energyEv = 8000.0; energyEv <= 8900.0;) {
            points.push_back(energyEv);
            energyEv += energyEv < 8310.0 ? 2.0 : energyEv < 8400.0 ? 0.5 : 2.5;
        }
        return points;
    }();
    return energies;
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
    const int fromTop = mapHeight - 1 - y; // the last line of a map is displayed at the top
    if (x < letterLeft || fromTop < letterTop) {
        return thin;
    }
    const std::size_t column = static_cast<std::size_t>((x - letterLeft) / letterScale);
    const std::size_t line = static_cast<std::size_t>((fromTop - letterTop) / letterScale);
    const bool marked = line < letters.size() && column < 9 && letters.at(line)[column] == '#';
    return marked ? thick : thin;
}

double pixelMut(int x, int y, double energyEv)
{
    return imageOfTwo().mutAt(x, y, energyEv);
}

std::string mapFileName(double energyEv)
{
    return "map_" + std::to_string(std::lround(energyEv)) + "ev.dat";
}

double Image::mutAt(int x, int y, double energyEv) const
{
    return mapBackground + amountAt(x, y) * mixture(fractionsAt(x, y), energyEv);
}

const Image& imageOfTwo()
{
    static const Image image = {{mapEnergiesEv.begin(), mapEnergiesEv.end()},
                                mapWidth,
                                mapHeight,
                                letterFractionsAt,
                                nickel::amountAt,
                                mapFileName};
    return image;
}

const Image& imageOfFour()
{
    static const Image image = {{8250, 8320, 8338, 8343, 8347, 8356, 8370, 8475},
                                squareWidth,
                                squareHeight,
                                squareFractionsAt,
                                squareAmountAt,
                                squareFileName};
    return image;
}

} // namespace nickel
