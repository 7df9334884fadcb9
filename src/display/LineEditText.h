// Functions for the text of line edits: numbers, text colour and shortening.
#pragma once

class QFontMetricsF;
class QLineEdit;
class QString;
class QWidget;

namespace display
{

/// Shows @p value with at most 6 significant digits and scrolls to the first character.
void showNumber(QLineEdit* edit, double value);

/// Returns the number in @p edit, or 0 if the text is not a number.
double numberIn(const QLineEdit* edit);

/// Sets the text colour of @p field to black. Use this for widgets with a fixed light
/// background: their text would be unreadable on desktops with light text.
void setBlackText(QWidget* field);

/// Shortens @p text to @p width pixels, with an ellipsis for the omitted part. Text
/// that fits is returned unchanged.
/// - In a number, the last digits of the mantissa are omitted. The exponent is always
///   kept, even if it does not fit: without it the number would have another magnitude.
/// - In a path, the middle is omitted.
/// - Any other text is treated as a list of items, separated by blanks or commas. It is
///   cut after a whole item, because a list that ends with a part of a number could be
///   misread. If not even the first item fits, the middle of the text is omitted.
QString shortened(const QString& text, const QFontMetricsF& metrics, double width);

} // namespace display
