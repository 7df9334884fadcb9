// Converts the bytes of an input to a text.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstring>

namespace fuzz
{

/// The bytes decoded as UTF-8 or, with @p isUtf16, used directly as UTF-16 code units in
/// the byte order of the machine. These units can include unpaired surrogates; a last odd
/// byte is ignored.
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
