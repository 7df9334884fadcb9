// A file in memory that has a path.
#pragma once

#include <QByteArray>
#include <QString>

namespace fuzz
{

/// A regular file that takes no space on a disk, for functions that ask for a
/// path. One is made for each process and written anew for each input, which is
/// many times faster than a file of a folder.
class MemoryFile
{
public:
    MemoryFile();
    ~MemoryFile();
    Q_DISABLE_COPY_MOVE(MemoryFile)

    /// Opens this very file, for reading or writing, as often as is wanted.
    QString path() const { return m_path; }

    /// Replaces the contents.
    void setContents(const QByteArray& bytes);

    QByteArray contents() const;

private:
    int m_descriptor = -1;
    QString m_path;
};

} // namespace fuzz
