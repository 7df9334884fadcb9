// The places of the values that the non-equivalent method gives.
#pragma once

/// Places in the list of values that the method gives, whatever the number of
/// references in use. Result files and map displays know the values by place.
namespace analysis::neq
{

inline constexpr int references = 4;        ///< reference rows of the panel
inline constexpr int share = 0;             ///< shares of the references; they add up to 1
inline constexpr int dMut = references;     ///< edge jumps of the references in the target
inline constexpr int mut0 = 2 * references; ///< constant of the background
inline constexpr int c1 = mut0 + 1;         ///< its slope: with L^3, or with E
inline constexpr int c2 = mut0 + 2;         ///< with L^4; 0 with the linear background
inline constexpr int valence = mut0 + 3;    ///< shares times valences
inline constexpr int totalDMut = mut0 + 4;  ///< sum of the references' dMut
inline constexpr int count = 2 * references + 5;

} // namespace analysis::neq
