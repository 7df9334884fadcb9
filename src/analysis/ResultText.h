// The text of a result map file.
#pragma once

#include "analysis/ValenceMix.h"

#include <QString>

#include <array>

class A2DData;
class QIODevice;

namespace analysis
{

/// The number of columns that an extended result map can write.
inline constexpr int columnCount = 13;

/// Name of result column @p i in the file: "alpha1" ... "Total-dMut"; "UnKnown"
/// outside 0 to 12.
QString columnName(int i);

/// Writes the result map file: title line, the map's comment lines, a blank
/// line and the table of the layout in force (map.extended).
///
/// @param device  open for writing, in text mode where line ends matter
/// @param mix     valence of a fraction, used by the simple layout
/// @param wanted  which columns the extended layout has
/// @return false when a write failed; what was written before stays
bool writeResultMap(QIODevice& device, const A2DData& map, const ValenceMix& mix,
                    const std::array<bool, columnCount>& wanted);

} // namespace analysis
