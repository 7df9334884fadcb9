// Costly checks for some inputs only.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace fuzz
{

/// True for about one input in @p count, chosen by the input itself so that it gets
/// the same checks each time.
inline bool oneIn(int count, const QByteArray& bytes)
{
    return qChecksum(QByteArrayView(bytes)) % count == 0;
}

} // namespace fuzz
