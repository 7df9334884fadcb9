#include "data/FileAccess.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

// The descriptor is opened first and looked at afterwards, never the name:
// what stands behind a name may change between a look and an open.

/// A descriptor of the named file, -1 when there is none. O_NONBLOCK lets the
/// open of a pipe return at once instead of waiting for the other end.
int openDescriptor(const QFile& file, int flags)
{
    constexpr mode_t permissions = 0666; // less the umask, as for any new file
    return ::open(QFile::encodeName(file.fileName()).constData(),
                  flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, permissions);
}

/// The type bits of what is open at @p descriptor; 0 when they cannot be had.
mode_t fileType(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// A device that is written to takes its time, and a full line to it is no
/// failure.
bool makeBlocking(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags != -1 && ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) != -1;
}

/// Hands @p descriptor over to @p file, or closes it when that fails.
bool adopt(QFile& file, int descriptor, QIODevice::OpenMode mode)
{
    if (file.open(descriptor, mode, QFileDevice::AutoCloseHandle)) {
        return true;
    }
    ::close(descriptor);
    return false;
}

} // namespace

bool data::openForReading(QFile& file)
{
    const int descriptor = openDescriptor(file, O_RDONLY);
    if (descriptor == -1) {
        return false;
    }
    if (fileType(descriptor) != S_IFREG) {
        ::close(descriptor);
        return false;
    }
    return adopt(file, descriptor, QIODevice::ReadOnly);
}

bool data::openForWriting(QFile& file)
{
    const int descriptor = openDescriptor(file, O_WRONLY | O_CREAT | O_TRUNC);
    if (descriptor == -1) {
        return false;
    }
    if (fileType(descriptor) == S_IFIFO || !makeBlocking(descriptor)) {
        ::close(descriptor);
        return false;
    }
    return adopt(file, descriptor, QIODevice::WriteOnly | QIODevice::Text);
}
