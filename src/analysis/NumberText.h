// Numbers as text, to the digit as the toolkit writes them, but faster.
#pragma once

#include <QByteArray>

#include <cstddef>

namespace analysis
{

/// Room that generalText() may need.
inline constexpr std::size_t generalTextRoom = 32;

/// Writes @p value in general format with 6 significant digits to @p out, at
/// least generalTextRoom bytes, byte for byte what QString::arg(double) gives.
/// @return the number of bytes written; no terminating zero
std::size_t generalText(double value, char* out);

/// Appends generalText() of @p value, right-aligned in @p width characters; a
/// longer number takes the room that it needs.
void appendGeneral(QByteArray& text, double value, int width);

} // namespace analysis
