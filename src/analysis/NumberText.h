// Formats numbers as text. generalText() writes the same bytes as QString, but faster.
//
// Most numbers take its fast path: one multiplication or division by an exact power of
// ten puts the six digits before the decimal point, where they are rounded. The error
// of this step has a known bound. QString formats all other numbers: those for which
// the error could change the rounding, those that round up to seven digits, magnitudes
// below 1e-16 or from 1e27 up, infinities and NaN. Zero is always written as "0".
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstddef>
#include <span>

namespace analysis
{

/// Size of the buffer for generalText(). The text has at most generalTextLength
/// characters; generalText() can also overwrite the bytes after it.
inline constexpr std::size_t generalTextCapacity = 32;

/// Length of the longest text of a number, for example "-1.23457e-100".
inline constexpr std::size_t generalTextLength = 13;

/// Writes @p value in general format with 6 significant digits to the beginning of
/// @p out, with the same bytes as QString::arg(double). Exact halves are rounded away
/// from zero. -0.0 is written as "0", non-finite values as "nan", "inf" or "-inf".
/// @return the length of the text, which has no terminating null character
std::size_t generalText(double value, std::span<char, generalTextCapacity> out);

/// Appends generalText() of @p value, right-aligned in a field of @p width characters (0 or
/// more). A longer text is not cut. QString::arg(value, width, 'g', -1, ' ') returns the
/// same text.
void appendGeneral(QByteArray& text, double value, int width);

/// @p value with three decimals, in the format "% 6.3f". A number without a minus sign
/// gets a leading blank instead: " 0.250", "-0.250".
QString signedText(double value);

/// The signedText() of each value, separated by " : "; empty without values.
QString signedTexts(const QList<double>& values);

} // namespace analysis
