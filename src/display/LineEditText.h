// Numbers in line edits, the way every row and the panel write and read them.
#pragma once

class QLineEdit;

namespace display
{

/// Shows @p value with 6 significant digits, the first of them in view.
void showNumber(QLineEdit* edit, double value);

/// The number in the field; text that is no number reads as 0.
double numberIn(const QLineEdit* edit);

} // namespace display
