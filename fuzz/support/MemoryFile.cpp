#include "support/MemoryFile.h"

#include "support/FuzzTarget.h"

#include <sys/mman.h>
#include <unistd.h>

namespace fuzz
{

MemoryFile::MemoryFile()
    : m_descriptor(memfd_create("fuzz input", MFD_CLOEXEC))
    , m_path(QStringLiteral("/proc/self/fd/%1").arg(m_descriptor))
{
    FUZZ_REQUIRE(m_descriptor >= 0);
}

MemoryFile::~MemoryFile()
{
    close(m_descriptor);
}

void MemoryFile::setContents(const QByteArray& bytes)
{
    FUZZ_REQUIRE(ftruncate(m_descriptor, 0) == 0);
    FUZZ_REQUIRE(pwrite(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), 0) ==
                 bytes.size());
}

QByteArray MemoryFile::contents() const
{
    const off_t size = lseek(m_descriptor, 0, SEEK_END);
    QByteArray bytes(size, Qt::Uninitialized);
    FUZZ_REQUIRE(pread(m_descriptor, bytes.data(), static_cast<size_t>(size), 0) == size);
    return bytes;
}

} // namespace fuzz
