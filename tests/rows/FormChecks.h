// Checks that a row's form is the one that was agreed on.
#pragma once

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QWidget>

namespace tests
{

/// The style of a field that shows a result and of one that names a file.
inline constexpr QLatin1String resultStyle("background-color: rgb(255, 255, 220);");

/// The grid column of @p widget inside its parent's grid layout, -1 when it is
/// not in there or not in row 0 with a span of one.
inline int gridColumn(const QWidget* widget)
{
    const auto* grid = qobject_cast<QGridLayout*>(widget->parentWidget()->layout());
    const int index = grid != nullptr ? grid->indexOf(widget) : -1;
    if (index < 0) {
        return -1;
    }
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
    return row == 0 && rowSpan == 1 && columnSpan == 1 ? column : -1;
}

/// What the "text" property of @p widget says.
inline QString textOf(const QWidget* widget)
{
    return widget->property("text").toString();
}

/// The child called @p name that is no part of another row inside @p row.
inline QWidget* ownChild(const QWidget* row, const QString& name)
{
    return row->findChild<QWidget*>(name, Qt::FindDirectChildrenOnly);
}

/// A widget of a form: its name, the column where it is, its class and its text.
struct FormWidget {
    const char* name;
    int column;
    const char* className;
    const char* text = "";
};

/// What the widgets of @p row differ in from those that were agreed on.
inline QStringList differencesOfForm(const QWidget* row, const QList<FormWidget>& agreed)
{
    QStringList found;
    for (const FormWidget& wanted : agreed) {
        const QWidget* widget = ownChild(row, QString::fromLatin1(wanted.name));
        if (!widget || gridColumn(widget) != wanted.column ||
            qstrcmp(widget->metaObject()->className(), wanted.className) != 0 ||
            textOf(widget) != QString::fromUtf8(wanted.text)) {
            found.append(QString::fromLatin1(wanted.name));
        }
    }
    return found;
}

inline bool isRightAligned(const QLineEdit* edit)
{
    return (edit->alignment() & Qt::AlignHorizontal_Mask & Qt::AlignRight) != 0 &&
           (edit->alignment() & Qt::AlignVertical_Mask) == Qt::AlignVCenter;
}

} // namespace tests
