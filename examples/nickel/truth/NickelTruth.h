// The true values of the nickel sample: spectra and maps without noise.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

namespace nickel
{

/// The size of the maps in pixels of pixelSizeUm.
inline constexpr int mapWidth = 64;
inline constexpr int mapHeight = 48;
inline constexpr double pixelSizeUm = 2.0;

/// Energies (eV) of the six maps, in the order of aelk's rows. The third one is on the
/// rising edge (the V point). At all others Ni(II) and Ni(III) have the same shape, which
/// the four-points family requires.
inline constexpr std::array<double, 6> mapEnergiesEv = {8250, 8320, 8345, 8385, 8430, 8475};
inline constexpr std::size_t vPoint = 2;

/// The edge energy (eV) from which the ranges of the background lines are measured.
inline constexpr double edgeEv = 8340.0;

/// Absorbance of everything except nickel in the maps. It does not depend on the energy,
/// so the three-point form, which fits no slope, is exact too.
inline constexpr double mapBackground = 0.05;

/// Mean number of incident photons of a map pixel and of a spectrum point.
inline constexpr double pixelPhotons = 1e5;
inline constexpr double spectrumPhotons = 1e8;

/// The fraction of Ni(II) in the target of two compounds; the rest is Ni(III).
inline constexpr double targetFraction = 0.35;

/// One reference compound. Its absorbance is a Victoreen background plus @c jump times a
/// shape that is 0 far below the edge and oscillates around 1 above it.
struct Compound {
    const char* name;
    const char* fileName;
    double valence;
    double edgeEv;         ///< centre of the step
    double jump;           ///< height of the step, mu*t
    double whiteLine;      ///< height of the white line, in steps
    double shellDistance;  ///< distance of the shell that causes the EXAFS oscillations, angstrom
    double exafsAmplitude; ///< amplitude of the oscillations at the onset, in steps
    double c, a, b;        ///< background c + a L^3 + b L^4, L in angstrom
};

/// Ni(II), Ni(III), Ni(IV) and the metal, in the order of aelk's four reference rows.
std::span<const Compound> compounds();
inline constexpr std::size_t niII = 0;
inline constexpr std::size_t niIII = 1;

/// Absorbance of @p compound at @p energyEv without background, in units of its edge
/// jump.
double shape(const Compound& compound, double energyEv);

/// Absorbance of the reference at @p energyEv, including the background.
double referenceMut(const Compound& compound, double energyEv);

/// The compounds' fractions of the edge jump, in the order of compounds(); their sum is
/// 1.
using Fractions = std::array<double, 4>;

/// Absorbance of a mixture without background, in units of its edge jump.
double mixture(const Fractions& fractions, double energyEv);

/// A target spectrum. It has the background of Ni(II).
struct Target {
    const char* name;
    const char* fileName;
    Fractions fractions;
    double jump; ///< mu*t
};

/// The targets of two compounds and of all four.
const Target& targetOfTwo();
const Target& targetOfFour();

/// Absorbance of a target at @p energyEv, including the background.
double targetMut(const Target& target, double energyEv);

/// Energies (eV) of the points of every spectrum. They include the energies of the maps.
const std::vector<double>& scanEnergies();

/// The true valence of a pixel, 2.1 to 2.9: a ring on a ramp from left to right.
/// @param x,y  pixel indices; x is 0 at the left, y is 0 in the first line of the map,
///             which is displayed at the bottom
double valenceAt(int x, int y);

/// The fraction of Ni(II) for the valence of a pixel: 3 - valence.
double fractionAt(int x, int y);

/// The true edge jump of a pixel, 0.6 or 1.4: the letters "Ni".
double amountAt(int x, int y);

/// Absorbance of a pixel at @p energyEv.
double pixelMut(int x, int y, double energyEv);

/// The file name of the text map at @p energyEv.
std::string mapFileName(double energyEv);

/// An image: maps of the same pixels at several energies, in the order of aelk's rows.
struct Image {
    std::vector<double> energiesEv;
    int width;
    int height;
    Fractions (*fractionsAt)(int x, int y);
    double (*amountAt)(int x, int y); ///< edge jump
    std::string (*fileName)(double energyEv);

    /// Absorbance of a pixel at @p energyEv.
    double mutAt(int x, int y, double energyEv) const;
};

/// The image of the letters, made of Ni(II) and Ni(III), as given by valenceAt() and
/// amountAt().
const Image& imageOfTwo();

/// The image of all four compounds. Each corner is a pure compound: Ni(II) and Ni(III) at
/// the left and right of the first line, Ni(IV) and the metal at the left and right of
/// the last line. Between the corners the fractions change linearly. The amount is twice
/// as large inside a disk. At the energies of this image all four compounds can be
/// distinguished.
const Image& imageOfFour();

} // namespace nickel
