// Reads the text form of a map file into an A2DData.
//
// Data lines of plain ASCII take a fast path that finds and converts the words in
// the bytes of the file, without a string for each line. That is allowed because
// such bytes mean the same to any decoder; any other line is taken as text.
#pragma once

#include "data/A2DData.h"

#include <QtGlobal>

#include <functional>

class QIODevice;
class QString;

namespace data
{

/// Bytes that the reader asks of its device at a time; a longer line makes the
/// block grow.
inline constexpr qsizetype mapTextBlockSize = qsizetype{256} * 1024;

/// Takes the energy text of an "ENERGY" comment line, at the moment the line
/// is read.
using EnergyHandler = std::function<void(const QString& text)>;

/// Reads a text map from @p device, which is open for reading and not in text
/// mode (line ends are handled here), into @p map, which is cleared first.
///
/// The text is UTF-8 unless a byte order mark says otherwise, and every
/// carriage return is dropped. Numbers are read in the C locale; what is no
/// number reads as 0. The kind of the file comes from its first line
/// ("# 1306", "# 2003901", or any other). A device that fails ends the text.
///
/// Past a bound of data/ReadBounds.h, beyond @p most rows, or without the memory, the
/// file is refused: the map is left empty. Large files are read twice for it, so that
/// their rows are not stored before; a sequential device cannot be.
///
/// @param energyFound  called once for every "ENERGY" line, at the moment the line is
///                     read: also when the map turns out to have no size, or when
///                     what follows refuses it
/// @param most         the rows that the map may have
/// @return whether the map has a size and at least one row. On false the rows
///         read so far stay in @p map unless the file was refused. A size that
///         data::isSizeTooLarge() is a failed read that leaves the size 0 by 0.
///         Refusals are told in the debug log
bool readMapText(QIODevice& device, A2DData& map, const EnergyHandler& energyFound,
                 qsizetype most = maxMapPixels);

} // namespace data
