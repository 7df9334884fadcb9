#include "display/FittedEdit.h"

#include "display/LineEditText.h"

#include <QEvent>
#include <QFocusEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double smallestPoints = 7.0;
constexpr int narrowestStretch = 65;
constexpr int ordinaryStretch = 100;

/// Size and width of the letters go down together, in this many steps.
constexpr int steps = 7;

/// The toolkit leaves these pixels free at either end of a line edit's text, and
/// needs one more for the cursor behind it.
constexpr int sideMargin = 2;
constexpr int cursorWidth = 1;

/// The letters of step @p step: 0 is @p ordinary, @c steps the smallest.
QFont lettersOf(const QFont& ordinary, int step)
{
    QFont font(ordinary);
    if (step == 0) {
        return font;
    }
    const double share = static_cast<double>(step) / steps;
    const double points = QFontInfo(ordinary).pointSizeF();
    // Letters that are small already are only made narrower.
    const double least = std::min(points, smallestPoints);
    font.setPointSizeF(points - share * (points - least));
    font.setStretch(ordinaryStretch -
                    static_cast<int>(share * (ordinaryStretch - narrowestStretch)));
    return font;
}

double widthOf(const QFont& font, const QString& text)
{
    return std::ceil(QFontMetricsF(font).horizontalAdvance(text)) + cursorWidth;
}

} // namespace

FittedEdit::FittedEdit(QWidget* parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &FittedEdit::fit);
}

QSize FittedEdit::sizeHint() const
{
    return m_fitted ? m_hint : QLineEdit::sizeHint();
}

QSize FittedEdit::minimumSizeHint() const
{
    return m_fitted ? m_minimumHint : QLineEdit::minimumSizeHint();
}

void FittedEdit::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::StyleChange && !styleSheet().isEmpty()) {
        display::setBlackText(this);
    }
    const bool ownChange = m_takingLetters && event->type() == QEvent::FontChange;
    if (!ownChange &&
        (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)) {
        fit();
    }
}

void FittedEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // A window that lost the focus, or a menu of the field, is not left for good.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        setCursorPosition(0);
    }
}

void FittedEdit::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    fit();
}

QRect FittedEdit::textRect() const
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, this)
        .marginsRemoved(textMargins())
        .adjusted(sideMargin, 0, -sideMargin, 0);
}

int FittedEdit::textRoom() const
{
    return textRect().width();
}

void FittedEdit::takeLetters(const QFont& font)
{
    const QScopedValueRollback<bool> own(m_takingLetters, true);
    setFont(font);
}

void FittedEdit::fit()
{
    if (m_takingLetters) {
        return;
    }
    if (m_fitted) {
        m_fitted = false;
        takeLetters(QFont()); // those of the surroundings
    }
    const QFont ordinary = font();
    const int room = textRoom();
    int step = 0;
    while (step < steps && widthOf(lettersOf(ordinary, step), text()) > room) {
        ++step;
    }
    const QFont letters = lettersOf(ordinary, step);
    m_overflows = step == steps && widthOf(letters, text()) > room;
    if (step > 0) {
        m_hint = QLineEdit::sizeHint();
        m_minimumHint = QLineEdit::minimumSizeHint();
        m_fitted = true;
        takeLetters(letters);
    }
    setToolTip(m_overflows ? text() : QString());
}

void FittedEdit::paintEvent(QPaintEvent* event)
{
    if (m_overflows && !hasFocus()) {
        paintShortened();
    } else {
        QLineEdit::paintEvent(event);
    }
}

void FittedEdit::paintShortened()
{
    QPainter p(this);
    QStyleOptionFrame option;
    initStyleOption(&option);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &p, this);
    const QRect room = textRect();
    p.setFont(font());
    p.setPen(palette().color(QPalette::Text));
    p.drawText(room,
               static_cast<int>(Qt::AlignVCenter |
                                QStyle::visualAlignment(layoutDirection(), alignment())),
               display::shortened(text(), QFontMetricsF(font()), room.width()));
}
