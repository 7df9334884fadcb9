// The memory of this process, as the system counts it.
#pragma once

#include <QtGlobal>

namespace memory
{

qint64 addressSpace(); ///< all that was asked for, bytes
qint64 resident();     ///< what is in use, bytes
qint64 peakResident(); ///< the most in use since forgetPeak(), bytes

/// Lets the peak begin anew; nothing where the system does not allow it.
void forgetPeak();

/// Limits the address space to what is in use and @p more bytes while it lives.
class Limit
{
public:
    /// @param more  no limit below 0
    explicit Limit(qint64 more);
    ~Limit();
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
};

} // namespace memory
