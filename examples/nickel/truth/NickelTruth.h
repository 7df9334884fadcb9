// What the nickel sample is made of: the spectra and the map without noise.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

namespace nickel
{

/// The sample's energy axis is in eV, its maps in pixels of pixelSizeUm.
inline constexpr int mapWidth = 64;
inline constexpr int mapHeight = 48;
inline constexpr double pixelSizeUm = 2.0;

/// Energies of the six maps, eV, in the order of aelk's rows. The third one is
/// on the rising edge (the V point); at all others Ni(II) and Ni(III) have the
/// same shape, as the four-points family needs.
inline constexpr std::array<double, 6> mapEnergiesEv = {8250, 8320, 8345, 8385, 8430, 8475};
inline constexpr std::size_t vPoint = 2;

/// The edge that the background limits are set from, eV.
inline constexpr double edgeEv = 8340.0;

/// Absorption of everything but nickel in the maps, mu*t; the same at every
/// energy, so that the three-point form, which knows no slope, is exact too.
inline constexpr double mapBackground = 0.05;

/// Mean incident photons of one map pixel, and of one point of a spectrum.
inline constexpr double pixelPhotons = 1e5;
inline constexpr double spectrumPhotons = 1e8;

/// The target of the two: this fraction of Ni(II), the rest Ni(III).
inline constexpr double targetFraction = 0.35;

/// One reference compound. Its absorption is a Victoreen background plus
/// @c jump times a shape that is 0 far below the edge and wiggles around 1
/// above it.
struct Compound {
    const char* name;
    const char* fileName;
    double valence;
    double edgeEv;        ///< middle of the step
    double jump;          ///< height of the step, mu*t
    double whiteLine;     ///< height of the white line, in steps
    double shellDistance; ///< what the EXAFS wiggle comes from, angstrom
    double wiggle;        ///< its amplitude at the onset, in steps
    double c, a, b;       ///< background c + a L^3 + b L^4, L in angstrom
};

/// Ni(II), Ni(III), Ni(IV) and the metal: the order in which aelk's four
/// reference rows get them.
std::span<const Compound> compounds();
inline constexpr std::size_t niII = 0;
inline constexpr std::size_t niIII = 1;

/// Absorption of @p compound at @p energyEv in units of its edge jump, without
/// background.
double shape(const Compound& compound, double energyEv);

/// mu*t of the reference at @p energyEv, background included.
double referenceMut(const Compound& compound, double energyEv);

/// Parts of the edge jump that the compounds have, in their order; they add up
/// to 1.
using Fractions = std::array<double, 4>;

/// Absorption of a mixture in units of its edge jump, without background.
double mixture(const Fractions& fractions, double energyEv);

/// A target spectrum. It has the background of Ni(II).
struct Target {
    const char* name;
    const char* fileName;
    Fractions fractions;
    double jump; ///< mu*t
};

/// The target of two compounds, and that of all four.
const Target& targetOfTwo();
const Target& targetOfFour();

/// mu*t of a target at @p energyEv.
double targetMut(const Target& target, double energyEv);

/// Energies of the points of every spectrum, eV. Those of the maps are among
/// them.
const std::vector<double>& scanEnergies();

/// True valence of a pixel, 2.1 to 2.9: a ring on a ramp from left to right.
/// @param x,y  pixel, 0 at the left and top
double valenceAt(int x, int y);

/// The fraction of Ni(II) that the valence stands for: 3 - valence.
double fractionAt(int x, int y);

/// True edge jump of a pixel, 0.6 or 1.4: the letters "Ni".
double amountAt(int x, int y);

/// mu*t of a pixel at @p energyEv.
double pixelMut(int x, int y, double energyEv);

/// File name of the text map at @p energyEv.
std::string mapFileName(double energyEv);

/// An image: maps of the same pixels at several energies, in the order of
/// aelk's rows.
struct Image {
    std::vector<double> energiesEv;
    int width;
    int height;
    Fractions (*fractionsAt)(int x, int y);
    double (*amountAt)(int x, int y); ///< edge jump
    std::string (*fileName)(double energyEv);

    /// mu*t of a pixel at @p energyEv.
    double mutAt(int x, int y, double energyEv) const;
};

/// The letters, of Ni(II) and Ni(III): what valenceAt() and amountAt() tell.
const Image& imageOfTwo();

/// Each corner is one of the four compounds, Ni(II) and Ni(III) at the left and
/// right of the first line, Ni(IV) and the metal at the last, with even
/// mixtures between; twice as thick inside a disk. Its energies tell all four
/// apart.
const Image& imageOfFour();

} // namespace nickel
