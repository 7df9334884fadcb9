// The true values of the nickel sample: spectra and maps without noise.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

namespace nickel
{

/// Width of the first image's maps in pixels.
inline constexpr int mapWidth = 64;
/// Height of the first image's maps in pixels.
inline constexpr int mapHeight = 48;
/// Size of a pixel of both images, um.
inline constexpr double pixelSizeUm = 2.0;

/// Energies (eV) of the first image's six maps, in the order of aelk's rows. The third
/// energy is on the rising edge; it is the V point. At the other energies shape() is equal
/// for Ni(II) and Ni(III) within 1e-12. The four-point family requires this.
inline constexpr std::array<double, 6> mapEnergiesEv = {8250, 8320, 8345, 8385, 8430, 8475};
/// Index of the V point in mapEnergiesEv.
inline constexpr std::size_t vPoint = 2;

/// The edge energy (eV) that is set in aelk. The ranges of the pre-edge and post-edge lines
/// are relative to this energy.
inline constexpr double edgeEv = 8340.0;

/// Absorbance of everything except nickel in the maps. It does not depend on the energy,
/// so the three-point form, which fits no slope, is also exact.
inline constexpr double mapBackground = 0.05;

/// Mean number of incident photons for each pixel of a map.
inline constexpr double pixelPhotons = 1e5;
/// Mean number of incident photons for each point of a spectrum.
inline constexpr double spectrumPhotons = 1e8;

/// The fraction of Ni(II) in the target of two compounds; the rest is Ni(III).
inline constexpr double targetFraction = 0.35;

/// A reference compound. Its absorbance is a Victoreen background plus @c jump times a
/// shape. The shape is 0 far below the edge and oscillates around 1 above it.
struct Compound {
    const char* name;
    const char* fileName;
    double valence;
    double edgeEv;         ///< centre of the edge step
    double jump;           ///< edge jump, mu*t
    double whiteLine;      ///< height of the white line in units of the edge jump
    double shellDistance;  ///< radius of the shell that causes the EXAFS oscillations, angstrom
    double exafsAmplitude; ///< amplitude of the EXAFS oscillations at their onset, in units of the
                           ///< edge jump
    double c, a, b;        ///< background c + a L^3 + b L^4, L in angstrom
};

/// Ni(II), Ni(III), Ni(IV) and the metal, in the order of aelk's reference rows.
std::span<const Compound> compounds();
inline constexpr std::size_t niII = 0;  ///< index of Ni(II) in compounds()
inline constexpr std::size_t niIII = 1; ///< index of Ni(III) in compounds()

/// Absorbance of @p compound at @p energyEv without background, in units of its edge
/// jump.
double shape(const Compound& compound, double energyEv);

/// Absorbance of @p compound at @p energyEv, including its background.
double referenceMut(const Compound& compound, double energyEv);

/// The fraction that each compound contributes to an edge jump, in the order of
/// compounds(). The fractions sum to 1.
using Fractions = std::array<double, 4>;

/// Absorbance of a mixture at @p energyEv without background, in units of its edge jump.
double mixture(const Fractions& fractions, double energyEv);

/// A target spectrum. Its background is the background of Ni(II).
struct Target {
    const char* name;
    const char* fileName;
    Fractions fractions;
    double jump; ///< edge jump, mu*t
};

/// The target of Ni(II) and Ni(III).
const Target& targetOfTwo();

/// The target of all four compounds.
const Target& targetOfFour();

/// Absorbance of @p target at @p energyEv, including its background.
double targetMut(const Target& target, double energyEv);

/// Energies (eV) of the points of every spectrum. They include the energies of all maps.
const std::vector<double>& scanEnergies();

/// The true valence of a pixel of the first image: a ramp from 2.1 at the left to 2.6 at the right,
/// and 2.9 in a ring around the centre of the map.
/// @param x,y  pixel indices; x is 0 at the left, y is 0 in the first line of the map,
///         which is displayed at the bottom
double valenceAt(int x, int y);

/// The fraction of Ni(II) in a pixel of the first image: 3 - valence.
double fractionAt(int x, int y);

/// The true edge jump of a pixel of the first image: 1.4 inside the letters "Ni" and 0.6 around
/// them.
double amountAt(int x, int y);

/// Absorbance of a pixel of the first image at @p energyEv.
double pixelMut(int x, int y, double energyEv);

/// The file name of the first image's text map at @p energyEv.
std::string mapFileName(double energyEv);

/// An image: maps of the same pixels at several energies, in the order of aelk's rows.
struct Image {
    std::vector<double> energiesEv;
    int width;
    int height;
    Fractions (*fractionsAt)(int x, int y);
    double (*amountAt)(int x, int y); ///< edge jump
    std::string (*fileName)(double energyEv);

    /// Absorbance of pixel (@p x, @p y) at @p energyEv.
    double mutAt(int x, int y, double energyEv) const;
};

/// The first image, a mixture of Ni(II) and Ni(III): the letters "Ni" on a thinner
/// background. valenceAt() and amountAt() define it.
const Image& imageOfTwo();

/// The second image, with all four compounds. Each corner is a pure compound: in the
/// first line Ni(II) at the left and Ni(III) at the right, in the last line Ni(IV) at the
/// left and the metal at the right. Between the corners the fractions are interpolated
/// bilinearly.
/// Inside a disk the amount is twice the amount outside. The energies of this image on the
/// rising edge are chosen so that all four compounds have different absorbances.
const Image& imageOfFour();

} // namespace nickel
