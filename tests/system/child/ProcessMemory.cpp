#include "ProcessMemory.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include <sys/resource.h>

namespace
{

/// A value from /proc/self/status in bytes; 0 if it is missing. Does not use QFile,
/// which would allocate more memory.
qint64 statusValue(const char* name)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen("/proc/self/status", "r"),
                                                               std::fclose);
    char line[256];
    while (file && std::fgets(line, sizeof line, file.get()) != nullptr) {
        long long kibibytes = 0;
        const std::size_t size = std::strlen(name);
        if (std::strncmp(line, name, size) == 0 &&
            std::sscanf(line + size, ": %lld", &kibibytes) == 1) {
            return kibibytes * 1024;
        }
    }
    return 0;
}

void limitAddressSpace(rlim_t bytes)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = bytes < limit.rlim_max ? bytes : limit.rlim_max;
    ::setrlimit(RLIMIT_AS, &limit);
}

} // namespace

qint64 memory::addressSpace()
{
    return statusValue("VmSize");
}

qint64 memory::resident()
{
    return statusValue("VmRSS");
}

qint64 memory::peakResident()
{
    return statusValue("VmHWM");
}

void memory::resetPeak()
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen("/proc/self/clear_refs", "w"), std::fclose);
    if (file) {
        std::fputs("5", file.get());
    }
}

memory::Limit::Limit(qint64 more)
{
    if (more >= 0) {
        limitAddressSpace(static_cast<rlim_t>(addressSpace() + more));
    }
}

memory::Limit::~Limit()
{
    limitAddressSpace(RLIM_INFINITY);
}
