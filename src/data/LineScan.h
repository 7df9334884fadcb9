// A first look at the lines of a text file.
#pragma once

class QIODevice;

namespace data
{

/// Whether the lines of a map file are so many or so long, or so many of them
/// comments, that its reader may have to refuse it. Looks at line feeds and at the
/// first characters of lines only, and takes what is not plain ASCII for the worse,
/// so that true is no more than a reason to look closer.
///
/// Reads @p device from its position to its end.
bool mayBeRefused(QIODevice& device);

} // namespace data
