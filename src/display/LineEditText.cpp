#include "display/LineEditText.h"

#include <QLineEdit>
#include <QString>

namespace display
{

void showNumber(QLineEdit* edit, double value)
{
    edit->setText(QString::number(value, 'g', 6));
    edit->setCursorPosition(0);
}

double numberIn(const QLineEdit* edit)
{
    return edit->text().toDouble();
}

} // namespace display
