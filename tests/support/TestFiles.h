// Files for tests, made on the spot.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace tests
{

/// Writes @p content to @p name inside @p dir and returns the path; an empty
/// string when that failed.
inline QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        return {};
    }
    return path;
}

/// The whole content of a file; empty when it cannot be read.
inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tests
