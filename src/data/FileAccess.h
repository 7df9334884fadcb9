// Opening of files that may be anything.
#pragma once

#include <QIODevice>

class QFile;

namespace data
{

/// Opens the file that @p file names read-only, without text mode; the caller
/// adds that with setTextModeEnabled().
///
/// @return false, with @p file closed, for anything but a readable regular
///         file or a link to one: a folder, a pipe or a device would fail,
///         block or never end
bool openForReading(QFile& file);

/// Opens the file that @p file names write-only, replacing its contents; it is
/// made when it is not there.
///
/// @param extra  further open flags, text mode for the text files of results
/// @return false, with @p file closed, when that fails, and for a pipe, whose
///         open would wait for a reader. Devices are taken.
bool openForWriting(QFile& file, QIODevice::OpenMode extra = QIODevice::Text);

} // namespace data
