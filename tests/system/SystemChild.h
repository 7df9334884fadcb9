// Helpers for the tests in this folder: starting the child, reading its output, making
// large files.
#pragma once

#include "support/ChildProcess.h"

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include <algorithm>

namespace tests
{

inline constexpr qint64 mebibyte = 1024 * 1024;

/// Memory (bytes) that a read is allowed to use in addition to the data that it stores in the
/// row.
inline constexpr qint64 maxExtraMemory = 200'000'000;

inline ChildProcess systemChild()
{
    return ChildProcess(QStringLiteral(AELK_SYSTEM_CHILD));
}

/// Whether the tests read files of full size. An optimised build does, except under
/// AddressSanitizer. A build without optimisation, which needs minutes for them, does so only
/// if AELK_FULL_SIZES is set.
inline bool isFullSize()
{
#ifdef __OPTIMIZE__
    return !isUnderAddressSanitizer();
#else
    return qEnvironmentVariableIsSet("AELK_FULL_SIZES");
#endif
}

inline QStringList logOf(const QJsonObject& step)
{
    QStringList lines;
    const QJsonArray log = step["log"].toArray();
    for (const QJsonValue& line : log) {
        lines.append(line.toString());
    }
    return lines;
}

inline QStringList messagesOf(const QJsonObject& step)
{
    QStringList lines;
    const QJsonArray messages = step["messages"].toArray();
    for (const QJsonValue& line : messages) {
        lines.append(line.toString());
    }
    return lines;
}

/// Whether the debug log gives a reason for refusing a file. The "size" line, which is
/// logged for every text map, is not a reason.
inline bool hasReason(const QJsonObject& step)
{
    const QStringList log = logOf(step);
    return std::any_of(log.cbegin(), log.cend(), [](const QString& line) {
        return !line.startsWith(QLatin1String("size "));
    });
}

/// An error text if the read in @p step used too much memory, otherwise an empty string.
/// Always empty under AddressSanitizer, where memory use cannot be measured.
///
/// @param most  limit of the peak, bytes in addition to the data that the read stores in the
///              row
inline QString memoryTrouble(const QJsonObject& step, qint64 most = maxExtraMemory)
{
    const auto bytes = [&step](const char* what) {
        return static_cast<qint64>(step[QLatin1String(what)].toDouble());
    };
    if (isUnderAddressSanitizer()) {
        return {};
    }
    if (bytes("peak") >= bytes("kept") + most) {
        return QStringLiteral("%1 bytes at most for %2 kept").arg(bytes("peak")).arg(bytes("kept"));
    }
    if (bytes("left") >= bytes("kept") + maxExtraMemory) {
        return QStringLiteral("%1 bytes left for %2 kept").arg(bytes("left")).arg(bytes("kept"));
    }
    return {};
}

/// Makes the file "large.dat": @p head, then as many copies of @p block as fit into a file of
/// @p size bytes. Returns the path, or an empty string on failure. If the block is a single
/// zero byte, the file is sparse and occupies almost no disk space.
inline QString makeFile(const QTemporaryDir& folder, const QByteArray& head,
                        const QByteArray& block, qint64 size)
{
    QFile file(folder.filePath(QStringLiteral("large.dat")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(head) != head.size()) {
        return {};
    }
    if (block == QByteArray(1, '\0')) {
        return file.resize(size) ? file.fileName() : QString();
    }
    const qint64 count = (size - head.size()) / block.size();
    const qint64 perPiece =
        std::clamp<qint64>(mebibyte / block.size(), 1, std::max<qint64>(count, 1));
    const QByteArray piece = block.repeated(perPiece);
    for (qint64 left = count * block.size(); left > 0; left -= piece.size()) {
        const qint64 part = std::min<qint64>(left, piece.size());
        if (file.write(piece.constData(), part) != part) {
            return {};
        }
    }
    return file.fileName();
}

} // namespace tests
