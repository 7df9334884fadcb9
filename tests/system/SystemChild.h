// What the tests of this folder share: the child, its answers, large files.
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

/// The most (bytes) that reading may take beyond what is kept of a file.
inline constexpr qint64 mostWhileReading = 200'000'000;

inline ChildProcess systemChild()
{
    return ChildProcess(QStringLiteral(AELK_SYSTEM_CHILD));
}

/// Whether files of full size are read, which takes minutes without
/// optimisation: in a build for use, and when AELK_FULL_SIZES is set.
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

/// Whether the debug log says why a file was refused. The size that every text
/// map tells is no reason.
inline bool hasReason(const QJsonObject& step)
{
    const QStringList log = logOf(step);
    return std::any_of(log.cbegin(), log.cend(), [](const QString& line) {
        return !line.startsWith(QLatin1String("size "));
    });
}

/// Why the memory that a read took is too much; empty when it is not, and where
/// nobody can tell.
inline QString memoryTrouble(const QJsonObject& step, qint64 most = mostWhileReading)
{
    const auto taken = [&step](const char* what) {
        return static_cast<qint64>(step[QLatin1String(what)].toDouble());
    };
    if (isUnderAddressSanitizer()) {
        return {};
    }
    if (taken("peak") >= taken("kept") + most) {
        return QStringLiteral("%1 bytes at most for %2 kept").arg(taken("peak")).arg(taken("kept"));
    }
    if (taken("left") >= taken("kept") + mostWhileReading) {
        return QStringLiteral("%1 bytes left for %2 kept").arg(taken("left")).arg(taken("kept"));
    }
    return {};
}

/// Makes a file of @p head and as many @p block as fit into @p size bytes; empty
/// when that failed. Blocks of a single zero byte take no place on the disk.
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
