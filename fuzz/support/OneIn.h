// Selects some of the inputs for slow checks.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

namespace fuzz
{

/// True for about one of @p count inputs. The result depends only on the input, so the
/// same checks always run for an input.
inline bool oneIn(int count, const QByteArray& bytes)
{
    return qChecksum(QByteArrayView(bytes)) % count == 0;
}

} // namespace fuzz
