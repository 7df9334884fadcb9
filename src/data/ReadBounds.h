// Bounds beyond which a reader refuses a file, and the report of a refusal.
#pragma once

#include <QDebug>
#include <QtGlobal>

namespace data
{

/// Maximum length of a line in a text file, in UTF-16 code units.
inline constexpr qint64 longestLine = qint64{16} * 1024 * 1024;

/// Largest number of points in a spectrum.
inline constexpr qsizetype maxSpectrumPoints = qsizetype{1} << 22;

/// Maximum total size of the comment lines of a text map: their UTF-16 code units plus
/// commentLineCost for each line.
inline constexpr qint64 maxCommentText = qint64{64} * 1024 * 1024;

/// Memory overhead that is counted for each comment line. Without it, a file in which
/// every line is a single "#" could need thirty times its size in memory.
inline constexpr qint64 commentLineCost = 64;

/// Writes to the debug log why a file is refused.
inline void reportRefusal(const char* reason)
{
    qDebug() << "the file is refused:" << reason;
}

} // namespace data
