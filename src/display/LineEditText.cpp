#include "display/LineEditText.h"

#include <QFontMetricsF>
#include <QLineEdit>
#include <QString>

namespace
{

/// Returns as many whole items from the beginning of @p text as fit, followed by an
/// ellipsis. Items are separated by blanks or commas. If no item fits or if the text is a
/// path, the middle of the text is replaced by an ellipsis instead.
QString shortenedItems(const QString& text, const QFontMetricsF& metrics, double width)
{
    const qsizetype last = text.contains(u'/') ? 0 : text.size();
    QString front;
    // Starts at the beginning: from the end of a very long text, many long candidates would
    // be measured before one fits.
    for (qsizetype end = 1; end <= last; ++end) {
        if (text.at(end - 1) != u' ' && text.at(end - 1) != u',') {
            continue;
        }
        const QString longer = text.left(end) + QChar(0x2026);
        if (metrics.horizontalAdvance(longer) > width) {
            break;
        }
        front = longer;
    }
    return front.isEmpty() ? metrics.elidedText(text, Qt::ElideMiddle, width) : front;
}

} // namespace

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
        return shortenedItems(text, metrics, width);
    }
    const qsizetype e = text.indexOf(u'e', 0, Qt::CaseInsensitive);
    const QString mantissa = text.left(e); // the whole text if there is no exponent
    const QString tail = QChar(0x2026) + (e < 0 ? QString() : text.mid(e));
    // The loop starts at the beginning, because a number in a file can have thousands of
    // digits: from the end, many long candidates would be measured before one fits.
    qsizetype kept = 0;
    while (kept + 1 < mantissa.size() && fits(mantissa.left(kept + 1) + tail)) {
        ++kept;
    }
    return mantissa.left(kept) + tail;
}

} // namespace display
