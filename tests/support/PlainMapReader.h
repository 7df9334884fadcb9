// The reference reader of a text map, which the fast one must equal.
#pragma once

#include "data/MapTextReader.h"

class A2DData;
class QIODevice;
class QString;

namespace tests
{

/// Reads the text map at @p path into @p map: a QTextStream in text mode, a
/// line at a time, simplified, split by an expression, every number through
/// QString::toDouble. Slow, and plain to read; not part of the product.
///
/// @return whether the map has a size and a row, as data::readMapText does;
///         false, with @p map left alone, for a file that cannot be opened
bool readPlainMap(const QString& path, A2DData& map, const data::EnergyHandler& energyFound);

/// The same for a device that is open for reading, in text mode.
bool readPlainMap(QIODevice& device, A2DData& map, const data::EnergyHandler& energyFound);

} // namespace tests
