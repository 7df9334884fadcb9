// A quick check whether a text map file can exceed the bounds of its reader.
#pragma once

class QIODevice;

namespace data
{

/// Whether a text map file may have too many lines, a line that is too long, or too much
/// comment text for its reader.
///
/// This is an upper estimate: it looks only at line feeds and at the first characters
/// of lines, and counts a line that starts with a byte other than plain ASCII as a
/// comment. If the result is true, only reading the whole file shows whether it is
/// refused.
///
/// Reads @p device from its position to its end.
bool mayBeRefused(QIODevice& device);

} // namespace data
