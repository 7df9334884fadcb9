// Reads the text format of a map file into an A2DData.
//
// Most data lines are plain ASCII. They take a fast path that finds and converts the words
// in the bytes of the file, without a string for each line. This is correct because ASCII
// bytes need no decoding in UTF-8. Other lines are decoded first.
#pragma once

#include "data/A2DData.h"

#include <QtGlobal>

#include <functional>

class QIODevice;
class QString;

namespace data
{

/// Largest number of bytes that the reader requests from its device at a time. For a
/// longer line, it reads several blocks into a larger buffer.
inline constexpr qsizetype mapTextBlockSize = qsizetype{256} * 1024;

/// Receives the energy text of an "ENERGY" comment line.
using EnergyHandler = std::function<void(const QString& text)>;

/// Reads a text map from @p device into @p map, which is cleared first.
///
/// The text is UTF-8 unless a byte order mark states another encoding, and every
/// carriage return is dropped. Numbers are read in the C locale; an unparsable number
/// reads as 0. The first line determines the kind of the file ("# 1306", "# 2003901",
/// or any other). If the device fails, the text ends there.
///
/// A file is refused, and the map left empty, if it exceeds a bound of
/// data/ReadBounds.h, has more than @p maxRows pixels, or does not fit into memory. A
/// large file whose lines can exceed a bound is first read without storing pixels,
/// unless the device is sequential. Refusals are written to the debug log.
///
/// If data::isSizeTooLarge() is true for the size of the map, the size is set to 0 by 0
/// and the reading fails.
///
/// @param device       open for reading, not in text mode: line ends are handled here
/// @param energyFound  called when an "ENERGY" line is read, even if the reading fails or
///                     the file is refused later; not called while a large file is read
///                     without storing pixels
/// @param maxRows      largest number of pixels in the map
/// @return whether the map's width and height are above 0 and it has at least one pixel.
///         On false, the pixels read so far remain in @p map unless the file was refused
bool readMapText(QIODevice& device, A2DData& map, const EnergyHandler& energyFound,
                 qsizetype maxRows = maxMapPixels);

} // namespace data
