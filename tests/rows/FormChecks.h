// Helpers that check the widgets of a form.
#pragma once

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QWidget>

namespace tests
{

/// The style sheet of read-only result fields and of file name fields.
inline constexpr QLatin1String resultStyle("background-color: rgb(255, 255, 220);");

/// The column of @p widget in its parent's grid layout; -1 if the widget is not in the
/// grid, not in row 0, or spans several cells.
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

/// The "text" property of @p widget; empty if the widget has no such property.
inline QString textOf(const QWidget* widget)
{
    return widget->property("text").toString();
}

/// The direct child of @p row called @p name; null if it does not exist. Deeper
/// descendants are ignored, because nested rows contain widgets with the same names.
inline QWidget* directChild(const QWidget* row, const QString& name)
{
    return row->findChild<QWidget*>(name, Qt::FindDirectChildrenOnly);
}

/// The expected properties of one widget of a form.
struct FormWidget {
    const char* name;
    int column;
    const char* className;
    const char* text = "";
};

/// The names of the expected widgets that are missing in @p row, or whose column, class
/// or text differs.
inline QStringList formDifferences(const QWidget* row, const QList<FormWidget>& expected)
{
    QStringList found;
    for (const FormWidget& formWidget : expected) {
        const QWidget* widget = directChild(row, QString::fromLatin1(formWidget.name));
        if (!widget || gridColumn(widget) != formWidget.column ||
            qstrcmp(widget->metaObject()->className(), formWidget.className) != 0 ||
            textOf(widget) != QString::fromUtf8(formWidget.text)) {
            found.append(QString::fromLatin1(formWidget.name));
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
