// How much of a file a reader takes before it refuses the file.
#pragma once

#include <QDebug>
#include <QtGlobal>

namespace data
{

/// The longest line of a text file, in characters of UTF-16.
inline constexpr qint64 longestLine = qint64{16} * 1024 * 1024;

/// The most points of a spectrum.
inline constexpr qsizetype maxSpectrumPoints = qsizetype{1} << 22;

/// The comment lines of a text map in all: their characters, and for each line
/// what it takes in memory besides. Without that, lines of a single "#" would take
/// thirty times the size of their file.
inline constexpr qint64 maxCommentText = qint64{64} * 1024 * 1024;
inline constexpr qint64 commentLineCost = 64;

/// Tells in the debug log why a file is a failed read.
inline void reportRefusal(const char* reason)
{
    qDebug() << "the file is refused:" << reason;
}

} // namespace data
