// Text format of a result map file.
#pragma once

#include "analysis/NeqColumns.h"
#include "analysis/ValenceMix.h"

#include <QString>

#include <array>

class A2DData;
class QIODevice;

namespace analysis
{

/// Number of selectable columns in the extended layout.
inline constexpr int columnCount = neq::count;

/// Name of column @p i in the file, "alpha1" to "Total-dMut"; "UnKnown" if @p i is not 0 to 12.
QString columnName(int i);

/// Writes a result map: title line, the map's comment lines, a blank line, and the table in
/// the extended layout if map.extended is true, otherwise in the simple layout.
///
/// The table has one line per pixel, row-major, and a blank line after each image line.
/// Simple layout: x, y, fraction, valence and thickness. Extended layout: x, y and the
/// wanted values; a line of column names precedes the table. The line of column names
/// begins with "# y x" although x is written first; the format is kept on purpose.
///
/// The numbers of a pixel that the map does not contain are written as 0, except the valence
/// in the simple layout, which is the valence for the fraction 0. In the extended layout, a
/// value that is missing from a pixel's list is also written as 0. If the height is 0
/// or less, the table has no lines; if only the width is 0 or less, it has only the blank
/// lines.
///
/// Numbers are formatted like QString::arg(value, 10, 'g', -1, ' '), comment lines in UTF-8.
///
/// @param device  open for writing; in text mode for the line ends of the platform
/// @param mix     converts a fraction to a valence; simple layout only
/// @param wanted  whether to write each column; extended layout only
/// @return false if a write failed; the text written before remains. If @p device is a file,
///         its buffer is flushed, so that a full disk is detected.
bool writeResultMap(QIODevice& device, const A2DData& map, const ValenceMix& mix,
                    const std::array<bool, columnCount>& wanted);

} // namespace analysis
