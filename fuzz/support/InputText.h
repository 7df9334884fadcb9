// Makes texts from inputs.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstring>

namespace fuzz
{

/// The bytes decoded as UTF-8, or taken as UTF-16 units, which can include lone
/// surrogates.
inline QString textOf(const QByteArray& bytes, bool isUtf16)
{
    if (!isUtf16) {
        return QString::fromUtf8(bytes);
    }
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), static_cast<std::size_t>(text.size()) * 2);
    return text;
}

} // namespace fuzz
