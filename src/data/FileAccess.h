// Opening of files that may be anything.
#pragma once

class QFile;
class QString;

namespace data
{

/// Opens @p file read-only, without text mode. False for anything but a
/// readable regular file: a folder, a pipe or a device would fail, block or
/// never end.
bool openForReading(QFile& file);

/// Opens @p file write-only in text mode, replacing its contents. False when
/// that fails, and for a pipe, whose open would wait for a reader.
bool openForWriting(QFile& file);

} // namespace data
