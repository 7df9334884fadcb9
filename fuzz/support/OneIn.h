// Selects some of the inputs for slow checks.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace fuzz
{

/// True for about one of @p count inputs. The result depends only on @p bytes, so each run
/// of an input does the same checks.
inline bool oneIn(int count, const QByteArray& bytes)
{
    return qChecksum(QByteArrayView(bytes)) % count == 0;
}

} // namespace fuzz
