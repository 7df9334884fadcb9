// A file in memory with a path.
#pragma once

#include <QByteArray>
#include <QString>

namespace fuzz
{

/// A regular file in memory, for functions that need a path. There is one per process and
/// its content is replaced for each input, which is many times faster than a file on
/// disk.
class MemoryFile
{
public:
    MemoryFile();
    ~MemoryFile();
    Q_DISABLE_COPY_MOVE(MemoryFile)

    /// A path that opens this file for reading or writing, any number of times.
    QString path() const { return m_path; }

    void setContents(const QByteArray& bytes);

    QByteArray contents() const;

private:
    int m_descriptor = -1;
    QString m_path;
};

} // namespace fuzz
