// Saves and restores the texts and states of a widget and of the widgets below it.
#pragma once

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QSignalBlocker>
#include <QTextEdit>
#include <QVariant>

#include <functional>
#include <vector>

namespace tests
{

using States = QMap<QString, QVariant>;

/// Calls @p visit for @p top and all widgets below it. The second argument of @p visit is
/// the path of the widget, which consists of class names, object names and counters, so it is
/// equal in every window of the same class.
/// Skips dialogs and the inner widgets of combo boxes, scroll areas and line edits.
inline void visitWidgets(QWidget* top, const QString& name,
                         const std::function<void(QWidget*, const QString&)>& visit)
{
    visit(top, name);
    if (qobject_cast<QComboBox*>(top) || qobject_cast<QAbstractScrollArea*>(top) ||
        qobject_cast<QLineEdit*>(top)) {
        return;
    }
    QHash<QString, int> namesakes;
    for (QObject* child : top->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || qobject_cast<QDialog*>(widget)) {
            continue;
        }
        const QString own =
            widget->metaObject()->className() + QLatin1Char(' ') + widget->objectName();
        visitWidgets(widget, QStringLiteral("%1/%2 %3").arg(name, own).arg(namesakes[own]++),
                     visit);
    }
}

/// The states of a widget that a user can see or change. Examples: whether it is enabled,
/// its tool tip, its text, whether a button is checked, the item of a combo box.
inline States statesOf(QWidget* widget)
{
    States states{{"enabled", widget->isEnabledTo(widget->parentWidget())},
                  {"tool tip", widget->toolTip()},
                  {"style sheet", widget->styleSheet()}};
    if (!widget->isWindow()) {
        states["hidden"] = widget->isHidden();
    }
    if (const auto* label = qobject_cast<QLabel*>(widget)) {
        states["text"] = label->text();
    } else if (const auto* edit = qobject_cast<QLineEdit*>(widget)) {
        states["text"] = edit->text();
        states["cursor"] = edit->cursorPosition();
        states["read only"] = edit->isReadOnly();
        states["modified"] = edit->isModified();
    } else if (const auto* button = qobject_cast<QAbstractButton*>(widget)) {
        states["text"] = button->text();
        states["checked"] = button->isChecked();
        states["exclusive"] = button->group() && button->group()->exclusive();
    } else if (const auto* box = qobject_cast<QComboBox*>(widget)) {
        QStringList items;
        for (int i = 0; i < box->count(); ++i) {
            items.append(box->itemText(i));
        }
        states["items"] = items;
        states["current"] = box->currentIndex();
    } else if (const auto* text = qobject_cast<QTextEdit*>(widget)) {
        states["text"] = text->toPlainText();
    }
    return states;
}

/// Restores the states that statesOf() returned, except the tool tip and the exclusivity of a
/// button group.
inline void setStates(QWidget* widget, const States& states)
{
    if (states.contains("hidden") && states["hidden"].toBool() != widget->isHidden()) {
        widget->setHidden(states["hidden"].toBool());
    }
    if (states["enabled"].toBool() != widget->isEnabledTo(widget->parentWidget())) {
        widget->setEnabled(states["enabled"].toBool());
    }
    if (states["style sheet"].toString() != widget->styleSheet()) {
        widget->setStyleSheet(states["style sheet"].toString());
    }
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(states["text"].toString());
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        if (edit->text() != states["text"].toString()) {
            edit->setText(states["text"].toString());
        }
        edit->setCursorPosition(states["cursor"].toInt());
        edit->setReadOnly(states["read only"].toBool());
        edit->setModified(states["modified"].toBool());
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(states["text"].toString());
        button->setChecked(states["checked"].toBool());
    } else if (auto* box = qobject_cast<QComboBox*>(widget)) {
        box->clear();
        box->addItems(states["items"].toStringList());
        box->setCurrentIndex(states["current"].toInt());
    } else if (auto* text = qobject_cast<QTextEdit*>(widget)) {
        text->setPlainText(states["text"].toString());
    }
}

/// Unchecks all buttons of a group and makes it exclusive again, after a test has made it
/// non-exclusive.
inline void makeExclusive(QButtonGroup* group)
{
    const QSignalBlocker quiet(group);
    const auto buttons = group->buttons();
    for (QAbstractButton* button : buttons) {
        button->setChecked(false);
    }
    group->setExclusive(true);
}

/// The states of @p top and of all widgets below it, by path.
inline QMap<QString, States> statesBelow(QWidget* top)
{
    QMap<QString, States> all;
    visitWidgets(top, QString(), [&all](QWidget* widget, const QString& name) {
        all.insert(name, statesOf(widget));
    });
    return all;
}

/// Restores the states in @p all, by path, for @p top and the widgets below it. Blocks the signals
/// of buttons, button groups and combo boxes meanwhile.
inline void setStatesBelow(QWidget* top, const QMap<QString, States>& all)
{
    std::vector<QSignalBlocker> quiet;
    visitWidgets(top, QString(), [&](QWidget* widget, const QString& name) {
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button || qobject_cast<QComboBox*>(widget)) {
            quiet.emplace_back(widget);
        }
        if (button && button->group()) {
            quiet.emplace_back(button->group());
            if (all[name]["exclusive"].toBool() && !button->group()->exclusive()) {
                makeExclusive(button->group());
            }
        }
    });
    visitWidgets(top, QString(), [&all](QWidget* widget, const QString& name) {
        if (all.contains(name)) {
            setStates(widget, all[name]);
        }
    });
}

} // namespace tests
