// Indices of the values that the non-equivalent method calculates.
#pragma once

/// Indices in the list of values that the non-equivalent method calculates. They do not
/// depend on the number of references in use. Result files and map displays use the same
/// indices as column numbers. E is the energy, and L = hc / E is the wavelength.
namespace analysis::neq
{

inline constexpr int references = 4;        ///< number of reference rows of the panel
inline constexpr int share = 0;             ///< first of four shares, which add up to 1
inline constexpr int dMut = references;     ///< first of four contributions to the edge jump
inline constexpr int mut0 = 2 * references; ///< constant term of the background
inline constexpr int c1 = mut0 + 1;         ///< coefficient of L^3 (Victoreen) or E (linear)
inline constexpr int c2 = mut0 + 2;         ///< coefficient of L^4 (Victoreen); 0 if linear
inline constexpr int valence = mut0 + 3;    ///< sum of share times valence
inline constexpr int totalDMut = mut0 + 4;  ///< sum of the four contributions to the edge jump

/// Length of the list of values.
inline constexpr int count = 2 * references + 5;

} // namespace analysis::neq
