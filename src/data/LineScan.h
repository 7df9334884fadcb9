// A quick check whether a text map file can exceed the bounds of its reader.
#pragma once

class QIODevice;

namespace data
{

/// Whether a text map file can have too many lines, a line that is too long, or too much
/// comment text for its reader.
///
/// The function is fast because it examines only line feeds and the first non-blank byte
/// of each line. A line counts as a comment if this byte is "#" or must be decoded (see
/// ByteKind). For UTF-8 text, false is certain: the reader does not refuse the file for
/// these reasons. If the result is true, only the reader itself can decide.
///
/// Reads @p device from its position to its end.
bool mayBeRefused(QIODevice& device);

} // namespace data
