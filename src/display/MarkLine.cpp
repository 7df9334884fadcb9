#include "display/MarkLine.h"

#include <QLineEdit>

MarkLine::MarkLine(QLineEdit* lineEdit, int axis, QObject* parent)
    : QObject(parent)
    , edit(lineEdit ? lineEdit : new QLineEdit)
    , direction(axis)
{
}
