// Reference implementation of the text map reader; the fast path must give the same
// result.
#pragma once

#include "data/MapTextReader.h"

class A2DData;
class QIODevice;
class QString;

namespace tests
{

/// Reads the text map at @p path into @p map. It reads a QTextStream in text mode line by
/// line, simplifies each line, splits it by a regular expression and converts every
/// number by QString::toDouble. Slow but simple; not part of the product.
///
/// @return true if the map has a size and at least one row, as data::readMapText; false,
///         with @p map unchanged, if the file cannot be opened
bool readPlainMap(const QString& path, A2DData& map, const data::EnergyHandler& energyFound);

/// Like the overload above, for a device that is open for reading in text mode.
bool readPlainMap(QIODevice& device, A2DData& map, const data::EnergyHandler& energyFound);

} // namespace tests
