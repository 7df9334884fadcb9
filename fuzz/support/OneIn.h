// Selects some of the inputs for expensive checks.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace fuzz
{

/// True for about one input in @p count. The choice depends on the input alone, so an
/// input always gets the same checks.
inline bool oneIn(int count, const QByteArray& bytes)
{
    return qChecksum(QByteArrayView(bytes)) % count == 0;
}

} // namespace fuzz
