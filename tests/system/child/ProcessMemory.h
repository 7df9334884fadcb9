// Memory use of this process as the kernel reports it, and a limit for its address space.
#pragma once

#include <QtGlobal>

namespace memory
{

qint64 addressSpace(); ///< reserved address space, bytes
qint64 resident();     ///< memory in use, bytes
qint64 peakResident(); ///< highest memory use since resetPeak(), bytes

/// Resets peakResident() to the current memory use; a no-op if the kernel does not allow it.
void resetPeak();

/// Limits the address space of the process. The destructor removes the limit.
class Limit
{
public:
    /// @param more  bytes by which the address space can grow; negative for no limit
    explicit Limit(qint64 more);
    ~Limit();
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
};

} // namespace memory
