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
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace display
{

namespace
{

constexpr double smallestPoints = 7.0;
constexpr int narrowestStretch = 65;
constexpr int ordinaryStretch = 100;

/// Font size and stretch are reduced together in this number of steps.
constexpr int steps = 7;

/// In pixels: the space that QLineEdit leaves free on each side of its text, and the width
/// of the cursor after the text.
constexpr int sideMargin = 2;
constexpr int cursorWidth = 1;

/// Returns the font of @p step. Step 0 is @p ordinary; the last step (@c steps) is the
/// smallest and narrowest font.
QFont fontOfStep(const QFont& ordinary, int step)
{
    QFont font(ordinary);
    if (step == 0) {
        return font;
    }
    const double fraction = static_cast<double>(step) / steps;
    const double points = QFontInfo(ordinary).pointSizeF();
    // A font that is already below the smallest size only becomes narrower.
    const double minimum = std::min(points, smallestPoints);
    font.setPointSizeF(points - fraction * (points - minimum));
    font.setStretch(ordinaryStretch -
                    static_cast<int>(fraction * (ordinaryStretch - narrowestStretch)));
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
        setBlackText(this);
    }
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange) {
        fit();
    }
}

void FittedEdit::keyPressEvent(QKeyEvent* event)
{
    m_hasKeys = true;
    QLineEdit::keyPressEvent(event);
    update();
}

void FittedEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Editing continues if only the window has lost the focus or the context menu is open.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        setCursorPosition(0);
        endEditing();
    }
}

void FittedEdit::endEditing()
{
    setModified(false);
    m_hasKeys = false;
    update();
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

void FittedEdit::applyFont(const QFont& font)
{
    const QScopedValueRollback<bool> guard(m_isApplyingFont, true);
    setFont(font);
}

void FittedEdit::fit()
{
    if (m_isApplyingFont) {
        return;
    }
    if (m_fitted) {
        m_fitted = false;
        applyFont(QFont()); // restores the inherited font
    }
    const QFont ordinary = font();
    const int available = textRect().width();
    int step = 0;
    while (step < steps && widthOf(fontOfStep(ordinary, step), text()) > available) {
        ++step;
    }
    const QFont fitted = fontOfStep(ordinary, step);
    m_overflows = step == steps && widthOf(fitted, text()) > available;
    if (step > 0) {
        m_hint = QLineEdit::sizeHint();
        m_minimumHint = QLineEdit::minimumSizeHint();
        m_fitted = true;
        applyFont(fitted);
    }
    // QToolTip would interpret some texts as rich text, so they are escaped.
    const QString tip = Qt::mightBeRichText(text()) ? text().toHtmlEscaped() : text();
    setToolTip(m_overflows ? tip : QString());
}

bool FittedEdit::isBeingEdited() const
{
    const bool isPartSelected = hasSelectedText() && selectedText() != text();
    return hasFocus() && (m_hasKeys || isModified() || isPartSelected);
}

void FittedEdit::paintEvent(QPaintEvent* event)
{
    if (m_overflows && !isBeingEdited()) {
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
    const QRect place = textRect();
    p.setFont(font());
    if (hasSelectedText()) {
        p.fillRect(place, palette().brush(QPalette::Highlight));
    }
    p.setPen(palette().color(hasSelectedText() ? QPalette::HighlightedText : QPalette::Text));
    p.drawText(place,
               static_cast<int>(Qt::AlignVCenter |
                                QStyle::visualAlignment(layoutDirection(), alignment())),
               shortened(text(), QFontMetricsF(font()), place.width()));
}

} // namespace display
