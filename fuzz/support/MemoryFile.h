// A file in memory with a path.
#pragma once

#include <QByteArray>
#include <QString>

namespace fuzz
{

/// A regular file in memory that has a path, for functions that need a path. A process
/// replaces the content of the same file for each input, which is many times faster than a
/// new file on disk.
class MemoryFile
{
public:
    MemoryFile();
    ~MemoryFile();
    Q_DISABLE_COPY_MOVE(MemoryFile)

    /// The path of this file. It can be opened any number of times for reading or
    /// writing.
    QString path() const { return m_path; }

    void setContents(const QByteArray& bytes);

    QByteArray contents() const;

private:
    int m_descriptor = -1;
    QString m_path;
};

} // namespace fuzz
