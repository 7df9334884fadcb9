// Lists the signals or slots of a class in the order of their declaration.
#pragma once

#include <QMetaMethod>
#include <QStringList>

namespace tests
{

inline QStringList memberNames(const QMetaObject& meta, QMetaMethod::MethodType type)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type) {
            names << QString::fromLatin1(meta.method(i).methodSignature());
        }
    }
    return names;
}

} // namespace tests
