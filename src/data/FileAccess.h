// Opens files whose path can name anything: a folder, a pipe or a device.
#pragma once

#include <QIODevice>

class QFile;

namespace data
{

/// Opens @p file read-only, without text mode; the caller can switch on text mode with
/// setTextModeEnabled().
///
/// @return whether @p file is a readable regular file, or a link to one, and is now open.
///         Other files are refused: reading a folder would fail, a pipe could block, and
///         a device could have no end
bool openForReading(QFile& file);

/// Opens @p file write-only. An existing file loses its contents; a missing file is
/// created.
///
/// @param extra  further open flags; the default is the text mode of result files
/// @return false, with @p file closed, if the file cannot be opened or is a pipe:
///         opening a pipe would block until there is a reader. Devices are allowed
bool openForWriting(QFile& file, QIODevice::OpenMode extra = QIODevice::Text);

} // namespace data
