// Reference implementation of the text map reader. The fast path must return the same
// result.
#pragma once

#include "data/MapTextReader.h"

class A2DData;
class QIODevice;
class QString;

namespace tests
{

/// Reads the text map at @p path into @p map. Opens the file in text mode, reads it line by
/// line with QTextStream, simplifies each line, splits it by a regular expression and
/// converts the numbers by QString::toDouble() or toInt(). This is simple but slow; it is not part
/// of the program.
///
/// @return true if the map has a size and at least one row, like data::readMapText().
///         False if the file cannot be opened; @p map is then unchanged.
bool readPlainMap(const QString& path, A2DData& map, const data::EnergyHandler& energyFound);

/// Reads a text map like the function above, from a device that is open for reading in text
/// mode.
bool readPlainMap(QIODevice& device, A2DData& map, const data::EnergyHandler& energyFound);

} // namespace tests
