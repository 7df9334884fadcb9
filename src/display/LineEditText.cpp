#include "display/LineEditText.h"

#include <QFontMetricsF>
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

void setBlackText(QWidget* field)
{
    QPalette palette = field->palette();
    palette.setColor(QPalette::Text, Qt::black);
    field->setPalette(palette);
}

QString shortened(const QString& text, const QFontMetricsF& metrics, double width)
{
    const auto fits = [&](const QString& candidate) {
        return metrics.horizontalAdvance(candidate) <= width;
    };
    bool isNumber = false;
    text.toDouble(&isNumber);
    if (fits(text)) {
        return text;
    }
    if (!isNumber) {
        return metrics.elidedText(text, Qt::ElideMiddle, width);
    }
    const qsizetype e = text.indexOf(u'e', 0, Qt::CaseInsensitive);
    const QString mantissa = text.left(e); // all of it without an exponent
    const QString tail = QChar(0x2026) + (e < 0 ? QString() : text.mid(e));
    qsizetype kept = mantissa.size() - 1;
    while (kept > 0 && !fits(mantissa.left(kept) + tail)) {
        --kept;
    }
    return mantissa.left(kept) + tail;
}

} // namespace display
