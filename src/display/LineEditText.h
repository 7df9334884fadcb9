// Numbers in line edits: how they are written, read and shortened.
#pragma once

class QFontMetricsF;
class QLineEdit;
class QString;
class QWidget;

namespace display
{

/// Shows @p value with 6 significant digits and scrolls to the first digit.
void showNumber(QLineEdit* edit, double value);

/// Returns the number in @p edit, or 0 if the text is not a number.
double numberIn(const QLineEdit* edit);

/// Sets the text colour of @p field to black. For widgets with a fixed light
/// background, whose text would be unreadable on desktops with light text.
void setBlackText(QWidget* field);

/// Shortens @p text to @p width pixels, with an ellipsis for the omitted part. Text
/// that fits is returned unchanged.
/// - A number loses the last digits of its mantissa. Its exponent is always kept, even
///   if it does not fit, since without it the number would have another magnitude.
/// - A path loses its middle.
/// - Any other text is cut after a whole item, since a list that ends with a part of a
///   number could be misread.
QString shortened(const QString& text, const QFontMetricsF& metrics, double width);

} // namespace display
