// Simulates a lack of memory.
#pragma once

#include <QtGlobal>

#include <utility>

namespace fuzz
{

inline constexpr qint64 plentyOfMemory = qint64{1} << 40; // bytes

/// The free memory in bytes that data::canAllocate() assumes in a fuzz target. It is
/// simulated, because the allocator of AddressSanitizer is very slow for large blocks. If it
/// cannot allocate a block, it ends the process instead of returning null.
inline qint64 freeMemory = plentyOfMemory;

/// The largest request to data::canAllocate() since the start of the latest
/// peakRequestOf(); -1 if there was no request.
inline qint64 peakRequest = -1; // bytes

/// Limits the simulated free memory during the lifetime of this object. A request to
/// data::canAllocate() is refused if it is above the limit. A request can include a reserve that
/// the program keeps free. The results of peakRequestOf() also include this reserve, so they can
/// be used as limits.
class LimitedMemory
{
public:
    explicit LimitedMemory(qint64 bytes) { freeMemory = bytes; }
    ~LimitedMemory() { freeMemory = plentyOfMemory; }
    Q_DISABLE_COPY_MOVE(LimitedMemory)
};

/// Runs @p action and returns its largest request in bytes; -1 if it makes no request. No
/// LimitedMemory may exist during the call, because it could refuse a request. With exactly
/// the returned amount of free memory, no request of the action is refused; with less, its
/// largest request is refused.
template <typename Action>
qint64 peakRequestOf(Action&& action)
{
    peakRequest = -1;
    std::forward<Action>(action)();
    return peakRequest;
}

/// A number of bytes below @p most: @p most - 1 if @p isClose or if @p most is below 2,
/// otherwise half of @p most.
inline qint64 tooLittle(qint64 most, bool isClose)
{
    return isClose || most < 2 ? most - 1 : most / 2;
}

} // namespace fuzz
