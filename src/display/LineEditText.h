// Numbers in line edits, the way every row and the panel write and read them.
#pragma once

class QFontMetricsF;
class QLineEdit;
class QString;
class QWidget;

namespace display
{

/// Shows @p value with 6 significant digits, the first of them in view.
void showNumber(QLineEdit* edit, double value);

/// The number in the field; text that is no number reads as 0.
double numberIn(const QLineEdit* edit);

/// Gives a field or text box with a light background of its own black text, so
/// that it can be read on desktops with light text, too.
void setBlackText(QWidget* field);

/// @p text with an ellipsis in place of what is too much for @p width pixels: in
/// a number the last digits, before the exponent or at the end, in a path the
/// middle, in any other text what follows a whole item of it. A list with half a
/// number in it could be misread. The exponent stays even where it does not fit, since
/// without it a number would read as one of another magnitude.
QString shortened(const QString& text, const QFontMetricsF& metrics, double width);

} // namespace display
