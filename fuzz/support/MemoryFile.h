// A file in memory with a path.
#pragma once

#include <QByteArray>
#include <QString>

namespace fuzz
{

/// A regular file in memory that has a path, for functions that need one. A process uses
/// one such file and replaces its content for each input, which is many times faster than
/// a file on disk.
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
