#include "panel/LowRows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QWidget>

#include <algorithm>

namespace panel
{

namespace
{

/// Returns the sum of the heights (pixels) that the style adds to a line edit above and
/// below its text.
int lineEditFrameHeight(const QWidget* form)
{
    constexpr int trialHeight = 100;
    QStyleOptionFrame option;
    option.initFrom(form);
    option.rect = QRect(0, 0, trialHeight, trialHeight);
    option.lineWidth = form->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option);
    option.state |= QStyle::State_Sunken;
    return trialHeight -
           form->style()->subElementRect(QStyle::SE_LineEditContents, &option).height();
}

int heightOfEdits(const QWidget* form)
{
    constexpr int padding = 2;
    return form->fontMetrics().height() + lineEditFrameHeight(form) + padding;
}

int heightOfCheckBoxes(const QWidget* form)
{
    constexpr int padding = 1;
    const QStyle* style = form->style();
    return std::max({form->fontMetrics().height(),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, form),
                     style->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, form)}) +
           padding;
}

template <class... Kinds>
bool isOneOf(const QWidget* widget)
{
    return (qobject_cast<const Kinds*>(widget) || ...);
}

void limitHeightsInside(const QWidget* parent, int editHeight, int checkBoxHeight)
{
    for (QObject* child : parent->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget->isWindow()) {
            continue;
        }
        if (isOneOf<QLineEdit, QPushButton, QComboBox>(widget)) {
            widget->setMaximumHeight(editHeight);
        } else if (isOneOf<QCheckBox, QRadioButton>(widget)) {
            widget->setMaximumHeight(checkBoxHeight);
        } else {
            limitHeightsInside(widget, editHeight, checkBoxHeight);
        }
    }
}

} // namespace

LowRows::LowRows(QWidget* form)
    : QObject(form)
    , m_form(form)
{
    form->installEventFilter(this);
    limitHeights();
}

bool LowRows::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        limitHeights();
    }
    return QObject::eventFilter(watched, event);
}

void LowRows::limitHeights() const
{
    limitHeightsInside(m_form, heightOfEdits(m_form), heightOfCheckBoxes(m_form));
}

} // namespace panel
