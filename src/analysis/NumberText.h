// Numbers as text, to the digit as the toolkit writes them, but faster.
//
// Most numbers take a fast path: one multiplication by an exact power of ten puts
// their six digits before the point, where they are rounded. That is allowed
// because its error is known, and a number for which it could matter goes to the
// toolkit, as do all below 1e-16, from 1e27 on and those that are not finite.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstddef>

namespace analysis
{

/// Bytes that generalText() may write. The text itself has at most
/// generalTextLength characters; the rest is scratch.
inline constexpr std::size_t generalTextCapacity = 32;

/// Length of the longest text, such as "-1.23457e-100".
inline constexpr std::size_t generalTextLength = 13;

/// Writes @p value in general format with 6 significant digits to @p out, at
/// least generalTextCapacity bytes, byte for byte what QString::arg(double) gives:
/// exact halves are rounded away from zero, -0.0 reads "0", and what is no
/// finite number reads "nan", "inf" or "-inf".
/// @return the number of bytes written; no terminating zero
std::size_t generalText(double value, char* out);

/// Appends generalText() of @p value, right-aligned in @p width characters; a
/// longer number takes the characters that it needs. The same bytes as
/// QString::arg(value, width, 'g', -1, ' ').
void appendGeneral(QByteArray& text, double value, int width);

/// @p value with three decimals and a place for its sign, so that a positive
/// and a negative number of one size are equally wide: " 0.250", "-0.250".
QString signedText(double value);

/// The numbers by signedText(), with " : " between them.
QString signedTexts(const QList<double>& values);

} // namespace analysis
