// The text of a result map file.
#pragma once

#include "analysis/NeqPlaces.h"
#include "analysis/ValenceMix.h"

#include <QString>

#include <array>

class A2DData;
class QIODevice;

namespace analysis
{

/// The number of columns that an extended result map can write.
inline constexpr int columnCount = neq::count;

/// Name of result column @p i in the file: "alpha1" ... "Total-dMut"; "UnKnown"
/// outside 0 to 12.
QString columnName(int i);

/// Writes the result map file: title line, the map's comment lines, a blank
/// line and the table of the layout in force (map.extended).
///
/// Line by line of the image, x fastest, pixel index y * xNum + x, and a blank
/// line after each image line. Simple layout: x, y, fraction, valence and
/// thickness of the pixel. Extended layout: a line of column names, and x, y and
/// the wanted values of the pixel; the names begin with "y x" although x comes
/// first in the lines. What the map lacks reads 0. A size of 0 or less has no
/// pixels: without lines nothing is written, without columns the blank lines.
///
/// Numbers as QString::arg(value, 10, 'g', -1, ' '), comment lines in UTF-8.
///
/// @param device  open for writing, in text mode where line ends matter
/// @param mix     valence of a fraction, used by the simple layout
/// @param wanted  which columns the extended layout has
/// @return false when a write failed; what was written before stays. A file's
///         own buffer is flushed, so that a full disk shows here
bool writeResultMap(QIODevice& device, const A2DData& map, const ValenceMix& mix,
                    const std::array<bool, columnCount>& wanted);

} // namespace analysis
